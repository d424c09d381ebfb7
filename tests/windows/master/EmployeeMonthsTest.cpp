#include "windows/master/EmployeeFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::employee;
using namespace Qt::StringLiterals;

namespace {

/// A grant's box, the label of what is left, and their columns.
struct Grant {
    int box;
    QString label;
    QString granted;
    QString left;
};

const QList<Grant> Grants{{13, u"Label25(0)"_s, u"ThisYearHD"_s, u"ThisYearLeft"_s},
                          {14, u"Label25(1)"_s, u"LastYearHD"_s, u"LastYearLeft"_s},
                          {25, u"Label25(4)"_s, u"LeaveHD"_s, u"LeaveLeft"_s},
                          {26, u"Label25(5)"_s, u"SickHD"_s, u"SickLeft"_s}};

void addGrantRows() {
    QTest::addColumn<int>("index");
    for (int index = 0; index < Grants.size(); ++index)
        QTest::addRow("%s", qPrintable(Grants.at(index).granted)) << index;
}

/// The page of the leave open in an edit.
class LeavesFixture : public EmployeeFixture {
  public:
    /// Over the first of two employees, who has these fields.
    void modify(const Fields& fields) {
        row_ = Fields{{u"EmpNo", u"10001"}} + fields;
        add(row_);
        add({{u"EmpNo", u"10002"}});
        openEmployees();
        press(Modify);
        clickPage(1);
    }
    /// The first employee's row and what differs in it.
    [[nodiscard]] QString rowWith(const Fields& more) const {
        Fields row = row_;
        for (const Field& field : more)
            row = with(row, field);
        return employeeRow(row);
    }

  private:
    Fields row_;
};

} // namespace

/// The boxes that are more than a column of their own: years and months, and the grants.
class EmployeeMonthsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void monthsShowAsYearsAndMonths_data();
    void monthsShowAsYearsAndMonths();
    void typedYearsAndMonthsAreStoredAsMonths_data();
    void typedYearsAndMonthsAreStoredAsMonths();
    void theMonthsComeWhenABoxIsLeft();
    void fifteenMonthsStayFifteen();
    void bothTotalsComeWhicheverBoxIsLeft();
    void militaryYearsFirstOnANewRow();
    void withoutMonthsBothBoxesShowNone();
    void aChangeOfOneCarrierEmptiesTheBoxesOfTheOther();
    void aChangeOfTheCarrierItselfShowsYearsAndMonths();
    void aTypedGrantIsWhatIsLeft_data() { addGrantRows(); }
    void aTypedGrantIsWhatIsLeft();
    void anEmptiedGrantLeavesNothing_data() { addGrantRows(); }
    void anEmptiedGrantLeavesNothing();
    void otherFiguresChangeNothing();
    void aSaveThatTouchedNothingKeepsTheWholeRow_data();
    void aSaveThatTouchedNothingKeepsTheWholeRow();
};

void EmployeeMonthsTest::monthsShowAsYearsAndMonths_data() {
    QTest::addColumn<QString>("BreakY");
    QTest::addColumn<QString>("SoldierY");
    QTest::addColumn<QString>("boxes");
    QTest::addRow("27 are 2 years and 3 months") << u"27"_s << u"22"_s << u"2|3|1|10"_s;
    QTest::addRow("null is none") << QString() << QString() << u"0|0|0|0"_s;
    QTest::addRow("0 is none") << u"0"_s << u"0"_s << u"0|0|0|0"_s;
    QTest::addRow("one of the two") << u"12"_s << QString() << u"1|0|0|0"_s;
    QTest::addRow("the other") << QString() << u"11"_s << u"0|0|0|11"_s;
    QTest::addRow("below 0 is none") << u"-5"_s << u"-13"_s << u"0|0|0|0"_s;
    QTest::addRow("the most") << u"32767"_s << u"1"_s << u"2730|7|0|1"_s;
}

