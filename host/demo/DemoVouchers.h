#pragma once

#include "host/demo/DemoLines.h"

#include <QDate>
#include <QHash>

namespace ado {
class Connection;
}

/// What a voucher takes from the invoice's header.
struct PostedInvoice
{
    QString number;
    int customer = 0;
    QString customerName;
    QDate invoiced;
    QDate due;
};

/// Writes the vouchers of demo invoices as a posting run with one invoice would: a sales line for
/// each VAT rate at its gross amount, the customer's line on 1500, and the rounding on 7395. The
/// VAT codes are 1, 3 and 5 for sales at 25, 10 and 15 percent, one more for credit notes, and 0
/// for sales without VAT, which go to 3100 in place of 3000. Vouchers are numbered from 1 in each
/// year.
class DemoVouchers
{
public:
    /// `connection` is not owned.
    DemoVouchers(ado::Connection &connection, qint16 client);

    void post(const PostedInvoice &invoice, const DemoLines &lines);

private:
    int enterVoucher(const PostedInvoice &invoice, bool credit, int groups);
    void enterRounding(int voucher, Currency rounding);

    ado::Connection &m_connection;
    qint16 m_client;
    QHash<int, int> m_lastNumber; // by year
};

/// The key that the database gave the row inserted last on this connection.
[[nodiscard]] int lastIdentity(ado::Connection &connection);
