#include "store/DataSource.h"
#include "store/RunTimeError.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/Errors.h"
#include "support/TestStore.h"

#include <QSignalSpy>
#include <QTest>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

/// A stand-in for a text box, a check box and a label: what a control is to a bound source.
class Control : public QObject {
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)
    Q_PROPERTY(bool checked MEMBER checked_)
    Q_PROPERTY(QVariant value MEMBER value_)
  public:
    [[nodiscard]] QString text() const { return text_; }
    void setText(const QString& text) {
        text_ = text;
        Q_EMIT changed();
    }
    bool checked_ = false;
    QVariant value_;

  Q_SIGNALS:
    void changed();

  private:
    QString text_;
};

} // namespace

class DataSourceTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void aRefreshThatNobodySeesTellsOfItsRowWithoutReadingTheOthers() {
        TestStore store;
        for (const QString& code : {u"01"_s, u"02"_s})
            insertRow(store.database(), u"Holi01"_s, {{u"HoliNo", code}});
        DataSource source;
        source.setDatabaseName(store.path());
        source.setRecordSource(u"Holi01"_s);
        source.Refresh();
        source.MoveLast();
        insertRow(store.database(), u"Holi01"_s, {{u"HoliNo", u"03"}});
        const QSignalSpy repositions(&source, &DataSource::Reposition);
        source.refreshUnseen();
        QCOMPARE(repositions.size(), 1);
        QCOMPARE(source.recordset().RecordCount(), 2);
        QCOMPARE(source.recordset().AbsolutePosition(), 1);
        source.Refresh();
        QCOMPARE(source.recordset().RecordCount(), 3);
    }

    void whatAnUpdateRefusesIsNamedByItsCaption_data() {
        QTest::addColumn<QString>("spokenName");
        QTest::addColumn<QString>("typed");
        QTest::addColumn<QString>("named");
        QTest::newRow("a code that is there") << u"班別代碼"_s << u"A"_s << u"班別代碼「A」"_s;
        QTest::newRow("no code") << u"班別代碼"_s << QString() << u"班別代碼"_s;
        QTest::newRow("a box without a caption") << QString() << u"A"_s << u"ClsNo「A」"_s;
    }
    void whatAnUpdateRefusesIsNamedByItsCaption() {
        QFETCH(const QString, spokenName);
        QFETCH(const QString, typed);
        QFETCH(const QString, named);
        TestStore store;
        insertRow(store.database(), u"Base05"_s, {{u"ClsNo", u"A"}});
        DataSource source;
        source.setDatabaseName(store.path());
        source.setRecordSource(u"Base05"_s);
        source.Refresh();
        Control box;
        box.setProperty("accessibleName", spokenName);
        source.bind(&box, "text", u"clsno"_s);
        source.AddNew();
        box.setText(typed);
        QStringList refused;
        try {
            source.Update();
        } catch (const RunTimeError& refusal) {
            refused = refusal.refused();
        }
        QCOMPARE(refused, QStringList{named});
        QCOMPARE(source.editMode(), EditMode::Add);
    }

    void everyColumnOfARefusedKeyIsNamed() {
        TestStore store;
        addRoster(store.database(), u"10001"_s, QDate(2001, 3, 5), u"A"_s);
        Recordset rows = store.database().openRecordset(u"Rule03"_s);
        rows.AddNew();
        rows.setField(u"EmpNo"_s, u"10001"_s);
        rows.setField(u"YMD"_s, QDate(2001, 3, 5));
        try {
            rows.Update();
            QFAIL("the row is there already");
        } catch (const RunTimeError& refusal) {
            QCOMPARE(refusal.refused(), QStringList({u"YMD"_s, u"EmpNo"_s}));
        }
    }

    void aRefreshThatNobodySeesFailsAsAnyOther_data() {
        QTest::addColumn<QString>("recordSource");
        QTest::addColumn<int>("number");
        QTest::newRow("a table that is not there") << u"Atte99"_s << error::Syntax;
        QTest::newRow("an unknown column") << u"select Nothing from Holi01"_s << error::UnknownName;
        QTest::newRow("no selection") << u"delete * from Holi01"_s << error::Syntax;
        QTest::newRow("a row that cannot be worked out")
            << u"select * from Holi01 where 1\\0 = 1"_s << error::DivisionByZero;
    }
    void aRefreshThatNobodySeesFailsAsAnyOther() {
        QFETCH(QString, recordSource);
        QFETCH(int, number);
        TestStore store;
        insertRow(store.database(), u"Holi01"_s, {{u"HoliNo", u"01"}});
        DataSource source;
        source.setDatabaseName(store.path());
        source.setRecordSource(u"Holi01"_s);
        source.Refresh();
        source.setRecordSource(recordSource);
        for (const bool unseen : {false, true}) {
            QCOMPARE(errorOf([&] { unseen ? source.refreshUnseen() : source.Refresh(); }), number);
        }
        QCOMPARE(source.recordset().RecordCount(), 1);
    }

    void init() {
        store_ = std::make_unique<TestStore>();
        addEmployee(db(), u"00001"_s,
                    {{u"EmpName", u"王大明"}, {u"Sex", true}, {u"Birth", QDate(1970, 2, 3)}});
        addEmployee(db(), u"00002"_s, {{u"EmpName", u"李小華"}, {u"Sex", false}});
        source_ = std::make_unique<DataSource>();
        source_->setDatabaseName(store_->path());
        source_->setRecordSource(u"Base06"_s);
    }

    void controlsFollowTheCurrentRow() {
        Control name, sex, birth;
        source_->bind(&name, "text", u"EmpName"_s);
        source_->bind(&sex, "checked", u"Sex"_s);
        source_->bind(&birth, "value", u"Birth"_s);
        QSignalSpy moved(source_.get(), &DataSource::Reposition);
        source_->Refresh();
        QCOMPARE(name.text(), u"王大明"_s);
        QCOMPARE(sex.checked_, true);
        QCOMPARE(birth.value_, QVariant(QDate(1970, 2, 3)));
        source_->MoveNext();
        QCOMPARE(name.text(), u"李小華"_s);
        QCOMPARE(sex.checked_, false);
        QCOMPARE(moved.count(), 2);
    }

    void aChangeOfTheRecordSourceShowsAtTheNextRefresh() {
        Control name;
        source_->bind(&name, "text", u"EmpName"_s);
        source_->Refresh();
        source_->setRecordSource(u"select * from Base06 where EmpNo = '00002'"_s);
        QCOMPARE(name.text(), u"王大明"_s);
        source_->Refresh();
        QCOMPARE(name.text(), u"李小華"_s);
        QCOMPARE(source_->recordset().RecordCount(), 1);
    }

    void aRefreshThatFailsKeepsTheRowsShown() {
        source_->Refresh();
        source_->setRecordSource(u"nothere"_s);
        QVERIFY_EXCEPTION_THROWN(source_->Refresh(), RunTimeError);
        QCOMPARE(source_->recordset().RecordCount(), 2);
    }

    void fillingTheControlsDirtiesNothing() {
        Control name, birth;
        source_->bind(&name, "text", u"EmpName"_s);
        source_->bind(&birth, "value", u"Birth"_s);
        source_->Refresh();
        source_->Edit();
        store_->connect()->execute(u"update Base06 set EmpName='改名' where EmpNo='00001'"_s);
        source_->Update();
        QCOMPARE(rowsOfSelection(db(), u"select EmpNo,EmpName,Birth from Base06 where EmpNo='00001'"_s),
                 QStringList({u"00001|改名|1970-02-03"_s}));
    }

    void aLabelThatCodeDerivesFromABoxIsNotStoredByASaveThatTouchedNothing() {
        store_->connect()->execute(u"update Base06 set ThisYearHD=14,ThisYearLeft=3.5 where EmpNo='00001'"_s);
        Control grant, left;
        connect(&grant, &Control::changed, &left, [&] { left.setText(grant.text()); });
        source_->bind(&left, "text", u"ThisYearLeft"_s, true);
        source_->bind(&grant, "text", u"ThisYearHD"_s);
        source_->Refresh();
        QCOMPARE(left.text(), u"3.5"_s);
        source_->Edit();
        source_->Update();
        QCOMPARE(balance(), u"14|3.5"_s);
        source_->Edit();
        grant.setText(u"20"_s);
        source_->Update();
        QCOMPARE(balance(), u"20|20"_s);
    }

    void aChangeByCodeDuringAnEditCountsAsTyped() {
        Control memo;
        source_->bind(&memo, "text", u"Memo"_s);
        source_->Refresh();
        source_->AddNew();
        QCOMPARE(memo.text(), QString());
        source_->recordset().setField(u"EmpNo"_s, u"00003"_s);
        memo.setText(u"記"_s);
        source_->Update();
        source_->setBookmark(source_->recordset().LastModified());
        QCOMPARE(rowsOfSelection(db(), u"select EmpNo,Memo from Base06 where EmpNo='00003'"_s),
                 QStringList({u"00003|記"_s}));
        QCOMPARE(memo.text(), u"記"_s);
    }

    void aBoxWithoutTextSavesNullInEveryKindOfColumn() {
        store_->connect()->execute(
            u"update Base06 set BreakY=3,ThisYearHD=1.5,Memo='x' where EmpNo='00001'"_s);
        Control memo, months, grant, birth;
        source_->bind(&memo, "text", u"Memo"_s);
        source_->bind(&months, "text", u"BreakY"_s);
        source_->bind(&grant, "text", u"ThisYearHD"_s);
        source_->bind(&birth, "text", u"Birth"_s);
        source_->Refresh();
        QCOMPARE(birth.text(), u"1970/2/3"_s);
        source_->Edit();
        for (Control* control : {&memo, &months, &grant, &birth})
            control->setText(QString());
        source_->Update();
        QCOMPARE(
            rowsOfSelection(db(), u"select Memo,BreakY,ThisYearHD,Birth from Base06 where EmpNo='00001'"_s),
            QStringList({u"null|null|null|null"_s}));
    }

    void aTextThatItsColumnCannotHoldIsAnErrorAtTheSaveAndCancelBringsTheRowBack() {
        Control months;
        source_->bind(&months, "text", u"BreakY"_s);
        source_->Refresh();
        const QString before = months.text();
        source_->Edit();
        months.setText(u"三"_s);
        QVERIFY_EXCEPTION_THROWN(source_->Update(), RunTimeError);
        QCOMPARE(source_->editMode(), EditMode::Edit);
        source_->CancelUpdate();
        QCOMPARE(months.text(), before);
        QCOMPARE(source_->editMode(), EditMode::None);
    }

    void aRowDeletedElsewhereShowsEmpty() {
        Control name;
        source_->bind(&name, "text", u"EmpName"_s);
        source_->Refresh();
        store_->connect()->execute(u"delete * from Base06 where EmpNo='00002'"_s);
        source_->MoveNext();
        QCOMPARE(name.text(), QString());
    }

    void deletingTellsThatTheRowsChanged() {
        QSignalSpy changed(source_.get(), &DataSource::RowsChanged);
        source_->Refresh();
        source_->Delete();
        QCOMPARE(changed.count(), 2);
        source_->MoveLast();
        QCOMPARE(rowsOfSelection(db(), u"select EmpNo from Base06"_s), QStringList({u"00002"_s}));
    }

    void aControlThatIsGoneIsPassedOver() {
        auto name = std::make_unique<Control>();
        source_->bind(name.get(), "text", u"EmpName"_s);
        source_->Refresh();
        name.reset();
        source_->Edit();
        source_->Update();
        QCOMPARE(source_->recordset().field(u"EmpName"_s).toText(), u"王大明"_s);
    }

    void aControlsOwnCodeMayRunTheSourceAgainWhileItIsFilled() {
        Control name, memo;
        source_->bind(&name, "text", u"EmpName"_s);
        source_->bind(&memo, "text", u"EmpNo"_s);
        source_->Refresh();
        connect(&name, &Control::changed, source_.get(), [&] {
            if (source_->RecordSource() != u"Base06")
                return;
            source_->setRecordSource(u"select * from Base06 where EmpNo = 'none'"_s);
            source_->Refresh();
        });
        source_->MoveNext();
        QVERIFY(source_->isEmpty());
        QCOMPARE(name.text(), QString());
        QCOMPARE(memo.text(), QString());
    }

    void closingGivesTheFileFree() {
        source_->Refresh();
        source_->close();
        QVERIFY(source_->isEmpty());
        QVERIFY(!source_->recordset().isOpen());
        source_->Refresh();
        QVERIFY(!source_->isEmpty());
    }

  private:
    [[nodiscard]] Database& db() { return store_->database(); }
    [[nodiscard]] QString balance() {
        return rowsOfSelection(db(), u"select ThisYearHD,ThisYearLeft from Base06 where EmpNo='00001'"_s)
            .value(0);
    }

    std::unique_ptr<TestStore> store_;
    std::unique_ptr<DataSource> source_;
};

QTEST_GUILESS_MAIN(DataSourceTest)
#include "DataSourceTest.moc"