void EmployeeMonthsTest::monthsShowAsYearsAndMonths() {
    QFETCH(const QString, BreakY);
    QFETCH(const QString, SoldierY);
    QFETCH(const QString, boxes);
    EmployeeFixture fixture;
    fixture.add({{u"EmpNo", u"10001"}, {u"BreakY", 5}, {u"SoldierY", 6}});
    const auto months = [](const QString& text) { return text.isEmpty() ? Value() : Value(text.toInt()); };
    fixture.add({{u"EmpNo", u"10002"}, {u"BreakY", months(BreakY)}, {u"SoldierY", months(SoldierY)}});
    fixture.openEmployees();
    QCOMPARE(fixture.shownMonths(), u"0|5|0|6"_s);
    fixture.press(Next);
    QCOMPARE(fixture.shownMonths(), boxes);
    QCOMPARE(fixture.shown({u"Text7(0)"_s, u"Text7(1)"_s}), QStringList({BreakY, SoldierY}));
}

void EmployeeMonthsTest::typedYearsAndMonthsAreStoredAsMonths_data() {
    QTest::addColumn<QString>("years");
    QTest::addColumn<QString>("months");
    QTest::addColumn<int>("total");
    QTest::addColumn<QString>("boxes"); // As they stand when they are left.
    QTest::addRow("years and months") << u"3"_s << u"4"_s << 40 << u"3|4"_s;
    QTest::addRow("15 months") << u"0"_s << u"15"_s << 15 << u"0|15"_s;
    QTest::addRow("empty years") << QString() << u"7"_s << 7 << u"|7"_s;
    QTest::addRow("empty months") << u"2"_s << QString() << 24 << u"2|"_s;
    QTest::addRow("no number counts 0") << u"abc"_s << u"9"_s << 9 << u"abc|9"_s;
    QTest::addRow("a number at the start counts") << u"2y"_s << u"3m"_s << 27 << u"2y|3m"_s;
    QTest::addRow("a fraction of a year") << u"1.5"_s << u"0"_s << 18 << u"1.5|0"_s;
    QTest::addRow("half a month goes to the even number") << u"0"_s << u"2.5"_s << 2 << u"0|2.5"_s;
    QTest::addRow("and up to the even number") << u"0"_s << u"3.5"_s << 4 << u"0|3.5"_s;
    QTest::addRow("the most of 16 bits") << u"2730"_s << u"7"_s << 32767 << u"2730|7"_s;
    QTest::addRow("both empty") << QString() << QString() << 0 << u"0|0"_s;
    QTest::addRow("no numbers at all") << u"x"_s << u"y"_s << 0 << u"0|0"_s;
    QTest::addRow("below 0 shows none") << u"-1"_s << u"2"_s << -10 << u"0|0"_s;
}

void EmployeeMonthsTest::typedYearsAndMonthsAreStoredAsMonths() {
    QFETCH(const QString, years);
    QFETCH(const QString, months);
    QFETCH(const int, total);
    QFETCH(const QString, boxes);
    for (const int first : {8, 10}) {
        LeavesFixture fixture;
        fixture.modify({{u"BreakY", 5}, {u"SoldierY", 5}});
        // Typed in one go, so that the pair is looked at once, when it is left.
        fixture.box(text6(first + 1)).setText(months);
        fixture.enter(text6(first), years);
        click(fixture.box(text6(12)));
        const QStringList parts = fixture.shownMonths().split(u'|');
        QCOMPARE(QStringList(parts.mid(first - 8, 2)).join(u'|'), boxes);
        QCOMPARE(fixture.text(first == 8 ? u"Text7(0)"_s : u"Text7(1)"_s), QString::number(total));
        fixture.press(Save);
        QCOMPARE(fixture.employees().constFirst(),
                 fixture.rowWith({{first == 8 ? u"BreakY"_s : u"SoldierY"_s, Value(total)}}));
    }
}

