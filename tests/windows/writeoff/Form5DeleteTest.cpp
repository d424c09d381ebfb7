#include "support/RefuseDeletes.h"
#include "windows/writeoff/Form5Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString Asked = u"確認刪除|確定刪除這筆資料?"_s;

} // namespace

/// Deletes on both bars of the write-off window: refused ones, and the one that empties the list.
class Form5DeleteTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aRefusedDeleteLeavesTheRow_data();
    void aRefusedDeleteLeavesTheRow();
    void theMaskKeepsTheDayOfTheLastEntry();
};

void Form5DeleteTest::aRefusedDeleteLeavesTheRow_data() {
    QTest::addColumn<Form5Tab>("tab");
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("bar");
    QTest::addColumn<QList<int>>("buttons"); // next, delete
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<QString>("grid");
    QTest::newRow("a reason") << Reasons << u"Canc01"_s << u"CtrlCmd0"_s << QList<int>({8, 3})
                              << u"Text1(1)"_s << u"公出"_s << u"TDBG2"_s;
    QTest::newRow("an entry") << Entries << u"Canc02"_s << u"CtrlCmd2"_s << QList<int>({8, 2})
                              << u"Text5(2)"_s << u"02"_s << u"TDBG1(0)"_s;
}

void Form5DeleteTest::aRefusedDeleteLeavesTheRow() {
    QFETCH(const Form5Tab, tab);
    QFETCH(const QString, table);
    QFETCH(const QString, bar);
    QFETCH(const QList<int>, buttons);
    QFETCH(const QString, box);
    QFETCH(const QString, shown);
    QFETCH(const QString, grid);
    Form5Fixture it;
    it.addPeople();
    it.addEntries();
    const QStringList rows = it.rows(table);
    refuseDeletes(it.store, table.toStdString());
    it.open(tab);
    it.press(u"%1(%2)"_s.arg(bar).arg(buttons.at(0)));
    const QStringList listed = it.shown(grid);
    const QList<int> on = it.buttonsOn(bar);
    it.answers.expectMsgBox(MsgAnswer::Yes).expectMsgBox();
    it.press(u"%1(%2)"_s.arg(bar).arg(buttons.at(1)));
    QCOMPARE(it.seen(), QStringList({Asked, u"錯誤訊息|無法刪除資料!"_s}));
    QCOMPARE(it.answers.seen().constLast().icon, MsgIcon::Exclamation);
    // It does not go to the last row either.
    QCOMPARE(it.rows(table), rows);
    QCOMPARE(it.shown(grid), listed);
    QCOMPARE(listed.size(), 3);
    QCOMPARE(it.panel(1) + it.text(box), u"資料錄:2/3"_s + shown);
    QCOMPARE(it.buttonsOn(bar), on);
    QCOMPARE(it.tabsOn(), QList<int>({Reasons, Batch, Entries, Counts}));
    QVERIFY(it.panel8Raised());
    QCOMPARE(it.answers.trouble(), QString());
}

void Form5DeleteTest::theMaskKeepsTheDayOfTheLastEntry() {
    Form5Fixture it;
    it.addPeople();
    addWriteOff(it.database(), u"10001"_s, Day, u"01"_s, u"02"_s, u"A12"_s, u"01"_s);
    it.open(Entries);
    QCOMPARE(it.mask(1).value(), u"900305"_s);
    it.answers.expectMsgBox(MsgAnswer::Yes);
    it.press(u"CtrlCmd2(2)"_s);
    QCOMPARE(it.seen(), QStringList{Asked});
    QCOMPARE(it.rows(u"Canc02"_s) + it.shown(u"TDBG1(0)"_s), QStringList());
    QCOMPARE(it.panel(1), u"資料錄:1/0"_s);
    // The date control is empty, and its mask follows it only to a date.
    QCOMPARE(it.mask(1).value(), u"900305"_s);
    QVERIFY(!it.date(1).date().isValid());
    QString others = it.label(u"Label4(0)"_s) + it.label(u"Label5"_s);
    for (int box = 0; box <= 4; ++box)
        others += it.text(u"Text5(%1)"_s.arg(box));
    for (int label = 7; label >= 4; --label)
        others += it.label(u"Label40(%1)"_s.arg(label));
    QCOMPARE(others + it.label(u"Label4(96)"_s), QString());
    QCOMPARE(it.buttonsOn(u"CtrlCmd2"_s), QList<int>({0, 5, 10, 11, 12, 13}));
    // A new entry clears it.
    it.press(u"CtrlCmd2(0)"_s);
    QCOMPARE(it.mask(1).value(), QString());
    QCOMPARE(it.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<Form5DeleteTest>(argc, argv);
}

#include "Form5DeleteTest.moc"
