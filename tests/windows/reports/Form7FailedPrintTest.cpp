#include "app/LookupProcess.h"
#include "windows/reports/Form7Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate March1(2010, 3, 1);
const QDate March31(2010, 3, 31);
/// A code that ends its text, and one that would make a condition of it that every record meets.
const QString Unended = u"1'"_s;
const QString AnyRecord = u"' or '1' = '1"_s;

/// Two titles, of which one employee has the second; a reason for write-offs.
class FailedPrintFixture : public Form7Fixture {
  public:
    FailedPrintFixture() {
        addEmployee(database(), u"10001"_s,
                    {{u"EmpName", u"王小明"}, {u"UnitNo", u"1000"}, {u"WorkNo", u"A"}, {u"TitleNo", u"20"}});
        insertRow(database(), u"Base01"_s, {{u"TitleNo", u"10"}, {u"Title", u"科員"}});
        insertRow(database(), u"Base01"_s, {{u"TitleNo", u"20"}, {u"Title", u"課長"}});
        test::addCodes(database(), u"Canc01"_s, 1);
    }

    /// Prints the employees by their units, a report with a formula of its own.
    void printUnits() { printBasic(10, u"a11.rpt"_s); }
    /// Prints the titles, which runs with the formula that is stored.
    void printTitles() { printBasic(0, u"a01.rpt"_s); }

    /// A print of a month that fails, which is told.
    void fail(int tab, int option, int box, const QString& text) {
        clickTab(tab);
        setPeriod(tab, March1, March31);
        failNow(tab, option, box, text);
    }
    /// The same with the period as it stands.
    void failNow(int tab, int option, int box, const QString& text) {
        clickTab(tab);
        choose(tab, option);
        combo(tab, box).setEditText(text);
        answers.expectMsgBox();
        print(tab);
        QVERIFY(previews().isEmpty());
        QCOMPARE(answers.trouble(), QString());
    }

  private:
    void printBasic(int option, const QString& template_) {
        closePreviews();
        clickTab(0);
        choose(0, option);
        print(0);
        QCOMPARE(file(), template_);
        QCOMPARE(answers.trouble(), QString());
    }
};

/// A code in a box of the leave reports: a report that is told to have failed, and behind it the titles.
int printTitlesBehindABrokenFormula(const QStringList& arguments) {
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    expectEndMessage(answers);
    return runProgram([&] {
        OpenToolWindow(7);
        Window& form = *moduleWindow(7);
        auto& tabs = control<QTabWidget>(form, u"SSTab1"_s);
        tabs.setCurrentIndex(3);
        control<CodeCombo>(form, u"Combo4(0)"_s).setEditText(arguments.at(0));
        click(control(form, u"Cmd4(0)"_s));
        tabs.setCurrentIndex(0);
        click(control(form, u"Cmd1(0)"_s));
    });
}

} // namespace

/// What a print that failed leaves for the one behind it: named values, and the formula where it came to be
/// joined.
class Form7FailedPrintTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void thePeriodStays_data();
    void thePeriodStays();
    void theCountStays();
    void theFormulaStays_data();
    void theFormulaStays();
    void aPrintThatIsNotPreparedKeepsTheFormula_data();
    void aPrintThatIsNotPreparedKeepsTheFormula();
    void aBrokenFormulaStays_data();
    void aBrokenFormulaStays();
    void aBrokenFormulaFailsAgainWithAPlainList_data();
    void aBrokenFormulaFailsAgainWithAPlainList();
};

void Form7FailedPrintTest::thePeriodStays_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<int>("option");
    QTest::addColumn<int>("combo");
    QTest::addColumn<QString>("text");
    QTest::newRow("leave") << 3 << 5 << 0 << Unended;
    QTest::newRow("write-offs") << 4 << 2 << 4 << QString();
}

/// The period is given ahead of what may fail, and a basic report, which gives none, shows it.
void Form7FailedPrintTest::thePeriodStays() {
    QFETCH(const int, tab);
    QFETCH(const int, option);
    QFETCH(const int, combo);
    QFETCH(const QString, text);
    FailedPrintFixture it;
    it.open(1);
    it.mask(1, 0).setValue(u"990201"_s);
    it.mask(1, 1).setValue(u"990228"_s);
    it.print(1);
    QCOMPARE(it.named(u"Sdate"_s), u"99/02/01"_s);
    it.closePreviews();
    it.clickTab(tab);
    it.mask(tab, 0).setValue(u"990301"_s);
    it.mask(tab, 1).setValue(u"990331"_s);
    it.failNow(tab, option, combo, text);
    it.printUnits();
    QCOMPARE(it.named(u"Sdate"_s), u"99/03/01"_s);
    QCOMPARE(it.named(u"Edate"_s), u"99/03/31"_s);
}

/// The heads are counted and given before the formula is read.
void Form7FailedPrintTest::theCountStays() {
    FailedPrintFixture it;
    it.open(3);
    it.setPeriod(3, March1, March1);
    it.choose(3, 4);
    it.print(3);
    QCOMPARE(it.named(u"Att"_s), u"1"_s);
    it.closePreviews();
    addEmployee(it.database(), u"10002"_s, {{u"UnitNo", u"1000"}, {u"WorkNo", u"A"}});
    it.failNow(3, 4, 0, Unended);
    QCOMPARE(it.seen(), QStringList{u"Pontrel|"_s + runTimeError(error::Syntax).text() + u"|確定"_s});
    it.printUnits();
    QCOMPARE(it.named(u"Att"_s), u"2"_s);
}

