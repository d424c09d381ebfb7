#include "ReferenceCalculation.h"

#include "rules/attendance/DailyCalculation.h"
#include "store/Format.h"
#include "store/NewStore.h"
#include "store/Schema.h"
#include "store/StatementText.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/FakeHost.h"
#include "support/SavedFiles.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <random>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

const QDate FirstDay(2001, 3, 5);
constexpr int Days = 6;

/// One of two program folders that are to hold the same rows at every moment.
class Site {
  public:
    Site() {
        createStore(path(), {folder_.path(), u"tester"_s, u"secret"_s});
        open();
    }

    [[nodiscard]] QString path() const { return folder_.filePath(u"DB/Pontrel.mdb"_s); }
    [[nodiscard]] Database& database() { return *database_; }

    void open() { database_ = std::make_unique<Database>(path()); }
    void close() { database_.reset(); }

    QString write(QDate day, const QByteArray& lines) const {
        const QString name = folder_.filePath(day.toString(u"yyyyMMdd"_s) + u".txt"_s);
        writeContent(name, lines);
        return name;
    }

    /// Statements of another program, each a transaction of its own.
    void byAnotherProgram(const std::vector<std::string>& statements) const {
        SQLite::Database other(path().toStdString(), SQLite::OPEN_READWRITE, 5000);
        for (const std::string& statement : statements)
            other.exec(statement);
    }

    /// Writes the store down into another file, as a dump that is read back in does: every row gets a new
    /// rowid. The new file takes the old one's place, and its change counter is brought to where the old
    /// marks' numbers stand.
    void restoreFromDump() const {
        const QString fresh = folder_.filePath(u"fresh.mdb"_s);
        {
            SQLite::Database restored(fresh.toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
            restored.exec("ATTACH '" + path().toStdString() + "' AS old");
            readBack(restored);
            restored.exec("DETACH old");
            restored.exec("PRAGMA application_id = " + std::to_string(ApplicationId));
            restored.exec("PRAGMA user_version = " + std::to_string(StoreVersion));
        }
        const int counter = counterOf(fresh);
        SQLite::Database restored(fresh.toStdString(), SQLite::OPEN_READWRITE);
        const int marked = restored.execAndGet("SELECT coalesce(max(Counter), 0) FROM CopyMark").getInt();
        for (int raised = counter; raised < marked; ++raised)
            restored.exec("UPDATE Syst01 SET HoliMin = HoliMin + 1");
        if (!QFile::remove(path()) || !QFile::rename(fresh, path()))
            throw std::runtime_error("cannot put the restored store in place");
    }

  private:
    static void readBack(SQLite::Database& restored) {
        const auto texts = [&](const std::string& selection) {
            std::vector<std::string> found;
            SQLite::Statement all(restored, selection);
            while (all.executeStep())
                found.push_back(all.getColumn(0).getString());
            return found;
        };
        SQLite::Transaction transaction(restored);
        for (const std::string& sql :
             texts("SELECT sql FROM old.sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite%'"))
            restored.exec(sql);
        for (const std::string& name :
             texts("SELECT name FROM old.sqlite_schema WHERE type = 'table' AND name NOT LIKE 'sqlite%'"))
            restored.exec("INSERT INTO main.\"" + name + "\" SELECT * FROM old.\"" + name +
                          "\" ORDER BY rowid");
        for (const std::string& sql :
             texts("SELECT sql FROM old.sqlite_schema WHERE type <> 'table' AND sql IS NOT NULL"))
            restored.exec(sql);
        transaction.commit();
    }

    static int counterOf(const QString& path) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly) || !file.seek(24))
            throw std::runtime_error("cannot read the restored store");
        int counter = 0;
        for (const char byte : file.read(4))
            counter = counter * 256 + static_cast<unsigned char>(byte);
        return counter;
    }

    QTemporaryDir folder_;
    std::unique_ptr<Database> database_;
};

/// The program's own import and recalculation.
class Real {
  public:
    Site site;

    Real() { open(); }
    void open() {
        site.open();
        host_ = std::make_unique<FakeHost>(&site.database());
        calculation_ = std::make_unique<DailyCalculation>(site.database(), *host_);
    }
    void close() {
        calculation_.reset();
        site.close();
    }
    void import(QDate day, const QByteArray& lines, bool replace) {
        host_->punchFile = site.write(day, lines);
        host_->answer = replace;
        calculation_->ReadPunchFile();
        QVERIFY2(calculation_->finished(),
                 calculation_->lastError() ? calculation_->lastError()->what() : "");
    }
    void recalculate(QDate day) {
        calculation_->Recalculate(day);
        QVERIFY2(calculation_->finished(),
                 calculation_->lastError() ? calculation_->lastError()->what() : "");
    }

  private:
    std::unique_ptr<FakeHost> host_;
    std::unique_ptr<DailyCalculation> calculation_;
};

/// The same by their statements, one by one.
class Plain {
  public:
    Site site;

