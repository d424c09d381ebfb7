#include "store/RecordsetSet.h"

#include "store/RunTimeError.h"
#include "store/StoreText.h"
#include "store/statement/ExpressionWriter.h"
#include "store/statement/Parser.h"

#include <algorithm>
#include <numeric>
#include <unordered_set>

namespace pontrel {

std::unique_ptr<Recordset::Set> Recordset::Set::open(const std::shared_ptr<Database::Connection>& connection,
                                                     const QString& text) {
    Database::Connection::Prepared& prepared = connection->prepare(text);
    if (!prepared.plan.select)
        throw runTimeError(error::Syntax, QStringLiteral("not a selection"));
    const statement::SelectPlan& plan = *prepared.plan.select;
    auto set = std::make_unique<Set>();
    set->connection = connection;
    set->columns = plan.columns;
    set->types = plan.types;
    set->table = plan.table;
    set->tableColumns = plan.tableColumns;
    set->tableColumns.resize(plan.types.size(), -1);
    set->ridingColumns = plan.ridingColumns;
    set->rowSql = plan.rowSql;
    set->literalForms = prepared.plan.literals;
    set->literals = connection->lexed().literals;
    if (set->table != nullptr)
        set->readKeyset(plan);
    else
        set->readSnapshot(plan, *prepared.main);
    return set;
}

void Recordset::Set::readKeyset(const statement::SelectPlan& plan) {
    Run run(connection->engineStatement(plan.identitySql));
    connection->bindLiterals(run, literalForms, literals);
    while (run.step()) {
        identities.push_back(run.identity());
        if (ridingColumns.empty())
            continue;
        std::vector<Value> values;
        for (std::size_t index = 0; index < ridingColumns.size(); ++index)
            values.push_back(run.value(static_cast<int>(index) + 1,
                                       types[static_cast<std::size_t>(ridingColumns[index])]));
        ridingRow.push_back(static_cast<qint64>(riding.size()));
        riding.push_back(std::move(values));
    }
}

void Recordset::Set::readSnapshot(const statement::SelectPlan& plan, SQLite::Statement& main) {
    Run run(main);
    connection->bindLiterals(run, literalForms, literals);
    while (run.step()) {
        std::vector<Value> values;
        for (std::size_t column = 0; column < plan.types.size(); ++column)
            values.push_back(run.value(static_cast<int>(column), plan.types[column]));
        identities.push_back(static_cast<qint64>(riding.size()));
        ridingRow.push_back(static_cast<qint64>(riding.size()));
        riding.push_back(std::move(values));
    }
}

std::size_t Recordset::Set::indexOf(const QString& column) const {
    for (qsizetype index = 0; index < columns.size(); ++index)
        if (columns[index].compare(column, Qt::CaseInsensitive) == 0)
            return static_cast<std::size_t>(index);
    throw runTimeError(error::ColumnNotFound, column);
}

void Recordset::Set::requireRows() const {
    if (identities.empty())
        throw runTimeError(error::NoCurrentRecord);
}

void Recordset::Set::requireCurrent() const {
    if (gap)
        throw runTimeError(error::RecordDeleted);
    if (position < 0 || position >= count())
        throw runTimeError(error::NoCurrentRecord);
}

void Recordset::Set::requireEditable() const {
    if (table == nullptr)
        throw runTimeError(error::CannotWrite);
}

void Recordset::Set::place(qint64 newPosition) {
    dropBuffer();
    position = newPosition;
    gap = false;
    loaded.reset();
}

Recordset::Set::Row Recordset::Set::read(qint64 at) {
    const auto index = static_cast<std::size_t>(at);
    if (table == nullptr)
        return {riding[static_cast<std::size_t>(ridingRow[index])], false};
    return connection->guarded({}, [&]() -> Row {
        Run run(connection->engineStatement(rowSql));
        connection->bindLiterals(run, literalForms, literals);
        run.bind(static_cast<int>(literals.size()) + 1, static_cast<std::int64_t>(identities[index]));
        Row row{std::vector<Value>(types.size()), true};
        if (!run.step())
            return row;
        row.deleted = false;
        for (std::size_t column = 0; column < types.size(); ++column)
            row.values[column] = run.value(static_cast<int>(column), types[column]);
        // A row added to the set after it was read has no riding columns.
        if (index < ridingRow.size() && ridingRow[index] >= 0)
            for (std::size_t each = 0; each < ridingColumns.size(); ++each)
                row.values[static_cast<std::size_t>(ridingColumns[each])] =
                    riding[static_cast<std::size_t>(ridingRow[index])][each];
        return row;
    });
}

std::vector<std::vector<Value>> Recordset::Set::read(qint64 first, qint64 end) {
    std::vector<std::vector<Value>> rows;
    rows.reserve(static_cast<std::size_t>(end - first));
    const auto readAll = [&] {
        for (qint64 at = first; at < end; ++at)
            rows.push_back(read(at).values);
    };
    if (table == nullptr || connection->inStage()) {
        readAll();
    } else {
        // One look at the file's lock for all of them in place of one for each.
        connection->guarded({}, [&] {
            SQLite::Transaction reading(connection->engine(), SQLite::TransactionBehavior::DEFERRED);
            readAll();
            reading.commit();
        });
    }
    return rows;
}

const std::vector<Value>& Recordset::Set::current() {
    if (!loaded) {
        if (gap) {
            loaded = Row{std::vector<Value>(types.size()), true};
        } else {
            requireCurrent();
            loaded = read(position);
        }
    }
    return loaded->values;
}

bool Recordset::Set::currentDeleted() {
    // Looked at anew, since another connection may have deleted the row since it was read.
    return gap || read(position).deleted;
}

// Finding
// ------------------------------------------------------------------------------------------------------------

std::optional<qint64> Recordset::Set::firstMatch(const QString& condition) {
    statement::Lexed lexed;
    statement::lex(condition, lexed);
    const statement::ExpressionPtr tree = statement::parseCondition(lexed);
    if (table != nullptr && ridingColumns.empty())
        return firstMatchByTable(statement::writeTableCondition(*tree, lexed.literals.size(), *table),
                                 lexed.literals);
    return firstMatchByRow(statement::writeRowCondition(*tree, lexed.literals.size(), columns, types),
                           lexed.literals);
}

std::optional<qint64> Recordset::Set::firstMatchByTable(const statement::ConditionPlan& plan,
                                                        const std::vector<Value>& values) {
    std::unordered_set<qint64> matching;
    {
        Run run(connection->engineStatement(plan.sql));
        connection->bindLiterals(run, plan.literals, values);
        while (run.step())
            matching.insert(run.identity());
    }
    const auto found = std::find_if(identities.begin(), identities.end(),
                                    [&](qint64 identity) { return matching.contains(identity); });
    if (found == identities.end())
        return std::nullopt;
    return found - identities.begin();
}

std::optional<qint64> Recordset::Set::firstMatchByRow(const statement::ConditionPlan& plan,
                                                      const std::vector<Value>& values) {
    for (qint64 at = 0; at < count(); ++at) {
        const Row row = read(at);
        if (row.deleted)
            continue;
        Run run(connection->engineStatement(plan.sql));
        connection->bindLiterals(run, plan.literals, values);
        for (std::size_t column = 0; column < row.values.size(); ++column)
            run.bind(static_cast<int>(values.size() + column) + 1, row.values[column]);
        if (run.step())
            return at;
    }
    return std::nullopt;
}

// Editing
// ------------------------------------------------------------------------------------------------------------

std::vector<Value> Recordset::Set::blankRow() const {
    std::vector<Value> row(types.size());
    for (std::size_t index = 0; index < row.size(); ++index) {
        if (tableColumns[index] < 0)
            continue;
        const Column& column = table->columns[static_cast<std::size_t>(tableColumns[index])];
        if (column.type == ColumnType::Boolean)
            row[index] = false;
        else if (column.startsAsZero)
            row[index] = 0;
    }
    return row;
}

void Recordset::Set::beginBuffer(EditMode newMode, std::vector<Value> values) {
    mode = newMode;
    buffer = std::move(values);
    changed.assign(buffer.size(), false);
}

void Recordset::Set::dropBuffer() {
    mode = EditMode::None;
    buffer.clear();
    changed.clear();
}

std::vector<std::pair<QString, Value>> Recordset::Set::changedColumns() const {
    std::vector<std::pair<QString, Value>> result;
    for (std::size_t index = 0; index < buffer.size(); ++index) {
        if (!changed[index])
            continue;
        const Column& column = table->columns[static_cast<std::size_t>(tableColumns[index])];
        const Value value = convertFor(buffer[index], column.type);
        if (value.isNull() && !buffer[index].isNull())
            throw runTimeError(error::DataConversion, column.name + u' ' + describe(buffer[index]))
                .withRefused({column.name});
        result.emplace_back(column.name, value);
    }
    return result;
}

void Recordset::Set::writeNew() {
    const auto values = changedColumns();
    QByteArrayList names;
    QByteArrayList marks;
    for (const auto& [column, value] : values) {
        names += statement::quotedName(column);
        marks += "?";
    }
    const QByteArray into = "INSERT INTO " + statement::quotedName(table->name);
    const QByteArray sql = names.isEmpty()
                               ? into + " DEFAULT VALUES"
                               : into + " (" + names.join(", ") + ") VALUES (" + marks.join(", ") + ")";
    const qint64 identity = connection->changing([&]() -> qint64 {
        Run run(connection->engineStatement(sql));
        for (std::size_t index = 0; index < values.size(); ++index)
            run.bind(static_cast<int>(index) + 1, values[index].second);
        while (run.step()) {
        }
        return connection->engine().getLastInsertRowid();
    });
    identities.push_back(identity);
    if (!ridingRow.empty())
        ridingRow.push_back(-1);
    lastModified = identity;
}

void Recordset::Set::writeChanges() {
    const qint64 identity = identities[static_cast<std::size_t>(position)];
    if (currentDeleted())
        throw runTimeError(error::RecordDeleted);
    const auto values = changedColumns();
    if (!values.empty()) {
        QByteArrayList sets;
        QStringList names;
        for (const auto& [column, value] : values) {
            sets += statement::quotedName(column) + " = ?";
            names += column;
        }
        const QByteArray sql =
            "UPDATE " + statement::quotedName(table->name) + " SET " + sets.join(", ") + " WHERE rowid = ?";
        connection->changing([&] {
            connection->disturb(*table, names);
            Run run(connection->engineStatement(sql));
            for (std::size_t index = 0; index < values.size(); ++index)
                run.bind(static_cast<int>(index) + 1, values[index].second);
            run.bind(static_cast<int>(values.size()) + 1, static_cast<std::int64_t>(identity));
            return run.step();
        });
    }
    lastModified = identity;
    loaded.reset();
}

void Recordset::Set::deleteCurrent() {
    if (currentDeleted())
        throw runTimeError(error::RecordDeleted);
    connection->changing([&] {
        connection->disturb(*table, {});
        Run run(connection->engineStatement("DELETE FROM " + statement::quotedName(table->name) +
                                            " WHERE rowid = ?"));
        run.bind(1, static_cast<std::int64_t>(identities[static_cast<std::size_t>(position)]));
        return run.step();
    });
    identities.erase(identities.begin() + position);
    if (!ridingRow.empty())
        ridingRow.erase(ridingRow.begin() + position);
    gap = true;
    loaded.reset();
}

} // namespace pontrel