void Form7FailedPrintTest::theFormulaStays_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("formula");
    QTest::newRow("leave") << 3 << 5 << u"D06.rpt"_s
                           << u"{Holi04.HoliDate} >= date(2010,3,1) and {Holi04.HoliDate} <= "
                              "date(2010,3,31) and {Holi04.EmpNo} = '10001'"_s;
    QTest::newRow("write-offs") << 4 << 0 << u"E01.rpt"_s << QString();
}

/// The template is looked for after the formula has been stored, and a list runs with what is stored.
void Form7FailedPrintTest::theFormulaStays() {
    QFETCH(const int, tab);
    QFETCH(const int, option);
    QFETCH(const QString, file);
    QFETCH(const QString, formula);
    FailedPrintFixture it;
    QVERIFY(QFile::remove(it.store.folder() + u"/report/"_s + file));
    it.open();
    it.printUnits();
    QVERIFY(it.formula().contains(u"{Base06.UnitNo}"_s));
    it.closePreviews();
    it.fail(tab, option, 0, u"10001"_s);
    it.printTitles();
    QCOMPARE(it.formula(), formula);
    QCOMPARE(previews().size(), 1);
}

void Form7FailedPrintTest::aPrintThatIsNotPreparedKeepsTheFormula_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<int>("option");
    QTest::addColumn<int>("combo");
    QTest::addColumn<QString>("text");
    QTest::newRow("heads") << 3 << 4 << 2 << Unended;
    QTest::newRow("sums") << 3 << 5 << 0 << Unended;
    QTest::newRow("counts") << 4 << 0 << 1 << Unended;
    QTest::newRow("detail") << 4 << 1 << 1 << Unended;
    QTest::newRow("a least number") << 4 << 2 << 4 << QString();
    QTest::newRow("counts since January") << 4 << 3 << 1 << Unended;
}

/// The formula is stored or emptied only after the preparation.
void Form7FailedPrintTest::aPrintThatIsNotPreparedKeepsTheFormula() {
    QFETCH(const int, tab);
    QFETCH(const int, option);
    QFETCH(const int, combo);
    QFETCH(const QString, text);
    FailedPrintFixture it;
    it.open();
    it.printUnits();
    const QString units = it.formula();
    QVERIFY(units.contains(u"{Base06.UnitNo}"_s));
    it.closePreviews();
    it.fail(tab, option, combo, text);
    it.printTitles();
    QCOMPARE(it.formula(), units);
    QCOMPARE(it.preview().document().rowCount(), std::size_t(1)); // the title that an employee has
}

void Form7FailedPrintTest::aBrokenFormulaStays_data() {
    QTest::addColumn<int>("option");
    QTest::addColumn<QString>("text");
    QTest::newRow("statistics") << 0 << Unended;
    QTest::newRow("detail, whole by chance") << 3 << AnyRecord;
    QTest::newRow("inspection") << 4 << Unended;
}

/// A code with an apostrophe is joined as it stands and stored, and the engine refuses it. Prints that store
/// another formula, or none, then succeed.
void Form7FailedPrintTest::aBrokenFormulaStays() {
    QFETCH(const int, option);
    QFETCH(const QString, text);
    FailedPrintFixture it;
    it.open();
    it.printUnits();
    it.closePreviews();
    it.fail(3, option, 1, text);
    QCOMPARE(it.seen(), QStringList{u"Pontrel|"_s + runTimeError(error::Syntax).text() + u"|確定"_s});
    QCOMPARE(it.file(), u"D0%1.rpt"_s.arg(option + 1));
    QVERIFY2(it.formula().contains(u"{Holi04.EmpNo} <= '"_s + text + u'\''), qPrintable(it.formula()));
    QVERIFY(it.report().selectionFormula.isBroken);
    QVERIFY(!gDbOpen && it.isOpen());
    it.printUnits();
    QVERIFY(!it.report().selectionFormula.isBroken);
    QCOMPARE(it.preview().document().rowCount(), std::size_t(1));
    it.closePreviews();
    it.failNow(3, option, 1, text);
    it.clickTab(4);
    it.setPeriod(4, March1, March31);
    it.print(4);
    QCOMPARE(it.file(), u"E01.rpt"_s);
    it.printTitles();
    QCOMPARE(it.formula(), QString());
    QCOMPARE(it.preview().document().rowCount(), std::size_t(2));
}

void Form7FailedPrintTest::aBrokenFormulaFailsAgainWithAPlainList_data() {
    QTest::addColumn<QString>("text");
    QTest::newRow("a text that does not end") << Unended;
    QTest::newRow("whole by chance") << AnyRecord;
}

/// The list has no formula of its own and runs with the stored one; on its tab nothing catches the error.
void Form7FailedPrintTest::aBrokenFormulaFailsAgainWithAPlainList() {
    QFETCH(const QString, text);
    const TestStore store;
    layOutTemplates(store.folder());
    OtherProcess program(store.folder(), u"printTitlesBehindABrokenFormula"_s, {text});
    const std::optional<int> status = program.waitForEnd();
    QCOMPARE(program.lines(), QStringList({u"Pontrel|"_s + runTimeError(error::Syntax).text(),
                                           u"Pontrel|執行階段錯誤 '3075':"_s}));
    QCOMPARE(status, std::optional(1));
}

int main(int argc, char** argv) {
    return runTests<Form7FailedPrintTest>(
        argc, argv, {{u"printTitlesBehindABrokenFormula"_s, printTitlesBehindABrokenFormula}});
}

#include "Form7FailedPrintTest.moc"
