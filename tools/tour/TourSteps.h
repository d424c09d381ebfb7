#pragma once

#include "tour/Clerk.h"
#include "tour/DayTable.h"
#include "tour/WindowSteps.h"

#include <QDate>

namespace pontrel::tour {

/// The steps of the tour, in the order in which they are taken. Each looks whether it has done what it
/// should, and throws StepFailed where it has not.
class TourSteps {
  public:
    TourSteps(Clerk& clerk, QString pictureFolder);

    /// From the login to the close of the main window.
    void takeAll();
    /// What a second start of the program shows.
    void takeSecondStart();

    /// What was being done last, for the message of a failure.
    [[nodiscard]] const QString& current() const { return current_; }

  private:
    void seeSetup();
    void logIn();
    void startTwice();
    void openAttendance();
    void choosePunchFile();
    void readPunchFile();
    void showExceptions();
    void readHelp();
    void chooseDay();
    void recalculate();
    void queryResults();
    void explainException(); ///< The day of the exception in focus, and the one before it.
    void leaveAttendance();
    void readDayOfNewRoster();
    void close();

    void chooseFile(const QString& fileName);
    [[nodiscard]] int seePunches();
    [[nodiscard]] DayTable exceptions();
    void checkDay(const DayTable& table) const;

    Clerk& clerk_;
    QString current_;
    WindowSteps windows_;
    QString pictureFolder_;
    QString fileName_; ///< Of the punch file that is read.
    QDate day_;        ///< Its day.
    DayTable exceptions_;
};

} // namespace pontrel::tour
