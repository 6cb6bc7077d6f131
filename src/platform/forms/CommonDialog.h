#pragma once

#include <QString>

/// Flags of CommonDialog. The file dialogs and the printer dialog give the same bit different
/// meanings. What three of them hide these dialogs do not have in any case: a read-only box, the
/// choice of a selection and of page numbers.
namespace dialogflags {
inline constexpr int kOverwritePrompt = 0x2;
inline constexpr int kHideReadOnly = 0x4;

inline constexpr int kPrinterNoSelection = 0x4;
inline constexpr int kPrinterNoPageNumbers = 0x8;
inline constexpr int kPrinterHidePrintToFile = 0x100000;
} // namespace dialogflags

/// The standard dialogs for choosing a file and a printer. The caller sets the properties, shows a
/// dialog and reads the properties afterwards; they stand until they are set again.
///
/// A cancelled dialog leaves all properties as they were and, with `cancelError` on, raises error
/// 32755. While it is up, the dialog is the top-level widget "CommonDialog". Showing one is no
/// activation of the form beneath.
class CommonDialog
{
public:
    static constexpr int kCancelled = 32755;

    /// Whether Cancel raises an error.
    bool cancelError = false;
    /// Sum of `dialogflags`.
    int flags = 0;

    /// In: the suggested name, with or without a folder. Out: the chosen file with its folder. To
    /// the printer dialog the suggested name of a PDF file alone.
    QString fileName;
    /// Pairs of description and patterns, "Tekst (*.txt)|*.txt|Alle filer (*.*)|*.*"; several
    /// patterns are parted by ";".
    QString filter;
    /// The number of the pair that is chosen, from 1; 0 opens on the first.
    int filterIndex = 0;
    /// Added to a typed name without extension; without the dot.
    QString defaultExt;
    /// Empty for "Åpne", "Lagre som" and "Skriv ut".
    QString dialogTitle;
    /// Names what the file is, so that the next dialog for that kind opens in the same folder.
    QString fileKind;

    /// Number of copies, 1 to 999.
    int copies = 1;
    /// In: the printer to suggest, empty for the machine's standard printer. Out: the chosen one,
    /// empty when the output goes to a PDF file.
    QString printerName;
    /// Out: the PDF file that the user chose instead of a printer; empty otherwise.
    QString pdfFile;

    /// The chosen file need not exist.
    void showOpen();
    void showSave();
    /// The choice of a PDF file is offered unless `kPrinterHidePrintToFile` is set, and on a
    /// machine without printers even then, since nothing could be chosen otherwise.
    void showPrinter();

private:
    void showFileDialog(bool save);
    void cancelled() const;
};
