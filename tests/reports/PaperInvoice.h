#pragma once

#include "reports/PageReader.h"

/// An invoice or a credit note as its pages tell it. Amounts are in øre.
struct PaperInvoice
{
    struct Line
    {
        qint64 tenths = 0; ///< of the quantity
        qint64 price = 0;
        double rate = 0; ///< percent
        qint64 amount = 0;
    };
    struct Page
    {
        QString title;
        QString number;
        QString date;
        QString pageOf; ///< "Side 1 av 2"
        std::vector<Line> lines;
        QString numbers; ///< of the products, one behind the other, without blanks
        QString names;   ///< likewise, with those of the lines of text
        std::optional<qint64> carriedIn;
        std::optional<qint64> carriedOut;
        bool hasSums = false;
    };
    struct Rate
    {
        double rate = 0;
        qint64 basis = 0;
        qint64 vat = 0;
    };

    std::vector<Page> pages;
    std::vector<Rate> rates;
    std::optional<qint64> net;
    std::optional<qint64> vat;
    std::optional<qint64> rounding; ///< nothing where none is told
    std::optional<qint64> total;
    QString totalLabel;
    QStringList unread; ///< what should be an amount or a number and is none
};

[[nodiscard]] PaperInvoice readInvoice(const report::Document &document);

/// Where the invoice contradicts itself: lines against net, rates against VAT, what is carried over
/// against the lines so far, the sums against what is to be paid, the pages against their count.
[[nodiscard]] QStringList faultsOf(const PaperInvoice &invoice);
