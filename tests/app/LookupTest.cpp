#include "app/LookupFixture.h"
#include "app/controls/TDBGridModel.h"
#include "store/DataSource.h"

#include <QInputMethodEvent>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

using enum LookupKind;

/// What is stated of a lookup.
struct Stated {
    LookupKind kind;
    QString name;
    QString title;
    QString table;
    QString codeColumn;
    QString nameColumn;
    QString captions;
    QString labels;
    QString* result;
};

const QList<Stated>& allStated() {
    static const QList<Stated> stated{
        {QFrmHoliNo, u"QFrmHoliNo"_s, u"假別查詢"_s, u"Holi01"_s, u"HoliNo"_s, u"HoliType"_s,
         u"假別代碼|假別名稱"_s, u"假別代碼：|假別名稱："_s, &gPickHoliNo},
        {QFrmTimeNo, u"QFrmTimeNo"_s, u"時段代碼查詢"_s, u"Base04"_s, u"TimeNo"_s, u"TimeName"_s,
         u"時段代碼|時段名稱"_s, u"時段代碼：|時段名稱："_s, &gPickTimeNo},
        {QFrmUnitNo, u"QFrmUnitNo"_s, u"單位代碼查詢"_s, u"Base02"_s, u"UnitNo"_s, u"Unit"_s,
         u"單位代碼|單位名稱"_s, u"單位代碼：|單位名稱："_s, &gPickUnitNo},
        {QFrmClsNo, u"QFrmClsNo"_s, u"班別代碼查詢"_s, u"Base05"_s, u"ClsNo"_s, u"ClassName"_s,
         u"班別代碼|班別名稱"_s, u"班別代碼：|班別名稱："_s, &gPickClsNo},
        {QFrmTitleNo, u"QFrmTitleNo"_s, u"職稱代碼查詢"_s, u"Base01"_s, u"TitleNo"_s, u"Title"_s,
         u"職稱代碼|職稱"_s, u"職稱代碼：|職務名稱："_s, &gPickTitleNo},
        {QFrmWorkNo, u"QFrmWorkNo"_s, u"聘僱類別查詢"_s, u"Base03"_s, u"WorkNo"_s, u"WorkType"_s,
         u"聘雇代碼|聘雇類別"_s, u"聘僱別碼：|聘僱類別："_s, &gPickWorkNo},
        {QFrmSuitNo, u"QFrmSuitNo"_s, u"Form5"_s, u"Syst03"_s, u"SuitNo"_s, u"SuitRule"_s,
         u"適用代碼|適用辦法"_s, u"適用代碼：|適用辦法："_s, &gPickSuitNo},
        {QFrmCnlNo, u"QFrmCnlNo"_s, u"Form9"_s, u"Canc01"_s, u"CnlNo"_s, u"CnlName"_s, u"註銷代碼|註銷原因"_s,
         u"註銷代碼：|註銷原因："_s, &gPickCnlNo},
        {QFrmEmpNO, u"QFrmEmpNO"_s, u"員工代碼查詢"_s, u"Base06"_s, u"EmpNo"_s, u"EmpName"_s,
         u"員工代碼|姓名|離職"_s, u"員工代碼：|姓       名："_s, &gPickEmpNo}};
    return stated;
}

const Stated& statedOf(int kind) {
    return allStated().at(kind);
}

/// Two rows, put in against the order of their codes, and no other.
void addTwoRows(Database& database, const Stated& stated) {
    database.execute(u"delete * from "_s + stated.table);
    insertRow(database, stated.table, {{stated.codeColumn, u"2"}, {stated.nameColumn, u"乙"}});
    insertRow(database, stated.table, {{stated.codeColumn, u"1"}, {stated.nameColumn, u"甲"}});
}

} // namespace

