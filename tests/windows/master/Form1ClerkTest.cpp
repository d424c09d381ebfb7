#include "app/Clerk.h"
#include "windows/master/Form1Pages.h"

#include <QMessageBox>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

/// The master data open, and its clerk.
struct Desk {
    Form1Fixture fixture;
    std::unique_ptr<Clerk> clerk;

    Desk() {
        fixture.open();
        clerk = std::make_unique<Clerk>(fixture.mainWindow());
    }
    [[nodiscard]] bool turnTo(int tab) { return clerk->turnTo(fixture.tabs(), tab); }
    [[nodiscard]] QStringList rows(const QString& table) { return rowsOf(*fixture.store.connect(), table); }
};

} // namespace

/// A clerk's work in the master data with the keyboard alone.
class Form1ClerkTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aUnitIsEnteredFoundAndEdited();
    void aSlotIsEnteredFieldByField();
    void aClassIsEnteredWithItsLookup();
    void aRowIsDeleted();
    void theWindowIsLeftAndOpenedAgain();
};

void Form1ClerkTest::aUnitIsEnteredFoundAndEdited() {
    Desk desk;
    Clerk& clerk = *desk.clerk;
    QVERIFY(desk.turnTo(1));
    for (const auto& [code, name] : {std::pair(u"0001"_s, u"總務處"_s), {u"0002"_s, u"人事室"_s}}) {
        QVERIFY(clerk.press(u"CtrlCmd1(0)"_s));
        QCOMPARE(clerk.focused(), u"Text2(0)"_s);
        clerk.write(code);
        clerk.key(Qt::Key_Return);
        QCOMPARE(clerk.focused(), u"Text2(1)"_s);
        clerk.write(name);
        QVERIFY(clerk.press(u"CtrlCmd1(4)"_s));
    }
    QCOMPARE(desk.rows(u"Base02"_s), QStringList({u"0001|總務處"_s, u"0002|人事室"_s}));
    QVERIFY(clerk.press(u"CtrlCmd1(6)"_s));
    QCOMPARE(desk.fixture.text(u"Text2(1)"_s), u"總務處"_s);
    QVERIFY(clerk.press(u"CtrlCmd1(8)"_s));
    QCOMPARE(desk.fixture.text(u"Text2(1)"_s), u"人事室"_s);
    QVERIFY(clerk.press(u"CtrlCmd1(1)"_s));
    // Reached by keyboard, a box is typed over.
    QVERIFY(clerk.fill(u"Text2(1)"_s, u"會計室"_s));
    QVERIFY(clerk.press(u"CtrlCmd1(4)"_s));
    QCOMPARE(desk.rows(u"Base02"_s), QStringList({u"0001|總務處"_s, u"0002|會計室"_s}));
    QCOMPARE(desk.fixture.panel(1), u"資料錄:2/2"_s);
}

void Form1ClerkTest::aSlotIsEnteredFieldByField() {
    Desk desk;
    Clerk& clerk = *desk.clerk;
    QVERIFY(desk.turnTo(3));
    QVERIFY(clerk.press(u"CtrlCmd3(0)"_s));
    QCOMPARE(clerk.focused(), u"Text4(0)"_s);
    clerk.write(u"A"_s);
    QVERIFY(clerk.fill(u"Text4(1)"_s, u"日班"_s));
    clerk.key(Qt::Key_Tab);
    QVERIFY2(clerk.focused().startsWith(u"OptCT("), qUtf8Printable(clerk.focused()));
    clerk.key(Qt::Key_Space);
    for (int press = 0; press < 5 && clerk.focused() != u"OptCT(4)"; ++press)
        clerk.key(Qt::Key_Right);
    Fields expected{{u"TimeNo", u"A"_s}, {u"TimeName", u"日班"_s}, {u"CardType", 4}};
    // Line by line, as the frame shows them.
    const QList<std::tuple<int, QString, QTime, int, QString, QTime>> lines{
        {0, u"StrIn1"_s, {6, 30}, 2, u"StdT1"_s, {8, 0}},
        {3, u"StdT2"_s, {12, 0}, 6, u"EndOut2"_s, {12, 30}},
        {1, u"StrIn3"_s, {12, 31}, 4, u"StdT3"_s, {13, 0}},
        {5, u"StdT4"_s, {17, 0}, 7, u"EndOut4"_s, {23, 0, 30}}};
    int position = 0;
    for (const auto& [first, firstColumn, firstTime, second, secondColumn, secondTime] : lines) {
        QVERIFY(clerk.press(u"CheckT(%1)"_s.arg(position)));
        QVERIFY(clerk.fill(u"TDBTime1(%1)"_s.arg(first), firstTime.toString(u"hhmmss"_s)));
        QVERIFY(clerk.fill(u"TDBTime1(%1)"_s.arg(second), secondTime.toString(u"hhmmss"_s)));
        expected.append({u"StdC%1"_s.arg(++position), true});
        expected.append({firstColumn, firstTime});
        expected.append({secondColumn, secondTime});
    }
    QVERIFY(clerk.press(u"CheckRest"_s));
    expected.append({u"Rest", true});
    QVERIFY(clerk.reach(u"Combo1"_s));
    clerk.key(Qt::Key_Home);
    clerk.key(Qt::Key_Down, 2);
    expected.append({u"ElstType", 2});
    const QList<std::pair<int, QString>> minutes{{2, u"ElstMin"_s}, {3, u"Cushion"_s},   {4, u"Delay"_s},
                                                 {5, u"Earlier"_s}, {10, u"Cushion1"_s}, {9, u"Delay1"_s},
                                                 {8, u"Earlier1"_s}};
    for (const auto& [index, column] : minutes) {
        QVERIFY(clerk.fill(u"Text4(%1)"_s.arg(index), QString::number(20 + index)));
        expected.append({column, 20 + index});
    }
    QVERIFY(clerk.press(u"CtrlCmd3(4)"_s));
    QCOMPARE(desk.rows(u"Base04"_s), QStringList{expectedRow(u"Base04"_s, expected)});

    // One minute is put right later.
    QVERIFY(clerk.press(u"CtrlCmd3(1)"_s));
    QVERIFY(clerk.fill(u"Text4(4)"_s, u"5"_s));
    QVERIFY(clerk.press(u"CtrlCmd3(4)"_s));
    expected.append({u"Delay", 5});
    QCOMPARE(desk.rows(u"Base04"_s), QStringList{expectedRow(u"Base04"_s, expected)});
}

