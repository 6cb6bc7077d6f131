#pragma once

#include <QDialog>

class QComboBox;
class QSpinBox;

/// The choice of a printer and a number of copies, which is all that the module's printouts take
/// from a printer dialog. Where a PDF file is chosen, pressing "Skriv ut" asks for its name, and
/// cancelling that question leads back here.
class PrinterDialog : public QDialog
{
    Q_OBJECT

public:
    /// Offers `printers` and, with `offerPdf`, a PDF file.
    PrinterDialog(const QStringList &printers, bool offerPdf);

    /// Suggests a printer; does nothing when it is not among those offered.
    void choose(const QString &printer);
    void setCopies(int copies);
    /// What a PDF file is called unless the user calls it otherwise.
    void setPdfName(const QString &name) { m_pdfName = name; }

    [[nodiscard]] int copies() const;
    /// Empty when a PDF file is chosen.
    [[nodiscard]] QString printer() const;
    /// With its folder; empty when a printer is chosen.
    [[nodiscard]] QString pdfFile() const { return m_pdfFile; }

    void accept() override;

private:
    QComboBox *m_printers;
    QSpinBox *m_copies;
    QString m_pdfName = QStringLiteral("Utskrift.pdf");
    QString m_pdfFile;
};
