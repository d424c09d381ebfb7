#include "app/RecordChild.h"

#include "app/MDI.h"
#include "rules/Session.h"
#include "store/DataSource.h"

#include <QLabel>
#include <QVBoxLayout>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Margin = 10;

QLabel* makeCaption(const QString& caption, QWidget* parent) {
    auto* label = new QLabel(caption, parent);
    label->setObjectName(u"Caption"_s);
    label->setAutoFillBackground(true);
    label->setBackgroundRole(QPalette::Highlight);
    label->setForegroundRole(QPalette::HighlightedText);
    label->setMargin(4);
    return label;
}

} // namespace

RecordChild::RecordChild(QWidget* parent, const QString& name, const QString& caption, const QString& table)
    : Window(parent), table_(table), rows_(new QVBoxLayout), Data1_(new DataSource(this)) {
    setObjectName(name);
    setWindowTitle(caption);
    setAccessibleName(caption);
    setGeometry(QRect(QPoint(0, 0), ModuleWindowSize));
    Data1_->setObjectName(u"Data1"_s);
    rows_->setContentsMargins(Margin, Margin, Margin, Margin);
    rows_->setSpacing(Margin);
    auto* whole = new QVBoxLayout(this);
    whole->setContentsMargins(0, 0, 0, 0);
    whole->setSpacing(0);
    whole->addWidget(makeCaption(caption, this));
    whole->addLayout(rows_, 1);
}

int RecordChild::contentWidth() {
    return ModuleWindowSize.width() - 2 * Margin;
}

void RecordChild::makePage(RecordParts parts, const RecordRules& rules) {
    parts.source = Data1_;
    page_ = new RecordPage(*this, std::move(parts), rules);
}

void RecordChild::onLoad() {
    OpenDB();
    openTrapped([this] {
        page_->open(table_);
        page_->RefreshRecordBar();
    });
}

void RecordChild::onUnload() {
    // For all windows, as the opening is not counted; the window beneath needs it no more.
    CloseDB();
}

} // namespace pontrel
