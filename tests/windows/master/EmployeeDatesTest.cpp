#include "windows/master/EmployeeFixture.h"

#include "store/Clock.h"
#include "support/Patience.h"

#include <QCalendarWidget>

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::employee;
using namespace Qt::StringLiterals;

namespace {

const QString BadDate = u"警告訊息|日期格式輸入錯誤,請重新輸入|確定"_s;
const QStringList Columns{u"Birth"_s, u"ArriveDate"_s, u"LeaveDate"_s, u"IniArrDate"_s};

/// The date pairs in an edit of the first of two employees.
class DatesFixture : public EmployeeFixture {
  public:
    void modify(const Fields& fields = {}) {
        row_ = Fields{{u"EmpNo", u"10001"}} + fields;
        add(row_);
        add({{u"EmpNo", u"10002"}});
        openEmployees();
        press(Modify);
    }
    /// Brings the page of that pair to the front.
    void showPair(int pair) { clickPage(pair == 3 ? 1 : 0); }
    [[nodiscard]] QString rowWith(const Field& field) const { return employeeRow(with(row_, field)); }
    [[nodiscard]] QString firstRow() const { return employees().constFirst(); }
    /// Opens the calendar of a date control by a key and moves there by keys.
    void chooseInCalendar(int pair, const QList<Qt::Key>& moves) {
        date(pair).setFocus();
        key(Qt::Key_F4);
        QVERIFY(QTest::qWaitFor([&] { return date(pair).calendar() && date(pair).calendar()->isVisible(); },
                                PatienceMs));
        QWindow* popup = date(pair).calendar()->window()->windowHandle();
        for (const Qt::Key move : moves)
            QTest::keyClick(popup, move);
        QTest::keyClick(popup, Qt::Key_Return);
    }

  private:
    Fields row_;
};

void addPairRows() {
    QTest::addColumn<int>("pair");
    for (int pair = 0; pair < 4; ++pair)
        QTest::addRow("%s", qPrintable(Columns.at(pair))) << pair;
}

} // namespace

/// The four date pairs of the employees' tab.
class EmployeeDatesTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() {
        clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
    }
    void cleanup() { clock::setSource({}); }

    void aTypedDateIsStored_data() { addPairRows(); }
    void aTypedDateIsStored();
    void aBadDateIsToldAndTheFocusMovesOn_data() { addPairRows(); }
    void aBadDateIsToldAndTheFocusMovesOn();
    void aBadDateSavesTheDateAsItWas();
    void anIncompleteDateIsBad();
    void aBadDateIsToldAtEachLeaveUntilSomethingChanges();
    void anotherBoxesChangeForgetsTheBadDate();
    void aBadDateOfAnotherPairIsNotTold();
    void anEmptiedMaskIsNoDate_data() { addPairRows(); }
    void anEmptiedMaskIsNoDate();
    void anEmptiedDateControlClearsTheMask();
    void aDateChosenInTheCalendarIsWrittenIntoTheMask();
    void aDateOf2026IsChosenWithTheMaskBlank_data() { addPairRows(); }
    void aDateOf2026IsChosenWithTheMaskBlank();
    void aDateOf2026OutlivesFurtherEdits();
    void aDateBefore1922OutlivesAnEdit();
    void browsingShowsEachRowsDates();
    void addClearsTheMasksAndCancelShowsThemAgain();
    void aCancelledBadMaskShowsTheRowAgain();
};

void EmployeeDatesTest::aTypedDateIsStored() {
    QFETCH(const int, pair);
    DatesFixture fixture;
    fixture.modify();
    fixture.showPair(pair);
    fixture.typeDate(pair, u"900131"_s);
    QCOMPARE(fixture.mask(pair).displayText(), u"90/01/31"_s);
    QCOMPARE(fixture.date(pair).date(), QDate(2001, 1, 31));
    fixture.key(Qt::Key_Return);
    fixture.press(Save);
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.firstRow(), fixture.rowWith({Columns.at(pair), QDate(2001, 1, 31)}));
    QCOMPARE(fixture.mask(pair).value(), u"900131"_s);
}

void EmployeeDatesTest::aBadDateIsToldAndTheFocusMovesOn() {
    QFETCH(const int, pair);
    DatesFixture fixture;
    fixture.modify({{Columns.at(pair), QDate(2001, 9, 9)}});
    fixture.showPair(pair);
    for (const Qt::Key leave : {Qt::Key_Tab, Qt::Key_Return}) {
        fixture.typeDate(pair, u"901345"_s);
        fixture.answers.expectMsgBox();
        fixture.key(leave);
        QCOMPARE(fixture.answers.trouble(), QString());
        QCOMPARE(fixture.lastMessage(), BadDate);
        QTRY_COMPARE_WITH_TIMEOUT(fixture.focused(), u"TDBDate1(%1)"_s.arg(pair), PatienceMs);
        QCOMPARE(fixture.mask(pair).displayText(), u"90/13/45"_s);
        QCOMPARE(fixture.date(pair).date(), QDate(2001, 9, 9));
    }
    QCOMPARE(fixture.panel(2), u"修改資料"_s);
}

