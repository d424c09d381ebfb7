#include "app/CodeCombo.h"
#include "windows/ModuleFixture.h"
#include "windows/reports/Form7Fixture.h"

#include <QFile>
#include <QRadioButton>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QDate Monday(2026, 3, 2); ///< The day of the punch file in the manual.

/// The lines of the punch file that the manual gives.
QStringList punchLinesOfManual() {
    QFile chapter(QStringLiteral(PONTREL_MANUAL "/first-day.md"));
    if (!chapter.open(QIODevice::ReadOnly))
        qFatal("the chapter cannot be read");
    QStringList lines;
    for (const QString& line : QString::fromUtf8(chapter.readAll()).split(u'\n')) {
        if (line.startsWith(u"    0000"))
            lines << line.trimmed();
    }
    return lines;
}

/// A clerk who follows the manual's first day, on the day behind that of the punch file.
class FirstDay : public ModuleFixture {
  public:
    FirstDay() {
        clock::setSource([] { return QDateTime(Monday.addDays(1), QTime(9, 0)); });
        layOutTemplates(store.folder());
        showMainWindow();
    }
    ~FirstDay() {
        qDeleteAll(previews());
        clock::setSource({});
    }

    void openModuleWindow(int module) { click(control(mainWindow(), u"Tb(%1)"_s.arg(module))); }

    /// Opens the calendar from a box beside or of a date control and types a day of the Republic into it.
    void choose(QWidget& window, const QString& box, const QString& name, QDate day) {
        auto& date = control<TDBDate>(window, name);
        auto& from = control(window, box);
        from.setFocus();
        QTest::keyClick(&from, Qt::Key_F4);
        QWindow* calendar = date.calendar()->window()->windowHandle();
        for (const QChar digit : QString::number(day.year() - 1911) + day.toString(u"MMdd"_s))
            QTest::keyClick(calendar, digit.toLatin1());
        QTest::keyClick(calendar, Qt::Key_Return);
        QCOMPARE(date.date(), day);
    }
    void choose(const QString& box, const QString& name, QDate day) { choose(form(), box, name, day); }

    void typeAll(const std::vector<std::pair<QString, QString>>& texts) {
        for (const auto& [name, text] : texts)
            type(name, text);
    }
    void enterTime(const QString& name, const QString& digits) {
        auto& time = at<QLineEdit>(name);
        time.setFocus();
        QTest::keyClicks(&time, digits);
    }
    /// The date dialog comes next: chooses the day and presses OK.
    void expectDay(QDate day) {
        answers.expect(u"FrmI1Date"_s, [this, day](QWidget& dialog) {
            choose(dialog, u"TDBMask1(0)"_s, u"TDBDate1(0)"_s, day);
            click(control(dialog, u"Command1(0)"_s));
        });
    }
    void expectMessage() { answers.expectMsgBox(); }
};

} // namespace

/// The first day of the manual, step by step from an empty store to the printed exceptions, with nothing done
/// that the chapter does not say.
class FirstDayTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theFirstDayLeadsFromAnEmptyStoreToPrintedExceptions();

  private:
    static void settings(FirstDay& clerk);
    static void codes(FirstDay& clerk);
    static void slotAndClass(FirstDay& clerk);
    static void employees(FirstDay& clerk);
    static void roster(FirstDay& clerk);
    static void punchFile(FirstDay& clerk);
    static void leaveNote(FirstDay& clerk);
    static void report(FirstDay& clerk);
};

void FirstDayTest::settings(FirstDay& clerk) {
    clerk.openModuleWindow(8);
    clerk.press(u"CmdSet(0)"_s);
    QWidget& settings = *childWindow(u"FrmSysSet"_s);
    click(control(settings, u"CtrlCmd(0)"_s));
    QCOMPARE(control<QLineEdit>(settings, u"Text1(1)"_s).text(), u"5"_s);
    auto& company = control<QLineEdit>(settings, u"Text1(9)"_s);
    company.setFocus();
    typeInto(company, u"範例公司"_s);
    click(control(settings, u"CtrlCmd(2)"_s));
    click(control(settings, u"CtrlCmd(3)"_s));
    clerk.press(u"CmdSet(3)"_s);
    QVERIFY(!clerk.isOpen());
}

void FirstDayTest::codes(FirstDay& clerk) {
    clerk.openModuleWindow(1);
    const QStringList codes{u"0001"_s, u"1000"_s, u"0001"_s};
    const QStringList names{u"課員"_s, u"會計課"_s, u"正式"_s};
    for (int tab = 0; tab < 3; ++tab) {
        clerk.clickTab(tab);
        clerk.press(u"CtrlCmd%1(0)"_s.arg(tab));
        clerk.typeAll(
            {{u"Text%1(0)"_s.arg(tab + 1), codes.at(tab)}, {u"Text%1(1)"_s.arg(tab + 1), names.at(tab)}});
        clerk.press(u"CtrlCmd%1(4)"_s.arg(tab));
    }
    QCOMPARE(rowsOf(clerk.database(), u"Base01"_s), QStringList{u"0001|課員"_s});
    QCOMPARE(rowsOf(clerk.database(), u"Base02"_s), QStringList{u"1000|會計課"_s});
    QCOMPARE(rowsOf(clerk.database(), u"Base03"_s), QStringList{u"0001|正式"_s});
}

