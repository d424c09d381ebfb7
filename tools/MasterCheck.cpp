#include "MasterCheck.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QStringList>

#include <array>
#include <functional>

namespace pontrel::tools {

using namespace Qt::StringLiterals;

namespace {

constexpr int MostNamed = 5; ///< Codes and days that one finding names.
constexpr int Steps = 6;
const QString Sentinel = u"2038-01-01"_s;

QString textOf(const SQLite::Column& column) {
    return column.isNull() ? u"null"_s : QString::fromStdString(column.getString());
}

/// "10001, 10002 and 7 more".
QString named(const QStringList& all) {
    const QString first = all.mid(0, MostNamed).join(u", "_s);
    return all.size() <= MostNamed ? first : first + u" and %1 more"_s.arg(all.size() - MostNamed);
}

class MasterCheck {
  public:
    MasterCheck(const QString& store, QDate today)
        : engine_(store.toStdString(), SQLite::OPEN_READONLY), today_(today) {}

    QList<MasterFinding> run() {
        checkSettings();
        checkCodes();
        checkSlotNumbers();
        checkSlotTimes();
        checkClasses();
        checkEmployees();
        checkLeaveDays();
        checkRosterSlots();
        checkRosterGaps();
        return findings_;
    }

  private:
    using Row = std::function<void(SQLite::Statement&)>;

    void forEach(const QString& sql, const Row& row, const QStringList& values = {}) {
        SQLite::Statement statement(engine_, sql.toStdString());
        for (int place = 0; place < values.size(); ++place)
            statement.bind(place + 1, values.at(place).toStdString());
        while (statement.executeStep())
            row(statement);
    }
    [[nodiscard]] QStringList column(const QString& sql, const QStringList& values = {}) {
        QStringList all;
        forEach(
            sql, [&all](SQLite::Statement& row) { all += textOf(row.getColumn(0)); }, values);
        return all;
    }
    void find(const QString& table, const QString& code, const QString& what, const QString& remedy) {
        findings_ += {table, code, what, remedy};
    }
    /// One finding for all codes that the selection gives.
    void findAll(const QString& table, const QString& what, const QString& remedy, const QString& sql,
                 const QStringList& values = {}) {
        const QStringList codes = column(sql, values);
        if (!codes.isEmpty())
            find(table, named(codes), what, remedy);
    }

    /// A number that the reading of punch files takes from the row has to be there and within its range.
    void checkNumber(const QString& table, const QString& key, const QString& name, int most,
                     const QString& where) {
        const QString range =
            name == u"LenEmpNo" ? u"the length of a code, 12 at most,"_s : u"0 to %1"_s.arg(most);
        const QString remedy = u"Enter %1 in %2. Until then %3."_s.arg(
            range, where,
            table == u"Syst01" ? u"no punch file can be read"_s
                               : u"reading a punch file and the recalculation end without a word"_s);
        forEach(
            u"SELECT %1, \"%2\" FROM %3 WHERE \"%2\" IS NULL OR \"%2\" NOT BETWEEN 0 AND %4 ORDER BY 1"_s.arg(
                key, name, table, QString::number(most)),
            [&](SQLite::Statement& row) {
                find(table, textOf(row.getColumn(0)), name + u" is "_s + textOf(row.getColumn(1)), remedy);
            });
    }

    void checkSettings() {
        if (column(u"SELECT 1 FROM Syst01"_s).isEmpty())
            find(u"Syst01"_s, {}, u"the row of the settings is missing"_s,
                 u"Put the last copy back: no punch file can be read."_s);
        constexpr int MostOfInteger = 32767; // a length beyond a card's is taken for the whole card
        constexpr int MostSeconds = 255;
        checkNumber(u"Syst01"_s, u"''"_s, u"LenEmpNo"_s, MostOfInteger, u"the settings"_s);
        checkNumber(u"Syst01"_s, u"''"_s, u"IntervalSec"_s, MostSeconds, u"the settings"_s);
    }

    /// An apostrophe breaks the statements into which a code is joined.
    void checkCodes() {
        const std::array<std::array<QString, 3>, 3> keys{
            {{u"Base04"_s, u"TimeNo"_s, u"reading a punch file and the recalculation end without a word"_s},
             {u"Base05"_s, u"ClsNo"_s, u"making its roster ends the program"_s},
             {u"Base06"_s, u"EmpNo"_s,
              u"reading the punch file of a day on which the employee is rostered ends without a word"_s}}};
        for (const auto& [table, key, what] : keys)
            findAll(table, u"an apostrophe in the code"_s,
                    u"Delete it and enter it anew under another one. Until then %1."_s.arg(what),
                    u"SELECT %2 FROM %1 WHERE instr(%2, '''') > 0 ORDER BY 1"_s.arg(table, key));
    }

