#include "app/LookupProcess.h"
#include "support/SavedFiles.h"
#include "support/TableTakenAway.h"
#include "windows/reports/Form7Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate March1(2010, 3, 1);
const QDate March31(2010, 3, 31);

void addPeople(Database& database) {
    addEmployee(database, u"10001"_s, {{u"EmpName", u"王小明"}, {u"UnitNo", u"1000"}, {u"WorkNo", u"A"}});
}

/// Writes the content over the template, or takes that away where there is none.
void spoilTemplate(const QString& programFolder, const QString& file,
                   const std::optional<QByteArray>& content) {
    const QString layout = programFolder + u"/report/"_s + file;
    if (content)
        writeContent(layout, *content);
    else
        QVERIFY(QFile::remove(layout));
}

/// Tab, option and, where there is one, box with its text: a print that ends the program.
int printReport(const QStringList& arguments) {
    const int tab = arguments.at(0).toInt();
    return runOn(7, tab, [&](Window& form) {
        click(control(form, u"Option%1(%2)"_s.arg(tab + 1).arg(arguments.at(1))));
        if (arguments.size() > 2)
            control<CodeCombo>(form, arguments.at(2)).setEditText(arguments.at(3));
        click(control(form, u"Cmd%1(0)"_s.arg(tab + 1)));
    });
}

/// The window over a store that has gone since the login.
int openWithoutStore(const QStringList& arguments) {
    PromptAnswers answers;
    expectLogin(answers);
    expectEndMessage(answers);
    return runProgram([&] {
        QFile::remove(arguments.at(0));
        OpenToolWindow(7);
    });
}

} // namespace

/// Errors of a print: told by the tabs that prepare figures, the end of the program elsewhere, each of those
/// in a process of its own. What a failed print leaves stands in Form7FailedPrintTest, apostrophes that end
/// the program in JoinedTextsTest.
class Form7ErrorTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aListTooLongIsTold_data();
    void aListTooLongIsTold();
    void errorsOfTwoTabsAreTold_data();
    void errorsOfTwoTabsAreTold();
    void anErrorLeavesWhatWasStaged();
    void aTemplateAtFaultIsTold_data();
    void aTemplateAtFaultIsTold();
    void aPrintAfterAnErrorSucceeds();
    void aStoreThatHasGoneIsTold_data();
    void aStoreThatHasGoneIsTold();
    void elsewhereAnErrorEndsTheProgram_data();
    void elsewhereAnErrorEndsTheProgram();
    void aStoreThatIsNotThereEndsTheProgram();
};

void Form7ErrorTest::aListTooLongIsTold_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<int>("option");
    for (int option = 0; option < 6; ++option)
        QTest::addRow("D0%d", option + 1) << 3 << option;
    for (int option = 0; option < 4; ++option)
        QTest::addRow("E0%d", option + 1) << 4 << option;
}

/// An entry behind the table that the codes are read into, selected; unselected it does no harm.
void Form7ErrorTest::aListTooLongIsTold() {
    QFETCH(const int, tab);
    QFETCH(const int, option);
    Form7Fixture it;
    const int most = tab == 3 ? 51 : 31;
    addCodes(it.database(), tab == 3 ? u"Holi01"_s : u"Canc01"_s, most + 1);
    it.open(tab);
    it.setPeriod(tab, March1, March31);
    it.choose(tab, option);
    it.answers.expectMsgBox();
    it.print(tab);
    QCOMPARE(it.seen(),
             QStringList{u"Pontrel|"_s + runTimeError(error::SubscriptOutOfRange).text() + u"|確定"_s});
    QVERIFY(previews().isEmpty());
    QVERIFY(!gDbOpen && it.isOpen());
    it.list(tab).item(most)->setSelected(false);
    it.print(tab);
    QCOMPARE(previews().size(), 1);
    QCOMPARE(it.answers.trouble(), QString());
}

void Form7ErrorTest::errorsOfTwoTabsAreTold_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<int>("option");
    QTest::addColumn<int>("combo");
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::addColumn<QString>("file"); // of the report, where it came to be run
    QTest::newRow("an apostrophe in the formula") << 3 << 0 << 0 << u"1'"_s << error::Syntax << u"D01.rpt"_s;
    QTest::newRow("an apostrophe in the count") << 3 << 4 << 2 << u"1'"_s << error::Syntax << QString();
    QTest::newRow("an apostrophe in the sums") << 3 << 5 << 0 << u"1'"_s << error::Syntax << QString();
    QTest::newRow("an apostrophe in the detail") << 4 << 1 << 1 << u"1'"_s << error::Syntax << QString();
    QTest::newRow("an empty least number") << 4 << 2 << 4 << QString() << error::Syntax << QString();
    QTest::newRow("a least number that is none") << 4 << 2 << 4 << u"三"_s << error::UnknownName << QString();
}