void FirstDayTest::slotAndClass(FirstDay& clerk) {
    clerk.clickTab(3);
    clerk.press(u"CtrlCmd3(0)"_s);
    clerk.typeAll({{u"Text4(0)"_s, u"A"_s}, {u"Text4(1)"_s, u"日班"_s}});
    clerk.press(u"OptCT(4)"_s);
    for (int position = 0; position < 4; ++position)
        clerk.press(u"CheckT(%1)"_s.arg(position));
    const std::vector<std::pair<int, QString>> times{{0, u"063000"_s}, {2, u"080000"_s}, {3, u"120000"_s},
                                                     {6, u"123000"_s}, {1, u"123100"_s}, {4, u"130000"_s},
                                                     {5, u"170000"_s}, {7, u"230000"_s}};
    for (const auto& [index, digits] : times)
        clerk.enterTime(u"TDBTime1(%1)"_s.arg(index), digits);
    auto& kinds = clerk.at<QComboBox>(u"Combo1"_s);
    kinds.setFocus();
    clerk.key(Qt::Key_Home);
    clerk.key(Qt::Key_Down);
    clerk.key(Qt::Key_Up);
    QCOMPARE(kinds.currentText(), u"無彈性"_s);
    clerk.typeAll({{u"Text4(2)"_s, u"0"_s},
                   {u"Text4(3)"_s, u"5"_s},
                   {u"Text4(4)"_s, u"25"_s},
                   {u"Text4(5)"_s, u"30"_s},
                   {u"Text4(10)"_s, u"5"_s},
                   {u"Text4(9)"_s, u"25"_s},
                   {u"Text4(8)"_s, u"30"_s}});
    clerk.press(u"CtrlCmd3(4)"_s);
    clerk.clickTab(4);
    clerk.press(u"CtrlCmd4(0)"_s);
    clerk.typeAll({{u"Text5(0)"_s, u"D01"_s},
                   {u"Text5(1)"_s, u"日班"_s},
                   {u"Text5(2)"_s, u"A"_s},
                   {u"Text5(3)"_s, u"5"_s},
                   {u"Text5(4)"_s, u"2"_s}});
    clerk.press(u"CtrlCmd4(4)"_s);
    QCOMPARE(rowsOf(clerk.database(), u"Base05"_s),
             QStringList{expectedRow(u"Base05"_s, {{u"ClsNo", u"D01"},
                                                   {u"ClassName", u"日班"},
                                                   {u"TimeNo1", u"A"},
                                                   {u"TimeDay1", 5},
                                                   {u"TimeRest1", 2}})});
}

void FirstDayTest::employees(FirstDay& clerk) {
    clerk.clickTab(5);
    const std::vector<std::pair<QString, QString>> people{{u"10001"_s, u"王小明"_s},
                                                          {u"10002"_s, u"陳美惠"_s}};
    for (const auto& [code, name] : people) {
        clerk.press(u"CtrlCmd5(0)"_s);
        clerk.typeAll({{u"Text6(0)"_s, code},
                       {u"Text6(1)"_s, name},
                       {u"TDBMask1(1)"_s, u"990104"_s},
                       {u"Text6(3)"_s, u"1000"_s},
                       {u"Text6(4)"_s, u"D01"_s},
                       {u"Text6(5)"_s, u"0001"_s},
                       {u"Text6(6)"_s, u"0001"_s},
                       {u"Text6(7)"_s, u"1"_s}});
        clerk.press(u"CtrlCmd5(4)"_s);
    }
    clerk.press(u"CtrlCmd5(12)"_s);
    QVERIFY(!clerk.isOpen());
    const Rows hired = clerk.database().select(
        u"select EmpNo, EmpName, ArriveDate, LeaveDate, ClsNo from Base06 order by EmpNo"_s);
    QCOMPARE(hired.count(), 2);
    QCOMPARE(hired.at(1, 1).toText(), u"陳美惠"_s);
    QCOMPARE(hired.at(0, 2).toDate(), QDate(2010, 1, 4));
    QVERIFY(hired.at(0, 3).isNull());
}

void FirstDayTest::roster(FirstDay& clerk) {
    clerk.openModuleWindow(2);
    clerk.clickTab(1);
    clerk.choose(u"Mk2(0)"_s, u"TDBD2(0)"_s, Monday);
    clerk.choose(u"Mk2(1)"_s, u"TDBD2(1)"_s, Monday.addDays(13));
    for (const int index : {2, 3})
        clerk.at<CodeCombo>(u"Combo2(%1)"_s.arg(index)).setCurrentText(u"D01"_s);
    clerk.expectMessage();
    clerk.press(u"CmdCal"_s);
    QCOMPARE(clerk.seen().constLast(), u"警告訊息|排班表已產生完成,請按<確定>繼續......."_s);
    clerk.form().unload();
    const Rows days = clerk.database().select(u"select count(*) from Rule03 where TimeNo = 'A'"_s);
    QCOMPARE(days.at(0, 0).toInteger(), 20);
}