void EmployeeDatesTest::aBadDateSavesTheDateAsItWas() {
    DatesFixture fixture;
    fixture.modify({{u"ArriveDate", QDate(2001, 9, 9)}});
    fixture.typeDate(1, u"901345"_s);
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_Tab);
    fixture.press(Save);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.firstRow(), fixture.rowWith({u"ArriveDate", QDate(2001, 9, 9)}));
    QCOMPARE(fixture.panel(2), QString());
}

void EmployeeDatesTest::anIncompleteDateIsBad() {
    DatesFixture fixture;
    fixture.modify();
    for (const QString& places : {u"9"_s, u"9001"_s, u"90013"_s, u"900230"_s, u"900001"_s}) {
        fixture.emptyMask(0);
        fixture.typeDate(0, places);
        fixture.answers.expectMsgBox();
        fixture.key(Qt::Key_Tab);
        QCOMPARE(fixture.answers.trouble(), QString());
        QCOMPARE(fixture.lastMessage(), BadDate);
        QVERIFY(fixture.date(0).value().isNull());
        QCOMPARE(fixture.mask(0).value(), places);
    }
}

void EmployeeDatesTest::aBadDateIsToldAtEachLeaveUntilSomethingChanges() {
    DatesFixture fixture;
    fixture.modify();
    fixture.typeDate(0, u"901345"_s);
    for (int time = 1; time <= 2; ++time) {
        fixture.answers.expectMsgBox();
        fixture.key(Qt::Key_Tab);
        QCOMPARE(fixture.answers.trouble(), QString());
        QCOMPARE(fixture.answers.seen().size(), time);
        click(fixture.mask(0));
    }
    fixture.typeDate(0, u"900131"_s);
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.answers.seen().size(), 2);
}

void EmployeeDatesTest::anotherBoxesChangeForgetsTheBadDate() {
    DatesFixture fixture;
    fixture.modify();
    fixture.typeDate(0, u"901345"_s);
    fixture.box(text6(1)).setText(u"某人"_s);
    fixture.key(Qt::Key_Tab);
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.mask(0).displayText(), u"90/13/45"_s);
}

void EmployeeDatesTest::aBadDateOfAnotherPairIsNotTold() {
    DatesFixture fixture;
    fixture.modify();
    click(fixture.mask(0));
    fixture.mask(1).setValue(u"901345"_s);
    fixture.key(Qt::Key_Tab);
    QVERIFY(fixture.answers.seen().isEmpty());
    click(fixture.mask(1));
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.answers.trouble(), QString());
}

void EmployeeDatesTest::anEmptiedMaskIsNoDate() {
    QFETCH(const int, pair);
    DatesFixture fixture;
    fixture.modify({{Columns.at(pair), QDate(2001, 9, 9)}});
    fixture.showPair(pair);
    fixture.emptyMask(pair);
    QVERIFY(fixture.date(pair).value().isNull());
    fixture.key(Qt::Key_Tab);
    fixture.press(Save);
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.firstRow(), fixture.rowWith({Columns.at(pair), Value()}));
    QVERIFY(fixture.date(pair).value().isNull());
    QCOMPARE(fixture.mask(pair).value(), QString());
}

void EmployeeDatesTest::anEmptiedDateControlClearsTheMask() {
    DatesFixture fixture;
    fixture.modify({{u"Birth", QDate(2001, 9, 9)}});
    fixture.date(0).setFocus();
    fixture.key(Qt::Key_Delete);
    QVERIFY(fixture.date(0).value().isNull());
    QCOMPARE(fixture.mask(0).value(), QString());
    fixture.press(Save);
    QCOMPARE(fixture.firstRow(), fixture.rowWith({u"Birth", Value()}));
}

void EmployeeDatesTest::aDateChosenInTheCalendarIsWrittenIntoTheMask() {
    DatesFixture fixture;
    fixture.modify({{u"Birth", QDate(2001, 1, 30)}});
    fixture.chooseInCalendar(0, {Qt::Key_Right});
    QTRY_COMPARE_WITH_TIMEOUT(fixture.date(0).date(), QDate(2001, 1, 31), PatienceMs);
    QCOMPARE(fixture.mask(0).value(), u"900131"_s);
    fixture.press(Save);
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.firstRow(), fixture.rowWith({u"Birth", QDate(2001, 1, 31)}));
}

