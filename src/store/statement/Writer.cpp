#include "store/statement/Writer.h"

#include "store/RunTimeError.h"
#include "store/statement/ExpressionWriter.h"

#include <algorithm>

namespace pontrel::statement {

namespace {

Source source(const QString& name) {
    const Table* table = findTable(name);
    if (table == nullptr)
        throw runTimeError(error::UnknownTable, name);
    return {table, quotedName(table->name)};
}

std::vector<Source> sourcesOf(const std::vector<QString>& names) {
    std::vector<Source> sources;
    for (const QString& name : names) {
        sources.push_back(source(name));
        const auto same = [&](const Source& other) { return other.table == sources.back().table; };
        if (std::count_if(sources.begin(), sources.end(), same) > 1)
            throw runTimeError(error::Syntax, QStringLiteral("table %1 stands twice").arg(name));
    }
    return sources;
}

QByteArray tableList(const std::vector<Source>& sources) {
    QByteArrayList names;
    for (const Source& each : sources)
        names += each.name;
    return names.join(", ");
}

/// The table's own order: that of its key, or of insertion.
QByteArrayList ownOrder(const Source& source) {
    QByteArrayList order;
    for (const QString& column : source.table->key)
        order += source.name + "." + quotedName(column);
    if (order.isEmpty())
        order += source.name + ".rowid";
    return order;
}

bool hasAggregate(const Expression& expression);

bool anyAggregate(const std::vector<ExpressionPtr>& expressions) {
    return std::any_of(expressions.begin(), expressions.end(),
                       [](const auto& each) { return hasAggregate(*each); });
}

bool hasAggregate(const Expression& expression) {
    if (const auto* node = std::get_if<FunctionNode>(&expression.node)) {
        const bool scalar = node->name == QLatin1String("isnull") || node->name == QLatin1String("format");
        return !scalar || anyAggregate(node->arguments);
    }
    if (const auto* node = std::get_if<BinaryNode>(&expression.node))
        return hasAggregate(*node->left) || hasAggregate(*node->right);
    if (const auto* node = std::get_if<NegateNode>(&expression.node))
        return hasAggregate(*node->operand);
    if (const auto* node = std::get_if<NotNode>(&expression.node))
        return hasAggregate(*node->operand);
    if (const auto* node = std::get_if<NullTestNode>(&expression.node))
        return hasAggregate(*node->operand);
    if (const auto* node = std::get_if<LikeNode>(&expression.node))
        return hasAggregate(*node->operand) || hasAggregate(*node->pattern);
    if (const auto* node = std::get_if<BetweenNode>(&expression.node))
        return hasAggregate(*node->operand) || hasAggregate(*node->low) || hasAggregate(*node->high);
    return false;
}

/// A column of a selection: its text, and where it comes from when it is a bare column of a table.
struct OutputColumn {
    QString name;
    Written written;
    const Source* origin = nullptr;
    int originColumn = -1;
};

class SelectWriter {
  public:
    SelectWriter(const Select& select, Notes& notes)
        : select_(select)
        , sources_(sourcesOf(select.from.tables))
        , writer_(sources_, notes)
        , literalCount_(notes.literals.size()) {
        for (const SelectItem& item : select.items)
            if (item.expression && !item.alias.isEmpty() && !namesItself(item))
                writer_.addAlias(item.alias, item.expression.get());
        for (const SelectItem& item : select.items)
            add(item);
        grouped_ = !select.groupBy.empty() || aggregate_;
        condition_ = condition();
    }

    /// As rows for a table's columns, in their order.
    QByteArray rowsFor(const std::vector<ColumnType>& types) {
        if (types.size() != columns_.size())
            throw runTimeError(error::Syntax,
                               QStringLiteral("%1 columns for %2").arg(columns_.size()).arg(types.size()));
        QByteArrayList items;
        std::size_t column = 0;
        for (const SelectItem& item : select_.items) {
            if (item.expression) {
                items += writer_.writeFor(*item.expression, types[column++]);
                continue;
            }
            for (const OutputColumn& output : starColumns(item))
                items += ExpressionWriter::converted(output.written, types[column++]);
        }
        return text(items);
    }

