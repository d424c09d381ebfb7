#include "app/RecordPage.h"

#include "app/Events.h"
#include "app/Prompts.h"
#include "app/Window.h"
#include "app/controls/StatusBar.h"
#include "app/controls/TDBGrid.h"
#include "app/controls/TabPages.h"
#include "rules/ActionHost.h"
#include "rules/Session.h"
#include "store/DataSource.h"

#include <QScopedValueRollback>
#include <QTabWidget>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

using Actions = std::set<BarAction>;

const Actions OnWithRows = {BarAction::Add,      BarAction::Edit,  BarAction::Delete, BarAction::First,
                            BarAction::Previous, BarAction::Next,  BarAction::Last,   BarAction::Refresh,
                            BarAction::Print,    BarAction::Leave, BarAction::Back};
const Actions OnWithoutRows = {BarAction::Add, BarAction::Refresh, BarAction::Print, BarAction::Leave,
                               BarAction::Back};
const Actions OnInEdit = {BarAction::Cancel, BarAction::Save};

Actions united(Actions actions, const Actions& more) {
    actions.insert(more.begin(), more.end());
    return actions;
}

void run(const std::function<void()>& step) {
    if (step)
        step();
}

/// Whether the step failed.
bool passOver(const std::function<void()>& step) {
    try {
        step();
    } catch (const RunTimeError&) {
        return true;
    }
    return false;
}

/// The mark of the current row; nothing where there is none.
std::optional<qint64> currentRow(DataSource& source) {
    std::optional<qint64> row;
    (void)passOver([&] { row = source.recordset().Bookmark(); });
    return row;
}

} // namespace

void openSource(DataSource& source, const QString& recordSource) {
    source.setDatabaseName(storePath());
    source.setRecordSource(recordSource);
    source.Refresh();
    source.MoveLastAndFirst();
}

RecordPage::RecordPage(Window& window, RecordParts parts, RecordRules rules, RecordSteps steps)
    : QObject(&window)
    , window_(window)
    , parts_(std::move(parts))
    , rules_(std::move(rules))
    , steps_(std::move(steps)) {
    setEditAreaEnabled(false);
    connectParts();
}

void RecordPage::connectParts() {
    onEvent(parts_.source, &DataSource::Reposition, this, [this] { followSource(); });
    if (parts_.grid)
        parts_.grid->setSource(parts_.source);
    if (parts_.bar)
        onEvent(parts_.bar, &RecordBar::pressed, this, [this](BarAction action) { perform(action); });
    if (parts_.statusBar)
        onEvent(parts_.statusBar, &StatusBar::leaveClicked, this, [this] { window_.unload(); });
    if (parts_.tabs)
        onEvent(parts_.tabs, &QTabWidget::currentChanged, this, [this](int tab) {
            if (tab == parts_.tab)
                RefreshRecordBar();
        });
}

void RecordPage::open(const QString& recordSource) {
    openSource(*parts_.source, recordSource);
}

void RecordPage::followSource() {
    showCounter();
    run(steps_.afterReposition);
    // Buttons are not touched, but where code has moved the source off a row that was being edited.
    if (showsEdit_ && !performing_ && parts_.source->editMode() == EditMode::None) {
        showsEdit_ = false;
        RefreshRecordBar();
    }
}

void RecordPage::RefreshRecordBar() {
    if (steps_.beforeBar && !steps_.beforeBar())
        return;
    showCounter();
    if (parts_.source->editMode() == EditMode::None)
        showBrowseState();
    else
        showEditState();
}

void RecordPage::showCounter() {
    if (!parts_.statusBar)
        return;
    const Recordset& rows = parts_.source->recordset();
    parts_.statusBar->showCounter(rows.AbsolutePosition(), rows.RecordCount());
}

void RecordPage::showBrowseState() {
    showsEdit_ = false;
    setEditAreaEnabled(false);
    if (parts_.bar) {
        const bool noRows = parts_.source->isEmpty();
        parts_.bar->setStates(noRows ? united(OnWithoutRows, rules_.alsoWithoutRows)
                                     : united(OnWithRows, rules_.alsoWithRows),
                              rules_.leftAlone);
    }
    if (parts_.statusBar) {
        parts_.statusBar->setText(2, QString());
        parts_.statusBar->setLeaveRaised(true);
    }
    setOtherTabsEnabled(true);
}

void RecordPage::showEditState() {
    showsEdit_ = true;
    const bool adding = parts_.source->editMode() == EditMode::Add;
    if (parts_.statusBar)
        parts_.statusBar->setText(2, adding ? u"新增資料"_s : u"修改資料"_s);
    setEditAreaEnabled(true);
    focusFirst();
    if (parts_.bar)
        parts_.bar->setStates(OnInEdit, rules_.leftAlone);
    if (parts_.statusBar)
        parts_.statusBar->setLeaveRaised(false);
    setOtherTabsEnabled(false);
}

