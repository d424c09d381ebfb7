#include "store/Clock.h"
#include "windows/attendance/DayJudgementFixture.h"
#include "windows/attendance/DayMarks.h"
#include "windows/attendance/DayPicture.h"
#include "windows/attendance/MonthStrip.h"

#include <QAction>
#include <QFile>
#include <QShortcut>

using namespace Qt::StringLiterals;
using namespace pontrel;
using namespace pontrel::test;

namespace {

const QString Results = u"TDBG3(1)"_s;

QAbstractButton& dayIn(QWidget& dialog, int day) {
    return control<QAbstractButton>(dialog, u"Day(%1)"_s.arg(day));
}

/// Tooltips of the picture's marks, which assistive technology reads as well.
QStringList marksIn(QWidget& dialog) {
    QStringList texts;
    for (int mark = 0;; ++mark) {
        const auto* view = dialog.findChild<QWidget*>(u"DayMark(%1)"_s.arg(mark));
        if (!view)
            return texts;
        texts += view->toolTip() == view->accessibleName() ? view->toolTip() : u"differs"_s;
    }
}

QString focusIn(const QWidget& dialog) {
    return dialog.focusWidget() ? dialog.focusWidget()->objectName() : QString();
}

} // namespace

/// The window "當日判讀", over the exceptions and the results.
class DayJudgementTest : public QObject {
    Q_OBJECT

  private Q_SLOTS:
    void init() {
        clock::setSource([] { return QDateTime(QDate(2026, 3, 5), QTime(9, 30)); });
    }
    void cleanup() { clock::setSource({}); }

    void f9ExplainsTheExceptionInFocus();
    void theActionOfTheListExplainsTheResult();
    void theRowInFocusIsExplainedWhereTheOtherListDiffers();
    void withoutARowNothingOpens();
    void leaveEnteredSinceClearsTheExceptionAtARecalculation();
    void thePictureHasAMarkForEachThing();
    void anOvertimePunchIsAHollowMark();
    void thePictureGoesBeyondTheDayForANightSlot();
    void thePictureStandsOnDarkPalettes();
    void arrowKeysLeadThroughTheMonth();
    void aClickLeadsToADay();
    void theKeyboardReachesEverything();
    void aStoreThatCannotBeReadIsTold();
    void aDayThatCannotBeReadIsNotShownAsChosen();
};

void DayJudgementTest::f9ExplainsTheExceptionInFocus() {
    LateDay fixture;
    const QStringList before = dumpDailyTables(fixture.database());
    fixture.openExceptions();
    QString title;
    QString heading;
    QString text;
    expectJudgement(fixture, [&](DayJudgement& dialog) {
        title = dialog.windowTitle();
        heading = control<QLabel>(dialog, u"DayTitle"_s).text();
        text = sentencesIn(dialog);
    });
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(title, u"當日判讀"_s);
    QCOMPARE(heading, u"2001/3/5 10001 王小明"_s);
    QVERIFY2(text.contains(u"時段 A 日班，4 卡，無彈性"_s), qPrintable(text));
    QVERIFY2(text.contains(u"08:13 上班，超過 08:00＋緩衝 5 分，遲到 8 分"_s), qPrintable(text));
    QVERIFY2(text.contains(u"上午上班 08:13，遲到 8 分，異常"_s), qPrintable(text));
    QVERIFY2(text.contains(u"現在重新計算，結果不變"_s), qPrintable(text));
    // The keyboard is back where it was, and nothing has changed.
    QTRY_COMPARE(fixture.focused(), Exceptions);
    QCOMPARE(dumpDailyTables(fixture.database()), before);
}

void DayJudgementTest::theActionOfTheListExplainsTheResult() {
    LateDay fixture;
    fixture.open();
    fixture.clickTab(3);
    QAction* judge = nullptr;
    for (QAction* action : fixture.at(Results).actions()) {
        if (action->text() == u"當日判讀")
            judge = action;
    }
    QVERIFY(judge);
    QCOMPARE(judge->shortcut(), QKeySequence(Qt::Key_F9)); // which the menu shows beside it
    QString text;
    expectJudgement(fixture, [&](DayJudgement& dialog) { text = sentencesIn(dialog); });
    judge->trigger();
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY(text.contains(u"當日列為異常"_s));
}

