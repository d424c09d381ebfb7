#pragma once

#include "store/Database.h"

#include <QByteArray>
#include <QDateTime>
#include <QList>
#include <QString>

namespace pontrel::test {

/// A column and what a row holds in it; null leaves the column as a row without it starts.
struct Field {
    QString column;
    Value value;
    Field(const char16_t* name, Value content)
        : column(QString::fromUtf16(name)), value(std::move(content)) {}
    Field(QString name, Value content) : column(std::move(name)), value(std::move(content)) {}
};
using Fields = QList<Field>;

/// The fields with that one in place of its column's.
[[nodiscard]] Fields with(Fields fields, const Field& field);

/// A row of any table. Any value may be given, apostrophes included. Throws where the store refuses the row.
void insertRow(Database& database, const QString& table, const Fields& fields);

// Rows with believable values throughout; more names the columns that are to differ.

/// An employee who arrived on 2000-01-01 and is still there.
void addEmployee(Database& database, const QString& EmpNo, const Fields& more = {});

/// A day from 08:00 to 12:00 and 13:00 to 17:00 with four required punches; mornings from 07:00 to 12:30,
/// afternoons from 12:31 to 23:00; 5 minutes of cushion, 25 of delay, 10 of early leave in both halves; no
/// elasticity.
void addSlot(Database& database, const QString& TimeNo, const Fields& more = {});

void addRoster(Database& database, const QString& EmpNo, QDate day, const QString& TimeNo);

/// A row of the day's leave, of a note that need not exist.
void addLeaveDay(Database& database, const QString& EmpNo, QDate day, const QString& HoliNo, QTime BegTime,
                 QTime EndTime, const Fields& more = {});

/// A write-off entry; an empty text stands for a position without one, a null text for a null.
void addWriteOff(Database& database, const QString& EmpNo, QDate day, const QString& CnlNo1,
                 const QString& CnlNo2, const QString& CnlNo3, const QString& CnlNo4);

/// A punch in the staging table of an import.
void addPunch(Database& database, const QString& EmpNo, QDate day, QTime time,
              const QString& classCode = QStringLiteral("255"),
              const QString& reader = QStringLiteral("001"));

/// An ordinary punch of reader 001 that an import has brought in.
void addReadPunch(Database& database, const QString& EmpNo, QDate day, QTime time);

/// A line of a punch file, 34 characters and a line feed, the card padded on the left with zeros to 12.
[[nodiscard]] QByteArray punchLine(const QByteArray& card, QDate day, QTime time,
                                   const QByteArray& classCode = "255", const QByteArray& lineCode = "07",
                                   const QByteArray& reader = "001");

} // namespace pontrel::test