void Form7ErrorTest::errorsOfTwoTabsAreTold() {
    QFETCH(const int, tab);
    QFETCH(const int, option);
    QFETCH(const int, combo);
    QFETCH(const QString, text);
    QFETCH(const int, number);
    QFETCH(const QString, file);
    Form7Fixture it;
    addPeople(it.database());
    addCodes(it.database(), u"Canc01"_s, 1);
    it.open(tab);
    it.setPeriod(tab, March1, March31);
    it.choose(tab, option);
    it.combo(tab, combo).setEditText(text);
    it.answers.expectMsgBox();
    it.print(tab);
    QCOMPARE(it.seen(), QStringList{u"Pontrel|"_s + runTimeError(number).text() + u"|確定"_s});
    QVERIFY(previews().isEmpty());
    QVERIFY(!gDbOpen && it.isOpen());
    QCOMPARE(it.file(), file);
}

void Form7ErrorTest::anErrorLeavesWhatWasStaged() {
    Form7Fixture it;
    addPeople(it.database());
    addCodes(it.database(), u"Canc01"_s, 3);
    addWriteOff(it.database(), u"10001"_s, March1, u"01"_s, QString(), QString(), QString());
    it.open(4);
    it.setPeriod(4, March1, March31);
    it.choose(4, 2);
    it.combo(4, 4).setEditText(QString());
    it.answers.expectMsgBox();
    it.print(4);
    QCOMPARE(rowsOfSelection(*it.store.connect(), u"select EmpNo,CnlNo,CnlTimes from View01"_s),
             QStringList{u"10001|01|1"_s});
}

void Form7ErrorTest::aTemplateAtFaultIsTold_data() {
    QTest::addColumn<int>("tab");
    QTest::addColumn<QString>("file");
    QTest::addColumn<std::optional<QByteArray>>("content");
    QTest::addColumn<QString>("told");
    for (const auto& [tab, file] : {std::pair{3, u"D01.rpt"_s}, std::pair{4, u"E01.rpt"_s}}) {
        const auto row = [&](const char* title, const std::optional<QByteArray>& content,
                             const QString& told) {
            QTest::addRow("%s: %s", qPrintable(file), title) << tab << file << content << told;
        };
        row("missing", {}, u"找不到檔案："_s);
        row("empty", QByteArray(), file + u" 第 1 行第 1 字："_s);
        row("an unknown element", "<report format=\"1\" code=\"T\" caption=\"\">\n  <colum/>\n</report>",
            file + u" 第 2 行第 3 字：<colum> 不認得"_s);
        row("entities that grow", "<!DOCTYPE r [<!ENTITY a \"aaaa\">]>\n<report>&a;</report>",
            file + u" 第 1 行第 1 字："_s);
    }
}

void Form7ErrorTest::aTemplateAtFaultIsTold() {
    QFETCH(const int, tab);
    QFETCH(const QString, file);
    QFETCH(const std::optional<QByteArray>, content);
    QFETCH(const QString, told);
    Form7Fixture it;
    spoilTemplate(it.store.folder(), file, content);
    it.open(tab);
    it.answers.expectMsgBox();
    it.print(tab);
    QCOMPARE(it.seen().size(), 1);
    QVERIFY2(it.seen().constFirst().startsWith(u"Pontrel|"_s + told), qPrintable(it.seen().constFirst()));
    QVERIFY2(it.seen().constFirst().contains(file), qPrintable(it.seen().constFirst()));
    QVERIFY(previews().isEmpty() && !gDbOpen && it.isOpen());
}

void Form7ErrorTest::aPrintAfterAnErrorSucceeds() {
    Form7Fixture it;
    addPeople(it.database());
    it.open(3);
    {
        const TableTakenAway away(it.store.path(), "Holi04");
        it.answers.expectMsgBox();
        it.print(3);
    }
    QVERIFY(previews().isEmpty());
    QCOMPARE(it.answers.trouble(), QString());
    it.print(3);
    QCOMPARE(it.preview().windowTitle(), u"D01 員工差假統計表"_s);
}