    void checkSlotNumbers() {
        constexpr int MostOfByte = 255;
        constexpr int MostMinutes = 59;
        const QString where = u"the time slot"_s;
        for (const QString& name : {u"CardType"_s, u"ElstType"_s})
            checkNumber(u"Base04"_s, u"TimeNo"_s, name, MostOfByte, where);
        for (const QString& name : {u"ElstMin"_s, u"Cushion"_s, u"Delay"_s, u"Earlier"_s, u"Cushion1"_s,
                                    u"Delay1"_s, u"Earlier1"_s})
            checkNumber(u"Base04"_s, u"TimeNo"_s, name, MostMinutes, where);
        findAll(u"Base04"_s, u"the elastic type does not go with the card type"_s,
                u"Choose another of the two in the time slot. Until then reading a punch file and the "
                "recalculation end without a word."_s,
                u"SELECT TimeNo FROM Base04 WHERE ElstType BETWEEN 5 AND 255 OR (ElstType IN (2, 4) AND "
                "CardType <> 4) OR (ElstType = 3 AND CardType NOT IN (3, 4)) ORDER BY 1"_s);
    }

    void checkSlotTimes() {
        for (const QString& name : {u"StrIn1"_s, u"StdT1"_s, u"StdT2"_s, u"EndOut2"_s, u"StrIn3"_s,
                                    u"StdT3"_s, u"StdT4"_s, u"EndOut4"_s})
            findAll(u"Base04"_s, name + u" is null"_s,
                    u"Enter the time in the time slot, 00:00 where it has none. Until then that of the slot "
                    "before it counts."_s,
                    u"SELECT TimeNo FROM Base04 WHERE %1 IS NULL ORDER BY 1"_s.arg(name));
    }

    void checkClasses() {
        forEach(u"SELECT * FROM Base05 ORDER BY ClsNo"_s, [this](SQLite::Statement& row) {
            const QString ClsNo = textOf(row.getColumn("ClsNo"));
            qint64 days = 0;
            for (int step = 1; step <= Steps; ++step)
                days += checkStep(row, ClsNo, QString::number(step));
            if (days == 0)
                find(u"Base05"_s, ClsNo, u"the rotation has no days"_s,
                     u"Enter days worked in one of its steps. Until then its roster runs for ever."_s);
        });
    }

    /// The days of a step of a class in use.
    qint64 checkStep(SQLite::Statement& row, const QString& ClsNo, const QString& step) {
        const auto cell = [&](const char* name) {
            return row.getColumn((name + step.toStdString()).c_str());
        };
        const SQLite::Column TimeNo = cell("TimeNo");
        if (TimeNo.isNull())
            return 0;
        if (column(u"SELECT 1 FROM Base04 WHERE TimeNo = ?"_s, {textOf(TimeNo)}).isEmpty())
            find(u"Base05"_s, ClsNo, u"TimeNo%1 is %2, an unknown time slot"_s.arg(step, quoted(TimeNo)),
                 u"Choose a time slot there is. Until then days of that step are not worked out."_s);
        qint64 days = 0;
        for (const char* name : {"TimeDay", "TimeRest"}) {
            if (cell(name).isNull())
                find(u"Base05"_s, ClsNo, QString::fromLatin1(name) + step + u" is null"_s,
                     u"Enter the days, 0 for none. Until then making the roster ends the program."_s);
            else
                days += std::max<qint64>(0, cell(name).getInt64());
        }
        return days;
    }

    static QString quoted(const SQLite::Column& text) { return u'"' + textOf(text) + u'"'; }