void DayJudgementTest::theRowInFocusIsExplainedWhereTheOtherListDiffers() {
    Form3Fixture fixture;
    addLateDay(fixture.database());
    fixture.database().execute(u"Update Atte02 Set Time1 = #08:01:00#"_s);
    fixture.open();
    QStringList texts;
    const auto look = [&](DayJudgement& dialog) { texts += sentencesIn(dialog); };
    fixture.clickTab(2);
    fixture.at(Exceptions).setFocus();
    expectJudgement(fixture, look);
    fixture.key(Qt::Key_F9);
    fixture.clickTab(3);
    fixture.at(Results).setFocus();
    expectJudgement(fixture, [&](DayJudgement& dialog) {
        look(dialog);
        // To the next day and back.
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Right);
        look(dialog);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Left);
        look(dialog);
    });
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(texts.size(), 4);
    QVERIFY2(texts.at(0).contains(u"上午上班 08:13，遲到 8 分，異常\n"_s), qPrintable(texts.at(0)));
    QVERIFY2(texts.at(0).contains(u"以下判讀「異常處理」的記錄"_s), qPrintable(texts.at(0)));
    QVERIFY2(texts.at(1).contains(u"上午上班 08:01，遲到 8 分，異常\n"_s), qPrintable(texts.at(1)));
    QVERIFY2(texts.at(1).contains(u"以下判讀「勤惰查詢」的記錄"_s), qPrintable(texts.at(1)));
    QVERIFY(!texts.at(2).contains(u"以下判讀"_s));
    QCOMPARE(texts.at(3), texts.at(1));
}

void DayJudgementTest::withoutARowNothingOpens() {
    Form3Fixture fixture;
    fixture.open();
    fixture.clickTab(2);
    fixture.at(Exceptions).setFocus();
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY(fixture.answers.seen().isEmpty());
}

void DayJudgementTest::leaveEnteredSinceClearsTheExceptionAtARecalculation() {
    Form3Fixture fixture;
    addExceptions(fixture.database());
    addMorningLeave(fixture.database(), u"10001"_s);
    fixture.open();
    fixture.clickTab(2);
    fixture.expectKind(0);
    fixture.press(u"CmdCtrl(3)"_s);
    fixture.at(Exceptions).setFocus();
    QCOMPARE(fixture.shown(Exceptions).size(), 3);
    QString before;
    expectJudgement(fixture, [&](DayJudgement& dialog) { before = sentencesIn(dialog); });
    fixture.key(Qt::Key_Home, Qt::ControlModifier);
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY2(before.contains(u"上午上班沒有打卡、請假或註銷，列為異常"_s), qPrintable(before));
    QVERIFY2(before.contains(u"現在重新計算，當日就不再是異常\n上午上班請假：否 → 是\n上午下班請假：否 → 是\n"
                             "上午上班異常：是 → 否\n上午下班異常：是 → 否\n異常：是 → 否\n"_s),
             qPrintable(before));
    // What was said is what comes.
    fixture.expectDate(u"900305"_s);
    fixture.answers.expectMsgBox();
    fixture.press(u"CmdCtrl(5)"_s);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.shown(Exceptions).size(), 1);
    QVERIFY(fixture.shown(Exceptions).constFirst().contains(u"10002"_s));
    fixture.clickTab(3);
    fixture.at(Results).setFocus();
    fixture.key(Qt::Key_Home, Qt::ControlModifier);
    QString after;
    expectJudgement(fixture, [&](DayJudgement& dialog) { after = sentencesIn(dialog); });
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY2(after.contains(u"上午上班 無，請假\n上午下班 無，請假\n"_s), qPrintable(after));
    QVERIFY2(after.contains(u"遲到.早退 0，異常 否"_s), qPrintable(after));
    QVERIFY2(after.contains(u"當日不是異常，重新計算不會改變這一天"_s), qPrintable(after));
}

