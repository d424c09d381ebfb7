#include "bench/DayCloseProcess.h"
#include "rules/attendance/Opening.h"
#include "store/RunTimeError.h"

#include <QDir>
#include <QRandomGenerator>
#include <QTest>

#include <memory>
#include <sys/resource.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate Day(2001, 3, 5);
const QTime Eight(8, 0);

/// A swipe of the first employee, who is on the roster.
QByteArray good() {
    return punchLine("00001", Day, Eight);
}

/// The same line with other characters from a place on, counted from 0.
QByteArray with(qsizetype place, const QByteArray& characters) {
    return good().replace(place, characters.size(), characters);
}

QByteArray wide(const QByteArray& text) {
    QByteArray characters("\xff\xfe", 2);
    for (const char character : text)
        characters += QByteArray(1, character) + '\0';
    return characters;
}

QByteArray randomBytes(quint32 seed) {
    QRandomGenerator random(seed);
    QByteArray bytes(4096, '\0');
    for (char& byte : bytes)
        byte = static_cast<char>(random.bounded(256));
    return bytes;
}

QString swipe(const QString& EmpNo, QDate day = Day, const QString& classCode = u"255"_s,
              const QString& reader = u"001"_s) {
    return punchRow(EmpNo, day, Eight, classCode, reader);
}

/// The result of a day without any punch, or with the one at eight alone.
QString result(const QString& EmpNo, bool punched) {
    Fields fields{{u"F2", true}, {u"F3", true}, {u"F4", true}, {u"Expt", true}};
    if (punched)
        fields += {{u"Time1", Eight}, {u"FT1", true}};
    else
        fields += {{u"F1", true}};
    return dailyRow(EmpNo, Day, u"A"_s, fields);
}

QStringList sorted(QStringList rows) {
    rows.sort();
    return rows;
}

} // namespace

