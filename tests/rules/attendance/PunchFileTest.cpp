#include "rules/attendance/PunchFile.h"
#include "store/RunTimeError.h"
#include "support/Errors.h"
#include "support/SavedFiles.h"

#include <QTemporaryDir>
#include <QTest>

#include <functional>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

PunchLine lineOf(const QByteArray& text) {
    PunchLine line;
    line.assign(text.constData(), text.size());
    return line;
}

/// All fields of a line between bars.
QString fields(const PunchLine& line) {
    return QStringList{line.card(), line.year(),      line.month(),    line.day(),
                       line.time(), line.classCode(), line.lineCode(), line.ReaderID()}
        .join(u'|');
}

/// The most memory that this process has had, as the system tells it; 0 where it does not.
qint64 peakKilobytes() {
    QFile status(u"/proc/self/status"_s);
    if (!status.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : status.readAll().split('\n'))
        if (line.startsWith("VmHWM:"))
            return line.mid(6).trimmed().chopped(3).toLongLong();
    return 0;
}

constexpr const char* Swipe = "00000001234520010305080000255"
                              "07"
                              "001";
constexpr const char* Key = "00000001234120010305080000000"
                            "42"
                            "001"; // Function key 1.

} // namespace

/// Lines of a punch file and what is read out of them.
class PunchFileTest : public QObject {
    Q_OBJECT

    QTemporaryDir folder_;

    QString write(const QByteArray& content) {
        const QString path = folder_.filePath(u"20010305.txt"_s);
        writeContent(path, content);
        return path;
    }

    QStringList linesOf(const QByteArray& content) {
        PunchFile file(write(content));
        QStringList lines;
        PunchLine line;
        while (file.readLine(line))
            lines += fields(line);
        return lines;
    }

