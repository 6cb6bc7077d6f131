#include "reports/PaperInvoice.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>

using namespace Qt::StringLiterals;

namespace {

class InvoiceReader
{
public:
    explicit InvoiceReader(const report::Document &document)
    {
        for (size_t page = 0; page < document.pages.size(); ++page) {
            const PageReader reader(document, page);
            m_where = u"page %1: "_s.arg(page + 1);
            m_invoice.pages.emplace_back();
            readHead(reader);
            readTable(reader);
            readSums(reader);
        }
    }

    [[nodiscard]] PaperInvoice take() { return std::move(m_invoice); }

private:
    PaperInvoice::Page &page() { return m_invoice.pages.back(); }

    void readHead(const PageReader &reader)
    {
        const auto valueOf = [&](std::initializer_list<QString> labels) {
            for (const QString &label : labels) {
                if (const SeenText *found = reader.find(label))
                    return reader.beside(*found);
            }
            return QString();
        };
        if (const SeenText *side = reader.findStart(u"Side "_s))
            page().pageOf = side->text;
        for (const QString &title : {u"FAKTURA"_s, u"KREDITNOTA"_s}) {
            if (reader.find(title)) {
                page().title = title;
                page().number = valueOf({u"Fakturanr."_s, u"Kreditnotanr."_s});
                page().date = valueOf({u"Fakturadato"_s, u"Dato"_s});
            } else if (const SeenText *shortened = reader.findStart(title + u' ')) {
                page().title = title;
                page().number = shortened->text.mid(title.size() + 1);
                const std::vector<SeenText> below =
                    reader.leftColumn(*shortened, shortened->baseline + kLineBelow);
                page().date = below.empty() ? QString() : below.front().text;
            }
        }
    }

    void readTable(const PageReader &reader)
    {
        const SeenText *heading = reader.find(u"Beskrivelse"_s);
        if (!heading)
            return;
        const SeenText *carriedIn = reader.find(u"Overført fra forrige side"_s);
        const SeenText *carriedOut = reader.find(u"Overføres til neste side"_s);
        const SeenText *net = reader.find(kNet);
        double end = std::numeric_limits<double>::max();
        for (const SeenText *below : {carriedOut, net}) {
            if (below)
                end = std::min(end, below->baseline - kAbove);
        }
        if (carriedIn)
            page().carriedIn = ore(reader.beside(*carriedIn));
        if (carriedOut)
            page().carriedOut = ore(reader.beside(*carriedOut));

        std::map<QString, SeenText> headings;
        for (SeenText text : reader.row(heading->baseline)) {
            if (carriedIn)
                text.baseline = carriedIn->baseline;
            headings.emplace(text.text, text);
        }
        for (const SeenText &text : reader.leftColumn(headings[u"Varenr."_s], end))
            page().numbers += withoutBlanks(text.text);
        for (const SeenText &text : reader.leftColumn(headings[u"Beskrivelse"_s], end))
            page().names += withoutBlanks(text.text);
        readLines(reader, headings, end);
    }

    void readLines(const PageReader &reader, std::map<QString, SeenText> &headings, double end)
    {
        const auto column = [&](const QString &label) {
            return reader.rightColumn(headings[label], end);
        };
        const std::vector<SeenText> quantities = column(u"Antall"_s);
        const std::vector<SeenText> prices = column(u"Pris"_s);
        const std::vector<SeenText> rates = column(u"Mva"_s);
        const std::vector<SeenText> amounts = column(u"Beløp"_s);
        if (quantities.size() != amounts.size() || prices.size() != amounts.size() ||
            rates.size() != amounts.size()) {
            m_invoice.unread += m_where + u"a line without all of its numbers"_s;
            return;
        }
        for (size_t i = 0; i < amounts.size(); ++i)
            page().lines.push_back({qRound64(number(quantities[i].text) * 10), ore(prices[i].text),
                                    number(rates[i].text.chopped(2)), ore(amounts[i].text)});
    }

