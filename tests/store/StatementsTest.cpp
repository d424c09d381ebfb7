#include "store/Database.h"
#include "store/Recordset.h"
#include "store/RunTimeError.h"
#include "store/Schema.h"
#include "store/statements/Fixture.h"
#include "store/statements/Rendering.h"
#include "store/statements/StatementCase.h"
#include "support/Errors.h"

#include <QFile>
#include <QHash>
#include <QSet>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

Q_DECLARE_METATYPE(const StatementCase*)
Q_DECLARE_METATYPE(const FindCase*)

namespace {

QStringList linesOf(QStringView text) {
    return text.isEmpty() ? QStringList() : text.toString().split(u'\n');
}

/// Two lists of lines as one text each, so that a failure shows both.
QString joined(const QStringList& lines) {
    return lines.join(u'\n');
}

QStringList renderSet(Recordset& set) {
    QStringList lines;
    for (qint64 position = 0; position < set.RecordCount(); ++position) {
        lines << renderRow(set.rowAt(position));
    }
    return lines;
}

void copyFile(const QString& from, const QString& to) {
    if (!QFile::copy(from, to)) {
        qFatal("a store cannot be copied");
    }
}

void addRows(Outcome outcome) {
    QTest::addColumn<const StatementCase*>("row");
    for (const NamedTable& table : statementTables()) {
        for (const StatementCase& row : table.table) {
            if (row.outcome == outcome) {
                QTest::addRow("%s: %s", table.subject, qUtf8Printable(row.title.toString())) << &row;
            }
        }
    }
}

} // namespace

/// Runs every statement of the tables on the fixture store; one that writes has a copy of its own.
class StatementsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void initTestCase();
    void fixtureHoldsEveryRow();
    void titlesAreUnique();
    void selection_data() { addRows(Outcome::Rows); }
    void selection();
    void selectionAsSet_data() { addRows(Outcome::Rows); }
    void selectionAsSet();
    void change_data() { addRows(Outcome::Change); }
    void change();
    void changeInStage_data() { addRows(Outcome::Change); }
    void changeInStage();
    void selectionsShareOneConnection();
    void refusal_data() { addRows(Outcome::Error); }
    void refusal();
    void selectionIsNotExecuted();
    void changeIsNotSelected();
    void find_data();
    void find();
    void tableNameAsSet_data();
    void tableNameAsSet();

  private:
    /// The fixture store after it has run the statements: one for all rows that only read.
    QString storeAfter(QStringView setup);

    /// A copy of that store, for one row that writes.
    QString copyAfter(QStringView setup);

    QTemporaryDir folder_;
    QString fixture_;
    QHash<QString, QString> stores_;
};

void StatementsTest::initTestCase() {
    QVERIFY(folder_.isValid());
    fixture_ = folder_.filePath(u"fixture.mdb"_s);
    createFixtureStore(fixture_);
}

QString StatementsTest::storeAfter(QStringView setup) {
    const QString key = setup.toString();
    if (!stores_.contains(key)) {
        const QString path = folder_.filePath(u"store%1.mdb"_s.arg(stores_.size()));
        copyFile(fixture_, path);
        Database database(path);
        Stage stage(database);
        for (const QString& statement : linesOf(setup)) {
            database.execute(statement);
        }
        stage.finish();
        stores_.insert(key, path);
    }
    return stores_.value(key);
}

QString StatementsTest::copyAfter(QStringView setup) {
    const QString path = folder_.filePath(u"copy.mdb"_s);
    QFile::remove(path);
    copyFile(storeAfter(setup), path);
    return path;
}

void StatementsTest::fixtureHoldsEveryRow() {
    const Snapshot snapshot(fixture_);
    for (const QString& table : storeTables()) {
        QVERIFY2(snapshot.count(table) == fixtureCount(table), qUtf8Printable(table));
    }
}

void StatementsTest::titlesAreUnique() {
    QSet<QString> titles;
    for (const NamedTable& table : statementTables()) {
        for (const StatementCase& row : table.table) {
            QVERIFY2(!titles.contains(row.title.toString()), qUtf8Printable(row.title.toString()));
            titles.insert(row.title.toString());
        }
    }
}

void StatementsTest::selection() {
    QFETCH(const StatementCase*, row);
    const QString path = storeAfter(row->setup);
    const Snapshot before(path);
    {
        Database database(path);
        const Rows rows = database.select(row->text.toString());
        QCOMPARE(joined(renderRows(rows)), joined(linesOf(row->lines)));
        if (!row->names.isEmpty()) {
            QCOMPARE(rows.columns().join(u'|').toLower(), row->names.toString().toLower());
        }
    }
    QCOMPARE(joined(Snapshot(path).differencesFrom(before)), QString());
}

void StatementsTest::selectionAsSet() {
    QFETCH(const StatementCase*, row);
    const QString path = storeAfter(row->setup);
    Database database(path);
    Recordset set = database.openRecordset(row->text.toString());
    QCOMPARE(joined(renderSet(set)), joined(linesOf(row->lines)));
    if (!row->names.isEmpty()) {
        QCOMPARE(set.columns().join(u'|').toLower(), row->names.toString().toLower());
    }
}

