#include "support/Builders.h"

#include "store/Recordset.h"
#include "store/RunTimeError.h"
#include "store/StatementText.h"

#include <algorithm>

namespace pontrel::test {

namespace {

Fields merged(Fields fields, const Fields& more) {
    for (const Field& field : more)
        fields = with(std::move(fields), field);
    return fields;
}

QString literal(const Value& value) {
    switch (value.type()) {
    case ColumnType::Text:
        return textLiteral(value.joined());
    case ColumnType::Date:
    case ColumnType::Time:
    case ColumnType::DateTime:
        return dateLiteral(value.joined());
    default:
        return value.joined();
    }
}

bool canBeJoined(const Field& field) {
    return field.value.type() != ColumnType::Text || !breaksLiteral(field.value.toText());
}

Value textOrNull(const QString& text) {
    return text.isNull() ? Value() : Value(text);
}

} // namespace

Fields with(Fields fields, const Field& field) {
    const auto same = std::find_if(fields.begin(), fields.end(),
                                   [&field](const Field& other) { return other.column == field.column; });
    if (same == fields.end())
        fields.append(field);
    else
        *same = field;
    return fields;
}

void insertRow(Database& database, const QString& table, const Fields& fields) {
    if (!std::all_of(fields.begin(), fields.end(), canBeJoined)) {
        Recordset rows = database.openRecordset(table);
        rows.AddNew();
        for (const Field& field : fields)
            if (!field.value.isNull())
                rows.setField(field.column, field.value);
        rows.Update();
        return;
    }
    QStringList columns;
    QStringList values;
    for (const Field& field : fields) {
        if (field.value.isNull())
            continue;
        columns += field.column;
        values += literal(field.value);
    }
    const QString statement =
        QStringLiteral("Insert Into %1(%2) Values(%3)").arg(table, columns.join(u','), values.join(u','));
    if (database.execute(statement) != 1)
        throw runTimeError(error::DuplicateKey, {}, statement);
}

void addEmployee(Database& database, const QString& EmpNo, const Fields& more) {
    insertRow(database, QStringLiteral("Base06"),
              merged({{u"EmpNo", EmpNo},
                      {u"EmpName", QStringLiteral("員工") + EmpNo},
                      {u"ArriveDate", QDate(2000, 1, 1)}},
                     more));
}

void addSlot(Database& database, const QString& TimeNo, const Fields& more) {
    insertRow(database, QStringLiteral("Base04"),
              merged({{u"TimeNo", TimeNo},
                      {u"TimeName", QStringLiteral("時段") + TimeNo},
                      {u"CardType", 4},
                      {u"StdC1", true},
                      {u"StdC2", true},
                      {u"StdC3", true},
                      {u"StdC4", true},
                      {u"StrIn1", QTime(7, 0)},
                      {u"StdT1", QTime(8, 0)},
                      {u"StdT2", QTime(12, 0)},
                      {u"EndOut2", QTime(12, 30)},
                      {u"StrIn3", QTime(12, 31)},
                      {u"StdT3", QTime(13, 0)},
                      {u"StdT4", QTime(17, 0)},
                      {u"EndOut4", QTime(23, 0)},
                      {u"ElstType", 0},
                      {u"ElstMin", 0},
                      {u"Cushion", 5},
                      {u"Delay", 25},
                      {u"Earlier", 10},
                      {u"Cushion1", 5},
                      {u"Delay1", 25},
                      {u"Earlier1", 10}},
                     more));
}

void addRoster(Database& database, const QString& EmpNo, QDate day, const QString& TimeNo) {
    insertRow(database, QStringLiteral("Rule03"), {{u"EmpNo", EmpNo}, {u"YMD", day}, {u"TimeNo", TimeNo}});
}

void addLeaveDay(Database& database, const QString& EmpNo, QDate day, const QString& HoliNo, QTime BegTime,
                 QTime EndTime, const Fields& more) {
    insertRow(database, QStringLiteral("Holi04"),
              merged({{u"BusNo", u"90030001"},
                      {u"EmpNo", EmpNo},
                      {u"HoliNo", HoliNo},
                      {u"HoliDate", day},
                      {u"BegTime", BegTime},
                      {u"EndTime", EndTime},
                      {u"HoliHours", 4},
                      {u"TimeNo", u"A"}},
                     more));
}

void addWriteOff(Database& database, const QString& EmpNo, QDate day, const QString& CnlNo1,
                 const QString& CnlNo2, const QString& CnlNo3, const QString& CnlNo4) {
    insertRow(database, QStringLiteral("Canc02"),
              {{u"EmpNo", EmpNo},
               {u"CnlDate", day},
               {u"CnlNo1", textOrNull(CnlNo1)},
               {u"CnlNo2", textOrNull(CnlNo2)},
               {u"CnlNo3", textOrNull(CnlNo3)},
               {u"CnlNo4", textOrNull(CnlNo4)},
               {u"Account", u"tester"}});
}

namespace {

Fields punchFields(const QString& EmpNo, QDate day, QTime time, const QString& classCode,
                   const QString& reader) {
    return {{u"EmpNo", EmpNo},
            {u"UseDate", day},
            {u"UseTime", time.isValid() ? Value(time) : Value()},
            {u"class", classCode},
            {u"ReaderID", reader}};
}

} // namespace

void addPunch(Database& database, const QString& EmpNo, QDate day, QTime time, const QString& classCode,
              const QString& reader) {
    insertRow(database, QStringLiteral("AtteTemp"), punchFields(EmpNo, day, time, classCode, reader));
}

void addReadPunch(Database& database, const QString& EmpNo, QDate day, QTime time) {
    insertRow(database, QStringLiteral("Atte01"),
              punchFields(EmpNo, day, time, QStringLiteral("255"), QStringLiteral("001")));
}

QByteArray punchLine(const QByteArray& card, QDate day, QTime time, const QByteArray& classCode,
                     const QByteArray& lineCode, const QByteArray& reader) {
    return card.rightJustified(12, '0') + day.toString(u"yyyyMMdd").toLatin1() +
           time.toString(u"HHmmss").toLatin1() + classCode + lineCode + reader + '\n';
}

} // namespace pontrel::test