/// Punch files that are not what the reader application writes, and names that are not those of its files.
class BadFileTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Opening> opening_;
    Opening& it() { return *opening_; }

    [[nodiscard]] QString chosen() { return u"choosePunchFile "_s + it().store.punchFolder(); }

    [[nodiscard]] QStringList leaveDates() {
        const auto other = it().store.connect();
        return rowsOfSelection(*other, u"Select EmpNo,LeaveDate from Base06"_s);
    }

    void verifyTables(const QStringList& AtteTemp, const QStringList& Atte01, const QStringList& results,
                      const QStringList& View02) {
        QCOMPARE(it().committedRows(u"AtteTemp"_s), AtteTemp);
        QCOMPARE(it().committedRows(u"Atte01"_s), Atte01);
        QCOMPARE(it().committedRows(u"Over01"_s), QStringList());
        // Every row is an exception, so that the three tables hold the same.
        for (const QString& table : {u"AtteTemp1"_s, u"Atte02"_s, u"Atte03"_s})
            QCOMPARE(it().committedRows(table), results);
        QCOMPARE(it().committedRows(u"View02"_s), View02);
    }

    /// The import of the day came to its end with these punches.
    void verifyFinished(const QStringList& punches) {
        QCOMPARE(it().errorNumber(), 0);
        QVERIFY(it().calculation.finished());
        QVERIFY(!it().calculation.ImportRunning());
        const bool punched = !punches.filter(u"00001|2001-03-05|08:00:00|255"_s).isEmpty();
        verifyTables(punches, sorted(punches), {result(u"00001"_s, punched), result(u"00002"_s, false)},
                     {viewRow(u"00001"_s, Day, punched ? QList{Eight} : QList<QTime>()),
                      viewRow(u"00002"_s, Day, {})});
        QCOMPARE(leaveDates(), (QStringList{u"00001|null"_s, u"00002|null"_s}));
        QCOMPARE(
            it().host.calls,
            (QStringList{chosen(), u"hourglass"_s, u"bar shown"_s,
                         u"showPunches Select * from Atte01  Where UseDate = #2001/3/5# order by usedate "
                         "desc,empno,UseTime"_s,
                         u"normal pointer"_s, u"tell 2001/03/05資料已轉入成功!!"_s, u"refreshExceptions"_s,
                         u"bar hidden"_s}));
        QCOMPARE(it().host.progressValue, 110);
    }

    /// The import ended without a word before the calculation; with the bar shown, while it read the file.
    void verifyEndedSilently(int number, const QStringList& punches, bool barShown) {
        QCOMPARE(it().errorNumber(), number);
        QVERIFY(!it().calculation.finished());
        QCOMPARE(it().calculation.ImportRunning(), barShown);
        verifyTables(punches, {}, {}, {});
        QCOMPARE(leaveDates(), (QStringList{u"00001|2038-01-01"_s, u"00002|2038-01-01"_s}));
        QCOMPARE(it().host.calls,
                 barShown ? (QStringList{chosen(), u"hourglass"_s, u"bar shown"_s}) : QStringList{chosen()});
        QCOMPARE(it().host.progressShown, barShown);
        QCOMPARE(it().host.pointer, barShown ? Pointer::Hourglass : Pointer::Normal);
        QCOMPARE(it().host.progressValues, QList<int>());
    }

  private Q_SLOTS:
    void init() {
        opening_ = std::make_unique<Opening>();
        Stage stage(it().database());
        addSlot(it().database(), u"A"_s);
        for (const QString& EmpNo : {u"00001"_s, u"00002"_s}) {
            addEmployee(it().database(), EmpNo);
            addRoster(it().database(), EmpNo, Day, u"A"_s);
        }
        stage.finish();
    }

    void whatCanBeReadIsReadAndTheRestPassedOver_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("punches");
        const QString first = swipe(u"00001"_s);
        const QString third = swipe(u"00003"_s);
        const QByteArray another = punchLine("00003", Day, Eight);
        const QStringList none;
        QTest::newRow("a file of no bytes") << QByteArray() << none;
        QTest::newRow("nothing but ends of lines") << QByteArray("\n\r\n\n\r\n") << none;
        for (quint32 seed = 1; seed <= 8; ++seed)
            QTest::addRow("random bytes, seed %u", seed) << randomBytes(seed) << none;
        QTest::newRow("a file of zero bytes of another kind") << QByteArray(5000, '\0') << none;
        QTest::newRow("lines that end with CR LF")
            << good().replace('\n', "\r\n") + QByteArray(another).replace('\n', "\r\n")
            << QStringList{first, third};
        QTest::newRow("a CR alone ends no line: what follows stands beyond the width")
            << good().replace('\n', "\r") + another << QStringList{first};
        QTest::newRow("two CRs before the end") << good().replace('\n', "\r\r\n") << QStringList{first};
        QTest::newRow("a last line without an end") << good().chopped(1) << QStringList{first};
        QTest::newRow("a last line that ends with CR") << good().replace('\n', "\r") << QStringList{first};
        QTest::newRow("an empty line between two") << good() + "\n" + another << QStringList{first, third};
        QTest::newRow("a byte-order mark shifts the first line, which is no swipe then")
            << "\xef\xbb\xbf" + good() + another << QStringList{third};
        QTest::newRow("characters of two bytes each") << wide(good()) + wide(another) << none;
        QTest::newRow("a line short of its leading zeros") << good().mid(7) << QStringList{first};
        QTest::newRow("a line short at its end, whose fields all shift") << good().left(20) + "\n" << none;
        QTest::newRow("a line of a million characters")
            << good().chopped(1) + QByteArray(1'000'000, '7') + "\n" + another << QStringList{first, third};
        QTest::newRow("Big5 in the code: one character a byte")
            << with(8, "\xa4\xa4\xa5\x5c") << QStringList{swipe(u"0¤¤¥\\"_s)};
        QTest::newRow("UTF-8 in the code: one character a byte")
            << with(9, "\xe4\xb8\xad") << QStringList{swipe(u"00ä¸\u00ad"_s)};
        QTest::newRow("UTF-8 cut by the code's first character")
            << with(6, "\xe4\xb8\xad") << QStringList{swipe(u"¸\u00ad001"_s)};
        QTest::newRow("Big5 in the class, which makes it no ordinary one")
            << with(26, "\xa4\x40") << QStringList{swipe(u"00001"_s, Day, u"¤@5"_s)};
        QTest::newRow("a control character in the reader")
            << with(31, "\t\x7f\x80") << QStringList{swipe(u"00001"_s, Day, u"255"_s, u"\t\u007f\u0080"_s)};
        QTest::newRow("a quote before the code") << with(6, "'") << QStringList{first};
        QTest::newRow("a quote beyond the width") << good().replace('\n', "'\n") << QStringList{first};
        QTest::newRow("a quote in a line that is no swipe")
            << with(9, "''").replace(29, 2, "01") + good() << QStringList{first};
        QTest::newRow("NUL in the code")
            << with(9, QByteArray("\0", 1)) << QStringList{swipe(u"00\u000001"_s)};
        QTest::newRow("NUL in the line code") << with(29, QByteArray("\0", 1)) << none;
        QTest::newRow("a line of NULs between two")
            << good() + QByteArray(34, '\0') + "\n" + another << QStringList{first, third};
        QTest::newRow("another day in the line than in the name")
            << punchLine("00001", Day.addDays(1), Eight) << QStringList{swipe(u"00001"_s, Day.addDays(1))};
    }
    void whatCanBeReadIsReadAndTheRestPassedOver() {
        QFETCH(QByteArray, content);
        QFETCH(QStringList, punches);
        it().import(u"20010305.txt"_s, content);
        verifyFinished(punches);
    }

    void aLineThatIsNoPunchEndsTheImportAndTheLinesBeforeItStay_data() {
        QTest::addColumn<QByteArray>("line");
        QTest::newRow("a quote in the code") << with(11, "'");
        QTest::newRow("a quote in the class") << with(26, "'");
        QTest::newRow("a quote in the reader") << with(31, "'");
        QTest::newRow("a statement in the code and the class") << with(7, "',#,'");
        QTest::newRow("a quote in the date") << with(12, "'");
        QTest::newRow("a number sign in the time") << with(20, "#");
        QTest::newRow("NUL in the date") << with(15, QByteArray("\0", 1));
        QTest::newRow("NUL in the time") << with(25, QByteArray("\0", 1));
        QTest::newRow("Big5 in the date") << with(12, "\xa4\xa4\xa5\x5c");
        QTest::newRow("UTF-8 in the time") << with(20, "\xe4\xb8\xad");
        QTest::newRow("blanks but for the line code") << QByteArray(29, ' ') + "07   \n";
        QTest::newRow("an invalid day") << with(12, "20010229");
        QTest::newRow("a year below 100") << with(12, "00990305");
        QTest::newRow("a line that begins in the middle of the year") << good().mid(14);
        QTest::newRow("the 24th hour") << with(20, "240000");
        QTest::newRow("a byte-order mark before a line whose fields then still look like a swipe")
            << "\xef\xbb\xbf" + with(26, "0707");
    }
    void aLineThatIsNoPunchEndsTheImportAndTheLinesBeforeItStay() {
        QFETCH(QByteArray, line);
        it().import(u"20010305.txt"_s, good() + line + punchLine("00003", Day, Eight));
        verifyEndedSilently(error::Syntax, {swipe(u"00001"_s)}, true);
    }

    void aNameThatIsNoDayEndsTheImportBeforeTheFileIsLookedAt_data() {
        QTest::addColumn<QString>("name");
        for (const char* name : {"20010230.txt", "abc.txt", "2001-3-5.txt", "5.txt", "a", "20010305.text",
                                 "20010305", "2001030.txt", "00990305.txt", "20010305 .txt", "2001/0305.txt"})
            QTest::addRow("%s", name) << QString::fromLatin1(name);
        QTest::newRow("wide digits") << u"２００１０３０５.txt"_s;
        QTest::newRow("Han characters") << u"二○○一三月五日.txt"_s;
    }
    void aNameThatIsNoDayEndsTheImportBeforeTheFileIsLookedAt() {
        QFETCH(QString, name);
        QVERIFY(QDir(it().store.punchFolder()).mkpath(u"2001"_s));
        it().import(name, good());
        verifyEndedSilently(error::TypeMismatch, {}, false);
    }

    void aNameWhoseLastTwelveCharactersBeginWithTheDayIsGood_data() {
        QTest::addColumn<QString>("name");
        QTest::newRow("upper case") << u"20010305.TXT"_s;
        QTest::newRow("a prefix") << u"punches-20010305.txt"_s;
        QTest::newRow("digits in front") << u"9920010305.txt"_s;
        QTest::newRow("another ending of three letters") << u"20010305.doc"_s;
        QTest::newRow("the day is that of the folder") << u"20010305/abc"_s;
        QTest::newRow("Han characters in front") << u"打卡 20010305.txt"_s;
    }
    void aNameWhoseLastTwelveCharactersBeginWithTheDayIsGood() {
        QFETCH(QString, name);
        QVERIFY(QDir(it().store.punchFolder()).mkpath(u"20010305"_s));
        it().import(name, good());
        verifyFinished({swipe(u"00001"_s)});
    }

    void theFirstAndTheLastDayThatANameCanTellAreRead_data() {
        QTest::addColumn<QDate>("day");
        QTest::newRow("the year 100") << QDate(100, 1, 1);
        QTest::newRow("the year 9999") << QDate(9999, 12, 31);
    }
    void theFirstAndTheLastDayThatANameCanTellAreRead() {
        QFETCH(QDate, day);
        it().import(day.toString(u"yyyyMMdd"_s) + u".txt"_s, punchLine("00001", day, Eight));
        QCOMPARE(it().errorNumber(), 0);
        // On the first the employees have not come yet, on the last all have left.
        verifyTables({swipe(u"00001"_s, day)}, {swipe(u"00001"_s, day)}, {}, {});
        QCOMPARE(leaveDates(), (QStringList{u"00001|null"_s, u"00002|null"_s}));
        QCOMPARE(it().host.calls[5], u"tell "_s + day.toString(u"yyyy/MM/dd"_s) + u"資料已轉入成功!!"_s);
    }

    void aFileThatCannotBeOpenedEndsTheImportWithTheBarShown_data() {
        QTest::addColumn<QString>("kind");
        QTest::addColumn<int>("number");
        QTest::newRow("there is none") << u"none"_s << error::FileNotFound;
        QTest::newRow("a folder of that name") << u"folder"_s << error::FileAccess;
    }
    void aFileThatCannotBeOpenedEndsTheImportWithTheBarShown() {
        QFETCH(QString, kind);
        QFETCH(int, number);
        const QString path = it().store.punchFolder() + u"/20010305.txt"_s;
        if (kind == u"folder"_s)
            QVERIFY(QDir().mkpath(path));
        it().host.punchFile = path;
        it().calculation.ReadPunchFile();
        verifyEndedSilently(number, {}, true);
    }

    void aFileOf200MegabytesTakesNoMoreMemoryThanASmallOne() {
        constexpr qint64 Size = 200'000'000;
        const QString path = it().store.writePunchFile(u"20010305.txt"_s, good());
        QFile file(path);
        QVERIFY(file.open(QIODevice::Append));
        // Lines of other kinds than a swipe or a key, and one without an end in sight.
        const QByteArray skipped = with(29, "01").repeated(30'000);
        while (file.size() < Size / 2)
            QCOMPARE(file.write(skipped), skipped.size());
        file.write(punchLine("00003", Day, Eight));
        const QByteArray endless(1'000'000, '0');
        while (file.size() < Size)
            QCOMPARE(file.write(endless), endless.size());
        file.write("\n" + punchLine("00004", Day, Eight));
        file.close();

        const DayCloseEnd end = runDayClose(it().store.folder(), {u"import="_s + path});
        QVERIFY(QFile::remove(path));
        rusage usage{};
        QCOMPARE(getrusage(RUSAGE_CHILDREN, &usage), 0);
        QVERIFY(!end.crashed);
        QCOMPARE(end.status, 0);
        QCOMPARE(end.answers.size(), 1);
        QVERIFY2(end.answers[0][u"finished"_s].toBool(), qPrintable(shown(end.answers[0])));
        const QStringList punches{swipe(u"00001"_s), swipe(u"00003"_s), swipe(u"00004"_s)};
        verifyTables(punches, punches, {result(u"00001"_s, true), result(u"00002"_s, false)},
                     {viewRow(u"00001"_s, Day, {Eight}), viewRow(u"00002"_s, Day, {})});
        qInfo("The import took at most %ld kilobytes.", usage.ru_maxrss);
#ifndef __SANITIZE_ADDRESS__ // which keeps what was given free
        QVERIFY(usage.ru_maxrss < 200'000);
#endif
    }
};

QTEST_GUILESS_MAIN(BadFileTest)
#include "BadFileTest.moc"
