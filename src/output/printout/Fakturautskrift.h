#pragma once

#include <QString>

/// What SkrivRapport, or the report floor itself, is told to print one order of the active client.

/// The report folder of a component that lies in `komponentmappe`, both in the module's form; with
/// a trailing backslash. Beside the first "\bin", searched case-sensitively and not by whole path
/// elements: "C:\Prog\bin\x" gives "C:\Prog\rpt\Faktura\". Without one, the component's own folder.
[[nodiscard]] QString rapportMappe(const QString &komponentmappe);

/// The report file of the invoice form that is chosen in the settings.
[[nodiscard]] QString fakturablankett();

/// The selection of the order with that number.
[[nodiscard]] QString fakturautvalg(const QString &fakNr);

/// The formula that tells invoice and credit note, original and copy apart.
[[nodiscard]] QString fakTypeFormel(bool erKreditnota, bool original);

/// The invoice text of the settings as a formula of the report, empty when it is not used. An
/// apostrophe in it stays single.
[[nodiscard]] QString merknadFormel();

/// What a file of the invoice is offered as its name, without the ending.
[[nodiscard]] QString fakturafilnavn(bool erKreditnota, const QString &fakNr);
