#include "support/Patience.h"
#include "windows/reports/Form7Fixture.h"

#include <QFile>

#include <tuple>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// The formula of a report where the boxes hold "k0", "k1" and on, the dates are the four below, the month is
/// 6 and all of 51 leave types are selected; "left" for one that leaves it as it is.
QString formulaWithOwnTexts(const QString& code) {
    QFile file(QStringLiteral(PONTREL_FORMULAS));
    if (!file.open(QIODevice::ReadOnly))
        qFatal("the list of formulas cannot be read");
    for (const QString& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
        const QStringList parts = line.split(u'|');
        if (parts.at(0) == code)
            return parts.at(2) == u"-" ? u"left"_s : parts.at(2);
    }
    qFatal("there is no %s", qPrintable(code));
}

const std::array<QDate, 4> Dates{QDate(2026, 1, 5), QDate(2026, 1, 31), QDate(2025, 12, 1),
                                 QDate(2025, 12, 9)};
const QStringList DateTexts{u"2026,1,5)"_s, u"2026,1,31)"_s, u"2025,12,1)"_s, u"2025,12,9)"_s};

/// That of a window as it opens: no dates, and the boxes' first texts.
QString formulaAtFirst(const QString& code, int tab) {
    QString formula = formulaWithOwnTexts(code);
    for (const QString& date : DateTexts)
        formula.replace(date, u"0,0,0)"_s);
    for (int index = 0; index < 6; ++index) {
        const bool isEmployee = tab == 0 ? index >= 4 : index < 2;
        const QString low = isEmployee ? u"000000"_s : u"0000"_s;
        const QString high = isEmployee ? u"ZZZZZZ"_s : u"ZZZZ"_s;
        formula.replace(u"'k%1'"_s.arg(index), u'\'' + (index % 2 == 0 ? low : high) + u'\'');
    }
    return formula.replace(u"}) = 6"_s, u"}) = 1"_s);
}

} // namespace

/// What each option hands to the report control: file and selection formula, to the character.
class Form7FormulasTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void formulas_data();
    void formulas();
    void asOpened_data() { formulas_data(); }
    void asOpened();
    void reversedAndEmptyRangesAreNotRefused();
    void selectedLeaveTypes();
    void punchMarks();
    void theMonthIsAWholeNumber();
    void theClickNamesTheExceptionReports();
    void listsRunWithTheFormulaThatIsLeft();
    void listsOfReasonsRunWholeOrEmptyWithTheFormulaThatIsLeft();
    void writeOffsEmptyTheFormula();
    void aPrintFromWithinAComboJoinsTheWholeEntry();
    void theShortcutLeavesTheComboFirst();
};

void Form7FormulasTest::formulas_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("code");
    for (int tab = 0; tab < 6; ++tab) {
        for (int option = 0; option < OptionCounts.at(static_cast<std::size_t>(tab)); ++option) {
            const QString code =
                QChar((tab == 0 ? u'a' : u'A') + tab) + u"%1"_s.arg(option + 1, 2, 10, QLatin1Char('0'));
            QTest::newRow(qPrintable(code)) << tab << option << code;
        }
    }
}

void Form7FormulasTest::formulas() {
    QFETCH(const int, tab);
    QFETCH(const int, option);
    QFETCH(const QString, code);
    Form7Fixture it;
    addCodes(it.database(), u"Holi01"_s, 51);
    addCodes(it.database(), u"Canc01"_s, 31);
    it.open(tab);
    for (int index = 0; index < Form7Fixture::comboCount(tab); ++index)
        it.combo(tab, index).setEditText(u"k%1"_s.arg(index));
    if (tab == 0)
        it.combo(0, 6).setEditText(u"6"_s);
    if (tab == 4)
        it.combo(4, 4).setEditText(u"1"_s);
    for (int index = 0; index < (tab == 0 ? 4 : 2); ++index)
        it.date(tab, index).setDate(Dates.at(static_cast<std::size_t>(index)));
    it.choose(tab, option);
    it.print(tab);

    const Cr1& report = it.report();
    QCOMPARE(report.reportFileName, it.store.folder() + u"/report/"_s + code + u".rpt"_s);
    const QString expected = formulaWithOwnTexts(code);
    QCOMPARE(report.selectionFormula.text, expected == u"left" ? QString() : expected);
    QVERIFY(report.showPrint && report.showExport);
    QCOMPARE(report.destination, 0);
    QCOMPARE(report.windowState, 2);
    QCOMPARE(it.preview().windowTitle(), code.toUpper() + u' ' + it.option(tab, option).text());
    QVERIFY(it.preview().isMaximized());
    QVERIFY(!gDbOpen);
    QVERIFY(it.isOpen());
    QCOMPARE(it.answers.trouble(), QString());
}

