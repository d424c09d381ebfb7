#include "store/Database.h"
#include "store/NewStore.h"
#include "store/RunTimeError.h"
#include "store/Schema.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/TestStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <unistd.h>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

int errorOfOpening(const QString& path) {
    return errorOf([&] { const Database database(path); });
}

void writeFile(const QString& path, const QByteArray& content) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(content), content.size());
}

QByteArray contentOf(const QString& path) {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class OpeningTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aNewStoreHoldsTheSettingsAnAccountAndTheSchemes() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"有 空白/DB/Pontrel.mdb"_s);
        createStore(path, {u"/打卡"_s, u"Clerk"_s, u"pw"_s});
        Database database(path);
        QCOMPARE(rowsOf(database, u"Syst01"_s), QStringList({u"/打卡|5|10|60|60|01|02|03|04|"_s}));
        QCOMPARE(rowsOf(database, u"syst02"_s),
                 QStringList({u"Clerk|pw|True|True|True|True|True|True|True|True"_s}));
        QVERIFY(!rowsOf(database, u"Syst03"_s).isEmpty());
        for (const Table& table : tables())
            if (!table.name.startsWith(u"syst"_s, Qt::CaseInsensitive))
                QCOMPARE(rowsOf(database, table.name), QStringList());
    }

    void aStoreIsReadableByItsOwnerAlone() {
        TestStore store;
        const auto others = QFile::ReadGroup | QFile::WriteGroup | QFile::ReadOther | QFile::WriteOther;
        QVERIFY(!(QFile::permissions(store.path()) & others));
    }

    void aFileIsNeverOverwritten() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"Pontrel.mdb"_s);
        writeFile(path, "mine");
        QVERIFY_EXCEPTION_THROWN(createStore(path, {}), RunTimeError);
        QCOMPARE(contentOf(path), QByteArray("mine"));
    }

    void whatAnotherStoreHasLeftIsNotPlayedIntoANewOne() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"Pontrel.mdb"_s);
        writeFile(path + u"-journal"_s, "left by a killed program");
        QVERIFY_EXCEPTION_THROWN(createStore(path, {}), RunTimeError);
        QVERIFY(!QFileInfo::exists(path));
    }

    void anUpdateOfTwoTablesThatFailsLeavesNothingOpenAndNothingDone() {
        TestStore store;
        Database& database = store.database();
        for (const char16_t* code : {u"01", u"02"}) {
            insertRow(database, u"Canc01"_s, {{u"CnlNo", code}, {u"CnlName", u"原因"}});
            insertRow(database, u"View03"_s, {{u"EmpNo", code}, {u"CnlNo1", code}});
        }
        SQLite::Database engine(store.path().toStdString(), SQLite::OPEN_READWRITE);
        engine.exec("CREATE TRIGGER stop BEFORE UPDATE ON View03 WHEN old.EmpNo = '02' BEGIN SELECT "
                    "RAISE(ABORT, 'stop'); END");
        QVERIFY_EXCEPTION_THROWN(
            database.execute(
                u"Update View03,Canc01 set CnlNo1 =Canc01.CnlName  Where Canc01.CnlNo = View03.CnlNo1 "_s),
            RunTimeError);
        database.execute(u"insert into Base01(TitleNo) values('1')"_s);
        QCOMPARE(rowsOf(*store.connect(), u"Base01"_s), QStringList({u"1|null"_s}));
        QCOMPARE(rowsOfSelection(database, u"select CnlNo1 from View03"_s), QStringList({u"01"_s, u"02"_s}));
    }

    void whatIsNoStoreIsRefusedAndLeftAsItIs_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("text") << QByteArray("hello");
        QTest::newRow("header alone") << QByteArray("SQLite format 3\0", 16);
        QTest::newRow("noise") << QByteArray(8192, '\x7f');
    }
    void whatIsNoStoreIsRefusedAndLeftAsItIs() {
        QFETCH(QByteArray, content);
        QTemporaryDir folder;
        const QString path = folder.filePath(u"Pontrel.mdb"_s);
        writeFile(path, content);
        QCOMPARE(errorOfOpening(path), error::UnrecognizedStore);
        QCOMPARE(contentOf(path), content);
    }

    void aMissingFileIsNotCreated() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"Pontrel.mdb"_s);
        QCOMPARE(errorOfOpening(path), error::StoreNotFound);
        QVERIFY(!QFileInfo::exists(path));
        QCOMPARE(errorOfOpening(folder.path()), error::UnrecognizedStore);
    }

    void theMarkOfAnotherProgramIsRefused() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"Pontrel.mdb"_s);
        createStore(path, {});
        QByteArray content = contentOf(path);
        content[71] = static_cast<char>(content[71] + 1); // the last byte of the application's mark
        writeFile(path, content);
        QCOMPARE(errorOfOpening(path), error::UnrecognizedStore);
    }

    void aJournalThatUndoesNothingGoesWithTheOpening_data() {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("empty") << QByteArray();
        QTest::newRow("not yet valid") << QByteArray(512, '\0') + QByteArray(4096, 'x');
    }
    void aJournalThatUndoesNothingGoesWithTheOpening() {
        QFETCH(QByteArray, content);
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"Pontrel.mdb"_s);
        createStore(path, {u"punch"_s, u"admin"_s, u"secret"_s});
        QFile journal(path + u"-journal"_s);
        QVERIFY(journal.open(QIODevice::WriteOnly) && journal.write(content) == content.size());
        journal.close();
        Database database(path);
        QVERIFY(!journal.exists());
        QCOMPARE(rowsOfSelection(database, u"select Account from syst02"_s), QStringList{u"admin"_s});
    }

    void aJournalInUseStaysWithTheOpening() {
        TestStore store;
        {
            Stage stage(store.database());
            store.database().execute(u"insert into Base01(TitleNo) values('1')"_s);
            QVERIFY(QFile::exists(store.path() + u"-journal"_s));
            const auto other = store.connect();
            QVERIFY(QFile::exists(store.path() + u"-journal"_s));
            QCOMPARE(rowsOf(*other, u"Base01"_s), QStringList());
            stage.finish();
        }
        QVERIFY(!QFile::exists(store.path() + u"-journal"_s));
        QCOMPARE(rowsOf(*store.connect(), u"Base01"_s), QStringList{u"1|null"_s});
    }

    void aStoreThatCannotBeReadIsToldFromOneThatIsDamaged_data() {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<int>("number");
        QTest::addColumn<QString>("text");
        const QString unreadable = u"無法讀寫資料庫檔案,請檢查檔案權限與磁碟"_s;
        QTest::newRow("its folder is closed") << u"folder"_s << 3051 << unreadable;
        QTest::newRow("the file is closed") << u"file"_s << 3051 << unreadable;
        QTest::newRow("its journal cannot be read") << u"journal"_s << 3051 << unreadable;
        QTest::newRow("damaged") << u"damage"_s << 3049 << u"資料庫檔案損壞"_s;
    }
    void aStoreThatCannotBeReadIsToldFromOneThatIsDamaged() {
        QFETCH(QString, fault);
        const QTemporaryDir folder;
        const QString path = folder.filePath(u"DB/Pontrel.mdb"_s);
        createStore(path, {});
        QFile file(path);
        if (fault == u"folder"_s)
            QVERIFY(QFile::setPermissions(folder.filePath(u"DB"_s), {}));
        else if (fault == u"file"_s)
            QVERIFY(file.setPermissions({}));
        else if (fault == u"journal"_s)
            QVERIFY(QDir().mkdir(path + u"-journal"_s));
        else
            QVERIFY(file.open(QIODevice::ReadWrite) && file.seek(100) &&
                    file.write(QByteArray(400, '\xa5')) == 400);
        file.close();
        // Nothing is closed to root: he becomes another user for a moment, who may come as far as the folder.
        const bool asOther = ::geteuid() == 0 && (fault == u"folder"_s || fault == u"file"_s);
        if (asOther) {
            QCOMPARE(::chown(QFile::encodeName(folder.path()).constData(), 65534, 65534), 0);
            QCOMPARE(::chown(QFile::encodeName(folder.filePath(u"DB"_s)).constData(), 65534, 65534), 0);
            QCOMPARE(::chown(QFile::encodeName(path).constData(), 65534, 65534), 0);
            QCOMPARE(::seteuid(65534), 0);
        }
        int number = 0;
        QString text;
        QString technical;
        try {
            Database database(path);
            (void)database.select(u"select Account from syst02"_s);
        } catch (const RunTimeError& failure) {
            number = failure.number();
            text = failure.text();
            technical = failure.technical();
        }
        if (asOther)
            QCOMPARE(::seteuid(0), 0);
        QFile::setPermissions(folder.filePath(u"DB"_s),
                              QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
        QTEST(number, "number");
        QTEST(text, "text");
        QVERIFY(!technical.isEmpty());
    }

    void columnsStandInTheirOrderAndRowsPassByPosition() {
        const Table* results = findTable(u"AtteTemp1"_s);
        for (const char16_t* name : {u"Atte02", u"Atte03"}) {
            const Table* other = findTable(QString::fromUtf16(name));
            QCOMPARE(other->columns.size(), results->columns.size());
            for (std::size_t index = 0; index < results->columns.size(); ++index) {
                QCOMPARE(other->columns[index].name, results->columns[index].name);
                QCOMPARE(other->columns[index].type, results->columns[index].type);
            }
        }
        QCOMPARE(results->columns.size(), std::size_t{3 + 4 + 12 + 12 + 4 + 1 + 8});
    }

    void aRowInsertedWithItsKeyAloneStartsWithFalseAndZero() {
        TestStore store;
        store.database().execute(
            u"Insert Into AtteTemp1(EmpNo,TimeNo,UseDate) Values('00001','1',#2001/3/5#)"_s);
        QCOMPARE(rowsOf(store.database(), u"AtteTemp1"_s),
                 QStringList(
                     {u"00001|2001-03-05|1|null|null|null|null|False|False|False|False|False|False|False|"
                      "False|False|False|False|False|null|null|null|null|null|null|null|null|null|null|null|"
                      "null|False|False|False|False|False|0|0|0|0|0|0|0|0"_s}));
        store.database().execute(u"Insert Into View01(EmpNo) Values('00001')"_s);
        QCOMPARE(rowsOf(store.database(), u"View01"_s), QStringList({u"00001|null|null|null|0|0"_s}));
    }

    void anEmployeeWithOvertimeOrLeaveCannotBeDeleted_data() {
        QTest::addColumn<QString>("insert");
        QTest::newRow("overtime") << u"insert into Over01(EmpNo) values('00001')"_s;
        QTest::newRow("leave") << u"insert into Holi03(BusNo,EmpNo) values('1','00001')"_s;
    }
    void anEmployeeWithOvertimeOrLeaveCannotBeDeleted() {
        QFETCH(QString, insert);
        TestStore store;
        addEmployee(store.database(), u"00001"_s);
        addEmployee(store.database(), u"00002"_s);
        store.database().execute(insert);
        QCOMPARE(errorOf([&] { store.database().execute(u"delete * from Base06 where EmpNo='00001'"_s); }),
                 error::DeleteRefused);
        store.database().execute(u"delete * from Base06 where EmpNo='00002'"_s);
        QCOMPARE(rowsOfSelection(store.database(), u"select EmpNo from Base06"_s), QStringList({u"00001"_s}));
    }

    void aStageIsCommittedAlsoWhenAnErrorLeavesIt() {
        TestStore store;
        const int number = errorOf([&] {
            Stage stage(store.database());
            store.database().execute(u"insert into Base01(TitleNo,Title) values('1','a')"_s);
            store.database().execute(u"insert into Base01(TitleNo,Title) values('2','O'Brien')"_s);
        });
        QCOMPARE(number, error::Syntax);
        QVERIFY(!store.database().inStage());
        QCOMPARE(rowsOf(*store.connect(), u"Base01"_s), QStringList({u"1|a"_s}));
    }

    void stagesNestAndTheOutermostCounts() {
        TestStore store;
        Stage outer(store.database());
        {
            Stage inner(store.database());
            store.database().execute(u"insert into Base01(TitleNo) values('1')"_s);
            inner.finish();
        }
        QVERIFY(store.database().inStage());
        QCOMPARE(rowsOf(*store.connect(), u"Base01"_s), QStringList());
        outer.finish();
        QCOMPARE(rowsOf(*store.connect(), u"Base01"_s), QStringList({u"1|null"_s}));
    }

    void closingAllConnectionsCommitsTheOpenStage() {
        QTemporaryDir folder;
        const QString path = folder.filePath(u"Pontrel.mdb"_s);
        createStore(path, {});
        Database first(path);
        const Database second(path);
        {
            Stage stage(first);
            first.execute(u"insert into Base01(TitleNo) values('1')"_s);
            closeAllConnections();
            QVERIFY_EXCEPTION_THROWN(first.execute(u"delete * from Base01"_s), RunTimeError);
        }
        Database again(path);
        QCOMPARE(rowsOf(again, u"Base01"_s), QStringList({u"1|null"_s}));
    }
};

QTEST_GUILESS_MAIN(OpeningTest)
#include "OpeningTest.moc"
