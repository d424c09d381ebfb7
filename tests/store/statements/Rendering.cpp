#include "store/statements/Rendering.h"

#include <SQLiteCpp/SQLiteCpp.h>

using namespace Qt::StringLiterals;

namespace pontrel::test {

namespace {

QString realCell(double value) {
    QString text = QString::number(value, 'g', 12);
    if (!text.contains(u'.') && !text.contains(u'e')) {
        text += u".0"_s;
    }
    return text;
}

QString textCell(const QString& text) {
    return u"'"_s + text + u"'"_s;
}

QString cell(const Value& value) {
    switch (value.type()) {
    case ColumnType::Unknown:
        return value.isNull() ? u"null"_s : u"unknown"_s;
    case ColumnType::Text:
        return textCell(value.toText());
    case ColumnType::Integer:
        return QString::number(value.toInteger());
    case ColumnType::Real:
        return realCell(value.toReal());
    case ColumnType::Boolean:
        return value.toBoolean() ? u"True"_s : u"False"_s;
    case ColumnType::Date:
        return value.toDate().toString(u"yyyy-MM-dd"_s);
    case ColumnType::Time:
        return value.toTime().toString(u"HH:mm:ss"_s);
    case ColumnType::DateTime:
        return value.toDateTime().toString(u"yyyy-MM-dd HH:mm:ss"_s);
    }
    return u"unknown"_s;
}

QString cell(const SQLite::Column& column) {
    if (column.isNull()) {
        return u"null"_s;
    }
    if (column.isInteger()) {
        return QString::number(column.getInt64());
    }
    if (column.isFloat()) {
        return realCell(column.getDouble());
    }
    return textCell(QString::fromStdString(column.getString()));
}

QString joinCells(const QStringList& cells) {
    QStringList parts;
    for (qsizetype i = 0; i < cells.size();) {
        qsizetype end = i + 1;
        while (end < cells.size() && cells[end] == cells[i]) {
            ++end;
        }
        const qsizetype run = end - i;
        if (run >= 3) {
            parts << cells[i] + u'*' + QString::number(run);
        } else {
            parts << QStringList(run, cells[i]);
        }
        i = end;
    }
    return parts.join(u'|');
}

QString changedCells(const QStringList& columns, const QStringList& before, const QStringList& after) {
    QString text;
    for (qsizetype i = 0; i < columns.size(); ++i) {
        if (before[i] != after[i]) {
            text += u' ' + columns[i] + u'=' + after[i];
        }
    }
    return text;
}

} // namespace

QString renderRow(const std::vector<Value>& row) {
    QStringList cells;
    for (const Value& value : row) {
        cells << cell(value);
    }
    return joinCells(cells);
}

QStringList renderRows(const Rows& rows) {
    QStringList lines;
    for (const std::vector<Value>& row : rows) {
        lines << renderRow(row);
    }
    return lines;
}

const QStringList& storeTables() {
    static const QStringList names{
        u"Base01"_s, u"Base02"_s, u"Base03"_s, u"Base04"_s,   u"Base05"_s, u"Base06"_s, u"Rule01"_s,
        u"Rule03"_s, u"Rule04"_s, u"Atte01"_s, u"AtteTemp"_s, u"Atte02"_s, u"Atte03"_s, u"AtteTemp1"_s,
        u"View02"_s, u"Holi01"_s, u"Holi02"_s, u"Holi03"_s,   u"Holi04"_s, u"Canc01"_s, u"Canc02"_s,
        u"View01"_s, u"View03"_s, u"Over01"_s, u"Syst01"_s,   u"syst02"_s, u"Syst03"_s,
    };
    return names;
}

Snapshot::Snapshot(const QString& path) {
    const SQLite::Database file(path.toStdString(), SQLite::OPEN_READONLY);
    for (const QString& name : storeTables()) {
        SQLite::Statement query(file, "SELECT rowid, * FROM \"" + name.toStdString() + "\" ORDER BY rowid");
        Content content;
        for (int i = 1; i < query.getColumnCount(); ++i) {
            content.columns << QString::fromUtf8(query.getColumnName(i));
        }
        while (query.executeStep()) {
            QStringList cells;
            for (int i = 1; i < query.getColumnCount(); ++i) {
                cells << cell(query.getColumn(i));
            }
            content.rows.emplace(query.getColumn(0).getInt64(), cells);
        }
        tables_.emplace(name, std::move(content));
    }
}

QStringList Snapshot::differencesFrom(const Snapshot& earlier) const {
    QStringList lines;
    for (const QString& name : storeTables()) {
        const Content& before = earlier.tables_.at(name);
        const Content& after = tables_.at(name);
        QStringList deleted;
        for (const auto& [number, cells] : before.rows) {
            if (!after.rows.contains(number)) {
                deleted << QString::number(number);
            }
        }
        if (!deleted.isEmpty()) {
            lines << name + u" -"_s + deleted.join(u' ');
        }
        QStringList inserted;
        for (const auto& [number, cells] : after.rows) {
            const auto old = before.rows.find(number);
            if (old == before.rows.end()) {
                inserted << name + u" +"_s + joinCells(cells);
            } else if (old->second != cells) {
                lines << name + u" ~"_s + QString::number(number) +
                             changedCells(after.columns, old->second, cells);
            }
        }
        lines << inserted;
    }
    return lines;
}

} // namespace pontrel::test