/// Without dates two reports cannot be prepared; all others that ask for some come out empty.
void Form7FormulasTest::asOpened() {
    QFETCH(const int, tab);
    QFETCH(const int, option);
    QFETCH(const QString, code);
    Form7Fixture it;
    addCodes(it.database(), u"Holi01"_s, 51);
    addCodes(it.database(), u"Canc01"_s, 31);
    addEmployee(it.database(), u"10001"_s, {{u"UnitNo", u"1000"}, {u"WorkNo", u"A"}});
    addEmployee(it.database(), u"10002"_s,
                {{u"UnitNo", u"1000"},
                 {u"WorkNo", u"A"},
                 {u"ArriveDate", QDate(2009, 1, 5)},
                 {u"LeaveDate", QDate(2010, 2, 28)}});
    it.open(tab);
    it.choose(tab, option);
    const bool needsDates = code == u"D06" || code == u"E02";
    if (needsDates)
        it.answers.expectMsgBox();
    it.print(tab);
    QVERIFY(!gDbOpen);
    QCOMPARE(it.answers.trouble(), QString());
    if (needsDates) {
        QCOMPARE(it.seen(), QStringList{u"Pontrel|"_s + runTimeError(error::Syntax).text() + u"|確定"_s});
        QVERIFY(previews().isEmpty());
        QCOMPARE(it.report().reportFileName, QString());
        return;
    }
    QCOMPARE(it.file(), code + u".rpt"_s);
    const QString expected = formulaAtFirst(code, tab);
    QCOMPARE(it.formula(), expected == u"left" ? QString() : expected);
    if (tab != 0 || code == u"a06" || code == u"a07")
        QCOMPARE(it.preview().document().rowCount(), std::size_t(0));
    if (tab != 0) {
        QCOMPARE(it.named(u"Sdate"_s), QString());
        QCOMPARE(it.named(u"Edate"_s), QString());
    }
}

void Form7FormulasTest::reversedAndEmptyRangesAreNotRefused() {
    Form7Fixture it;
    addEmployee(it.database(), u"10001"_s, {{u"UnitNo", u"1000"}});
    it.open();
    it.choose(0, 10);
    it.print(0);
    QCOMPARE(it.preview().document().rowCount(), std::size_t(1));
    it.closePreviews();
    it.combo(0, 2).setEditText(u"ZZZZ"_s);
    it.combo(0, 3).setEditText(u"0000"_s);
    it.print(0);
    QCOMPARE(it.formula(), u"{Base06.UnitNo} >= 'ZZZZ' and {Base06.UnitNo} <= '0000' and "
                           "isnull({Base06.LeaveDate}) = true"_s);
    QCOMPARE(it.preview().document().rowCount(), std::size_t(0));
    it.closePreviews();
    it.combo(0, 2).setEditText(QString());
    it.combo(0, 3).setEditText(QString());
    it.print(0);
    QCOMPARE(it.formula(), u"{Base06.UnitNo} >= '' and {Base06.UnitNo} <= '' and "
                           "isnull({Base06.LeaveDate}) = true"_s);
    QCOMPARE(it.preview().document().rowCount(), std::size_t(0));
    QCOMPARE(it.answers.trouble(), QString());
}

/// The first three positions alone count for D01 to D03; D04 looks at all of them.
void Form7FormulasTest::selectedLeaveTypes() {
    Form7Fixture it;
    addCodes(it.database(), u"Holi01"_s, 5);
    it.open(3);
    it.selectOnly(3, {1, 3});
    for (int option = 0; option < 3; ++option) {
        it.choose(3, option);
        it.print(3);
        QVERIFY(it.formula().endsWith(
            u" and ({Holi04.HoliNo} = '' or {Holi04.HoliNo} = '01' or {Holi04.HoliNo} = '' and isnull({Base06.LeaveDate}) = true "_s));
    }
    it.choose(3, 3);
    it.print(3);
    QVERIFY(it.formula().contains(
        u" and isnull({Base06.LeaveDate}) = true  and ({Holi04.HoliNo} = '' or {Holi04.HoliNo} = '01' or {Holi04.HoliNo} = ''  or {Holi04.HoliNo} = '03' or "_s));
    QCOMPARE(it.formula().count(u"{Holi04.HoliNo}"_s), 51);
    QCOMPARE(it.formula().count(u"= ''"_s), 49);
}

