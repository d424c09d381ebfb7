#pragma once

#include "app/controls/TDBTime.h"
#include "windows/ModuleFixture.h"
#include "windows/leave/NoteTyping.h"

#include <QCheckBox>

namespace pontrel::test {

/// The leave window's tabs.
enum LeaveTab { TypesTab, GrantsTab, NotesTab, BatchTab, BrowseTab, HoursTab };

/// A Monday, on which leave is taken; the Friday before is the clerk's today.
inline const QDate Monday(2001, 3, 5);
inline const QDate Today(2001, 3, 2);
inline const QString FirstNumber = QStringLiteral("200103020001");

/// The leave window, in a program that has just started. There are the slot A from 08:00 to 12:00 and 13:00
/// to 17:00, types 01 to 04, which have balances and leave out days off, and 08, which has none and does not;
/// employee 10001 with all that is shown of one, and 10002 with nothing but a name.
class Form4Fixture : public ModuleFixture {
  public:
    Form4Fixture() : ModuleFixture(4) {
        gAccount = QStringLiteral("tester");
        clock::setSource([] { return QDateTime(Today, QTime(9, 10, 12)); });
        addSlot(database(), QStringLiteral("A"));
        for (const auto& [code, name, deduct] :
             {std::tuple(u"01", u"休假", true), std::tuple(u"02", u"保留假", true),
              std::tuple(u"03", u"事假", true), std::tuple(u"04", u"病假", true),
              std::tuple(u"08", u"產假", false)})
            insertRow(database(), QStringLiteral("Holi01"),
                      {{u"HoliNo", code}, {u"HoliType", name}, {u"HoliDeduct", deduct}});
        insertRow(database(), QStringLiteral("Base01"), {{u"TitleNo", u"0001"}, {u"Title", u"課長"}});
        insertRow(database(), QStringLiteral("Base02"), {{u"UnitNo", u"1000"}, {u"Unit", u"會計課"}});
        insertRow(database(), QStringLiteral("Base03"), {{u"WorkNo", u"0001"}, {u"WorkType", u"正職"}});
        insertRow(database(), QStringLiteral("Base05"), {{u"ClsNo", u"D01"}, {u"ClassName", u"日班"}});
        for (const Fields& employee : {first(), second()})
            insertRow(database(), QStringLiteral("Base06"), employee);
        database().execute(QStringLiteral("Update Syst01 Set LenEmpNo = 5"));
    }

    [[nodiscard]] static Fields first() {
        return {{u"EmpNo", u"10001"}, {u"EmpName", u"王小明"}, {u"TitleNo", u"0001"},
                {u"ClsNo", u"D01"},   {u"UnitNo", u"1000"},    {u"WorkNo", u"0001"},
                {u"ThisYearHD", 7.0}, {u"ThisYearUse", 1.4},   {u"ThisYearLeft", 5.4},
                {u"LastYearHD", 3.0}, {u"LastYearUse", 0.5},   {u"LastYearLeft", 2.3},
                {u"LeaveHD", 14.0},   {u"LeaveUse", 2.0},      {u"LeaveLeft", 12.0},
                {u"SickHD", 30.0},    {u"SickUse", 31.0},      {u"SickLeft", -1.0}};
    }
    [[nodiscard]] static Fields second() { return {{u"EmpNo", u"10002"}, {u"EmpName", u"陳美惠"}}; }

    /// Opens the window on a tab.
    void open(int tab) {
        openModule(4);
        gAccount = QStringLiteral("tester");
        if (tab != 0)
            clickTab(tab);
    }

    [[nodiscard]] QString label4(int index) const { return label(QStringLiteral("Label4(%1)").arg(index)); }
    /// Labels of Label4 from first to last, between bars.
    [[nodiscard]] QString labels4(int first, int last) const {
        QStringList texts;
        for (int index = first; index <= last; ++index)
            texts << label4(index);
        return texts.join(u'|');
    }
    [[nodiscard]] TDBTime& time(int index) const {
        return at<TDBTime>(QStringLiteral("TDBTime1(%1)").arg(index));
    }
    [[nodiscard]] QList<int> buttonsOn(int tab) const {
        return WindowFixture::buttonsOn(QStringLiteral("CtrlCmd%1").arg(tab));
    }

