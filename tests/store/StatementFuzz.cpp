#include "store/Database.h"
#include "store/Recordset.h"
#include "store/RunTimeError.h"
#include "store/statements/Chains.h"
#include "store/statements/Fixture.h"
#include "store/statements/StatementCase.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <optional>
#include <random>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// The statements and conditions that are spoiled.
QStringList corpus() {
    QStringList texts;
    for (const NamedTable& table : statementTables()) {
        for (const StatementCase& row : table.table) {
            texts << row.text.toString();
        }
    }
    for (const FindCase& row : findCases()) {
        texts << row.condition.toString();
    }
    return texts;
}

/// Spoils statements in the same way for the same seed.
class Spoiler {
  public:
    Spoiler(QStringList texts, unsigned seed) : texts_(std::move(texts)), random_(seed) {}

    /// One statement of the corpus with one fault, or in one case of four with up to four.
    QString next() {
        QString text = any();
        for (qsizetype faults = below(4) == 0 ? below(4) + 1 : 1; faults > 0; --faults) {
            spoil(text);
        }
        return text;
    }

    /// The way in which the program would run the text, or in one case of eight any.
    Way wayOf(const QString& text) {
        if (below(8) == 0) {
            return static_cast<Way>(below(4));
        }
        const QString word = text.trimmed().section(u' ', 0, 0).toLower();
        if (word == u"select"_s) {
            return below(2) == 0 ? Way::Select : Way::Open;
        }
        return word == u"update"_s || word == u"insert"_s || word == u"delete"_s ? Way::Execute : Way::Find;
    }

    /// A number from 0 to one less than the end.
    qsizetype below(qsizetype end) { return end < 2 ? 0 : static_cast<qsizetype>(random_()) % end; }

  private:
    const QString& any() { return texts_[below(texts_.size())]; }

    void spoil(QString& text) {
        const qsizetype from = below(text.size() + 1);
        const qsizetype length = below(12);
        switch (below(11)) {
        case 0:
            text.remove(from, length);
            break;
        case 1:
            text.insert(from, text.mid(below(text.size() + 1), length));
            break;
        case 2:
            text.truncate(from);
            break;
        case 3:
            text = text.left(from) + any().right(below(60));
            break;
        case 4:
            text.insert(from, oddText());
            break;
        case 5:
            exchangeWords(text);
            break;
        case 6:
            replaceWord(text, any().split(u' '));
            break;
        case 7:
            replaceLiteral(text);
            break;
        case 8:
            replaceWord(text, {u"null"_s, u"'x'"_s, u"#2001/3/5#"_s, u"(1)"_s, u"-1.5"_s, u"*"_s, u"top"_s});
            break;
        case 9:
            // A chain: some words over and over.
            text.insert(from, (oddText() + text.mid(below(text.size() + 1), length)).repeated(below(300)));
            break;
        default:
            text = below(2) == 0 ? text.toUpper() : text.toLower();
            break;
        }
    }

    QString oddText() {
        static const QStringList odd{
            u"'"_s,
            u"#"_s,
            u"["_s,
            u"]"_s,
            u"("_s,
            u")"_s,
            u"*"_s,
            u","_s,
            u";"_s,
            u"."_s,
            u"&"_s,
            u"\\"_s,
            u"<>"_s,
            u"="_s,
            u"-"_s,
            u"+"_s,
            u"\""_s,
            u"%"_s,
            u"?"_s,
            u":a"_s,
            u"@a"_s,
            u"$1"_s,
            u"\t"_s,
            u"\n"_s,
            u"--"_s,
            u"/*"_s,
            u" or "_s,
            u" mod "_s,
            u" between "_s,
            u" between '1' and '2'"_s,
            u" like "_s,
            u" like 'x'"_s,
            u" is null"_s,
            u" = True"_s,
            u" + 1"_s,
            u"not "_s,
            u"not("_s,
            u"format("_s,
            u"員工"_s,
            u"9999999999999999999"_s,
            u"1e999"_s,
            QString(QChar(u'\0')),
            QString(QChar(0xd800)),
            QString(QChar(0xfeff)),
        };
        return odd[below(odd.size())];
    }

    /// Puts another value between two quotes, so that most of these statements stay whole.
    void replaceLiteral(QString& text) {
        static const QStringList values{u""_s,     u"00001"_s, u"a0001"_s,        u"ZZZZ"_s, u"2001/3/5"_s,
                                        u"8:00"_s, u"12.5"_s,  u"-99999999999"_s, u"*?#"_s,  u"王"_s};
        QStringList parts = text.split(u'\'');
        if (parts.size() > 2) {
            parts[below(parts.size() / 2) * 2 + 1] = values[below(values.size())];
            text = parts.join(u'\'');
        }
    }

    void exchangeWords(QString& text) {
        QStringList words = text.split(u' ');
        words.swapItemsAt(below(words.size()), below(words.size()));
        text = words.join(u' ');
    }

    void replaceWord(QString& text, const QStringList& others) {
        QStringList words = text.split(u' ');
        words[below(words.size())] = others[below(others.size())];
        text = words.join(u' ');
    }

    QStringList texts_;
    std::mt19937 random_;
};

