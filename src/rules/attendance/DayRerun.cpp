#include "rules/attendance/DayRerun.h"

#include "rules/attendance/DailyCalculation.h"
#include "store/StatementText.h"
#include "store/StoreText.h"

namespace pontrel {

namespace {

/// A window without a screen.
class SilentHost final : public QuietHost<AttendanceHost> {
  public:
    [[nodiscard]] std::optional<QString> choosePunchFile(const QString& /*folder*/) override { return {}; }
    void showPunches(const QString& /*statement*/) override {}
    void refreshExceptions() override {}
    void showExceptions(const QString& /*statement*/) override {}
};

/// A calculation that keeps what it tells.
class ToldRun final : public DayObserver {
  public:
    ToldRun(DayRerun& rerun, Database& copy, QDate date)
        : rerun_(rerun), calculation_(copy, host_, this), date_(date) {}

    void dayBegins(const QString& /*EmpNo*/, const SlotTimes& slot) override { run_.slot = slot; }
    void told(const DayStep& step) override { run_.steps.push_back(step); }

    /// Whether the day of an employee has begun.
    bool calculateRostered() {
        calculate();
        return run_.slot.has_value();
    }
    void calculate() {
        try {
            calculation_.CalcSlotLoop(date_, false);
        } catch (const RunTimeError& error) {
            run_.failure = error.text();
        }
    }
    void recalculate() {
        calculation_.Recalculate(date_);
        if (calculation_.lastError())
            run_.failure = calculation_.lastError()->text();
    }

    [[nodiscard]] DayRun result(const QString& TimeNo) {
        std::optional<StoredRow> row = rerun_.result(QStringLiteral("Atte02"), TimeNo);
        // A calculation that ends in an error leaves the row in the staging table, whence a later one takes
        // it.
        if (!row)
            row = rerun_.result(QStringLiteral("AtteTemp1"), TimeNo);
        if (row)
            run_.row = DayRow::of(row->values);
        run_.isException = rerun_.result(QStringLiteral("Atte03"), TimeNo).has_value();
        return std::move(run_);
    }

  private:
    DayRerun& rerun_;
    SilentHost host_;
    DailyCalculation calculation_;
    QDate date_;
    DayRun run_;
};

using Part = std::pair<std::size_t, std::size_t>; ///< Places of columns: the first, and how many.

bool sameAt(const DayRow& a, const DayRow& b, std::initializer_list<Part> parts) {
    for (const auto& [first, count] : parts)
        for (std::size_t place = first; place < first + count; ++place)
            if (a.cells().at(place) != b.cells().at(place))
                return false;
    return true;
}

} // namespace

bool sameAssignment(const DayRow& a, const DayRow& b) {
    return sameAt(a, b, {{DayRow::TimePlace, 4}, {DayRow::FTPlace, 4}, {DayRow::TPlace, 12}});
}

bool sameCover(const DayRow& a, const DayRow& b) {
    return sameAt(a, b, {{DayRow::FHPlace, 4}, {DayRow::FCPlace, 4}});
}

Value StoredRow::at(const QString& column) const {
    const auto place = columns.indexOf(column);
    return place < 0 ? Value() : values.at(static_cast<std::size_t>(place));
}

void StoredRow::set(const QString& column, const Value& value) {
    values.at(static_cast<std::size_t>(columns.indexOf(column))) = value;
}

std::vector<StoredRow> DayRerun::rowsOfDay(const QString& table, const QString& dayColumn) {
    const Recordset set = copy_.openRecordset(
        QStringLiteral("Select * from %1 Where %2 = %3").arg(table, dayColumn, dateLiteral(date_)));
    std::vector<StoredRow> rows;
    for (qint64 place = 0; place < set.RecordCount(); ++place)
        rows.push_back({set.columns(), set.rowAt(place)});
    return rows;
}

std::optional<StoredRow> DayRerun::result(const QString& table, const QString& TimeNo) {
    for (const StoredRow& row : rowsOfDay(table))
        if (TimeNo.isEmpty() || foldedCode(row.at(QStringLiteral("TimeNo")).joined()) == foldedCode(TimeNo))
            return row;
    return {};
}

DayRun DayRerun::recalculate(const QString& TimeNo) {
    ToldRun run(*this, copy_, date_);
    run.recalculate();
    return run.result(TimeNo);
}

void DayRerun::fillLeavingDate() {
    SilentHost host;
    DailyCalculation(copy_, host).fillSentinel();
}

bool DayRerun::isCalculated() {
    empty({u"Atte02", u"Atte03", u"AtteTemp1", u"View02"});
    return ToldRun(*this, copy_, date_).calculateRostered();
}

DayRun DayRerun::calculate(const QString& EmpNo, const QString& TimeNo) {
    empty({u"Atte02", u"Atte03", u"AtteTemp1", u"View02", u"Rule03", u"Base06"});
    insert(QStringLiteral("Base06"),
           {QStringLiteral("EmpNo"), QStringLiteral("ArriveDate"), QStringLiteral("LeaveDate")},
           {EmpNo, date_, date_});
    insert(QStringLiteral("Rule03"),
           {QStringLiteral("EmpNo"), QStringLiteral("YMD"), QStringLiteral("TimeNo")},
           {EmpNo, date_, TimeNo});
    ToldRun run(*this, copy_, date_);
    run.calculate();
    return run.result(TimeNo);
}

DayRun DayRerun::judge(const StoredRow& row) {
    empty({u"Atte02", u"Atte03", u"AtteTemp1", u"Holi04", u"Canc02"});
    for (const QString& table : {QStringLiteral("Atte02"), QStringLiteral("Atte03")})
        insert(table, row.columns, row.values);
    ToldRun run(*this, copy_, date_);
    run.recalculate();
    return run.result(row.at(QStringLiteral("TimeNo")).joined());
}

void DayRerun::replacePunches(const QString& EmpNo, const std::vector<QTime>& times) {
    empty({u"AtteTemp"});
    for (const QTime time : times)
        insert(QStringLiteral("AtteTemp"),
               {QStringLiteral("EmpNo"), QStringLiteral("UseDate"), QStringLiteral("UseTime"),
                QStringLiteral("class")},
               {EmpNo, date_, time, QStringLiteral("255")});
}

void DayRerun::replacePunches(const std::vector<StoredRow>& punches) {
    empty({u"AtteTemp"});
    for (const StoredRow& punch : punches)
        insert(QStringLiteral("AtteTemp"), punch.columns, punch.values);
}

void DayRerun::insert(const QString& table, const QStringList& columns, const std::vector<Value>& values) {
    Recordset set = copy_.openRecordset(table);
    set.AddNew();
    for (qsizetype column = 0; column < columns.size(); ++column)
        set.setField(columns.at(column), values.at(static_cast<std::size_t>(column)));
    set.Update();
}

void DayRerun::empty(std::initializer_list<const char16_t*> tables) {
    for (const char16_t* table : tables)
        copy_.execute(QStringLiteral("Delete * from ") + QString::fromUtf16(table));
}

} // namespace pontrel
