#include "platform/forms/CommonDialog.h"

#include "platform/forms/FileDialog.h"
#include "platform/forms/ModalDialog.h"
#include "platform/forms/PrinterDialog.h"
#include "runtime/RunTimeError.h"

#include <QPrinterInfo>

using namespace Qt::StringLiterals;

void CommonDialog::showOpen()
{
    showFileDialog(false);
}

void CommonDialog::showSave()
{
    showFileDialog(true);
}

void CommonDialog::showFileDialog(bool save)
{
    FileQuestion question;
    question.save = save;
    question.overwritePrompt = flags & dialogflags::kOverwritePrompt;
    question.title = dialogTitle.isEmpty() ? (save ? u"Lagre som"_s : u"Åpne"_s) : dialogTitle;
    question.filter = filter;
    question.filterIndex = filterIndex;
    question.defaultExt = defaultExt;
    question.fileKind = fileKind;
    question.fileName = fileName;
    if (!askForFile(question)) {
        cancelled();
        return;
    }
    fileName = question.fileName;
    filterIndex = question.filterIndex;
}

void CommonDialog::showPrinter()
{
    const QStringList printers = QPrinterInfo::availablePrinterNames();
    const bool offerPdf = printers.isEmpty() || !(flags & dialogflags::kPrinterHidePrintToFile);

    PrinterDialog dialog(printers, offerPdf);
    dialog.setObjectName(u"CommonDialog"_s);
    dialog.setWindowTitle(dialogTitle.isEmpty() ? u"Skriv ut"_s : dialogTitle);
    dialog.choose(printerName.isEmpty() ? QPrinterInfo::defaultPrinterName() : printerName);
    dialog.setCopies(copies);
    if (!fileName.isEmpty())
        dialog.setPdfName(fileName);
    if (runModal(dialog) != QDialog::Accepted) {
        cancelled();
        return;
    }
    copies = dialog.copies();
    printerName = dialog.printer();
    pdfFile = dialog.pdfFile();
}

void CommonDialog::cancelled() const
{
    if (cancelError)
        throw RunTimeError(kCancelled, u"Avbryt ble valgt."_s);
}
