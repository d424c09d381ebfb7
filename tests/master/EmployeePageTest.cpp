#include "master/Form1Fixture.h"

#include "store/DataSource.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Add = u"CtrlCmd5(0)"_s;
const QString Modify = u"CtrlCmd5(1)"_s;
const QString Delete = u"CtrlCmd5(2)"_s;
const QString Cancel = u"CtrlCmd5(3)"_s;
const QString Save = u"CtrlCmd5(4)"_s;
const QString Next = u"CtrlCmd5(8)"_s;

QString text6(int index) {
    return u"Text6(%1)"_s.arg(index);
}

/// The tab of the employees over two of them, with one code of each kind.
class EmployeeFixture : public Form1Fixture {
  public:
    EmployeeFixture() {
        insertRow(database(), u"Base01"_s, {{u"TitleNo", u"0001"}, {u"Title", u"課長"}});
        insertRow(database(), u"Base02"_s, {{u"UnitNo", u"1000"}, {u"Unit", u"會計課"}});
        insertRow(database(), u"Base03"_s, {{u"WorkNo", u"0001"}, {u"WorkType", u"正職"}});
        insertRow(database(), u"Base05"_s, {{u"ClsNo", u"D01"}, {u"ClassName", u"日班"}});
    }
    void addTwo(const Fields& first = {}, const Fields& second = {}) {
        addEmployee(database(), u"10001"_s, Fields{{u"EmpName", u"王小明"}} + first);
        addEmployee(database(), u"10002"_s, Fields{{u"EmpName", u"陳美惠"}} + second);
    }
    void openPage() { open(5); }

    [[nodiscard]] QTabWidget& pages() const { return at<QTabWidget>(u"SSTab2"_s); }
    [[nodiscard]] TDBMask& mask(int index) const { return at<TDBMask>(u"TDBMask1(%1)"_s.arg(index)); }
    [[nodiscard]] TDBDate& date(int index) const { return at<TDBDate>(u"TDBDate1(%1)"_s.arg(index)); }
    void typeDate(int index, const QString& places) {
        // Over what stands there, as a user does.
        mask(index).setFocus();
        QTest::keyClick(&mask(index), Qt::Key_Home);
        QTest::keyClicks(&mask(index), places);
    }
    /// What a selection of one employee's columns gives.
    [[nodiscard]] QString stored(const QString& EmpNo, const QString& columns) {
        return rowsOfSelection(database(), u"select %1 from Base06 where EmpNo = '%2'"_s.arg(columns, EmpNo))
            .value(0);
    }
    void expectMissed() { answers.expectMsgBox(); }
};

} // namespace

/// What is shown and checked while an employee is looked at and typed.
class EmployeePageTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void pagesAndColumnsHaveTheirCaptions();
    void limitsOfTheBoxes();
    void pagesRestWhileBrowsing();
    void aKnownCodeShowsItsName_data();
    void aKnownCodeShowsItsName();
    void anUnknownCodeIsToldAndKeepsTheFocus_data();
    void anUnknownCodeIsToldAndKeepsTheFocus();
    void aBoxThatWasNotChangedIsNotTested();
    void aChangeInAnotherBoxForgetsTheMiss();
    void aMaskForgetsTheMiss();
    void browsingKeepsThePreviousName();
    void lookupsWriteWhetherChosenOrNot();
    void aTypedGrantSetsWhatIsLeft();
    void aSaveThatTouchedNothingKeepsWhatIsLeft();
    void monthsShowAsYearsAndMonths();
    void fifteenTypedAsMonthsStayFifteen();
    void aBoxWithoutANumberCountsAsNone();
    void theOtherCarrierWithoutMonthsShowsNone();
    void enterMovesOnInBoxesMasksAndTheCheckBox();
    void aBadDateIsToldAndTheFocusMovesOn();
    void anEmptyMaskEmptiesTheDate();
    void aDateOf2026IsChosenWithTheMaskBlank();
    void aCancelledBadMaskShowsTheRowAgain();
};

