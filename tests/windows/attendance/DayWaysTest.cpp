#include "windows/attendance/DayJudgementFixture.h"

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString Results = u"TDBG3(1)"_s;

} // namespace

/// The ways to the window "當日判讀" and, within it, to the rows of a day.
class DayWaysTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void f9WorksFromTheTabsAndBelongsToThePageInFront();
    void theRowsOfADayLeadToOneAnother();
};

void DayWaysTest::f9WorksFromTheTabsAndBelongsToThePageInFront() {
    Form3Fixture fixture;
    addLateDay(fixture.database());
    fixture.database().execute(u"Delete * from Atte02"_s);
    insertRow(fixture.database(), u"Atte02"_s, withKey(u"10001"_s, {2001, 3, 4}, {}));
    fixture.open();
    QStringList titles;
    const auto note = [&](DayJudgement& dialog) { titles += control<QLabel>(dialog, u"DayTitle"_s).text(); };
    // The first row of each list is the current one, and the keyboard stays on the tabs.
    fixture.clickTab(2);
    QVERIFY(!fixture.at(Exceptions).hasFocus());
    expectJudgement(fixture, note);
    fixture.key(Qt::Key_F9);
    fixture.clickTab(3);
    QVERIFY(!fixture.at(Results).hasFocus());
    expectJudgement(fixture, note);
    fixture.key(Qt::Key_F9);
    // On the pages without results the key does nothing.
    for (const int tab : {0, 1}) {
        fixture.clickTab(tab);
        fixture.key(Qt::Key_F9);
    }
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(titles, QStringList({u"2001/3/5 10001 王小明"_s, u"2001/3/4 10001 王小明"_s}));
}

void DayWaysTest::theRowsOfADayLeadToOneAnother() {
    Form3Fixture fixture;
    addLateDay(fixture.database());
    // The same day on a second slot; the list stands on this row.
    fixture.database().execute(u"Update Atte02 Set TimeNo = 'B'"_s);
    insertRow(fixture.database(), u"Atte02"_s,
              {{u"EmpNo", u"10001"}, {u"UseDate", Day}, {u"TimeNo", u"A"}, {u"FH1", true}});
    fixture.open();
    fixture.clickTab(3);
    auto& results = fixture.at<TDBGrid>(Results);
    results.setFocus();
    for (const QString& row : fixture.shown(Results)) {
        if (row.contains(u"|B|"))
            break;
        fixture.key(Qt::Key_Down);
    }
    QStringList shown;
    const auto note = [&shown](DayJudgement& dialog) {
        const auto& other = control<QPushButton>(dialog, u"CmdOtherRow"_s);
        shown += dialog.account().TimeNo + u' ' + (other.isVisible() ? other.text() : u"-"_s);
    };
    QString focus;
    expectJudgement(fixture, [&](DayJudgement& dialog) {
        note(dialog); // the row from which it was opened
        click(control<QAbstractButton>(dialog, u"Day(5)"_s));
        note(dialog);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Right);
        note(dialog); // no row
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Left);
        note(dialog);
        while (dialog.focusWidget()->objectName() != u"CmdOtherRow")
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Space);
        note(dialog);
        focus = dialog.focusWidget()->objectName();
        click(control<QAbstractButton>(dialog, u"Day(5)"_s)); // stays with what was chosen
        note(dialog);
    });
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(shown, QStringList({u"B 時段 A 的記錄"_s, u"B 時段 A 的記錄"_s, u" -"_s, u"B 時段 A 的記錄"_s,
                                 u"A 時段 B 的記錄"_s, u"A 時段 B 的記錄"_s}));
    QCOMPARE(focus, u"CmdOtherRow"_s);
}

int main(int argc, char** argv) {
    return runTests<DayWaysTest>(argc, argv);
}

#include "DayWaysTest.moc"
