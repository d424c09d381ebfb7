#include "windows/master/EmployeeFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::employee;
using namespace Qt::StringLiterals;

namespace {

enum Page { General, Leaves, Contact, Career, Web };

/// A control of the employees' tab: its page, what it shows of fullEmployee(), and its column.
struct Entry {
    Page page;
    QString name;
    QString shown;
    QString column;
};

const QList<Entry> Entries{{General, u"Text6(0)"_s, u"10001"_s, u"EmpNo"_s},
                           {General, u"Text6(1)"_s, u"王小明"_s, u"EmpName"_s},
                           {General, u"Text6(2)"_s, u"A123456789"_s, u"IdNo"_s},
                           {General, u"Check2"_s, u"v"_s, u"Sex"_s},
                           {General, u"TDBMask1(0)"_s, u"540203"_s, {}},
                           {General, u"TDBDate1(0)"_s, u"1965/02/03"_s, u"Birth"_s},
                           {General, u"TDBMask1(1)"_s, u"790701"_s, {}},
                           {General, u"TDBDate1(1)"_s, u"1990/07/01"_s, u"ArriveDate"_s},
                           {General, u"TDBMask1(2)"_s, u"940630"_s, {}},
                           {General, u"TDBDate1(2)"_s, u"2005/06/30"_s, u"LeaveDate"_s},
                           {General, u"Text6(3)"_s, u"1000"_s, u"UnitNo"_s},
                           {General, u"Label12"_s, u"會計課"_s, {}},
                           {General, u"Text6(4)"_s, u"D01"_s, u"ClsNo"_s},
                           {General, u"Label13"_s, u"日班"_s, {}},
                           {General, u"Text6(5)"_s, u"0001"_s, u"TitleNo"_s},
                           {General, u"Label14"_s, u"課長"_s, {}},
                           {General, u"Text6(6)"_s, u"0002"_s, u"WorkNo"_s},
                           {General, u"Label15"_s, u"約聘人員"_s, {}},
                           {General, u"Text6(7)"_s, u"1"_s, u"SuitNo"_s},
                           {General, u"Label4(0)"_s, u"公務辦法"_s, {}},
                           {Leaves, u"TDBMask1(3)"_s, u"770910"_s, {}},
                           {Leaves, u"TDBDate1(3)"_s, u"1988/09/10"_s, u"IniArrDate"_s},
                           {Leaves, u"Text6(8)"_s, u"2"_s, {}},
                           {Leaves, u"Text6(9)"_s, u"3"_s, {}},
                           {Leaves, u"Text7(0)"_s, u"27"_s, u"BreakY"_s},
                           {Leaves, u"Text6(10)"_s, u"1"_s, {}},
                           {Leaves, u"Text6(11)"_s, u"10"_s, {}},
                           {Leaves, u"Text7(1)"_s, u"22"_s, u"SoldierY"_s},
                           {Leaves, u"Text6(12)"_s, u"12"_s, u"HoliExper"_s},
                           {Leaves, u"Text6(13)"_s, u"14"_s, u"ThisYearHD"_s},
                           {Leaves, u"Label25(2)"_s, u"2.5"_s, u"ThisYearUse"_s},
                           {Leaves, u"Label25(0)"_s, u"11.25"_s, u"ThisYearLeft"_s},
                           {Leaves, u"Text6(14)"_s, u"7"_s, u"LastYearHD"_s},
                           {Leaves, u"Label25(3)"_s, u"1.5"_s, u"LastYearUse"_s},
                           {Leaves, u"Label25(1)"_s, u"5.25"_s, u"LastYearLeft"_s},
                           {Leaves, u"Text6(25)"_s, u"5"_s, u"LeaveHD"_s},
                           {Leaves, u"Label25(6)"_s, u"0.5"_s, u"LeaveUse"_s},
                           {Leaves, u"Label25(4)"_s, u"4.25"_s, u"LeaveLeft"_s},
                           {Leaves, u"Text6(26)"_s, u"28"_s, u"SickHD"_s},
                           {Leaves, u"Label25(7)"_s, u"3"_s, u"SickUse"_s},
                           {Leaves, u"Label25(5)"_s, u"25.5"_s, u"SickLeft"_s},
                           {Contact, u"Text6(15)"_s, u"0223456789"_s, u"Telephone"_s},
                           {Contact, u"Text6(16)"_s, u"臺北市中山路一號"_s, u"Address"_s},
                           {Contact, u"Text6(17)"_s, u"備註一"_s, u"Memo"_s},
                           {Career, u"Text6(18)"_s, u"資位一"_s, u"ExperLevel"_s},
                           {Career, u"Text6(19)"_s, u"薪點一"_s, u"SalaryPoint"_s},
                           {Career, u"Text6(20)"_s, u"薪級一"_s, u"SalaryLevel"_s},
                           {Career, u"Text6(21)"_s, u"普考"_s, u"Exam"_s},
                           {Career, u"Text6(22)"_s, u"大學"_s, u"BackGround"_s},
                           {Web, u"Text6(23)"_s, u"webpass"_s, u"Webpsw"_s},
                           {Web, u"Text6(24)"_s, u"right1"_s, u"WebNo"_s}};

/// What is typed into the boxes of the pages in place of the values of fullEmployee().
const QList<std::pair<QString, QString>> Typed{
    {u"EmpNo"_s, u"10009"_s},      {u"EmpName"_s, u"陳美惠"_s},  {u"IdNo"_s, u"B223456780"_s},
    {u"UnitNo"_s, u"2000"_s},      {u"ClsNo"_s, u"N01"_s},       {u"TitleNo"_s, u"0002"_s},
    {u"WorkNo"_s, u"0001"_s},      {u"SuitNo"_s, u"2"_s},        {u"HoliExper"_s, u"13"_s},
    {u"Telephone"_s, u"049222"_s}, {u"Address"_s, u"南投市"_s},  {u"Memo"_s, u"二"_s},
    {u"ExperLevel"_s, u"高級"_s},  {u"SalaryPoint"_s, u"430"_s}, {u"SalaryLevel"_s, u"五級"_s},
    {u"Exam"_s, u"高考"_s},        {u"BackGround"_s, u"碩士"_s}, {u"Webpsw"_s, u"It's ok"_s},
    {u"WebNo"_s, u"9"_s}};

/// The label of a control is its buddy, or where it says only a unit or what a figure is, stands beside it.
const QList<std::pair<QString, QString>> Labels{
    {u"Text6(0)"_s, u"員工代碼："_s},      {u"Text6(1)"_s, u"姓　　名："_s},
    {u"Text6(2)"_s, u"身分證號："_s},      {u"Check2"_s, u"性　　別："_s},
    {u"TDBMask1(0)"_s, u"出生日期："_s},   {u"TDBMask1(1)"_s, u"到  職  日："_s},
    {u"TDBMask1(2)"_s, u"離  職  日："_s}, {u"Text6(3)"_s, u"單　　位："_s},
    {u"Text6(4)"_s, u"班　　別："_s},      {u"Text6(5)"_s, u"職　　稱："_s},
    {u"Text6(6)"_s, u"聘僱類別："_s},      {u"Text6(7)"_s, u"適用辦法："_s},
    {u"TDBMask1(3)"_s, u"初任公職："_s},   {u"Text6(8)"_s, u"中斷年資："_s},
    {u"Text6(10)"_s, u"軍職年資："_s},     {u"Text6(12)"_s, u"休假年資："_s},
    {u"Text6(13)"_s, u"本年可休："_s},     {u"Text6(14)"_s, u"去年保休："_s},
    {u"Text6(25)"_s, u"事       假："_s},  {u"Text6(26)"_s, u"病       假："_s},
    {u"Text6(15)"_s, u"電　　話："_s},     {u"Text6(16)"_s, u"地　　址："_s},
    {u"Text6(17)"_s, u"備　　註："_s},     {u"Text6(18)"_s, u"資　　位："_s},
    {u"Text6(19)"_s, u"薪　　點："_s},     {u"Text6(20)"_s, u"薪　　級："_s},
    {u"Text6(21)"_s, u"考　　試："_s},     {u"Text6(22)"_s, u"學　　歷："_s},
    {u"Text6(23)"_s, u"密　　碼："_s},     {u"Text6(24)"_s, u"查詢權限："_s}};

} // namespace

