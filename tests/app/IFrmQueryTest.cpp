#include "app/IFrmQuery.h"
#include "app/LookupFixture.h"
#include "app/controls/TDBMask.h"
#include "store/Clock.h"

#include <QRadioButton>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QDate Before(1950, 1, 1);
const QDate CancelDate(2038, 1, 1);
const QDate Day(2001, 3, 5);

/// The main window with two employees and two units; the shared values as an earlier query has left them.
class QueryFixture : public LookupFixture {
  public:
    QueryFixture() {
        addEmployee(database(), u"10001"_s);
        addEmployee(database(), u"10002"_s);
        insertRow(database(), u"Base02"_s, {{u"UnitNo", u"10"}, {u"Unit", u"總務科"}});
        insertRow(database(), u"Base02"_s, {{u"UnitNo", u"20"}, {u"Unit", u"人事室"}});
        gQueryKind = 3;
        gDate1 = Before;
        gPickEmpNo = u"earlier"_s;
        gPickUnitNo = u"earlier"_s;
    }
    ~QueryFixture() { gQueryKind = 0; }

    /// Opens the dialog, chooses the kind and presses OK; below 0 chooses nothing.
    void choose(int kind) {
        answers.expect(u"IFrmQuery"_s, [kind](QWidget& dialog) {
            if (kind >= 0)
                click(control(dialog, u"Option1(%1)"_s.arg(kind)));
            clickOk(dialog);
        });
    }
    void expectDate() {
        answers.expect(u"FrmI1Date"_s, [](QWidget& dialog) {
            QTest::keyClicks(&control<TDBMask>(dialog, u"TDBMask1(0)"_s), u"900305"_s);
            clickOk(dialog);
        });
    }
    void expectLookup(const QString& name) {
        answers.expect(name, [](QWidget& dialog) {
            clickRow(dialog, 1);
            clickOk(dialog);
        });
    }
    void ask() { IFrmQuery::ask(&window()); }

    /// The names of the dialogs that have come, in order.
    [[nodiscard]] QStringList seen() const {
        QStringList names;
        for (const SeenPrompt& prompt : answers.seen())
            names << prompt.objectName;
        return names;
    }
};

/// The four shared values on one line.
QString sharedValues() {
    return u"%1|%2|%3|%4"_s.arg(gQueryKind).arg(gDate1.toString(Qt::ISODate), gPickEmpNo, gPickUnitNo);
}

} // namespace

class IFrmQueryTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init();
    void cleanup();
    void captionsAreTheStatedOnes();
    void eachKindLeadsToItsDialogs_data();
    void eachKindLeadsToItsDialogs();
    void theDialogsStandOverTheOpenOne();
    void okWithoutAChoiceSetsNothing();
    void otherEndsLeaveTheLastKind_data();
    void otherEndsLeaveTheLastKind();
    void aCancelledDateIsTheSentinelAndTheLookupFollows_data();
    void aCancelledDateIsTheSentinelAndTheLookupFollows();
    void aCancelledLookupLeavesTheEarlierPick();
    void statementsAreTheStatedOnes_data();
    void statementsAreTheStatedOnes();
    void worksByKeyboardAlone();
    void controlsAreNamedAndReached();
};

void IFrmQueryTest::init() {
    clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
}

void IFrmQueryTest::cleanup() {
    clock::setSource({});
}

void IFrmQueryTest::captionsAreTheStatedOnes() {
    QueryFixture fixture;
    fixture.answers.expect(u"IFrmQuery"_s, [](QWidget& dialog) {
        QVERIFY(dialog.isModal());
        QCOMPARE(dialog.windowTitle(), u"查詢選項"_s);
        QStringList options;
        for (int index = 0; index < 5; ++index) {
            const auto& option = control<QRadioButton>(dialog, u"Option1(%1)"_s.arg(index));
            QVERIFY(!option.isChecked());
            options << option.text();
        }
        QCOMPARE(options, QStringList({u"全部"_s, u"日期查詢"_s, u"日期/員工查詢"_s, u"員工查詢"_s,
                                       u"日期/單位查詢"_s}));
        QCOMPARE(control<QPushButton>(dialog, u"Command1(0)"_s).text(), u"確定"_s);
        QCOMPARE(control<QPushButton>(dialog, u"Command1(1)"_s).text(), u"取消"_s);
        clickCancel(dialog);
    });
    fixture.ask();
    QCOMPARE(fixture.answers.trouble(), QString());
}

