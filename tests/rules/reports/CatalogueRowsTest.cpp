#include "rules/reports/Catalogue.h"
#include "rules/reports/SelectedRows.h"
#include "support/Builders.h"
#include "support/TestStore.h"

#include <QHash>
#include <QTest>

#include <array>
#include <optional>
#include <random>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

using Text = std::optional<QString>;

struct Person {
    QString EmpNo;
    Text UnitNo, WorkNo, ClsNo;
    QDate Birth, ArriveDate, LeaveDate;
};

/// A record of any of the tables; each uses what it has.
struct Record {
    QString id; ///< Stands in a column that tells records apart.
    QString EmpNo;
    QDate day;
    QString HoliNo;
    std::array<bool, 4> F{};
    bool Expt = false;
    int DelayF = 0;
};

bool within(const Text& value, const QString& low, const QString& high) {
    return value && value->compare(low, Qt::CaseInsensitive) >= 0 &&
           value->compare(high, Qt::CaseInsensitive) <= 0;
}

/// An invalid date is met by nothing.
bool within(QDate value, QDate low, QDate high) {
    return value.isValid() && low.isValid() && high.isValid() && low <= value && value <= high;
}

/// What the catalogue selects, told condition by condition.
class Reading {
  public:
    explicit Reading(const ReportChoice& choice) : choice_(choice) {}

    [[nodiscard]] bool person(const QString& code, const Person& person) const {
        const bool current = !person.LeaveDate.isValid();
        if (code == u"a06"_s)
            return within(person.ArriveDate, choice_.dates[0], choice_.dates[1]);
        if (code == u"a07"_s)
            return within(person.LeaveDate, choice_.dates[2], choice_.dates[3]);
        if (code == u"a08"_s)
            return within(person.ClsNo, combo(0), combo(1)) && current;
        if (code == u"a09"_s)
            return person.Birth.isValid() && person.Birth.month() == combo(6).toInt() && current;
        const bool unit = within(person.UnitNo, combo(2), combo(3)) && current;
        return code == u"a11"_s ? unit : unit && within(person.EmpNo, combo(4), combo(5));
    }

    [[nodiscard]] bool record(const QString& code, const Record& record, const Person* person) const {
        const bool day = within(record.day, choice_.dates[0], choice_.dates[1]);
        const bool employee = within(record.EmpNo, combo(0), combo(1));
        if (code == u"D06"_s)
            return day && record.EmpNo.compare(combo(0), Qt::CaseInsensitive) == 0;
        if (person == nullptr)
            return false;
        const bool unit = within(person->UnitNo, combo(2), combo(3));
        const bool workType = within(person->WorkNo, combo(4), combo(5));
        const bool arrived = person->ArriveDate.isValid() && choice_.dates[0].isValid() &&
                             person->ArriveDate <= choice_.dates[0];
        const bool current = !person->LeaveDate.isValid();
        if (code.startsWith(u'B'))
            return day && employee && unit && arrived;
        if (code.startsWith(u'C'))
            return day && employee && unit && workType && arrived && attendance(code, record);
        if (code == u"D05"_s)
            return record.day == choice_.dates[0] && employee && unit && workType && current;
        if (code.startsWith(u'D'))
            return day && employee && unit && workType && leave(code, record, current);
        return day && employee && unit && workType && current;
    }

  private:
    [[nodiscard]] QString combo(qsizetype index) const { return choice_.combos.value(index); }

    [[nodiscard]] bool attendance(const QString& code, const Record& record) const {
        if (code == u"C09"_s)
            return record.F[0] && record.Expt;
        if (code == u"C10"_s)
            return record.DelayF > 0;
        if (code != u"C04"_s && code != u"C05"_s && code != u"C06"_s)
            return true;
        return choice_.punchMark == 0 ? record.F[0] || record.F[1] || record.F[2] || record.F[3]
                                      : record.F.at(static_cast<std::size_t>(choice_.punchMark) - 1);
    }

