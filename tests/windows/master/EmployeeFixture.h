#pragma once

#include "windows/master/Form1Fixture.h"

namespace pontrel::test {

/// The buttons of the employees' bar.
namespace employee {
inline const QString Add = QStringLiteral("CtrlCmd5(0)");
inline const QString Modify = QStringLiteral("CtrlCmd5(1)");
inline const QString Delete = QStringLiteral("CtrlCmd5(2)");
inline const QString Cancel = QStringLiteral("CtrlCmd5(3)");
inline const QString Save = QStringLiteral("CtrlCmd5(4)");
inline const QString Query = QStringLiteral("CtrlCmd5(5)");
inline const QString First = QStringLiteral("CtrlCmd5(6)");
inline const QString Previous = QStringLiteral("CtrlCmd5(7)");
inline const QString Next = QStringLiteral("CtrlCmd5(8)");
inline const QString Last = QStringLiteral("CtrlCmd5(9)");
inline const QString Refresh = QStringLiteral("CtrlCmd5(10)");
inline const QString Leave = QStringLiteral("CtrlCmd5(12)");
inline const QString Seniority = QStringLiteral("CtrlCmd5(13)");
inline const QString Entitlement = QStringLiteral("CtrlCmd5(14)");

/// What is on in browse with rows, without, and during an edit: the two calculations always.
inline const QList<int> OnWithRows{0, 1, 2, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14};
inline const QList<int> OnWithoutRows{0, 10, 11, 12, 13, 14};
inline const QList<int> OnInEdit{3, 4, 13, 14};
} // namespace employee

/// Stands for an empty date for the length of an action.
inline const QDate SentinelDate{2038, 1, 1};

[[nodiscard]] inline QString text6(int index) {
    return QStringLiteral("Text6(%1)").arg(index);
}

/// Two codes of each kind that an employee may have.
inline void addEmployeeCodes(Database& database) {
    insertRow(database, QStringLiteral("Base01"), {{u"TitleNo", u"0001"}, {u"Title", u"課長"}});
    insertRow(database, QStringLiteral("Base01"), {{u"TitleNo", u"0002"}, {u"Title", u"科員"}});
    insertRow(database, QStringLiteral("Base02"), {{u"UnitNo", u"1000"}, {u"Unit", u"會計課"}});
    insertRow(database, QStringLiteral("Base02"), {{u"UnitNo", u"2000"}, {u"Unit", u"人事室"}});
    insertRow(database, QStringLiteral("Base03"), {{u"WorkNo", u"0001"}, {u"WorkType", u"正式職員"}});
    insertRow(database, QStringLiteral("Base03"), {{u"WorkNo", u"0002"}, {u"WorkType", u"約聘人員"}});
    insertRow(database, QStringLiteral("Base05"), {{u"ClsNo", u"D01"}, {u"ClassName", u"日班"}});
    insertRow(database, QStringLiteral("Base05"), {{u"ClsNo", u"N01"}, {u"ClassName", u"夜班"}});
    database.execute(QStringLiteral("delete * from Syst03"));
    insertRow(database, QStringLiteral("Syst03"), {{u"SuitNo", u"1"}, {u"SuitRule", u"公務辦法"}});
    insertRow(database, QStringLiteral("Syst03"), {{u"SuitNo", u"2"}, {u"SuitRule", u"勞工辦法"}});
}

/// An employee with every column filled, each with a value of its own; what is left differs from the grants.
[[nodiscard]] inline Fields fullEmployee(const QString& EmpNo) {
    return {{u"EmpNo", EmpNo},
            {u"EmpName", u"王小明"},
            {u"Sex", true},
            {u"IdNo", u"A123456789"},
            {u"UnitNo", u"1000"},
            {u"ClsNo", u"D01"},
            {u"TitleNo", u"0001"},
            {u"WorkNo", u"0002"},
            {u"SuitNo", u"1"},
            {u"Birth", QDate(1965, 2, 3)},
            {u"ArriveDate", QDate(1990, 7, 1)},
            {u"LeaveDate", QDate(2005, 6, 30)},
            {u"IniArrDate", QDate(1988, 9, 10)},
            {u"BreakY", 27},
            {u"SoldierY", 22},
            {u"HoliExper", 12},
            {u"ThisYearHD", 14.0},
            {u"ThisYearUse", 2.5},
            {u"ThisYearLeft", 11.25},
            {u"LastYearHD", 7.0},
            {u"LastYearUse", 1.5},
            {u"LastYearLeft", 5.25},
            {u"LeaveHD", 5.0},
            {u"LeaveUse", 0.5},
            {u"LeaveLeft", 4.25},
            {u"SickHD", 28.0},
            {u"SickUse", 3.0},
            {u"SickLeft", 25.5},
            {u"Memo", u"備註一"},
            {u"Telephone", u"0223456789"},
            {u"Address", u"臺北市中山路一號"},
            {u"ExperLevel", u"資位一"},
            {u"SalaryLevel", u"薪級一"},
            {u"SalaryPoint", u"薪點一"},
            {u"BackGround", u"大學"},
            {u"Exam", u"普考"},
            {u"Webpsw", u"webpass"},
            {u"WebNo", u"right1"}};
}

/// A grant of scheme 1 for 10 to 20 years.
inline void addGrant(Database& database, const QString& HoliNo, double days) {
    insertRow(database, QStringLiteral("Holi02"),
              {{u"SuitNo", u"1"},
               {u"HoliNo", Value(HoliNo)},
               {u"HoliYearBeg", 10},
               {u"HoliYearEnd", 20},
               {u"HoliDays", days}});
}

[[nodiscard]] inline QString employeeRow(const Fields& fields) {
    return expectedRow(QStringLiteral("Base06"), fields);
}

/// Shows a tab or a page by a click on its header, as a mouse does: a header that is dead does not answer.
inline void clickHeader(const QTabWidget& pages, int index) {
    QTabBar* bar = pages.tabBar();
    QWidget* window = bar->window();
    QTest::mouseClick(window->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      bar->mapTo(window, bar->tabRect(index).center()));
    QCoreApplication::processEvents();
}

/// The window of basic data on its employees, over a store of its own.
class EmployeeFixture : public Form1Fixture {
  public:
    EmployeeFixture() { addEmployeeCodes(database()); }

