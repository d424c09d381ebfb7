#include "windows/master/EmployeeFixture.h"

#include <QClipboard>

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
    void aPhraseThatIsTooLongIsCut();
    void aLongerTextOfTheRowIsKeptAndMayShrink();
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

void EmployeeLimitsTest::aPhraseThatIsTooLongIsCut() {
    EmployeeFixture fixture;
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(2), u"A12345"_s);
    QLineEdit& box = fixture.box(text6(2));
    box.setCursorPosition(1);
    QApplication::clipboard()->setText(u"𠮷bcdefgh"_s);
    fixture.key(Qt::Key_V, Qt::ControlModifier);
    QCOMPARE(box.text(), u"A𠮷bcd12345"_s);
    QCOMPARE(box.cursorPosition(), 6); // behind what came in; the first letter counts twice here
    // In place of a part of the text that there is.
    box.setSelection(0, 6);
    QInputMethodEvent phrase;
    phrase.setCommitString(u"一二三四五六七"_s);
    QApplication::sendEvent(&box, &phrase);
    QCOMPARE(box.text(), u"一二三四五12345"_s);
}

void EmployeeLimitsTest::aLongerTextOfTheRowIsKeptAndMayShrink() {
    EmployeeFixture fixture;
    fixture.add({{u"EmpNo", u"10001"}, {u"IdNo", u"A123456789XYZ"}});
    fixture.openEmployees();
    fixture.press(Modify);
    QLineEdit& box = fixture.box(text6(2));
    QCOMPARE(box.text(), u"A123456789XYZ"_s);
    click(box);
    fixture.key(Qt::Key_End);
    fixture.keys(u"8"_s);
    QCOMPARE(box.text(), u"A123456789XYZ"_s);
    fixture.key(Qt::Key_Backspace);
    QCOMPARE(box.text(), u"A123456789XY"_s);
    fixture.key(Qt::Key_Z, Qt::ControlModifier);
    QCOMPARE(box.text(), u"A123456789XYZ"_s);
    fixture.keys(u"88"_s);
    QCOMPARE(box.text(), u"A123456789XYZ"_s);
    fixture.key(Qt::Key_Backspace);
    fixture.press(Save);
    QCOMPARE(fixture.employees(),
             QStringList{employeeRow({{u"EmpNo", u"10001"}, {u"IdNo", u"A123456789XY"}})});
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
