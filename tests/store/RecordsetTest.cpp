#include "store/Recordset.h"
#include "store/RunTimeError.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/TestStore.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

class RecordsetTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() {
        store_ = std::make_unique<TestStore>();
        for (const char16_t* code : {u"C", u"a", u"B", u"D"})
            insertRow(db(), QStringLiteral("Base02"),
                      {{u"UnitNo", code}, {u"Unit", QStringLiteral("單位") + QString::fromUtf16(code)}});
    }

    void aTableIsWalkedInTheOrderOfItsKeyWhateverTheCase() {
        Recordset rows = db().openRecordset(QStringLiteral("base02"));
        QStringList codes;
        for (; !rows.AtEOF(); rows.MoveNext())
            codes += rows.field(QStringLiteral("UNITNO")).toText();
        QCOMPARE(codes, QStringList({u"a"_s, u"B"_s, u"C"_s, u"D"_s}));
    }

    void aTableWithoutKeyIsWalkedInTheOrderOfInsertion() {
        for (const char16_t* code : {u"2", u"1", u"3"})
            insertRow(db(), QStringLiteral("View01"), {{u"EmpNo", code}});
        QCOMPARE(rowsOfSelection(db(), QStringLiteral("select EmpNo from View01")),
                 QStringList({u"2"_s, u"1"_s, u"3"_s}));
    }

    void anEmptySetHasPositionZeroAndAnyMoveIsAnError() {
        Recordset rows = db().openRecordset(QStringLiteral("Base01"));
        QVERIFY(rows.AtEOF() && rows.AtBOF());
        QCOMPARE(rows.RecordCount(), 0);
        QCOMPARE(rows.AbsolutePosition(), 0);
        QCOMPARE(errorOf([&] { rows.MoveFirst(); }), error::NoCurrentRecord);
        QCOMPARE(errorOf([&] { rows.MoveLast(); }), error::NoCurrentRecord);
        QCOMPARE(errorOf([&] { rows.MoveNext(); }), error::NoCurrentRecord);
        QCOMPARE(errorOf([&] { rows.MovePrevious(); }), error::NoCurrentRecord);
        QCOMPARE(errorOf([&] { (void)rows.field(u"Title"_s); }), error::NoCurrentRecord);
        QCOMPARE(errorOf([&] { rows.Edit(); }), error::NoCurrentRecord);
    }

    void movingPastEitherEndStopsThereAndThenIsAnError() {
        Recordset rows = units();
        rows.MoveLast();
        QCOMPARE(rows.AbsolutePosition(), 3);
        rows.MoveNext();
        QVERIFY(rows.AtEOF());
        QCOMPARE(rows.AbsolutePosition(), -1);
        QCOMPARE(errorOf([&] { rows.MoveNext(); }), error::NoCurrentRecord);
        rows.MovePrevious();
        QCOMPARE(code(rows), u"D"_s);
        rows.MoveFirst();
        rows.MovePrevious();
        QVERIFY(rows.AtBOF());
        QCOMPARE(errorOf([&] { rows.MovePrevious(); }), error::NoCurrentRecord);
        rows.MoveNext();
        QCOMPARE(code(rows), u"a"_s);
    }

    void aRowIsSeenAsItIsWhenItBecomesCurrent() {
        Recordset rows = units();
        store_->connect()->execute(u"update Base02 set Unit='新名' where UnitNo='B'"_s);
        rows.MoveNext();
        QCOMPARE(rows.field(u"Unit"_s).toText(), u"新名"_s);
    }

    void aRowDeletedElsewhereStaysInTheSetAndShowsEmpty() {
        Recordset rows = units();
        store_->connect()->execute(u"delete * from Base02 where UnitNo='B'"_s);
        rows.MoveNext();
        QCOMPARE(rows.RecordCount(), 4);
        QVERIFY(rows.field(u"UnitNo"_s).isNull());
        QVERIFY(rows.field(u"Unit"_s).isNull());
        QCOMPARE(errorOf([&] { rows.Edit(); }), error::RecordDeleted);
        QCOMPARE(errorOf([&] { rows.Delete(); }), error::RecordDeleted);
        rows.MoveNext();
        QCOMPARE(code(rows), u"C"_s);
        QCOMPARE(units().RecordCount(), 3);
    }

    void aRowDeletedElsewhereDuringItsEditCannotBeSaved() {
        Recordset rows = units();
        rows.Edit();
        rows.setField(u"Unit"_s, u"x"_s);
        store_->connect()->execute(u"delete * from Base02 where UnitNo='a'"_s);
        QCOMPARE(errorOf([&] { rows.Update(); }), error::RecordDeleted);
    }

    void afterADeleteInTheMiddleTheNeighboursFollow() {
        Recordset rows = units();
        rows.moveTo(1);
        rows.Delete();
        QCOMPARE(rows.RecordCount(), 3);
        QCOMPARE(errorOf([&] { rows.Edit(); }), error::RecordDeleted);
        QVERIFY(rows.field(u"UnitNo"_s).isNull());
        rows.MoveNext();
        QCOMPARE(code(rows), u"C"_s);
        rows.Delete();
        rows.MovePrevious();
        QCOMPARE(code(rows), u"a"_s);
        QCOMPARE(rowsOf(db(), u"Base02"_s), QStringList({u"a|單位a"_s, u"D|單位D"_s}));
    }

    void deletingTheLastRowLeavesTheEndBehindIt() {
        Recordset rows = units();
        rows.MoveLast();
        rows.Delete();
        rows.MoveNext();
        QVERIFY(rows.AtEOF());
        rows.MoveLast();
        QCOMPARE(code(rows), u"C"_s);
    }

    void aNewRowStandsAtTheEndUntilTheSetIsRunAgain() {
        Recordset rows = units();
        rows.moveTo(1);
        rows.AddNew();
        QCOMPARE(rows.editMode(), EditMode::Add);
        QVERIFY(rows.field(u"Unit"_s).isNull());
        rows.setField(u"UnitNo"_s, u"AA"_s);
        rows.setField(u"Unit"_s, u"人事室"_s);
        rows.Update();
        QCOMPARE(rows.editMode(), EditMode::None);
        QCOMPARE(code(rows), u"B"_s);
        rows.setBookmark(rows.LastModified());
        QCOMPARE(code(rows), u"AA"_s);
        QCOMPARE(rows.AbsolutePosition(), 4);
        Recordset again = units();
        again.moveTo(1);
        QCOMPARE(code(again), u"AA"_s);
    }

    void anEditWritesOnlyTheColumnsChanged() {
        addEmployee(db(), u"00001"_s);
        Recordset rows = db().openRecordset(u"Base06"_s);
        rows.Edit();
        store_->connect()->execute(u"update Base06 set Telephone='123' where EmpNo='00001'"_s);
        rows.setField(u"Memo"_s, u"備註"_s);
        rows.Update();
        QCOMPARE(rowsOfSelection(db(), u"select EmpNo,Telephone,Memo from Base06"_s),
                 QStringList({u"00001|123|備註"_s}));
        QCOMPARE(rows.field(u"Telephone"_s).toText(), u"123"_s);
    }

    void cancellingAndMovingDropTheBuffer() {
        Recordset rows = units();
        rows.Edit();
        rows.setField(u"Unit"_s, u"x"_s);
        QCOMPARE(rows.field(u"Unit"_s).toText(), u"x"_s);
        rows.CancelUpdate();
        QCOMPARE(rows.field(u"Unit"_s).toText(), u"單位a"_s);
        rows.AddNew();
        rows.setField(u"UnitNo"_s, u"Z"_s);
        rows.MoveNext();
        QCOMPARE(rows.editMode(), EditMode::None);
        QCOMPARE(errorOf([&] { rows.Update(); }), error::UpdateWithoutEdit);
        QCOMPARE(units().RecordCount(), 4);
    }

    void aSaveThatTheStoreRefusesStaysInEdit_data() {
        QTest::addColumn<QString>("column");
        QTest::addColumn<QVariant>("value");
        QTest::addColumn<int>("number");
        QTest::newRow("a key that is taken") << u"EmpNo"_s << QVariant(u"00002"_s) << error::DuplicateKey;
        QTest::newRow("a key in another case") << u"EmpNo"_s << QVariant(u"abc"_s) << error::DuplicateKey;
        QTest::newRow("a null key") << u"EmpNo"_s << QVariant() << error::RequiredColumn;
        QTest::newRow("a text that is no number") << u"BreakY"_s << QVariant(u"x"_s) << error::DataConversion;
        QTest::newRow("a text that is no date")
            << u"Birth"_s << QVariant(u"90/02/30"_s) << error::DataConversion;
    }
    void aSaveThatTheStoreRefusesStaysInEdit() {
        QFETCH(QString, column);
        QFETCH(QVariant, value);
        QFETCH(int, number);
        for (const char16_t* employee : {u"00001", u"00002", u"ABC"})
            addEmployee(db(), QString::fromUtf16(employee));
        Recordset rows = db().openRecordset(u"Base06"_s);
        rows.Edit();
        rows.setField(column, value.isValid() ? Value(value.toString()) : Value());
        QCOMPARE(errorOf([&] { rows.Update(); }), number);
        QCOMPARE(rows.editMode(), EditMode::Edit);
        rows.CancelUpdate();
        QCOMPARE(rows.field(u"EmpNo"_s).toText(), u"00001"_s);
    }

    void textsAreReadIntoTheColumnsKind() {
        addEmployee(db(), u"00001"_s);
        Recordset rows = db().openRecordset(u"Base06"_s);
        rows.Edit();
        rows.setField(u"BreakY"_s, u"27"_s);
        rows.setField(u"ThisYearHD"_s, u"1.4"_s);
        rows.setField(u"Birth"_s, u"1960/1/2"_s);
        rows.Update();
        QCOMPARE(rowsOfSelection(db(), u"select BreakY,ThisYearHD,Birth from Base06"_s),
                 QStringList({u"27|1.4|1960-01-02"_s}));
    }

    void aGroupedSetCannotBeEdited() {
        Recordset rows = db().openRecordset(u"select distinct UnitNo from Base02"_s);
        QCOMPARE(rows.RecordCount(), 4);
        QCOMPARE(errorOf([&] { rows.Edit(); }), error::CannotWrite);
        QCOMPARE(errorOf([&] { rows.AddNew(); }), error::CannotWrite);
        QCOMPARE(errorOf([&] { rows.Delete(); }), error::CannotWrite);
    }

    void aJoinThatTakesOneTableWholeIsEditedInThatTable() {
        db().execute(u"insert into Holi01(HoliNo,HoliType) values('01','休假')"_s);
        db().execute(
            u"insert into Holi02(SuitNo,HoliNo,HoliYearBeg,HoliYearEnd,HoliDays) values('1','01',0,1,7)"_s);
        db().execute(
            u"insert into Holi02(SuitNo,HoliNo,HoliYearBeg,HoliYearEnd,HoliDays) values('1','01',1,3,14)"_s);
        Recordset rows = db().openRecordset(
            u" SELECT Syst03.SuitRule, Holi01.HoliType, Holi02.*     FROM (Holi01 INNER JOIN Holi02 ON Holi01.HoliNo = Holi02.HoliNo) INNER JOIN Syst03 ON Holi02.SuitNo = Syst03.SuitNo"_s);
        QCOMPARE(rows.RecordCount(), 2);
        QCOMPARE(rows.field(u"HoliType"_s).toText(), u"休假"_s);
        QCOMPARE(errorOf([&] {
                     rows.Edit();
                     rows.setField(u"HoliType"_s, u"x"_s);
                 }),
                 error::CannotWrite);
        rows.setField(u"HoliDays"_s, u"7.5"_s);
        rows.Update();
        QCOMPARE(rows.field(u"HoliType"_s).toText(), u"休假"_s);
        rows.MoveNext();
        rows.Delete();
        QCOMPARE(rowsOf(db(), u"Holi02"_s), QStringList({u"1|01|0|1|7.5"_s}));
        rows.AddNew();
        rows.setField(u"SuitNo"_s, u"1"_s);
        rows.setField(u"HoliNo"_s, u"01"_s);
        rows.Update();
        rows.MoveLast();
        QVERIFY(rows.field(u"HoliType"_s).isNull());
        QCOMPARE(rows.field(u"HoliNo"_s).toText(), u"01"_s);
    }

    void findingGoesToTheFirstMatchInTheSetsOrderOrStays_data() {
        QTest::addColumn<QString>("condition");
        QTest::addColumn<QString>("expected");
        QTest::newRow("equal, in any case") << u"unitno ='A'"_s << u"a"_s;
        QTest::newRow("pattern") << u"unit like'單位*'"_s << u"D"_s;
        QTest::newRow("pattern of one row") << u"unit like'*C'"_s << u"C"_s;
        QTest::newRow("nothing") << u"unitno ='X'"_s << u"B"_s;
    }
    void findingGoesToTheFirstMatchInTheSetsOrderOrStays() {
        QFETCH(QString, condition);
        QFETCH(QString, expected);
        Recordset rows = db().openRecordset(u"select * from Base02 order by UnitNo desc"_s);
        rows.moveTo(2);
        rows.FindFirst(condition);
        QCOMPARE(code(rows), expected);
        QCOMPARE(rows.NoMatch(), expected == u"B"_s);
    }

    void findingWithAnApostropheIsAnError() {
        Recordset rows = units();
        QCOMPARE(errorOf([&] { rows.FindFirst(u"unitno ='O'B'"_s); }), error::Syntax);
        QCOMPARE(errorOf([&] { rows.FindFirst(u"nothere ='O'"_s); }), error::UnknownName);
    }

    void findingWorksInASnapshot() {
        Recordset rows = db().openRecordset(u"select distinct UnitNo,Unit from Base02"_s);
        rows.FindFirst(u"unit like'*c'"_s);
        QVERIFY(!rows.NoMatch());
        QCOMPARE(code(rows), u"C"_s);
        rows.MoveFirst();
        rows.FindFirst(u"unitno = 'c'"_s);
        QVERIFY(!rows.NoMatch());
        QCOMPARE(code(rows), u"C"_s);
    }

    void aNewRowStartsWithFalseAndZeroWhereItsColumnsDo() {
        Recordset rows = db().openRecordset(u"AtteTemp1"_s);
        rows.AddNew();
        QCOMPARE(rows.field(u"Expt"_s), Value(false));
        QCOMPARE(rows.field(u"DelayF"_s), Value(0));
        QVERIFY(rows.field(u"EmpNo"_s).isNull());
    }

    void aClosedSetAndAClosedConnectionAreTold() {
        Recordset rows;
        QCOMPARE(errorOf([&] { rows.MoveFirst(); }), error::ObjectNotSet);
        rows.Close();
        auto other = store_->connect();
        rows = other->openRecordset(u"Base02"_s);
        other.reset();
        QCOMPARE(errorOf([&] { (void)rows.field(u"Unit"_s); }), error::ObjectNotSet);
    }

    void aRowIsReadWithoutMoving() {
        Recordset rows = units();
        QCOMPARE(rows.rowAt(2).front().toText(), u"C"_s);
        QCOMPARE(code(rows), u"a"_s);
        QCOMPARE(errorOf([&] { (void)rows.rowAt(4); }), error::NoCurrentRecord);
    }

    void rowsAreReadInBatchesWithoutMoving() {
        Recordset rows = units();
        rows.MoveNext();
        const auto codes = [&rows](qint64 position, qint64 count) {
            QStringList read;
            for (const std::vector<Value>& row : rows.rowsAt(position, count))
                read << row.front().joined();
            return read;
        };
        QCOMPARE(codes(0, 2), (QStringList{u"a"_s, u"B"_s}));
        QCOMPARE(codes(1, 100), (QStringList{u"B"_s, u"C"_s, u"D"_s}));
        QCOMPARE(codes(3, 1), QStringList{u"D"_s});
        QCOMPARE(codes(4, 1), QStringList());
        QCOMPARE(codes(-1, 1), QStringList());
        QCOMPARE(codes(0, 0), QStringList());
        QCOMPARE(code(rows), u"B"_s);
        // As they are now, and a deleted one without values.
        Database other(store_->path());
        other.execute(u"update Base02 set Unit ='新' where UnitNo ='B'"_s);
        other.execute(u"delete * from Base02 where UnitNo ='C'"_s);
        const auto now = rows.rowsAt(0, 4);
        QCOMPARE(now.at(1).at(1), Value(u"新"_s));
        QCOMPARE(now.at(2), std::vector<Value>(2));
        // Nobody is kept from writing afterwards, and a stage goes on as it was.
        other.execute(u"update Base02 set Unit ='後' where UnitNo ='B'"_s);
        {
            const Stage stage(db());
            db().execute(u"update Base02 set Unit ='中' where UnitNo ='a'"_s);
            QCOMPARE(rows.rowsAt(0, 2).front().at(1), Value(u"中"_s));
            QVERIFY(db().inStage());
        }
        QCOMPARE(rows.rowsAt(0, 2).front().at(1), Value(u"中"_s));
        // Of a snapshot as well.
        const Recordset counted = db().openRecordset(u"select count(*) as Many from Base02"_s);
        QCOMPARE(counted.rowsAt(0, 5), std::vector<std::vector<Value>>{{Value(3)}});
    }

    void aColumnThatTheSetDoesNotHaveIsAnError() {
        Recordset rows = units();
        QCOMPARE(errorOf([&] { (void)rows.field(u"x"_s); }), error::ColumnNotFound);
    }

  private:
    [[nodiscard]] Database& db() { return store_->database(); }
    [[nodiscard]] Recordset units() { return db().openRecordset(QStringLiteral("Base02")); }
    [[nodiscard]] static QString code(const Recordset& rows) {
        return rows.field(QStringLiteral("UnitNo")).toText();
    }

    std::unique_ptr<TestStore> store_;
};

QTEST_GUILESS_MAIN(RecordsetTest)
#include "RecordsetTest.moc"