void DayJudgementTest::thePictureHasAMarkForEachThing() {
    LateDay fixture;
    addLeaveDay(fixture.database(), u"10001"_s, Day, u"03"_s, QTime(13, 0), QTime(17, 0));
    fixture.openExceptions();
    QStringList marks;
    QList<QRect> places;
    QRect area;
    expectJudgement(fixture, [&](DayJudgement& dialog) {
        marks = marksIn(dialog);
        auto& picture = control<DayPicture>(dialog, u"DayPicture"_s);
        area = picture.rect();
        for (int mark = 0; mark < marks.size(); ++mark)
            places += control<QWidget>(dialog, u"DayMark(%1)"_s.arg(mark)).geometry();
        QCOMPARE(picture.accessibleDescription(), marks.join(u'；'));
    });
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(
        marks,
        QStringList({u"上午標準下班至下午標準上班 12:00 至 13:00"_s, u"上午上班：收 07:00 至 08:30 的打卡"_s,
                     u"上午下班：收 11:45 至 12:30 的打卡"_s, u"下午上班：收 12:31 至 13:30 的打卡"_s,
                     u"下午下班：收 16:45 至 23:00 的打卡"_s, u"請假 03 13:00 至 17:00"_s,
                     u"上午上班遲到 8 分"_s, u"上午上班標準時間 08:00"_s, u"上午下班標準時間 12:00"_s,
                     u"下午上班標準時間 13:00"_s, u"下午下班標準時間 17:00"_s, u"08:13 打卡，列為上午上班"_s,
                     u"08:20 打卡，上午上班已有 08:13，不再列入"_s, u"12:15 打卡，列為上午下班"_s,
                     u"13:00 打卡，列為下午上班"_s, u"17:00 打卡，列為下午下班"_s}));
    for (const QRect& place : places)
        QVERIFY(area.contains(place) && place.width() >= 3 && place.height() >= 8);
    // The punch stands at the end of its lateness, behind the standard time, within its window.
    QVERIFY(places.at(1).contains(places.at(11).center()));
    QVERIFY(places.at(7).center().x() < places.at(11).center().x());
    QVERIFY(std::abs(places.at(6).right() - places.at(11).center().x()) <= 2);
    // The punch that was not taken lies in a row of its own.
    QVERIFY(places.at(12).top() > places.at(4).bottom());
}

void DayJudgementTest::anOvertimePunchIsAHollowMark() {
    Form3Fixture fixture;
    addPunch(fixture.database(), u"10001"_s, Day, QTime(17, 38), u"081"_s);
    addLateDay(fixture.database());
    fixture.open();
    fixture.clickTab(2);
    fixture.at(Exceptions).setFocus();
    const QString sentence = u"17:38 是加班卡（班別 081），不列入出勤"_s;
    QString text;
    bool isTold = false;
    DayMark overtime{};
    expectJudgement(fixture, [&](DayJudgement& dialog) {
        text = sentencesIn(dialog);
        isTold = marksIn(dialog).contains(sentence);
        for (const DayMark& mark : marksOf(dialog.account()))
            if (mark.text == sentence)
                overtime = mark;
    });
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QVERIFY2(text.contains(sentence), qPrintable(text));
    QVERIFY(isTold);
    QCOMPARE(overtime.kind, DayMark::Kind::NotTaken);
    QCOMPARE(overtime.lane, UnlistedLane);
    QCOMPARE(overtime.from, 17 * 60 + 38);
}

