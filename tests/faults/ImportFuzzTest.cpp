#include "rules/attendance/DailyCalculation.h"
#include "store/RunTimeError.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/FakeHost.h"
#include "support/TestStore.h"

#include <QElapsedTimer>
#include <QMap>
#include <QRandomGenerator>
#include <QTest>

#include <algorithm>
#include <iterator>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr quint32 Files = 3000;
constexpr qint64 LongestImport = 60'000;

const QDate Day(2001, 3, 5);

template<std::size_t Size>
const char* oneOf(QRandomGenerator& random, const char* const (&choices)[Size]) {
    return choices[random.bounded(static_cast<int>(Size))];
}

/// A line whose fields are mostly of the right kind.
QByteArray likelyLine(QRandomGenerator& random) {
    static constexpr const char* cards[] = {"00001", "00002", "00003", "123456789012",
                                            "1",     "A0001", "0",     "00009"};
    static constexpr const char* classes[] = {"255", "255", "000", "081", "081", "089", "001"};
    static constexpr const char* lineCodes[] = {"07", "07", "07", "07", "42", "01"};
    static constexpr const char* readers[] = {"001", "002", "   "};
    const QDate day = random.bounded(20) == 0 ? Day.addDays(random.bounded(-400, 400)) : Day;
    // Few enough times that swipes fall together.
    const QTime time = QTime(0, 0).addSecs(random.bounded(96) * 900 + random.bounded(3) * 8);
    QByteArray line = punchLine(oneOf(random, cards), day, time, oneOf(random, classes),
                                oneOf(random, lineCodes), oneOf(random, readers));
    if (random.bounded(4) == 0)
        line.replace('\n', "\r\n");
    return line;
}

QByteArray anyBytes(QRandomGenerator& random, int length) {
    // Digits and ends of lines more often than others: they get furthest.
    static constexpr char likely[] = "0123456789\n\r'#:/ ";
    QByteArray bytes;
    for (; length > 0; --length)
        bytes += random.bounded(3) == 0 ? static_cast<char>(random.bounded(256))
                                        : likely[random.bounded(static_cast<int>(std::size(likely)))];
    return bytes;
}

QByteArray fileOf(QRandomGenerator& random) {
    QByteArray content;
    for (int line = random.bounded(25); line > 0; --line)
        content += random.bounded(20) == 0 ? anyBytes(random, random.bounded(60)) : likelyLine(random);
    // In two of three files some characters are spoiled, taken out or put in.
    for (int times = random.bounded(3) * random.bounded(1, 4); times > 0 && !content.isEmpty(); --times)
        content.replace(random.bounded(static_cast<int>(content.size())), random.bounded(3),
                        anyBytes(random, random.bounded(3)));
    return content;
}

QString nameOf(QRandomGenerator& random) {
    static constexpr const char* bad[] = {"20010229.txt", "punches.txt", "2001-3-5.txt", "x"};
    return QString::fromLatin1(random.bounded(25) == 0 ? oneOf(random, bad) : "20010305.txt");
}

} // namespace

/// The whole action of the read button over small files made up at random, the same for a seed: it ends, and
/// as told, by success or by a run-time error, and leaves tables that agree with that.
class ImportFuzzTest : public QObject {
    Q_OBJECT

    TestStore store_;
    int finished_ = 0;
    int barShown_ = 0;
    QMap<int, int> errors_;

    [[nodiscard]] QStringList select(const QString& statement) {
        return rowsOfSelection(store_.database(), statement);
    }

    void layOut(QRandomGenerator& random) {
        Database& database = store_.database();
        store_.clear();
        addSlot(database, u"A"_s, {{u"CardType", random.bounded(5)}});
        addSlot(database, u"B"_s, {{u"ElstType", 4}, {u"ElstMin", 30}});
        for (const QString& EmpNo : {u"00001"_s, u"00002"_s, u"A0001"_s}) {
            addEmployee(database, EmpNo);
            if (random.bounded(4) > 0)
                addRoster(database, EmpNo, Day, random.bounded(2) == 0 ? u"A"_s : u"B"_s);
        }
        if (random.bounded(3) == 0)
            addLeaveDay(database, u"00001"_s, Day, u"01"_s, QTime(8, 0), QTime(12, 0));
        database.execute(u"Update Syst01 Set LenEmpNo = %1, IntervalSec = %2"_s.arg(
            QString::number(random.bounded(6) > 0 ? 5 : random.bounded(-1, 14)),
            QString::number(random.bounded(3) > 0 ? 10 : random.bounded(256))));
    }

