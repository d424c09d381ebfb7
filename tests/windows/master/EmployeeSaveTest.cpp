#include "windows/master/EmployeeFixture.h"

#include <SQLiteCpp/SQLiteCpp.h>

using namespace pontrel;
using namespace pontrel::test;
using namespace pontrel::test::employee;
using namespace Qt::StringLiterals;

namespace {

/// The window over a store that keeps an account of every row of the employees that is written.
class SaveFixture : public EmployeeFixture {
  public:
    /// From now on, and before the window opens: triggers of the file itself see the writes of all.
    void keepAccount() {
        SQLite::Database engine(store.path().toStdString(), SQLite::OPEN_READWRITE);
        engine.exec("CREATE TABLE Account(line TEXT)");
        for (const char* event : {"INSERT", "UPDATE"})
            engine.exec(std::string("CREATE TRIGGER Account") + event + " AFTER " + event +
                        " ON Base06 BEGIN INSERT INTO Account VALUES('" + event +
                        " ' || new.EmpNo || ' ' || ifnull(new.Birth, 'null') || ' ' ||"
                        " ifnull(new.ArriveDate, 'null') || ' ' || ifnull(new.LeaveDate, 'null') || ' ' ||"
                        " ifnull(new.IniArrDate, 'null')); END");
    }
    /// What the triggers have told: event, code, birth, joining, leaving, first date in public service.
    [[nodiscard]] QStringList account() const {
        SQLite::Database engine(store.path().toStdString(), SQLite::OPEN_READONLY);
        SQLite::Statement lines(engine, "SELECT line FROM Account ORDER BY rowid");
        QStringList all;
        while (lines.executeStep())
            all << QString::fromStdString(lines.getColumn(0).getString());
        return all;
    }
};

} // namespace

/// Adding and saving employees.
class EmployeeSaveTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aNewRowHasNoSentinelInBetween();
    void aModifiedRowHasTheSentinelWithinTheSave();
    void onlyEmptyDatesTakeTheSentinel();
    void theStartOfSeniorityTakesNoSentinel();
    void anySaveClearsTheSentinelOfEveryRow_data();
    void anySaveClearsTheSentinelOfEveryRow();
    void aDateThatIsTheSentinelCannotBeKept();
    void theFirstDateInServiceMayBeTheSentinel();
    void theScreenShowsTheNullsJustWritten();
    void aSaveEndsOnTheSavedRow_data();
    void aSaveEndsOnTheSavedRow();
    void aNewRowIsCurrentAtTheEndUntilRefreshed();
    void aSaveShowsTheFirstPage_data();
    void aSaveShowsTheFirstPage();
    void aChangedCodeStaysCurrent();
    void cancelStoresNothing();
    void aNewRowStartsEmpty();
    void codesMayHaveTenCharactersWhateverTheSettings();
};

void EmployeeSaveTest::aNewRowHasNoSentinelInBetween() {
    SaveFixture fixture;
    fixture.keepAccount();
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(0), u"10001"_s);
    fixture.press(Save);
    QCOMPARE(fixture.account(), QStringList{u"INSERT 10001 null null null null"_s});
    QCOMPARE(fixture.employees(), QStringList{employeeRow({{u"EmpNo", u"10001"}})});
}

void EmployeeSaveTest::aModifiedRowHasTheSentinelWithinTheSave() {
    SaveFixture fixture;
    fixture.add({{u"EmpNo", u"10001"}});
    fixture.add({{u"EmpNo", u"10002"}});
    fixture.keepAccount();
    fixture.openEmployees();
    fixture.press(Modify);
    fixture.press(Save);
    // The row first, then the three statements: leaving, birth, joining.
    QCOMPARE(fixture.account(), QStringList({u"UPDATE 10001 2038-01-01 2038-01-01 2038-01-01 null"_s,
                                             u"UPDATE 10001 2038-01-01 2038-01-01 null null"_s,
                                             u"UPDATE 10001 null 2038-01-01 null null"_s,
                                             u"UPDATE 10001 null null null null"_s}));
    QCOMPARE(fixture.employees(),
             QStringList({employeeRow({{u"EmpNo", u"10001"}}), employeeRow({{u"EmpNo", u"10002"}})}));
}

void EmployeeSaveTest::onlyEmptyDatesTakeTheSentinel() {
    SaveFixture fixture;
    const Fields row{{u"EmpNo", u"10001"},
                     {u"Birth", QDate(1965, 2, 3)},
                     {u"ArriveDate", QDate(1990, 7, 1)},
                     {u"IniArrDate", QDate(1988, 9, 10)}};
    fixture.add(row);
    fixture.keepAccount();
    fixture.openEmployees();
    fixture.press(Modify);
    fixture.press(Save);
    QCOMPARE(fixture.account(), QStringList({u"UPDATE 10001 1965-02-03 1990-07-01 2038-01-01 1988-09-10"_s,
                                             u"UPDATE 10001 1965-02-03 1990-07-01 null 1988-09-10"_s}));
    QCOMPARE(fixture.employees(), QStringList{employeeRow(row)});
}