void DayJudgementTest::thePictureGoesBeyondTheDayForANightSlot() {
    DayAccount account;
    SlotTimes slot;
    slot.StrIn1 = 20 * 60;
    slot.StdT1 = 21 * 60;
    slot.StdT2 = 22 * 60;
    slot.EndOut2 = 22 * 60 + 30;
    slot.StrIn3 = 22 * 60 + 31;
    slot.StdT3 = 23 * 60 + 40;
    slot.StdT4 = 5;
    slot.EndOut4 = 3 * 60;
    slot.Cushion1 = 15;
    slot.Delay1 = 30;
    account.slot = slot;
    const PunchWindows windows(slot);
    account.windows.assign(windows.all().begin(), windows.all().end());
    const std::vector<DayMark> marks = marksOf(account);
    const DaySpan span = spanOf(marks);
    QCOMPARE(span.from, -60); // ten minutes before midnight, in whole hours
    QCOMPARE(span.to, 25 * 60);
    QCOMPARE(marks.at(3).text, u"下午上班：收 22:31 至 次日 00:25 的打卡（只看當日的打卡）"_s);
    QCOMPARE(marks.at(4).text, u"下午下班：收 前日 23:50 至 03:00 的打卡（只看當日的打卡）"_s);
    const DayScale scale(QRectF(0, 0, 780, 200), QFontMetricsF(QFont()), span, account);
    for (const DayMark& mark : marks)
        QVERIFY(QRectF(0, 0, 780, 200).contains(scale.rectOf(mark)));
    QVERIFY(scale.x(25 * 60) > scale.x(24 * 60));
}

void DayJudgementTest::thePictureStandsOnDarkPalettes() {
    TestStore store;
    addLateDay(store.database());
    const DayAccount account = explainDay(store.path(), u"10001"_s, Day);
    DayPicture picture(nullptr);
    picture.resize(760, picture.sizeHint().height());
    picture.setAccount(account);
    const QImage light = picture.grab().toImage();
    QPalette dark = picture.palette();
    dark.setColor(QPalette::Base, QColor(30, 30, 30));
    dark.setColor(QPalette::Text, QColor(230, 230, 230));
    picture.setPalette(dark);
    const QImage night = picture.grab().toImage();
    QVERIFY(qGray(light.pixel(1, 1)) > 200);
    QVERIFY(qGray(night.pixel(1, 1)) < 60);
    // The window of the arrival is lighter than its ground at night, and darker by day.
    const QPoint inWindow = picture.findChild<QWidget*>(u"DayMark(1)"_s)->geometry().center() - QPoint(6, 0);
    QVERIFY(qGray(light.pixel(inWindow)) < qGray(light.pixel(1, 1)));
    QVERIFY(qGray(night.pixel(inWindow)) > qGray(night.pixel(1, 1)));
}

void DayJudgementTest::arrowKeysLeadThroughTheMonth() {
    LateDay fixture;
    insertRow(fixture.database(), u"Atte02"_s, withKey(u"10001"_s, {2001, 3, 6}, {{u"FH1", true}}));
    fixture.openExceptions();
    QStringList way;
    QString leave;
    const auto note = [&](DayJudgement& dialog) {
        way += shortDate(dialog.account().date) + u' ' + focusIn(dialog);
    };
    expectJudgement(fixture, [&](DayJudgement& dialog) {
        note(dialog);
        QCOMPARE(dayIn(dialog, 5).accessibleName(), u"2001/3/5 遲到早退"_s);
        QCOMPARE(dayIn(dialog, 6).accessibleName(), u"2001/3/6 請假"_s);
        QCOMPARE(dayIn(dialog, 7).accessibleName(), u"2001/3/7 無班表"_s);
        for (const Qt::Key key : {Qt::Key_Right, Qt::Key_Down, Qt::Key_Up, Qt::Key_Left, Qt::Key_End,
                                  Qt::Key_Right, Qt::Key_PageUp, Qt::Key_Home, Qt::Key_PageDown}) {
            QTest::keyClick(dialog.focusWidget(), key);
            note(dialog);
            if (key == Qt::Key_Right && leave.isEmpty())
                leave = sentencesIn(dialog);
        }
    });
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(way, QStringList({u"2001/3/5 Day(5)"_s, u"2001/3/6 Day(6)"_s, u"2001/3/13 Day(13)"_s,
                               u"2001/3/6 Day(6)"_s, u"2001/3/5 Day(5)"_s, u"2001/3/31 Day(31)"_s,
                               u"2001/4/1 Day(1)"_s, u"2001/3/1 Day(1)"_s, u"2001/3/1 Day(1)"_s,
                               u"2001/4/1 Day(1)"_s}));
    QVERIFY2(leave.contains(u"上午上班 無，請假"_s), qPrintable(leave));
}

