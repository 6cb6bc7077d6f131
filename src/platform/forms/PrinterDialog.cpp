#include "platform/forms/PrinterDialog.h"

#include "platform/forms/FileDialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QPushButton>
#include <QSpinBox>

using namespace Qt::StringLiterals;

namespace {

constexpr int kMostCopies = 999;

} // namespace

PrinterDialog::PrinterDialog(const QStringList &printers, bool offerPdf)
    : m_printers(new QComboBox(this)), m_copies(new QSpinBox(this))
{
    m_printers->setObjectName(u"cmbSkriver"_s);
    for (const QString &printer : printers)
        m_printers->addItem(printer, printer);
    if (offerPdf)
        m_printers->addItem(u"PDF-fil"_s);
    m_printers->setMinimumContentsLength(30);

    m_copies->setObjectName(u"spnEksemplarer"_s);
    m_copies->setRange(1, kMostCopies);

    auto *buttons = new QDialogButtonBox(this);
    QPushButton *print = buttons->addButton(u"Skriv ut"_s, QDialogButtonBox::AcceptRole);
    print->setObjectName(u"cmdSkriv"_s);
    print->setDefault(true);
    buttons->addButton(u"Avbryt"_s, QDialogButtonBox::RejectRole)->setObjectName(u"cmdAvbryt"_s);
    connect(buttons, &QDialogButtonBox::accepted, this, &PrinterDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &PrinterDialog::reject);

    auto *layout = new QFormLayout(this);
    layout->addRow(u"&Skriver:"_s, m_printers);
    layout->addRow(u"Antall &eksemplarer:"_s, m_copies);
    layout->addRow(buttons);
    layout->setFieldGrowthPolicy(QFormLayout::FieldsStayAtSizeHint);
    layout->setSizeConstraint(QLayout::SetFixedSize);
    layout->setVerticalSpacing(layout->verticalSpacing() * 2);
}

void PrinterDialog::choose(const QString &printer)
{
    if (const int index = m_printers->findData(printer); index >= 0)
        m_printers->setCurrentIndex(index);
}

void PrinterDialog::setCopies(int copies)
{
    m_copies->setValue(copies);
}

int PrinterDialog::copies() const
{
    return m_copies->value();
}

QString PrinterDialog::printer() const
{
    return m_printers->currentData().toString();
}

void PrinterDialog::accept()
{
    m_pdfFile.clear();
    if (printer().isEmpty()) {
        FileQuestion question;
        question.save = true;
        question.overwritePrompt = true;
        question.title = u"Lagre PDF-fil"_s;
        question.filter = u"PDF-filer (*.pdf)|*.pdf"_s;
        question.defaultExt = u"pdf"_s;
        question.fileKind = u"PDF"_s;
        question.fileName = m_pdfName;
        if (!askForFile(question))
            return;
        m_pdfFile = question.fileName;
    }
    QDialog::accept();
}
