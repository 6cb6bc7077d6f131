#pragma once

#include "benchmarks/works/Work.h"
#include "platform/report/Document.h"

#include <QString>

/// Works that make a document of orders or lists.
namespace bench {

/// EHF documents of the first orders, in memory.
[[nodiscard]] Work ehfDocuments(int orders);

/// EHF 3.0 documents of the first orders, in memory.
[[nodiscard]] Work ehf3Documents(int orders);
/// The same as files in a folder, which is what --ehf3-alle does.
[[nodiscard]] Work ehf3Files(const QString &folder, int orders);
/// The same orders read one by one, and no more.
[[nodiscard]] Work ehf3Reads(int orders);

/// The invoice of an order, or the list of all orders, as pages.
[[nodiscard]] report::Document invoicePages(int order);
[[nodiscard]] report::Document listPages();

/// Invoices of the first orders as PDF files in a folder, each read, laid out and written by
/// itself.
[[nodiscard]] Work invoicesToPdf(const QString &folder, int orders);
/// The list of all orders as a PDF file.
[[nodiscard]] Work listToPdf(const QString &folder);

} // namespace bench