void Form7FormulasTest::punchMarks() {
    Form7Fixture it;
    it.open(2);
    it.choose(2, 0);
    it.print(2);
    const QString days = it.formula();
    const QStringList added{
        u" and ({Atte02.F1} = True  or {Atte02.F2} = True or {Atte02.F3} = True or {Atte02.F4} = True )"_s,
        u" and {Atte02.F1} = True"_s, u" and {Atte02.F2} = True"_s, u" and {Atte02.F3} = True"_s,
        u" and {Atte02.F4} = True"_s};
    for (int option = 3; option <= 5; ++option) {
        it.choose(2, option);
        for (int mark = 0; mark < 5; ++mark) {
            it.press(u"OptionTS(%1)"_s.arg(mark));
            it.print(2);
            QCOMPARE(it.formula(), days + added.at(mark));
        }
    }
    // The marks that are hidden play no part.
    it.choose(2, 1);
    it.print(2);
    QCOMPARE(it.formula(), days);
}

void Form7FormulasTest::theMonthIsAWholeNumber() {
    Form7Fixture it;
    it.open();
    it.choose(0, 8);
    const QList<std::pair<QString, QString>> months{
        {u"12"_s, u"12"_s}, {u"07"_s, u"7"_s}, {u"3月"_s, u"3"_s}, {QString(), u"0"_s}, {u"2.5"_s, u"2"_s}};
    for (const auto& [typed, number] : months) {
        it.combo(0, 6).setEditText(typed);
        it.print(0);
        QCOMPARE(it.formula(),
                 u" month({Base06.Birth}) = "_s + number + u" and isnull({Base06.LeaveDate}) =true"_s);
    }
    // Digits as an input method gives them are taken as plain ones.
    it.combo(0, 6).lineEdit()->clear();
    it.combo(0, 6).lineEdit()->insert(u"１１"_s);
    QCOMPARE(it.combo(0, 6).currentText(), u"11"_s);
}

void Form7FormulasTest::theClickNamesTheExceptionReports() {
    Form7Fixture it;
    it.open(2);
    for (int option = 3; option <= 5; ++option) {
        it.choose(2, option);
        it.print(2);
        QCOMPARE(it.file(), u"C0%1.rpt"_s.arg(option + 1));
    }
    // An option that is only shown as chosen leaves the index as it was; other reports are named by it.
    it.choose(2, 5);
    it.option(2, 3).setChecked(true);
    it.print(2);
    QCOMPARE(it.file(), u"C06.rpt"_s);
    it.option(2, 1).setChecked(true);
    it.print(2);
    QCOMPARE(it.file(), u"C02.rpt"_s);
    // A click on another tab's option is none of this one's.
    it.choose(2, 3);
    it.clickTab(5);
    it.choose(5, 2);
    it.clickTab(2);
    it.print(2);
    QCOMPARE(it.file(), u"C04.rpt"_s);
}

void Form7FormulasTest::listsRunWithTheFormulaThatIsLeft() {
    Form7Fixture it;
    insertRow(it.database(), u"Base01"_s, {{u"TitleNo", u"10"}, {u"Title", u"科員"}});
    insertRow(it.database(), u"Base01"_s, {{u"TitleNo", u"20"}, {u"Title", u"課長"}});
    addEmployee(it.database(), u"10001"_s, {{u"TitleNo", u"20"}, {u"UnitNo", u"1000"}});
    it.open();
    it.print(0);
    QCOMPARE(it.formula(), QString());
    QCOMPARE(it.preview().document().rowCount(), std::size_t(2));
    it.closePreviews();
    it.choose(0, 10);
    it.print(0);
    const QString units = it.formula();
    QVERIFY(!units.isEmpty());
    it.closePreviews();
    for (int option = 0; option < 5; ++option) {
        it.choose(0, option);
        it.print(0);
        QCOMPARE(it.file(), u"a0%1.rpt"_s.arg(option + 1));
        QCOMPARE(it.formula(), units);
    }
    it.closePreviews();
    it.choose(0, 0);
    it.print(0);
    QCOMPARE(it.preview().document().rowCount(), std::size_t(1)); // the title that an employee has
}

