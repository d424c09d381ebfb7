#include "store/Connection.h"

#include "store/StoreText.h"

#include <sqlite3.h>

namespace pontrel {

Run::~Run() {
    statement_.tryReset();
    // What was bound without a copy goes with this run.
    if (kept_ > 0)
        statement_.clearBindings();
}

void Run::bindText(int parameter, const QString& text) {
    if (kept_ < texts_.size() && text.size() < MostStoreText) {
        char* const start = texts_[kept_].data();
        char* end = start;
        for (const QChar character : text) {
            if (character.unicode() == 0 || character.unicode() > 0x7f)
                return statement_.bind(parameter, text.toStdString());
            *end++ = static_cast<char>(character.unicode());
        }
        return bindKept(parameter, end);
    }
    statement_.bind(parameter, text.toStdString());
}

char* Run::keep() {
    return kept_ < texts_.size() ? texts_[kept_].data() : nullptr;
}

void Run::bindKept(int parameter, char* end) {
    *end = '\0';
    statement_.bindNoCopy(parameter, texts_[kept_++].data());
}

void Run::bind(int parameter, const Value& value) {
    if (parameter > statement_.getBindParameterCount())
        return;
    switch (value.type()) {
    case ColumnType::Unknown:
        statement_.bind(parameter);
        break;
    case ColumnType::Boolean:
        statement_.bind(parameter, value.toBoolean() ? 1 : 0);
        break;
    case ColumnType::Integer:
        statement_.bind(parameter, static_cast<int64_t>(value.toInteger()));
        break;
    case ColumnType::Real:
        statement_.bind(parameter, value.toReal());
        break;
    case ColumnType::Text:
        bindText(parameter, value.toText());
        break;
    case ColumnType::Date:
        if (char* text = keep())
            bindKept(parameter, appendStoreText(text, value.toDate()));
        else
            statement_.bind(parameter, storeText(value.toDate()));
        break;
    case ColumnType::Time:
        if (char* text = keep())
            bindKept(parameter, appendStoreText(text, value.toTime()));
        else
            statement_.bind(parameter, storeText(value.toTime()));
        break;
    case ColumnType::DateTime:
        statement_.bind(parameter, storeText(value.toDateTime()));
        break;
    }
}

Value Run::value(int column, ColumnType type) const {
    const SQLite::Column stored = statement_.getColumn(column);
    switch (stored.getType()) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        if (type == ColumnType::Boolean)
            return stored.getInt64() != 0;
        return static_cast<std::int64_t>(stored.getInt64());
    case SQLITE_FLOAT:
        return stored.getDouble();
    default: {
        const char* text = stored.getText();
        return readStoreText(text, stored.getBytes(), type);
    }
    }
}

std::int64_t Run::identity(int column) const {
    return static_cast<std::int64_t>(statement_.getColumn(column).getInt64());
}

} // namespace pontrel
