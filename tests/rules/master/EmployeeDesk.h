#pragma once

#include "rules/master/SeniorityHost.h"
#include "support/Builders.h"
#include "support/Dump.h"
#include "support/TestStore.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QFile>
#include <QStringList>

#include <functional>

namespace pontrel::test {

/// Stands for the window of basic data: answers as told and records every call in order.
class FakeSeniorityHost final : public SeniorityHost {
  public:
    explicit FakeSeniorityHost(const Database& database) : database_(database) {}

    QDate date = QDate(2000, 12, 31); ///< What the user gives in the dialog.
    /// Runs at each recorded call, with its text: a look at the store, or a failure of the window.
    std::function<void(const QString&)> onCall;

    QStringList calls;
    QStringList insideStage; ///< Those of them, but for the pointer's, that came inside a stage.

    [[nodiscard]] QDate askDate() override {
        record(QStringLiteral("askDate"));
        return date;
    }
    void setHourglass(bool on) override {
        calls += on ? QStringLiteral("hourglass") : QStringLiteral("normal pointer");
    }
    void refreshRecordBar() override { record(QStringLiteral("refreshRecordBar")); }
    void openFailed(const RunTimeError& cause) override {
        record(QStringLiteral("openFailed %1").arg(cause.number()));
    }

  private:
    void record(const QString& call) {
        calls += call;
        if (database_.inStage())
            insideStage += call;
        if (onCall)
            onCall(call);
    }

    const Database& database_;
};

/// The employees of a store of its own, and who presses the two buttons.
struct EmployeeDesk {
    TestStore store;
    FakeSeniorityHost host{store.database()};

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

/// Number of the error that the routine throws, 0 where it throws none.
template<typename Routine>
[[nodiscard]] int errorNumberOf(Routine&& routine) {
    try {
        routine();
        return 0;
    } catch (const RunTimeError& failure) {
        return failure.number();
    }
}

} // namespace pontrel::test