void EmployeePageTest::pagesAndColumnsHaveTheirCaptions() {
    EmployeeFixture fixture;
    fixture.openPage();
    QStringList captions;
    for (int page = 0; page < fixture.pages().count(); ++page)
        captions += fixture.pages().tabText(page);
    QCOMPARE(captions, QStringList({u"一般"_s, u"請假"_s, u"通訊"_s, u"考試經歷"_s, u"網頁"_s}));
    QCOMPARE(fixture.captionsOf(u"TDBGrid1"_s).join(u' '),
             u"員工代碼 員工姓名 身份證號 性別 生日 職稱代碼 單位代碼 聘僱別碼 班別代碼 到職日 離職日 "
             u"初職公職日 適用辦法 "
             "軍職年資 中斷年資 休假年資 本年可休 本年已休 本年剩餘 去年保留 去年已休 去年剩餘 電話 地址 "
             "備註 資位 薪點 "
             "薪級 考試 學歷"_s);
    QCOMPARE(fixture.at<QPushButton>(u"CtrlCmd5(13)"_s).text(), u"計算休假年資"_s);
    QCOMPARE(fixture.at<QPushButton>(u"CtrlCmd5(14)"_s).text(), u"計算可休天數"_s);
    QSet<QString> labels;
    const auto all = fixture.pages().findChildren<QLabel*>();
    for (const QLabel* label : all) {
        if (label->buddy())
            labels += label->text();
    }
    const QStringList expected{
        u"員工代碼："_s,   u"姓　　名："_s,   u"身分證號："_s, u"性　　別："_s,    u"出生日期："_s,
        u"到  職  日："_s, u"離  職  日："_s, u"單　　位："_s, u"班　　別："_s,    u"職　　稱："_s,
        u"聘僱類別："_s,   u"適用辦法："_s,   u"初任公職："_s, u"中斷年資："_s,    u"軍職年資："_s,
        u"休假年資："_s,   u"本年可休："_s,   u"去年保休："_s, u"事       假："_s, u"病       假："_s,
        u"電　　話："_s,   u"地　　址："_s,   u"備　　註："_s, u"資　　位："_s,    u"薪　　點："_s,
        u"薪　　級："_s,   u"考　　試："_s,   u"學　　歷："_s, u"密　　碼："_s,    u"查詢權限："_s};
    QCOMPARE(labels, QSet<QString>(expected.begin(), expected.end()));
}

void EmployeePageTest::limitsOfTheBoxes() {
    EmployeeFixture fixture;
    fixture.openPage();
    fixture.press(Add);
    const QList<std::pair<int, int>> limits{{0, 10},  {1, 12},  {2, 10},  {3, 4},   {4, 3},   {5, 4},
                                            {6, 4},   {7, 1},   {15, 10}, {16, 60}, {17, 20}, {18, 20},
                                            {19, 20}, {20, 20}, {21, 20}, {22, 20}};
    for (const auto& [index, limit] : limits) {
        QLineEdit& box = fixture.box(text6(index));
        box.clear();
        QTest::keyClicks(&box, QString(70, u'7'));
        QCOMPARE(box.text().size(), limit);
    }
}

void EmployeePageTest::pagesRestWhileBrowsing() {
    EmployeeFixture fixture;
    fixture.addTwo();
    fixture.openPage();
    QTabBar* bar = fixture.pages().tabBar();
    const auto clickPage = [&](int page) {
        QTest::mouseClick(fixture.mainWindow().windowHandle(), Qt::LeftButton, Qt::NoModifier,
                          bar->mapTo(&fixture.mainWindow(), bar->tabRect(page).center()));
    };
    clickPage(2);
    QCOMPARE(fixture.pages().currentIndex(), 0);
    fixture.press(Modify);
    QCOMPARE(fixture.focused(), text6(0));
    clickPage(2);
    QCOMPARE(fixture.pages().currentIndex(), 2);
}

void EmployeePageTest::aKnownCodeShowsItsName_data() {
    QTest::addColumn<int>("box");
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("label");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("message");
    QTest::addRow("unit") << 3 << u"1000"_s << u"Label12"_s << u"會計課"_s
                          << u"無此【單位代碼】,請重新輸入"_s;
    QTest::addRow("class") << 4 << u"D01"_s << u"Label13"_s << u"日班"_s << u"無此【班別代碼】,請重新輸入"_s;
    QTest::addRow("title") << 5 << u"0001"_s << u"Label14"_s << u"課長"_s << u"無此【職稱代碼】,請重新輸入"_s;
    QTest::addRow("work type") << 6 << u"0001"_s << u"Label15"_s << u"正職"_s
                               << u"無此【聘雇類別代碼】,請重新輸入"_s;
    QTest::addRow("scheme") << 7 << u"1"_s << u"Label4(0)"_s << QString()
                            << u"無此【適用辦法代碼】,請重新輸入"_s;
}

