#include "store/Recordset.h"

#include "store/Connection.h"
#include "store/RecordsetSet.h"
#include "store/RunTimeError.h"
#include "store/Schema.h"

#include <algorithm>

namespace pontrel {

Recordset::Recordset() = default;
Recordset::~Recordset() = default;
Recordset::Recordset(Recordset&&) noexcept = default;
Recordset& Recordset::operator=(Recordset&&) noexcept = default;
Recordset::Recordset(std::unique_ptr<Set> set) : set_(std::move(set)) {}

namespace {

/// The selection that a record source stands for.
QString selectionOf(const QString& source) {
    return findTable(source.trimmed()) != nullptr ? QStringLiteral("select * from [%1]").arg(source.trimmed())
                                                  : source;
}

} // namespace

Recordset Database::openRecordset(const QString& source) {
    const QString text = selectionOf(source);
    return connection_->guarded(text, [&] { return Recordset(Recordset::Set::open(connection_, text)); });
}

void Database::probe(const QString& source) {
    const QString text = selectionOf(source);
    connection_->guarded(text, [&] {
        Connection::Prepared& prepared = connection_->prepare(text);
        if (!prepared.plan.select)
            throw runTimeError(error::Syntax, QStringLiteral("not a selection"));
        const statement::SelectPlan& plan = *prepared.plan.select;
        Run run(plan.table == nullptr ? *prepared.main : connection_->engineStatement(plan.identitySql));
        connection_->bindLiterals(run, prepared.plan.literals, connection_->lexed().literals);
        (void)run.step();
    });
}

Recordset::Set& Recordset::set() const {
    if (!set_)
        throw runTimeError(error::ObjectNotSet);
    return *set_;
}

bool Recordset::isOpen() const {
    return set_ != nullptr;
}

void Recordset::Close() {
    set_.reset();
}

// Position
// -----------------------------------------------------------------------------------------------------------

void Recordset::MoveFirst() {
    set().requireRows();
    set().place(0);
}

void Recordset::MoveLast() {
    set().requireRows();
    set().place(set().count() - 1);
}

void Recordset::MoveNext() {
    Set& rows = set();
    rows.requireRows();
    if (rows.position >= rows.count() && !rows.gap)
        throw runTimeError(error::NoCurrentRecord);
    // Behind a deleted row its successor has already taken its place.
    rows.place(rows.gap ? rows.position : rows.position + 1);
}

void Recordset::MovePrevious() {
    Set& rows = set();
    rows.requireRows();
    if (rows.position < 0)
        throw runTimeError(error::NoCurrentRecord);
    rows.place(rows.position - 1);
}

bool Recordset::AtEOF() const {
    return set().count() == 0 || (set().position >= set().count() && !set().gap);
}

bool Recordset::AtBOF() const {
    return set().count() == 0 || set().position < 0;
}

qint64 Recordset::RecordCount() const {
    return set().count();
}

qint64 Recordset::AbsolutePosition() const {
    const Set& rows = set();
    if (rows.count() == 0)
        return 0;
    return rows.position >= 0 && rows.position < rows.count() ? rows.position : -1;
}

void Recordset::moveTo(qint64 position) {
    if (position < 0 || position >= set().count())
        throw runTimeError(error::NoCurrentRecord);
    set().place(position);
}

qint64 Recordset::Bookmark() const {
    set().requireCurrent();
    return set().identities[static_cast<std::size_t>(set().position)];
}

void Recordset::setBookmark(qint64 mark) {
    const auto& identities = set().identities;
    const auto found = std::find(identities.begin(), identities.end(), mark);
    if (found == identities.end())
        throw runTimeError(error::RecordDeleted);
    set().place(found - identities.begin());
}

qint64 Recordset::LastModified() const {
    if (!set().lastModified)
        throw runTimeError(error::NoCurrentRecord);
    return *set().lastModified;
}

void Recordset::FindFirst(const QString& condition) {
    Set& rows = set();
    const auto found = rows.connection->guarded(condition, [&] { return rows.firstMatch(condition); });
    rows.noMatch = !found;
    if (found)
        rows.place(*found);
}

bool Recordset::NoMatch() const {
    return set().noMatch;
}

// Columns
// ------------------------------------------------------------------------------------------------------------

QStringList Recordset::columns() const {
    return set().columns;
}

ColumnType Recordset::columnType(const QString& column) const {
    return set().types[set().indexOf(column)];
}

Value Recordset::field(const QString& column) const {
    return field(static_cast<int>(set().indexOf(column)));
}

Value Recordset::field(int column) const {
    Set& rows = set();
    const auto index = static_cast<std::size_t>(column);
    if (index >= rows.types.size())
        throw runTimeError(error::ColumnNotFound, QString::number(column));
    if (rows.mode != EditMode::None)
        return rows.buffer[index];
    return rows.current()[index];
}

void Recordset::setField(const QString& column, const Value& value) {
    Set& rows = set();
    const std::size_t index = rows.indexOf(column);
    if (rows.mode == EditMode::None)
        throw runTimeError(error::UpdateWithoutEdit);
    if (rows.tableColumns[index] < 0)
        throw runTimeError(error::CannotWrite, column);
    rows.buffer[index] = value;
    rows.changed[index] = true;
}

std::vector<Value> Recordset::rowAt(qint64 position) const {
    if (position < 0 || position >= set().count())
        throw runTimeError(error::NoCurrentRecord);
    return set().read(position).values;
}

std::vector<std::vector<Value>> Recordset::rowsAt(qint64 position, qint64 count) const {
    if (position < 0 || position >= set().count() || count <= 0)
        return {};
    return set().read(position, position + std::min(count, set().count() - position));
}

// Editing
// ------------------------------------------------------------------------------------------------------------

EditMode Recordset::editMode() const {
    return set().mode;
}

void Recordset::AddNew() {
    set().requireEditable();
    set().beginBuffer(EditMode::Add, set().blankRow());
}

void Recordset::Edit() {
    Set& rows = set();
    rows.requireEditable();
    rows.requireCurrent();
    std::vector<Value> values = rows.current();
    if (rows.currentDeleted())
        throw runTimeError(error::RecordDeleted);
    rows.beginBuffer(EditMode::Edit, std::move(values));
}

void Recordset::Update() {
    Set& rows = set();
    if (rows.mode == EditMode::None)
        throw runTimeError(error::UpdateWithoutEdit);
    rows.connection->guarded({}, [&] { rows.mode == EditMode::Add ? rows.writeNew() : rows.writeChanges(); });
    rows.dropBuffer();
}

void Recordset::CancelUpdate() {
    set().dropBuffer();
}

void Recordset::Delete() {
    Set& rows = set();
    rows.requireEditable();
    rows.requireCurrent();
    rows.dropBuffer();
    rows.connection->guarded({}, [&] { rows.deleteCurrent(); });
}

} // namespace pontrel
