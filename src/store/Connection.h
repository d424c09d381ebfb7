#pragma once

#include "store/CopyMarks.h"
#include "store/Database.h"
#include "store/EngineError.h"
#include "store/RunTimeError.h"
#include "store/StoreText.h"
#include "store/statement/Lexer.h"
#include "store/statement/Writer.h"

#include <SQLiteCpp/SQLiteCpp.h>

#include <QHash>

#include <array>
#include <memory>

namespace pontrel {

/// A run of an engine's statement: it is reset at the end, so that no statement stays open.
class Run {
  public:
    explicit Run(SQLite::Statement& statement) : statement_(statement) {}
    ~Run();
    Run(const Run&) = delete;
    Run& operator=(const Run&) = delete;

    /// Binds a value to parameter 1 and on; a parameter that the statement does not have is passed over.
    void bind(int parameter, const Value& value);
    void bind(int parameter, std::int64_t value) { statement_.bind(parameter, static_cast<int64_t>(value)); }
    [[nodiscard]] bool step() { return statement_.executeStep(); }
    [[nodiscard]] Value value(int column, ColumnType type) const;
    [[nodiscard]] std::int64_t identity(int column = 0) const;

  private:
    void bindText(int parameter, const QString& text);
    [[nodiscard]] char*
    keep(); ///< Room for a short text that the engine need not copy; null where there is none left.
    void bindKept(int parameter, char* end);

    SQLite::Statement& statement_;
    std::array<std::array<char, MostStoreText>, 48> texts_; // the first kept_ are filled
    std::size_t kept_ = 0;
};

/// The engine's connection with its prepared statements, shared by the objects that work on it.
class Database::Connection {
  public:
    explicit Connection(const QString& path);
    ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// A statement of the program's own language, made ready once for each shape.
    struct Prepared {
        statement::Plan plan;
        std::unique_ptr<SQLite::Statement> main;
        std::unique_ptr<SQLite::Statement> first;  ///< Of an update of two tables: the write to the first ...
        std::unique_ptr<SQLite::Statement> second; ///< ... and to the second.
        std::vector<CopyTarget> disturbs;          ///< Marks that a change by this statement takes back.
        std::shared_ptr<const QStringList> columns; ///< Of a selection.
    };

    /// Cuts the text and finds or makes its statement; the literals are in lexed(). Throws RunTimeError.
    [[nodiscard]] Prepared& prepare(const QString& text);
    /// The same for a form, whose values become the literals.
    [[nodiscard]] Prepared& prepare(const StatementForm& form, std::span<const Value> values);
    [[nodiscard]] const statement::Lexed& lexed() const { return lexed_; }

    /// A statement in the engine's own language, kept for the next use.
    [[nodiscard]] SQLite::Statement& engineStatement(const QByteArray& sql);

    void bindLiterals(Run& run, const std::vector<statement::LiteralForm>& forms,
                      const std::vector<Value>& literals) const;

    std::int64_t change(Prepared& prepared);
    /// The rows of a selection made ready, with the literals in lexed().
    [[nodiscard]] Rows select(Prepared& prepared) const;

    [[nodiscard]] SQLite::Database& engine();
    [[nodiscard]] const QString& path() const { return path_; }
    [[nodiscard]] std::int64_t statementCount() const { return statementCount_; }
    void countStatement() { ++statementCount_; }

    /// Runs a routine that changes rows: in the open stage, or where there is none in a transaction of its
    /// own, which is undone where an error leaves it. A change that takes back a copy mark says so within it
    /// by disturb().
    template<typename Routine>
    auto changing(Routine&& routine) {
        if (inStage())
            return routine();
        beginTransaction();
        try {
            auto result = routine();
            commitTransaction();
            return result;
        } catch (...) {
            rollBack();
            throw;
        }
    }
    /// Of a table's rows these columns are to be set, or where there are none, rows are to be deleted.
    void disturb(const Table& table, const QStringList& columns);
    [[nodiscard]] CopyMarks& copyMarks() { return *copyMarks_; }

    [[nodiscard]] bool inStage() const { return stageDepth_ > 0; }
    void beginStage();
    void endStage(); ///< Throws where the commit of the outermost stage fails.
    /// Commits the outermost stage on the way of an error, as far as it is still there; says where it is
    /// lost.
    [[nodiscard]] std::optional<RunTimeError> abandonStage() noexcept;
    void closeNow() noexcept;

    /// Runs a routine over the engine, whose failures become RunTimeErrors.
    template<typename Routine>
    auto guarded(const QString& statement, Routine&& routine) {
        try {
            return routine();
        } catch (const SQLite::Exception& failure) {
            throw engineError(failure, statement);
        } catch (const RunTimeError& failure) {
            if (failure.statement().isEmpty())
                throw RunTimeError(failure.number(), failure.text(), failure.technical(), statement)
                    .withRefused(failure.refused());
            throw;
        }
    }

  private:
    std::int64_t changeTwoTables(Prepared& prepared);
    void beginTransaction();
    void commitTransaction();
    void rollBack() noexcept;
    [[nodiscard]] SQLite::Database& working(); ///< The engine; throws where the open stage has been lost.

    QString path_;
    std::unique_ptr<SQLite::Database> engine_;
    QHash<QString, std::shared_ptr<Prepared>> prepared_;
    QHash<int, std::shared_ptr<Prepared>> preparedForms_; ///< Of prepared_, by the number of their form.
    QHash<QByteArray, std::shared_ptr<SQLite::Statement>> engineStatements_;
    std::optional<CopyMarks> copyMarks_;
    statement::Lexed lexed_;
    std::int64_t statementCount_ = 0;
    int stageDepth_ = 0;
};

} // namespace pontrel
