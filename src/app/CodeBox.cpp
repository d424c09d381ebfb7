#include "app/CodeBox.h"

#include "app/Events.h"
#include "app/FocusWatch.h"
#include "app/FormState.h"
#include "app/KeyHook.h"
#include "app/Prompts.h"
#include "app/controls/Keys.h"
#include "rules/Session.h"
#include "store/DataSource.h"
#include "store/StatementText.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

#include <utility>

namespace pontrel {

using namespace Qt::StringLiterals;

namespace {

constexpr int Spacing = 4;
constexpr int CaptionMargin = 6; ///< Pixels at each side of a button's caption.

Rows rowOfCode(LookupKind kind, const QString& columns, const QString& code) {
    const LookupTexts& texts = lookupTexts(kind);
    return sharedDatabase().select(u"SELECT "_s + columns + u" FROM "_s + texts.table + u" WHERE "_s +
                                   texts.codeColumn + u" ="_s + textLiteral(code));
}

/// What the lookup's button says: what it looks up is a code, whatever the box calls it.
QString spokenSearch(QString spokenName) {
    for (const QString& word : {u"代碼"_s, u"代號"_s, u"編號"_s}) {
        if (spokenName.endsWith(word))
            spokenName.chop(word.size());
    }
    return u"查詢"_s + spokenName + u"代碼"_s;
}

/// In place of the picture.
void putCaption(QPushButton& button, const QString& caption) {
    button.setIcon({});
    button.setText(caption);
    button.setFixedWidth(button.fontMetrics().horizontalAdvance(caption) + 2 * CaptionMargin);
}

} // namespace

std::optional<QString> nameOfCode(LookupKind kind, const QString& code) {
    const Rows rows = rowOfCode(kind, lookupTexts(kind).nameColumn, code);
    return rows.isEmpty() ? std::nullopt : std::optional(rows.at(0, 0).joined());
}

CodeBox::CodeBox(const RecordFields& fields, const CodeBoxRow& row)
    : row_(row)
    , source_(fields.source())
    , box_(row.column.isEmpty() ? fields.freeBox(row.box, row.spokenName, row.width)
                                : fields.box(row.box, row.spokenName, row.column, row.width))
    , columns_(lookupTexts(row.kind).nameColumn) {
    setParent(box_);
    if (row.length > 0)
        limitEntry(*box_, row.length, row.width);
    if (!row.search.isEmpty()) {
        search_ = makeSearchButton(box_->parentWidget(), row.search, spokenSearch(row.spokenName));
        if (!row.searchCaption.isEmpty())
            putCaption(*search_, row.searchCaption);
        onEvent(search_, &QPushButton::clicked, this,
                [this] { searchCode(row_.kind, *box_, row_.afterSearch); });
    }
    if (!row.label.isEmpty())
        label_ = fields.shown(row.label);
    for (const RelatedName& related : row.related) {
        columns_ += u',' + related.column;
        related_.push_back(fields.shown(related.label));
    }
    if (!row.caption.isEmpty())
        caption_ = fields.caption(row.caption, box_);
}

QString CodeBox::text() const {
    return box_->text();
}

void CodeBox::addTo(QGridLayout& grid, int row, int column) const {
    if (caption_)
        grid.addWidget(caption_, row, column, Qt::AlignRight);
    auto* line = new QHBoxLayout;
    line->setSpacing(Spacing);
    line->addWidget(box_);
    if (search_)
        line->addWidget(search_);
    if (label_)
        line->addWidget(label_, 1);
    else
        line->addStretch(1);
    grid.addLayout(line, row, column + 1);
}

void CodeBox::onFound(const QString& columns, std::function<void(const Rows&)> routine) {
    columns_ += u',' + columns;
    found_ = std::move(routine);
}

void CodeBox::onEnter(std::function<void()> routine) {
    onEnter_ = std::move(routine);
}

void CodeBox::connectTo(FormState& form) {
    form_ = &form;
    onEvent(box_, &QLineEdit::textChanged, this, [this] { changed(); });
    if (row_.check == CodeCheck::Leaving)
        form.watch.onLostFocus(box_, [this] { left(); });
    if (row_.check == CodeCheck::Enter || onEnter_)
        onKeyDown(*box_, [this](const QKeyEvent& key) { return isEnter(key) && entered(); });
}

void CodeBox::clearName() {
    if (label_)
        label_->clear();
    for (QLabel* related : related_)
        related->clear();
}

void CodeBox::clear() {
    box_->clear();
    clearName();
    forgetMark();
}

void CodeBox::forgetMark() {
    // Boxes that are never told of may share the number of one that is.
    if (form_ && row_.check != CodeCheck::Never && isMarked())
        form_->mark = 0;
}

bool CodeBox::looksUp() const {
    return label_ || !related_.empty() || found_ || row_.check != CodeCheck::Never;
}

bool CodeBox::isEmptiedByRoutine() const {
    return text().isEmpty() && !box_->isModified();
}

bool CodeBox::isMarked() const {
    return form_->mark == row_.number;
}

void CodeBox::changed() {
    form_->mark = 0;
    if (!looksUp())
        return;
    const Rows row = rowOfCode(row_.kind, columns_, text());
    if (row.isEmpty()) {
        if (!isEmptiedByRoutine() && !source_.isFilling())
            form_->mark = row_.number; // Deliberate: the name of the code before stays.
        return;
    }
    showNames(row);
    if (found_)
        found_(row);
}

void CodeBox::showNames(const Rows& row) {
    if (label_)
        label_->setText(row.at(0, lookupTexts(row_.kind).nameColumn).joined());
    for (std::size_t each = 0; each < related_.size(); ++each) {
        const auto& [column, kind, label] = row_.related.at(each);
        if (const auto name = nameOfCode(kind, row.at(0, column).joined()))
            related_.at(each)->setText(*name);
    }
}

void CodeBox::showNameOfRow() {
    clearName();
    if (const Rows row = rowOfCode(row_.kind, columns_, text()); !row.isEmpty())
        showNames(row);
}

void CodeBox::left() {
    // Deliberate: only the box that was changed last is tested.
    if (isMarked())
        refuse();
}

bool CodeBox::entered() {
    if (row_.check == CodeCheck::Enter && isMarked())
        refuse();
    else if (onEnter_)
        onEnter_();
    else
        return false;
    return true;
}

void CodeBox::refuse() {
    MsgBox(u"無此【"_s + lookupTexts(row_.kind).codeWord + u"】,請重新輸入"_s, u"警告訊息"_s);
    if (row_.refusal == CodeRefusal::Lookup || row_.refusal == CodeRefusal::LookupAndFocus) {
        searchCode(row_.kind, *box_);
        // A lookup without a pick leaves what nobody has typed, also in a box that was empty before. It keeps
        // nobody, above all not where the table has no code to pick.
        if (isEmptiedByRoutine())
            form_->mark = 0;
    }
    if (row_.refusal == CodeRefusal::FocusBackOnce)
        form_->mark = 0;
    if (row_.refusal == CodeRefusal::FocusBack || row_.refusal == CodeRefusal::FocusBackOnce ||
        row_.refusal == CodeRefusal::LookupAndFocus) {
        FocusWatch::putBack(*box_);
        box_->selectAll(); // so that typing replaces it
    }
}

} // namespace pontrel
