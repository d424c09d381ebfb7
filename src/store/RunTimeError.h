#pragma once

#include <QString>
#include <QStringList>

#include <exception>

namespace pontrel {

/// Numbers of the run-time errors that the program tells its user.
namespace error {
inline constexpr int Overflow = 6;
inline constexpr int SubscriptOutOfRange = 9;
inline constexpr int DivisionByZero = 11;
inline constexpr int TypeMismatch = 13;
inline constexpr int FileNotFound = 53;
inline constexpr int FileAccess = 75;
inline constexpr int ObjectNotSet = 91;
inline constexpr int InvalidNull = 94;
inline constexpr int FaultyFile = 321;
inline constexpr int Printer = 482;
inline constexpr int NoCurrentRecord = 3021;
inline constexpr int DuplicateKey = 3022;
inline constexpr int StoreNotFound = 3024;
inline constexpr int CannotWrite = 3027;
inline constexpr int UpdateWithoutEdit = 3020;
inline constexpr int UnknownName = 3061;
inline constexpr int UnknownTable = 3078;
inline constexpr int Syntax = 3075;
inline constexpr int RecordDeleted = 3167;
inline constexpr int DeleteRefused = 3200;
inline constexpr int StoreLocked = 3260;
inline constexpr int RequiredColumn = 3314;
inline constexpr int UnrecognizedStore = 3343;
inline constexpr int DiskOrStore = 3049;     ///< The store is damaged, or its disk full.
inline constexpr int StoreUnreadable = 3051; ///< Neither, but the machine refuses to read or write it.
inline constexpr int ColumnNotFound = 3265;
inline constexpr int DataConversion = 3421;
} // namespace error

/// The one error value of all layers: a number, a sentence for the user, and for the developer the technical
/// cause and the statement that failed, where there is one.
class RunTimeError : public std::exception {
  public:
    RunTimeError(int number, const QString& text, const QString& technical = {},
                 const QString& statement = {});

    [[nodiscard]] int number() const { return number_; }
    [[nodiscard]] const QString& text() const { return text_; }
    [[nodiscard]] const QString& technical() const { return technical_; }
    [[nodiscard]] const QString& statement() const { return statement_; }
    /// The columns whose values the store has refused; their captions where a control is bound to them, each
    /// with its value in corner brackets. Empty for an error of another kind.
    [[nodiscard]] const QStringList& refused() const { return refused_; }
    /// The same error with those columns or captions.
    [[nodiscard]] RunTimeError withRefused(const QStringList& refused) const;
    [[nodiscard]] const char* what() const noexcept override { return what_.constData(); }

  private:
    int number_;
    QString text_;
    QString technical_;
    QString statement_;
    QStringList refused_;
    QByteArray what_;
};

/// The error of that number with its standard sentence in Chinese.
[[nodiscard]] RunTimeError runTimeError(int number, const QString& technical = {},
                                        const QString& statement = {});

} // namespace pontrel