    SelectPlan plan() {
        SelectPlan plan;
        QByteArrayList items;
        for (const OutputColumn& column : columns_) {
            plan.columns += column.name;
            plan.types.push_back(column.written.type);
            items += column.written.sql;
        }
        plan.sql = text(items);
        const Source* whole = keysetSource();
        if (whole != nullptr)
            addKeyset(plan, *whole);
        return plan;
    }

  private:
    [[nodiscard]] static bool namesItself(const SelectItem& item) {
        const auto* column = std::get_if<ColumnNode>(&item.expression->node);
        return column != nullptr && column->name.compare(item.alias, Qt::CaseInsensitive) == 0;
    }

    [[nodiscard]] std::vector<OutputColumn> starColumns(const SelectItem& item) const {
        std::vector<OutputColumn> result;
        bool known = item.starTable.isEmpty();
        for (const Source& each : writer_.sources()) {
            if (!item.starTable.isEmpty() &&
                item.starTable.compare(each.table->name, Qt::CaseInsensitive) != 0)
                continue;
            known = true;
            int index = 0;
            for (const Column& column : each.table->columns)
                result.push_back({column.name,
                                  {each.name + "." + quotedName(column.name), column.type, true},
                                  &each,
                                  index++});
        }
        if (!known)
            throw runTimeError(error::UnknownTable, item.starTable);
        return result;
    }

    void add(const SelectItem& item) {
        if (!item.expression) {
            const auto star = starColumns(item);
            columns_.insert(columns_.end(), star.begin(), star.end());
            return;
        }
        aggregate_ = aggregate_ || hasAggregate(*item.expression);
        OutputColumn output{item.alias, writer_.write(*item.expression), nullptr, -1};
        if (const auto* column = std::get_if<ColumnNode>(&item.expression->node)) {
            const auto found = writer_.find(*column);
            if (found.source != nullptr) {
                output.origin = found.source;
                output.originColumn = found.column;
                if (output.name.isEmpty())
                    output.name = found.source->table->columns[static_cast<std::size_t>(found.column)].name;
            }
        }
        if (output.name.isEmpty())
            output.name = QStringLiteral("Expr%1").arg(1000 + columns_.size());
        columns_.push_back(std::move(output));
    }

    QByteArray condition() {
        QByteArrayList parts;
        for (const ExpressionPtr& each : select_.from.conditions)
            parts += writer_.writeCondition(*each);
        if (select_.where)
            parts += writer_.writeCondition(*select_.where);
        return parts.isEmpty() ? QByteArray() : " WHERE " + parts.join(" AND ");
    }

    QByteArray order() {
        QByteArrayList parts;
        QByteArrayList stated;
        for (const OrderItem& item : select_.orderBy) {
            stated += writer_.write(*item.expression).sql;
            parts += stated.back() + (item.descending ? " DESC" : "");
        }
        if (select_.distinct) {
            for (std::size_t column = 1; column <= columns_.size(); ++column)
                parts += QByteArray::number(static_cast<int>(column));
        } else if (!select_.groupBy.empty()) {
            for (const ExpressionPtr& each : select_.groupBy)
                parts += writer_.write(*each).sql;
        } else if (!aggregate_) {
            // A column that stands there twice would keep the engine from taking the rows as its key has
            // them.
            for (const Source& each : sources_)
                for (const QByteArray& column : ownOrder(each))
                    if (!stated.contains(column))
                        parts += column;
        }
        return parts.isEmpty() ? QByteArray() : " ORDER BY " + parts.join(", ");
    }

    QByteArray text(const QByteArrayList& items) {
        QByteArray sql = select_.distinct ? "SELECT DISTINCT " : "SELECT ";
        sql += items.join(", ") + " FROM " + tableList(sources_) + condition_;
        if (!select_.groupBy.empty()) {
            QByteArrayList groups;
            for (const ExpressionPtr& each : select_.groupBy)
                groups += writer_.write(*each).sql;
            sql += " GROUP BY " + groups.join(", ");
        }
        sql += order();
        if (select_.top)
            sql += " LIMIT ?" + QByteArray::number(*select_.top + 1);
        return sql;
    }

    /// The one table, or the table of a join that the selection takes whole; null where rows cannot be
    /// identified.
    const Source* keysetSource() const {
        if (select_.distinct || grouped_)
            return nullptr;
        const auto& all = writer_.sources();
        if (all.size() == 1)
            return &all.front();
        for (const Source& each : all)
            for (const SelectItem& item : select_.items)
                if (!item.expression && item.starTable.compare(each.table->name, Qt::CaseInsensitive) == 0)
                    return &each;
        return nullptr;
    }

