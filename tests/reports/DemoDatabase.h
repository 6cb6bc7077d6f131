#pragma once

#include <QByteArray>
#include <QString>

/// Makes the demo company's tables and rows, as client 1 in 2014, in an empty database, and starts
/// the module on it. Raises the database's RunTimeError.
void makeDemoDatabase(const QString &connectionString);

/// Sets the demo company's logo to the bytes of a picture file.
void storeDemoLogo(const QString &connectionString, const QByteArray &bytes);
