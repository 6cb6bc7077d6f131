#include "host/program/HostTest.h"
#include "output/ehf3/Ehf3Leser.h"

#include <QDate>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// An order of the demo company as EHF 3.0 and as it is printed: what the one tells, the other
/// tells.
class Ehf3PaperTest : public HostTest
{
protected:
    void SetUp() override { makeDemo(); }

    void compare(int number)
    {
        const QString order = QString::number(number);
        for (const QStringList &task : {QStringList{u"--ehf3"_s, order, u"--ut"_s, u"ut.xml"_s},
                                        QStringList{u"--pdf"_s, order, u"--ut"_s, u"ut.pdf"_s}}) {
            ASSERT_EQ(host(QStringList{u"--dsn"_s, u"demo.db"_s, u"--erstatt"_s} + task).status, 0);
        }
        m_paper =
            QString::fromUtf8(start(u"pdftotext"_s, {u"-layout"_s, path(u"ut.pdf"_s), u"-"_s}).out)
                .replace(QChar(QChar::Nbsp), u' ')
                .simplified();
        m_document = readDocument(content(u"ut.xml"_s));
        m_isCredit = m_document.name == u"CreditNote";
        compareHead();
        compareSeller();
        compareBuyerAndDelivery();
        compareSums();
        compareLines();
    }

private:
    /// `text` stands on the paper.
    void onPaper(const QString &text)
    {
        EXPECT_TRUE(m_paper.contains(text)) << text.toStdString() << "\nis not in\n"
                                            << m_paper.toStdString();
    }
    void onPaper(const QRegularExpression &form)
    {
        EXPECT_TRUE(form.match(m_paper).hasMatch())
            << form.pattern().toStdString() << "\nis not in\n"
            << m_paper.toStdString();
    }
    /// What is not in the document does not stand behind its label on the paper either.
    void labelled(const QString &label, const QString &value)
    {
        if (value.isEmpty())
            EXPECT_FALSE(m_paper.contains(label)) << label.toStdString();
        else
            onPaper(label + u' ' + value);
    }
    [[nodiscard]] QString at(const QString &place) const { return m_document.at(place); }

    static QString day(const QString &iso)
    {
        return QDate::fromString(iso, Qt::ISODate).toString(u"dd.MM.yyyy"_s);
    }
    /// On paper a credit note's amounts are negative, and thousands stand apart.
    [[nodiscard]] QString turned(QString number) const
    {
        number.replace(u'.', u',');
        const bool isNought = !number.contains(QRegularExpression(u"[1-9]"_s));
        if (m_isCredit && !isNought)
            number = number.startsWith(u'-') ? number.sliced(1) : u'-' + number;
        const qsizetype comma = number.indexOf(u',') < 0 ? number.size() : number.indexOf(u',');
        const qsizetype first = number.startsWith(u'-') ? 1 : 0;
        for (qsizetype at = comma - 3; at > first; at -= 3)
            number.insert(at, u' ');
        return number;
    }
    /// "Postboks 1, Gata 2, 2815 Gjøvik", of the address at that place, parted by `mark`.
    [[nodiscard]] QString address(const QString &place, const QString &mark) const
    {
        QStringList parts{at(place + u"/cbc:StreetName"_s),
                          at(place + u"/cbc:AdditionalStreetName"_s),
                          at(place + u"/cbc:PostalZone"_s) + u' ' + at(place + u"/cbc:CityName"_s)};
        parts.removeAll(QString());
        return parts.join(mark);
    }

    void compareHead()
    {
        onPaper(m_isCredit ? u"KREDITNOTA"_s : u"FAKTURA"_s);
        onPaper((m_isCredit ? u"Kreditnotanr. "_s : u"Fakturanr. "_s) + at(u"cbc:ID"_s));
        onPaper((m_isCredit ? u"Dato "_s : u"Fakturadato "_s) + day(at(u"cbc:IssueDate"_s)));
        labelled(u"Deres ref."_s, at(u"cbc:BuyerReference"_s));
        if (m_isCredit)
            return; // on paper it asks for no payment
        onPaper(u"Forfallsdato "_s + day(at(u"cbc:DueDate"_s)));
        onPaper(u"Betalingsvilkår "_s + at(u"cac:PaymentTerms/cbc:Note"_s));
        onPaper(u"KID "_s + at(u"cac:PaymentMeans/cbc:PaymentID"_s));
        onPaper(u"Til konto "_s + at(u"cac:PaymentMeans/cac:PayeeFinancialAccount/cbc:ID"_s)
                                      .insert(6, u'.')
                                      .insert(4, u'.'));
    }

