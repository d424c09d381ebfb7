#pragma once

#include "windows/attendance/AttendancePage.h"

class QLayout;

namespace pontrel {

/// The leave rows and the write-offs of the result in focus, which the pages of results share: Data3(1) and
/// Data3(2).
struct FollowingRows {
    DataSource* leave = nullptr;
    DataSource* writeOffs = nullptr;
};

/// A tab of results of the daily calculation: their list, the small lists of what belongs to the row in
/// focus, and the buttons that lead on from it. F9 explains the row.
class ResultPage : public AttendancePage {
    Q_OBJECT
  public:
    void followRow() override;

  protected:
    /// The buttons by their places on the page; a page's first button says where they begin in CmdCtrl.
    enum Button { LeaveNotes, WriteOffs, Overtime, Query, Reports, Own, ButtonCount };

    /// What the two pages differ in besides their list.
    struct Look {
        int tab;
        QString table;
        int firstSmallGrid; ///< Of TDBG4; the other is the next.
        int firstButton;    ///< Of CmdCtrl.
        QString ownCaption; ///< Of the last button.
        QString emptyText;  ///< Of the list.
    };

    ResultPage(const Look& look, const FollowingRows& following, AttendanceNames& names);

    /// Lays the page out around its list, which is made before.
    void makeControls(TDBGrid* results);
    virtual void ownButtonClicked() = 0;
    void bindFollowers() override;

  private:
    [[nodiscard]] QLayout* makeSmallGrids();
    void CmdCtrl_Click(int button);
    void query();
    void showRowsOfResult();
    void addJudgement(TDBGrid& results);
    void judgeDay();

    Look look_;
    FollowingRows following_;
};

/// The tab "異常處理".
class ExceptionPage : public ResultPage {
    Q_OBJECT
  public:
    ExceptionPage(int tab, const FollowingRows& following, AttendanceNames& names);

    /// Of the exception in focus; invalid where there is none.
    [[nodiscard]] QDate currentDay() const;

  Q_SIGNALS:
    void recalculate(); ///< "重新計算" was clicked.

  protected:
    void ownButtonClicked() override { Q_EMIT recalculate(); }
};

/// The tab "勤惰查詢".
class AttendanceQueryPage : public ResultPage {
    Q_OBJECT
  public:
    AttendanceQueryPage(int tab, const FollowingRows& following, AttendanceNames& names);

  protected:
    void ownButtonClicked() override { Q_EMIT leave(); }
};

} // namespace pontrel