void Form1ClerkTest::aClassIsEnteredWithItsLookup() {
    Desk desk;
    Clerk& clerk = *desk.clerk;
    addSlot(desk.fixture.database(), u"A"_s);
    addSlot(desk.fixture.database(), u"N"_s);
    QVERIFY(desk.turnTo(4));
    QVERIFY(clerk.press(u"CtrlCmd4(0)"_s));
    QCOMPARE(clerk.focused(), u"Text5(0)"_s);
    clerk.write(u"D01"_s);
    QVERIFY(clerk.fill(u"Text5(1)"_s, u"日夜輪班"_s));
    QVERIFY(clerk.fill(u"Text5(2)"_s, u"A"_s));
    QVERIFY(clerk.fill(u"Text5(3)"_s, u"5"_s));
    QVERIFY(clerk.fill(u"Text5(4)"_s, u"2"_s));
    bool chosen = false;
    desk.fixture.answers.expect(u"QFrmTimeNo"_s, [&chosen](QWidget& dialog) {
        Clerk atDialog(dialog);
        chosen = atDialog.reach(u"TDBGrid2"_s);
        atDialog.key(Qt::Key_Down);
        chosen = chosen && atDialog.press(u"Command1(0)"_s);
    });
    QVERIFY(clerk.press(u"Search(1)"_s));
    QCOMPARE(desk.fixture.answers.trouble(), QString());
    QVERIFY(chosen);
    QCOMPARE(desk.fixture.text(u"Text5(5)"_s), u"N"_s);
    QVERIFY(clerk.fill(u"Text5(6)"_s, u"3"_s));
    QVERIFY(clerk.fill(u"Text5(7)"_s, u"1"_s));
    QVERIFY(clerk.press(u"Check1"_s));
    QVERIFY(clerk.press(u"CtrlCmd4(4)"_s));
    QCOMPARE(desk.rows(u"Base05"_s), QStringList{expectedRow(u"Base05"_s, {{u"ClsNo", u"D01"},
                                                                           {u"ClassName", u"日夜輪班"},
                                                                           {u"TimeNo1", u"A"},
                                                                           {u"TimeDay1", 5},
                                                                           {u"TimeRest1", 2},
                                                                           {u"TimeNo2", u"N"},
                                                                           {u"TimeDay2", 3},
                                                                           {u"TimeRest2", 1},
                                                                           {u"ChkHoli", true}})});
}

void Form1ClerkTest::aRowIsDeleted() {
    Desk desk;
    Clerk& clerk = *desk.clerk;
    insertRow(desk.fixture.database(), u"Base03"_s, {{u"WorkNo", u"1"}, {u"WorkType", u"正式"}});
    insertRow(desk.fixture.database(), u"Base03"_s, {{u"WorkNo", u"2"}, {u"WorkType", u"約聘"}});
    QVERIFY(desk.turnTo(2));
    // The list by its keys, then the button and the answer.
    QVERIFY(clerk.reach(u"TDBGrid2(2)"_s));
    clerk.key(Qt::Key_Down);
    QCOMPARE(desk.fixture.panel(1), u"資料錄:2/2"_s);
    bool answered = false;
    desk.fixture.answers.expect(u"MsgBox"_s, [&answered](QWidget& box) {
        const auto& message = static_cast<QMessageBox&>(box);
        for (int press = 0; press < 4 && !message.button(QMessageBox::Yes)->hasFocus(); ++press)
            QTest::keyClick(box.windowHandle(), Qt::Key_Tab);
        answered = message.button(QMessageBox::Yes)->hasFocus();
        QTest::keyClick(box.windowHandle(), Qt::Key_Space);
    });
    QVERIFY(clerk.press(u"CtrlCmd2(2)"_s));
    QCOMPARE(desk.fixture.answers.trouble(), QString());
    QVERIFY(answered);
    QCOMPARE(desk.rows(u"Base03"_s), QStringList{u"1|正式"_s});
}

void Form1ClerkTest::theWindowIsLeftAndOpenedAgain() {
    Desk desk;
    Clerk& clerk = *desk.clerk;
    QVERIFY(desk.turnTo(1));
    QVERIFY(clerk.press(u"CtrlCmd1(12)"_s));
    QVERIFY(!moduleWindow(1));
    QVERIFY(clerk.press(u"Tb(1)"_s));
    QVERIFY(moduleWindow(1));
    QVERIFY(clerk.press(u"CtrlCmd0(0)"_s));
    QCOMPARE(clerk.focused(), u"Text1(0)"_s);
}

int main(int argc, char** argv) {
    return runTests<Form1ClerkTest>(argc, argv);
}

#include "Form1ClerkTest.moc"