void IFrmQueryTest::eachKindLeadsToItsDialogs_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QStringList>("dialogs");
    QTest::addColumn<QString>("values");
    QTest::newRow("all") << 0 << QStringList() << u"0|1950-01-01|earlier|earlier"_s;
    QTest::newRow("day") << 1 << QStringList{u"FrmI1Date"_s} << u"1|2001-03-05|earlier|earlier"_s;
    QTest::newRow("day and employee")
        << 2 << QStringList{u"FrmI1Date"_s, u"QFrmEmpNO"_s} << u"2|2001-03-05|10002|earlier"_s;
    QTest::newRow("employee") << 3 << QStringList{u"QFrmEmpNO"_s} << u"3|1950-01-01|10002|earlier"_s;
    QTest::newRow("day and unit") << 4 << QStringList{u"FrmI1Date"_s, u"QFrmUnitNo"_s}
                                  << u"4|2001-03-05|earlier|20"_s;
}

void IFrmQueryTest::eachKindLeadsToItsDialogs() {
    QFETCH(const int, kind);
    QFETCH(const QStringList, dialogs);
    QFETCH(const QString, values);
    QueryFixture fixture;
    fixture.choose(kind);
    for (const QString& dialog : dialogs) {
        if (dialog == u"FrmI1Date")
            fixture.expectDate();
        else
            fixture.expectLookup(dialog);
    }
    fixture.ask();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.seen(), QStringList{u"IFrmQuery"_s} + dialogs);
    QCOMPARE(sharedValues(), values);
}

void IFrmQueryTest::theDialogsStandOverTheOpenOne() {
    QueryFixture fixture;
    fixture.choose(1);
    fixture.answers.expect(u"FrmI1Date"_s, [](QWidget& dialog) {
        QVERIFY(dialog.parentWidget());
        QCOMPARE(dialog.parentWidget()->objectName(), u"IFrmQuery"_s);
        QVERIFY(dialog.parentWidget()->isVisible());
        QCOMPARE(gQueryKind, 1);
        clickOk(dialog);
    });
    fixture.ask();
    QCOMPARE(fixture.answers.trouble(), QString());
}

void IFrmQueryTest::okWithoutAChoiceSetsNothing() {
    QueryFixture fixture;
    fixture.choose(-1);
    fixture.ask();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.seen(), QStringList{u"IFrmQuery"_s});
    QCOMPARE(sharedValues(), u"3|1950-01-01|earlier|earlier"_s);
}

void IFrmQueryTest::otherEndsLeaveTheLastKind_data() {
    QTest::addColumn<QString>("way");
    for (const auto* way : {"button", "escape", "close box"})
        QTest::addRow("%s", way) << QString::fromLatin1(way);
}

void IFrmQueryTest::otherEndsLeaveTheLastKind() {
    QFETCH(const QString, way);
    QueryFixture fixture;
    fixture.answers.expect(u"IFrmQuery"_s, [&way](QWidget& dialog) {
        click(control(dialog, u"Option1(1)"_s));
        if (way == u"button")
            clickCancel(dialog);
        else if (way == u"escape")
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Escape);
        else
            dialog.windowHandle()->close();
    });
    fixture.ask();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.seen(), QStringList{u"IFrmQuery"_s});
    QCOMPARE(sharedValues(), u"3|1950-01-01|earlier|earlier"_s);
}

void IFrmQueryTest::aCancelledDateIsTheSentinelAndTheLookupFollows_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("lookup");
    QTest::addColumn<QString>("values");
    QTest::newRow("day") << 1 << QString() << u"1|2038-01-01|earlier|earlier"_s;
    QTest::newRow("day and employee") << 2 << u"QFrmEmpNO"_s << u"2|2038-01-01|10002|earlier"_s;
    QTest::newRow("day and unit") << 4 << u"QFrmUnitNo"_s << u"4|2038-01-01|earlier|20"_s;
}

void IFrmQueryTest::aCancelledDateIsTheSentinelAndTheLookupFollows() {
    QFETCH(const int, kind);
    QFETCH(const QString, lookup);
    QFETCH(const QString, values);
    QueryFixture fixture;
    fixture.choose(kind);
    fixture.answers.expectClick(u"FrmI1Date"_s, u"Command1(1)"_s);
    if (!lookup.isEmpty())
        fixture.expectLookup(lookup);
    fixture.ask();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(sharedValues(), values);
}

void IFrmQueryTest::aCancelledLookupLeavesTheEarlierPick() {
    QueryFixture fixture;
    fixture.choose(2);
    fixture.expectDate();
    fixture.answers.expectClick(u"QFrmEmpNO"_s, u"Command1(1)"_s);
    fixture.ask();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(sharedValues(), u"2|2001-03-05|earlier|earlier"_s);
}

