#include "store/Connection.h"

#include "store/EngineError.h"
#include "store/OpenStore.h"
#include "store/Schema.h"
#include "store/SqlFunctions.h"
#include "store/StatementForm.h"
#include "store/StatementText.h"
#include "store/StoreText.h"
#include "store/statement/Parser.h"

#include <sqlite3.h>

#include <algorithm>
#include <optional>
#include <utility>

namespace pontrel {

namespace {

/// More shapes than the program has; only made-up statements get there.
constexpr qsizetype MostPrepared = 1000;

/// Never destroyed: where the system library ends the process, as on the loss of the display, connections of
/// static objects close behind the end of the statics of this file.
std::vector<Database::Connection*>& openConnections() {
    static auto& connections = *new std::vector<Database::Connection*>;
    return connections;
}

/// Undoes what was done since its making where an error leaves it, and leaves no transaction open that it has
/// begun.
class AllOrNothing {
  public:
    explicit AllOrNothing(SQLite::Database& engine) : engine_(engine) {
        engine_.exec("SAVEPOINT allOrNothing");
    }
    ~AllOrNothing() {
        if (kept_)
            return;
        engine_.tryExec("ROLLBACK TO allOrNothing");
        engine_.tryExec("RELEASE allOrNothing");
    }
    AllOrNothing(const AllOrNothing&) = delete;
    AllOrNothing& operator=(const AllOrNothing&) = delete;

    void keep() {
        engine_.exec("RELEASE allOrNothing");
        kept_ = true;
    }