/// Runs the text in one of the ways in which the program runs texts. True where it was accepted; anything
/// else than a run-time error goes on to the caller.
bool runs(Database& database, const QString& text, Way way) {
    try {
        switch (way) {
        case Way::Execute:
            database.execute(text);
            break;
        case Way::Select:
            std::ignore = database.select(text);
            break;
        case Way::Open: {
            Recordset set = database.openRecordset(text);
            if (set.RecordCount() > 0) {
                set.MoveLast();
                std::ignore = set.field(0);
            }
            break;
        }
        case Way::Find: {
            Recordset set = database.openRecordset(u"Base06"_s);
            set.FindFirst(text);
            break;
        }
        }
    } catch (const RunTimeError&) {
        return false;
    }
    return true;
}

/// The catalogue of the file, which no statement of the program's language may change, and whether it is
/// whole.
QString catalogue(const QString& path) {
    const SQLite::Database file(path.toStdString(), SQLite::OPEN_READONLY);
    SQLite::Statement check(file, "PRAGMA integrity_check");
    QString text = check.executeStep() ? QString::fromStdString(check.getColumn(0).getString()) : QString();
    SQLite::Statement entries(file, "SELECT type, name, sql FROM sqlite_schema ORDER BY type, name");
    while (entries.executeStep()) {
        for (int column = 0; column < 3; ++column) {
            text += u'|' + QString::fromStdString(entries.getColumn(column).getString());
        }
    }
    return text;
}

} // namespace

Q_DECLARE_METATYPE(const Chain*)

/// Statements spoiled at random must end in a result or in a run-time error: no crash, no hang, nothing else.
class StatementFuzz : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void spoiledStatements_data();
    void spoiledStatements();
    void excessiveStatements_data();
    void excessiveStatements();
    void whatIsWrittenGrowsWithTheText_data();
    void whatIsWrittenGrowsWithTheText();

  private:
    QString freshCopy();

    QTemporaryDir folder_;
    QString fixture_;
};

void StatementFuzz::initTestCase() {
    QVERIFY(folder_.isValid());
    fixture_ = folder_.filePath(u"fixture.mdb"_s);
    createFixtureStore(fixture_);
}

QString StatementFuzz::freshCopy() {
    const QString path = folder_.filePath(u"copy.mdb"_s);
    QFile::remove(path);
    if (!QFile::copy(fixture_, path)) {
        qFatal("the fixture store cannot be copied");
    }
    return path;
}

void StatementFuzz::spoiledStatements_data() {
    QTest::addColumn<unsigned>("seed");
    for (unsigned seed = 1; seed <= 10; ++seed) {
        QTest::addRow("seed %u", seed) << seed;
    }
}

void StatementFuzz::spoiledStatements() {
    QFETCH(unsigned, seed);
    Spoiler spoiler(corpus(), seed);
    const QString whole = catalogue(fixture_);
    int accepted = 0;
    int refused = 0;
    // A fresh store now and then keeps rows that copies double from growing without end.
    for (int round = 0; round < 20; ++round) {
        const QString path = freshCopy();
        {
            Database database(path);
            Stage stage(database);
            for (int i = 0; i < 100; ++i) {
                const QString text = spoiler.next();
                const Way way = spoiler.wayOf(text);
                try {
                    ++(runs(database, text, way) ? accepted : refused);
                } catch (const std::exception& failure) {
                    QFAIL(qPrintable(text + u": "_s + QString::fromUtf8(failure.what())));
                }
                QVERIFY2(database.inStage(), qPrintable(text));
                QVERIFY2(costOf(text, way).value_or(0) <= mostCost(text), qPrintable(text));
            }
            stage.finish();
        }
        QCOMPARE(catalogue(path), whole);
    }
    // Both must occur, or the faults are too few or too many to try anything.
    QVERIFY2(accepted > 200, qPrintable(QString::number(accepted)));
    QVERIFY2(refused > 200, qPrintable(QString::number(refused)));
}

void StatementFuzz::excessiveStatements_data() {
    QTest::addColumn<QString>("text");
    QTest::addColumn<Way>("way");
    static const std::vector<Chain> chains = allChains();
    for (const int times : {100, 5000, 30000}) {
        for (const Chain& chain : chains) {
            QTest::addRow("%s, %d times", chain.title, times) << chain.text(times) << chain.way;
        }
    }
}

void StatementFuzz::excessiveStatements() {
    QFETCH(QString, text);
    QFETCH(Way, way);
    const QString path = freshCopy();
    const QString whole = catalogue(path);
    {
        Database database(path);
        runs(database, text, way);
        // Whatever became of it, the connection is good for the next statement.
        QCOMPARE(database.select(u"select LenEmpNo from Syst01"_s).at(0, 0), Value(5));
    }
    QCOMPARE(catalogue(path), whole);
}

void StatementFuzz::whatIsWrittenGrowsWithTheText_data() {
    QTest::addColumn<const Chain*>("chain");
    static const std::vector<Chain> chains = allChains();
    for (const Chain& chain : chains) {
        QTest::addRow("%s", chain.title) << &chain;
    }
}

void StatementFuzz::whatIsWrittenGrowsWithTheText() {
    QFETCH(const Chain*, chain);
    QVERIFY(costOf(chain->text(4), chain->way).has_value() == chain->allowed);
    for (const int times : {4, 8, 12, 16, 20, 100, 400, 800}) {
        const QString text = chain->text(times);
        // A chain that is refused costs nothing.
        const std::size_t cost = costOf(text, chain->way).value_or(0);
        QVERIFY2(cost <= mostCost(text),
                 qPrintable(u"%1 times, %2 characters, cost %3"_s.arg(times).arg(text.size()).arg(cost)));
    }
}

QTEST_GUILESS_MAIN(StatementFuzz)
#include "StatementFuzz.moc"