void IFrmQueryTest::statementsAreTheStatedOnes_data() {
    QTest::addColumn<int>("kind");
    QTest::addColumn<QString>("table");
    QTest::addColumn<QString>("dateColumn");
    QTest::addColumn<bool>("byUnit");
    QTest::addColumn<QString>("statement");
    QTest::newRow("all exceptions") << 0 << u"Atte03"_s << u"UseDate"_s << true << u"Select * from Atte03"_s;
    QTest::newRow("results of a day")
        << 1 << u"Atte02"_s << u"UseDate"_s << true
        << u" Select * from Atte02  where UseDate = #2001/3/5# Order by  EmpNo"_s;
    QTest::newRow("write-offs of a day and employee")
        << 2 << u"Canc02"_s << u"CnlDate"_s << false
        << u" Select * from Canc02  where CnlDate = #2001/3/5#     and EmpNo = '10002'  Order by EmpNo,CnlDate"_s;
    QTest::newRow("overtime of an employee")
        << 3 << u"Over01"_s << u"OverDate"_s << false
        << u" Select * from Over01  where EmpNo = '10002' Order by OverDate "_s;
    QTest::newRow("exceptions of a day and unit")
        << 4 << u"Atte03"_s << u"UseDate"_s << true
        << u" Select Atte03.* from Atte03,Base06 where UseDate = #2001/3/5#     and Base06.EmpNo = "
           u"Atte03.EmpNo"
           u"     and Base06.UnitNo = '20'  Order by base06.EmpNo,UseDate"_s;
    QTest::newRow("no write-offs of a unit") << 4 << u"Canc02"_s << u"CnlDate"_s << false << QString();
    QTest::newRow("no overtime of a unit") << 4 << u"Over01"_s << u"OverDate"_s << false << QString();
    QTest::newRow("no other kind") << 5 << u"Atte03"_s << u"UseDate"_s << true << QString();
}

void IFrmQueryTest::statementsAreTheStatedOnes() {
    QFETCH(const int, kind);
    QFETCH(const QString, table);
    QFETCH(const QString, dateColumn);
    QFETCH(const bool, byUnit);
    QFETCH(const QString, statement);
    TestStore store;
    gQueryKind = kind;
    gDate1 = Day;
    gPickEmpNo = u"10002"_s;
    gPickUnitNo = u"20"_s;
    const auto made = queryStatement(table, dateColumn, byUnit ? UnitQuery::ByDayAndUnit : UnitQuery::None);
    QCOMPARE(made.has_value(), !statement.isNull());
    if (made) {
        QCOMPARE(*made, statement);
        QVERIFY(store.database().openRecordset(*made).AtEOF());
    }
    gQueryKind = 0;
    clearPicks();
}

void IFrmQueryTest::worksByKeyboardAlone() {
    QueryFixture fixture;
    fixture.answers.expect(u"IFrmQuery"_s, [](QWidget& dialog) {
        QWindow* window = dialog.windowHandle();
        QCOMPARE(dialog.focusWidget()->objectName(), u"Option1(0)"_s);
        QTest::keyClick(window, Qt::Key_Down);
        QTest::keyClick(window, Qt::Key_Down);
        QVERIFY(control<QRadioButton>(dialog, u"Option1(2)"_s).isChecked());
        QTest::keyClick(window, Qt::Key_Up);
        QVERIFY(control<QRadioButton>(dialog, u"Option1(1)"_s).isChecked());
        QTest::keyClick(window, Qt::Key_Return);
        QCOMPARE(dialog.focusWidget()->objectName(), u"Command1(0)"_s);
        QTest::keyClick(window, Qt::Key_Return);
    });
    fixture.expectDate();
    fixture.ask();
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(sharedValues(), u"1|2001-03-05|earlier|earlier"_s);
}

void IFrmQueryTest::controlsAreNamedAndReached() {
    QueryFixture fixture;
    fixture.answers.expect(u"IFrmQuery"_s, [](QWidget& dialog) {
        QStringList order;
        // The options are one stop: the arrow keys move among them.
        for (int stop = 0; stop < 3; ++stop) {
            order << dialog.focusWidget()->objectName();
            QTest::keyClick(dialog.windowHandle(), Qt::Key_Tab);
        }
        QCOMPARE(order, QStringList({u"Option1(0)"_s, u"Command1(0)"_s, u"Command1(1)"_s}));
        clickCancel(dialog);
    });
    fixture.ask();
    QCOMPARE(fixture.answers.trouble(), QString());
}

int main(int argc, char** argv) {
    return runTests<IFrmQueryTest>(argc, argv);
}

#include "IFrmQueryTest.moc"
