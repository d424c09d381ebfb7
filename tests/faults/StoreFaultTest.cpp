#include "bench/DayCloseProcess.h"
#include "faults/Workload.h"
#include "store/RunTimeError.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

#include <memory>
#include <optional>

using namespace pontrel;
using namespace pontrel::test;
using namespace Qt::StringLiterals;

namespace {

constexpr int Employees = 100;

const QString Locked = u"3260: 資料庫被其他程式鎖定"_s;
const QString Foreign = u"3343: 這個檔案不是本系統的資料庫"_s;
const QString Damaged = u"3049: 資料庫檔案損壞"_s;

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(unreadable)");
}

void writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    QCOMPARE(file.write(content), content.size());
}

} // namespace

/// A store that another program holds, that has been damaged, or no store at all.
class StoreFaultTest : public QObject {
    Q_OBJECT

    std::unique_ptr<Workload> workload_;
    std::unique_ptr<QTemporaryDir> folder_;

    [[nodiscard]] QString folder() const { return folder_->path(); }
    [[nodiscard]] QString store() const { return storePath(folder()); }

    [[nodiscard]] SQLite::Database otherProgram() const {
        return SQLite::Database(store().toStdString(), SQLite::OPEN_READWRITE);
    }

    /// One action, ended early by the error, in a run without fault.
    void verifyTold(const DayCloseEnd& end, const QString& sentence) {
        QCOMPARE(end.errors, QString());
        QVERIFY(!end.crashed);
        QCOMPARE(end.status, 0);
        QCOMPARE(end.answers.size(), 1);
        QCOMPARE(end.answers[0][u"finished"_s], QJsonValue(false));
        QCOMPARE(end.answers[0][u"error"_s].toInt(), sentence.section(u':', 0, 0).toInt());
        QVERIFY2(end.answers[0][u"why"_s].toString().startsWith(sentence), qPrintable(shown(end.answers[0])));
    }

    /// A run that cannot begin or go on: status 2 and the error's sentence.
    void verifyRefused(const DayCloseEnd& end, const QString& sentence) {
        QVERIFY(!end.crashed);
        QCOMPARE(end.answers, QList<QJsonObject>());
        QVERIFY2(end.errors.startsWith(u"day_close: "_s + sentence), qPrintable(end.errors));
        QCOMPARE(end.status, 2);
    }

    /// Reads the file, the store now being free and whole.
    void verifyImported() {
        const DayCloseEnd end = runDayClose(folder(), {workload_->action()});
        QCOMPARE(end.status, 0);
        QVERIFY(end.answers[0][u"finished"_s].toBool());
        QCOMPARE(storeRows(folder()), workload_->importedRows());
    }

    /// The page on which a table or an index begins, counted from 0, and the size of pages.
    [[nodiscard]] std::pair<qsizetype, qsizetype> pageOf(const QString& name) const {
        SQLite::Database engine = otherProgram();
        SQLite::Statement root(engine, "SELECT rootpage FROM sqlite_schema WHERE name = ?");
        root.bind(1, name.toStdString());
        if (!root.executeStep())
            return {-1, 0};
        return {root.getColumn(0).getInt() - 1, engine.execAndGet("PRAGMA page_size").getInt()};
    }

  private Q_SLOTS:
    void initTestCase() { workload_ = std::make_unique<Workload>(Employees); }

    void init() {
        folder_ = std::make_unique<QTemporaryDir>();
        QVERIFY(folder_->isValid());
    }

    void aStoreHeldByAnotherProgramIsTold_data() {
        QTest::addColumn<QString>("hold");
        QTest::addColumn<QString>("action");
        const QString recalculation = u"recalc=2010/3/1"_s;
        QTest::newRow("a write has begun, an import comes") << u"BEGIN IMMEDIATE"_s << workload_->action();
        QTest::newRow("a write has begun, a recalculation comes") << u"BEGIN IMMEDIATE"_s << recalculation;
        QTest::newRow("a read goes on, an import comes")
            << u"BEGIN; SELECT count(*) FROM Base06"_s << workload_->action();
    }
    void aStoreHeldByAnotherProgramIsTold() {
        QFETCH(QString, hold);
        QFETCH(QString, action);
        workload_->layOut(folder());
        const QStringList before = storeRows(folder());
        {
            SQLite::Database other = otherProgram();
            other.exec(hold.toStdString());
            verifyTold(runDayClose(folder(), {action}), Locked);
        }
        QCOMPARE(storeRows(folder()), before);
        QCOMPARE(integrityOf(folder()), u"ok"_s);
        verifyImported();
    }

