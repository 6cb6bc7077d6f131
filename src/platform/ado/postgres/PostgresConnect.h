#pragma once

#include <QMap>
#include <QString>

struct pg_conn;

namespace ado {

/// Opens a connection by libpq's keywords; the caller finishes it. A server that says that it is
/// starting or stopping is waited for; so is a `known` one, which has been there before, when
/// nobody answers in its place. Raises kUnspecified with one readable text, which never holds the
/// password, within ten seconds.
[[nodiscard]] pg_conn *connectPostgres(const QMap<QString, QString> &keywords, bool known);

/// The seconds that opening may take, all addresses of the server together: what the keywords ask
/// for, and never more than nine.
[[nodiscard]] int connectPatience(const QMap<QString, QString> &keywords);

} // namespace ado
