#include "app/Clerk.h"
#include "app/ModuleProbes.h"
#include "support/Patience.h"
#include "support/SavedFiles.h"
#include "windows/reports/Form7Fixture.h"

#include <QTemporaryDir>

#include <algorithm>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// A month of two units: exceptions, leave, write-offs and overtime.
class ClerkFixture : public Form7Fixture {
  public:
    ClerkFixture() {
        Database& base = database();
        base.execute(u"Update Syst01 Set CmpName = '範例機關'"_s);
        insertRow(base, u"Base02"_s, {{u"UnitNo", u"1000"}, {u"Unit", u"會計課"}});
        insertRow(base, u"Base02"_s, {{u"UnitNo", u"2000"}, {u"Unit", u"人事課"}});
        addPerson(u"10001"_s, u"王小明"_s, u"1000"_s);
        addPerson(u"10002"_s, u"陳美惠"_s, u"2000"_s);
        addPerson(u"10003"_s, u"林大同"_s, u"1000"_s);
        insertRow(base, u"Holi01"_s, {{u"HoliNo", u"03"}, {u"HoliType", u"事假"}});
        insertRow(base, u"Holi01"_s, {{u"HoliNo", u"04"}, {u"HoliType", u"病假"}});
        insertRow(base, u"Canc01"_s, {{u"CnlNo", u"01"}, {u"CnlName", u"忘記刷卡"}});
        insertRow(base, u"Canc01"_s, {{u"CnlNo", u"02"}, {u"CnlName", u"卡鐘故障"}});
        addException(u"10001"_s, 2, u"F1"_s);
        addException(u"10001"_s, 3, u"F4"_s);
        addException(u"10002"_s, 2, u"F1"_s);
        addException(u"10003"_s, 4, u"F1"_s);
        addLeaveDay(base, u"10001"_s, {2010, 3, 5}, u"03"_s, QTime(8, 0), QTime(12, 0), {{u"HoliHours", 4}});
        addLeaveDay(base, u"10002"_s, {2010, 3, 5}, u"04"_s, QTime(8, 0), QTime(12, 0), {{u"HoliHours", 4}});
        addWriteOff(base, u"10001"_s, {2010, 3, 8}, u"01"_s, QString(), QString(), u"02"_s);
        insertRow(base, u"Over01"_s,
                  {{u"EmpNo", u"10002"}, {u"OverDate", QDate(2010, 3, 9)}, {u"OverHours", 3}});
        showIdle();
        clerk_ = std::make_unique<Clerk>(mainWindow());
    }
    [[nodiscard]] Clerk& clerk() { return *clerk_; }

    /// Types the month into the dates of a tab.
    [[nodiscard]] bool writeMonth(int tab) {
        return clerk().fill(u"Mk%1(0)"_s.arg(tab + 1), u"990301"_s) &&
               clerk().fill(u"Mk%1(1)"_s.arg(tab + 1), u"990331"_s);
    }
    /// Writes a code in place of what a box holds, which is selected when Tab comes to it.
    [[nodiscard]] bool replace(const QString& box, const QString& code) {
        return clerk().reach(box) && (clerk().write(code), true);
    }
    /// What came of a print: its first page, and the files that were saved of it.
    struct Printed {
        QString page, pdf, sheet;
    };
    /// Presses print, saves what it shows as PDF and as spreadsheet, and closes it; nothing where a key goes
    /// wrong.
    [[nodiscard]] Printed printed(int tab) {
        if (!clerk().press(u"Cmd%1(0)"_s.arg(tab + 1)))
            return {};
        ReportPreview& shown = preview();
        if (!QTest::qWaitForWindowActive(&shown, PatienceMs))
            return {};
        Printed result;
        result.page = shown.document().textOf(0);
        const QString path = saved_.filePath(QFileInfo(file()).baseName());
        answers.expectFile(path + u".pdf"_s).expectFile(path + u".xlsx"_s);
        QTest::keyClick(shown.windowHandle(), Qt::Key_S, Qt::ControlModifier);
        (void)QTest::qWaitForWindowActive(&shown, PatienceMs);
        QTest::keyClick(shown.windowHandle(), Qt::Key_E, Qt::ControlModifier);
        (void)QTest::qWaitForWindowActive(&shown, PatienceMs);
        QTest::keyClick(shown.windowHandle(), Qt::Key_Escape);
        // As the desktop does it.
        mainWindow().activateWindow();
        if (!previews().isEmpty() || !QTest::qWaitForWindowActive(&mainWindow(), PatienceMs))
            return {};
        result.pdf = pdfPages(path + u".pdf"_s).value(0);
        result.sheet = sheetOf(path + u".xlsx"_s, 1).join(u'\n');
        return result;
    }

  private:
    void addPerson(const QString& EmpNo, const QString& name, const QString& unit) {
        addEmployee(database(), EmpNo, {{u"EmpName", name}, {u"UnitNo", unit}, {u"WorkNo", u"A"}});
    }
    void addException(const QString& EmpNo, int day, const QString& mark) {
        insertRow(database(), u"Atte02"_s,
                  {{u"EmpNo", EmpNo},
                   {u"UseDate", QDate(2010, 3, day)},
                   {u"TimeNo", u"A"},
                   {mark, true},
                   {u"Expt", true}});
    }

    std::unique_ptr<Clerk> clerk_;
    QTemporaryDir saved_;
};

/// Empty where page and files hold these texts and not those.
QString faultOf(const ClerkFixture::Printed& printed, const QStringList& with, const QStringList& without) {
    for (const QString& text : {printed.page, printed.pdf, printed.sheet}) {
        const auto isIn = [&text](const QString& wanted) { return text.contains(wanted); };
        if (!std::ranges::all_of(with, isIn) || std::ranges::any_of(without, isIn))
            return u"not as expected: "_s + text;
    }
    return {};
}

} // namespace