void EmployeeDatesTest::aDateOf2026IsChosenWithTheMaskBlank() {
    QFETCH(const int, pair);
    DatesFixture fixture;
    fixture.modify({{Columns.at(pair), QDate(2010, 12, 31)}});
    fixture.showPair(pair);
    QCOMPARE(fixture.mask(pair).value(), u"991231"_s);
    click(fixture.mask(pair));
    fixture.date(pair).setDate({2026, 3, 4});
    fixture.chooseInCalendar(pair, {Qt::Key_Right});
    QTRY_COMPARE_WITH_TIMEOUT(fixture.date(pair).date(), QDate(2026, 3, 5), PatienceMs);
    QCOMPARE(fixture.mask(pair).displayText(), u"__/__/__"_s);
    // The blank mask beside it is passed without a word and takes nothing away.
    click(fixture.mask(pair));
    fixture.key(Qt::Key_Return);
    QCOMPARE(fixture.date(pair).currentText(), u"2026/03/05"_s);
    fixture.press(Save);
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.firstRow(), fixture.rowWith({Columns.at(pair), QDate(2026, 3, 5)}));
    QCOMPARE(fixture.date(pair).currentText(), u"2026/03/05"_s);
    QCOMPARE(fixture.mask(pair).value(), QString());
}

void EmployeeDatesTest::aDateOf2026OutlivesFurtherEdits() {
    DatesFixture fixture;
    fixture.modify({{u"ArriveDate", QDate(2026, 3, 5)}, {u"IniArrDate", QDate(2026, 3, 5)}});
    QCOMPARE(fixture.shown({u"TDBMask1(1)"_s, u"TDBDate1(1)"_s}), QStringList({QString(), u"2026/03/05"_s}));
    fixture.enter(text6(1), u"New"_s);
    fixture.press(Save);
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.firstRow(), fixture.rowWith({u"EmpName", u"New"}));
}

void EmployeeDatesTest::aDateBefore1922OutlivesAnEdit() {
    DatesFixture fixture;
    fixture.modify({{u"Birth", QDate(1920, 12, 5)}});
    // Five characters stand from the left and name no day.
    QCOMPARE(fixture.mask(0).displayText(), u"91/20/5_"_s);
    QCOMPARE(fixture.date(0).currentText(), u"1920/12/05"_s);
    fixture.enter(text6(1), u"New"_s);
    fixture.press(Save);
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.firstRow(), fixture.rowWith({u"EmpName", u"New"}));
}

void EmployeeDatesTest::browsingShowsEachRowsDates() {
    EmployeeFixture fixture;
    fixture.add({{u"EmpNo", u"10001"}, {u"Birth", QDate(1965, 2, 3)}});
    fixture.add({{u"EmpNo", u"10002"}});
    fixture.add({{u"EmpNo", u"10003"}, {u"Birth", QDate(2012, 2, 29)}});
    fixture.add({{u"EmpNo", u"10004"}, {u"Birth", QDate(2010, 12, 31)}});
    fixture.openEmployees();
    const QStringList birth{u"TDBMask1(0)"_s, u"TDBDate1(0)"_s};
    QCOMPARE(fixture.shown(birth), QStringList({u"540203"_s, u"1965/02/03"_s}));
    const QStringList none = fixture.shown({u"TDBMask1(1)"_s, u"TDBDate1(1)"_s});
    QCOMPARE(none.constFirst(), QString());
    QCOMPARE(none.constLast().simplified(), QString());
    fixture.press(Next);
    QCOMPARE(fixture.shown(birth), none);
    fixture.press(Next);
    QCOMPARE(fixture.shown(birth), QStringList({QString(), u"2012/02/29"_s}));
    fixture.press(Next);
    QCOMPARE(fixture.shown(birth), QStringList({u"991231"_s, u"2010/12/31"_s}));
    fixture.press(Previous);
    QCOMPARE(fixture.shown(birth), QStringList({QString(), u"2012/02/29"_s}));
    QVERIFY(fixture.answers.seen().isEmpty());
}

void EmployeeDatesTest::addClearsTheMasksAndCancelShowsThemAgain() {
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.openEmployees();
    fixture.press(Add);
    for (int pair = 0; pair < 4; ++pair) {
        QCOMPARE(fixture.mask(pair).value(), QString());
        QVERIFY(fixture.date(pair).value().isNull());
    }
    fixture.press(Cancel);
    QStringList masks;
    for (int pair = 0; pair < 4; ++pair)
        masks << fixture.mask(pair).value();
    QCOMPARE(masks, QStringList({u"540203"_s, u"790701"_s, u"940630"_s, u"770910"_s}));
    QCOMPARE(fixture.employees(), QStringList{employeeRow(fullEmployee(u"10001"_s))});
}

void EmployeeDatesTest::aCancelledBadMaskShowsTheRowAgain() {
    DatesFixture fixture;
    fixture.modify({{u"Birth", QDate(2001, 9, 9)}});
    fixture.typeDate(0, u"901345"_s);
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_Tab);
    fixture.press(Cancel);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.date(0).date(), QDate(2001, 9, 9));
    fixture.press(Next);
    fixture.press(Previous);
    QCOMPARE(fixture.mask(0).value(), u"900909"_s);
}

int main(int argc, char** argv) {
    return runTests<EmployeeDatesTest>(argc, argv);
}

#include "EmployeeDatesTest.moc"
