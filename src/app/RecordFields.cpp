#include "app/RecordFields.h"

#include "app/DatePair.h"
#include "app/controls/LongTexts.h"
#include "app/controls/NumberEntry.h"
#include "app/controls/TDBDate.h"
#include "app/controls/TDBTime.h"
#include "store/DataSource.h"
#include "store/Schema.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QValidator>

#include <algorithm>
#include <utility>

namespace pontrel {

namespace {

/// The box's own limit counts units of the text's encoding, and would cut a rare character in half.
class LengthLimit : public QValidator {
  public:
    LengthLimit(qsizetype characters, QLineEdit* box)
        : QValidator(box), characters_(characters), room_(characters), box_(box) {}

    /// Cuts what is inserted to the room that there is. What stands in the box by code is whole; where that
    /// is too long, it may not grow beyond what it was.
    State validate(QString& text, int& cursor) const override {
        if (!box_->isModified())
            room_ = std::max(characters_, length(text));
        if (length(text) > room_) {
            dropBefore(text, cursor, length(text) - room_);
            if (text == known_)
                return Invalid;
        }
        known_ = text;
        return Acceptable;
    }

  private:
    static qsizetype length(const QString& text) { return text.toUcs4().size(); }

    static void dropBefore(QString& text, int& cursor, qsizetype characters) {
        for (; characters > 0 && cursor > 0; --characters) {
            const int units = cursor > 1 && text.at(cursor - 1).isLowSurrogate() ? 2 : 1;
            cursor -= units;
            text.remove(cursor, units);
        }
    }

    qsizetype characters_;
    mutable qsizetype room_;
    QLineEdit* box_;
    mutable QString known_; ///< What stood in the box before.
};

/// The column of that name; null where there is none.
const Column* columnOf(QStringView table, QStringView name) {
    const Table* found = findTable(table);
    const int place = found ? found->indexOf(name) : -1;
    return place >= 0 ? &found->columns.at(static_cast<std::size_t>(place)) : nullptr;
}

/// The width in pixels of a box that shows that many characters, of the widest kind.
int widthFor(const QLineEdit& box, int characters) {
    constexpr int Frame = 10;
    return characters * box.fontMetrics().horizontalAdvance(QChar(0x570b)) + Frame;
}

/// Limits the box to what an entry of that column may have. A number's box takes digits as they are meant.
void suitToColumn(QLineEdit& box, const Column* column, int width) {
    if (!column)
        return;
    if (column->type == ColumnType::Integer || column->type == ColumnType::Real) {
        makeNumberBox(box);
    } else if (column->length > 0) {
        limitEntry(box, column->length, width);
    }
}

template<typename Control>
Control* named(Control* control, const QString& name, const QString& spokenName) {
    control->setObjectName(name);
    control->setAccessibleName(spokenName);
    return control;
}

} // namespace

void limitEntry(QLineEdit& box, int characters, int width) {
    const QValidator* before = box.validator();
    box.setValidator(new LengthLimit(characters, &box));
    delete before;
    if (width > 0)
        box.setFixedWidth(std::max(width, widthFor(box, characters)));
}

QHBoxLayout* fieldLine(std::initializer_list<QWidget*> parts) {
    auto* line = new QHBoxLayout;
    line->setSpacing(FieldSpacing);
    for (QWidget* part : parts)
        line->addWidget(part);
    line->addStretch(1);
    return line;
}

RecordFields::RecordFields(QWidget& area, DataSource& source, QString table)
    : area_(area), source_(source), table_(std::move(table)) {}

QLineEdit* RecordFields::box(const QString& name, const QString& spokenName, const QString& column,
                             int width) const {
    QLineEdit* box = freeBox(name, spokenName, width);
    suitToColumn(*box, columnOf(table_, column), width);
    source_.bind(box, "text", column);
    return box;
}

QLineEdit* RecordFields::freeBox(const QString& name, const QString& spokenName, int width) const {
    QLineEdit* box = named(new QLineEdit(&area_), name, spokenName);
    if (width > 0)
        box->setFixedWidth(width);
    return box;
}

QLineEdit* RecordFields::hiddenBox(const QString& name, const QString& column) const {
    auto* box = new QLineEdit(&area_);
    box->setObjectName(name);
    box->hide();
    source_.bind(box, "text", column);
    return box;
}

QCheckBox* RecordFields::check(const QString& name, const QString& caption, const QString& column) const {
    QCheckBox* check = named(new QCheckBox(caption, &area_), name, caption);
    source_.bind(check, "checked", column);
    return check;
}

TDBTime* RecordFields::time(const QString& name, const QString& spokenName, const QString& column) const {
    TDBTime* time = named(new TDBTime(&area_), name, spokenName);
    if (!column.isEmpty())
        source_.bind(time, "value", column);
    return time;
}

DateFields RecordFields::date(const QString& maskName, const QString& dateName, const QString& spokenName,
                              const QString& column) const {
    const DateFields fields = makeDateFields(&area_, maskName, dateName, spokenName);
    if (!column.isEmpty())
        source_.bind(fields.date, "value", column);
    return fields;
}

QLabel* RecordFields::shown(const QString& name, const QString& column) const {
    auto* label = new LongLabel(&area_);
    label->setObjectName(name);
    if (!column.isEmpty())
        source_.bind(label, "text", column, true);
    return label;
}

QLabel* RecordFields::caption(const QString& text, QWidget* buddy) const {
    auto* label = new QLabel(text, &area_);
    label->setBuddy(buddy);
    return label;
}

} // namespace pontrel
