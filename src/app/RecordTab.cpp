#include "app/RecordTab.h"

#include "app/ControlNames.h"
#include "app/EnterAsTab.h"
#include "app/IFrmQuery.h"
#include "app/MDI.h"
#include "app/controls/TDBGrid.h"
#include "app/controls/TDBMask.h"
#include "store/DataSource.h"

#include <QGroupBox>
#include <QPushButton>
#include <QVBoxLayout>

#include <utility>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Margin = 4;
constexpr int BarWidth = ModuleWindowSize.width() - 24; ///< What window and page leave of the width.

/// A frame without a caption needs no place for one.
QWidget* makeFrame(const QString& caption, QWidget* page) {
    if (!caption.isEmpty())
        return new QGroupBox(caption, page);
    auto* frame = new QFrame(page);
    frame->setFrameStyle(QFrame::StyledPanel);
    return frame;
}

TDBGrid* makeList(const QString& name, QWidget* page) {
    auto* grid = new TDBGrid(page);
    grid->setObjectName(name);
    grid->setAccessibleName(u"資料"_s);
    return grid;
}

} // namespace

RecordTab::RecordTab(RecordTabPlan plan)
    : plan_(std::move(plan)), source_(new DataSource(this)), rows_(new QVBoxLayout(this)) {
    source_->setObjectName(indexed(u"Data1"_s, index()));
    rows_->setContentsMargins(Margin, Margin, Margin, Margin);
    rows_->setSpacing(Margin);
}

void RecordTab::connectControls(FormState&) {}

void RecordTab::connectFields(FormState& form) {
    form_ = &form;
    for (CodeBox* code : codes_)
        code->connectTo(form);
    for (Dates& dates : dates_)
        dates.pair = new DatePair(dates.fields.mask, dates.fields.date, dates.index, dates.rules, form.watch,
                                  form.updating, form.mark);
    connectControls(form);
    if (bar_)
        placeSearchesBehind(bar_->button(BarAction::Save));
}

void RecordTab::placeSearchesBehind(QPushButton* save) {
    QList<QPushButton*> searches;
    for (const CodeBox* code : codes_) {
        if (code->search())
            searches << code->search();
    }
    placeBehind(save, searches);
}

void RecordTab::open() {
    openSource(*source_, plan_.table);
    for (const auto& [source, recordSource] : sources_) {
        if (!recordSource.isEmpty())
            openSource(*source, recordSource);
    }
}

void RecordTab::forgetMarks() {
    for (CodeBox* code : codes_)
        code->forgetMark();
    forgetDateMarks();
}

void RecordTab::forgetDateMarks() {
    for (const Dates& dates : dates_) {
        if (dates.rules.markBase != 0 && form_->mark == dates.rules.markBase + dates.index)
            form_->mark = 0;
    }
}

void RecordTab::showDatesOfRow() {
    for (const Dates& dates : dates_) {
        if (dates.ofRow)
            dates.pair->DatePairDateChange();
    }
}

void RecordTab::askForRows(const QString& dateColumn) {
    IFrmQuery::ask(window());
    const auto statement = queryStatement(table(), dateColumn);
    if (!statement)
        return;
    source().setRecordSource(*statement);
    source().Refresh();
    source().setRecordSource(table()); // which the next refresh shows
}

void RecordTab::clearMasks() {
    for (const Dates& dates : dates_)
        dates.fields.mask->clear();
    forgetDateMarks();
}

void RecordTab::clearNames() {
    for (CodeBox* code : codes_)
        code->clearName();
}

CodeBox* RecordTab::addCode(const CodeBoxRow& row) {
    return codes_.emplace_back(new CodeBox(fields(), row));
}

DateFields RecordTab::addDate(int index, const QString& spokenName, const QString& column,
                              const DatePairRules& rules) {
    const DateFields made =
        fields().date(indexed(u"TDBMask1"_s, index), indexed(u"TDBDate1"_s, index), spokenName, column);
    dates_.push_back({made, index, rules, !column.isEmpty()});
    return made;
}

DataSource* RecordTab::addSource(const QString& name, const QString& recordSource) {
    auto* source = new DataSource(this);
    source->setObjectName(name);
    sources_.push_back({source, recordSource});
    return source;
}

QWidget& RecordTab::frame() {
    if (!frame_) {
        frame_ = makeFrame(plan_.frameCaption, this);
        frame_->setObjectName(indexed(u"Frame1"_s, index()));
    }
    return *frame_;
}

const RecordFields& RecordTab::fields() {
    if (!fields_)
        fields_ = std::make_unique<RecordFields>(plan_.hasFrame ? frame() : *this, *source_, plan_.table);
    return *fields_;
}

RecordBar& RecordTab::bar() {
    if (!bar_)
        bar_ = new RecordBar(u"CtrlCmd%1"_s.arg(index()), plan_.bar, BarWidth, this);
    return *bar_;
}

TDBGrid* RecordTab::makeGrid(const QString& name) {
    grid_ = makeList(name, this); // which its record page gives its source
    if (plan_.hasFrame)
        grid_->setEmptyText(u"「%1」沒有資料。請按「新增資料」建立第一筆。"_s.arg(plan_.caption));
    return grid_;
}

TDBGrid* RecordTab::makeGrid(const QString& name, DataSource& source) {
    TDBGrid* grid = makeList(name, this);
    grid->setSource(&source);
    return grid;
}

RecordParts RecordTab::parts() {
    RecordParts parts{.source = source_, .firstField = firstField_, .bar = bar_, .grid = grid_};
    if (frame_)
        parts.editArea = {frame_};
    return parts;
}

} // namespace pontrel