void EmployeeMonthsTest::theMonthsComeWhenABoxIsLeft() {
    LeavesFixture fixture;
    fixture.modify({{u"BreakY", 5}, {u"SoldierY", 6}});
    fixture.enter(text6(8), u"2"_s);
    QCOMPARE(fixture.text(u"Text7(0)"_s), u"5"_s);
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.text(u"Text7(0)"_s), u"29"_s);
    QCOMPARE(fixture.text(u"Text7(1)"_s), u"6"_s);
    QCOMPARE(fixture.shownMonths(), u"2|5|0|6"_s);
}

void EmployeeMonthsTest::fifteenMonthsStayFifteen() {
    LeavesFixture fixture;
    fixture.modify({});
    fixture.enter(text6(9), u"15"_s);
    fixture.key(Qt::Key_Return);
    QCOMPARE(fixture.text(text6(9)), u"15"_s);
    QCOMPARE(fixture.text(text6(8)), u"0"_s);
    QCOMPARE(fixture.text(u"Text7(0)"_s), u"15"_s);
    fixture.press(Save);
    QCOMPARE(fixture.employees().constFirst(), fixture.rowWith({{u"BreakY", 15}, {u"SoldierY", 0}}));
    // Seen again, the months are parted.
    fixture.press(Next);
    fixture.press(Previous);
    QCOMPARE(fixture.shownMonths(), u"1|3|0|0"_s);
}

void EmployeeMonthsTest::bothTotalsComeWhicheverBoxIsLeft() {
    for (int box = 8; box <= 11; ++box) {
        LeavesFixture fixture;
        fixture.modify({});
        click(fixture.box(text6(box)));
        click(fixture.box(text6(12)));
        QCOMPARE(fixture.shown({u"Text7(0)"_s, u"Text7(1)"_s}), QStringList({u"0"_s, u"0"_s}));
        fixture.press(Save);
        QCOMPARE(fixture.employees().constFirst(), fixture.rowWith({{u"BreakY", 0}, {u"SoldierY", 0}}));
    }
}

void EmployeeMonthsTest::militaryYearsFirstOnANewRow() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(0), u"10001"_s);
    fixture.clickPage(1);
    QCOMPARE(fixture.shown({u"Text7(0)"_s, u"Text7(1)"_s}), QStringList({QString(), QString()}));
    fixture.enter(text6(10), u"2"_s);
    fixture.key(Qt::Key_Tab);
    // The months of the broken service are the first to come. With them both carriers are looked at, and the
    // second one, still empty, sets its boxes to none before its own months come.
    QCOMPARE(fixture.shown({u"Text7(0)"_s, u"Text7(1)"_s}), QStringList({u"0"_s, u"24"_s}));
    QCOMPARE(fixture.shownMonths(), u"0|0|0|0"_s);
    // The box that is left next has none to add to.
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.shown({u"Text7(0)"_s, u"Text7(1)"_s}), QStringList({u"0"_s, u"0"_s}));
    // From now on no carrier is empty.
    fixture.enter(text6(10), u"2"_s);
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.shownMonths(), u"0|0|2|0"_s);
    fixture.press(Save);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(rowsOfSelection(fixture.database(), u"select EmpNo,BreakY,SoldierY from Base06"_s),
             QStringList{u"10001|0|24"_s});
}

void EmployeeMonthsTest::withoutMonthsBothBoxesShowNone() {
    // While the months are being written no boxes are filled from them, but for this: none is shown at once.
    LeavesFixture fixture;
    fixture.modify({{u"BreakY", 27}, {u"SoldierY", 22}});
    fixture.box(text6(8)).setText(QString());
    fixture.enter(text6(9), u"none"_s);
    fixture.key(Qt::Key_Tab);
    QCOMPARE(fixture.shownMonths(), u"0|0|1|10"_s);
    QCOMPARE(fixture.text(u"Text7(0)"_s), u"0"_s);
}