    Plain() { open(); }
    void open() {
        site.open();
        reference_ = std::make_unique<ReferenceCalculation>(site.database());
    }
    void close() {
        reference_.reset();
        site.close();
    }
    void import(QDate day, const QList<Fields>& punches, bool replace) {
        const QString date = dateLiteral(day);
        Stage quick(site.database());
        run(u"Update Base06 Set LeaveDate= #2038/01/01# Where IsNull(LeaveDate) = true "_s);
        const Rows count =
            site.database().select(u"Select count(*) as cnt From Atte01 Where UseDate ="_s + date);
        const bool known = count.at(0, u"cnt").toInteger() > 0;
        if (known && replace) {
            run(u"delete * from AtteTemp "_s);
            run(u"delete * from AtteTemp1 "_s);
            for (const char16_t* table : {u"Atte01", u"Atte02", u"Atte03", u"View02"})
                run(u"delete * from "_s + QString::fromUtf16(table) + u" where UseDate ="_s + date);
            run(u"delete * from Over01 where OverDate ="_s + date);
        }
        if (!known || replace) {
            for (const Fields& punch : punches)
                insertRow(site.database(), u"AtteTemp"_s, punch);
            run(u" Insert into Atte01 Select * from AtteTemp"_s);
        }
        reference_->CalcSlotLoop(day, false);
        run(u"Update Base06 Set LeaveDate= null Where LeaveDate =#2038-01-01#"_s);
    }
    void recalculate(QDate day) {
        Stage quick(site.database());
        reference_->Recalculate(day);
    }

  private:
    void run(const QString& statement) { site.database().execute(statement); }

    std::unique_ptr<ReferenceCalculation> reference_;
};

} // namespace

/// Imports and recalculations beside their statements run one by one, while another program deletes, changes,
/// adds and renumbers the rows of the tables between them, or the store is restored from a dump.
class StagedRowsTest : public QObject {
    Q_OBJECT

  private:
    std::mt19937 random_;
    int number(int most) { return static_cast<int>(random_() % static_cast<unsigned>(most)); }
    QDate anyDay() { return FirstDay.addDays(number(Days)); }
    static QString employee(int index) { return u"0000%1"_s.arg(index + 1); }

    static void fill(Database& database) {
        addSlot(database, u"A"_s);
        addSlot(database, u"B"_s, {{u"CardType", 2}});
        for (int index = 0; index < 4; ++index) {
            addEmployee(database, employee(index));
            for (int day = 0; day < Days; ++day)
                addRoster(database, employee(index), FirstDay.addDays(day),
                          (index + day) % 3 == 0 ? u"B"_s : u"A"_s);
        }
    }

    /// Punches of a day as lines of a file and as rows.
    std::pair<QByteArray, QList<Fields>> punches(QDate day) {
        std::pair<QByteArray, QList<Fields>> result;
        for (int count = number(8); count > 0; --count) {
            const QString EmpNo = employee(number(4));
            const QTime time(7 + number(12), number(60));
            result.first += punchLine(EmpNo.toLatin1(), day, time);
            result.second.append({{u"EmpNo", EmpNo},
                                  {u"UseDate", day},
                                  {u"UseTime", time},
                                  {u"class", u"255"},
                                  {u"ReaderID", u"001"}});
        }
        return result;
    }

    /// What another program does to the tables.
    std::vector<std::string> foreignStatements() {
        const std::string day = '\'' + anyDay().toString(Qt::ISODate).toStdString() + '\'';
        const std::string who = '\'' + employee(number(4)).toStdString() + '\'';
        const std::string staging = number(2) == 0 ? "AtteTemp" : "AtteTemp1";
        const std::string target = number(2) == 0 ? "Atte01" : "Atte02";
        switch (number(15)) {
        case 0: // the oldest
            return {"DELETE FROM " + staging + " WHERE UseDate = (SELECT min(UseDate) FROM " + staging + ")"};
        case 1:
            return {"DELETE FROM AtteTemp1 WHERE UseDate = " + day,
                    "DELETE FROM AtteTemp WHERE UseDate = " + day};
        case 2:
            return {"DELETE FROM " + staging};
        case 3:
            return {"DELETE FROM " + target + " WHERE UseDate <= " + day};
        case 4:
            return {"DELETE FROM " + target + " WHERE EmpNo = " + who};
        case 5:
            return {"UPDATE AtteTemp SET ReaderID = '00" + std::to_string(number(9)) +
                    "' WHERE EmpNo = " + who};
        case 6:
            return {
                "UPDATE AtteTemp1 SET TimeNo = CASE TimeNo WHEN 'A' THEN 'B' ELSE 'A' END WHERE UseDate = " +
                day};
        case 7:
            return {"UPDATE OR IGNORE Atte01 SET class = '000' WHERE UseDate = " + day};
        case 8:
            return {"UPDATE OR IGNORE Atte02 SET EmpNo = " + who + " WHERE UseDate = " + day};
        case 9: // before all others, also where no rowid of the program's has ever been
            return {"INSERT INTO AtteTemp (rowid, EmpNo, UseDate, UseTime, class, ReaderID) SELECT "
                    "coalesce(min(rowid), "
                    "1) - 1, " +
                    who + ", " + day + ", '09:1" + std::to_string(number(9)) +
                    ":00', '255', '007' FROM AtteTemp"};
        case 10:
            return {
                "INSERT INTO AtteTemp1 (rowid, EmpNo, UseDate, TimeNo) SELECT coalesce(min(rowid), 1) - 1, " +
                who + ", " + day + ", 'Z' FROM AtteTemp1"};
        case 11: // at the end of all rowids, after which new rows get any
            return {
                "INSERT OR REPLACE INTO AtteTemp (rowid, EmpNo, UseDate, UseTime, class, ReaderID) VALUES "
                "(9223372036854775807, " +
                    who + ", " + day + ", '10:00:00', '255', '008')",
                "DELETE FROM AtteTemp WHERE rowid = 9223372036854775807"};
        case 12: // renumbered from 1 on
            return {"CREATE TEMP TABLE kept AS SELECT * FROM " + staging + " ORDER BY rowid",
                    "DELETE FROM " + staging,
                    "INSERT INTO " + staging + " SELECT * FROM kept ORDER BY rowid"};
        case 13:
            return {"VACUUM"};
        default:
            return {"UPDATE Base01 SET Title = Title"};
        }
    }