/// All nine lookups alike.
class LookupTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void textsAreTheStatedOnes_data() { addKinds(); }
    void textsAreTheStatedOnes();
    void okHandsOverTheCodeOfTheCurrentRow_data() { addKinds(); }
    void okHandsOverTheCodeOfTheCurrentRow();
    void otherEndsLeaveTheResult_data();
    void otherEndsLeaveTheResult();
    void anEmptyTableGivesAnEmptyText_data() { addKinds(); }
    void anEmptyTableGivesAnEmptyText();
    void theFirstColumnOfTheTitlesStaysEmpty();
    void enterOnARowTakesIt_data() { addKinds(); }
    void enterOnARowTakesIt();
    void aDoubleClickOnARowTakesIt_data() { addKinds(); }
    void aDoubleClickOnARowTakesIt();
    void anEmptyListHasNothingToTake();
    void noKeyReadsARowOutOfSight();
    void worksByKeyboardAlone();
    void theSharedConnectionStaysOpen();
    void aFailedLoadIsToldAndTheListEmpty();
    void aStoreThatCannotBeOpenedIsARunTimeError();
    void controlsAreNamedAndReached_data() { addKinds(); }
    void controlsAreNamedAndReached();

  private:
    static void addKinds() {
        QTest::addColumn<int>("kind");
        for (int kind = 0; kind < allStated().size(); ++kind)
            QTest::addRow("%s", qUtf8Printable(statedOf(kind).name)) << kind;
    }
};