void EmployeePageTest::aKnownCodeShowsItsName() {
    QFETCH(const int, box);
    QFETCH(const QString, code);
    QFETCH(const QString, label);
    QFETCH(QString, name);
    EmployeeFixture fixture;
    if (name.isEmpty())
        name =
            rowsOfSelection(fixture.database(), u"select SuitRule from Syst03 where SuitNo = '1'"_s).value(0);
    QVERIFY(!name.isEmpty());
    fixture.openPage();
    fixture.press(Add);
    QCOMPARE(fixture.label(label), QString());
    fixture.type(text6(box), code);
    QCOMPARE(fixture.label(label), name);
    fixture.box(text6(1)).setFocus();
    QCOMPARE(fixture.answers.trouble(), QString());
}

void EmployeePageTest::anUnknownCodeIsToldAndKeepsTheFocus_data() {
    aKnownCodeShowsItsName_data();
}

void EmployeePageTest::anUnknownCodeIsToldAndKeepsTheFocus() {
    QFETCH(const int, box);
    QFETCH(const QString, code);
    QFETCH(const QString, label);
    QFETCH(const QString, message);
    EmployeeFixture fixture;
    fixture.openPage();
    fixture.press(Add);
    fixture.type(text6(box), code);
    const QString name = fixture.label(label);
    fixture.type(text6(box), u"9"_s);
    // The name of the code before stays.
    QCOMPARE(fixture.label(label), name);
    fixture.expectMissed();
    fixture.box(text6(1)).setFocus();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"警告訊息"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, message);
    QCOMPARE(fixture.answers.seen().constFirst().buttons, QStringList{u"確定"_s});
    QTRY_COMPARE(fixture.focused(), text6(box));
}

void EmployeePageTest::aBoxThatWasNotChangedIsNotTested() {
    EmployeeFixture fixture;
    fixture.openPage();
    fixture.press(Add);
    fixture.type(text6(0), u"10001"_s);
    for (int box = 3; box <= 7; ++box)
        fixture.box(text6(box)).setFocus();
    fixture.box(text6(1)).setFocus();
    QCOMPARE(fixture.answers.trouble(), QString());
    fixture.press(Save);
    QCOMPARE(fixture.stored(u"10001"_s, u"UnitNo,ClsNo,TitleNo,WorkNo,SuitNo"_s),
             u"null|null|null|null|null"_s);
}

void EmployeePageTest::aChangeInAnotherBoxForgetsTheMiss() {
    EmployeeFixture fixture;
    fixture.openPage();
    fixture.press(Add);
    fixture.box(text6(3)).setFocus();
    QTest::keyClicks(&fixture.box(text6(3)), u"9"_s);
    // By code, as a lookup or the binding changes a box that does not have the focus.
    fixture.box(text6(1)).setText(u"某人"_s);
    fixture.box(text6(0)).setFocus();
    QCOMPARE(fixture.answers.trouble(), QString());
}

void EmployeePageTest::aMaskForgetsTheMiss() {
    EmployeeFixture fixture;
    fixture.openPage();
    fixture.press(Add);
    fixture.box(text6(3)).setFocus();
    QTest::keyClicks(&fixture.box(text6(3)), u"9"_s);
    fixture.mask(1).setValue(u"900131"_s);
    fixture.box(text6(0)).setFocus();
    QCOMPARE(fixture.answers.trouble(), QString());
}