    /// The first two types come with employees who have left, the third without; of the long form none does.
    [[nodiscard]] bool leave(const QString& code, const Record& record, bool current) const {
        const auto is = [&](std::size_t position) {
            const bool selected = position < choice_.list.size() && choice_.list[position].selected;
            return record.HoliNo == (selected ? choice_.list[position].text.left(2) : QString());
        };
        if (code != u"D04"_s)
            return is(0) || is(1) || (is(2) && current);
        for (std::size_t position = 0; position < MostLeaveTypes; ++position)
            if (is(position))
                return current;
        return false;
    }

    const ReportChoice& choice_;
};

} // namespace

/// The records that the formulas of the catalogue select from stores made at random.
class CatalogueRowsTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void selected_data();
    void selected();

  private:
    int below(int end) { return static_cast<int>(random_() % static_cast<unsigned>(end)); }
    QDate day() { return QDate(2001, 3, 1 + below(12)); }
    QDate maybeDay() { return below(3) == 0 ? QDate() : day(); }
    Text maybe(const QStringList& codes) {
        const int index = below(static_cast<int>(codes.size()) + 1);
        return index == codes.size() ? Text() : Text(codes[index]);
    }
    void makeStore(Database& database);
    ReportChoice choice(const Report& report);

    std::mt19937 random_;
    std::vector<Person> people_;
    std::vector<Record> records_;
};

void CatalogueRowsTest::makeStore(Database& database) {
    people_.clear();
    records_.clear();
    const auto value = [](const Text& text) { return text ? Value(*text) : Value(); };
    for (int number = 1; number <= 9; ++number) {
        Person person{u"e%1"_s.arg(number),
                      maybe({u""_s, u"0100"_s, u"0200"_s, u"0300"_s, u"a300"_s, u"課"_s}),
                      maybe({u""_s, u"0001"_s, u"0001"_s, u"0002"_s, u"0002"_s}),
                      maybe({u"D01"_s, u"n02"_s}),
                      {},
                      {},
                      {}};
        person.Birth = maybeDay().addMonths(below(3));
        person.ArriveDate = below(2) == 0 ? QDate(2000, 1, 1) : maybeDay();
        person.LeaveDate = below(3) == 0 ? day() : QDate();
        addEmployee(database, person.EmpNo,
                    {{u"UnitNo", value(person.UnitNo)},
                     {u"WorkNo", value(person.WorkNo)},
                     {u"ClsNo", value(person.ClsNo)},
                     {u"Birth", person.Birth},
                     {u"ArriveDate", person.ArriveDate},
                     {u"LeaveDate", person.LeaveDate}});
        people_.push_back(person);
    }
    for (int number = 0; number < 60; ++number) {
        // One of each employee and day, for keys, and some of an employee that nobody knows.
        Record record;
        record.id = QString::number(number);
        record.EmpNo = u"e%1"_s.arg(number % 10);
        record.day = QDate(2001, 3, 1 + number / 10 * 2);
        record.HoliNo = QStringList{u""_s, u"01"_s, u"02"_s, u"03"_s, u"04"_s}[below(5)];
        for (bool& mark : record.F)
            mark = below(4) == 0;
        record.Expt = below(2) == 0;
        record.DelayF = below(3);
        const Field EmpNo{u"EmpNo", record.EmpNo};
        insertRow(database, u"Rule03"_s, {EmpNo, {u"YMD", record.day}, {u"TimeNo", record.id}});
        insertRow(database, u"Rule04"_s, {EmpNo, {u"Ymd", record.day}});
        insertRow(database, u"Atte02"_s,
                  {EmpNo,
                   {u"UseDate", record.day},
                   {u"TimeNo", record.id},
                   {u"F1", record.F[0]},
                   {u"F2", record.F[1]},
                   {u"F3", record.F[2]},
                   {u"F4", record.F[3]},
                   {u"Expt", record.Expt},
                   {u"DelayF", record.DelayF}});
        insertRow(database, u"View02"_s, {EmpNo, {u"UseDate", record.day}});
        insertRow(database, u"Holi04"_s,
                  {EmpNo, {u"HoliDate", record.day}, {u"HoliNo", record.HoliNo}, {u"BusNo", record.id}});
        insertRow(database, u"Over01"_s, {EmpNo, {u"OverDate", record.day}, {u"Memo", record.id}});
        records_.push_back(record);
    }
}

