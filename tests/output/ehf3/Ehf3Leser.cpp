#include "output/ehf3/Ehf3Leser.h"

#include <QRegularExpression>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <map>

using namespace Qt::StringLiterals;

namespace {

// The pragma-free way to say "not ISO C++, on purpose".
__extension__ using Wide = __int128;

constexpr qint64 kOne = 10'000;
constexpr qint64 kOere = kOne / 100;

Element readElement(QXmlStreamReader &reader)
{
    Element element{reader.qualifiedName().toString(), {}, {}, {}};
    for (const QXmlStreamAttribute &attribute : reader.attributes())
        element.attributes.insert(attribute.qualifiedName().toString(),
                                  attribute.value().toString());
    while (!reader.atEnd()) {
        reader.readNext();
        if (reader.isEndElement())
            break;
        if (reader.isStartElement())
            element.children.push_back(readElement(reader));
        else if (reader.isCharacters())
            element.text += reader.text();
    }
    if (!element.children.empty())
        element.text.clear();
    return element;
}

/// Looks through one document.
class Model
{
public:
    explicit Model(const Element &document)
        : m_document(document), m_kind(document.name == u"CreditNote" ? u"Credit"_s : u"Invoice"_s)
    {
    }

    QStringList faults()
    {
        lookForEmpty(m_document);
        const qint64 net = lines();
        const qint64 vat = vatOfRates();
        const Element &sums = *m_document.all(u"cac:LegalMonetaryTotal"_s).at(0);
        expect(amount(sums, u"cbc:LineExtensionAmount"_s), net, u"sum of the lines"_s);
        expect(amount(sums, u"cbc:TaxExclusiveAmount"_s), net, u"sum without VAT"_s);
        expect(amount(sums, u"cbc:TaxInclusiveAmount"_s), net + vat, u"sum with VAT"_s);
        const bool isRounded = !sums.all(u"cbc:PayableRoundingAmount"_s).empty();
        const qint64 rounding = isRounded ? amount(sums, u"cbc:PayableRoundingAmount"_s) : 0;
        if (isRounded && rounding == 0)
            m_faults += u"a rounding of nought"_s;
        // To whole kroner, and of each line twice.
        const qint64 most = kOne + 2 * kOere * qint64(m_count);
        if (rounding > most || rounding < -most)
            m_faults += u"a rounding of %1"_s.arg(rounding);
        const qint64 payable = amount(sums, u"cbc:PayableAmount"_s);
        expect(payable, net + vat + rounding, u"what is to be paid"_s);
        if (payable <= 0)
            m_faults += u"nothing to be paid"_s;
        return m_faults;
    }

private:
    using Rate = std::pair<QString, qint64>; // category and percent

    void lookForEmpty(const Element &element)
    {
        if (element.children.empty() && element.text.trimmed().isEmpty())
            m_faults += element.name + u" is empty"_s;
        for (const Element &child : element.children)
            lookForEmpty(child);
    }

    /// In kroner, with two decimals.
    qint64 amount(const Element &from, const QString &path)
    {
        static const QRegularExpression form(u"^-?\\d+\\.\\d\\d$"_s);
        const std::vector<const Element *> found = from.all(path);
        if (found.size() != 1 || !form.match(found[0]->text).hasMatch() ||
            found[0]->attributes[u"currencyID"_s] != u"NOK") {
            m_faults += path + u" is no amount"_s;
            return 0;
        }
        return numberOf(found[0]->text);
    }

    Rate rate(const Element &category)
    {
        const Rate rate{category.at(u"cbc:ID"_s), numberOf(category.at(u"cbc:Percent"_s))};
        if ((rate.first == u"Z") != (rate.second == 0) || rate.second < 0 ||
            (rate.first != u"Z" && rate.first != u"S") ||
            category.at(u"cac:TaxScheme/cbc:ID"_s) != u"VAT")
            m_faults += u"category %1 at %2"_s.arg(rate.first).arg(rate.second);
        return rate;
    }

