#pragma once

#include <QString>
#include <QStringView>

#include <map>
#include <optional>

namespace ado {

/// The entries of one data source in an odbc.ini, by keyword in lower case.
using OdbcEntries = std::map<QString, QString>;

/// Finds the section [name] in the text of an odbc.ini, without regard to case. Lines "keyword =
/// value"; what begins with ";" or "#" is a comment; of two equal keywords the first one counts.
[[nodiscard]] std::optional<OdbcEntries> odbcSection(QStringView text, QStringView name);

/// The data source of that name from the user's odbc.ini ($ODBCINI, else .odbc.ini in the home
/// folder) or the system's (odbc.ini in $ODBCSYSINI, else in /etc). Nothing when neither has it.
[[nodiscard]] std::optional<OdbcEntries> odbcDataSource(QStringView name);

} // namespace ado
