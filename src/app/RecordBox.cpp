#include "app/RecordBox.h"

#include "store/Schema.h"

#include <QLineEdit>
#include <QValidator>

namespace pontrel {

namespace {

/// The box's own limit counts units of the text's encoding, and would cut a rare character in half.
class LengthLimit : public QValidator {
  public:
    LengthLimit(qsizetype characters, QObject* parent) : QValidator(parent), characters_(characters) {}

    State validate(QString& text, int&) const override {
        return text.toUcs4().size() <= characters_ ? Acceptable : Invalid;
    }

  private:
    qsizetype characters_;
};

} // namespace

void limitToColumn(QLineEdit& box, QStringView table, QStringView column) {
    const Table* found = findTable(table);
    const int place = found ? found->indexOf(column) : -1;
    const int length = place >= 0 ? found->columns.at(static_cast<std::size_t>(place)).length : 0;
    if (length > 0)
        box.setValidator(new LengthLimit(length, &box));
}

} // namespace pontrel