    void compareSeller()
    {
        const QString party = u"cac:AccountingSupplierParty/cac:Party/"_s;
        const QString number = at(party + u"cbc:EndpointID"_s);
        onPaper(at(party + u"cac:PartyLegalEntity/cbc:RegistrationName"_s) + u", "_s +
                address(party + u"cac:PostalAddress"_s, u", "_s));
        onPaper(u"Telefon %1 Org.nr. NO %2 %3 %4 MVA Foretaksregisteret"_s.arg(
            at(party + u"cac:Contact/cbc:Telephone"_s), number.left(3), number.sliced(3, 3),
            number.right(3)));
        const auto schemes = m_document.all(party + u"cac:PartyTaxScheme"_s);
        ASSERT_EQ(schemes.size(), 2U);
        EXPECT_EQ(schemes[0]->at(u"cbc:CompanyID"_s), u"NO%1MVA"_s.arg(number));
        EXPECT_EQ(schemes[1]->at(u"cbc:CompanyID"_s), u"Foretaksregisteret"_s);
        labelled(u"Vår ref."_s, at(party + u"cac:Contact/cbc:Name"_s));
    }

    void compareBuyerAndDelivery()
    {
        const QString party = u"cac:AccountingCustomerParty/cac:Party/"_s;
        onPaper(u"Kundenr. "_s + at(party + u"cac:PartyIdentification/cbc:ID"_s));
        onPaper(at(party + u"cac:PartyLegalEntity/cbc:RegistrationName"_s));
        for (const QString &line : address(party + u"cac:PostalAddress"_s, u"\n"_s).split(u'\n'))
            onPaper(line);
        onPaper(u"Leveringsdato %1 Leveringssted %2"_s.arg(
            day(at(u"cac:Delivery/cbc:ActualDeliveryDate"_s)),
            address(u"cac:Delivery/cac:DeliveryLocation/cac:Address"_s, u", "_s)));
    }

    void compareSums()
    {
        const QString sums = u"cac:LegalMonetaryTotal/"_s;
        onPaper(u"Sum uten merverdiavgift "_s + turned(at(sums + u"cbc:TaxExclusiveAmount"_s)));
        onPaper(u"Merverdiavgift "_s + turned(at(u"cac:TaxTotal/cbc:TaxAmount"_s)));
        const QString rounding = at(sums + u"cbc:PayableRoundingAmount"_s);
        labelled(u"Øreavrunding"_s, rounding.isEmpty() ? QString() : turned(rounding));
        onPaper((m_isCredit ? u"Kreditert NOK "_s : u"Å betale NOK "_s) +
                turned(at(sums + u"cbc:PayableAmount"_s)));
        for (const Element *rate : m_document.all(u"cac:TaxTotal/cac:TaxSubtotal"_s)) {
            const QString percent = rate->at(u"cac:TaxCategory/cbc:Percent"_s);
            // Lines of text alone have no rate on paper, where there is no need of one.
            if (percent == u"0" && rate->at(u"cbc:TaxableAmount"_s) == u"0.00")
                continue;
            onPaper((percent == u"0" ? u"Avgiftsfritt"_s : percent + u" %"_s) + u' ' +
                    turned(rate->at(u"cbc:TaxableAmount"_s)) + u' ' +
                    turned(rate->at(u"cbc:TaxAmount"_s)));
        }
    }

    void compareLines()
    {
        for (const Element *line :
             m_document.all(m_isCredit ? u"cac:CreditNoteLine"_s : u"cac:InvoiceLine"_s)) {
            const QString quantity = turned(
                line->at(m_isCredit ? u"cbc:CreditedQuantity"_s : u"cbc:InvoicedQuantity"_s));
            const QString name = line->at(u"cac:Item/cbc:Name"_s);
            if (quantity == u"0") {
                onPaper(name);
                continue;
            }
            const QString front = line->at(u"cac:Item/cac:SellersItemIdentification/cbc:ID"_s) +
                                  u' ' + name + u' ' + quantity;
            QString price = line->at(u"cac:Price/cbc:PriceAmount"_s).replace(u'.', u',');
            if (price.size() > 6)
                price.insert(price.size() - 6, u' ');
            const QString back = price + u' ' +
                                 line->at(u"cac:Item/cac:ClassifiedTaxCategory/cbc:Percent"_s) +
                                 u" % "_s + turned(line->at(u"cbc:LineExtensionAmount"_s));
            onPaper(QRegularExpression(QRegularExpression::escape(front) + u" (\\S+ )?"_s +
                                       QRegularExpression::escape(back)));
        }
    }

    QString m_paper;
    Element m_document;
    bool m_isCredit = false;
};

} // namespace

TEST_F(Ehf3PaperTest, AnInvoiceOfTwoRates)
{
    compare(1052);
}

TEST_F(Ehf3PaperTest, AnInvoiceRoundedToWholeKroner)
{
    compare(1037);
}

TEST_F(Ehf3PaperTest, ACreditNote)
{
    compare(1045);
}
