#pragma once

#include "app/TabbedWindow.h"
#include "app/WindowHost.h"
#include "app/controls/TDBGrid.h"
#include "rules/attendance/AttendanceHost.h"
#include "rules/attendance/DailyCalculation.h"

#include <array>
#include <memory>

class QLabel;
class QLayout;
class QLineEdit;
class QProgressBar;
class QPushButton;

namespace pontrel {

class DataSource;

/// The attendance window "出勤管理": reads punch files, shows punches, exceptions and results, recalculates a
/// day.
class Form3 : public TabbedWindow, private WindowHost<AttendanceHost> {
    Q_OBJECT
  public:
    explicit Form3(QWidget* parent);
    ~Form3() override;

    /// Makes it known as module window 3.
    static void registerWindow();

  protected:
    void onLoad() override;
    void onUnload() override;

  private:
    /// The pages of SSTab1.
    enum Tab { ReadTab = 0, PunchQueryTab = 1, ExceptionTab = 2, AttendanceQueryTab = 3, TabCount = 4 };

    void makeControls();
    [[nodiscard]] QWidget* makeReadTab();
    [[nodiscard]] QWidget* makePunchQueryTab();
    [[nodiscard]] QWidget* makeExceptionTab();
    [[nodiscard]] QWidget* makeAttendanceQueryTab();
    [[nodiscard]] QWidget* makeResultPage(QWidget* page, TDBGrid* results, std::size_t firstSmallGrid,
                                          std::size_t firstButton, const QStringList& captions);
    [[nodiscard]] QLayout* makeSmallGrids(QWidget* page, std::size_t first);
    [[nodiscard]] std::vector<GridColumn> punchColumns() const;
    void enableJumps();
    [[nodiscard]] QPushButton* makeButton(QWidget* page, const QString& name, const QString& caption);
    [[nodiscard]] TDBGrid* makeGrid(QWidget* page, const QString& name, const QString& accessibleName);
    void connectControls();

    void CtrlCmd0_Click(int index);
    void CmdCtrl_Click(int index);
    void SSTab1_Click();
    void Text1_Change();
    void Text1_Enter();
    void Search_Click();
    void Data1_Reposition(int index);

    void bindTab();
    void showCounter(); ///< Of the current page.
    void runSource(DataSource& source);
    void refreshSource(DataSource& source); ///< Runs it and stands on its first row.
    void readNames();
    void showRowsOfResult();
    void showPunchesOfEmployee();
    void queryResults(Tab tab);
    void queryPunches();
    void purgePunches();
    void recalculate();
    [[nodiscard]] GridColumn named(const TranslationList& names, GridColumn column) const;

    // What the calculation asks of its window.
    [[nodiscard]] std::optional<QString> choosePunchFile(const QString& folder) override;
    void setProgressShown(bool shown) override;
    [[nodiscard]] int progress() const override;
    void setProgress(int value) override;
    void showPunches(const QString& statement) override;
    void refreshExceptions() override;
    void showExceptions(const QString& statement) override;

    std::unique_ptr<DailyCalculation> calculation_;
    bool tabBound_ = false;   ///< The current page's sources are bound.
    bool binding_ = false;    ///< They are being bound: rows that follow a row are not read for each move.
    bool EmpNotFound = false; ///< Text1 holds a code that no employee has.
    TranslationList employeeNames_;
    TranslationList leaveNames_;
    TranslationList reasonNames_;

    std::array<DataSource*, TabCount> Data1{};
    std::array<DataSource*, 3> Data3{}; ///< 1 the leave rows, 2 the write-offs of the result in focus.
    std::array<QPushButton*, 10> CtrlCmd0{};
    std::array<QPushButton*, 12> CmdCtrl{};
    TDBGrid* TDBG1 = nullptr;
    TDBGrid* TDBG2 = nullptr;
    std::array<TDBGrid*, 2> TDBG3{};
    std::array<TDBGrid*, 4> TDBG4{};
    QLineEdit* Text1 = nullptr;
    QPushButton* Search = nullptr;
    QLabel* Label3 = nullptr;
    QProgressBar* ProgressBar1 = nullptr;
};

} // namespace pontrel
