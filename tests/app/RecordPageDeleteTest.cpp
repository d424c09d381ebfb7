#include "app/RecordFixture.h"
#include "support/Errors.h"
#include "support/TableTakenAway.h"

#include <optional>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Delete = u"CtrlCmd0(2)"_s;
const QString Next = u"CtrlCmd0(8)"_s;
const QString Last = u"CtrlCmd0(9)"_s;
const QString Refresh = u"CtrlCmd0(10)"_s;
const QString Code = u"Text1(0)"_s;

} // namespace

Q_DECLARE_METATYPE(pontrel::DeleteEnd)

/// How a record page deletes a row: question, order, end, refusal.
class RecordPageDeleteTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void cleanup() { setBell({}); }
    void deleteAsksAndNoLeavesTheRow();
    void enterOnTheQuestionLeavesTheRow();
    void noRefreshesTheBar();
    void theBellSoundsOnYesAndOnRefusal();
    void noSoundsNoBell();
    void deleteEnds_data();
    void deleteEnds();
    void deleteOfTheOnlyRowLeavesTheEmptyState();
    void aRefusedDeleteTellsAndLeavesAtOnce();
    void aPageHasItsOwnWordsForARefusedDelete();
    void aFailedStepBeforeTheDeleteStopsNothing();
    void aRowDeletedElsewhereCannotBeDeleted();
    void theRowAskedAboutIsDeletedWhereverTheSourceHasGone();
    void noOtherRowIsDeletedInPlaceOfOneThatIsGone();
    void aFailureBehindTheDeleteGoesWithoutAWord_data();
    void aFailureBehindTheDeleteGoesWithoutAWord();
};

void RecordPageDeleteTest::deleteAsksAndNoLeavesTheRow() {
    RecordFixture fixture;
    fixture.addTitles(2);
    fixture.open();
    fixture.answers.expectMsgBox(MsgAnswer::No);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    const SeenPrompt& question = fixture.answers.seen().constFirst();
    QCOMPARE(question.title, u"確認刪除"_s);
    QCOMPARE(question.text, u"確定刪除這筆資料?"_s);
    QCOMPARE(question.icon, MsgIcon::Question);
    QCOMPARE(question.buttons, QStringList({u"是"_s, u"否"_s}));
    QCOMPARE(fixture.titles().size(), 2);
    QCOMPARE(fixture.panel(1), u"資料錄:1/2"_s);
}

void RecordPageDeleteTest::enterOnTheQuestionLeavesTheRow() {
    RecordFixture fixture;
    fixture.addTitles(2);
    fixture.open();
    fixture.answers.expect(u"MsgBox"_s, [](QWidget& box) {
        QVERIFY(control(box, u"No"_s).hasFocus());
        QTest::keyClick(box.windowHandle(), Qt::Key_Return);
    });
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.titles(), QStringList({u"1|職稱1"_s, u"2|職稱2"_s}));
    QCOMPARE(fixture.panel(1), u"資料錄:1/2"_s);
}

void RecordPageDeleteTest::noRefreshesTheBar() {
    RecordFixture fixture;
    fixture.addTitles(2);
    fixture.open();
    const QList<int> browse = fixture.buttonsOn(u"CtrlCmd0"_s);
    // What the refresh sets right again.
    fixture.at(u"CtrlCmd0(0)"_s).setEnabled(false);
    fixture.at(u"CtrlCmd0(4)"_s).setEnabled(true);
    QVERIFY(fixture.buttonsOn(u"CtrlCmd0"_s) != browse);
    fixture.answers.expectMsgBox(MsgAnswer::No);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd0"_s), browse);
}