/// What the employees' tab shows of a row, and what its boxes take.
class EmployeeScreenTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void pagesLabelsAndButtonsHaveTheirCaptions();
    void everyControlShowsItsColumn();
    void gridHasThirtyColumns();
    void everyBoxStoresItsColumn();
    void pageHeadersAreDeadWhileBrowsing();
    void searchButtonsAreDeadWhileBrowsing();
    void statesOfTheBar();
    void addAndModifyPutTheFocusOnTheCode();
    void enterActsAsTab();
    void enterGoesFromCodeToCode();
    void enterAtTheLastBoxOfAPageLeadsToTheSaving_data();
    void enterAtTheLastBoxOfAPageLeadsToTheSaving();
    void theSexIsSpoken();
    void theBarFollowsTheFields();
    void tabComesToEveryControl_data();
    void tabComesToEveryControl();
};

void EmployeeScreenTest::pagesLabelsAndButtonsHaveTheirCaptions() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    QStringList pages;
    for (int page = 0; page < fixture.pages().count(); ++page)
        pages += fixture.pages().tabText(page);
    QCOMPARE(pages, QStringList({u"一般"_s, u"請假"_s, u"通訊"_s, u"考試經歷"_s, u"網頁"_s}));
    QStringList rest;
    QStringList found;
    for (const QLabel* label : fixture.pages().findChildren<QLabel*>()) {
        if (label->buddy())
            found += label->buddy()->objectName() + label->text();
        else if (!label->text().isEmpty())
            rest += label->text();
    }
    QStringList expected;
    for (const auto& [name, caption] : Labels)
        expected += name + caption;
    expected.sort();
    found.sort();
    QCOMPARE(found, expected);
    rest.sort();
    QStringList units{u"年"_s,   u"月"_s,   u"年"_s,   u"月"_s,   u"年"_s,   u"已休"_s, u"剩餘"_s,
                      u"已休"_s, u"剩餘"_s, u"已請"_s, u"剩餘"_s, u"已請"_s, u"剩餘"_s};
    units.sort();
    QCOMPARE(rest, units);
    QCOMPARE(fixture.at<QCheckBox>(u"Check2"_s).text(), u"男"_s);
    QCOMPARE(fixture.at<QPushButton>(Seniority).text(), u"計算休假年資"_s);
    QCOMPARE(fixture.at<QPushButton>(Entitlement).text(), u"計算可休天數"_s);
}