    void verifyFinished(const FakeHost& host, const DailyCalculation& calculation) {
        QVERIFY(!calculation.lastError());
        QVERIFY(!calculation.ImportRunning());
        QVERIFY(!host.progressShown);
        QCOMPARE(host.pointer, Pointer::Normal);
        QCOMPARE(host.calls.filter(u"tell "_s), QStringList{u"tell 2001/03/05資料已轉入成功!!"_s});
        QCOMPARE(select(u"Select EmpNo from Base06 Where IsNull(LeaveDate) = False"_s), QStringList());
        // Each punch arrives once.
        QStringList punches = rowsOf(store_.database(), u"AtteTemp"_s);
        punches.sort(Qt::CaseInsensitive);
        punches.removeDuplicates();
        QStringList arrived = rowsOf(store_.database(), u"Atte01"_s);
        arrived.sort(Qt::CaseInsensitive);
        QCOMPARE(arrived, punches);
        // And everybody on the roster has a result, a view, and an exception where he is one.
        const QStringList roster = select(u"Select EmpNo,YMD,TimeNo from Rule03 order by EmpNo"_s);
        QCOMPARE(select(u"Select EmpNo,UseDate,TimeNo from Atte02 order by EmpNo"_s), roster);
        QCOMPARE(select(u"Select View02.EmpNo,View02.UseDate,Rule03.TimeNo from View02,Rule03 Where "
                        "View02.EmpNo = Rule03.EmpNo order by View02.EmpNo"_s),
                 roster);
        QCOMPARE(rowsOf(store_.database(), u"Atte03"_s), select(u"Select * from Atte02 Where Expt = True"_s));
    }

    void verifyEndedSilently(const FakeHost& host, const DailyCalculation& calculation) {
        QVERIFY(calculation.lastError());
        ++errors_[calculation.lastError()->number()];
        QVERIFY(!calculation.lastError()->text().isEmpty());
        const bool barShown = calculation.ImportRunning();
        barShown_ += barShown ? 1 : 0;
        QCOMPARE(host.progressShown, barShown);
        QCOMPARE(host.pointer, barShown ? Pointer::Hourglass : Pointer::Normal);
        QCOMPARE(host.calls.filter(u"tell "_s), QStringList());
        QCOMPARE(select(u"Select EmpNo from Base06 Where IsNull(LeaveDate) = True"_s), QStringList());
        if (!barShown)
            QCOMPARE(rowsOf(store_.database(), u"AtteTemp"_s), QStringList());
    }

  private Q_SLOTS:
    void anyFileIsReadToItsEndOrEndsByARunTimeError() {
        store_.holdOpen();
        for (quint32 seed = 1; seed <= Files; ++seed) {
            QRandomGenerator random(seed);
            layOut(random);
            const QByteArray content = fileOf(random);
            FakeHost host(&store_.database());
            DailyCalculation calculation(store_.database(), host);
            host.punchFile = store_.writePunchFile(nameOf(random), content);
            QElapsedTimer timer;
            timer.start();
            calculation.ReadPunchFile();
            QVERIFY(timer.elapsed() < LongestImport);
            if (calculation.finished())
                verifyFinished(host, calculation);
            else
                verifyEndedSilently(host, calculation);
            if (QTest::currentTestFailed()) {
                qInfo("That was the file of seed %u: %s", seed, content.toPercentEncoding("\n ").constData());
                return;
            }
            finished_ += calculation.finished() ? 1 : 0;
        }
        QStringList told;
        for (const auto& [number, count] : errors_.asKeyValueRange())
            told += u"%1 by error %2"_s.arg(count).arg(number);
        qInfo("Of %u imports %d came to their end, %s.", Files, finished_, qPrintable(told.join(u", "_s)));
        // The files are worth reading: many are good, many are not, and those end in different ways.
        QVERIFY(finished_ > 500 && finished_ < 2500);
        QVERIFY(errors_.size() >= 4);
        QVERIFY(barShown_ > 300);
    }
};

QTEST_GUILESS_MAIN(ImportFuzzTest)
#include "ImportFuzzTest.moc"
