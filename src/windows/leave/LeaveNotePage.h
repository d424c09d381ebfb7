#pragma once

#include "app/RecordTab.h"
#include "app/WindowHost.h"
#include "rules/leave/LeaveNotes.h"

#include <array>

class QGridLayout;
class QHBoxLayout;
class QLabel;
class QLineEdit;
class QPushButton;

namespace pontrel {

class Rows;
class TDBTime;
struct LeaveNames;

/// The tab where leave notes are entered. A note is split into its day rows, which are listed beside it, when
/// it is saved, and never else. Deliberate: no balance moves here.
class LeaveNotePage : public RecordTab {
    Q_OBJECT
  public:
    /// The names are to outlive it.
    LeaveNotePage(int tab, const LeaveNames& names);

    [[nodiscard]] RecordRules rules() override;
    [[nodiscard]] RecordSteps steps() override;

    void connectControls(FormState& form) override;

  private:
    static constexpr std::size_t Begin = 0; ///< The first of each pair of dates and times.
    static constexpr std::size_t End = 1;
    static constexpr std::size_t BalanceCount = 12;
    static const QString BalanceColumns; ///< Of the employee, in the order of their labels.

    // Which controls the page has, and where they sit.
    void makeFields();
    [[nodiscard]] QHBoxLayout* makeHead(QGridLayout& grid);
    void addCodes(QGridLayout& grid);
    void addPeriod(QGridLayout& grid, int row, std::size_t end, const QString& word, const QString& columns);
    void addBalances(QGridLayout& grid, int row, int column);
    [[nodiscard]] QHBoxLayout* makeDayRows(const LeaveNames& names);

    // What they do.
    void startNote();
    [[nodiscard]] SaveStep saveDays();
    void signNote();
    void deleteDays();
    void takeBusNo();
    void showDaysOfNote();
    void findNote();
    void findNoteOfDay();
    void CmdHD_Click();
    void maskLeft(std::size_t end);
    void fillTime(std::size_t end, QDate day);
    void refusePeriod();
    void showBalances(const Rows& employee);
    void showBalancesOfEmployee();

    [[nodiscard]] QDate day(std::size_t end) const;
    [[nodiscard]] Leave entered() const;
    [[nodiscard]] LeaveNotes notes();

    WindowHost<> host_;
    DataSource* Data2;
    CodeBox* employee_ = nullptr;
    CodeBox* substitute_ = nullptr;
    CodeBox* type_ = nullptr;
    std::array<DateFields, 2> dates_{}; ///< TDBMask1 and TDBDate1.
    std::array<TDBTime*, 2> TDBTime1{};
    QLineEdit* hours_ = nullptr; ///< Text3(3)
    QLabel* BusNo = nullptr;
    QLabel* account_ = nullptr;
    QLabel* entryDate_ = nullptr;
    QLabel* entryKind_ = nullptr;
    std::array<QLabel*, BalanceCount> balances_{}; ///< Label4(11) to Label4(22)
    TDBGrid* dayRows_ = nullptr;
    QPushButton* CmdHD = nullptr;
};

} // namespace pontrel
