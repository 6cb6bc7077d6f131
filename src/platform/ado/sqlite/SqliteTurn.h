#pragma once

#include <QByteArray>
#include <QString>

namespace ado {

/// The turn of Connection::takeTurn at a SQLite file: a lock on an empty file beside it, which ends
/// with its process. A lock on the database itself would get in the way of SQLite's own ones.
class SqliteTurn
{
public:
    explicit SqliteTurn(const QString &database);
    ~SqliteTurn() { release(); }
    SqliteTurn(const SqliteTurn &) = delete;
    SqliteTurn &operator=(const SqliteTurn &) = delete;

    /// False while another one has it. Raises kNoPermission when the file beside cannot be made.
    [[nodiscard]] bool take();
    void release() noexcept;

private:
    const QString m_database;
    int m_file = -1; // open while the turn is held
};

} // namespace ado
