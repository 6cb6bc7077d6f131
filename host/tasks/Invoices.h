#pragma once

#include <QDate>
#include <QList>
#include <QString>

#include <functional>

/// An order of the active client as it is sent: as a credit note when its sum is below nought.
struct Invoice
{
    int number = 0; ///< 0 for one that another program has left without
    bool isCreditNote = false;
    bool isIssued = false; ///< its status is another one than "Ordre"
};

/// Which orders are meant.
struct InvoiceSelection
{
    QDate from; ///< first and last invoice date; invalid for no limit
    QDate to;
    QString status; ///< empty for all that are issued
};

/// Raises HostError when there is no order of that number, or when it cannot be read.
[[nodiscard]] Invoice findInvoice(int number);

/// By number. Raises HostError when they cannot be read.
[[nodiscard]] QList<Invoice> findInvoices(const InvoiceSelection &selection);

/// The name that its file gets where many are written, as in "Faktura-1062.pdf".
[[nodiscard]] QString invoiceFileName(const Invoice &invoice, const QString &ending);

/// Hands each invoice to `write`, which gives the name of its file, and tells of each through
/// `say`; what `write` refuses by a HostError is told and passed over. Raises HostError at the end
/// when there was a refusal, when there is no invoice, or when the user has ended it (Progress.h).
void writeEach(const QList<Invoice> &invoices,
               const std::function<QString(const Invoice &invoice)> &write,
               const std::function<void(const QString &line)> &say);