void EmployeeSaveTest::theStartOfSeniorityTakesNoSentinel() {
    SaveFixture fixture;
    const Fields row = fullEmployee(u"10001"_s);
    fixture.add(row);
    fixture.keepAccount();
    fixture.openEmployees();
    fixture.press(Modify);
    fixture.clickPage(1);
    fixture.emptyMask(3);
    fixture.press(Save);
    QCOMPARE(fixture.account(), QStringList{u"UPDATE 10001 1965-02-03 1990-07-01 2005-06-30 null"_s});
    QCOMPARE(fixture.employees(), QStringList{employeeRow(with(row, {u"IniArrDate", Value()}))});
}

void EmployeeSaveTest::anySaveClearsTheSentinelOfEveryRow_data() {
    QTest::addColumn<bool>("adding");
    QTest::addRow("a new row's save") << true;
    QTest::addRow("a modified row's save") << false;
}

void EmployeeSaveTest::anySaveClearsTheSentinelOfEveryRow() {
    QFETCH(const bool, adding);
    SaveFixture fixture;
    const Fields born{{u"EmpNo", u"10002"},
                      {u"Birth", SentinelDate},
                      {u"ArriveDate", SentinelDate},
                      {u"LeaveDate", SentinelDate},
                      {u"IniArrDate", SentinelDate}};
    fixture.add(fullEmployee(u"10001"_s));
    fixture.add(born);
    fixture.openEmployees();
    fixture.keepAccount();
    fixture.press(adding ? Add : Modify);
    if (adding)
        fixture.enter(text6(0), u"10003"_s);
    fixture.press(Save);
    const Fields cleared{{u"EmpNo", u"10002"}, {u"IniArrDate", SentinelDate}};
    QStringList expected{employeeRow(fullEmployee(u"10001"_s)), employeeRow(cleared)};
    if (adding)
        expected << employeeRow({{u"EmpNo", u"10003"}});
    QCOMPARE(fixture.employees(), expected);
    QCOMPARE(fixture.account().filter(u"10002"_s),
             QStringList({u"UPDATE 10002 2038-01-01 2038-01-01 null 2038-01-01"_s,
                          u"UPDATE 10002 null 2038-01-01 null 2038-01-01"_s,
                          u"UPDATE 10002 null null null 2038-01-01"_s}));
}

void EmployeeSaveTest::aDateThatIsTheSentinelCannotBeKept() {
    EmployeeFixture fixture;
    fixture.add(with(fullEmployee(u"10001"_s), {u"LeaveDate", SentinelDate}));
    fixture.openEmployees();
    QCOMPARE(fixture.shown(u"TDBDate1(2)"_s), u"2038/01/01"_s);
    fixture.press(Modify);
    fixture.date(0).setDate(SentinelDate);
    fixture.press(Save);
    const Fields row = with(fullEmployee(u"10001"_s), {u"LeaveDate", Value()});
    QCOMPARE(fixture.employees(), QStringList{employeeRow(with(row, {u"Birth", Value()}))});
}

void EmployeeSaveTest::theFirstDateInServiceMayBeTheSentinel() {
    EmployeeFixture fixture;
    const Fields row = with(fullEmployee(u"10001"_s), {u"IniArrDate", SentinelDate});
    fixture.add(row);
    fixture.openEmployees();
    fixture.press(Modify);
    fixture.press(Save);
    QCOMPARE(fixture.employees(), QStringList{employeeRow(row)});
}

void EmployeeSaveTest::theScreenShowsTheNullsJustWritten() {
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.add(fullEmployee(u"10002"_s));
    fixture.add(fullEmployee(u"10003"_s));
    for (const QString& way : {First, Next, Last}) {
        if (way == First)
            fixture.openEmployees();
        fixture.press(way);
        fixture.press(Modify);
        for (int pair = 0; pair < 3; ++pair)
            fixture.emptyMask(pair);
        fixture.press(Save);
        for (int pair = 0; pair < 3; ++pair) {
            QVERIFY(fixture.date(pair).value().isNull());
            QCOMPARE(fixture.mask(pair).value(), QString());
        }
        QCOMPARE(fixture.mask(3).value(), u"770910"_s);
    }
    const QStringList rows = shownRows(fixture.at<TDBGrid>(u"TDBGrid1"_s));
    QCOMPARE(rows.size(), 3);
    for (const QString& row : rows) {
        const QStringList cells = row.split(u'|');
        QCOMPARE(cells.at(4) + cells.at(9) + cells.at(10), QString());
    }
}

void EmployeeSaveTest::aSaveEndsOnTheSavedRow_data() {
    QTest::addColumn<int>("position");
    for (int position = 1; position <= 3; ++position)
        QTest::addRow("row %d of 3", position) << position;
}

