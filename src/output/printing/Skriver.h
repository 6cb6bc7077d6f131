#pragma once

#include "platform/report/Document.h"

#include <QScopedValueRollback>
#include <QString>

#include <memory>
#include <optional>

class CommonDialog;
class QPrinter;

/// The machine's printers. Tests put others in their place, see BrukSkrivere.
class Skrivere
{
public:
    Skrivere() = default;
    virtual ~Skrivere() = default;
    Skrivere(const Skrivere &) = delete;
    Skrivere &operator=(const Skrivere &) = delete;

    /// The name of the standard printer, or of the first one where none is the standard; empty on a
    /// machine without printers.
    [[nodiscard]] virtual QString standard() const;
    /// The printer of that name, ready to be set up; null when there is none.
    [[nodiscard]] virtual std::unique_ptr<QPrinter> lag(const QString &navn) const;

    [[nodiscard]] static const Skrivere &gjeldende();
};

/// Has other printers stand for the machine's while it lives. `skrivere` is not owned.
class BrukSkrivere
{
public:
    explicit BrukSkrivere(const Skrivere &skrivere);

private:
    const QScopedValueRollback<const Skrivere *> m_iBruk;
};

/// What the user has chosen in the printer dialog, in force for every printout while it lives. It
/// holds its own copy, since a printout to the printer unloads the form that the dialog is on.
class ValgtSkriver
{
public:
    /// `eksemplarer` is how often each printout is to come out.
    explicit ValgtSkriver(const CommonDialog &dialog, int eksemplarer = 1);

    const QString skriver; ///< empty when the output goes to `pdfFil`
    const QString pdfFil;
    const int eksemplarer;

private:
    const QScopedValueRollback<const ValgtSkriver *> m_iBruk;
};

/// Prints all pages on the chosen printer, or to the chosen PDF file, which one printout after the
/// other replaces. Where nothing has been chosen: on the standard printer, and on a machine without
/// printers to a PDF file that the user is asked for; Cancel there prints nothing. kOutput when the
/// printer or the file refuses, kCancelled when the user gives the file up.
void skrivUt(const report::Document &dokument);

/// Writes all pages to a PDF file; one that takes long can be given up by the user, kCancelled, and
/// leaves what stood there before. kOutput when the file refuses.
void skrivPdf(const report::Document &dokument, const QString &fil);

/// Prints all pages on the report's own paper, whatever paper and orientation the printer is set
/// to. kOutput when the printer refuses.
void skrivPaa(QPrinter &skriver, const report::Document &dokument, int eksemplarer = 1);

/// The name that a PDF file of the document is offered.
[[nodiscard]] QString pdfNavn(const report::Document &dokument);

/// Asks for a PDF file to save the document in; none when the user cancels.
[[nodiscard]] std::optional<QString> velgPdfFil(const QString &tittel,
                                                const report::Document &dokument);