  private Q_SLOTS:
    void linesAreCutIntoTheirFields_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::addColumn<QStringList>("lines");
        const QString whole = u"000000012345|2001|03|05|080000|255|07|001"_s;
        const QString zeros = u"000000000000|0000|00|00|000000|000|00|000"_s;
        const QByteArray swipe(Swipe);
        QTest::newRow("an empty file has no line") << QByteArray() << QStringList();
        QTest::newRow("a line ends with LF") << swipe + '\n' << QStringList{whole};
        QTest::newRow("a line ends with CR LF") << swipe + "\r\n" << QStringList{whole};
        QTest::newRow("a last line without an end counts")
            << swipe + '\n' + swipe << QStringList{whole, whole};
        QTest::newRow("an empty line is 34 zeros") << QByteArray("\n\r\n") << QStringList{zeros, zeros};
        QTest::newRow("a line of 20 characters is filled on the left")
            << QByteArray("12345678901234567890\n")
            << QStringList{u"000000000000|0012|34|56|789012|345|67|890"_s};
        QTest::newRow("what stands beyond position 34 is ignored") << swipe + "and more\n" + swipe + "x\r\n"
                                                                   << QStringList{whole, whole};
        QTest::newRow("a line one character short with CR LF") << swipe.mid(1) + "\r\n" << QStringList{whole};
        QTest::newRow("a CR inside a line is a character of it")
            << QByteArray("0000000\r12345200103050800002550700\r\r\n")
            << QStringList{u"0000000\r1234|5200|10|30|508000|025|50|700"_s};
        QTest::newRow("a last line without LF keeps its CR")
            << swipe.left(33) + '\r' << QStringList{u"000000012345|2001|03|05|080000|255|07|00\r"_s};
        QTest::newRow("one byte is one character")
            << QByteArray("0000000\xe4\xbd\xa0"
                          "4520010305080000255"
                          "07"
                          "001\n")
            << QStringList{u"0000000\u00e4\u00bd\u00a045|2001|03|05|080000|255|07|001"_s};
    }
    void linesAreCutIntoTheirFields() {
        QFETCH(QByteArray, content);
        QTEST(linesOf(content), "lines");
    }

    void linesAreReadAcrossTheBordersOfTheBuffer() {
        QByteArray content;
        QStringList expected;
        // Lines of growing length pass every place of the 64 KiB border, with both kinds of end.
        for (int index = 0; index < 5000; ++index) {
            const QByteArray line = QByteArray(Swipe) + QByteArray(index % 41, 'x');
            content += line + (index % 2 == 0 ? "\n" : "\r\n");
            expected += u"000000012345|2001|03|05|080000|255|07|001"_s;
        }
        QVERIFY(content.size() > 3 * 64 * 1024);
        QCOMPARE(linesOf(content), expected);
    }

    void aLineOfManyMegabytesIsOneLine() {
        QCOMPARE(linesOf(QByteArray(5'000'000, '7') + "\r\n" + Swipe),
                 (QStringList{u"777777777777|7777|77|77|777777|777|77|777"_s,
                              u"000000012345|2001|03|05|080000|255|07|001"_s}));
    }

    void aFileOf200MegabytesNeedsLittleMemory() {
        QFile file(folder_.filePath(u"large.txt"_s));
        QVERIFY(file.open(QIODevice::WriteOnly));
        // Two lines, nearly all of it the second; the file takes no room on the disk.
        QVERIFY(file.write(QByteArray(Swipe) + '\n') > 0 && file.resize(200'000'000));
        file.close();
        const qint64 before = peakKilobytes();
        PunchFile punches(file.fileName());
        PunchLine line;
        QVERIFY(punches.readLine(line));
        QCOMPARE(fields(line), u"000000012345|2001|03|05|080000|255|07|001"_s);
        QVERIFY(punches.readLine(line));
        QCOMPARE(line.card(), QLatin1String("\0\0\0\0\0\0\0\0\0\0\0\0", 12));
        QVERIFY(!punches.readLine(line));
        QVERIFY(before > 0);
        QVERIFY2(peakKilobytes() - before < 20'000, qPrintable(QString::number(peakKilobytes() - before)));
    }

    void aFileThatCannotBeOpenedIsAnError() {
        QCOMPARE(errorOf([&] { PunchFile(folder_.filePath(u"none.txt"_s)); }), error::FileNotFound);
        QCOMPARE(errorOf([&] { PunchFile(folder_.path()); }), error::FileAccess);
    }

    void theEmployeeIsTheEndOfTheCard_data() {
        QTest::addColumn<int>("LenEmpNo");
        QTest::addColumn<QString>("EmpNo");
        QTest::newRow("five characters of seven zeros and 12345") << 5 << u"12345"_s;
        QTest::newRow("twelve keep the whole card") << 12 << u"000000012345"_s;
        QTest::newRow("more than the card has give all of it") << 20 << u"000000012345"_s;
        QTest::newRow("one") << 1 << u"5"_s;
        QTest::newRow("none") << 0 << u""_s;
    }
    void theEmployeeIsTheEndOfTheCard() {
        QFETCH(int, LenEmpNo);
        PunchReader reader(static_cast<std::int16_t>(LenEmpNo), 10, PunchReader::SameReader::NotAsked);
        const PunchLine line = lineOf(Swipe);
        const auto punch = reader.take(line);
        QVERIFY(punch.has_value());
        QTEST(QString(punch->EmpNo), "EmpNo");
    }

    void blanksOfTheCardAreNotTrimmed() {
        PunchReader reader(5, 10, PunchReader::SameReader::NotAsked);
        const PunchLine line = lineOf("       12 4 20010305080000255"
                                      "07"
                                      "001");
        QCOMPARE(QString(reader.take(line)->EmpNo), u"12 4 "_s);
    }

    void aNegativeLengthOfCodesIsAnErrorAtAnyLine() {
        PunchReader reader(-1, 10, PunchReader::SameReader::NotAsked);
        QCOMPARE(errorOf([&] { (void)reader.take(lineOf("")); }), 5);
    }

    /// Each line is "time card class line reader"; what is written for each is "time class", joined by
    /// blanks.
    void swipesTakeTheClassOfAKeyBeforeThem_data() {
        QTest::addColumn<int>("IntervalSec");
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("written");
        QTest::newRow("without a key a swipe has the line's own class")
            << 10 << QStringList{u"080000 00001 255 07 001"_s} << u"080000 255"_s;
        QTest::newRow("a key 1 and a swipe 10 seconds later")
            << 10 << QStringList{u"080000 00001 000 42 001"_s, u"080010 00007 255 07 001"_s}
            << u"080010 081"_s;
        QTest::newRow("eleven seconds later the line's own class stands")
            << 10 << QStringList{u"080000 00001 000 42 001"_s, u"080011 00007 255 07 001"_s}
            << u"080011 255"_s;
        QTest::newRow("seventy seconds later the key's class stands again")
            << 10 << QStringList{u"080000 00001 000 42 001"_s, u"080110 00007 255 07 001"_s}
            << u"080110 081"_s;
        QTest::newRow("65 seconds later read as 5")
            << 10 << QStringList{u"080000 00003 000 42 001"_s, u"080105 00007 255 07 001"_s}
            << u"080105 083"_s;
        QTest::newRow("15 seconds later do not")
            << 10 << QStringList{u"080000 00003 000 42 001"_s, u"080015 00007 255 07 001"_s}
            << u"080015 255"_s;
        QTest::newRow("an hour and two seconds later read as 2")
            << 10 << QStringList{u"080000 00009 000 42 001"_s, u"090002 00007 255 07 001"_s}
            << u"090002 089"_s;
        QTest::newRow("a swipe before the key shows the size of the difference")
            << 10 << QStringList{u"080000 00002 000 42 001"_s, u"075955 00007 255 07 001"_s}
            << u"075955 082"_s;
        QTest::newRow("a swipe past midnight shows the size of the difference to the key before it")
            << 10 << QStringList{u"235958 00002 000 42 001"_s, u"000003 00007 255 07 001"_s}
            << u"000003 255"_s;
        QTest::newRow("with an interval of 0 the same second counts")
            << 0 << QStringList{u"080000 00001 000 42 001"_s, u"080000 00007 255 07 001"_s}
            << u"080000 081"_s;
        QTest::newRow("with an interval of 0 the next second does not count")
            << 0 << QStringList{u"080000 00001 000 42 001"_s, u"080001 00007 255 07 001"_s}
            << u"080001 255"_s;
        QTest::newRow("with an interval of 59 every swipe takes the key")
            << 59 << QStringList{u"080000 00001 000 42 001"_s, u"091259 00007 255 07 001"_s}
            << u"091259 081"_s;
        QTest::newRow("a key applies to the next swipe alone")
            << 10
            << QStringList{u"080000 00001 000 42 001"_s, u"080001 00007 255 07 001"_s,
                           u"080002 00007 255 07 001"_s}
            << u"080001 081 080002 255"_s;
        QTest::newRow("a key that came too early is spent as well")
            << 10
            << QStringList{u"080000 00001 000 42 001"_s, u"080030 00007 255 07 001"_s,
                           u"080101 00007 255 07 001"_s}
            << u"080030 255 080101 255"_s;
        QTest::newRow("of two keys in a row the second replaces time and class")
            << 10
            << QStringList{u"080000 00001 000 42 001"_s, u"080020 00004 000 42 001"_s,
                           u"080025 00007 255 07 001"_s}
            << u"080025 084"_s;
        QTest::newRow("a key 0 is skipped and an earlier key stays pending")
            << 10
            << QStringList{u"080000 00001 000 42 001"_s, u"080004 00000 000 42 001"_s,
                           u"080005 00007 255 07 001"_s}
            << u"080005 081"_s;
        QTest::newRow("a key that is no digit is skipped")
            << 10 << QStringList{u"080000 0000A 000 42 001"_s, u"080005 00007 255 07 001"_s}
            << u"080005 255"_s;
        QTest::newRow("other line codes are skipped and the key stays pending")
            << 10
            << QStringList{u"080000 00001 000 42 001"_s, u"080001 00007 255 08 001"_s,
                           u"080001 00007 255 00 001"_s, u"080005 00007 255 07 001"_s}
            << u"080005 081"_s;
        QTest::newRow("whichever reader the swipe comes from")
            << 10 << QStringList{u"080000 00001 000 42 001"_s, u"080005 00007 255 07 002"_s}
            << u"080005 081"_s;
    }
    void swipesTakeTheClassOfAKeyBeforeThem() {
        QFETCH(int, IntervalSec);
        QFETCH(QStringList, lines);
        PunchReader reader(5, static_cast<std::uint8_t>(IntervalSec), PunchReader::SameReader::NotAsked);
        QTEST(writtenOf(reader, lines), "written");
    }

    void theOlderReaderAsksForTheSameReader_data() {
        QTest::addColumn<QStringList>("lines");
        QTest::addColumn<QString>("written");
        QTest::newRow("the line before from the same reader")
            << QStringList{u"080000 00001 000 42 001"_s, u"080005 00007 255 07 001"_s} << u"080005 081"_s;
        QTest::newRow("the line before from another reader")
            << QStringList{u"080000 00001 000 42 001"_s, u"080005 00007 255 07 002"_s} << u"080005 255"_s;
        QTest::newRow("a skipped line between counts as the line before")
            << QStringList{u"080000 00001 000 42 001"_s, u"080001 00007 255 99 002"_s,
                           u"080005 00007 255 07 002"_s}
            << u"080005 081"_s;
        QTest::newRow("a swipe of another reader spends the key")
            << QStringList{u"080000 00001 000 42 001"_s, u"080005 00007 255 07 002"_s,
                           u"080006 00007 255 07 002"_s}
            << u"080005 255 080006 255"_s;
    }
    void theOlderReaderAsksForTheSameReader() {
        QFETCH(QStringList, lines);
        PunchReader reader(5, 10, PunchReader::SameReader::Required);
        QTEST(writtenOf(reader, lines), "written");
    }

    void aKeysTimeIsLookedAtOnlyWhenASwipeFollows() {
        QByteArray badKey(Key);
        badKey.replace(20, 6, "99AA99");
        PunchReader alone(5, 10, PunchReader::SameReader::NotAsked);
        QCOMPARE(errorOf([&] { (void)alone.take(lineOf(badKey)); }), 0);
        QCOMPARE(errorOf([&] { (void)alone.take(lineOf(Swipe)); }), error::TypeMismatch);
        PunchReader replaced(5, 10, PunchReader::SameReader::NotAsked);
        QCOMPARE(errorOf([&] {
                     (void)replaced.take(lineOf(badKey));
                     (void)replaced.take(lineOf(Key));
                     (void)replaced.take(lineOf(Swipe));
                 }),
                 0);
    }

    void aKeysDateIsNeverLookedAt() {
        QByteArray key(Key);
        key.replace(12, 8, "XXXXXXXX");
        PunchReader reader(5, 10, PunchReader::SameReader::NotAsked);
        QCOMPARE(errorOf([&] {
                     (void)reader.take(lineOf(key));
                     (void)reader.take(lineOf(Swipe));
                 }),
                 0);
    }

    void aSwipeBecomesTheValuesOfItsRow() {
        PunchReader reader(5, 10, PunchReader::SameReader::NotAsked);
        const PunchLine line = lineOf(Swipe);
        const std::array<Value, 5> expected{u"12345", QDate(2001, 3, 5), QTime(8, 0), u"255", u"001"};
        QCOMPARE(reader.take(line)->values(), expected);
    }

    void dateAndTimeTextsAreExactlyDigits_data() {
        QTest::addColumn<QByteArray>("dateAndTime");
        QTest::addColumn<bool>("good");
        QTest::newRow("a day and a time") << QByteArray("20010305080000") << true;
        QTest::newRow("the last second of a day") << QByteArray("20010305235959") << true;
        QTest::newRow("the year 100") << QByteArray("01000305080000") << true;
        QTest::newRow("the year 99") << QByteArray("00990305080000") << false;
        QTest::newRow("the 29th of February of a leap year") << QByteArray("20000229080000") << true;
        QTest::newRow("the 29th of February of another year") << QByteArray("20010229080000") << false;
        QTest::newRow("month 13") << QByteArray("20011305080000") << false;
        QTest::newRow("24 o'clock") << QByteArray("20010305240000") << false;
        QTest::newRow("minute 60") << QByteArray("20010305086000") << false;
        QTest::newRow("second 60") << QByteArray("20010305080060") << false;
        QTest::newRow("a blank in the day") << QByteArray("200103 5080000") << false;
        QTest::newRow("a blank in the hour") << QByteArray("20010305 80000") << false;
        QTest::newRow("a month in letters") << QByteArray("2001ma05080000") << false;
        QTest::newRow("a sign in the year") << QByteArray("+2010305080000") << false;
    }
    void dateAndTimeTextsAreExactlyDigits() {
        QFETCH(QByteArray, dateAndTime);
        QByteArray text(Swipe);
        text.replace(12, 14, dateAndTime);
        PunchReader reader(5, 10, PunchReader::SameReader::NotAsked);
        const PunchLine line = lineOf(text);
        const auto punch = reader.take(line);
        const int number = errorOf([&] { (void)punch->values(); });
        QTEST(number == 0, "good");
        QVERIFY(number == 0 || number == error::Syntax);
    }

    void theFilesNameTellsTheDay_data() {
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("dayText");
        QTest::addColumn<QDate>("day");
        const QDate march(2001, 3, 5);
        QTest::newRow("yyyymmdd.txt") << u"/punch/20010305.txt"_s << u"2001/03/05"_s << march;
        QTest::newRow("of the last twelve characters only the first eight count")
            << u"/punch/20010305.doc"_s << u"2001/03/05"_s << march;
        QTest::newRow("what stands before them does not count")
            << u"/punch/day20010305.txt"_s << u"2001/03/05"_s << march;
        QTest::newRow("the text of a short name is short") << u"a.txt"_s << u"a.tx/t/"_s << QDate();
        QTest::newRow("a longer ending shifts the text")
            << u"/p/20010305.text"_s << u"0010/30/5."_s << QDate();
        QTest::newRow("no such day") << u"/punch/20010230.txt"_s << u"2001/02/30"_s << QDate();
        QTest::newRow("letters") << u"/punch/2001mar5.txt"_s << u"2001/ma/r5"_s << QDate();
        QTest::newRow("the year 99") << u"/punch/00990305.txt"_s << u"0099/03/05"_s << QDate();
        QTest::newRow("wide digits") << u"/punch/２００１0305.txt"_s << u"２００１/03/05"_s << QDate();
        QTest::newRow("nothing") << QString() << u"//"_s << QDate();
    }
    void theFilesNameTellsTheDay() {
        QFETCH(QString, path);
        QFETCH(QDate, day);
        const QString dayText = fileDayText(path);
        QTEST(dayText, "dayText");
        QDate found;
        const int number = errorOf([&] { found = fileDay(dayText); });
        QCOMPARE(found, day);
        QCOMPARE(number, day.isValid() ? 0 : error::TypeMismatch);
    }

  private:
    static QString writtenOf(PunchReader& reader, const QStringList& lines) {
        QStringList written;
        for (const QString& text : lines) {
            const QList<QByteArray> parts = text.toLatin1().split(' ');
            const PunchLine line =
                lineOf("0000000" + parts[1] + "20010305" + parts[0] + parts[2] + parts[3] + parts[4]);
            if (const auto punch = reader.take(line))
                written += QString(punch->line->time()) + u' ' + punch->classCode;
        }
        return written.join(u' ');
    }
};

QTEST_GUILESS_MAIN(PunchFileTest)
#include "PunchFileTest.moc"