void EmployeeSaveTest::aSaveEndsOnTheSavedRow() {
    QFETCH(const int, position);
    EmployeeFixture fixture;
    fixture.addPlain(3);
    fixture.openEmployees();
    for (int row = 1; row < position; ++row)
        fixture.press(Next);
    fixture.press(Modify);
    fixture.enter(text6(1), u"Changed"_s);
    fixture.press(Save);
    QStringList expected;
    for (int number = 1; number <= 3; ++number)
        expected << employeeRow(number == position
                                    ? with(EmployeeFixture::plain(number), {u"EmpName", u"Changed"})
                                    : EmployeeFixture::plain(number));
    QCOMPARE(fixture.employees(), expected);
    QCOMPARE(fixture.shown({text6(0), text6(1)}),
             QStringList({QString::number(10000 + position), u"Changed"_s}));
    QCOMPARE(fixture.panel(1), u"資料錄:%1/3"_s.arg(position));
    QCOMPARE(fixture.panel(2), QString());
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnWithRows);
    QCOMPARE(fixture.at<TDBGrid>(u"TDBGrid1"_s).currentIndex().row(), position - 1);
}

void EmployeeSaveTest::aNewRowIsCurrentAtTheEndUntilRefreshed() {
    EmployeeFixture fixture;
    fixture.addPlain(3);
    fixture.openEmployees();
    fixture.press(Next);
    fixture.press(Add);
    fixture.enter(text6(0), u"10000"_s);
    fixture.press(Save);
    QCOMPARE(fixture.code(), u"10000"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:4/4"_s);
    QCOMPARE(fixture.buttonsOn(u"CtrlCmd5"_s), OnWithRows);
    fixture.press(Refresh);
    QCOMPARE(fixture.code(), u"10000"_s);
    QCOMPARE(fixture.panel(1), u"資料錄:1/4"_s);
}

void EmployeeSaveTest::aSaveShowsTheFirstPage_data() {
    QTest::addColumn<QString>("begin");
    QTest::addColumn<int>("page");
    for (const auto& [begin, word] : {std::pair{Add, "a new row"}, {Modify, "a modified row"}}) {
        for (int page = 0; page < 5; ++page)
            QTest::addRow("%s from page %d", word, page) << begin << page;
    }
}

void EmployeeSaveTest::aSaveShowsTheFirstPage() {
    QFETCH(const QString, begin);
    QFETCH(const int, page);
    EmployeeFixture fixture;
    fixture.addPlain(1);
    fixture.openEmployees();
    fixture.press(begin);
    if (begin == Add)
        fixture.enter(text6(0), u"10002"_s);
    fixture.clickPage(page);
    fixture.press(Save);
    QCOMPARE(fixture.panel(2), QString());
    QCOMPARE(fixture.pages().currentIndex(), 0);
}

void EmployeeSaveTest::aChangedCodeStaysCurrent() {
    EmployeeFixture fixture;
    fixture.addPlain(3);
    fixture.openEmployees();
    fixture.press(Modify);
    fixture.enter(text6(0), u"20001"_s);
    fixture.press(Save);
    QCOMPARE(fixture.code(), u"20001"_s);
    QCOMPARE(fixture.employees(),
             QStringList({employeeRow(EmployeeFixture::plain(2)), employeeRow(EmployeeFixture::plain(3)),
                          employeeRow(with(EmployeeFixture::plain(1), {u"EmpNo", u"20001"}))}));
}

void EmployeeSaveTest::cancelStoresNothing() {
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.openEmployees();
    for (const QString& begin : {Modify, Add}) {
        fixture.press(begin);
        fixture.enter(text6(0), u"10009"_s);
        fixture.enter(text6(1), u"Nobody"_s);
        fixture.typeDate(0, u"900131"_s);
        fixture.press(Cancel);
        QCOMPARE(fixture.employees(), QStringList{employeeRow(fullEmployee(u"10001"_s))});
        QCOMPARE(fixture.shown({text6(0), text6(1), u"TDBMask1(0)"_s}),
                 QStringList({u"10001"_s, u"王小明"_s, u"540203"_s}));
        QCOMPARE(fixture.panel(1), u"資料錄:1/1"_s);
    }
}

void EmployeeSaveTest::aNewRowStartsEmpty() {
    EmployeeFixture fixture;
    fixture.add(fullEmployee(u"10001"_s));
    fixture.openEmployees();
    fixture.press(Add);
    fixture.enter(text6(0), u"10002"_s);
    fixture.press(Save);
    // Nothing of the row that stood there before.
    QCOMPARE(fixture.employees(),
             QStringList({employeeRow(fullEmployee(u"10001"_s)), employeeRow({{u"EmpNo", u"10002"}})}));
}

void EmployeeSaveTest::codesMayHaveTenCharactersWhateverTheSettings() {
    EmployeeFixture fixture;
    fixture.database().execute(u"update Syst01 set LenEmpNo = 4"_s);
    fixture.openEmployees();
    for (const QString& code : {u"1"_s, u"ABCDE12345"_s}) {
        fixture.press(Add);
        fixture.enter(text6(0), code);
        fixture.press(Save);
    }
    QVERIFY(fixture.answers.seen().isEmpty());
    QCOMPARE(fixture.employees(),
             QStringList({employeeRow({{u"EmpNo", u"1"}}), employeeRow({{u"EmpNo", u"ABCDE12345"}})}));
}

int main(int argc, char** argv) {
    return runTests<EmployeeSaveTest>(argc, argv);
}

#include "EmployeeSaveTest.moc"