    void aStoreThatMayNotEvenBeReadIsToldWhenItIsOpened() {
        workload_->layOut(folder());
        {
            SQLite::Database other = otherProgram();
            other.exec("BEGIN EXCLUSIVE");
            verifyRefused(runDayClose(folder(), {workload_->action()}), Locked);
        }
        verifyImported();
    }

    void aStoreHeldForAMomentIsWaitedFor() {
        workload_->layOut(folder());
        DayCloseProcess process(folder());
        QVERIFY(process.ask(u"reopen"_s)[u"finished"_s].toBool());
        SQLite::Database other = otherProgram();
        other.exec("BEGIN IMMEDIATE");
        process.send(workload_->action());
        QVERIFY(!process.answerWithin(1000));
        other.exec("ROLLBACK");
        QVERIFY(process.answer()[u"finished"_s].toBool());
        QCOMPARE(process.end().status, 0);
        QCOMPARE(storeRows(folder()), workload_->importedRows());
    }

    void aStoreTakenInTheMiddleOfAnImportLosesTheStageAndNoMore() {
        // A file so long that another program comes in while the stage reads it; should the machine hold the
        // other program up for as long as that, it tries again.
        const QString file = folder() + u"/20100301.txt"_s;
        writeFile(file, contentOf(workload_->punchFile()).repeated(200));
        QJsonObject answer;
        for (int attempt = 0; attempt < 5 && answer[u"finished"_s] != QJsonValue(false); ++attempt) {
            workload_->layOut(folder());
            DayCloseProcess process(folder());
            SQLite::Database other = otherProgram();
            process.send(u"import="_s + file);
            // It reads on from the moment at which it sees the stage before.
            const auto seesSentinel = [&other] {
                try {
                    other.exec("BEGIN");
                    if (other.execAndGet("SELECT count(*) FROM Base06 WHERE LeaveDate = '2038-01-01'")
                            .getInt() > 0)
                        return true;
                } catch (const SQLite::Exception&) {
                    // A commit is under way.
                }
                other.tryExec("ROLLBACK");
                return false;
            };
            std::optional<QJsonObject> early;
            while (!early && !seesSentinel())
                early = process.answerWithin(1);
            answer = early ? *early : process.answer();
            QCOMPARE(process.end().status, 0);
        }
        QCOMPARE(answer[u"finished"_s], QJsonValue(false));
        QCOMPARE(answer[u"error"_s].toInt(), error::StoreLocked);
        const qsizetype place = placeAmong(workload_->importBorders(), storeRows(folder()));
        QVERIFY(place >= 0);
        QCOMPARE(workload_->importBorders()[place].name, u"sentinel"_s);
        QCOMPARE(integrityOf(folder()), u"ok"_s);
        verifyImported();
    }

    void aDamagedPageIsTold_data() {
        QTest::addColumn<QString>("name");
        // Whether the action ends early and is answered; else the program has no rows to tell and gives up.
        QTest::addColumn<bool>("answered");
        QTest::newRow("where the tables are listed") << u"sqlite_schema"_s << false;
        QTest::newRow("the settings") << u"Syst01"_s << false;
        QTest::newRow("the employees") << u"Base06"_s << true;
        QTest::newRow("the time slots") << u"Base04"_s << true;
        QTest::newRow("the roster by its key") << u"sqlite_autoindex_Rule03_1"_s << true;
        QTest::newRow("the punches") << u"Atte01"_s << false;
        QTest::newRow("the results") << u"Atte02"_s << true;
        QTest::newRow("the results by their key") << u"sqlite_autoindex_Atte02_1"_s << false;
        QTest::newRow("the exceptions") << u"Atte03"_s << true;
    }
    void aDamagedPageIsTold() {
        QFETCH(QString, name);
        QFETCH(bool, answered);
        workload_->layOutImported(folder());
        QByteArray content = contentOf(store());
        if (name == u"sqlite_schema"_s) {
            content.replace(100, 400, QByteArray(400, '\xa5'));
        } else {
            const auto [page, size] = pageOf(name);
            QVERIFY(page > 0);
            content.replace(page * size, size, QByteArray(size, '\xa5'));
        }
        writeFile(store(), content);
        const DayCloseEnd end = runDayClose(folder(), {workload_->action()});
        if (answered)
            verifyTold(end, Damaged);
        else
            verifyRefused(end, Damaged);
    }

