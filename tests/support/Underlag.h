#pragma once

#include <QString>

#include <memory>

/// The kind of database that a test program stands on; each has its own makeUnderlag().
class Underlag
{
public:
    virtual ~Underlag() = default;

    /// Of the test's empty database, which lasts as long as this; `file` is that of the test's
    /// database file.
    [[nodiscard]] virtual QString connectionString(const QString &file) const = 0;
    /// To be asked after a process that used the database has ended, with no session of our own
    /// open: waits until nothing of it is under way any more; "ok", or what is wrong with the
    /// database itself.
    [[nodiscard]] virtual QString integrity(const QString &file) const = 0;
    /// At how many points a run is to be killed.
    [[nodiscard]] virtual int killPoints() const = 0;
};

[[nodiscard]] std::unique_ptr<Underlag> makeUnderlag();
