#pragma once

#include "app/controls/TDBTime.h"
#include "windows/ModuleFixture.h"

#include <QCheckBox>

namespace pontrel::test {

inline const QDate March1(2010, 3, 1);

/// Two employees with title, unit and class of their own, one without, and one who has left.
inline void addOvertimePeople(Database& database) {
    insertRow(database, QStringLiteral("Base01"), {{u"TitleNo", u"10"}, {u"Title", u"科員"}});
    insertRow(database, QStringLiteral("Base01"), {{u"TitleNo", u"20"}, {u"Title", u"課長"}});
    insertRow(database, QStringLiteral("Base02"), {{u"UnitNo", u"1000"}, {u"Unit", u"會計課"}});
    insertRow(database, QStringLiteral("Base02"), {{u"UnitNo", u"2000"}, {u"Unit", u"人事課"}});
    insertRow(database, QStringLiteral("Base05"), {{u"ClsNo", u"D01"}, {u"ClassName", u"日班"}});
    insertRow(database, QStringLiteral("Base05"), {{u"ClsNo", u"N01"}, {u"ClassName", u"夜班"}});
    addEmployee(database, QStringLiteral("10001"),
                {{u"EmpName", u"王小明"}, {u"TitleNo", u"10"}, {u"UnitNo", u"1000"}, {u"ClsNo", u"D01"}});
    addEmployee(database, QStringLiteral("10002"),
                {{u"EmpName", u"陳美惠"}, {u"TitleNo", u"20"}, {u"UnitNo", u"2000"}, {u"ClsNo", u"N01"}});
    addEmployee(database, QStringLiteral("10003"), {{u"EmpName", u"林大同"}, {u"TitleNo", u"99"}});
    addEmployee(database, QStringLiteral("10004"),
                {{u"EmpName", u"張志明"}, {u"LeaveDate", QDate(2009, 12, 31)}});
}

/// The overtime window, at work for "tester" on a morning in March 2010.
class Form6Fixture : public ModuleFixture {
  public:
    inline static const QDateTime Now{QDate(2010, 3, 9), QTime(10, 11, 12)};

    Form6Fixture() : ModuleFixture(6) {
        clock::setSource([] { return Now; });
        addOvertimePeople(database());
    }

    void open(int tab = 0) {
        openModule(6);
        gAccount = QStringLiteral("tester");
        if (tab != 0)
            clickTab(tab);
    }

    void add(const Fields& fields) { insertRow(database(), QStringLiteral("Over01"), fields); }
    /// A row of that day of March 2010, from 18:00 on.
    [[nodiscard]] static Fields evening(const QString& EmpNo, int day, int hours) {
        return {{u"EmpNo", EmpNo},
                {u"OverDate", QDate(2010, 3, day)},
                {u"BegTime", QTime(18, 0)},
                {u"EndTime", QTime(18 + hours, 0)},
                {u"OverHours", hours}};
    }
    [[nodiscard]] static QString row(const Fields& fields) {
        return expectedRow(QStringLiteral("Over01"), fields);
    }
    /// All overtime as another program sees it.
    [[nodiscard]] QStringList overtime() const { return rowsOf(*store.connect(), QStringLiteral("Over01")); }

    [[nodiscard]] TDBTime& time(int index) const {
        return at<TDBTime>(QStringLiteral("overTime(%1)").arg(index));
    }
    /// Clicks into the box and types its four places; the focus stays.
    void typeTime(int index, const QString& places) {
        click(time(index));
        key(Qt::Key_Home);
        keys(places);
    }
    void emptyMask(int index) {
        click(mask(index));
        key(Qt::Key_A, Qt::ControlModifier);
        key(Qt::Key_Delete);
    }

    /// Name, unit, title and class beside the entry.
    [[nodiscard]] QString names() const {
        return QStringList{label(QStringLiteral("Label2(0)")), label(QStringLiteral("Label4(1)")),
                           label(QStringLiteral("Label4(0)")), label(QStringLiteral("Label4(2)"))}
            .join(u'|');
    }
    /// The reference boxes between bars, an empty one as nothing.
    [[nodiscard]] QString punches() const {
        QStringList times;
        for (int punch = 0; punch < 12; ++punch)
            times << at<TDBTime>(QStringLiteral("Time1(%1)").arg(punch))
                         .time()
                         .toString(QStringLiteral("hh:mm"));
        return times.join(u'|');
    }
    /// The dialogs that have come: title, text and buttons of a message, the name of another.
    [[nodiscard]] QStringList seen() const {
        QStringList dialogs;
        for (const SeenPrompt& prompt : answers.seen())
            dialogs << (prompt.objectName == QStringLiteral("MsgBox")
                            ? QStringList{prompt.title, prompt.text, prompt.buttons.join(u'/')}.join(u'|')
                            : prompt.objectName);
        return dialogs;
    }
};

/// The buttons of the entry's bar.
namespace entry {
inline const QString Add = QStringLiteral("CtrlCmd0(0)");
inline const QString Modify = QStringLiteral("CtrlCmd0(1)");
inline const QString Delete = QStringLiteral("CtrlCmd0(2)");
inline const QString Cancel = QStringLiteral("CtrlCmd0(3)");
inline const QString Save = QStringLiteral("CtrlCmd0(4)");
inline const QString Query = QStringLiteral("CtrlCmd0(5)");
inline const QString Next = QStringLiteral("CtrlCmd0(8)");
inline const QString Last = QStringLiteral("CtrlCmd0(9)");
inline const QString Refresh = QStringLiteral("CtrlCmd0(10)");
inline const QString Leave = QStringLiteral("CtrlCmd0(12)");
inline const QString Back = QStringLiteral("CtrlCmd0(13)");
} // namespace entry

} // namespace pontrel::test
