#pragma once

#include <QByteArray>
#include <QString>

#include <memory>

namespace bench {

/// A new, empty database of its own that lasts as long as this. It is filled past the module, by
/// statements of the database's own language, since the module's road would take most of the time.
class Database
{
public:
    virtual ~Database() = default;

    [[nodiscard]] virtual const char *name() const = 0;
    [[nodiscard]] virtual bool isServer() const = 0;
    /// As the module takes it.
    [[nodiscard]] virtual QString connectionString() const = 0;
    /// A folder that goes with the database.
    [[nodiscard]] virtual QString folder() const = 0;
    /// What a krone is stored as.
    [[nodiscard]] virtual int krone() const = 0;
    /// Seconds that processors have spent on the module's sessions outside this program.
    [[nodiscard]] virtual double secondsOutside() const { return 0; }
    /// Runs one statement. What is refused ends the program.
    virtual void send(const QByteArray &sql) = 0;
    /// After many rows have come: the state in which a database is found that has stood a while.
    virtual void settle() = 0;
};

/// A database of the kind that the program measures on.
[[nodiscard]] std::unique_ptr<Database> makeDatabase();

} // namespace bench