    void compare(Real& real, Plain& plain, int seed, int step) {
        const QStringList found = dumpDailyTables(real.site.database());
        const QStringList expected = dumpDailyTables(plain.site.database());
        for (qsizetype line = 0; line < qMax(found.size(), expected.size()); ++line)
            QVERIFY2(found.value(line) == expected.value(line),
                     qPrintable(u"seed %1, step %2\n  real:  %3\n  plain: %4"_s.arg(seed).arg(step).arg(
                         found.value(line), expected.value(line))));
    }

    void runOrganisation(int seed) {
        random_.seed(static_cast<unsigned>(seed));
        Real real;
        Plain plain;
        fill(real.site.database());
        fill(plain.site.database());
        for (int step = 0; step < 25; ++step) {
            const QDate day = anyDay();
            switch (number(8)) {
            case 0:
                real.recalculate(day);
                plain.recalculate(day);
                break;
            case 1:
            case 2:
            case 3: {
                const std::vector<std::string> statements = foreignStatements();
                real.site.byAnotherProgram(statements);
                plain.site.byAnotherProgram(statements);
                continue;
            }
            case 4:
                real.close();
                plain.close();
                if (number(2) == 0) {
                    real.site.restoreFromDump();
                    plain.site.restoreFromDump();
                }
                real.open();
                plain.open();
                break;
            default: {
                const auto [lines, rows] = punches(day);
                const bool replace = number(3) != 0;
                real.import(day, lines, replace);
                plain.import(day, rows, replace);
                break;
            }
            }
            if (QTest::currentTestFailed())
                return;
            compare(real, plain, seed, step);
            if (QTest::currentTestFailed())
                return;
        }
    }

  private Q_SLOTS:
    void everyTableEndsUpAsByTheStatementsOneByOne() {
        // More by hand: PONTREL_ORGANISATIONS=300
        const int organisations = qEnvironmentVariableIntValue("PONTREL_ORGANISATIONS");
        for (int seed = 1; seed <= qMax(30, organisations); ++seed) {
            runOrganisation(seed);
            if (QTest::currentTestFailed())
                return;
        }
    }

    /// The days of the staging table that another program has deleted are the oldest.
    void aDayReadAgainArrivesAfterTheOldestRowsWereDeletedElsewhere() {
        Real real;
        fill(real.site.database());
        const auto lines = [](int day) { return punchLine("00001", FirstDay.addDays(day), QTime(8, 0)); };
        real.import(FirstDay, lines(0), true);
        real.import(FirstDay.addDays(1), lines(1), true);
        real.site.byAnotherProgram({"DELETE FROM AtteTemp1 WHERE UseDate = '2001-03-05'",
                                    "DELETE FROM AtteTemp WHERE UseDate = '2001-03-05'"});
        real.import(FirstDay.addDays(2), lines(2), true);
        real.import(FirstDay.addDays(2), lines(2), true);
        const QString day = u" where UseDate = #2001/3/7#"_s;
        QCOMPARE(rowsOfSelection(real.site.database(), u"select EmpNo,UseTime from Atte01"_s + day),
                 QStringList({u"00001|08:00:00"_s}));
        QCOMPARE(rowsOfSelection(real.site.database(), u"select EmpNo,TimeNo from Atte02"_s + day),
                 QStringList({u"00001|A"_s, u"00002|B"_s, u"00003|A"_s, u"00004|A"_s}));
    }
};

QTEST_GUILESS_MAIN(StagedRowsTest)
#include "StagedRowsTest.moc"