void EmployeeMonthsTest::aChangeOfOneCarrierEmptiesTheBoxesOfTheOther() {
    // Both carriers are looked at in turn, whichever has changed.
    LeavesFixture fixture;
    fixture.modify({{u"BreakY", 0}, {u"SoldierY", 22}});
    fixture.box(text6(8)).setText(u"typed"_s);
    fixture.box(u"Text7(1)"_s).setText(u"30"_s);
    QCOMPARE(fixture.shownMonths(), u"0|0|2|6"_s);
}

void EmployeeMonthsTest::aChangeOfTheCarrierItselfShowsYearsAndMonths() {
    LeavesFixture fixture;
    fixture.modify({{u"BreakY", 27}, {u"SoldierY", 22}});
    fixture.box(u"Text7(0)"_s).setText(u"40"_s);
    QCOMPARE(fixture.shownMonths(), u"3|4|1|10"_s);
    fixture.box(u"Text7(1)"_s).setText(QString());
    QCOMPARE(fixture.shownMonths(), u"3|4|0|0"_s);
    fixture.press(Save);
    QCOMPARE(fixture.employees().constFirst(), fixture.rowWith({{u"BreakY", 40}, {u"SoldierY", Value()}}));
}

void EmployeeMonthsTest::aTypedGrantIsWhatIsLeft() {
    QFETCH(const int, index);
    const Grant& each = Grants.at(index);
    LeavesFixture fixture;
    fixture.modify(fullEmployee(u"10001"_s).mid(1));
    fixture.enter(text6(each.box), u"9.5"_s);
    for (const Grant& other : Grants) {
        if (other.box != each.box)
            QVERIFY(fixture.label(other.label) != fixture.text(text6(other.box)));
    }
    QCOMPARE(fixture.label(each.label), u"9.5"_s);
    fixture.press(Save);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.employees().constFirst(), fixture.rowWith({{each.granted, 9.5}, {each.left, 9.5}}));
    QCOMPARE(fixture.label(each.label), u"9.5"_s);
}

void EmployeeMonthsTest::anEmptiedGrantLeavesNothing() {
    QFETCH(const int, index);
    const Grant& each = Grants.at(index);
    LeavesFixture fixture;
    fixture.modify(fullEmployee(u"10001"_s).mid(1));
    fixture.enter(text6(each.box), QString());
    QCOMPARE(fixture.label(each.label), QString());
    fixture.press(Save);
    QCOMPARE(fixture.employees().constFirst(),
             fixture.rowWith({{each.granted, Value()}, {each.left, Value()}}));
}

void EmployeeMonthsTest::otherFiguresChangeNothing() {
    LeavesFixture fixture;
    fixture.modify(fullEmployee(u"10001"_s).mid(1));
    fixture.enter(text6(12), u"20"_s);
    fixture.press(Save);
    QCOMPARE(fixture.employees().constFirst(), fixture.rowWith({{u"HoliExper", 20}}));
}

void EmployeeMonthsTest::aSaveThatTouchedNothingKeepsTheWholeRow_data() {
    QTest::addColumn<bool>("full");
    QTest::addRow("every column filled") << true;
    QTest::addRow("a grant without what is left, and nothing else") << false;
}

void EmployeeMonthsTest::aSaveThatTouchedNothingKeepsTheWholeRow() {
    QFETCH(const bool, full);
    LeavesFixture fixture;
    fixture.modify(full ? fullEmployee(u"10001"_s).mid(1)
                        : Fields{{u"ThisYearHD", 14.0}, {u"SickLeft", 3.5}});
    // Both ways: the row that stands there when the tab opens, and one that is moved to.
    fixture.press(Save);
    QCOMPARE(fixture.employees().constFirst(), fixture.rowWith({}));
    fixture.press(Last);
    fixture.press(First);
    fixture.press(Modify);
    fixture.press(Save);
    QCOMPARE(fixture.employees(), QStringList({fixture.rowWith({}), employeeRow({{u"EmpNo", u"10002"}})}));
    QVERIFY(fixture.answers.seen().isEmpty());
}

int main(int argc, char** argv) {
    return runTests<EmployeeMonthsTest>(argc, argv);
}

#include "EmployeeMonthsTest.moc"