    void readSums(const PageReader &reader)
    {
        const SeenText *net = reader.find(kNet);
        if (!net)
            return;
        page().hasSums = true;
        m_invoice.net = ore(reader.beside(*net));
        for (const SeenText &text : reader.texts()) {
            if (std::abs(text.room.left() - net->room.left()) > kSameEdge)
                continue;
            if (text.text == u"Merverdiavgift"_s)
                m_invoice.vat = ore(reader.beside(text));
            else if (text.text == u"Øreavrunding"_s)
                m_invoice.rounding = ore(reader.beside(text));
        }
        for (const QString &label : {u"Å betale NOK"_s, u"Kreditert NOK"_s}) {
            if (const SeenText *total = reader.find(label)) {
                m_invoice.total = ore(reader.beside(*total));
                m_invoice.totalLabel = label;
                readRates(reader, total->baseline);
            }
        }
    }

    void readRates(const PageReader &reader, double end)
    {
        const SeenText *heading = reader.find(u"Mva-sats"_s);
        if (!heading)
            return;
        for (const SeenText &text : reader.leftColumn(*heading, end)) {
            const bool exempt = text.text == u"Avgiftsfritt"_s;
            if (!exempt && !text.text.endsWith(u" %"_s))
                continue;
            const std::vector<SeenText> row = reader.row(text.baseline);
            if (row.size() < 3) {
                m_invoice.unread += m_where + u"a rate without its numbers"_s;
                continue;
            }
            m_invoice.rates.push_back(
                {exempt ? 0 : number(text.text.chopped(2)), ore(row[1].text), ore(row[2].text)});
        }
    }

    static QString withoutBlanks(QString text) { return text.remove(u' '); }

    qint64 ore(const QString &text)
    {
        const std::optional<qint64> amount = oreOf(text);
        if (!amount)
            m_invoice.unread += m_where + u"«%1» is no amount"_s.arg(text);
        return amount.value_or(0);
    }

    double number(QString text)
    {
        bool isNumber = false;
        const double value = text.replace(u',', u'.').remove(u' ').toDouble(&isNumber);
        if (!isNumber)
            m_invoice.unread += m_where + u"«%1» is no number"_s.arg(text);
        return value;
    }

