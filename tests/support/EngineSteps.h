#pragma once

#include "store/Connection.h"

#include <sqlite3.h>

#include <cstdint>

namespace pontrel::test {

/// Counts what the engine does on a connection while this object lives: the steps of its statements. The same
/// on every machine, unlike a time.
class EngineSteps {
  public:
    explicit EngineSteps(Database& database) : handle_(database.connection()->engine().getHandle()) {
        sqlite3_progress_handler(
            handle_, 1,
            [](void* steps) {
                ++*static_cast<std::int64_t*>(steps);
                return 0;
            },
            &count_);
    }
    ~EngineSteps() { sqlite3_progress_handler(handle_, 0, nullptr, nullptr); }
    EngineSteps(const EngineSteps&) = delete;
    EngineSteps& operator=(const EngineSteps&) = delete;

    [[nodiscard]] std::int64_t count() const { return count_; }

  private:
    sqlite3* handle_;
    std::int64_t count_ = 0;
};

} // namespace pontrel::test
