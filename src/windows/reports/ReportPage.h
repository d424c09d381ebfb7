#pragma once

#include "app/DatePair.h"
#include "rules/reports/Catalogue.h"

#include <QWidget>

#include <vector>

class QAbstractItemModel;
class QGridLayout;
class QLabel;
class QLayout;

namespace pontrel {

class CodeCombo;
class HintedList;
class OptionButton;
struct FormState;

/// A tab of the report window: an option button for each of its reports, the fields that say what is printed
/// of it, and the buttons. Which of them there are, and which are on with which option, the catalogue tells.
class ReportPage : public QWidget {
    Q_OBJECT
  public:
    /// The form's state must outlive it.
    ReportPage(ReportTab tab, FormState& form);

    [[nodiscard]] ReportTab tab() const { return tab_; }

    /// Lists these choices in all boxes of that kind, beside what they show. The model belongs to somebody
    /// else.
    void setChoices(RangeKind kind, QAbstractItemModel* choices);
    /// Fills the list of the tab, which must have one.
    void setEntries(const std::vector<ListEntry>& entries);

    /// What is chosen, with the texts as they stand; without the units of the tab of write-offs.
    [[nodiscard]] ReportChoice choice() const;
    /// What the boxes of the unit range hold.
    [[nodiscard]] std::array<QString, 2> units() const;

  Q_SIGNALS:
    void print(); ///< The button "列印" was clicked.
    void leave(); ///< The button "離開" was clicked.

  private:
    /// A range of dates or codes: its caption, and the numbers of its first control and the one behind its
    /// last.
    struct Row {
        QLabel* caption;
        int first;
        int end;
    };

    void makeControls();
    [[nodiscard]] QWidget* makeOptions();
    [[nodiscard]] QLayout* makeList();
    [[nodiscard]] QWidget* makeRanges();
    [[nodiscard]] QLayout* makeButtons();
    void addDates(QGridLayout& grid, const QString& caption);
    void addCodes(QGridLayout& grid, const ReportRange& range);
    void addPunchMarks(QGridLayout& grid);
    [[nodiscard]] QString array(const QString& name) const; ///< With the tab's number, as "Combo1".
    void connectControls();

    void Option_Click(int index);
    void Cmd_Click(int index);
    /// Switches the fields as the option that is on asks for.
    void followOption();
    [[nodiscard]] int option() const; ///< The first that is on.

    ReportTab tab_;
    FormState& form_;
    int clickedOption_ = 0;
    std::vector<OptionButton*> options_;
    std::vector<DateFields> dates_; ///< Mk and TDBD.
    std::vector<Row> dateRows_;
    std::vector<CodeCombo*> combos_;
    std::vector<RangeKind> comboKinds_;
    std::vector<Row> comboRows_;
    QLabel* listCaption_ = nullptr;
    HintedList* list_ = nullptr; ///< Null on the tabs without one.
    QLabel* punchMarkCaption_ = nullptr;
    QWidget* FrameTS_ = nullptr; ///< Null on the tabs without punch marks.
    std::vector<OptionButton*> punchMarks_;
};

} // namespace pontrel