    using WindowFixture::press;
    /// A button of the bar of the tab in front.
    void press(int index) { press(QStringLiteral("CtrlCmd%1(%2)").arg(tabs().currentIndex()).arg(index)); }
    /// A row of a list, from 0.
    void clickRow(const QString& name, int row) {
        auto& grid = at<TDBGrid>(name);
        QTest::mouseClick(grid.viewport(), Qt::LeftButton, Qt::NoModifier,
                          grid.visualRect(grid.model()->index(row, 0)).center());
    }
    void typeTime(int index, const QString& digits) {
        type(QStringLiteral("TDBTime1(%1)").arg(index), digits);
    }
    /// Fills the note being edited; the dates as six places, the times as four digits.
    void fillNote(const QString& EmpNo, const QString& HoliNo, const QString& begin, const QString& beginTime,
                  const QString& end, const QString& endTime) {
        test::fillNote(*this, {EmpNo, HoliNo, begin, beginTime, end, endTime});
    }
    /// The same on the one day.
    void fillNote(const QString& EmpNo, const QString& HoliNo, const QString& day, const QString& beginTime,
                  const QString& endTime) {
        fillNote(EmpNo, HoliNo, day, beginTime, day, endTime);
    }

    /// A note as this window saves it.
    [[nodiscard]] static Fields note(const QString& BusNo, const QString& EmpNo, const QString& HoliNo,
                                     QDate begin, QTime beginTime, QDate end, QTime endTime,
                                     double HoliHours) {
        return {{u"BusNo", BusNo},           {u"EmpNo", EmpNo},
                {u"HoliNo", HoliNo},         {u"HoliBegDate", begin},
                {u"HoliBegTime", beginTime}, {u"HoliEndDate", end},
                {u"HoliEndTime", endTime},   {u"HoliHours", HoliHours},
                {u"Account", u"tester"},     {u"TransDate", Today.startOfDay()},
                {u"TransType", true}};
    }
    [[nodiscard]] static Fields day(const QString& BusNo, const QString& EmpNo, const QString& HoliNo,
                                    QDate day, QTime begin, QTime end, int hours, const QString& TimeNo) {
        return {{u"BusNo", BusNo},   {u"EmpNo", EmpNo}, {u"HoliNo", HoliNo},   {u"HoliDate", day},
                {u"BegTime", begin}, {u"EndTime", end}, {u"HoliHours", hours}, {u"TimeNo", TimeNo}};
    }
    void addNote(const Fields& note) { insertRow(database(), QStringLiteral("Holi03"), note); }
    void addDay(const Fields& day) { insertRow(database(), QStringLiteral("Holi04"), day); }
    /// A whole day of the employee on his roster, with its note.
    void addWholeDay(const QString& BusNo, const QString& EmpNo, const QString& HoliNo, QDate on) {
        addNote(wholeNote(BusNo, EmpNo, HoliNo, on));
        addDay(day(BusNo, EmpNo, HoliNo, on, QTime(8, 0), QTime(17, 0), 8, QStringLiteral("A")));
    }
    [[nodiscard]] static Fields wholeNote(const QString& BusNo, const QString& EmpNo, const QString& HoliNo,
                                          QDate on) {
        return note(BusNo, EmpNo, HoliNo, on, QTime(8, 0), on, QTime(17, 0), 1.0);
    }

    // The store as another program sees it, in full rows.
    [[nodiscard]] QStringList rows(const QString& table) const { return rowsOf(*store.connect(), table); }
    [[nodiscard]] QStringList notes() const { return rows(QStringLiteral("Holi03")); }
    [[nodiscard]] QStringList days() const { return rows(QStringLiteral("Holi04")); }
    [[nodiscard]] QStringList employees() const { return rows(QStringLiteral("Base06")); }
    [[nodiscard]] static QStringList expected(const QString& table, const QList<Fields>& all) {
        QStringList rows;
        for (const Fields& fields : all)
            rows << expectedRow(table, fields);
        return rows;
    }
    [[nodiscard]] static QStringList expectedNotes(const QList<Fields>& all) {
        return expected(QStringLiteral("Holi03"), all);
    }
    [[nodiscard]] static QStringList expectedDays(const QList<Fields>& all) {
        return expected(QStringLiteral("Holi04"), all);
    }
};

} // namespace pontrel::test