void EmployeePageTest::browsingKeepsThePreviousName() {
    EmployeeFixture fixture;
    fixture.addTwo({{u"UnitNo", u"1000"}}, {{u"UnitNo", u"9999"}});
    fixture.openPage();
    QCOMPARE(fixture.label(u"Label12"_s), u"會計課"_s);
    fixture.press(Next);
    QCOMPARE(fixture.text(text6(3)), u"9999"_s);
    QCOMPARE(fixture.label(u"Label12"_s), u"會計課"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
}

void EmployeePageTest::lookupsWriteWhetherChosenOrNot() {
    EmployeeFixture fixture;
    fixture.addTwo({{u"UnitNo", u"1000"}});
    fixture.openPage();
    fixture.press(Modify);
    const QList<std::tuple<int, QString, int, QString>> lookups{{6, u"QFrmUnitNo"_s, 3, u"1000"_s},
                                                                {7, u"QFrmClsNo"_s, 4, u"D01"_s},
                                                                {8, u"QFrmTitleNo"_s, 5, u"0001"_s},
                                                                {9, u"QFrmWorkNo"_s, 6, u"0001"_s},
                                                                {10, u"QFrmSuitNo"_s, 7, u"1"_s}};
    for (const auto& [search, lookup, box, code] : lookups) {
        fixture.answers.expect(lookup, [](QWidget& dialog) { clickCancel(dialog); });
        fixture.press(u"Search(%1)"_s.arg(search));
        QCOMPARE(fixture.text(text6(box)), QString());
        fixture.answers.expect(lookup, [](QWidget& dialog) { clickOk(dialog); });
        fixture.press(u"Search(%1)"_s.arg(search));
        QCOMPARE(fixture.text(text6(box)), code);
        fixture.box(text6(box)).clear();
        fixture.answers.expect(lookup, [](QWidget& dialog) { clickCancel(dialog); });
        fixture.press(u"Search(%1)"_s.arg(search));
        QCOMPARE(fixture.text(text6(box)), code);
    }
    QCOMPARE(fixture.answers.trouble(), QString());
}

void EmployeePageTest::aTypedGrantSetsWhatIsLeft() {
    EmployeeFixture fixture;
    fixture.addTwo({{u"ThisYearHD", 14.0}, {u"ThisYearUse", 2.0}, {u"ThisYearLeft", 12.0}});
    fixture.openPage();
    fixture.press(Modify);
    QCOMPARE(fixture.label(u"Label25(0)"_s), u"12"_s);
    QCOMPARE(fixture.label(u"Label25(2)"_s), u"2"_s);
    fixture.pages().setCurrentIndex(1);
    const QList<std::pair<int, int>> grants{{13, 0}, {14, 1}, {25, 4}, {26, 5}};
    for (const auto& [grant, left] : grants) {
        fixture.type(text6(grant), QString::number(grant));
        QCOMPARE(fixture.label(u"Label25(%1)"_s.arg(left)), QString::number(grant));
    }
    fixture.press(Save);
    QCOMPARE(fixture.stored(u"10001"_s,
                            u"ThisYearHD,ThisYearUse,ThisYearLeft,LastYearHD,LastYearLeft,LeaveHD,LeaveLeft,"
                            "SickHD,SickLeft"_s),
             u"13|2|13|14|14|25|25|26|26"_s);
}

void EmployeePageTest::aSaveThatTouchedNothingKeepsWhatIsLeft() {
    EmployeeFixture fixture;
    fixture.addTwo({{u"ThisYearHD", 14.0}, {u"ThisYearLeft", 3.5}, {u"SickHD", 30.0}, {u"SickLeft", 29.4}});
    fixture.openPage();
    const QStringList before = rowsOf(fixture.database(), u"Base06"_s);
    fixture.press(Modify);
    fixture.press(Save);
    QCOMPARE(rowsOf(fixture.database(), u"Base06"_s), before);
    QCOMPARE(fixture.label(u"Label25(0)"_s), u"3.5"_s);
}

void EmployeePageTest::monthsShowAsYearsAndMonths() {
    EmployeeFixture fixture;
    fixture.addTwo({{u"BreakY", 27}, {u"SoldierY", Value()}}, {{u"BreakY", Value()}, {u"SoldierY", 12}});
    fixture.openPage();
    const auto shown = [&] {
        QStringList texts;
        for (int box = 8; box <= 11; ++box)
            texts += fixture.text(text6(box));
        return texts.join(u' ');
    };
    QCOMPARE(shown(), u"2 3 0 0"_s);
    fixture.press(Next);
    QCOMPARE(shown(), u"0 0 1 0"_s);
    QVERIFY(!fixture.box(u"Text7(0)"_s).isVisible());
}

void EmployeePageTest::fifteenTypedAsMonthsStayFifteen() {
    EmployeeFixture fixture;
    fixture.addTwo({{u"BreakY", 24}, {u"SoldierY", 1}});
    fixture.openPage();
    fixture.press(Modify);
    fixture.pages().setCurrentIndex(1);
    fixture.type(text6(9), u"15"_s);
    fixture.box(text6(12)).setFocus();
    QCOMPARE(fixture.text(text6(8)) + u' ' + fixture.text(text6(9)), u"2 15"_s);
    QCOMPARE(fixture.text(u"Text7(0)"_s), u"39"_s);
    fixture.press(Save);
    QCOMPARE(fixture.stored(u"10001"_s, u"BreakY,SoldierY"_s), u"39|1"_s);
}

void EmployeePageTest::aBoxWithoutANumberCountsAsNone() {
    EmployeeFixture fixture;
    fixture.addTwo({{u"BreakY", 24}, {u"SoldierY", 24}});
    fixture.openPage();
    fixture.press(Modify);
    fixture.pages().setCurrentIndex(1);
    fixture.type(text6(8), u"x2"_s);
    fixture.type(text6(9), u" 1.6年"_s);
    fixture.box(text6(12)).setFocus();
    // A month and six tenths, rounded.
    QCOMPARE(fixture.text(u"Text7(0)"_s), u"2"_s);
}

void EmployeePageTest::theOtherCarrierWithoutMonthsShowsNone() {
    EmployeeFixture fixture;
    fixture.openPage();
    fixture.press(Add);
    fixture.pages().setCurrentIndex(1);
    // Both totals are written when one of the four boxes is left; the empty second one sets its boxes to 0 as
    // the first changes.
    fixture.type(text6(10), u"2"_s);
    fixture.box(text6(12)).setFocus();
    QCOMPARE(fixture.text(u"Text7(0)"_s) + u' ' + fixture.text(u"Text7(1)"_s), u"0 24"_s);
    QCOMPARE(fixture.text(text6(10)), u"0"_s);
}

void EmployeePageTest::enterMovesOnInBoxesMasksAndTheCheckBox() {
    EmployeeFixture fixture;
    fixture.openPage();
    fixture.press(Add);
    for (const QString& next :
         {u"Text6(1)"_s, u"Text6(2)"_s, u"Check2"_s, u"TDBMask1(0)"_s, u"TDBDate1(0)"_s}) {
        fixture.key(Qt::Key_Return);
        QCOMPARE(fixture.focused(), next);
    }
}

void EmployeePageTest::aBadDateIsToldAndTheFocusMovesOn() {
    EmployeeFixture fixture;
    fixture.addTwo();
    fixture.openPage();
    fixture.press(Modify);
    fixture.typeDate(0, u"900131"_s);
    QCOMPARE(fixture.date(0).date(), QDate(2001, 1, 31));
    fixture.typeDate(0, u"901345"_s);
    fixture.expectMissed();
    fixture.box(text6(1)).setFocus();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"警告訊息"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"日期格式輸入錯誤,請重新輸入"_s);
    QTRY_COMPARE(fixture.focused(), text6(1));
    QCOMPARE(fixture.date(0).date(), QDate(2001, 1, 31));
}

