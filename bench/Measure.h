#pragma once

#include <QString>
#include <QTemporaryDir>

#include <functional>
#include <string>
#include <vector>

namespace pontrel::bench {

// What the measuring programs share.

/// A program folder with a new store, in a temporary folder.
class ProgramFolder {
  public:
    ProgramFolder();
    [[nodiscard]] QString path() const { return folder_.path(); }
    [[nodiscard]] QString store() const;
    [[nodiscard]] QString punches() const { return folder_.path(); }

  private:
    QTemporaryDir folder_;
};

/// Processor seconds of the process so far.
[[nodiscard]] double processorSeconds();

/// Processor seconds that the routine takes, which a busy machine stretches less than the clock's.
[[nodiscard]] double timed(const std::function<void()>& routine);

[[nodiscard]] double median(std::vector<double> seconds);

/// Prints a figure and the limit that it is held against, both in processor seconds, with their ratio and the
/// most that this may be.
void report(const char* what, double figure, const char* limitName, double limit, double goal);

/// A number that a measuring program takes on its command line, as "--runs 5".
struct Number {
    QString name;
    int usual;
    int least = 1;
};

/// The main routine of a measuring program, with the application there: reads the numbers, hands them over in
/// their order, and returns what comes back; 1 after a message where the routine throws.
[[nodiscard]] int runMeasure(int argc, char** argv, const std::vector<Number>& numbers,
                             const std::function<int(const std::vector<int>& values)>& routine);

/// Kilobytes of this process by their name in the system's account: "VmRSS:", those that it holds, or
/// "VmHWM:", the most it has held since resetPeak().
[[nodiscard]] long memoryOfProcess(const char* name);
void resetPeak();

/// Prints how many kilobytes something takes, and the most that it may.
void reportMemory(const char* what, long kilobytes, long goal);

/// Inserts punches, four a head and day of ten thousand people, with the codes 00001 to 10000.
void insertPunches(const QString& store, int punches);

/// A table's rows as the engine holds them, a null as a mark of its own.
struct Content {
    std::string table;
    std::vector<std::vector<std::string>> rows;
    int columns = 0;
};

/// The rows of the tables of a store.
[[nodiscard]] std::vector<Content> readContents(const QString& store, const std::vector<std::string>& tables);

/// Inserts the rows into the store by hand, by prepared statements in one transaction, and returns the
/// seconds.
[[nodiscard]] double bulkInsert(const QString& store, const std::vector<Content>& contents);

} // namespace pontrel::bench