void DayJudgementTest::aClickLeadsToADay() {
    LateDay fixture;
    fixture.openExceptions();
    QStringList texts;
    expectJudgement(fixture, [&](DayJudgement& dialog) {
        click(dayIn(dialog, 20));
        texts += control<QLabel>(dialog, u"DayTitle"_s).text();
        texts += sentencesIn(dialog);
        QVERIFY(dayIn(dialog, 20).isChecked());
        QVERIFY(!dayIn(dialog, 5).isChecked());
        click(control(dialog, u"CmdMonth(0)"_s));
        texts += control<QLabel>(dialog, u"MonthCaption"_s).text();
        QVERIFY(!dayIn(dialog, 29).isVisible());
        QVERIFY(dayIn(dialog, 28).isVisible());
        click(control(dialog, u"CmdMonth(1)"_s));
        click(dayIn(dialog, 5));
        texts += control<QLabel>(dialog, u"DayTitle"_s).text();
    });
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(texts, QStringList({u"2001/3/20 10001 王小明"_s,
                                 u"【當日】\n當日沒有計算結果\n班表現在沒有排這一天\n"_s, u"2001年2月"_s,
                                 u"2001/3/5 10001 王小明"_s}));
}

void DayJudgementTest::theKeyboardReachesEverything() {
    LateDay fixture;
    fixture.openExceptions();
    QStringList way;
    QStringList keys;
    fixture.answers.expect(u"DayJudgement"_s, [&](QWidget& dialog) {
        for (const QShortcut* key : dialog.findChildren<QShortcut*>())
            keys += key->key().toString();
        for (int step = 0; step < 8; ++step) {
            way += focusIn(dialog);
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        }
        while (focusIn(dialog) != u"CmdDay(3)")
            QTest::keyClick(dialog.focusWidget(), Qt::Key_Tab);
        QTest::keyClick(dialog.focusWidget(), Qt::Key_Space);
    });
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(way, QStringList({u"Day(5)"_s, u"CmdMonth(0)"_s, u"CmdMonth(1)"_s, u"CmdDay(0)"_s,
                               u"CmdDay(1)"_s, u"CmdDay(2)"_s, u"CmdDay(3)"_s, u"DaySentences"_s}));
    QCOMPARE(keys, QStringList({u"Ctrl+Shift+C"_s, u"Ctrl+P"_s, u"Ctrl+S"_s}));
}

void DayJudgementTest::aStoreThatCannotBeReadIsTold() {
    LateDay fixture;
    fixture.openExceptions();
    QVERIFY(QFile::rename(fixture.store.path(), fixture.store.path() + u'x'));
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_F9);
    QVERIFY(QFile::rename(fixture.store.path() + u'x', fixture.store.path()));
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(fixture.answers.seen().constLast().text, u"資料庫開啟異常,請洽程式設計師"_s);
}

void DayJudgementTest::aDayThatCannotBeReadIsNotShownAsChosen() {
    LateDay fixture;
    fixture.openExceptions();
    QList<bool> checked;
    QString title;
    expectJudgement(fixture, [&](DayJudgement& dialog) {
        checked += QFile::rename(fixture.store.path(), fixture.store.path() + u'x');
        click(dayIn(dialog, 20));
        checked += QFile::rename(fixture.store.path() + u'x', fixture.store.path());
        checked += dayIn(dialog, 5).isChecked();
        checked += !dayIn(dialog, 20).isChecked();
        title = control<QLabel>(dialog, u"DayTitle"_s).text();
    });
    fixture.answers.expectMsgBox();
    fixture.key(Qt::Key_F9);
    QCOMPARE(fixture.answers.trouble(), QString());
    QCOMPARE(checked, QList<bool>({true, true, true, true}));
    QCOMPARE(title, u"2001/3/5 10001 王小明"_s);
}

int main(int argc, char** argv) {
    return runTests<DayJudgementTest>(argc, argv);
}

#include "DayJudgementTest.moc"
