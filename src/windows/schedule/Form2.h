#pragma once

#include "app/DatePair.h"
#include "app/TabbedWindow.h"
#include "app/WindowHost.h"
#include "rules/schedule/RosterGeneration.h"

#include <array>

class QGridLayout;
class QLabel;
class QPushButton;

namespace pontrel {

class CodeCombo;
struct CodeRangeTexts;
class DataSource;
class FocusWatch;
class OptionButton;
class TDBCalendar;
class TDBGrid;
class TwoLists;

/// The roster window "制度管理": the calendar of days off, the generation and query of the roster, and the
/// change of single days.
class Form2 : public TabbedWindow, private WindowHost<RosterHost> {
    Q_OBJECT
  public:
    explicit Form2(QWidget* parent);
    ~Form2() override;

    /// Makes it known as module window 2.
    static void registerWindow();

  protected:
    void onLoad() override;
    void onUnload() override;

  private:
    /// The pages of SSTab1.
    enum Tab { CalendarTab = 0, GenerationTab = 1, AdjustmentTab = 2 };
    static constexpr int ComboCount = 11;
    static constexpr int DateCount = 5;

    void makeControls();
    [[nodiscard]] QWidget* makeCalendarTab();
    [[nodiscard]] QWidget* makeGenerationTab();
    [[nodiscard]] QWidget* makeAdjustmentTab();
    [[nodiscard]] QWidget* makeGenerationFrame(QWidget* page);
    [[nodiscard]] QWidget* makeQueryFrame(QWidget* page);
    [[nodiscard]] QWidget* makeFilterFrame(QWidget* page);
    [[nodiscard]] QWidget* makeSettingFrame(QWidget* page);
    void addRange(QGridLayout& grid, int row, int index, const CodeRangeTexts& texts);
    void addDateRange(QGridLayout& grid, int row, int index, const QString& labelName);
    void joinDate(int index, const DateFields& pair);
    [[nodiscard]] QPushButton* makeWideButton(QWidget* frame, const QString& name, const QString& caption);
    void connectControls();

    void TDBC1_Pick(QDate day);
    void readDaysOff();
    void fillCodeLists(int first, int last);
    void SSTab1_Click();
    void CmdCal_Click();
    void CmdQuery_Click();
    void Command2_Click();
    void Option1_Click();
    void Command3_Click();

    [[nodiscard]] QString combo(int index) const;
    [[nodiscard]] QString code(int index) const; ///< Of the box, as a literal.
    /// The day of a date control as joining puts it into a statement: nothing where it is empty.
    [[nodiscard]] QString day(int index) const;

    // What the generation asks of its window.
    void setPointer(Pointer pointer) override;
    void showDay(QDate day) override;
    void refreshRoster() override;

    bool updating_ = false;
    int badDateMark_ = 0;
    FocusWatch* watch_;
    DataSource* Data1;
    TDBCalendar* TDBC1 = nullptr;
    TDBGrid* TDBG1 = nullptr;
    std::array<CodeCombo*, ComboCount> Combo2{};
    std::array<DateFields, DateCount> dates_{}; ///< Mk2 and TDBD2.
    QPushButton* CmdCal = nullptr;
    QLabel* DoneUpTo = nullptr; ///< How far a running generation is; empty otherwise.
    QPushButton* CmdQuery = nullptr;
    QPushButton* Command2 = nullptr;
    QPushButton* Command3 = nullptr;
    TwoLists* lists_ = nullptr;
    std::array<OptionButton*, 2> Option1{};
    QLabel* Lb1_5 = nullptr;
};

} // namespace pontrel
