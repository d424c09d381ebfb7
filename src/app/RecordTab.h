#pragma once

#include "app/CodeBox.h"
#include "app/DatePair.h"
#include "app/FormState.h"
#include "app/RecordFields.h"
#include "app/RecordPage.h"

#include <QWidget>

#include <memory>
#include <vector>

class QVBoxLayout;

namespace pontrel {

/// What a tab of a record window is made of.
struct RecordTabPlan {
    int index = 0;          ///< Its place in SSTab1: i in the names Data1(i), Frame1(i) and CtrlCmd<i>.
    QString caption;        ///< Of the tab.
    QString table;          ///< What its source shows when it is opened; its columns limit the entries.
    QString frameCaption{}; ///< Of the edit area; without one it has a plain border.
    BarMap bar = wholeBar();
    bool hasFrame = true; ///< Without a frame its fields stand on the page itself, and are on at all times.
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
    /// Puts its own routines behind its controls, once it stands in its window, whose state outlives it. Its
    /// code boxes and date pairs have theirs already; of a control that is left, those run first.
    virtual void connectControls(FormState& form);

    // For the window.
    void connectFields(FormState& form); ///< Code boxes and date pairs, then connectControls().
    void open();                         ///< Its sources, each on its first row. Throws RunTimeError.
    void forgetMarks();                  ///< Of its own boxes: what they hold was not typed wrong by anybody.
    void showDatesOfRow();               ///< In the masks, when another row has become current.

  protected:
    /// The edit area, made where it is first asked for, as the next two are.
    [[nodiscard]] QWidget& frame();
    /// Makes the fields of the edit area, or those of a page without one.
    [[nodiscard]] const RecordFields& fields();
    /// A code box of that row; the tab keeps it and puts its routines behind it.
    [[nodiscard]] CodeBox* addCode(const CodeBoxRow& row);
    /// The date pair TDBMask1(i) and TDBDate1(i) of the window, bound where a column is given; likewise.
    [[nodiscard]] DateFields addDate(int index, const QString& spokenName, const QString& column,
                                     const DatePairRules& rules);
    /// A further source of that object name, opened with the tab's own; with an empty record source it is
    /// left for the tab to open (openSource()).
    [[nodiscard]] DataSource* addSource(const QString& name, const QString& recordSource);
    /// The buttons: to be asked for behind the fields, so that Tab reaches them last.
    [[nodiscard]] RecordBar& bar();
    /// Places the lookup buttons of all code boxes behind the button that saves, in the order of Tab, so that
    /// the last box leads to the saving. With a bar they stand behind its "存檔" by themselves.
    void placeSearchesBehind(QPushButton* save);
    [[nodiscard]] QVBoxLayout& rows() { return *rows_; }

    /// A list of the rows, above or below the frame: the caller places it.
    [[nodiscard]] TDBGrid* makeGrid(const QString& name);
    /// A list of a further source's rows.
    [[nodiscard]] TDBGrid* makeGrid(const QString& name, DataSource& source);
    /// Takes the focus when an edit begins.
    void setFirstField(QWidget* field) { firstField_ = field; }

    /// The query dialog narrows the rows by the days in that column, or leaves them as they are. The next
    /// refresh brings the whole table back. Throws RunTimeError.
    void askForRows(const QString& dateColumn);

    // For a new row.
    void clearMasks(); ///< Without a mark for a bad date.
    void clearNames(); ///< Of all code boxes.

  private:
    struct Dates {
        DateFields fields;
        int index;
        DatePairRules rules;
        bool ofRow; ///< A column stands behind it.
        DatePair* pair = nullptr;
    };
    struct FurtherSource {
        DataSource* source;
        QString recordSource;
    };

    void forgetDateMarks();

    RecordTabPlan plan_;
    DataSource* source_;
    FormState* form_ = nullptr; ///< Once it stands in its window.
    QWidget* frame_ = nullptr;
    std::unique_ptr<RecordFields> fields_;
    RecordBar* bar_ = nullptr;
    QVBoxLayout* rows_;
    TDBGrid* grid_ = nullptr;
    QWidget* firstField_ = nullptr;
    std::vector<CodeBox*> codes_;
    std::vector<Dates> dates_;
    std::vector<FurtherSource> sources_;
};

} // namespace pontrel