void RecordPage::setEditAreaEnabled(bool enabled) {
    for (QWidget* part : parts_.editArea)
        part->setEnabled(enabled);
}

void RecordPage::setOtherTabsEnabled(bool enabled) {
    if (parts_.tabs)
        pontrel::setOtherTabsEnabled(*parts_.tabs, enabled);
}

void RecordPage::focusFirst() {
    if (steps_.focusFirst)
        steps_.focusFirst();
    else if (parts_.firstField)
        parts_.firstField->setFocus();
}

void RecordPage::perform(BarAction action) {
    const QScopedValueRollback guard(performing_, true);
    switch (action) {
    case BarAction::Add:
        parts_.source->AddNew();
        run(steps_.afterAdd);
        break;
    case BarAction::Edit:
        parts_.source->Edit();
        run(steps_.afterEdit);
        break;
    case BarAction::Delete:
        deleteRow();
        return;
    case BarAction::Cancel:
        parts_.source->CancelUpdate();
        break;
    case BarAction::Save:
        if (!save())
            return;
        break;
    case BarAction::Query:
        run(steps_.query);
        break;
    case BarAction::Refresh:
        if (steps_.refresh)
            steps_.refresh();
        else
            parts_.source->Refresh();
        break;
    case BarAction::Print:
        window_.jumpTo(7, rules_.printTab);
        return;
    case BarAction::Leave:
        window_.unload();
        return;
    case BarAction::Back:
        window_.jumpTo(3, 2);
        return;
    case BarAction::First:
    case BarAction::Previous:
    case BarAction::Next:
    case BarAction::Last:
        move(action);
        run(steps_.afterMove);
        break;
    }
    RefreshRecordBar();
}

void RecordPage::move(BarAction action) {
    DataSource& source = *parts_.source;
    switch (action) {
    case BarAction::First:
        source.MoveFirst();
        break;
    case BarAction::Previous:
        source.MovePrevious();
        if (source.recordset().AtBOF())
            source.MoveFirst();
        break;
    case BarAction::Next:
        source.MoveNext();
        if (source.recordset().AtEOF())
            source.MoveLast();
        break;
    default:
        source.MoveLast();
        break;
    }
}

bool RecordPage::save() {
    DataSource& source = *parts_.source;
    switch (steps_.beforeSave ? steps_.beforeSave() : SaveStep::Save) {
    case SaveStep::StayInEdit:
        return false;
    case SaveStep::CancelRow:
        source.CancelUpdate();
        return true;
    case SaveStep::Save:
        break;
    }
    source.Update();
    source.setBookmark(source.recordset().LastModified());
    run(steps_.afterSave);
    return true;
}

/// Goes back to the row where the source has moved off it. Throws where the row is there no more.
void RecordPage::stayOn(std::optional<qint64> row) {
    DataSource& source = *parts_.source;
    if (row && row != currentRow(source))
        source.setBookmark(*row);
}

void RecordPage::deleteRow() {
    const std::optional<qint64> asked = currentRow(*parts_.source);
    const MsgAnswer answer =
        MsgBox(u"確定刪除這筆資料?"_s, u"確認刪除"_s, MsgIcon::Question, MsgButtons::YesNoDefaultNo);
    if (answer != MsgAnswer::Yes) {
        RefreshRecordBar();
        return;
    }
    beep();
    bool failed = passOver([&] { stayOn(asked); });
    if (!failed) {
        for (const auto& step : steps_.beforeDelete)
            failed |= passOver(step);
        failed |= passOver([this] { parts_.source->Delete(); });
    }
    if (failed) {
        beep();
        MsgBox(rules_.deleteRefused, FaultTitle, MsgIcon::Exclamation);
        return;
    }
    // Deliberate: from here on as well a failure stops nothing, and goes without a word.
    (void)passOver([this] { endDelete(); });
    (void)passOver([this] { RefreshRecordBar(); });
}

void RecordPage::endDelete() {
    DataSource& source = *parts_.source;
    if (source.isEmpty()) {
        source.Refresh();
        return;
    }
    switch (rules_.deleteEnd) {
    case DeleteEnd::Last: // Deliberate: not on the neighbour of the row deleted.
        source.MoveLast();
        break;
    case DeleteEnd::First:
        source.MoveLast();
        source.Refresh();
        break;
    case DeleteEnd::Next:
        move(BarAction::Next);
        break;
    }
}

} // namespace pontrel