ReportChoice CatalogueRowsTest::choice(const Report& report) {
    ReportChoice choice = defaultChoice(report.tab, report.option);
    const auto narrowed = [&](qsizetype low, const QStringList& texts) {
        for (const qsizetype index : {low, low + 1})
            if (index < choice.combos.size() && below(6) == 0)
                choice.combos[index] = texts[below(static_cast<int>(texts.size()))];
    };
    for (QDate& date : choice.dates)
        date = below(12) == 0 ? QDate() : day();
    if (below(3) > 0)
        choice.dates = {QDate(2001, 3, 1 + below(6)), QDate(2001, 3, 7 + below(6)), QDate(2001, 3, 1),
                        QDate(2001, 3, 9)};
    const QStringList codes{u""_s, u"0100"_s, u"A300"_s, u"0002"_s, u"0002-約聘"_s, u"D01"_s};
    const QStringList employees{u"e0"_s, u"E3"_s, u"e5"_s, u"e9"_s};
    const bool basic = report.tab == ReportTab::Basic;
    narrowed(0, basic ? codes : employees);
    narrowed(2, codes);
    narrowed(4, basic ? employees : codes);
    if (basic)
        choice.combos[6] = QString::number(1 + below(6));
    if (report.code == u"D06"_s)
        choice.combos[0] = employees[below(4)];
    choice.punchMark = below(5);
    for (const QString& code : {u"01"_s, u"02"_s, u"03"_s, u"04"_s})
        choice.list.push_back({code + u" 假別"_s, below(3) > 0});
    return choice;
}

void CatalogueRowsTest::selected_data() {
    QTest::addColumn<QString>("code");
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("id");
    for (const Report& report : reports()) {
        if (report.formula.value_or(QString()).isEmpty())
            continue;
        // The table that the formula names first.
        const QString table = report.formula->section(u'{', 1, 1).section(u'.', 0, 0);
        const QHash<QString, QString> ids{{u"Base06"_s, u"EmpNo"_s},
                                          {u"Rule03"_s, u"TimeNo"_s},
                                          {u"Atte02"_s, u"TimeNo"_s},
                                          {u"Holi04"_s, u"BusNo"_s},
                                          {u"Over01"_s, u"Memo"_s}};
        QTest::newRow(qPrintable(report.code)) << report.code << table << ids.value(table, u"EmpNo"_s);
    }
}

void CatalogueRowsTest::selected() {
    QFETCH(QString, code);
    QFETCH(QString, table);
    QFETCH(QString, id);
    const Report& report = *findReport(code);
    random_.seed(static_cast<unsigned>(report.tab) * 100 + static_cast<unsigned>(report.option));
    int some = 0;
    for (int round = 0; round < 3; ++round) {
        TestStore store;
        {
            Stage stage(store.database());
            makeStore(store.database());
            stage.finish();
        }
        for (int print = 0; print < 25; ++print) {
            const ReportChoice choice = this->choice(report);
            const QString formula = reportCall(choice).formula.value().text;
            const Reading reading(choice);
            QStringList expected;
            if (table == u"Base06"_s) {
                for (const Person& person : people_)
                    if (reading.person(code, person))
                        expected += person.EmpNo;
            } else {
                for (const Record& record : records_) {
                    const auto person = std::ranges::find(people_, record.EmpNo, &Person::EmpNo);
                    if (reading.record(code, record, person == people_.end() ? nullptr : &*person))
                        expected += id == u"EmpNo"_s ? record.EmpNo : record.id;
                }
            }
            if (selectedRows(store.path(), table, id, formula) != expected)
                QFAIL(qPrintable(formula + u"\nexpected: "_s + expected.join(u' ')));
            some += !expected.isEmpty();
        }
    }
    // Most prints find something.
    QVERIFY2(some > 8, qPrintable(QString::number(some)));
}

QTEST_GUILESS_MAIN(CatalogueRowsTest)
#include "CatalogueRowsTest.moc"
