#pragma once

#include "output/ehf3/Ehf3.h"
#include "support/ModuleTest.h"

#include <initializer_list>

/// A row of OrdreLinjer as SQL literals: product, name, quantity, price, VAT percent, net.
using Ordrerad = std::initializer_list<QString>;

/// A started module with client 5, which lacks nothing, its products and one customer; orders are
/// entered by the tests.
class Ehf3Test : public ModuleTest
{
protected:
    Ehf3Test();

    /// Enters an order of client 5 that asks for `brutto`, a SQL literal.
    void enterOrder(int nr, const QString &brutto, std::initializer_list<Ordrerad> rader);
    /// Sets columns of an order, as in an UPDATE.
    void change(int nr, const QString &assignments);

    /// The document of an order that lacks nothing.
    static QByteArray document(int nr);
    /// What stands between the tags of that name at their first place in the order's document.
    static QString value(int nr, const QByteArray &element);
    /// What is missing, a line each.
    static QStringList missing(int nr);

    /// The golden file's bytes.
    static QByteArray golden(const char *name);
};
