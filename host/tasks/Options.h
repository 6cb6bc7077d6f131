#pragma once

#include <QDate>
#include <QString>
#include <QStringList>

/// What the host is to do, as read from its command line.
struct Options
{
    enum class Task {
        Tour,    ///< no task given: demo company, start, an invoice and a credit note
        Start,   ///< --dsn alone: start the module on that database
        Demo,    ///< --demo
        Sql,     ///< --sql
        Ehf,     ///< --ehf
        Ehf3,    ///< --ehf3
        AllEhf3, ///< --ehf3-alle
        Pdf,     ///< --pdf
        AllPdf,  ///< --pdf-alle
        Copy,    ///< --kopier
        Check,   ///< --kontroll
        Screens, ///< --tur
        Version, ///< --version
        Help,    ///< --help
    };

    Task task = Task::Tour;
    QString dsn;        ///< the database as given; the default file when not given
    qint16 klient = 1;  ///< client number
    qint16 aar = 0;     ///< accounting year, 1900 to 9999
    QString statement;  ///< of --sql
    qint32 ordreNr = 0; ///< of --ehf, --ehf3 and --pdf, above 0
    QString ut;         ///< target file of --ehf, --ehf3 and --pdf
    QString fra;        ///< database that --kopier copies, as given
    QString til;        ///< where to
    QString mappe;      ///< folder of --tur, --pdf-alle and --ehf3-alle
    QDate fraDato; ///< of --pdf-alle and --ehf3-alle: first and last invoice date; invalid for no
                   ///< limit
    QDate tilDato;
    QString status; ///< of these: the only one; empty for all that are issued
    bool erstatt = false;
};

/// Reads the arguments behind the program's name. `thisYear` stands in where --aar is not given.
/// Raises HostError (kUsage) for an unknown or repeated option, a missing or superfluous value, a
/// number outside its range, and options that do not go together. A value that may hold a password
/// is not shown.
[[nodiscard]] Options parseOptions(const QStringList &arguments, int thisYear);

/// The text of --help, in Norwegian, with a line feed at its end.
[[nodiscard]] QString helpText();
