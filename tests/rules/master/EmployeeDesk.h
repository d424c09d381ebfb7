#pragma once

#include "rules/master/SeniorityHost.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/RecordingHost.h"
#include "support/TestStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QFile>
#include <QStringList>

namespace pontrel::test {

/// Stands for the window of basic data.
class FakeSeniorityHost final : public RecordingHost<SeniorityHost> {
  public:
    using RecordingHost::RecordingHost;

    QDate date = QDate(2000, 12, 31); ///< What the user gives in the dialog.

    [[nodiscard]] QDate askDate() override {
        record(QStringLiteral("askDate"));
        return date;
    }
    void refreshRecordBar() override { record(QStringLiteral("refreshRecordBar")); }
    void openFailed(const RunTimeError& cause) override {
        record(QStringLiteral("openFailed %1").arg(cause.number()));
    }
};

/// The employees of a store of its own, and who presses the two buttons.
struct EmployeeDesk {
    TestStore store;
    FakeSeniorityHost host{&store.database()};

    [[nodiscard]] Database& database() { return store.database(); }
    /// All employees with all their columns, as another program sees them: what has been committed.
    [[nodiscard]] QStringList employees() const {
        const auto other = store.connect();
        return rowsOf(*other, QStringLiteral("Base06"));
    }
    /// How often the file has been written to as a whole: the counter of changes in its head.
    [[nodiscard]] int commits() const {
        QFile file(store.path());
        if (!file.open(QIODevice::ReadOnly) || !file.seek(24))
            return -1;
        int counter = 0;
        for (const char byte : file.read(4))
            counter = counter * 256 + static_cast<unsigned char>(byte);
        return counter;
    }
};

/// Another program in the middle of reading the employees, which lets nobody commit.
class ForeignReader {
  public:
    explicit ForeignReader(const QString& store)
        : engine_(store.toStdString(), SQLite::OPEN_READONLY), rows_(engine_, "SELECT EmpNo FROM Base06") {
        (void)rows_.executeStep();
    }

  private:
    SQLite::Database engine_;
    SQLite::Statement rows_;
};

/// What a data row tells of a value: a number, or "null".
[[nodiscard]] inline Value valueOf(const QString& text) {
    return text == QStringLiteral("null") ? Value() : Value(text.toDouble());
}

} // namespace pontrel::test