void StatementsTest::change() {
    QFETCH(const StatementCase*, row);
    const QString path = copyAfter(row->setup);
    const Snapshot before(path);
    {
        Database database(path);
        const std::int64_t count = database.execute(row->text.toString());
        if (row->number != anyNumber) {
            QCOMPARE(count, row->number);
        }
    }
    QCOMPARE(joined(Snapshot(path).differencesFrom(before)), joined(linesOf(row->lines)));
}

/// Within a stage a statement does the same, and the stage keeps it.
void StatementsTest::changeInStage() {
    QFETCH(const StatementCase*, row);
    const QString path = copyAfter(row->setup);
    const Snapshot before(path);
    {
        Database database(path);
        Stage stage(database);
        database.execute(row->text.toString());
        QVERIFY(database.inStage());
        stage.finish();
    }
    QCOMPARE(joined(Snapshot(path).differencesFrom(before)), joined(linesOf(row->lines)));
}

/// One connection answers all selections alike, whatever it has prepared before: forward, then backward.
void StatementsTest::selectionsShareOneConnection() {
    std::vector<const StatementCase*> plain;
    for (const NamedTable& table : statementTables()) {
        for (const StatementCase& row : table.table) {
            if (row.outcome == Outcome::Rows && row.setup.isEmpty()) {
                plain.push_back(&row);
            }
        }
    }
    Database database(storeAfter({}));
    std::vector<const StatementCase*> order = plain;
    order.insert(order.end(), plain.rbegin(), plain.rend());
    for (const StatementCase* row : order) {
        const QString text = row->text.toString();
        QStringList lines;
        const int number = errorOf([&] { lines = renderRows(database.select(text)); });
        QVERIFY2(number == 0 && lines == linesOf(row->lines), qUtf8Printable(text));
    }
}

void StatementsTest::refusal() {
    QFETCH(const StatementCase*, row);
    const QString path = copyAfter(row->setup);
    const Snapshot before(path);
    {
        Database database(path);
        const QString text = row->text.toString();
        const bool selects = text.trimmed().startsWith(u"select"_s, Qt::CaseInsensitive);
        const int number = errorOf([&] {
            if (selects) {
                const Rows rows = database.select(text);
                qInfo() << renderRows(rows);
            } else {
                database.execute(text);
            }
        });
        QVERIFY2(number != 0, "the statement was not refused");
        if (row->number != anyNumber) {
            QCOMPARE(number, row->number);
        }
        QVERIFY(!database.inStage());
        QCOMPARE(database.select(u"select LenEmpNo from Syst01"_s).at(0, 0), Value(5));
    }
    QCOMPARE(joined(Snapshot(path).differencesFrom(before)), QString());
}

void StatementsTest::selectionIsNotExecuted() {
    Database database(copyAfter({}));
    QVERIFY(errorOf([&] { database.execute(u"Select * from Base01"_s); }) != 0);
}

void StatementsTest::changeIsNotSelected() {
    const QString path = copyAfter({});
    const Snapshot before(path);
    {
        Database database(path);
        QVERIFY(errorOf([&] { std::ignore = database.select(u"delete * from View01"_s); }) != 0);
        QVERIFY(errorOf([&] { std::ignore = database.openRecordset(u"delete * from View01"_s); }) != 0);
    }
    QCOMPARE(joined(Snapshot(path).differencesFrom(before)), QString());
}

void StatementsTest::find_data() {
    static const std::vector<FindCase> cases = findCases();
    QTest::addColumn<const FindCase*>("row");
    for (const FindCase& row : cases) {
        QTest::addRow("%s", qUtf8Printable(row.title.toString())) << &row;
    }
}

void StatementsTest::find() {
    QFETCH(const FindCase*, row);
    Database database(storeAfter({}));
    Recordset set = database.openRecordset(row->source.toString());
    set.MoveLast();
    const qint64 last = set.AbsolutePosition();
    const int number = errorOf([&] { set.FindFirst(row->condition.toString()); });
    QCOMPARE(number, row->number);
    if (row->found.isEmpty()) {
        QVERIFY(number != 0 || set.NoMatch());
        QCOMPARE(set.AbsolutePosition(), last);
    } else {
        QVERIFY(!set.NoMatch());
        QCOMPARE(renderRow({set.field(0), set.field(1)}), row->found.toString());
    }
}

void StatementsTest::tableNameAsSet_data() {
    QTest::addColumn<QString>("name");
    for (const QString& table : storeTables()) {
        QTest::addRow("%s", qUtf8Printable(table)) << table;
        QTest::addRow("%s in small letters", qUtf8Printable(table)) << table.toLower();
    }
}

void StatementsTest::tableNameAsSet() {
    QFETCH(QString, name);
    Database database(storeAfter({}));
    Recordset set = database.openRecordset(name);
    const Rows rows = database.select(u"Select * from "_s + name);
    QCOMPARE(joined(renderSet(set)), joined(renderRows(rows)));
    QCOMPARE(set.columns(), rows.columns());
    QCOMPARE(static_cast<std::size_t>(set.RecordCount()), fixtureCount(findTable(name)->name));
}

QTEST_GUILESS_MAIN(StatementsTest)
#include "StatementsTest.moc"