    void openEmployees() { open(5); }

    void add(const Fields& fields) { insertRow(database(), QStringLiteral("Base06"), fields); }
    /// Employees 10001, 10002 and so on, each with its code and a name.
    void addPlain(int count) {
        for (int number = 1; number <= count; ++number)
            add(plain(number));
    }
    [[nodiscard]] static Fields plain(int number) {
        return {{u"EmpNo", QString::number(10000 + number)},
                {u"EmpName", QStringLiteral("員工%1").arg(number)}};
    }

    /// All employees with all their columns, as another program sees them.
    [[nodiscard]] QStringList employees() const {
        const auto other = store.connect();
        return rowsOf(*other, QStringLiteral("Base06"));
    }

    [[nodiscard]] QTabWidget& pages() const { return at<QTabWidget>(QStringLiteral("SSTab2")); }
    void clickPage(int index) { clickHeader(pages(), index); }

    [[nodiscard]] TDBMask& mask(int index) const {
        return at<TDBMask>(QStringLiteral("TDBMask1(%1)").arg(index));
    }
    [[nodiscard]] TDBDate& date(int index) const {
        return at<TDBDate>(QStringLiteral("TDBDate1(%1)").arg(index));
    }
    /// Clicks into the mask and types the places over what stands there.
    void typeDate(int index, const QString& places) {
        click(mask(index));
        key(Qt::Key_Home);
        keys(places);
    }
    void emptyMask(int index) {
        click(mask(index));
        key(Qt::Key_A, Qt::ControlModifier);
        key(Qt::Key_Delete);
    }
    /// Types ASCII where the focus is.
    void keys(const QString& text) {
        for (const QChar each : text)
            QTest::keyClick(mainWindow().windowHandle(), each.toLatin1());
    }
    /// Clicks into a box of the page in front and types in place of what it holds.
    void enter(const QString& name, const QString& text) {
        click(box(name));
        typeInto(box(name), text);
    }

    /// What a control shows: a text, a date, or "v" and "-" of a check box.
    [[nodiscard]] QString shown(const QString& name) const {
        const QWidget& found = at(name);
        if (const auto* mask = qobject_cast<const TDBMask*>(&found))
            return mask->value();
        if (const auto* date = qobject_cast<const TDBDate*>(&found))
            return date->currentText();
        if (const auto* box = qobject_cast<const QLineEdit*>(&found))
            return box->text();
        if (const auto* check = qobject_cast<const QCheckBox*>(&found))
            return check->isChecked() ? QStringLiteral("v") : QStringLiteral("-");
        return label(name);
    }
    [[nodiscard]] QStringList shown(const QStringList& names) const {
        QStringList texts;
        for (const QString& name : names)
            texts << shown(name);
        return texts;
    }
    /// Years and months of broken and of military service as they stand in the boxes.
    [[nodiscard]] QString shownMonths() const {
        return shown({text6(8), text6(9), text6(10), text6(11)}).join(u'|');
    }
    [[nodiscard]] QString code() const { return text(text6(0)); }

    /// The message box seen last: title, text and buttons between bars.
    [[nodiscard]] QString lastMessage() const {
        const SeenPrompt& seen = answers.seen().constLast();
        return QStringList{seen.title, seen.text, seen.buttons.join(u'/')}.join(u'|');
    }
};

} // namespace pontrel::test