    void addKeyset(SelectPlan& plan, const Source& whole) {
        plan.table = whole.table;
        QByteArrayList identity{whole.name + ".rowid"};
        QByteArrayList row;
        for (std::size_t index = 0; index < columns_.size(); ++index) {
            const OutputColumn& column = columns_[index];
            const bool own = column.origin == &whole;
            plan.tableColumns.push_back(own ? column.originColumn : -1);
            if (own || writer_.sources().size() == 1) {
                row += column.written.sql;
            } else {
                plan.ridingColumns.push_back(static_cast<int>(index));
                identity += column.written.sql;
                row += "NULL";
            }
        }
        plan.identitySql = text(identity);
        plan.rowSql = "SELECT " + row.join(", ") + " FROM " + whole.name + " WHERE rowid = ?" +
                      QByteArray::number(static_cast<int>(literalCount_) + 1);
    }

    const Select& select_;
    std::vector<Source> sources_;
    ExpressionWriter writer_;
    std::size_t literalCount_;
    std::vector<OutputColumn> columns_;
    QByteArray condition_;
    bool aggregate_ = false;
    bool grouped_ = false;
};

ChangePlan writeInsert(const Insert& insert, Notes& notes) {
    const Source target = source(insert.table);
    QByteArrayList names;
    std::vector<ColumnType> types;
    for (const QString& name : insert.columns) {
        const int column = target.table->indexOf(name);
        if (column < 0)
            throw runTimeError(error::UnknownName, name);
        names += quotedName(target.table->columns[static_cast<std::size_t>(column)].name);
        types.push_back(target.table->columns[static_cast<std::size_t>(column)].type);
    }
    if (insert.columns.empty()) {
        for (const Column& column : target.table->columns) {
            names += quotedName(column.name);
            types.push_back(column.type);
        }
    }
    ChangePlan plan;
    plan.sql = "INSERT OR IGNORE INTO " + target.name + " (" + names.join(", ") + ") ";
    if (insert.select) {
        plan.sql += SelectWriter(*insert.select, notes).rowsFor(types);
        return plan;
    }
    if (insert.values.size() != types.size())
        throw runTimeError(error::Syntax,
                           QStringLiteral("%1 values for %2").arg(insert.values.size()).arg(types.size()));
    ExpressionWriter writer({}, notes);
    QByteArrayList values;
    for (std::size_t index = 0; index < types.size(); ++index)
        values += writer.writeFor(*insert.values[index], types[index]);
    plan.sql += "VALUES (" + values.join(", ") + ")";
    return plan;
}

QByteArray whereClause(const ExpressionPtr& where, ExpressionWriter& writer) {
    return where ? " WHERE " + writer.writeCondition(*where) : QByteArray();
}

QByteArray updateByIdentity(const Source& table, const QByteArrayList& columns) {
    if (columns.isEmpty())
        return {};
    QByteArrayList sets;
    for (const QByteArray& column : columns)
        sets += column + " = ?";
    return "UPDATE OR IGNORE " + table.name + " SET " + sets.join(", ") + " WHERE rowid = ?";
}

ChangePlan writeUpdate(const Update& update, Notes& notes) {
    const std::vector<Source> sources = sourcesOf(update.tables);
    ExpressionWriter writer(sources, notes);
    QByteArrayList sets;
    std::array<QByteArrayList, 2> columns;
    std::array<QByteArrayList, 2> values;
    bool sameForAllRows = true;
    ChangePlan plan;
    for (const Source& each : sources)
        plan.touched.push_back({each.table, {}});
    for (const Assignment& assignment : update.assignments) {
        const auto found = writer.find(assignment.column);
        if (found.source == nullptr)
            throw runTimeError(error::UnknownName, assignment.column.name);
        const Column& column = found.source->table->columns[static_cast<std::size_t>(found.column)];
        const QByteArray value = writer.writeFor(*assignment.value, column.type);
        const std::size_t table = found.source->table == sources.front().table ? 0 : 1;
        sets += quotedName(column.name) + " = " + value;
        columns[table] += quotedName(column.name);
        values[table] += value;
        sameForAllRows = sameForAllRows && (std::holds_alternative<LiteralNode>(assignment.value->node) ||
                                            std::holds_alternative<Constant>(assignment.value->node));
        plan.touched[table].columns += column.name;
    }
    const bool ofOneTable = columns[0].isEmpty() || columns[1].isEmpty();
    std::erase_if(plan.touched, [](const Touched& each) { return each.columns.isEmpty(); });
    if (sources.size() == 1) {
        plan.sql = "UPDATE OR IGNORE " + sources.front().name + " SET " + sets.join(", ") +
                   whereClause(update.where, writer);
        return plan;
    }
    if (ofOneTable && sameForAllRows) {
        // Whichever row of the other table a row meets, it takes the same values.
        const QByteArray target = sources[columns[0].isEmpty() ? 1 : 0].name;
        plan.sql = "UPDATE OR IGNORE " + target + " SET " + sets.join(", ") + " WHERE rowid IN (SELECT " +
                   target + ".rowid FROM " + tableList(sources) + whereClause(update.where, writer) + ")";
        return plan;
    }
    plan.twoTables = true;
    plan.firstValues = static_cast<int>(values[0].size());
    plan.sql =
        "SELECT " +
        (QByteArrayList{sources[0].name + ".rowid", sources[1].name + ".rowid"} + values[0] + values[1])
            .join(", ") +
        " FROM " + tableList(sources) + whereClause(update.where, writer);
    plan.first = updateByIdentity(sources[0], columns[0]);
    plan.second = updateByIdentity(sources[1], columns[1]);
    return plan;
}

ChangePlan writeDelete(const Delete& deletion, Notes& notes) {
    const Source target = source(deletion.table);
    ExpressionWriter writer({target}, notes);
    ChangePlan plan;
    plan.touched.push_back({target.table, {}});
    plan.sql = "DELETE FROM " + target.name + whereClause(deletion.where, writer);
    return plan;
}

} // namespace

Plan write(const Statement& statement, std::size_t literals) {
    Plan plan;
    plan.literals.resize(literals);
    if (const auto* select = std::get_if<Select>(&statement))
        plan.select = SelectWriter(*select, plan).plan();
    else if (const auto* insert = std::get_if<Insert>(&statement))
        plan.change = writeInsert(*insert, plan);
    else if (const auto* update = std::get_if<Update>(&statement))
        plan.change = writeUpdate(*update, plan);
    else
        plan.change = writeDelete(std::get<Delete>(statement), plan);
    return plan;
}

ConditionPlan writeTableCondition(const Expression& condition, std::size_t literals, const Table& table) {
    ConditionPlan plan;
    plan.literals.resize(literals);
    const Source only{&table, quotedName(table.name)};
    ExpressionWriter writer({only}, plan);
    plan.sql = "SELECT rowid FROM " + only.name + " WHERE " + writer.writeCondition(condition);
    return plan;
}

ConditionPlan writeJoinCondition(const Expression& condition, std::size_t literals,
                                 const std::vector<const Table*>& tables) {
    ConditionPlan plan;
    plan.literals.resize(literals);
    std::vector<Source> sources;
    for (const Table* table : tables)
        sources.push_back({table, quotedName(table->name)});
    ExpressionWriter writer(std::move(sources), plan);
    plan.sql = writer.writeCondition(condition);
    return plan;
}

ConditionPlan writeRowCondition(const Expression& condition, std::size_t literals, const QStringList& columns,
                                const std::vector<ColumnType>& types) {
    ConditionPlan plan;
    plan.literals.resize(literals);
    Table row{QStringLiteral("row"), {}, {}};
    QByteArrayList values;
    for (qsizetype index = 0; index < columns.size(); ++index) {
        row.columns.push_back({columns[index], types[static_cast<std::size_t>(index)]});
        const bool text = types[static_cast<std::size_t>(index)] == ColumnType::Text;
        values += "?" + QByteArray::number(static_cast<int>(literals) + static_cast<int>(index) + 1) +
                  (text ? " COLLATE NOCASE AS " : " AS ") + quotedName(columns[index]);
    }
    const Source only{&row, quotedName(row.name)};
    ExpressionWriter writer({only}, plan);
    const QByteArray sql = writer.writeCondition(condition);
    plan.sql = "SELECT 1 FROM (SELECT " + values.join(", ") + ") AS " + only.name + " WHERE " + sql;
    return plan;
}

} // namespace pontrel::statement
