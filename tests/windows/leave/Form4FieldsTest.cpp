#include "windows/leave/Form4Fixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QString NoEmployee = u"警告訊息|無此【員工代碼】,請重新輸入"_s;
const QString NoType = u"警告訊息|無此【假別代碼】,請重新輸入"_s;
const QString BadDate = u"警告訊息|日期格式輸入錯誤,請重新輸入"_s;
const QString BadPeriod = u"警告訊息|終止日期不可小於開始日期,請重新輸入"_s;
const QString FirstBalances = u"7|1.4|5.4|3|0.5|2.3|14|2|12|30|31|-1"_s;

/// The lookup comes next: chooses its row of that number, from 0, and presses OK.
void expectPick(Form4Fixture& it, const QString& lookup, int row) {
    it.answers.expect(lookup, [row](QWidget& dialog) {
        clickRow(dialog, row);
        clickOk(dialog);
    });
}

} // namespace

/// The fields of a leave note: what its codes show, what is told of them, the times that its dates bring.
class Form4FieldsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void theCaptionsAreThere();
    void anEmployeeBringsHisNamesAndBalances();
    void anEmployeeWithoutFiguresShowsZeros();
    void anUnknownCodeKeepsTheNamesBefore();
    void anUnknownEmployeeOpensTheLookup();
    void anUnknownSubstituteIsToldAlone();
    void anUnknownTypeOpensTheLookup();
    void theButtonsLookUp_data();
    void theButtonsLookUp();
    void aTypedDateFillsWhatIsEmpty();
    void aTypedDateLeavesWhatIsThere();
    void aDateControlOverwritesTheTime_data();
    void aDateControlOverwritesTheTime();
    void anEmptyDateControlLooksNothingUp();
    void aDayOffTakesTheTimesOfTheFirstSlot();
    void aBadDateIsToldAndKeepsTheFocus();
    void aTypedEndBeforeTheBeginIsToldWhenItIsLeft();
    void aBeginThatNoMaskHoldsTrapsNobody();
    void theBalancesAreReadAgainAfterASave();
};

void Form4FieldsTest::theCaptionsAreThere() {
    Form4Fixture it;
    it.open(NotesTab);
    QStringList captions;
    for (const QLabel* label : it.at(u"Frame1(2)"_s).findChildren<QLabel*>()) {
        if (label->objectName().isEmpty())
            captions << label->text();
    }
    captions.sort();
    QStringList expected{u"假單單號："_s, u"員工代碼："_s, u"代  理  人 :"_s, u"假別代碼："_s,
                         u"請假日期："_s, u"自"_s,         u"至"_s,           u"時數："_s,
                         u"請假說明："_s, u"請領："_s,     u"登錄人員："_s,   u"請假狀況："_s,
                         u"可休"_s,       u"已休"_s,       u"剩餘"_s,         u"本年可休"_s,
                         u"去年保休"_s,   u"事假"_s,       u"病假"_s};
    expected.sort();
    QCOMPARE(captions, expected);
    QCOMPARE(it.at<QPushButton>(u"CmdHD"_s).text(), u"假單明細查詢"_s);
    QCOMPARE(it.captions(u"TDBGrid1(2)"_s), QStringList({u"假別"_s, u"日期"_s, QString(), u"開始"_s,
                                                         u"結束"_s, u"時數"_s, u"時段"_s, u"假單編號"_s}));
    // Each figure stands under its heading, and each kind beside its caption.
    for (int index = 11; index <= 22; ++index) {
        const auto& figure = it.at<QLabel>(u"Label4(%1)"_s.arg(index));
        const auto& above = it.at<QLabel>(u"Label4(%1)"_s.arg(11 + (index - 11) % 3));
        const auto& left = it.at<QLabel>(u"Label4(%1)"_s.arg(index - (index - 11) % 3));
        QCOMPARE(figure.x(), above.x());
        QCOMPARE(figure.y(), left.y());
    }
}

void Form4FieldsTest::anEmployeeBringsHisNamesAndBalances() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.type(u"Text3(0)"_s, u"10001"_s);
    QCOMPARE(it.labels4(2, 6), u"王小明|課長|日班|會計課|正職"_s);
    QCOMPARE(it.labels4(11, 22), FirstBalances);
    it.type(u"Text3(1)"_s, u"10002"_s);
    it.type(u"Text3(2)"_s, u"08"_s);
    QCOMPARE(it.labels4(7, 8), u"陳美惠|產假"_s);
    it.press(3);
    it.press(0); // a new note clears the names; the balances stay
    QCOMPARE(it.labels4(2, 8), u"||||||"_s);
    QCOMPARE(it.labels4(11, 22), FirstBalances);
    QVERIFY(it.seen().isEmpty());
}

