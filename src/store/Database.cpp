#include "store/Database.h"

#include "store/Connection.h"
#include "store/RunTimeError.h"
#include "store/Schema.h"
#include "store/StatementForm.h"

namespace pontrel {

const Value& Rows::at(std::size_t row, QStringView column) const {
    for (qsizetype index = 0; index < columns_->size(); ++index)
        if (column.compare(columns_->at(index), Qt::CaseInsensitive) == 0)
            return at(row, static_cast<std::size_t>(index));
    throw runTimeError(error::ColumnNotFound, column.toString());
}

Database::Database(const QString& path) : connection_(std::make_shared<Connection>(path)) {}

Database::~Database() {
    connection_->closeNow();
}

const QString& Database::path() const {
    return connection_->path();
}

std::int64_t Database::execute(const QString& statement) {
    return connection_->guarded(statement, [&] {
        Connection::Prepared& prepared = connection_->prepare(statement);
        if (!prepared.plan.change)
            throw runTimeError(error::Syntax, QStringLiteral("a selection changes nothing"));
        return connection_->change(prepared);
    });
}

std::int64_t Database::execute(const StatementForm& form, std::span<const Value> values) {
    return connection_->guarded(form.sample(), [&] {
        Connection::Prepared& prepared = connection_->prepare(form, values);
        if (!prepared.plan.change)
            throw runTimeError(error::Syntax, QStringLiteral("a selection changes nothing"));
        return connection_->change(prepared);
    });
}

Rows Database::select(const QString& statement) {
    return connection_->guarded(statement,
                                [&] { return connection_->select(connection_->prepare(statement)); });
}

Rows Database::select(const StatementForm& form, std::span<const Value> values) {
    return connection_->guarded(form.sample(),
                                [&] { return connection_->select(connection_->prepare(form, values)); });
}

std::int64_t Database::statementCount() const {
    return connection_->statementCount();
}

bool Database::inStage() const {
    return connection_->inStage();
}

Stage::Stage(Database& database) : connection_(database.connection()) {
    connection_->guarded({}, [&] { connection_->beginStage(); });
}

Stage::~Stage() {
    if (open_)
        connection_->abandonStage();
}

void Stage::finish() {
    if (!open_)
        return;
    open_ = false;
    connection_->guarded({}, [&] { connection_->endStage(); });
}

} // namespace pontrel