void EmployeeScreenTest::everyControlShowsItsColumn() {
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.add({{u"EmpNo", u"10002"}});
    fixture.openEmployees();
    for (const Entry& entry : Entries) {
        QCOMPARE(entry.name + fixture.shown(entry.name), entry.name + entry.shown);
        // The carriers of the months are seen on no page.
        const QWidget& control = fixture.at(entry.name);
        QVERIFY2(fixture.pages().widget(entry.page)->isAncestorOf(&control) != control.isHidden(),
                 qUtf8Printable(entry.name));
    }
    // Nothing masks what another program asks for.
    QCOMPARE(fixture.box(u"Text6(23)"_s).displayText(), u"webpass"_s);
    fixture.press(Next);
    for (const Entry& entry : Entries) {
        if (entry.column == u"EmpNo"_s || entry.column == u"Sex"_s)
            QCOMPARE(fixture.shown(entry.name), entry.column == u"Sex"_s ? u"-"_s : u"10002"_s);
        else if (!entry.column.isEmpty() && !entry.name.startsWith(u"TDBDate1"_s))
            QCOMPARE(entry.name + fixture.shown(entry.name), entry.name);
    }
    for (int pair = 0; pair < 4; ++pair) {
        QVERIFY(fixture.date(pair).value().isNull());
        QCOMPARE(fixture.mask(pair).value(), QString());
    }
    QCOMPARE(fixture.shownMonths(), u"0|0|0|0"_s);
}

void EmployeeScreenTest::gridHasThirtyColumns() {
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.add({{u"EmpNo", u"10002"}});
    fixture.openEmployees();
    const QStringList captions{u"員工代碼"_s, u"員工姓名"_s,   u"身份證號"_s, u"性別"_s,     u"生日"_s,
                               u"職稱代碼"_s, u"單位代碼"_s,   u"聘僱別碼"_s, u"班別代碼"_s, u"到職日"_s,
                               u"離職日"_s,   u"初職公職日"_s, u"適用辦法"_s, u"軍職年資"_s, u"中斷年資"_s,
                               u"休假年資"_s, u"本年可休"_s,   u"本年已休"_s, u"本年剩餘"_s, u"去年保留"_s,
                               u"去年已休"_s, u"去年剩餘"_s,   u"電話"_s,     u"地址"_s,     u"備註"_s,
                               u"資位"_s,     u"薪點"_s,       u"薪級"_s,     u"考試"_s,     u"學歷"_s};
    QCOMPARE(fixture.captionsOf(u"TDBGrid1"_s), captions);
    QCOMPARE(shownRows(fixture.at<TDBGrid>(u"TDBGrid1"_s)),
             QStringList({u"10001|王小明|A123456789|v|1965/2/3|0001|1000|0002|D01|1990/7/1|2005/6/30|"
                          "1988/9/10|1|22|27|12|14|2.5|11.25|7|1.5|5.25|0223456789|臺北市中山路一號|備註一|"
                          "資位一|薪點一|薪級一|普考|大學"_s,
                          u"10002|||-||||||||||||||||||||||||||"_s}));
}

