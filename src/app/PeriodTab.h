#pragma once

#include "app/RecordTab.h"
#include "app/controls/TDBGrid.h"

namespace pontrel {

/// What a tab that asks about a period is made of, besides its plan.
struct PeriodTabParts {
    CodeBoxRow employee; ///< Whose rows are asked for.
    int dates = 0;       ///< Index of the pair of the period's begin; that of its end is the next.
    DatePairRules rules;
    QString grid; ///< The object name of the list.
    std::vector<GridColumn> columns;
    bool atKeys = false; ///< Keys in the mask of the end ask as well, changes of its text do always.
};

/// A tab that lists an answer about one employee and a period. It is asked anew whenever the end of the
/// period has been entered. Deliberate: never by a change of the employee or the begin.
class PeriodTab : public RecordTab {
    Q_OBJECT
  public:
    void connectControls(FormState& form) override;

  protected:
    /// The plan's own edit area is left out: boxes and list stand on the page itself.
    PeriodTab(RecordTabPlan plan, const PeriodTabParts& parts);

    [[nodiscard]] QString EmpNo() const { return employee_->text(); }
    // Those of the date controls: a mask holds no day from 2011 on. Either may be none.
    [[nodiscard]] QDate first() const;
    [[nodiscard]] QDate last() const;
    /// The begin as its mask says it, none where that is blank or no date; as the date control does for a day
    /// that no mask can hold.
    [[nodiscard]] QDate firstTyped() const;
    [[nodiscard]] bool isEndTyped() const; ///< The mask of the end holds a whole date.
    [[nodiscard]] TDBGrid& grid() const { return *grid_; }

    /// Fills the list.
    virtual void ask() = 0;
    /// The mask of the end has been touched: asks where it holds a whole date.
    virtual void endTouched();

  private:
    CodeBox* employee_;
    DateFields first_;
    DateFields last_;
    TDBGrid* grid_;
    bool atKeys_;
};

} // namespace pontrel
