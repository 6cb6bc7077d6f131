#pragma once

#include <QObject>
#include <QString>

/// The second public class of the component, external name "Faktura.clsEhf3": EHF 3.0 files of
/// orders, on the database that clsFaktura was started on. It keeps nothing, and its operation is
/// reached by name.
class clsEhf3 : public QObject
{
    Q_OBJECT

public:
    /// Writes order `ordreNr` of client `klient` to `fil` as EHF 3.0. Returns what is missing for
    /// it, in Norwegian and a line each, or why it could not be written; empty when the file is
    /// there. Nothing of the order changes, and the active client stays. Raises nothing.
    Q_INVOKABLE QString SkrivEhf3(qint16 klient, qint32 ordreNr, const QString &fil);
};