  private:
    SQLite::Database& engine_;
    bool kept_ = false;
};

} // namespace

// Connection
// ---------------------------------------------------------------------------------------------------------

Database::Connection::Connection(const QString& path) : path_(path) {
    try {
        guarded({}, [&] {
            engine_ = openStore(path);
            copyMarks_.emplace(*engine_);
        });
    } catch (const RunTimeError& refusal) {
        throw RunTimeError(refusal.number(), refusal.text(),
                           path + QStringLiteral(": ") + refusal.technical());
    }
    openConnections().push_back(this);
}

Database::Connection::~Connection() {
    std::erase(openConnections(), this);
    closeNow();
}

SQLite::Database& Database::Connection::engine() {
    if (!engine_)
        throw runTimeError(error::ObjectNotSet);
    return *engine_;
}

SQLite::Database& Database::Connection::working() {
    SQLite::Database& open = engine();
    // On a full disk the engine may roll a stage back by itself; what follows in it must not be written
    // alone.
    if (stageDepth_ > 0 && sqlite3_get_autocommit(open.getHandle()) != 0)
        throw stageLost(QStringLiteral("the engine has rolled the stage back"));
    return open;
}

Database::Connection::Prepared& Database::Connection::prepare(const QString& text) {
    SQLite::Database& open = working();
    ++statementCount_;
    statement::lex(text, lexed_, statement::Cut::ShapeAlone);
    if (const auto known = prepared_.constFind(lexed_.shape); known != prepared_.constEnd())
        return **known;
    if (prepared_.size() >= MostPrepared) {
        prepared_.clear();
        preparedForms_.clear();
    }
    statement::lex(text, lexed_);
    auto fresh = std::make_shared<Prepared>();
    fresh->plan = statement::write(statement::parseStatement(lexed_), lexed_.literals.size());
    const auto ready = [&](const QByteArray& sql) {
        return sql.isEmpty() ? nullptr : std::make_unique<SQLite::Statement>(open, sql.constData());
    };
    if (fresh->plan.select) {
        fresh->main = ready(fresh->plan.select->sql);
        fresh->columns = std::make_shared<const QStringList>(fresh->plan.select->columns);
    } else {
        for (const statement::Touched& touched : fresh->plan.change->touched)
            for (const CopyTarget target : {CopyTarget::Atte01, CopyTarget::Atte02})
                if (CopyMarks::disturbs(*touched.table, touched.columns, target))
                    fresh->disturbs.push_back(target);
        fresh->main = ready(fresh->plan.change->sql);
        fresh->first = ready(fresh->plan.change->first);
        fresh->second = ready(fresh->plan.change->second);
    }
    return **prepared_.insert(lexed_.shape, fresh);
}

Database::Connection::Prepared& Database::Connection::prepare(const StatementForm& form,
                                                              std::span<const Value> values) {
    for (const Value& value : values)
        if (value.type() == ColumnType::Text && breaksLiteral(value.toText()))
            throw runTimeError(error::Syntax, value.toText());
    auto ready = preparedForms_.constFind(form.number());
    if (ready != preparedForms_.constEnd()) {
        (void)working();
        ++statementCount_;
    } else {
        (void)prepare(form.sample());
        ready = preparedForms_.insert(form.number(), prepared_.value(lexed_.shape));
    }
    Prepared& known = **ready;
    if (known.plan.literals.size() != values.size())
        throw runTimeError(
            error::Syntax,
            QStringLiteral("%1 values for %2 literals").arg(values.size()).arg(known.plan.literals.size()));
    lexed_.literals.assign(values.begin(), values.end());
    return known;
}

SQLite::Statement& Database::Connection::engineStatement(const QByteArray& sql) {
    SQLite::Database& open = working();
    if (const auto known = engineStatements_.constFind(sql); known != engineStatements_.constEnd())
        return **known;
    if (engineStatements_.size() >= MostPrepared)
        engineStatements_.clear();
    return **engineStatements_.insert(sql, std::make_shared<SQLite::Statement>(open, sql.constData()));
}

void Database::Connection::bindLiterals(Run& run, const std::vector<statement::LiteralForm>& forms,
                                        const std::vector<Value>& literals) const {
    for (std::size_t index = 0; index < literals.size(); ++index) {
        const statement::LiteralForm& form = forms[index];
        const int parameter = static_cast<int>(index) + 1;
        if (form.type == ColumnType::Unknown || form.type == literals[index].type())
            run.bind(parameter, literals[index]);
        else
            run.bind(parameter, form.compared ? convertCompared(literals[index], form.type)
                                              : convertFor(literals[index], form.type));
    }
}

std::int64_t Database::Connection::change(Prepared& prepared) {
    return changing([&]() -> std::int64_t {
        for (const CopyTarget target : prepared.disturbs)
            copyMarks_->setUpTo(target, std::nullopt);
        if (prepared.plan.change->twoTables)
            return changeTwoTables(prepared);
        Run run(*prepared.main);
        bindLiterals(run, prepared.plan.literals, lexed_.literals);
        while (run.step()) {
        }
        return engine().getChanges();
    });
}

Rows Database::Connection::select(Prepared& prepared) const {
    if (!prepared.plan.select)
        throw runTimeError(error::Syntax, QStringLiteral("not a selection"));
    const std::vector<ColumnType>& types = prepared.plan.select->types;
    Run run(*prepared.main);
    bindLiterals(run, prepared.plan.literals, lexed_.literals);
    std::vector<std::vector<Value>> rows;
    while (run.step()) {
        std::vector<Value>& row = rows.emplace_back();
        row.reserve(types.size());
        for (std::size_t column = 0; column < types.size(); ++column)
            row.push_back(run.value(static_cast<int>(column), types[column]));
    }
    return Rows(prepared.columns, std::move(rows));
}

void Database::Connection::disturb(const Table& table, const QStringList& columns) {
    for (const CopyTarget target : {CopyTarget::Atte01, CopyTarget::Atte02})
        if (CopyMarks::disturbs(table, columns, target))
            copyMarks_->setUpTo(target, std::nullopt);
}

/// The rows are gathered before any is changed, so that all are judged as they stood before.
std::int64_t Database::Connection::changeTwoTables(Prepared& prepared) {
    const statement::ChangePlan& plan = *prepared.plan.change;
    struct Row {
        std::int64_t first;
        std::int64_t second;
        std::vector<Value> values;
    };
    std::vector<Row> rows;
    {
        Run run(*prepared.main);
        bindLiterals(run, prepared.plan.literals, lexed_.literals);
        const int columns = prepared.main->getColumnCount();
        while (run.step()) {
            Row row{run.identity(0), run.identity(1), {}};
            for (int column = 2; column < columns; ++column)
                row.values.push_back(run.value(column, ColumnType::Unknown));
            rows.push_back(std::move(row));
        }
    }
    const auto store = [this](SQLite::Statement* statement, const Value* values, int count,
                              std::int64_t identity) {
        if (statement == nullptr)
            return false;
        Run run(*statement);
        for (int index = 0; index < count; ++index)
            run.bind(index + 1, values[index]);
        run.bind(count + 1, identity);
        while (run.step()) {
        }
        return engine().getChanges() > 0;
    };
    // All rows or none, as with any single statement.
    AllOrNothing guard(engine());
    std::int64_t changed = 0;
    for (const Row& row : rows) {
        const int second = static_cast<int>(row.values.size()) - plan.firstValues;
        const bool inFirst = store(prepared.first.get(), row.values.data(), plan.firstValues, row.first);
        const bool inSecond =
            store(prepared.second.get(), row.values.data() + plan.firstValues, second, row.second);
        changed += inFirst || inSecond ? 1 : 0;
    }
    guard.keep();
    return changed;
}

void Database::Connection::beginTransaction() {
    engine().exec("BEGIN IMMEDIATE");
    try {
        copyMarks_->begin();
    } catch (...) {
        rollBack();
        throw;
    }
}

void Database::Connection::commitTransaction() {
    copyMarks_->end();
    engine().exec("COMMIT");
}

void Database::Connection::rollBack() noexcept {
    if (engine_ && sqlite3_get_autocommit(engine_->getHandle()) == 0)
        engine_->tryExec("ROLLBACK");
}

void Database::Connection::beginStage() {
    if (stageDepth_ == 0)
        beginTransaction();
    ++stageDepth_;
}

void Database::Connection::endStage() {
    if (--stageDepth_ > 0)
        return;
    if (sqlite3_get_autocommit(engine().getHandle()) != 0)
        throw stageLost(QStringLiteral("the engine has rolled the stage back"));
    try {
        commitTransaction();
    } catch (const SQLite::Exception&) {
        rollBack();
        throw;
    }
}

std::optional<RunTimeError> Database::Connection::abandonStage() noexcept {
    if (--stageDepth_ > 0 || !engine_)
        return std::nullopt;
    // Where the engine has rolled the stage back by itself, as on a full disk, nothing is left to commit.
    if (sqlite3_get_autocommit(engine_->getHandle()) == 0) {
        try {
            commitTransaction();
            return std::nullopt;
        } catch (const SQLite::Exception&) {
            // Told below.
        }
    }
    const RunTimeError lost = stageLost(QString::fromUtf8(engine_->getErrorMsg()));
    rollBack();
    return lost;
}

void Database::Connection::closeNow() noexcept {
    if (!engine_)
        return;
    if (stageDepth_ > 0) {
        stageDepth_ = 1;
        (void)abandonStage();
    }
    // The engine must not be closed before its statements.
    prepared_.clear();
    preparedForms_.clear();
    engineStatements_.clear();
    copyMarks_.reset();
    engine_.reset();
}

void closeAllConnections() noexcept {
    for (Database::Connection* connection : openConnections())
        connection->closeNow();
}

} // namespace pontrel
