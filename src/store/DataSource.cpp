#include "store/DataSource.h"

#include "store/RunTimeError.h"

#include <QDate>
#include <QMetaProperty>
#include <QPointer>
#include <QScopedValueRollback>
#include <QVariant>

namespace pontrel {

/// A control's property and the column behind it, with what the property read back after it was filled.
struct DataSource::Binding {
    QPointer<QObject> control;
    QByteArray property;
    QString column;
    bool last = false;
    QVariant filled;
};

namespace {

QVariant momentVariant(const Value& value) {
    switch (value.type()) {
    case ColumnType::Date:
        return value.toDate();
    case ColumnType::Time:
        return value.toTime();
    case ColumnType::DateTime:
        return value.toDateTime();
    default:
        return value.isNull() ? QVariant() : QVariant(value.joined());
    }
}

/// The value in the kind that the property has.
QVariant propertyValue(const Value& value, const QMetaProperty& property) {
    switch (property.typeId()) {
    case QMetaType::Bool:
        return !value.isNull() && value.toBoolean();
    case QMetaType::QString:
        return value.joined();
    case QMetaType::Int:
        return value.isNull() ? 0 : static_cast<int>(value.toInteger());
    case QMetaType::QDate:
        return value.isNull() ? QDate() : value.toDate();
    case QMetaType::QTime:
        return value.isNull() ? QTime() : value.toTime();
    default:
        return momentVariant(value);
    }
}

/// What a property holds, as a value for the edit buffer: a control without text gives null.
Value bufferValue(const QVariant& variant) {
    switch (variant.typeId()) {
    case QMetaType::Bool:
        return variant.toBool();
    case QMetaType::Int:
    case QMetaType::LongLong:
        return static_cast<std::int64_t>(variant.toLongLong());
    case QMetaType::Double:
        return variant.toDouble();
    case QMetaType::QDate:
        return variant.toDate().isValid() ? Value(variant.toDate()) : Value();
    case QMetaType::QTime:
        return variant.toTime().isValid() ? Value(variant.toTime()) : Value();
    case QMetaType::QDateTime:
        return variant.toDateTime().isValid() ? Value(variant.toDateTime()) : Value();
    default: {
        const QString text = variant.toString();
        return text.isEmpty() ? Value() : Value(text);
    }
    }
}

QMetaProperty propertyOf(const QObject& control, const char* name) {
    return control.metaObject()->property(control.metaObject()->indexOfProperty(name));
}

} // namespace

DataSource::DataSource(QObject* parent) : QObject(parent) {}

DataSource::~DataSource() = default;

void DataSource::setDatabaseName(const QString& path) {
    databaseName_ = path;
}

std::unique_ptr<Database> DataSource::freshConnection() const {
    if (database_ && database_->path() == databaseName_)
        return nullptr;
    return std::make_unique<Database>(databaseName_);
}

void DataSource::refreshUnseen() {
    std::unique_ptr<Database> fresh = freshConnection();
    (fresh ? *fresh : *database_).probe(recordSource_);
    if (fresh) {
        recordset_.Close(); // it belongs to the connection that goes
        database_ = std::move(fresh);
    }
    Q_EMIT Reposition();
}

void DataSource::Refresh() {
    std::unique_ptr<Database> fresh = freshConnection();
    Recordset rows = (fresh ? *fresh : *database_).openRecordset(recordSource_);
    recordset_ = std::move(rows);
    if (fresh)
        database_ = std::move(fresh);
    Q_EMIT RowsChanged();
    sync();
}

void DataSource::close() {
    recordset_.Close();
    database_.reset();
}

bool DataSource::isEmpty() const {
    return !recordset_.isOpen() || recordset_.RecordCount() == 0;
}

EditMode DataSource::editMode() const {
    return recordset_.isOpen() ? recordset_.editMode() : EditMode::None;
}

void DataSource::MoveFirst() {
    recordset_.MoveFirst();
    sync();
}

void DataSource::MoveLast() {
    recordset_.MoveLast();
    sync();
}

void DataSource::MoveLastAndFirst() {
    if (isEmpty())
        return;
    MoveLast();
    MoveFirst();
}

void DataSource::MoveNext() {
    recordset_.MoveNext();
    sync();
}

void DataSource::MovePrevious() {
    recordset_.MovePrevious();
    sync();
}

void DataSource::moveTo(qint64 position) {
    recordset_.moveTo(position);
    sync();
}

void DataSource::setBookmark(qint64 mark) {
    recordset_.setBookmark(mark);
    sync();
}

void DataSource::FindFirst(const QString& condition) {
    recordset_.FindFirst(condition);
    if (!recordset_.NoMatch())
        sync();
}

void DataSource::AddNew() {
    recordset_.AddNew();
    fill();
    Q_EMIT RowBegun();
}

void DataSource::Edit() {
    recordset_.Edit();
    fill();
}

void DataSource::Update() {
    takeChanges();
    try {
        recordset_.Update();
    } catch (const RunTimeError& refusal) {
        QStringList refused;
        for (const QString& column : refusal.refused()) {
            const QString value = recordset_.field(column).joined();
            refused += captionOf(column) + (value.isEmpty() ? QString() : u'「' + value + u'」');
        }
        throw refusal.withRefused(refused);
    }
    Q_EMIT RowsChanged();
    sync();
}

QString DataSource::captionOf(const QString& column) const {
    for (const Binding& binding : bindings_) {
        const QString caption =
            binding.control ? binding.control->property("accessibleName").toString() : QString();
        if (!caption.isEmpty() && binding.column.compare(column, Qt::CaseInsensitive) == 0)
            return caption;
    }
    return column;
}

void DataSource::CancelUpdate() {
    recordset_.CancelUpdate();
    sync();
}

void DataSource::Delete() {
    recordset_.Delete();
    Q_EMIT RowsChanged();
    sync();
}

void DataSource::bind(QObject* control, const char* property, const QString& column, bool last) {
    Q_ASSERT_X(propertyOf(*control, property).isWritable(), property, "no such property to bind");
    bindings_.push_back({control, property, column, last, {}});
}

void DataSource::sync() {
    fill();
    Q_EMIT Reposition();
}

void DataSource::fill() {
    // A control's own code may move or refresh this source while it is filled: what it was filled with so far
    // is then out of date.
    if (filling_) {
        outdated_ = true;
        return;
    }
    const QScopedValueRollback guard(filling_, true);
    do {
        outdated_ = false;
        fillOnce();
    } while (outdated_);
}

void DataSource::fillOnce() {
    if (!recordset_.isOpen())
        return;
    const bool hasRow = recordset_.editMode() != EditMode::None ||
                        (recordset_.RecordCount() > 0 && !recordset_.AtBOF() && !recordset_.AtEOF());
    for (const bool last : {false, true}) {
        for (Binding& binding : bindings_) {
            if (binding.last != last || !binding.control)
                continue;
            const Value value = hasRow ? recordset_.field(binding.column) : Value();
            const QMetaProperty property = propertyOf(*binding.control, binding.property.constData());
            property.write(binding.control, propertyValue(value, property));
            if (outdated_)
                return;
        }
    }
    // Read back when all is filled: what a control's own code did on the way is no change of the user's.
    for (Binding& binding : bindings_)
        if (binding.control)
            binding.filled = binding.control->property(binding.property.constData());
}

void DataSource::takeChanges() {
    if (editMode() == EditMode::None)
        return;
    for (Binding& binding : bindings_) {
        if (!binding.control)
            continue;
        const QVariant now = binding.control->property(binding.property.constData());
        if (now == binding.filled)
            continue;
        recordset_.setField(binding.column, bufferValue(now));
        binding.filled = now;
    }
}

} // namespace pontrel