void EmployeeScreenTest::everyBoxStoresItsColumn() {
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.openEmployees();
    fixture.press(Modify);
    Fields expected = fullEmployee(u"10009"_s);
    for (const Entry& entry : Entries) {
        for (const auto& [column, text] : Typed) {
            if (column != entry.column)
                continue;
            fixture.clickPage(entry.page);
            fixture.enter(entry.name, text);
            expected = with(expected, {column, column == u"HoliExper"_s ? Value(13) : Value(text)});
        }
    }
    fixture.clickPage(General);
    click(fixture.at(u"Check2"_s));
    expected = with(expected, {u"Sex", false});
    fixture.press(Save);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.employees(), QStringList{employeeRow(expected)});
}

void EmployeeScreenTest::pageHeadersAreDeadWhileBrowsing() {
    EmployeeFixture fixture;
    fixture.addPlain(2);
    fixture.openEmployees();
    for (const int page : {Leaves, Contact, Career, Web}) {
        fixture.clickPage(page);
        QCOMPARE(fixture.pages().currentIndex(), 0);
    }
    for (const QString& begin : {Modify, Add}) {
        fixture.press(begin);
        for (const int page : {Leaves, Contact, Career, Web, General}) {
            fixture.clickPage(page);
            QCOMPARE(fixture.pages().currentIndex(), page);
        }
        fixture.clickPage(Contact);
        fixture.press(Cancel);
        fixture.clickPage(Web);
        // Whoever browses sees the page that was left.
        QCOMPARE(fixture.pages().currentIndex(), static_cast<int>(Contact));
    }
}

void EmployeeScreenTest::searchButtonsAreDeadWhileBrowsing() {
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.openEmployees();
    for (int search = 6; search <= 10; ++search)
        fixture.press(u"Search(%1)"_s.arg(search));
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.text(text6(3)), u"1000"_s);
}

void EmployeeScreenTest::statesOfTheBar() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnWithoutRows);
    QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
    fixture.addPlain(2);
    fixture.press(Refresh);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnWithRows);
    QCOMPARE(fixture.panel(1), u"資料錄:1/2"_s);
    for (const auto& [begin, word] : {std::pair{Modify, u"修改資料"_s}, {Add, u"新增資料"_s}}) {
        fixture.press(begin);
        QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnInEdit);
        QCOMPARE(fixture.panel(2), word);
        QVERIFY(fixture.at(u"Frame1(5)"_s).isEnabled());
        fixture.press(Cancel);
        QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnWithRows);
        QCOMPARE(fixture.panel(2), QString());
        QVERIFY(!fixture.at(u"Frame1(5)"_s).isEnabled());
    }
}

void EmployeeScreenTest::addAndModifyPutTheFocusOnTheCode() {
    EmployeeFixture fixture;
    fixture.addPlain(1);
    fixture.openEmployees();
    for (const QString& begin : {Modify, Add}) {
        fixture.press(begin);
        QCOMPARE(fixture.focused(), text6(0));
        // Also where the edit before was left on another page.
        QCOMPARE(fixture.pages().currentIndex(), static_cast<int>(General));
        fixture.clickPage(Career);
        fixture.press(Cancel);
        QCOMPARE(fixture.pages().currentIndex(), static_cast<int>(Career));
    }
}

void EmployeeScreenTest::enterActsAsTab() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    for (const Entry& entry : Entries) {
        const bool hasHandler = entry.name.startsWith(u"Text6"_s) || entry.name == u"Check2"_s ||
                                entry.name.startsWith(u"TDBMask1"_s);
        if (!hasHandler)
            continue;
        fixture.clickPage(entry.page);
        QWidget& control = fixture.at(entry.name);
        control.setFocus();
        fixture.key(Qt::Key_Tab);
        const QString next = fixture.focused();
        QVERIFY(next != entry.name);
        control.setFocus();
        fixture.key(Qt::Key_Return);
        QCOMPARE(entry.name + u" to "_s + fixture.focused(), entry.name + u" to "_s + next);
    }
    QCOMPARE(fixture.answers.trouble(), QString());
}

