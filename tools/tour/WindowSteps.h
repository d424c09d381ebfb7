#pragma once

#include "tour/Clerk.h"

#include <QDate>

namespace pontrel::tour {

/// The steps through the windows around the day's work: settings and accounts, master data, roster. Each
/// looks whether it has done what it should, and throws StepFailed where it has not.
class WindowSteps {
  public:
    /// Writes into `current` what is being done.
    WindowSteps(Clerk& clerk, QString& current) : clerk_(clerk), current_(current) {}

    // The idle main window is in front before each and after it.
    void visitSystemWindow(); ///< Settings and accounts in both states, and the folder picker.
    void keepMasterData();    ///< All tabs in both states; a new unit, time slot, shift class and employee.
    void
    makeRoster(QDate monday); ///< Days off, the week's roster of two classes, a rest day for three people.
    /// All tabs of the overtime window in both states: a row of the employee beside his punches of the day, a
    /// batch, his list and his total.
    void enterOvertime(const QString& EmpNo, QDate day);

    /// All tabs of the leave window, most in both states; an afternoon's batch for twenty people in the week.
    void keepLeave(QDate monday);

    /// All tabs of the report window with the fields of different options; six reports of the period, shown
    /// and closed again.
    void printReports(QDate first, QDate last);

    /// The end of a month in the report window, by keyboard alone: a unit's exceptions, leave, the inspection
    /// of the first day, write-offs and overtime, each saved as PDF and as spreadsheet.
    void closeMonth(QDate first, QDate last, const QString& UnitNo);

    /// From the exceptions to a leave note for the employee's whole day, back, and the day recalculated.
    void answerByLeave(const QString& EmpNo, QDate day);

    /// From the exceptions of the day through all tabs of the write-off window, most in both states: two
    /// people are written off by a batch. Back, and the day recalculated.
    void answerByWriteOff(QDate day);

    /// Waits for the idle main window.
    void awaitIdle();
    /// Brings the tab with the caption to the front.
    void chooseTab(const QString& tabs, const QString& caption);

    /// The code of the employee that keepMasterData() adds.
    static const QString NewEmployee;

  private:
    void visitSettings();
    void visitAccounts();
    void visitTitles();
    void addUnit();
    void addSlot();
    void addClass();
    void addEmployee();
    void visitEmployeePages();
    void findEmployee();
    void markDaysOff();
    void generate(const QString& ClsNo);
    void queryRoster(QDate monday);
    void giveRestDay(QDate monday);
    void visitLeaveTypes();
    void runLeaveBatch(QDate day);
    void askForLeave(QDate monday);
    void runWriteOffBatch(QDate day);
    void chooseForBatch(const QString& EmpNo);
    void visitReasonsAndWriteOffs();
    void countWriteOffs(QDate day);
    /// In front of the exceptions: recalculates the day, after which none of these has one, but others have.
    void recalculateWithout(const QStringList& answered, QDate day);
    void addOvertime(const QString& EmpNo, QDate day);
    void runOvertimeBatch(QDate day);
    void listOvertime(const QString& EmpNo);
    void totalOvertime(const QString& EmpNo, QDate day);

    /// Brings a tab of the report window to the front, "Option3" being that of number 3, and types the
    /// period.
    void turnToReports(const QString& caption, int number, QDate first, QDate last);
    void chooseReport(const QString& option);
    /// Prints a report of the tab in front.
    void printReport(const QString& option, const QString& title, const QString& picture);

    void awaitPreview(const QString& title);
    void awaitReportWindow();

    // By keyboard.
    void turnToPage(const QString& caption); ///< By Ctrl+Tab.
    void reach(const QString& control);      ///< By Tab.
    void replace(const QString& control, const QString& text);
    /// Prints what is chosen, and saves and closes the preview.
    void saveReport(const QString& title, const QString& picture);

    void open(int button, const QString& window);
    void enter(const QString& control, const QString& text);
    /// Types the texts into one field after the other, a Tab behind each; an empty one passes over a control.
    void enterInTurn(const QStringList& texts);
    void save(const QString& bar);
    void seeEdit(bool editing);

    Clerk& clerk_;
    QString& current_;
    int reports_ = 1; ///< The number of the report window's tab in front.
};

} // namespace pontrel::tour