/// What a clerk prints and saves at the end of a month, by keyboard alone.
class ReportClerkTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void atTheEndOfAMonth();

  private:
    static void exceptionsOfAUnit(ClerkFixture& it);
    static void leaveStatistics(ClerkFixture& it);
    static void inspectionList(ClerkFixture& it);
    static void writeOffCounts(ClerkFixture& it);
    static void overtimeHours(ClerkFixture& it);
};

void ReportClerkTest::exceptionsOfAUnit(ClerkFixture& it) {
    Clerk& clerk = it.clerk();
    QVERIFY(clerk.turnTo(it.tabs(), 2));
    QVERIFY(clerk.reach(u"Option3(0)"_s));
    clerk.key(Qt::Key_Down, 3);
    QVERIFY(it.option(2, 3).isChecked());
    // The mornings of one unit.
    QVERIFY(clerk.reach(u"OptionTS(0)"_s));
    clerk.key(Qt::Key_Right);
    QVERIFY(it.writeMonth(2));
    QVERIFY(it.replace(u"Combo3(2)"_s, u"1000"_s));
    QVERIFY(it.replace(u"Combo3(3)"_s, u"1000"_s));
    const ClerkFixture::Printed printed = it.printed(2);
    QCOMPARE(it.file(), u"C04.rpt"_s);
    QCOMPARE(faultOf(printed, {u"10001"_s, u"10003"_s}, {u"10002"_s}), QString());
    for (const QString& paper : {printed.page, printed.pdf})
        QVERIFY2(paper.contains(u"99/03/01 ～ 99/03/31"_s), qPrintable(paper));
    QVERIFY(it.formula().endsWith(u" and {Atte02.F1} = True"));
}

void ReportClerkTest::leaveStatistics(ClerkFixture& it) {
    Clerk& clerk = it.clerk();
    QVERIFY(clerk.turnTo(it.tabs(), 3));
    // One leave type of the list.
    QVERIFY(clerk.reach(u"List1"_s));
    clerk.key(Qt::Key_Down);
    clerk.key(Qt::Key_Home);
    QCOMPARE(it.list(3).selectedItems().size(), 1);
    QVERIFY(it.writeMonth(3));
    const ClerkFixture::Printed printed = it.printed(3);
    QCOMPARE(it.file(), u"D01.rpt"_s);
    QCOMPARE(faultOf(printed, {u"10001"_s, u"事假"_s}, {u"10002"_s}), QString());
}

void ReportClerkTest::inspectionList(ClerkFixture& it) {
    Clerk& clerk = it.clerk();
    QVERIFY(clerk.reach(u"Option4(0)"_s));
    clerk.key(Qt::Key_Right);
    clerk.key(Qt::Key_Down);
    QVERIFY(it.option(3, 4).isChecked());
    QVERIFY(it.replace(u"Mk4(0)"_s, u"990305"_s));
    const ClerkFixture::Printed printed = it.printed(3);
    QCOMPARE(it.file(), u"D05.rpt"_s);
    QCOMPARE(faultOf(printed, {u"10001"_s, u"10002"_s}, {u"10003"_s}), QString());
    for (const QString& paper : {printed.page, printed.pdf})
        QVERIFY2(paper.contains(u"在職人數：3 人"_s) && paper.contains(u"請假人數：2 人"_s),
                 qPrintable(paper));
}

void ReportClerkTest::writeOffCounts(ClerkFixture& it) {
    Clerk& clerk = it.clerk();
    QVERIFY(clerk.turnTo(it.tabs(), 4));
    QVERIFY(it.writeMonth(4));
    const ClerkFixture::Printed printed = it.printed(4);
    QCOMPARE(it.file(), u"E01.rpt"_s);
    QCOMPARE(faultOf(printed, {u"忘記刷卡"_s, u"卡鐘故障"_s, u"10001"_s}, {u"10002"_s}), QString());
}

void ReportClerkTest::overtimeHours(ClerkFixture& it) {
    Clerk& clerk = it.clerk();
    QVERIFY(clerk.turnTo(it.tabs(), 5));
    QVERIFY(clerk.reach(u"Option6(0)"_s));
    clerk.key(Qt::Key_Down, 3);
    QVERIFY(it.writeMonth(5));
    // A unit chosen from the list, which is cut to its code as the box is left.
    QVERIFY(clerk.reach(u"Combo6(2)"_s));
    clerk.key(Qt::Key_Down, 2);
    QCOMPARE(it.combo(5, 2).currentText(), u"2000-人事課"_s);
    const ClerkFixture::Printed printed = it.printed(5);
    QCOMPARE(it.combo(5, 2).currentText(), u"2000"_s);
    QCOMPARE(it.file(), u"F04.rpt"_s);
    QCOMPARE(faultOf(printed, {u"人事課"_s}, {u"會計課"_s}), QString());
}

void ReportClerkTest::atTheEndOfAMonth() {
    ClerkFixture it;
    OpenToolWindow(7);
    for (const auto& step :
         {exceptionsOfAUnit, leaveStatistics, inspectionList, writeOffCounts, overtimeHours}) {
        step(it);
        if (QTest::currentTestFailed())
            return;
    }
    QVERIFY(it.clerk().press(u"Cmd6(1)"_s));
    QVERIFY(!it.isOpen());
    QCOMPARE(it.mainWindow().windowTitle(), IdleCaption);
    QCOMPARE(it.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<ReportClerkTest>(argc, argv);
}

#include "ReportClerkTest.moc"