void Form7ErrorTest::aStoreThatHasGoneIsTold_data() {
    QTest::addColumn<int>("tab");
    QTest::newRow("leave") << 3;
    QTest::newRow("write-offs") << 4;
}

/// The print of another tab has closed the window's connection, so that this one opens its own.
void Form7ErrorTest::aStoreThatHasGoneIsTold() {
    QFETCH(const int, tab);
    Form7Fixture it;
    it.open();
    it.print(0);
    it.closePreviews();
    QVERIFY(!gDbOpen);
    it.clickTab(tab);
    it.setPeriod(tab, March1, March31);
    const QString away = it.store.path() + u".away"_s;
    QVERIFY(QFile::rename(it.store.path(), away));
    it.answers.expectMsgBox();
    it.print(tab);
    QVERIFY(QFile::rename(away, it.store.path()));
    QCOMPARE(it.seen().size(), 1);
    QVERIFY2(it.seen().constFirst().startsWith(u"Pontrel|"_s + runTimeError(error::StoreNotFound).text()),
             qPrintable(it.seen().constFirst()));
    QVERIFY(previews().isEmpty() && !gDbOpen && it.isOpen());
}

void Form7ErrorTest::elsewhereAnErrorEndsTheProgram_data() {
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("spoilt"); // a template
    QTest::addColumn<bool>("takenAway"); // it, else faulty
    QTest::addColumn<int>("number");
    const auto row = [](const char* title, const QStringList& arguments, const QString& file,
                        bool takenAway) {
        QTest::addRow("%s template of %s", takenAway ? "no" : "a faulty", title)
            << arguments << file << takenAway << (takenAway ? error::FileNotFound : error::FaultyFile);
    };
    for (const bool takenAway : {true, false}) {
        row("the basic reports", {u"0"_s, u"0"_s}, u"a01.rpt"_s, takenAway);
        row("the roster", {u"1"_s, u"2"_s}, u"B03.rpt"_s, takenAway);
        row("attendance", {u"2"_s, u"9"_s}, u"C10.rpt"_s, takenAway);
        row("overtime", {u"5"_s, u"3"_s}, u"F04.rpt"_s, takenAway);
    }
    QTest::newRow("a month beyond its type")
        << QStringList{u"0"_s, u"8"_s, u"Combo1(6)"_s, u"32768"_s} << QString() << false << error::Overflow;
    // Apostrophes, also where the formula would be whole.
    for (const QStringList& box : {QStringList{u"0"_s, u"7"_s, u"Combo1(1)"_s, u"ZZ' or '1"_s},
                                   QStringList{u"0"_s, u"9"_s, u"Combo1(4)"_s, u"'"_s},
                                   QStringList{u"1"_s, u"0"_s, u"Combo2(0)"_s, u"z' or '1"_s},
                                   QStringList{u"2"_s, u"0"_s, u"Combo3(3)"_s, u"ZZ' or '1' = '1"_s},
                                   QStringList{u"5"_s, u"0"_s, u"Combo6(4)"_s, u"' or '1' = '1"_s}})
        QTest::addRow("an apostrophe in %s", qPrintable(box.at(2)))
            << box << QString() << false << error::Syntax;
}

void Form7ErrorTest::elsewhereAnErrorEndsTheProgram() {
    QFETCH(const QStringList, arguments);
    QFETCH(const QString, spoilt);
    QFETCH(const bool, takenAway);
    QFETCH(const int, number);
    TestStore store;
    layOutTemplates(store.folder());
    if (!spoilt.isEmpty())
        spoilTemplate(store.folder(), spoilt,
                      takenAway ? std::nullopt : std::optional<QByteArray>("<report>"));
    OtherProcess program(store.folder(), u"printReport"_s, arguments);
    QCOMPARE(faultOfEnd(program, number), QString());
}

void Form7ErrorTest::aStoreThatIsNotThereEndsTheProgram() {
    const TestStore store;
    OtherProcess program(store.folder(), u"openWithoutStore"_s, {store.path()});
    QCOMPARE(faultOfEnd(program, error::StoreNotFound), QString());
}

int main(int argc, char** argv) {
    return runTests<Form7ErrorTest>(
        argc, argv, {{u"printReport"_s, printReport}, {u"openWithoutStore"_s, openWithoutStore}});
}

#include "Form7ErrorTest.moc"
