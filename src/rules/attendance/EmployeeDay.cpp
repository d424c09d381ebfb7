#include "rules/attendance/EmployeeDay.h"

#include "rules/attendance/Minutes.h"
#include "store/RunTimeError.h"
#include "store/Schema.h"
#include "store/StatementForm.h"
#include "store/StatementText.h"

#include <algorithm>

namespace pontrel {

namespace {

enum class Kind { Time, Flag, Number };

struct DayColumn {
    QString name;
    Kind kind;
    std::size_t inTable = 0; ///< Its place among the columns of the staging table.
};

std::vector<DayColumn> dayColumns() {
    std::vector<DayColumn> columns;
    const auto addNumbered = [&columns](const char16_t* name, int count, Kind kind) {
        for (int number = 1; number <= count; ++number)
            columns.push_back({QString::fromUtf16(name) + QString::number(number), kind});
    };
    addNumbered(u"Time", 4, Kind::Time);
    addNumbered(u"FT", 4, Kind::Flag);
    addNumbered(u"FH", 4, Kind::Flag);
    addNumbered(u"FC", 4, Kind::Flag);
    addNumbered(u"T", 12, Kind::Time);
    addNumbered(u"F", 4, Kind::Flag);
    columns.push_back({QStringLiteral("Expt"), Kind::Flag});
    for (const char16_t* name :
         {u"DelayF", u"Cushion1", u"Cushion3", u"Delay1", u"Delay3", u"Earlier2", u"Earlier4"})
        columns.push_back({QString::fromUtf16(name), Kind::Number});
    const Table* table = findTable(u"AtteTemp1");
    for (DayColumn& column : columns)
        column.inTable = static_cast<std::size_t>(table->indexOf(column.name));
    return columns;
}

const DayColumn& columnAt(std::size_t place) {
    static const std::vector<DayColumn> columns = dayColumns();
    return columns.at(place);
}

std::int64_t cellOf(const Value& value, Kind kind) {
    switch (kind) {
    case Kind::Time:
        return value.isNull() ? DayRow::NoTime : secondOfDay(value.toTime());
    case Kind::Flag:
        return value.toBoolean() ? 1 : 0;
    default:
        return value.isNull() ? 0 : value.toInteger();
    }
}

Value valueOf(std::int64_t cell, Kind kind) {
    switch (kind) {
    case Kind::Time:
        return cell == DayRow::NoTime ? Value() : Value(QTime(0, 0).addSecs(static_cast<int>(cell)));
    case Kind::Flag:
        return cell != 0;
    default:
        return cell;
    }
}

/// Adds a row with all its columns: code, slot, day and the places in their order.
StatementForm insertForm() {
    QString columns = QStringLiteral("Insert Into AtteTemp1(EmpNo,TimeNo,UseDate");
    QString values = QStringLiteral(") Values('','',#2000/1/1#");
    for (std::size_t place = 0; place < DayRow::Places; ++place) {
        columns += u',' + columnAt(place).name;
        values += columnAt(place).kind == Kind::Time ? QStringLiteral(",#08:00:00#") : QStringLiteral(",0");
    }
    return StatementForm(columns + values + u')');
}

} // namespace

DayRow::DayRow() {
    for (std::size_t place = 0; place < Places; ++place)
        if (columnAt(place).kind == Kind::Time)
            cells_[place] = NoTime;
}

DayRow DayRow::of(const std::vector<Value>& values) {
    DayRow row;
    for (std::size_t place = 0; place < Places; ++place)
        row.cells_[place] = cellOf(values.at(columnAt(place).inTable), columnAt(place).kind);
    return row;
}

const QString& DayRow::columnName(std::size_t place) {
    return columnAt(place).name;
}

EmployeeDay::EmployeeDay(Database& database, QDate date, QString EmpNo, DayObserver* observer)
    : database_(database), EmpNo_(std::move(EmpNo)), date_(date), observer_(observer) {}

QString EmployeeDay::dayLiteral() const {
    return dateLiteral(date_);
}

bool EmployeeDay::hasException() const {
    return std::any_of(rows_.begin(), rows_.end(),
                       [](const DayRow& row) { return row.cells()[DayRow::ExptPlace] != 0; });
}

void EmployeeDay::load() {
    older_ =
        database_.openRecordset(QStringLiteral("Select * From AtteTemp1 Where EmpNo = %1     and UseDate =%2")
                                    .arg(textLiteral(EmpNo_), dayLiteral()));
    for (qint64 position = 0; position < older_.RecordCount(); ++position) {
        const DayRow row = DayRow::of(older_.rowAt(position));
        olderCells_.push_back(row.cells());
        rows_.push_back(row);
    }
}

void EmployeeDay::addRow(const QString& TimeNo) {
    newTimeNo_ = TimeNo;
    rows_.emplace_back();
}

void EmployeeDay::store() {
    if (stored_)
        return;
    stored_ = true;
    for (std::size_t row = 0; row < rows_.size(); ++row) {
        if (row >= olderCells_.size())
            insert(rows_[row]);
        else if (rows_[row].cells() != olderCells_[row])
            update(row);
    }
}

void EmployeeDay::storeQuietly() noexcept {
    try {
        store();
    } catch (const std::exception&) {
        // The error that brought us here says more.
    }
}

/// One statement for the row as all steps leave it.
void EmployeeDay::insert(const DayRow& row) {
    static const StatementForm form = insertForm();
    std::vector<Value> values{EmpNo_, newTimeNo_, date_};
    values.reserve(values.size() + DayRow::Places);
    for (std::size_t place = 0; place < DayRow::Places; ++place)
        values.push_back(valueOf(row.cells()[place], columnAt(place).kind));
    database_.execute(form, values);
}

void EmployeeDay::update(std::size_t row) {
    older_.moveTo(static_cast<qint64>(row));
    older_.Edit();
    for (std::size_t place = 0; place < DayRow::Places; ++place) {
        const std::int64_t cell = rows_[row].cells()[place];
        if (cell != olderCells_[row][place])
            older_.setField(columnAt(place).name, valueOf(cell, columnAt(place).kind));
    }
    older_.Update();
}

} // namespace pontrel
