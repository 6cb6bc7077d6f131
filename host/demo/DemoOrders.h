#pragma once

#include <QtGlobal>

class DemoLines;

namespace ado {
class Connection;
}

/// Enters the lines of an order, as the order screen stores them. Raises as below.
void enterOrderLines(ado::Connection &connection, int orderId, const DemoLines &lines);

/// Enters the demo company's orders of `year` and of the year before, with their lines, and the
/// vouchers of those that have been posted. The registers (DemoCompany) are there already. Amounts
/// follow from quantities and the register's prices by the order screen's own calculation; vouchers
/// are those of a posting run with one invoice. Raises the database's RunTimeError; the caller owns
/// the transaction.
void fillOrders(ado::Connection &connection, qint16 client, qint16 year);