    void checkEmployees() {
        findAll(u"Base06"_s, u"the leaving date is "_s + Sentinel,
                u"An import has ended early, or goes on at this moment. The next punch file that is read to "
                "its end takes the date away; until then no roster is made for them."_s,
                u"SELECT EmpNo FROM Base06 WHERE LeaveDate = ? ORDER BY 1"_s, {Sentinel});
        const QString stillHere = u"(LeaveDate IS NULL OR LeaveDate >= ?) ORDER BY 1"_s;
        const QStringList today{today_.toString(Qt::ISODate)};
        findAll(u"Base06"_s, u"no shift class"_s, u"Enter one. Until then no roster is made for them."_s,
                u"SELECT EmpNo FROM Base06 WHERE (ClsNo IS NULL OR ClsNo = '') AND "_s + stillHere, today);
        findAll(u"Base06"_s, u"no date of arrival"_s,
                u"Enter it. Until then their days are not worked out."_s,
                u"SELECT EmpNo FROM Base06 WHERE ArriveDate IS NULL AND "_s + stillHere, today);
        // Rosters are made for the classes of those who have left as well.
        forEach(u"SELECT DISTINCT ClsNo FROM Base06 WHERE ClsNo <> '' AND ClsNo NOT IN (SELECT ClsNo FROM "
                u"Base05) "
                "ORDER BY 1"_s,
                [this](SQLite::Statement& row) {
                    const QString ClsNo = textOf(row.getColumn(0));
                    findAll(u"Base06"_s, u"the shift class \"%1\" is unknown"_s.arg(ClsNo),
                            u"Enter a class there is, also for those who have left. Until then a roster that "
                            "begins with it runs for ever."_s,
                            u"SELECT EmpNo FROM Base06 WHERE ClsNo = ? ORDER BY 1"_s, {ClsNo});
                });
    }

    void checkLeaveDays() {
        findAll(
            u"Holi04"_s, u"a day of a leave note without its type, times or hours"_s,
            u"Save the note anew. Until then reading that day's punch file ends without a word."_s,
            u"SELECT DISTINCT coalesce(BusNo, 'null') FROM Holi04 WHERE HoliNo IS NULL OR BegTime IS NULL OR "
            "EndTime IS NULL OR HoliHours IS NULL ORDER BY 1"_s);
    }

    void checkRosterSlots() {
        forEach(u"SELECT TimeNo, count(*), min(YMD) FROM Rule03 WHERE YMD >= ? AND (TimeNo IS NULL OR TimeNo "
                u"<> '' "
                "AND TimeNo NOT IN (SELECT TimeNo FROM Base04)) GROUP BY TimeNo ORDER BY TimeNo"_s,
                [this](SQLite::Statement& row) {
                    find(u"Rule03"_s, quoted(row.getColumn(0)),
                         u"an unknown time slot on %1 days of the roster from %2 on"_s.arg(
                             textOf(row.getColumn(1)), textOf(row.getColumn(2))),
                         u"Change those days to a time slot there is. Until then they are not worked out."_s);
                },
                {today_.toString(Qt::ISODate)});
    }

    void checkRosterGaps() {
        const QDate first = QDate(today_.year(), today_.month(), 1).addMonths(1);
        const QStringList month{first.toString(Qt::ISODate),
                                first.addMonths(1).addDays(-1).toString(Qt::ISODate)};
        const QString name = first.toString(u"yyyy-MM"_s);
        const QString remedy = u"Make the roster of the month. Days without one are not worked out."_s;
        if (column(u"SELECT 1 FROM Base06 LIMIT 1"_s).isEmpty())
            return;
        if (column(u"SELECT 1 FROM Rule03 WHERE YMD BETWEEN ? AND ? LIMIT 1"_s, month).isEmpty()) {
            find(u"Rule03"_s, name, u"nobody has a roster"_s, remedy);
            return;
        }
        // Each employee's days of the month on which he is here and no row stands.
        QString EmpNo;
        QStringList days;
        const auto tell = [&] {
            if (!days.isEmpty())
                find(u"Rule03"_s, EmpNo, u"no roster on "_s + named(days), remedy);
            days.clear();
        };
        forEach(
            u"WITH RECURSIVE Days(day) AS (SELECT ?1 UNION ALL SELECT date(day, '+1 day') FROM Days "
            "WHERE day < ?2) SELECT Base06.EmpNo, day FROM Base06, Days WHERE ArriveDate <= day AND "
            "(LeaveDate IS NULL OR LeaveDate >= day) AND NOT EXISTS (SELECT 1 FROM Rule03 WHERE YMD = day "
            "AND Rule03.EmpNo = Base06.EmpNo) ORDER BY 1, 2"_s,
            [&](SQLite::Statement& row) {
                const QString next = textOf(row.getColumn(0));
                if (next != EmpNo)
                    tell();
                EmpNo = next;
                days += textOf(row.getColumn(1));
            },
            month);
        tell();
    }

    SQLite::Database engine_;
    QDate today_;
    QList<MasterFinding> findings_;
};

} // namespace

QList<MasterFinding> checkMasterData(const QString& store, QDate today) {
    return MasterCheck(store, today).run();
}

} // namespace pontrel::tools
