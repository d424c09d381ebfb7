#pragma once

#include "app/GridTexts.h"
#include "app/TwoLists.h"
#include "app/controls/TDBCalendar.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBGrid.h"
#include "app/controls/TDBMask.h"
#include "store/Clock.h"
#include "support/WindowFixture.h"

#include <QComboBox>
#include <QListWidget>
#include <QRadioButton>

namespace pontrel::test {

/// The roster window on a day in March 2001.
class Form2Fixture : public WindowFixture {
  public:
    inline static const QDate Today{2001, 3, 5};

    Form2Fixture() : WindowFixture(2) {
        clock::setSource([] { return QDateTime(Today, QTime(9, 30)); });
    }
    ~Form2Fixture() { clock::setSource({}); }

    /// Two employees of class 001 and one who has left, a class and two time slots.
    void addPeople() {
        addEmployee(database(), QStringLiteral("10001"), {{u"EmpName", u"王小明"}, {u"ClsNo", u"001"}});
        addEmployee(database(), QStringLiteral("10002"), {{u"EmpName", u"陳美惠"}, {u"ClsNo", u"001"}});
        addEmployee(database(), QStringLiteral("10003"),
                    {{u"EmpName", u"林大同"}, {u"ClsNo", u"001"}, {u"LeaveDate", QDate(2001, 2, 1)}});
        addSlot(database(), QStringLiteral("A"), {{u"TimeName", u"日班"}});
        addSlot(database(), QStringLiteral("N"), {{u"TimeName", u"夜班"}});
        insertRow(database(), QStringLiteral("Base05"),
                  {{u"ClsNo", u"001"},
                   {u"ClassName", u"常日班"},
                   {u"TimeNo1", u"A"},
                   {u"TimeDay1", 2},
                   {u"TimeRest1", 1}});
    }

    /// Opens the window on a tab.
    void open(int tab = 0) {
        openModule(2);
        if (tab != 0)
            clickTab(tab);
    }

    [[nodiscard]] QComboBox& combo(int index) const {
        return at<QComboBox>(QStringLiteral("Combo2(%1)").arg(index));
    }
    [[nodiscard]] TDBMask& mask(int index) const { return at<TDBMask>(QStringLiteral("Mk2(%1)").arg(index)); }
    [[nodiscard]] TDBDate& date(int index) const {
        return at<TDBDate>(QStringLiteral("TDBD2(%1)").arg(index));
    }
    [[nodiscard]] TDBCalendar& calendar() const { return at<TDBCalendar>(QStringLiteral("TDBC1")); }
    [[nodiscard]] bool isDayOff(QDate day) const { return calendar().hasDay(QStringLiteral("nowork"), day); }

    /// Types the six places of a date.
    void typeDate(int index, const QString& places) {
        mask(index).setFocus();
        mask(index).clear();
        QTest::keyClicks(&mask(index), places);
    }
    void typeCode(int index, const QString& code) { typeInto(*combo(index).lineEdit(), code); }
    /// Chooses the entry of a list that drops down, as a click on it does.
    void choose(int index, int entry) {
        combo(index).setCurrentIndex(entry);
        Q_EMIT combo(index).activated(entry);
    }
    [[nodiscard]] QStringList entriesOf(int index) const {
        QStringList entries;
        for (int entry = 0; entry < combo(index).count(); ++entry)
            entries += combo(index).itemText(entry);
        return entries;
    }

    /// Clicks a day of the month that the calendar shows.
    void clickDay(int day) {
        auto& view = control<QTableView>(calendar(), QStringLiteral("Days"));
        for (int row = 0; row < view.model()->rowCount(); ++row) {
            for (int column = 0; column < view.model()->columnCount(); ++column) {
                const QModelIndex cell = view.model()->index(row, column);
                if (cell.data().toString() == QString::number(day)) {
                    QTest::mouseClick(view.viewport(), Qt::LeftButton, Qt::NoModifier,
                                      view.visualRect(cell).center());
                    return;
                }
            }
        }
        QFAIL("no such day");
    }

    [[nodiscard]] QStringList list1() const { return textsOf(QStringLiteral("List1")); }
    [[nodiscard]] QStringList list2() const { return textsOf(QStringLiteral("List2")); }
    void clickEntry(const QString& list, int row) {
        auto& entries = at<QListWidget>(list);
        QTest::mouseClick(entries.viewport(), Qt::LeftButton, Qt::NoModifier,
                          entries.visualItemRect(entries.item(row)).center());
    }

    /// The rows of the roster's list, the texts of their columns between bars.
    [[nodiscard]] QStringList shown() const { return shownRows(at<TDBGrid>(QStringLiteral("TDBG1"))); }
    [[nodiscard]] QStringList roster() {
        return rowsOfSelection(database(), QStringLiteral("select * from Rule03 order by EmpNo,YMD"));
    }

  private:
    [[nodiscard]] QStringList textsOf(const QString& name) const {
        const auto& list = at<QListWidget>(name);
        QStringList texts;
        for (int row = 0; row < list.count(); ++row)
            texts += list.item(row)->text();
        return texts;
    }
};

} // namespace pontrel::test
