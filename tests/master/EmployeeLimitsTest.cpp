#include "master/EmployeeFixture.h"

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::employee;
using namespace Qt::StringLiterals;

namespace {

enum Page { General, Leaves, Contact, Career, Web };

} // namespace

/// How much the boxes of the employees' tab take.
class EmployeeLimitsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void boxesTakeNoMoreThanTheirLimit_data();
    void boxesTakeNoMoreThanTheirLimit();
    void rareCharactersAreNotCutInHalf();
    void boxesWithoutALimitTakeAll();
};

void EmployeeLimitsTest::boxesTakeNoMoreThanTheirLimit_data() {
    QTest::addColumn<int>("page");
    QTest::addColumn<int>("box");
    QTest::addColumn<int>("limit");
    const QList<std::tuple<Page, int, int>> limits{
        {General, 0, 10},  {General, 1, 12},  {General, 2, 10},  {General, 3, 4},
        {General, 4, 3},   {General, 5, 4},   {General, 6, 4},   {General, 7, 1},
        {Contact, 15, 10}, {Contact, 16, 60}, {Contact, 17, 20}, {Career, 18, 20},
        {Career, 19, 20},  {Career, 20, 20},  {Career, 21, 20},  {Career, 22, 20}};
    for (const auto& [page, box, limit] : limits)
        QTest::addRow("box %d: %d", box, limit) << static_cast<int>(page) << box << limit;
}

void EmployeeLimitsTest::boxesTakeNoMoreThanTheirLimit() {
    QFETCH(const int, page);
    QFETCH(const int, box);
    QFETCH(const int, limit);
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.clickPage(page);
    fixture.answers.expectMsgBox(); // Where the digits are no known code, leaving the box tells so.
    fixture.enter(text6(box), QString(limit, u'7'));
    QCOMPARE(fixture.text(text6(box)), QString(limit, u'7'));
    fixture.keys(u"8"_s);
    QCOMPARE(fixture.text(text6(box)), QString(limit, u'7'));
}

void EmployeeLimitsTest::rareCharactersAreNotCutInHalf() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(0), u"10001"_s);
    const QString name = u"王"_s + u"𠮷"_s.repeated(11);
    fixture.enter(text6(1), name);
    QInputMethodEvent thirteenth;
    thirteenth.setCommitString(u"𠮷"_s);
    QApplication::sendEvent(&fixture.box(text6(1)), &thirteenth);
    QCOMPARE(fixture.text(text6(1)), name);
    fixture.press(Save);
    QCOMPARE(fixture.employees(),
             QStringList{employeeRow({{u"EmpNo", u"10001"}, {u"EmpName", Value(name)}})});
}

void EmployeeLimitsTest::boxesWithoutALimitTakeAll() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(0), u"10001"_s);
    fixture.clickPage(Web);
    const QString password(200, u'p');
    const QString right(150, u'w');
    fixture.enter(text6(23), password);
    fixture.enter(text6(24), right);
    fixture.press(Save);
    QCOMPARE(fixture.employees(),
             QStringList{employeeRow(
                 {{u"EmpNo", u"10001"}, {u"Webpsw", Value(password)}, {u"WebNo", Value(right)}})});
}

int main(int argc, char** argv) {
    return runTests<EmployeeLimitsTest>(argc, argv);
}

#include "EmployeeLimitsTest.moc"
