#include "windows/writeoff/Form5BatchFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

void boxes() {
    QTest::addColumn<int>("index");
    for (int index = 0; index < 4; ++index)
        QTest::addRow("box %d", index) << index;
}

} // namespace

/// The boxes of the reasons on the tab of the batch.
class Form5BatchReasonsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void enterOnAnUnknownReasonIsTold_data();
    void enterOnAnUnknownReasonIsTold();
    void aReasonEmptiedByHandIsUnknown_data();
    void aReasonEmptiedByHandIsUnknown();
    void ofTwoUnknownReasonsTheLastOneIsTold();
    void aReasonIsLookedUp();
    void theBoxesTakeTwoCharacters();
};

void Form5BatchReasonsTest::enterOnAnUnknownReasonIsTold_data() {
    boxes();
}

void Form5BatchReasonsTest::enterOnAnUnknownReasonIsTold() {
    QFETCH(const int, index);
    BatchFixture it;
    it.openBatch();
    const QString box = u"Text8(%1)"_s.arg(index);
    it.type(box, u"99"_s);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    // No lookup opens here.
    QCOMPARE(it.seen(), QStringList{UnknownReason});
    QCOMPARE(it.focused(), box);
    it.type(box, u"02"_s);
    QCOMPARE(it.label(u"Label40(%1)"_s.arg(index)), u"公出"_s);
    it.key(Qt::Key_Return);
    QVERIFY(it.focused() != box);
    // Left otherwise an unknown one is not told.
    it.type(box, u"99"_s);
    it.key(Qt::Key_Tab);
    QCOMPARE(it.seen().size(), 1);
    QCOMPARE(it.answers.trouble(), QString());
}

void Form5BatchReasonsTest::aReasonEmptiedByHandIsUnknown_data() {
    boxes();
}

void Form5BatchReasonsTest::aReasonEmptiedByHandIsUnknown() {
    QFETCH(const int, index);
    const QString box = u"Text8(%1)"_s.arg(index);
    const QString name = u"Label40(%1)"_s.arg(index);
    BatchFixture it;
    it.openBatch();
    // Nobody has emptied it yet.
    it.at(box).setFocus();
    it.key(Qt::Key_Return);
    QVERIFY(it.focused() != box);
    QCOMPARE(it.seen(), QStringList());
    it.type(box, u"01"_s);
    it.key(Qt::Key_Backspace);
    it.key(Qt::Key_Backspace);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{UnknownReason});
    QCOMPARE(it.text(box) + it.label(name) + it.focused(), u"忘記刷卡"_s + box);
    // The box keeps nobody from the end, and is stored empty.
    it.typeDate(0, u"900305"_s);
    it.clickEntry(u"List1"_s, 0);
    it.press(u"CMDCTRL(0)"_s);
    it.run();
    QCOMPARE(it.rows(u"Canc02"_s),
             QStringList{entryRow(u"10001"_s, Day, {u""_s, u""_s, u""_s, u""_s}, u"clerk", Now)});
    QCOMPARE(it.seen(), QStringList({UnknownReason, BatchQuestion}));
    QCOMPARE(it.answers.trouble(), QString());
}

void Form5BatchReasonsTest::ofTwoUnknownReasonsTheLastOneIsTold() {
    BatchFixture it;
    it.openBatch();
    it.type(u"Text8(0)"_s, u"98"_s);
    it.key(Qt::Key_Tab);
    QCOMPARE(it.focused(), u"Text8(1)"_s);
    it.keys(u"99"_s);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{UnknownReason});
    QCOMPARE(it.focused(), u"Text8(1)"_s);
    // The one before is forgotten: only the box that was changed last is tested.
    it.at(u"Text8(0)"_s).setFocus();
    it.key(Qt::Key_Return);
    QCOMPARE(it.focused(), u"Text8(1)"_s);
    QCOMPARE(it.seen().size(), 1);
    // The last one is not, until it is changed.
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList(2, UnknownReason));
    QCOMPARE(it.focused(), u"Text8(1)"_s);
    // Both are stored as they stand.
    it.clickEntry(u"List1"_s, 0);
    it.press(u"CMDCTRL(0)"_s);
    it.typeDate(0, u"900305"_s);
    it.run();
    QCOMPARE(it.rows(u"Canc02"_s),
             QStringList{entryRow(u"10001"_s, Day, {u"98"_s, u"99"_s, u""_s, u""_s}, u"clerk", Now)});
    QCOMPARE(it.answers.trouble(), QString());
}

void Form5BatchReasonsTest::aReasonIsLookedUp() {
    BatchFixture it;
    it.openBatch();
    for (int index = 0; index < 4; ++index) {
        it.expectPick(u"QFrmCnlNo"_s, index % 3);
        it.press(u"Search(%1)"_s.arg(index + 2));
        QVERIFY(it.focused() != u"Text8(%1)"_s.arg(index));
    }
    QCOMPARE(it.reasons(), u"01忘記刷卡|02公出|A12卡鐘故障|01忘記刷卡"_s);
    QCOMPARE(it.answers.trouble(), QString());
}

void Form5BatchReasonsTest::theBoxesTakeTwoCharacters() {
    BatchFixture it;
    it.openBatch();
    it.type(u"Text8(2)"_s, u"A12"_s);
    QCOMPARE(it.text(u"Text8(2)"_s), u"A1"_s);
}

int main(int argc, char** argv) {
    return runTests<Form5BatchReasonsTest>(argc, argv);
}

#include "Form5BatchReasonsTest.moc"
