#include "windows/master/MasterPage.h"

#include "app/ControlNames.h"
#include "app/MDI.h"
#include "app/controls/TDBGrid.h"
#include "store/DataSource.h"

#include <QGroupBox>
#include <QVBoxLayout>

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

} // namespace

MasterPage::MasterPage(int tab, const QString& frameCaption)
    : tab_(tab)
    , source_(new DataSource(this))
    , frame_(makeFrame(frameCaption, this))
    , fields_(*frame_, *source_, tableOf(tab))
    , rows_(new QVBoxLayout(this)) {
    source_->setObjectName(indexed(u"Data1"_s, tab));
    frame_->setObjectName(indexed(u"Frame1"_s, tab));
    rows_->setContentsMargins(Margin, Margin, Margin, Margin);
    rows_->setSpacing(Margin);
}

QString MasterPage::tableOf(int tab) {
    return u"Base0%1"_s.arg(tab + 1);
}

RecordBar& MasterPage::bar() {
    if (!bar_)
        bar_ = new RecordBar(u"CtrlCmd%1"_s.arg(tab_), wholeBar(), BarWidth, this);
    return *bar_;
}

TDBGrid* MasterPage::makeGrid(const QString& name) {
    grid_ = new TDBGrid(this);
    grid_->setObjectName(name);
    grid_->setAccessibleName(u"資料"_s);
    return grid_;
}

RecordParts MasterPage::parts() {
    return {.source = source_, .editArea = {frame_}, .firstField = firstField_, .bar = bar_, .grid = grid_};
}

} // namespace pontrel