    void aStoreCutShortIsTold_data() {
        QTest::addColumn<double>("part");
        QTest::newRow("a tenth is left") << 0.1;
        QTest::newRow("half is left") << 0.5;
    }
    void aStoreCutShortIsTold() {
        QFETCH(double, part);
        workload_->layOutImported(folder());
        QFile file(store());
        QVERIFY(file.resize(static_cast<qint64>(static_cast<double>(file.size()) * part)));
        verifyRefused(runDayClose(folder(), {workload_->action()}), Damaged);
    }

    void bytesOverwrittenAtRandomNeitherCrashNorHang() {
        workload_->layOutImported(folder());
        const QByteArray whole = contentOf(store());
        int told = 0;
        for (quint32 seed = 1; seed <= 40; ++seed) {
            QRandomGenerator random(seed);
            QByteArray content = whole;
            for (int places = random.bounded(1, 30); places > 0; --places) {
                // Behind the header, which tells what kind of file it is.
                const qsizetype place = random.bounded(100, static_cast<int>(content.size()) - 64);
                for (int byte = random.bounded(1, 64); byte > 0; --byte)
                    content[place + byte] = static_cast<char>(random.bounded(256));
            }
            writeFile(store(), content);
            const DayCloseEnd end = runDayClose(folder(), {workload_->action(), u"recalc=2010/3/1"_s});
            const QByteArray which = "seed " + QByteArray::number(seed) + ": " + end.errors.toUtf8();
            QVERIFY2(!end.crashed, which);
            bool named = end.status == 2 && end.errors.startsWith(u"day_close: "_s + Damaged);
            QVERIFY2(named || (end.status == 0 && end.answers.size() == 2), which);
            for (const QJsonObject& answer : end.answers) {
                const bool finished = answer[u"finished"_s].toBool();
                QVERIFY2(finished || answer[u"error"_s].toInt() > 0, which + qPrintable(shown(answer)));
                named = named || !finished;
            }
            told += named ? 1 : 0;
        }
        // Most of the damage is found; what lies where nobody looks is not.
        QVERIFY2(told >= 30, qPrintable(QString::number(told)));
    }

    void whatIsNoStoreOfThisSystemIsToldAndLeftAsItIs_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("an empty file") << QByteArray();
        QTest::newRow("a text") << QByteArray("姓名,電話\n");
        QTest::newRow("zeros") << QByteArray(16384, '\0');
        QTest::newRow("a database of another kind")
            << QByteArray("\0\1\0\0Standard Jet DB\0", 20) + QByteArray(8192, '\x11');
    }
    void whatIsNoStoreOfThisSystemIsToldAndLeftAsItIs() {
        QFETCH(QByteArray, content);
        QVERIFY(QDir(folder()).mkpath(u"DB"_s));
        writeFile(store(), content);
        verifyRefused(runDayClose(folder(), {workload_->action()}), Foreign);
        QCOMPARE(contentOf(store()), content);
        QCOMPARE(QDir(folder() + u"/DB"_s).entryList(QDir::Files | QDir::Hidden),
                 QStringList{u"Pontrel.mdb"_s});
    }

    void aStoreOfAnotherProgramOfTheSameEngineIsToldAndLeftAsItIs() {
        QVERIFY(QDir(folder()).mkpath(u"DB"_s));
        {
            SQLite::Database other(store().toStdString(), SQLite::OPEN_READWRITE | SQLite::OPEN_CREATE);
            other.exec(
                "CREATE TABLE Base06 (EmpNo TEXT, LeaveDate TEXT); INSERT INTO Base06 VALUES ('1', NULL)");
        }
        const QByteArray before = contentOf(store());
        verifyRefused(runDayClose(folder(), {workload_->action()}), Foreign);
        QVERIFY(contentOf(store()) == before);
    }

    void aFolderInThePlaceOfTheStoreIsTold() {
        QVERIFY(QDir(folder()).mkpath(u"DB/Pontrel.mdb"_s));
        verifyRefused(runDayClose(folder(), {workload_->action()}), Foreign);
    }
};

QTEST_GUILESS_MAIN(StoreFaultTest)
#include "StoreFaultTest.moc"