void Form4FieldsTest::anEmployeeWithoutFiguresShowsZeros() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.type(u"Text3(0)"_s, u"10002"_s);
    QCOMPARE(it.labels4(2, 6), u"陳美惠||||"_s);
    QCOMPARE(it.labels4(11, 22), u"0|0|0|0|0|0|0|0|0|0|0|0"_s);
}

void Form4FieldsTest::anUnknownCodeKeepsTheNamesBefore() {
    Form4Fixture it;
    it.addNote(it.wholeNote(u"1"_s, u"10001"_s, u"01"_s, Monday));
    it.addNote(it.wholeNote(u"2"_s, u"9"_s, u"7"_s, Monday));
    it.open(NotesTab);
    QCOMPARE(it.labels4(11, 22), FirstBalances);
    it.press(9);
    QCOMPARE(it.text(u"Text3(0)"_s) + it.text(u"Text3(2)"_s), u"97"_s);
    QCOMPARE(it.labels4(2, 8), u"王小明|課長|日班|會計課|正職||休假"_s);
    QCOMPARE(it.labels4(11, 22), FirstBalances);
    QVERIFY(it.seen().isEmpty());
}

void Form4FieldsTest::anUnknownEmployeeOpensTheLookup() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.type(u"Text3(0)"_s, u"9"_s);
    it.answers.expectMsgBox();
    expectPick(it, u"QFrmEmpNO"_s, 1);
    it.key(Qt::Key_Return);
    QCOMPARE(it.answers.trouble(), QString());
    QCOMPARE(it.seen(), QStringList({NoEmployee, u"QFrmEmpNO"_s}));
    QCOMPARE(it.text(u"Text3(0)"_s) + it.label4(2), u"10002陳美惠"_s);
}

void Form4FieldsTest::anUnknownSubstituteIsToldAlone() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.type(u"Text3(1)"_s, u"9"_s);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{NoEmployee});
    QCOMPARE(it.text(u"Text3(1)"_s) + it.focused(), u"9Text3(2)"_s);
}

void Form4FieldsTest::anUnknownTypeOpensTheLookup() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.type(u"Text3(2)"_s, u"77"_s);
    it.answers.expectMsgBox();
    expectPick(it, u"QFrmHoliNo"_s, 4);
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList({NoType, u"QFrmHoliNo"_s}));
    QCOMPARE(it.text(u"Text3(2)"_s) + it.label4(8), u"08產假"_s);
}

void Form4FieldsTest::theButtonsLookUp_data() {
    QTest::addColumn<int>("button");
    QTest::addColumn<QString>("lookup");
    QTest::addColumn<QString>("box");
    QTest::addColumn<QString>("code");
    QTest::newRow("employee") << 2 << u"QFrmEmpNO"_s << u"Text3(0)"_s << u"10002"_s;
    QTest::newRow("substitute") << 3 << u"QFrmEmpNO"_s << u"Text3(1)"_s << u"10002"_s;
    QTest::newRow("leave type") << 4 << u"QFrmHoliNo"_s << u"Text3(2)"_s << u"02"_s;
}

void Form4FieldsTest::theButtonsLookUp() {
    QFETCH(const int, button);
    QFETCH(const QString, lookup);
    QFETCH(const QString, box);
    QFETCH(const QString, code);
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    const QString search = u"Search(%1)"_s.arg(button);
    QCOMPARE(it.at<QPushButton>(search).text(), u"查詢"_s);
    expectPick(it, lookup, 1);
    it.press(search);
    QCOMPARE(it.text(box), code);
    it.at<QLineEdit>(box).setText(u"01"_s);
    it.answers.expect(lookup, [](QWidget& dialog) { clickCancel(dialog); });
    it.press(search); // a cancel hands over what was picked before
    QCOMPARE(it.text(box), code);
    QCOMPARE(it.answers.trouble(), QString());
}

void Form4FieldsTest::aTypedDateFillsWhatIsEmpty() {
    Form4Fixture it;
    addSlot(it.database(), u"B"_s, {{u"StdT1", QTime(9, 30)}, {u"StdT4", QTime(18, 30)}});
    addRoster(it.database(), u"10001"_s, Monday, u"B"_s);
    it.open(NotesTab);
    it.press(0);
    it.type(u"Text3(0)"_s, u"10001"_s);
    it.typeDate(0, u"900305"_s);
    QVERIFY(it.time(0).isNull());
    it.key(Qt::Key_Return);
    QCOMPARE(it.mask(1).value(), u"900305"_s);
    QCOMPARE(it.date(1).date(), Monday);
    QCOMPARE(it.time(0).time(), QTime(9, 30));
    QVERIFY(it.time(1).isNull());
    it.mask(1).setFocus();
    it.key(Qt::Key_Return);
    QCOMPARE(it.time(1).time(), QTime(18, 30));
    QVERIFY(it.seen().isEmpty());
}