void LookupTest::textsAreTheStatedOnes() {
    QFETCH(const int, kind);
    const Stated& stated = statedOf(kind);
    LookupFixture fixture;
    fixture.ask(stated.kind, [&stated](QWidget& dialog) {
        QVERIFY(dialog.isModal());
        QCOMPARE(dialog.objectName(), stated.name);
        QCOMPARE(dialog.windowTitle(), stated.title);
        QCOMPARE(listCaptionsOf(dialog).join(u'|'), stated.captions);
        QCOMPARE(labelOf(dialog, 1) + u'|' + labelOf(dialog, 2), stated.labels);
        QCOMPARE(control<QPushButton>(dialog, u"Command1(0)"_s).text(), u"確定"_s);
        QCOMPARE(control<QPushButton>(dialog, u"Command1(1)"_s).text(), u"取消"_s);
        QCOMPARE(dialog.findChildren<QLineEdit*>().size(), stated.kind == QFrmEmpNO ? 2 : 0);
        clickCancel(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
}

void LookupTest::okHandsOverTheCodeOfTheCurrentRow() {
    QFETCH(const int, kind);
    const Stated& stated = statedOf(kind);
    LookupFixture fixture;
    addTwoRows(fixture.database(), stated);
    const QString third = stated.kind == QFrmEmpNO ? u"|"_s : QString();
    const bool isTitle = stated.kind == QFrmTitleNo;
    fixture.ask(stated.kind, [&](QWidget& dialog) {
        QCOMPARE(listOf(dialog), QStringList({(isTitle ? u"|甲"_s : u"1|甲"_s) + third,
                                              (isTitle ? u"|乙"_s : u"2|乙"_s) + third}));
        QCOMPARE(currentOf(dialog), u"1|甲"_s);
        clickRow(dialog, 1);
        QCOMPARE(currentOf(dialog), u"2|乙"_s);
        QCOMPARE(*stated.result, QString());
        clickOk(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(*stated.result, u"2"_s);
    // No other kind's value has changed.
    for (const Stated& other : allStated())
        QCOMPARE(*other.result, other.kind == stated.kind ? u"2"_s : QString());
}

void LookupTest::otherEndsLeaveTheResult_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("way");
    for (int kind = 0; kind < allStated().size(); ++kind) {
        for (const auto* way : {"button", "escape", "close box"})
            QTest::addRow("%s, %s", qUtf8Printable(statedOf(kind).name), way)
                << kind << QString::fromLatin1(way);
    }
}

void LookupTest::otherEndsLeaveTheResult() {
    QFETCH(const int, kind);
    QFETCH(const QString, way);
    const Stated& stated = statedOf(kind);
    LookupFixture fixture;
    addTwoRows(fixture.database(), stated);
    *stated.result = u"earlier"_s;
    fixture.ask(stated.kind, [&way](QWidget& dialog) {
        clickRow(dialog, 1);
        if (way == u"button")
            clickCancel(dialog);
        else if (way == u"escape")
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
        else
            dialog.windowHandle()->close();
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    for (const Stated& other : allStated())
        QCOMPARE(*other.result, other.kind == stated.kind ? u"earlier"_s : QString());
}

void LookupTest::anEmptyTableGivesAnEmptyText() {
    QFETCH(const int, kind);
    const Stated& stated = statedOf(kind);
    LookupFixture fixture;
    fixture.database().execute(u"delete * from "_s + stated.table);
    *stated.result = u"earlier"_s;
    fixture.ask(stated.kind, [](QWidget& dialog) {
        QCOMPARE(listOf(dialog), QStringList());
        QCOMPARE(currentOf(dialog), u"|"_s);
        clickOk(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(*stated.result, QString());
}

void LookupTest::theFirstColumnOfTheTitlesStaysEmpty() {
    LookupFixture fixture;
    insertRow(fixture.database(), u"Base01"_s, {{u"TitleNo", u"0100"}, {u"Title", u"經理"}});
    fixture.ask(QFrmTitleNo, [](QWidget& dialog) {
        QCOMPARE(listOf(dialog), QStringList{u"|經理"_s});
        QCOMPARE(labelOf(dialog, 3), u"0100"_s);
        clickOk(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gPickTitleNo, u"0100"_s);
}

void LookupTest::enterOnARowTakesIt() {
    QFETCH(const int, kind);
    const Stated& stated = statedOf(kind);
    LookupFixture fixture;
    addTwoRows(fixture.database(), stated);
    *stated.result = u"earlier"_s;
    fixture.ask(stated.kind, [&stated](QWidget& dialog) {
        control(dialog, u"TDBGrid2"_s).setFocus();
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Down);
        QCOMPARE(currentOf(dialog), u"2|乙"_s);
        QVERIFY(dialog.isVisible());
        QCOMPARE(*stated.result, u"earlier"_s);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
        QVERIFY(!dialog.isVisible());
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    for (const Stated& other : allStated())
        QCOMPARE(*other.result, other.kind == stated.kind ? u"2"_s : QString());
}

void LookupTest::aDoubleClickOnARowTakesIt() {
    QFETCH(const int, kind);
    const Stated& stated = statedOf(kind);
    LookupFixture fixture;
    addTwoRows(fixture.database(), stated);
    *stated.result = u"earlier"_s;
    fixture.ask(stated.kind, [&stated](QWidget& dialog) {
        clickRow(dialog, 1); // once is a choice alone
        QVERIFY(dialog.isVisible());
        QCOMPARE(*stated.result, u"earlier"_s);
        auto& grid = control<TDBGrid>(dialog, u"TDBGrid2"_s);
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                           grid.visualRect(grid.model()->index(1, 1)).center());
        QVERIFY(!dialog.isVisible());
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    for (const Stated& other : allStated())
        QCOMPARE(*other.result, other.kind == stated.kind ? u"2"_s : QString());
}

void LookupTest::anEmptyListHasNothingToTake() {
    LookupFixture fixture;
    gPickUnitNo = u"earlier"_s;
    fixture.ask(QFrmUnitNo, [](QWidget& dialog) {
        auto& grid = control<TDBGrid>(dialog, u"TDBGrid2"_s);
        grid.setFocus();
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Return);
        QTest::mouseDClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier, {20, 20});
        QVERIFY(dialog.isVisible());
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gPickUnitNo, u"earlier"_s);
}

void LookupTest::noKeyReadsARowOutOfSight() {
    LookupFixture fixture;
    {
        const Stage stage(fixture.database());
        for (int code = 1000; code < 4000; ++code)
            fixture.database().execute(u"insert into Base02(UnitNo,Unit)values('%1','單位')"_s.arg(code));
    }
    fixture.ask(QFrmUnitNo, [](QWidget& dialog) {
        auto& grid = control<TDBGrid>(dialog, u"TDBGrid2"_s);
        const auto& model = static_cast<const TDBGridModel&>(*grid.model());
        grid.setFocus();
        grid.grab();
        const qint64 before = model.rowsRead();
        QVERIFY(before > 0);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_X);
        QInputMethodEvent event;
        event.setCommitString(u"單"_s);
        QCoreApplication::sendEvent(&grid, &event);
        QCOMPARE(model.rowsRead(), before);
        QCOMPARE(currentOf(dialog), u"1000|單位"_s);
        QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
}

void LookupTest::worksByKeyboardAlone() {
    LookupFixture fixture;
    addTwoRows(fixture.database(), statedOf(2));
    fixture.ask(QFrmUnitNo, [](QWidget& dialog) {
        QWindow* window = dialog.windowHandle();
        QTest::keyClick(window, Qt::Key_Down);
        QTest::keyClick(window, Qt::Key_Tab);
        QCOMPARE(dialog.focusWidget()->objectName(), u"Command1(0)"_s);
        QTest::keyClick(window, Qt::Key_Return);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(gPickUnitNo, u"2"_s);
}

void LookupTest::theSharedConnectionStaysOpen() {
    LookupFixture fixture;
    QVERIFY(!gDbOpen);
    fixture.ask(QFrmHoliNo, clickCancel);
    QVERIFY(gDbOpen);
    QCOMPARE(fixture.answers.trouble(), QString());
}

void LookupTest::aFailedLoadIsToldAndTheListEmpty() {
    LookupFixture fixture;
    OpenDB();
    gDbPath = u"/nowhere/DB/"_s;
    gPickHoliNo = u"earlier"_s;
    fixture.answers.expectMsgBox();
    fixture.ask(QFrmHoliNo, [](QWidget& dialog) {
        QCOMPARE(listOf(dialog), QStringList());
        clickOk(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constFirst().title, u"異常警告"_s);
    QCOMPARE(fixture.answers.seen().constFirst().text, u"資料庫開啟異常,請洽程式設計師"_s);
    QCOMPARE(gPickHoliNo, QString());
    // It stands until the next click on the toolbar.
    QVERIFY(gOpenFailed);
}

void LookupTest::aStoreThatCannotBeOpenedIsARunTimeError() {
    LookupFixture fixture;
    gDbPath = u"/nowhere/DB/"_s;
    QVERIFY_EXCEPTION_THROWN(Lookup::ask(QFrmHoliNo, &fixture.window()), RunTimeError);
    QVERIFY(!gOpenFailed);
    QVERIFY(fixture.answers.seen().isEmpty());
}

void LookupTest::controlsAreNamedAndReached() {
    QFETCH(const int, kind);
    const Stated& stated = statedOf(kind);
    LookupFixture fixture;
    fixture.ask(stated.kind, [&stated](QWidget& dialog) {
        QVERIFY(dialog.findChild<DataSource*>(u"Data1"_s));
        QStringList expected{u"TDBGrid2"_s, u"Command1(0)"_s, u"Command1(1)"_s};
        if (stated.kind == QFrmEmpNO)
            expected = QStringList{u"Text1"_s, u"Text2"_s} + expected;
        QStringList order;
        for (qsizetype stop = 0; stop < expected.size(); ++stop) {
            order << dialog.focusWidget()->objectName();
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
        }
        QCOMPARE(order, expected);
        clickCancel(dialog);
    });
    QCOMPARE(fixture.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<LookupTest>(argc, argv);
}

#include "LookupTest.moc"
