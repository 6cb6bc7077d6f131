#pragma once

#include "support/ModuleTest.h"

#include <QByteArray>

#include <initializer_list>

/// A row of OrdreLinjer as SQL literals: position, product, name, quantity, price, VAT percent,
/// net.
using Linje = std::initializer_list<QString>;

/// A started module with client 5 and its products; orders are entered by the tests.
class EhfTest : public ModuleTest
{
protected:
    EhfTest();

    /// Enters an order of client 5 with the amounts as SQL literals.
    void enterOrder(int nr, const QString &netto, const QString &mva, const QString &brutto,
                    std::initializer_list<Linje> linjer);
    /// Sets columns of an order, as in an UPDATE.
    void change(int nr, const QString &assignments);

    /// What SkrivEhfFil writes, and the number of the error that ended it, or 0.
    struct Outcome
    {
        QByteArray bytes;
        int error;
    };
    static Outcome write(int kreditnota, const QString &ordreNr);

    /// The golden file's bytes.
    static QByteArray golden(const char *name);
};