void Form4FieldsTest::aTypedDateLeavesWhatIsThere() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.typeTime(0, u"1000"_s);
    it.typeTime(1, u"1100"_s);
    it.typeDate(1, u"900307"_s);
    it.typeDate(0, u"900305"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.mask(1).value(), u"900307"_s);
    QCOMPARE(it.time(0).time(), QTime(10, 0));
    QCOMPARE(it.time(1).time(), QTime(11, 0));
}

void Form4FieldsTest::aDateControlOverwritesTheTime_data() {
    QTest::addColumn<int>("end");
    QTest::addColumn<QTime>("time");
    QTest::newRow("begin") << 0 << QTime(8, 0);
    QTest::newRow("end") << 1 << QTime(17, 0);
}

void Form4FieldsTest::aDateControlOverwritesTheTime() {
    QFETCH(const int, end);
    QFETCH(const QTime, time);
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.typeTime(end, u"1012"_s);
    it.date(end).setFocus();
    it.date(end).setDate({2026, 3, 5}); // which its mask cannot hold
    QCOMPARE(it.time(end).time(), QTime(10, 12));
    it.key(Qt::Key_Return);
    QCOMPARE(it.time(end).time(), time);
    QVERIFY(it.time(1 - end).isNull());
}

void Form4FieldsTest::anEmptyDateControlLooksNothingUp() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.typeTime(0, u"1012"_s);
    for (const int end : {0, 1}) {
        it.date(end).setFocus();
        it.key(Qt::Key_Return);
    }
    QCOMPARE(it.time(0).time(), QTime(10, 12));
    QVERIFY(it.time(1).isNull());
    QVERIFY(it.seen().isEmpty());
}

void Form4FieldsTest::aDayOffTakesTheTimesOfTheFirstSlot() {
    Form4Fixture it;
    addSlot(it.database(), u"B"_s, {{u"StdT1", QTime(9, 30)}});
    addRoster(it.database(), u"10002"_s, Monday, u"B"_s);
    it.open(NotesTab);
    it.press(0);
    it.type(u"Text3(0)"_s, u"10001"_s);
    it.typeDate(0, u"900305"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.time(0).time(), QTime(8, 0));
}

void Form4FieldsTest::aBadDateIsToldAndKeepsTheFocus() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.typeDate(0, u"901345"_s);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{BadDate});
    QCOMPARE(it.focused() + it.mask(1).value(), u"TDBMask1(0)"_s);
    QVERIFY(it.time(0).isNull() && !it.date(0).date().isValid());
}

void Form4FieldsTest::aTypedEndBeforeTheBeginIsToldWhenItIsLeft() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.typeDate(0, u"900305"_s);
    it.typeDate(1, u"900304"_s);
    it.answers.expectMsgBox();
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen(), QStringList{BadPeriod});
    QCOMPARE(it.focused(), u"TDBMask1(1)"_s);
    QVERIFY(it.time(1).isNull());
    it.typeDate(1, u"900305"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.seen().size(), 1);
    QCOMPARE(it.time(1).time(), QTime(17, 0));
}

void Form4FieldsTest::aBeginThatNoMaskHoldsTrapsNobody() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.date(0).setDate({2026, 3, 5});
    it.typeDate(1, u"900305"_s);
    it.key(Qt::Key_Return);
    QCOMPARE(it.focused(), u"TDBDate1(1)"_s);
    QVERIFY(it.seen().isEmpty());
    it.answers.expectMsgBox();
    it.press(4); // it is told there
    QCOMPARE(it.seen(), QStringList{BadPeriod});
}

void Form4FieldsTest::theBalancesAreReadAgainAfterASave() {
    Form4Fixture it;
    it.open(NotesTab);
    it.press(0);
    it.fillNote(u"10001"_s, u"03"_s, u"900305"_s, u"0800"_s, u"1700"_s);
    it.database().execute(u"update Base06 set ThisYearLeft = 9.9"_s);
    QCOMPARE(it.label4(13), u"5.4"_s);
    it.press(4);
    QCOMPARE(it.labels4(11, 22), u"7|1.4|9.9|3|0.5|2.3|14|2|12|30|31|-1"_s);
}

int main(int argc, char** argv) {
    return runTests<Form4FieldsTest>(argc, argv);
}

#include "Form4FieldsTest.moc"
