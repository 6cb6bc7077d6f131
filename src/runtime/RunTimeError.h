#pragma once

#include <QString>

#include <exception>
#include <utility>

/// Numbers of the run-time errors that the module raises or tells apart.
namespace errors {
inline constexpr int kInvalidCall = 5;
inline constexpr int kOverflow = 6;
inline constexpr int kDivisionByZero = 11;
inline constexpr int kTypeMismatch = 13;
inline constexpr int kFileNotFound = 53;
inline constexpr int kPathAccess = 75;
inline constexpr int kObjectNotSet = 91;
inline constexpr int kInvalidUseOfNull = 94;
} // namespace errors

/// The one exception of the module: a run-time error with the platform's number and a Norwegian
/// description. Thrown by value, caught by const reference.
class RunTimeError : public std::exception
{
public:
    /// An error with the standard description of `number`.
    explicit RunTimeError(int number);
    RunTimeError(int number, QString description);

    [[nodiscard]] int number() const noexcept { return m_number; }
    [[nodiscard]] const QString &description() const noexcept { return m_description; }
    /// The description as UTF-8; valid while the error lives.
    [[nodiscard]] const char *what() const noexcept override { return m_what.constData(); }

private:
    int m_number;
    QString m_description;
    QByteArray m_what;
};

/// Runs one statement and passes over a run-time error in it.
/// Returns 0, or the number of the error that ended the statement.
template<class Statement>
int passOver(Statement &&statement)
{
    try {
        std::forward<Statement>(statement)();
        return 0;
    } catch (const RunTimeError &error) {
        return error.number();
    }
}

/// Evaluates a condition in the passed-over style: a condition that fails enters its branch.
template<class Condition>
[[nodiscard]] bool enters(Condition &&condition)
{
    try {
        return std::forward<Condition>(condition)();
    } catch (const RunTimeError &) {
        return true;
    }
}