void FirstDayTest::punchFile(FirstDay& clerk) {
    const QStringList lines = punchLinesOfManual();
    QCOMPARE(lines.size(), 2);
    for (const QString& line : lines)
        QCOMPARE(line.size(), 34);
    const QString file =
        clerk.store.writePunchFile(u"20260302.txt"_s, lines.join(u"\r\n"_s).toLatin1() + "\r\n");
    clerk.openModuleWindow(3);
    clerk.answers.expectFile(file);
    clerk.expectMessage();
    clerk.press(u"CtrlCmd0(0)"_s);
    QCOMPARE(clerk.seen().constLast(), u"警告訊息|2026/03/02資料已轉入成功!!"_s);
    clerk.clickTab(2);
    QCOMPARE(clerk.shown(u"TDBG3(0)"_s), QStringList({u"2026/3/2|10001|王小明|A|07:55||||0|||0"_s,
                                                      u"2026/3/2|10002|陳美惠|A|08:12||||1|||0"_s}));
}

void FirstDayTest::leaveNote(FirstDay& clerk) {
    clerk.press(u"CmdCtrl(0)"_s);
    clerk.clickTab(0);
    clerk.press(u"CtrlCmd0(0)"_s);
    clerk.typeAll({{u"Text1(0)"_s, u"03"_s}, {u"Text1(1)"_s, u"事假"_s}});
    clerk.press(u"CtrlCmd0(4)"_s);
    clerk.clickTab(2);
    clerk.press(u"CtrlCmd2(0)"_s);
    clerk.typeAll({{u"Text3(0)"_s, u"10002"_s}, {u"Text3(2)"_s, u"03"_s}});
    clerk.choose(u"TDBMask1(0)"_s, u"TDBDate1(0)"_s, Monday);
    clerk.choose(u"TDBMask1(1)"_s, u"TDBDate1(1)"_s, Monday);
    clerk.at(u"TDBTime1(0)"_s).setFocus();
    QCOMPARE(clerk.at<QLineEdit>(u"TDBTime1(0)"_s).text(), u"08:00"_s);
    QCOMPARE(clerk.at<QLineEdit>(u"TDBTime1(1)"_s).text(), u"17:00"_s);
    clerk.enterTime(u"TDBTime1(0)"_s, u"1300"_s);
    clerk.press(u"CtrlCmd2(4)"_s);
    const Rows days = clerk.database().select(u"select EmpNo, HoliDate, HoliHours, TimeNo from Holi04"_s);
    QCOMPARE(days.count(), 1);
    QCOMPARE(days.at(0, 1).toDate(), Monday);
    QCOMPARE(days.at(0, 2).toInteger(), 4);
    QCOMPARE(days.at(0, 3).toText(), u"A"_s);
    clerk.press(u"CtrlCmd2(13)"_s);
    QCOMPARE(clerk.tabs().currentIndex(), 2);
    clerk.expectDay(Monday);
    clerk.expectMessage();
    clerk.press(u"CmdCtrl(5)"_s);
    QCOMPARE(clerk.seen().constLast(), u"警告訊息|2026/3/2異常處理已完成!!"_s);
    const Rows marks = clerk.database().select(
        u"select F1, F2, F3, F4, FH1, FH2, FH3, FH4 from Atte03 where EmpNo = '10002'"_s);
    QStringList shown;
    for (int column = 0; column < 8; ++column)
        shown << (marks.at(0, column).toInteger() != 0 ? u"1"_s : u"0"_s);
    QCOMPARE(shown.join(u' '), u"1 1 0 0 0 0 1 1"_s);
}

void FirstDayTest::report(FirstDay& clerk) {
    clerk.press(u"CmdCtrl(4)"_s);
    QCOMPARE(clerk.tabs().currentIndex(), 2);
    clerk.press(u"Option3(3)"_s);
    clerk.choose(u"Mk3(0)"_s, u"TDBD3(0)"_s, Monday);
    clerk.choose(u"Mk3(1)"_s, u"TDBD3(1)"_s, Monday);
    clerk.press(u"OptionTS(0)"_s);
    clerk.press(u"Cmd3(0)"_s);
    QTRY_COMPARE(previews().size(), 1);
    const auto& document = previews().constFirst()->document();
    QCOMPARE(document.rowCount(), 2);
    const QString page = document.textOf(0);
    for (const QString& text : {u"範例公司"_s, u"員工出勤異常表"_s, u"王小明"_s, u"陳美惠"_s})
        QVERIFY2(page.contains(text), qPrintable(page));
}

void FirstDayTest::theFirstDayLeadsFromAnEmptyStoreToPrintedExceptions() {
    FirstDay clerk;
    for (const auto step : {settings, codes, slotAndClass, employees, roster, punchFile, leaveNote, report}) {
        step(clerk);
        if (QTest::currentTestFailed())
            return;
    }
    QCOMPARE(clerk.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<FirstDayTest>(argc, argv);
}

#include "FirstDayTest.moc"