/// Nothing links a leave type or a write-off reason to employees: each is printed where anybody matches, and
/// none where nobody does.
void Form7FormulasTest::listsOfReasonsRunWholeOrEmptyWithTheFormulaThatIsLeft() {
    Form7Fixture it;
    addCodes(it.database(), u"Holi01"_s, 3);
    addCodes(it.database(), u"Canc01"_s, 2);
    for (const auto* EmpNo : {u"10001", u"10002"})
        addEmployee(it.database(), QString::fromUtf16(EmpNo), {{u"UnitNo", u"1000"}});
    addEmployee(it.database(), u"10003"_s, {{u"UnitNo", u"2000"}});
    it.open();
    for (const auto& [unit, leaveTypes, reasons] :
         {std::tuple{u"1000"_s, 3U, 2U}, {u"2000"_s, 3U, 2U}, {u"3000"_s, 0U, 0U}}) {
        it.choose(0, 10);
        it.combo(0, 2).setEditText(unit);
        it.combo(0, 3).setEditText(unit);
        it.print(0);
        it.closePreviews();
        const QString formula = u"{Base06.UnitNo} >= '"_s + unit + u"' and {Base06.UnitNo} <= '"_s + unit +
                                u"' and isnull({Base06.LeaveDate}) = true"_s;
        for (const auto& [option, file, rows] :
             {std::tuple{3, u"a04.rpt"_s, leaveTypes}, {4, u"a05.rpt"_s, reasons}}) {
            it.choose(0, option);
            it.print(0);
            QCOMPARE(it.file(), file);
            QCOMPARE(it.formula(), formula);
            QCOMPARE(it.preview().document().rowCount(), std::size_t(rows));
            const QString page = it.preview().document().textOf(0);
            for (unsigned number = 0; number < 3; ++number)
                QCOMPARE(page.contains(u"事由%1"_s.arg(number)), number < rows);
            it.closePreviews();
        }
    }
    QCOMPARE(it.answers.trouble(), QString());
}

void Form7FormulasTest::writeOffsEmptyTheFormula() {
    Form7Fixture it;
    it.open();
    it.choose(0, 10);
    it.print(0);
    QVERIFY(!it.formula().isEmpty());
    it.clickTab(4);
    it.choose(4, 0);
    it.print(4);
    QCOMPARE(it.file(), u"E01.rpt"_s);
    QCOMPARE(it.formula(), QString());
    // One formula serves the whole window.
    it.clickTab(0);
    it.choose(0, 3);
    it.print(0);
    QCOMPARE(it.file(), u"a04.rpt"_s);
    QCOMPARE(it.formula(), QString());
    it.clickTab(5);
    it.print(5);
    const QString overtime = it.formula();
    QVERIFY(overtime.startsWith(u"{Over01.OverDate}"));
    it.clickTab(0);
    it.print(0);
    QCOMPARE(it.formula(), overtime);
}

void Form7FormulasTest::aPrintFromWithinAComboJoinsTheWholeEntry() {
    Form7Fixture it;
    insertRow(it.database(), u"Base02"_s, {{u"UnitNo", u"0001"}, {u"Unit", u"總務部"}});
    it.open();
    it.choose(0, 10);
    it.combo(0, 2).setFocus();
    it.key(Qt::Key_Down);
    // As a script or assistive technology presses it, the focus staying where it is.
    it.of<QPushButton>(u"Cmd"_s, 0, 0).click();
    QCOMPARE(it.formula(), u"{Base06.UnitNo} >= '0001-總務部' and {Base06.UnitNo} <= 'ZZZZ' and "
                           "isnull({Base06.LeaveDate}) = true"_s);
    it.print(0);
    QCOMPARE(it.formula(), u"{Base06.UnitNo} >= '0001' and {Base06.UnitNo} <= 'ZZZZ' and "
                           "isnull({Base06.LeaveDate}) = true"_s);
}

void Form7FormulasTest::theShortcutLeavesTheComboFirst() {
    Form7Fixture it;
    insertRow(it.database(), u"Base02"_s, {{u"UnitNo", u"0001"}, {u"Unit", u"總務部"}});
    it.open(5);
    it.mainWindow().activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&it.mainWindow(), PatienceMs));
    it.combo(5, 3).setFocus();
    it.key(Qt::Key_Down);
    it.key(Qt::Key_P, Qt::ControlModifier);
    QCOMPARE(it.file(), u"F01.rpt"_s);
    QVERIFY(it.formula().contains(u"{Base06.UnitNo} <= '0001'"_s));
    QCOMPARE(it.focused(), u"Cmd6(0)"_s);
}

int main(int argc, char** argv) {
    return runTests<Form7FormulasTest>(argc, argv);
}

#include "Form7FormulasTest.moc"