void EmployeeScreenTest::enterGoesFromCodeToCode() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    click(fixture.box(text6(3)));
    // Past the lookups, which it would open.
    for (int box = 4; box <= 7; ++box) {
        fixture.key(Qt::Key_Return);
        QCOMPARE(fixture.focused(), text6(box));
    }
    // Then to the saving, and the lookups behind it.
    fixture.key(Qt::Key_Return);
    QCOMPARE(fixture.focused(), Save);
    for (int search = 6; search <= 10; ++search) {
        fixture.key(Qt::Key_Tab);
        QCOMPARE(fixture.focused(), u"Search(%1)"_s.arg(search));
    }
}

void EmployeeScreenTest::enterAtTheLastBoxOfAPageLeadsToTheSaving_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<QString>("last");
    QTest::newRow("general") << int(General) << text6(7);
    QTest::newRow("leave") << int(Leaves) << text6(26);
    QTest::newRow("contact") << int(Contact) << text6(17);
    QTest::newRow("career") << int(Career) << text6(22);
    QTest::newRow("web") << int(Web) << text6(24);
}

void EmployeeScreenTest::enterAtTheLastBoxOfAPageLeadsToTheSaving() {
    QFETCH(const int, page);
    QFETCH(const QString, last);
    EmployeeFixture fixture;
    fixture.addPlain(1);
    fixture.openEmployees();
    fixture.press(Modify);
    fixture.clickPage(page);
    fixture.at(last).setFocus();
    fixture.key(Qt::Key_Return);
    QCOMPARE(fixture.focused(), Save);
    fixture.key(Qt::Key_Return);
    QCOMPARE(fixture.panel(2), QString());
    QCOMPARE(fixture.answers.trouble(), QString());
}

void EmployeeScreenTest::theSexIsSpoken() {
    EmployeeFixture fixture;
    fixture.add(with(EmployeeFixture::plain(1), {u"Sex", true}));
    fixture.add(with(EmployeeFixture::plain(2), {u"Sex", false}));
    fixture.openEmployees();
    const QAbstractItemModel& list = *fixture.at<TDBGrid>(u"TDBGrid1"_s).model();
    QCOMPARE(list.headerData(3, Qt::Horizontal).toString(), u"性別"_s);
    QCOMPARE(list.index(0, 3).data(Qt::AccessibleTextRole).toString(), u"男"_s);
    QCOMPARE(list.index(1, 3).data(Qt::AccessibleTextRole).toString(), u"女"_s);
}

void EmployeeScreenTest::theBarFollowsTheFields() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.at(text6(7)).setFocus();
    QStringList order;
    for (int step = 0; step < 9; ++step) {
        fixture.key(Qt::Key_Tab);
        order << fixture.focused();
    }
    QCOMPARE(order, QStringList({Save, u"Search(6)"_s, u"Search(7)"_s, u"Search(8)"_s, u"Search(9)"_s,
                                 u"Search(10)"_s, Cancel, Seniority, Entitlement}));
    // There Enter presses the button.
    fixture.at(Cancel).setFocus();
    fixture.key(Qt::Key_Return);
    QCOMPARE(fixture.panel(2), QString());
    QVERIFY(fixture.answers.seen().isEmpty());
    fixture.at(Entitlement).setFocus();
    fixture.key(Qt::Key_Return);
    QCOMPARE(fixture.answers.trouble(), QString());
}

void EmployeeScreenTest::tabComesToEveryControl_data() {
    QTest::addColumn<int>("page");
    for (int page = General; page <= Web; ++page)
        QTest::addRow("page %d", page) << page;
}

void EmployeeScreenTest::tabComesToEveryControl() {
    QFETCH(const int, page);
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.openEmployees();
    fixture.press(Modify);
    fixture.clickPage(page);
    // Each control of the page is one that Tab comes to.
    for (const Entry& entry : Entries) {
        const QWidget& control = fixture.at(entry.name);
        if (entry.page != page || control.focusPolicy() == Qt::NoFocus || !control.isVisible())
            continue;
        for (int step = 0; step < 100 && fixture.focused() != entry.name; ++step)
            fixture.key(Qt::Key_Tab);
        QCOMPARE(fixture.focused(), entry.name);
    }
}

int main(int argc, char** argv) {
    return runTests<EmployeeScreenTest>(argc, argv);
}

#include "EmployeeScreenTest.moc"
