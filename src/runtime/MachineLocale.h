#pragma once

#include <QChar>
#include <QString>

/// What the module wants to know of the machine's locale. It is read from the environment once;
/// where the environment says nothing ("C", "POSIX"), the machine counts as Norwegian (Bokmål).
struct MachineLocale
{
    QChar decimalPoint;  ///< ',' or '.'; ',' on a Norwegian machine
    QString shortDate;   ///< pattern of the short date in QDate::toString form
    bool dayBeforeMonth; ///< how a typed date of three numbers is read

    /// The locale in force on this thread's machine.
    [[nodiscard]] static const MachineLocale &current();
    /// A Norwegian machine: comma, "dd.MM.yyyy".
    [[nodiscard]] static MachineLocale norwegian();
    /// The locale of a POSIX name such as "nb_NO.UTF-8" or "en_US"; empty, "C" and "POSIX" give the
    /// Norwegian one.
    [[nodiscard]] static MachineLocale fromName(const QString &posixName);
    /// The locale that the environment names now: LC_ALL, else LC_NUMERIC for the decimal mark and
    /// LC_TIME for the dates, else LANG. A variable with no text counts as not set.
    [[nodiscard]] static MachineLocale fromEnvironment();
};

/// Puts another locale in force while it lives; for tests that compare locales.
class ScopedLocale
{
public:
    explicit ScopedLocale(MachineLocale locale);
    ~ScopedLocale();
    ScopedLocale(const ScopedLocale &) = delete;
    ScopedLocale &operator=(const ScopedLocale &) = delete;

private:
    MachineLocale m_previous;
};
