#pragma once

#include "store/Recordset.h"

#include <QObject>
#include <QString>

#include <memory>
#include <vector>

namespace pontrel {

/// The bound source of a list of rows: a connection of its own, a record source, a current row, and controls
/// that show and edit the row's columns. A change of the record source shows only after Refresh().
class DataSource : public QObject {
    Q_OBJECT
  public:
    explicit DataSource(QObject* parent = nullptr);
    ~DataSource() override;

    [[nodiscard]] QString DatabaseName() const { return databaseName_; }
    void setDatabaseName(const QString& path); ///< Takes effect at the next Refresh.
    [[nodiscard]] QString RecordSource() const { return recordSource_; }
    void setRecordSource(const QString& source) { recordSource_ = source; } ///< A table name or a selection.

    /// Opens the connection where it is not open, runs the record source and makes its first row current.
    /// Throws RunTimeError; the rows shown before then stay.
    void Refresh();

    /// Refresh() where nobody looks at the rows before the next one: the errors of its statement and of its
    /// first row, and its Reposition, without reading the others. The rows shown before then stay.
    void refreshUnseen();

    /// Closes rows and connection. Bound controls keep what they show.
    void close();

    /// The rows; a closed set before the first Refresh. Move with the routines below or on the set itself,
    /// followed by sync().
    [[nodiscard]] Recordset& recordset() { return recordset_; }
    [[nodiscard]] bool isEmpty() const; ///< No rows, or not open.

    void MoveFirst();
    void MoveLast();
    void MoveLastAndFirst(); ///< So that the number of rows is known; nothing without rows.
    void MoveNext();
    void MovePrevious();
    void moveTo(qint64 position);
    void setBookmark(qint64 mark);
    void FindFirst(const QString& condition);
    void AddNew();
    void Edit();
    /// Takes the controls' changes into the buffer and writes them. See Recordset::Update. A refusal names
    /// the columns by the captions of their controls, which are what they are called when read out.
    void Update();
    void CancelUpdate();
    void Delete();
    [[nodiscard]] EditMode editMode() const;

    /// Binds a property of a control ("text", "checked", "value" ...) to a column of the row. Filling the
    /// control counts as no change; during an edit a value that differs from the filled one is a change,
    /// whoever made it. A control without text saves null. Bindings with last set (labels) are filled after
    /// all others.
    void bind(QObject* control, const char* property, const QString& column, bool last = false);

    /// Brings the bound controls to what the current row holds and tells Reposition.
    void sync();
    /// The bound controls are being brought to the current row: what they change was entered by nobody.
    [[nodiscard]] bool isFilling() const { return filling_; }

  Q_SIGNALS:
    void Reposition();  ///< Another row, or the same row anew, has become current.
    void RowBegun();    ///< A new row is being added: it is current, and none of the set.
    void RowsChanged(); ///< The set of rows has changed: refreshed, or a row added, deleted or saved.

  private:
    struct Binding;
    [[nodiscard]] std::unique_ptr<Database>
    freshConnection() const; ///< Where the present one is none of the path.
    void fill();
    void fillOnce();
    void takeChanges();
    [[nodiscard]] QString captionOf(const QString& column) const;

    QString databaseName_;
    QString recordSource_;
    std::unique_ptr<Database> database_;
    Recordset recordset_;
    std::vector<Binding> bindings_;
    bool filling_ = false;
    bool outdated_ = false; ///< The rows have changed while the controls were being filled.
};

} // namespace pontrel
