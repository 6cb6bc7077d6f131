#pragma once

#include <QString>

#include <exception>

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

namespace detail {

/// Calls `run(statement)` behind the one handler of the module's passed-over statements. Returns 0,
/// or the number of the error.
[[nodiscard]] int runPassingOver(void (*run)(void *statement), void *statement);

} // namespace detail

/// Runs one statement and passes over a run-time error in it: what the statement did before the
/// error stays done, and every variable that it had not assigned yet keeps its value.
/// Returns 0, or the number of the error that ended the statement.
///
/// The statement is called through a pointer and its handler stands in another translation unit, so
/// that no optimiser sees both sides. Where the handler was inlined, g++ 12 took an assignment that
/// never happened, since its right side threw, for one that did, and threw the variable's earlier
/// value away as never read.
template<class Statement>
int passOver(Statement &&statement)
{
    auto call = [&statement] { statement(); };
    return detail::runPassingOver([](void *it) { (*static_cast<decltype(call) *>(it))(); }, &call);
}

/// Evaluates a condition in the passed-over style: a condition that fails enters its branch.
template<class Condition>
[[nodiscard]] bool enters(Condition &&condition)
{
    bool result = true;
    passOver([&] { result = condition(); });
    return result;
}