    static constexpr double kSameEdge = 1e-6; // mm
    static constexpr double kAbove = 0.5;     // mm
    static constexpr double kLineBelow = 8;   // mm
    const QString kNet = u"Sum uten merverdiavgift"_s;
    PaperInvoice m_invoice;
    QString m_where;
};

/// Half an øre away from zero.
qint64 rounded(qint64 tenthsOfOre)
{
    return (std::abs(tenthsOfOre) + 5) / 10 * (tenthsOfOre < 0 ? -1 : 1);
}

void addHeadFaults(const PaperInvoice &invoice, size_t number, QStringList &faults)
{
    const PaperInvoice::Page &page = invoice.pages[number];
    const PaperInvoice::Page &first = invoice.pages.front();
    const QString where = u"page %1: "_s.arg(number + 1);
    if (page.pageOf != u"Side %1 av %2"_s.arg(number + 1).arg(invoice.pages.size()))
        faults += where + u"it says «%1»"_s.arg(page.pageOf);
    if (page.title.isEmpty() || page.title != first.title || page.number.isEmpty() ||
        page.number != first.number || page.date.isEmpty() || page.date != first.date)
        faults += where + u"it is headed «%1 %2 %3»"_s.arg(page.title, page.number, page.date);
}

/// Every page has lines, up to that with the sums. One more may follow for the giro slip alone.
void addPageFaults(const PaperInvoice &invoice, QStringList &faults)
{
    qint64 soFar = 0;
    bool summedUp = false;
    for (size_t i = 0; i < invoice.pages.size(); ++i) {
        const PaperInvoice::Page &page = invoice.pages[i];
        const QString where = u"page %1: "_s.arg(i + 1);
        addHeadFaults(invoice, i, faults);
        if ((page.names + page.numbers).isEmpty() != summedUp)
            faults += where + (summedUp ? u"lines below the sums"_s : u"no line is on it"_s);
        const auto expectCarried = [&](std::optional<qint64> carried, bool wanted) {
            if (carried.has_value() != wanted || (wanted && *carried != soFar))
                faults += where + u"%1 is carried over, the lines so far are %2"_s.arg(
                                      carried ? krOf(*carried) : u"nothing"_s, krOf(soFar));
        };
        expectCarried(page.carriedIn, i > 0 && !summedUp);
        for (const PaperInvoice::Line &line : page.lines) {
            soFar += line.amount;
            if (line.amount != rounded(line.tenths * line.price))
                faults += where + u"%1 tenths at %2 are %3"_s.arg(line.tenths)
                                      .arg(krOf(line.price), krOf(line.amount));
        }
        summedUp = summedUp || page.hasSums;
        expectCarried(page.carriedOut, !summedUp);
    }
}

/// The net is that of the unrounded lines, of which each line shows its own rounded. So the lines
/// that are shown may be some øre off, but not what quantity times price on the same paper are.
void addNetFaults(const PaperInvoice &invoice, QStringList &faults)
{
    qint64 exact = 0;
    for (const PaperInvoice::Page &page : invoice.pages) {
        for (const PaperInvoice::Line &line : page.lines)
            exact += line.tenths * line.price;
    }
    if (invoice.net != rounded(exact))
        faults += u"the lines are %1, the net %2"_s.arg(krOf(rounded(exact)),
                                                        krOf(invoice.net.value_or(0)));
}

/// One line of the table of rates against the lines of the invoice, unrounded as in the net. The
/// rates are rounded so that they add up; the highest one bears by what the lines' VAT was rounded.
void addRateFault(const PaperInvoice::Rate &rate, const PaperInvoice &invoice, QStringList &faults)
{
    double lines = 0;
    double count = 0;
    for (const PaperInvoice::Page &page : invoice.pages) {
        for (const PaperInvoice::Line &line : page.lines) {
            ++count;
            if (line.rate == rate.rate)
                lines += static_cast<double>(line.tenths * line.price) / 10;
        }
    }
    constexpr double kOre = 1.001;
    const double vat = lines * rate.rate / 100;
    if (std::abs(static_cast<double>(rate.basis) - lines) > kOre ||
        std::abs(static_cast<double>(rate.vat) - vat) > 2 * kOre + count / 100)
        faults += u"%1 %: basis %2, VAT %3, lines %4"_s.arg(rate.rate).arg(
            krOf(rate.basis), krOf(rate.vat), krOf(qRound64(lines)));
}

void addSumFaults(const PaperInvoice &invoice, QStringList &faults)
{
    qint64 basis = 0;
    qint64 vat = 0;
    for (const PaperInvoice::Rate &rate : invoice.rates) {
        basis += rate.basis;
        vat += rate.vat;
        addRateFault(rate, invoice, faults);
    }
    if (basis != invoice.net || vat != invoice.vat)
        faults += u"the rates are %1 and %2, the sums %3 and %4"_s.arg(
            krOf(basis), krOf(vat), krOf(*invoice.net), krOf(invoice.vat.value_or(0)));
    const qint64 total = *invoice.net + invoice.vat.value_or(0) + invoice.rounding.value_or(0);
    if (total != invoice.total)
        faults += u"the sums are %1, «%2» is %3"_s.arg(krOf(total), invoice.totalLabel,
                                                       krOf(*invoice.total));
}

} // namespace

PaperInvoice readInvoice(const report::Document &document)
{
    return InvoiceReader(document).take();
}

QStringList faultsOf(const PaperInvoice &invoice)
{
    QStringList faults = invoice.unread;
    addPageFaults(invoice, faults);
    if (!invoice.net || !invoice.vat || !invoice.total)
        return faults + QStringList{u"sums are missing"_s};
    addNetFaults(invoice, faults);
    addSumFaults(invoice, faults);
    return faults;
}