void RecordPageDeleteTest::theBellSoundsOnYesAndOnRefusal() {
    RecordFixture fixture;
    Database& database = fixture.store.database();
    addEmployee(database, u"10001"_s);
    addEmployee(database, u"10002"_s);
    insertRow(database, u"Over01"_s, {{u"EmpNo", u"10001"}});
    // What was to be seen at each sound: the employees left, and whether a message stood.
    QStringList sounds;
    setBell([&] {
        sounds << u"%1 rows, %2"_s.arg(rowsOf(database, u"Base06"_s).size())
                      .arg(QApplication::activeModalWidget() ? u"a message"_s : u"no message"_s);
    });
    fixture.open();
    fixture.clickTab(2);
    int soundsBeforeTheMessage = 0;
    fixture.answers.expectMsgBox(MsgAnswer::Yes).expect(u"MsgBox"_s, [&](QWidget& box) {
        soundsBeforeTheMessage = static_cast<int>(sounds.size());
        QTest::keyClick(&box, Qt::Key_Escape);
    });
    fixture.press(u"CtrlCmd2(2)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(soundsBeforeTheMessage, 2);
    QCOMPARE(sounds, QStringList({u"2 rows, no message"_s, u"2 rows, no message"_s}));
    sounds.clear();
    fixture.press(u"CtrlCmd2(9)"_s);
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(u"CtrlCmd2(2)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(sounds, QStringList{u"2 rows, no message"_s}); // once, ahead of the delete
    QCOMPARE(rowsOf(database, u"Base06"_s).size(), 1);
}

void RecordPageDeleteTest::noSoundsNoBell() {
    RecordFixture fixture;
    fixture.addTitles(1);
    int sounds = 0;
    setBell([&sounds] { ++sounds; });
    fixture.open();
    fixture.answers.expectMsgBox(MsgAnswer::No);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(sounds, 0);
}

void RecordPageDeleteTest::deleteEnds_data() {
    QTest::addColumn<DeleteEnd>("end");
    QTest::addColumn<QStringList>("way");
    QTest::addColumn<QString>("current");
    QTest::addRow("on the last row, from the first") << DeleteEnd::Last << QStringList() << u"4"_s;
    QTest::addRow("on the last row, from the middle") << DeleteEnd::Last << QStringList{Next} << u"4"_s;
    QTest::addRow("on the last row, from the last") << DeleteEnd::Last << QStringList{Last} << u"3"_s;
    QTest::addRow("on the first row, from the first") << DeleteEnd::First << QStringList() << u"2"_s;
    QTest::addRow("on the first row, from the last") << DeleteEnd::First << QStringList{Last} << u"1"_s;
    QTest::addRow("on the next row, from the first") << DeleteEnd::Next << QStringList() << u"2"_s;
    QTest::addRow("on the next row, from the middle") << DeleteEnd::Next << QStringList{Next} << u"3"_s;
    QTest::addRow("on the next row, from the last") << DeleteEnd::Next << QStringList{Last} << u"3"_s;
}

void RecordPageDeleteTest::deleteEnds() {
    QFETCH(const DeleteEnd, end);
    QFETCH(const QStringList, way);
    QFETCH(const QString, current);
    RecordFixture fixture;
    fixture.addTitles(4);
    fixture.plans[0].rules.deleteEnd = end;
    fixture.open();
    for (const QString& button : way)
        fixture.press(button);
    const QString gone = fixture.text(Code);
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QStringList left{u"1|職稱1"_s, u"2|職稱2"_s, u"3|職稱3"_s, u"4|職稱4"_s};
    left.removeOne(u"%1|職稱%1"_s.arg(gone));
    QCOMPARE(fixture.titles(), left);
    QCOMPARE(fixture.text(Code), current);
    const auto place = left.indexOf(u"%1|職稱%1"_s.arg(current)) + 1;
    QCOMPARE(fixture.panel(1), u"資料錄:%1/3"_s.arg(place));
    QCOMPARE(fixture.at<TDBGrid>(u"TDBGrid2(0)"_s).currentIndex().row(), static_cast<int>(place) - 1);
}

void RecordPageDeleteTest::deleteOfTheOnlyRowLeavesTheEmptyState() {
    for (const DeleteEnd end : {DeleteEnd::Last, DeleteEnd::First, DeleteEnd::Next}) {
        RecordFixture fixture;
        fixture.addTitles(1);
        fixture.plans[0].rules.deleteEnd = end;
        fixture.open();
        fixture.answers.expectMsgBox(MsgAnswer::Yes);
        fixture.press(Delete);
        QCOMPARE(fixture.answers.trouble(), QString());
        QCOMPARE(fixture.titles(), QStringList());
        QCOMPARE(fixture.panel(1), u"資料錄:1/0"_s);
        QCOMPARE(fixture.text(Code), QString());
        QCOMPARE(fixture.buttonsOn(u"CtrlCmd0"_s), QList<int>({0, 10, 12}));
    }
}

void RecordPageDeleteTest::aRefusedDeleteTellsAndLeavesAtOnce() {
    RecordFixture fixture;
    Database& database = fixture.store.database();
    addEmployee(database, u"10001"_s);
    addEmployee(database, u"10002"_s);
    insertRow(database, u"Over01"_s, {{u"EmpNo", u"10001"}});
    const QStringList employees = rowsOf(database, u"Base06"_s);
    int refreshes = 0;
    fixture.plans[2].steps.beforeBar = [&refreshes] {
        ++refreshes;
        return true;
    };
    fixture.open();
    fixture.clickTab(2);
    refreshes = 0;
    fixture.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    fixture.press(u"CtrlCmd2(2)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    const SeenPrompt& message = fixture.answers.seen().constLast();
    QCOMPARE(message.title, u"錯誤訊息"_s);
    QCOMPARE(message.text, u"無法刪除資料!"_s);
    QCOMPARE(message.icon, MsgIcon::Exclamation);
    QCOMPARE(refreshes, 0);
    QCOMPARE(rowsOf(database, u"Base06"_s), employees);
    QCOMPARE(fixture.text(u"Text3(0)"_s), u"10001"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:1/2"_s);
}

void RecordPageDeleteTest::aPageHasItsOwnWordsForARefusedDelete() {
    RecordFixture fixture;
    addEmployee(fixture.store.database(), u"10001"_s);
    insertRow(fixture.store.database(), u"Holi03"_s, {{u"BusNo", u"1"}, {u"EmpNo", u"10001"}});
    fixture.plans[2].rules.deleteRefused = u"此員工已有加班/請假資料,無法刪除!"_s;
    fixture.open();
    fixture.clickTab(2);
    fixture.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    fixture.press(u"CtrlCmd2(2)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"此員工已有加班/請假資料,無法刪除!"_s);
}

void RecordPageDeleteTest::aFailedStepBeforeTheDeleteStopsNothing() {
    RecordFixture fixture;
    fixture.addTitles(2);
    int ran = 0;
    fixture.plans[0].steps.beforeDelete = {[] { gDatabase->execute(u"delete * from Base99"_s); },
                                           [&ran] { ++ran; }};
    fixture.open();
    fixture.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"無法刪除資料!"_s);
    QCOMPARE(ran, 1);
    QCOMPARE(fixture.titles(), QStringList{u"2|職稱2"_s}); // gone, and told as refused all the same
}

void RecordPageDeleteTest::aRowDeletedElsewhereCannotBeDeleted() {
    RecordFixture fixture;
    fixture.addTitles(2);
    fixture.open();
    fixture.store.database().execute(u"delete * from Base01 where TitleNo = '1'"_s);
    fixture.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"無法刪除資料!"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:1/2"_s);
    fixture.press(Refresh);
    QCOMPARE(fixture.panel(1), u"資料錄:1/1"_s);
}

void RecordPageDeleteTest::theRowAskedAboutIsDeletedWhereverTheSourceHasGone() {
    RecordFixture fixture;
    fixture.addTitles(3);
    fixture.open();
    const QStringList before = fixture.titles();
    fixture.answers.expect(u"MsgBox"_s, [&](QWidget& box) {
        fixture.form().source(0).MoveLast();
        click(control(box, u"Yes"_s));
    });
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.titles(), before.mid(1));
}

void RecordPageDeleteTest::noOtherRowIsDeletedInPlaceOfOneThatIsGone() {
    RecordFixture fixture;
    fixture.addTitles(3);
    fixture.open();
    const QStringList before = fixture.titles();
    fixture.answers
        .expect(u"MsgBox"_s,
                [&](QWidget& box) {
                    fixture.store.database().execute(u"delete * from Base01 where TitleNo='1'"_s);
                    fixture.form().source(0).Refresh();
                    click(control(box, u"Yes"_s));
                })
        .expectMsgBox();
    fixture.press(Delete);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"無法刪除資料!"_s);
    QCOMPARE(fixture.titles(), before.mid(1));
}

void RecordPageDeleteTest::aFailureBehindTheDeleteGoesWithoutAWord_data() {
    QTest::addColumn<int>("rows");
    QTest::addColumn<QStringList>("left");
    QTest::addRow("the move to the last row") << 3 << QStringList({u"2|職稱2"_s, u"3|職稱3"_s});
    QTest::addRow("the refresh of the empty list") << 1 << QStringList();
}

void RecordPageDeleteTest::aFailureBehindTheDeleteGoesWithoutAWord() {
    QFETCH(const int, rows);
    QFETCH(const QStringList, left);
    RecordFixture fixture;
    fixture.addTitles(rows);
    int refreshes = 0;
    fixture.plans[0].steps.beforeBar = [&refreshes] {
        ++refreshes;
        return true;
    };
    fixture.open();
    DataSource& source = fixture.form().source(0);
    // From the delete itself on there is no table to read from.
    std::optional<TableTakenAway> away;
    const auto connection = connect(&source, &DataSource::Reposition, this,
                                    [&] { away.emplace(fixture.store.path(), "Base01"); });
    refreshes = 0;
    fixture.answers.expectMsgBox(MsgAnswer::Yes);
    // Called straight, so that no grid is painted while the table is away.
    fixture.form().page(0).perform(BarAction::Delete);
    disconnect(connection);
    QCOMPARE(errorOf([&source] { source.Refresh(); }), error::UnknownTable);
    away.reset();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().size(), 1); // the question alone
    QCOMPARE(refreshes, 1);
    QCOMPARE(fixture.titles(), left);
    fixture.press(Refresh);
    QCOMPARE(fixture.panel(1), u"資料錄:1/%1"_s.arg(left.size()));
}

int main(int argc, char** argv) {
    return runTests<RecordPageDeleteTest>(argc, argv);
}

#include "RecordPageDeleteTest.moc"
