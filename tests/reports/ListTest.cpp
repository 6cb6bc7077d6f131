#include "reports/ListTest.h"

#include "platform/ado/Recordset.h"
#include "platform/report/Functions.h"
#include "platform/report/Report.h"
#include "posting/run/Bokforing.h"
#include "reports/PageReader.h"
#include "runtime/Format.h"
#include "shell/component/Main.h"

#include <algorithm>
#include <cmath>
#include <map>

using namespace Qt::StringLiterals;
using namespace bokforkolonne;

namespace {

/// A posting screen with nothing but a list, every row of which is marked.
class MarkedInvoices : public BokforSkjerm
{
public:
    MarkedInvoices(QString account, QString permit)
        : m_account(std::move(account)), m_permit(std::move(permit))
    {
    }
    void add(QHash<int, QString> cells) { m_rows.append(std::move(cells)); }

    int antallRader() const override { return int(m_rows.size()); }
    bool erMerket(int) const override { return true; }
    QString celle(int col, int row) const override { return m_rows[row - 1].value(col); }
    QString konto() const override { return m_account; }
    QString loyve() const override { return m_permit; }
    void framdrift(int, int) override {}
    void melding(const QString &, int) override {}
    void lesFakturaer() override {}
    void skrivRapport(const QString &, qint16, const QString &, const QString &,
                      const QString &) override
    {
    }
    void slippHendelser() override {}

private:
    QList<QHash<int, QString>> m_rows;
    const QString m_account;
    const QString m_permit;
};

// Of the paper, in mm.
constexpr double kLeft = 12;
constexpr double kRight = 198;
constexpr double kFoot = 281;
constexpr double kLineHeight = 2; // less than any line's

double rightOf(const report::TextCommand &text)
{
    return text.baseline.x() + text.width();
}

QString plain(const QString &text)
{
    return QString(text).replace(u'\u00a0', u' ');
}

} // namespace

ListTest::ListTest()
{
    Main(); // the VAT rates
}

report::Document ListTest::list(const QString &file, const QString &selection)
{
    return report::makeReport(
        {QStringLiteral(REPORT_FOLDER "/") + file, connectionString(), selection, {}});
}

QStringList ListTest::textsOfList(const QString &file, const QString &selection)
{
    QStringList texts;
    for (const report::Page &page : list(file, selection).pages)
        texts += textsOf(page);
    return texts;
}

void ListTest::post(const QList<int> &orders, const QString &account, const QString &permit)
{
    MarkedInvoices screen(account, permit);
    for (const int order : orders) {
        ado::Recordset set;
        set.setActiveConnection(connectionString());
        set.setSource(u"SELECT * FROM Ordre WHERE KlientNr=1 AND OrdreNr=%1"_s.arg(order));
        set.open();
        EXPECT_EQ(set.text(set.fieldIndex(u"OrdreStatus")), u"Fakturert"_s) << order;
        const auto day = [&](QStringView column) {
            return Format(set.value(set.fieldIndex(column)).toDate(), u"dd.mm.yyyy");
        };
        screen.add({{kFakNr, QString::number(order)},
                    {kKundeNr, set.text(set.fieldIndex(u"KundeNr"))},
                    {kKundeNavn, set.text(set.fieldIndex(u"KundeNavn"))},
                    {kFakDato, day(u"FakDato")},
                    {kForfall, day(u"ForfallDato")},
                    {kOrdreId, set.text(set.fieldIndex(u"ID"))}});
    }
    BokforMerkede(screen);
}

QString ListTest::amount(const QString &query)
{
    ado::Recordset set;
    set.setActiveConnection(connectionString());
    set.setSource(query);
    set.open();
    return plain(report::textOf(set.value(0)));
}

QStringList columnOf(const report::Page &page, double rightEdge)
{
    constexpr double kHundredthOfAPoint = 0.01;
    std::map<double, QString> texts;
    for (const report::TextCommand &text : page.texts) {
        if (std::abs(rightOf(text) - rightEdge) < kHundredthOfAPoint)
            texts[text.baseline.y()] = plain(text.text());
    }
    QStringList column;
    for (const auto &[y, text] : texts)
        column += text;
    return column;
}

QStringList lineAt(const report::Page &page, double baseline)
{
    std::map<double, QString> texts;
    for (const report::TextCommand &text : page.texts) {
        if (std::abs(text.baseline.y() - baseline) < kLineHeight)
            texts[text.baseline.x()] = plain(text.text());
    }
    QStringList line;
    for (const auto &[x, text] : texts)
        line += text;
    return line;
}

QStringList lastLineOf(const report::Page &page)
{
    double lowest = 0;
    for (const report::TextCommand &text : page.texts) {
        if (text.baseline.y() < kFoot)
            lowest = std::max(lowest, text.baseline.y());
    }
    return lineAt(page, lowest);
}

void expectTidy(const report::Document &document)
{
    constexpr double kTolerance = 0.01;
    for (const report::Page &page : document.pages) {
        for (const report::TextCommand &text : page.texts) {
            EXPECT_GT(text.baseline.x(), kLeft - kTolerance) << text.text().toStdString();
            EXPECT_LT(rightOf(text), kRight + kTolerance) << text.text().toStdString();
        }
    }
    EXPECT_EQ(layoutFaults(document), QStringList());
}