void EmployeePageTest::anEmptyMaskEmptiesTheDate() {
    EmployeeFixture fixture;
    fixture.addTwo({{u"Birth", QDate(1970, 2, 3)}});
    fixture.openPage();
    QCOMPARE(fixture.mask(0).value(), u"590203"_s);
    fixture.press(Modify);
    fixture.mask(0).clear();
    QVERIFY(!fixture.date(0).date().isValid());
    fixture.date(0).setDate({1971, 1, 2});
    QCOMPARE(fixture.mask(0).value(), u"600102"_s);
    fixture.date(0).setDate({});
    QCOMPARE(fixture.mask(0).value(), QString());
}

void EmployeePageTest::aDateOf2026IsChosenWithTheMaskBlank() {
    EmployeeFixture fixture;
    fixture.addTwo({{u"Birth", QDate(1970, 2, 3)}});
    fixture.openPage();
    fixture.press(Modify);
    fixture.date(0).setDate({2026, 3, 5});
    QCOMPARE(fixture.mask(0).value(), QString());
    QCOMPARE(fixture.date(0).currentText(), u"2026/03/05"_s);
    fixture.press(Save);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.stored(u"10001"_s, u"Birth"_s), u"2026-03-05"_s);
}

void EmployeePageTest::aCancelledBadMaskShowsTheRowAgain() {
    EmployeeFixture fixture;
    fixture.addTwo({{u"Birth", QDate(1970, 2, 3)}});
    fixture.openPage();
    fixture.press(Modify);
    fixture.typeDate(0, u"591345"_s);
    fixture.expectMissed();
    fixture.press(Cancel);
    if (fixture.panel(2) != QString()) // The message takes the click that caused it.
        fixture.press(Cancel);
    QCOMPARE(fixture.panel(2), QString());
    QCOMPARE(fixture.mask(0).value(), u"590203"_s);
}

int main(int argc, char** argv) {
    return runTests<EmployeePageTest>(argc, argv);
}

#include "EmployeePageTest.moc"