    /// Their sum; notes what each rate has.
    qint64 lines()
    {
        const QString quantityName =
            m_kind == u"Credit" ? u"cbc:CreditedQuantity"_s : u"cbc:InvoicedQuantity"_s;
        qint64 net = 0;
        for (const Element *line : m_document.all(
                 u"cac:%1Line"_s.arg(m_kind == u"Credit" ? u"CreditNote"_s : u"Invoice"_s))) {
            expect(line->at(u"cbc:ID"_s).toLongLong(), ++m_count, u"number of the line"_s);
            const qint64 quantity = numberOf(line->at(quantityName));
            const qint64 price = amount(*line, u"cac:Price/cbc:PriceAmount"_s);
            const qint64 lineNet = amount(*line, u"cbc:LineExtensionAmount"_s);
            if (price < 0)
                m_faults += u"a price of %1"_s.arg(price);
            const Wide off = Wide{quantity} * price - Wide{lineNet} * kOne;
            if (off > Wide{2 * kOere} * kOne || off < -Wide{2 * kOere} * kOne)
                m_faults +=
                    u"line %1: %2 times %3 is not %4"_s.arg(m_count).arg(quantity).arg(price).arg(
                        lineNet);
            m_bases[rate(*line->all(u"cac:Item/cac:ClassifiedTaxCategory"_s).at(0))] += lineNet;
            net += lineNet;
        }
        if (m_count == 0)
            m_faults += u"no lines"_s;
        return net;
    }

    /// The sum of VAT, of one subtotal for each rate that there is.
    qint64 vatOfRates()
    {
        qint64 vat = 0;
        std::map<Rate, qint64> told;
        for (const Element *subtotal : m_document.all(u"cac:TaxTotal/cac:TaxSubtotal"_s)) {
            const Rate its = rate(*subtotal->all(u"cac:TaxCategory"_s).at(0));
            if (told.contains(its))
                m_faults += u"a second subtotal at %1"_s.arg(its.second);
            told[its] = amount(*subtotal, u"cbc:TaxableAmount"_s);
            const qint64 rated = inOere(Wide{told[its]} * its.second);
            expect(amount(*subtotal, u"cbc:TaxAmount"_s), rated, u"VAT of a rate"_s);
            vat += rated;
        }
        if (told != m_bases)
            m_faults += u"the subtotals are not those of the lines"_s;
        expect(amount(m_document, u"cac:TaxTotal/cbc:TaxAmount"_s), vat, u"VAT"_s);
        return vat;
    }

    /// An amount times a percentage, both in ten-thousandths: whole øre, a half away from nought.
    static qint64 inOere(Wide product)
    {
        constexpr qint64 kWhole = 100 * kOne; // of a krone's ten-thousandth
        const bool isNegative = product < 0;
        const Wide size = isNegative ? -product : product;
        const auto oere = qint64((size + Wide{kWhole} * kOere / 2) / (Wide{kWhole} * kOere));
        return (isNegative ? -oere : oere) * kOere;
    }

    void expect(qint64 is, qint64 shouldBe, const QString &what)
    {
        if (is != shouldBe)
            m_faults += u"%1 is %2 and not %3"_s.arg(what).arg(is).arg(shouldBe);
    }

    const Element &m_document;
    const QString m_kind;
    QStringList m_faults;
    qint64 m_count = 0;
    std::map<Rate, qint64> m_bases;
};

} // namespace

std::vector<const Element *> Element::all(const QString &path) const
{
    std::vector<const Element *> found{this};
    for (const QString &step : path.split(u'/')) {
        std::vector<const Element *> deeper;
        for (const Element *element : found) {
            for (const Element &child : element->children) {
                if (child.name == step)
                    deeper.push_back(&child);
            }
        }
        found = deeper;
    }
    return found;
}

QString Element::at(const QString &path) const
{
    const std::vector<const Element *> found = all(path);
    EXPECT_LE(found.size(), 1U) << path.toStdString();
    return found.empty() ? QString() : found.front()->text;
}

Element readDocument(const QByteArray &bytes)
{
    QXmlStreamReader reader(bytes);
    EXPECT_TRUE(reader.readNextStartElement());
    Element root = readElement(reader);
    reader.readNext();
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return root;
}

qint64 numberOf(const QString &text)
{
    static const QRegularExpression form(u"^(-?)(\\d+)(?:\\.(\\d{1,4}))?$"_s);
    const QRegularExpressionMatch match = form.match(text);
    EXPECT_TRUE(match.hasMatch()) << text.toStdString();
    const qint64 size = match.captured(2).toLongLong() * kOne +
                        match.captured(3).leftJustified(4, u'0').toLongLong();
    return match.captured(1).isEmpty() ? size : -size;
}

QStringList faultsOf(const Element &document)
{
    return Model(document).faults();
}
