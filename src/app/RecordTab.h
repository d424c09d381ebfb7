#pragma once

#include "app/RecordFields.h"
#include "app/RecordPage.h"

#include <QWidget>

#include <memory>

class QVBoxLayout;

namespace pontrel {

class FocusWatch;

/// What a tab of a record window is made of.
struct RecordTabPlan {
    int index = 0;          ///< Its place in SSTab1: i in the names Data1(i), Frame1(i) and CtrlCmd<i>.
    QString caption;        ///< Of the tab.
    QString table;          ///< What its source shows when it is opened; its columns limit the entries.
    QString frameCaption{}; ///< Of the edit area; without one it has a plain border.
    BarMap bar = wholeBar();
};

/// What the controls of a window share, whatever tab they stand on.
struct FormState {
    FocusWatch& watch;
    bool updating = false; ///< A date pair is writing from its one control into the other.
    int mark = 0; ///< What has just been typed wrong: the number of a code box or date pair, 0 for none.
};

/// A tab of a record window: the source Data1(i) over its table and, where the tab asks for them, the edit
/// area Frame1(i), the bar CtrlCmd<i> and a grid. A tab that only shows rows asks for the grid alone. Its
/// window (RecordWindow) makes a record page of it.
class RecordTab : public QWidget {
    Q_OBJECT
  public:
    explicit RecordTab(RecordTabPlan plan);

    [[nodiscard]] int index() const { return plan_.index; }
    [[nodiscard]] const QString& caption() const { return plan_.caption; }
    [[nodiscard]] const QString& table() const { return plan_.table; }
    [[nodiscard]] DataSource& source() const { return *source_; }

    /// What the record page of this tab works on, with no tabs and no status bar yet.
    [[nodiscard]] virtual RecordParts parts();
    [[nodiscard]] virtual RecordRules rules() { return {}; }
    [[nodiscard]] virtual RecordSteps steps() { return {}; }
    /// Whether Enter moves on in its boxes as Tab does.
    [[nodiscard]] virtual bool entersAsTab() const { return true; }
    /// Puts the routines behind its controls, once it stands in its window, whose state outlives it.
    virtual void connectControls(FormState& form);

  protected:
    /// The edit area, made where it is first asked for, as the next two are.
    [[nodiscard]] QWidget& frame();
    /// Makes the fields of the edit area.
    [[nodiscard]] const RecordFields& fields();
    /// The buttons: to be asked for behind the fields, so that Tab reaches them last.
    [[nodiscard]] RecordBar& bar();
    [[nodiscard]] QVBoxLayout& rows() { return *rows_; }

    /// A list of the rows, above or below the frame: the caller places it.
    [[nodiscard]] TDBGrid* makeGrid(const QString& name);
    /// Takes the focus when an edit begins.
    void setFirstField(QWidget* field) { firstField_ = field; }

  private:
    RecordTabPlan plan_;
    DataSource* source_;
    QWidget* frame_ = nullptr;
    std::unique_ptr<RecordFields> fields_;
    RecordBar* bar_ = nullptr;
    QVBoxLayout* rows_;
    TDBGrid* grid_ = nullptr;
    QWidget* firstField_ = nullptr;
};

} // namespace pontrel
