#pragma once

#include "benchmarks/works/Work.h"
#include "posting/run/Bokforing.h"

namespace bench {

class Company;

/// The posting screen with the first orders of a company in its list, all of them marked. A run
/// that tells of anything else than that all are posted ends the program.
class MarkedInvoices : public BokforSkjerm
{
public:
    explicit MarkedInvoices(int count) : m_count(count) {}

    int antallRader() const override { return m_count; }
    bool erMerket(int) const override { return true; }
    QString celle(int col, int row) const override;
    QString konto() const override { return QStringLiteral("3000"); }
    QString loyve() const override { return QStringLiteral("<nei>"); }
    void framdrift(int, int) override {}
    void melding(const QString &text, int) override;
    void lesFakturaer() override {}
    void skrivRapport(const QString &, qint16, const QString &, const QString &,
                      const QString &) override
    {
    }
    void slippHendelser() override {}

private:
    const int m_count;
};

/// The company's first invoices are posted, over and over.
[[nodiscard]] Work posting(Company &company, int invoices);

} // namespace bench
