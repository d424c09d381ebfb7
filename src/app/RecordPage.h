#pragma once

#include "app/RecordBar.h"

#include <QList>
#include <QObject>
#include <QString>

#include <functional>
#include <optional>
#include <set>
#include <vector>

class QTabWidget;
class QWidget;

namespace pontrel {

class DataSource;
class StatusBar;
class TDBGrid;
class Window;

/// The controls of a record page. All but the source may be missing.
struct RecordParts {
    DataSource* source = nullptr;
    QList<QWidget*> editArea{};    ///< Enabled while a row is edited, and only then.
    QWidget* firstField = nullptr; ///< Takes the focus when an edit begins.
    RecordBar* bar = nullptr;
    TDBGrid* grid = nullptr;
    StatusBar* statusBar = nullptr; ///< Shared by the pages of a window.
    QTabWidget* tabs = nullptr;
    int tab = 0; ///< The index of the page among the tabs.
};

/// Where a delete leaves the page.
enum class DeleteEnd {
    Last,  ///< On the last row.
    First, ///< On the first row, the source run again.
    Next   ///< On the row behind the deleted one, or the last.
};

/// In what a page differs from the others without code of its own.
struct RecordRules {
    std::set<BarAction> alsoWithRows{};    ///< On in the browse state with rows, besides the usual buttons.
    std::set<BarAction> alsoWithoutRows{}; ///< On in the browse state without rows, besides the usual ones.
    std::set<BarAction> leftAlone{};       ///< Never touched: on from the start to the end.
    int printTab = 0;                      ///< The tab of Form7 behind the print button.
    DeleteEnd deleteEnd = DeleteEnd::Last;
    QString deleteRefused = QStringLiteral("無法刪除資料!");
};

/// How a page's own save step ends.
enum class SaveStep {
    Save,      ///< The row is to be saved.
    CancelRow, ///< The edit is cancelled.
    StayInEdit ///< Nothing more happens: the focus stays where the step has put it.
};

/// A page's own steps. Each may be empty.
struct RecordSteps {
    /// Ahead of every refresh of the bar; false where there is nothing to refresh.
    std::function<bool()> beforeBar{};
    std::function<void()> afterReposition{}; ///< Another row has become current: labels that follow it.
    std::function<void()> afterAdd{};
    std::function<void()> afterEdit{};
    std::function<void()> focusFirst{}; ///< In place of the focus on the first field.
    std::function<SaveStep()> beforeSave{};
    std::function<void()> afterSave{}; ///< The row saved is current.
    std::vector<std::function<void()>>
        beforeDelete{}; ///< A failure of one stops neither the others nor the delete.
    std::function<void()> afterMove{};
    std::function<void()> query{};
    std::function<void()> refresh{}; ///< In place of running the source again.
};

/// Points a source at a table or a selection of the store, runs it and stands on its first row, so that the
/// number of rows is known. Throws RunTimeError.
void openSource(DataSource& source, const QString& recordSource);

/// The behaviour that all record pages share: a source whose rows are browsed, or one of them edited, in an
/// edit area, with a bar of buttons, a grid and the status bar, on a tab of its own or without tabs. It goes
/// with its window.
class RecordPage : public QObject {
    Q_OBJECT
  public:
    RecordPage(Window& window, RecordParts parts, RecordRules rules = {}, RecordSteps steps = {});

    /// openSource() for the page's source.
    void open(const QString& recordSource);

    /// Writes the panels and sets edit area, buttons, panel 8 and tabs by the state of the source. Throws
    /// RunTimeError where the source was never opened.
    void RefreshRecordBar();

    /// Does what a click on the button does, whether or not there is such a button. Where code moves the
    /// source during an edit otherwise, the edit is dropped, as sets do, and the bar goes back to the browse
    /// state.
    void perform(BarAction action);

  private:
    void connectParts();
    void followSource();
    void showCounter();
    void showBrowseState();
    void showEditState();
    void setEditAreaEnabled(bool enabled);
    void setOtherTabsEnabled(bool enabled);
    void focusFirst();
    void move(BarAction action);
    [[nodiscard]] bool save();
    void stayOn(std::optional<qint64> row);
    void deleteRow();
    void endDelete();

    Window& window_;
    RecordParts parts_;
    RecordRules rules_;
    RecordSteps steps_;
    bool performing_ = false; ///< A button's action is going on, which refreshes the bar itself.
    bool showsEdit_ = false;  ///< The bar is in the edit state.
};

} // namespace pontrel
