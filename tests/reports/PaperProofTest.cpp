#include "reports/PaperInvoice.h"
#include "reports/RandomOrder.h"
#include "support/Rounds.h"

#include <QBuffer>
#include <QImage>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Random orders, printed and read back. FAKTURA_RUNDER tells how many, FAKTURA_FRO from which
/// start value on: each order has the next one, so that one that fails can be had alone.
class PaperProofTest : public InvoiceTest
{
protected:
    PaperProofTest()
    {
        QImage logo(237, 76, QImage::Format_RGB32);
        logo.fill(Qt::darkGreen);
        QByteArray bytes;
        QBuffer buffer(&bytes);
        logo.save(&buffer, "PNG");
        storeLogo(bytes);
        Dice dice(1);
        for (const QString &product : productsWithUnits())
            run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (1,'%1','%2')"_s.arg(
                product, dice.text(10)));
    }

    /// The seller's name and address in so many letters W; none for the demo company's.
    void dressSeller(int letters)
    {
        if (letters == m_sellerLetters)
            return;
        m_sellerLetters = letters;
        run(u"UPDATE Klient SET Navn='%1',Adr1='%1',Adr2='%1' WHERE KlientNr=1"_s.arg(
            letters > 0 ? QString(letters, u'W') : u"Gråbein Bilfrakt AS"_s));
    }

    /// Of the saved order: net, VAT and what is to be paid, in øre.
    QList<qint64> savedSums(int order)
    {
        QList<qint64> sums;
        for (QString sum :
             rows(u"SELECT SumNetto,MvaKr,SumBrutto FROM Ordre WHERE OrdreNr=%1"_s.arg(order))
                 .value(0)
                 .split(u'|'))
            sums += qRound64(sum.replace(u',', u'.').toDouble() * 100);
        return sums;
    }

    /// As the print dialog does it.
    report::Document printed(const RandomOrder &drawn, int order)
    {
        const bool credit = savedSums(order).last() < 0;
        return print(drawn.form, order,
                     credit ? (drawn.original ? faktype::kKreditnota : faktype::kKreditnotakopi)
                            : (drawn.original ? faktype::kFaktura : faktype::kFakturakopi),
                     drawn.note);
    }

    /// All that is wrong with a printed order.
    QStringList faultsIn(const report::Document &document, const RandomOrder &drawn, int order)
    {
        const PaperInvoice invoice = readInvoice(document);
        QStringList faults = faultsOf(invoice) + layoutFaults(document);
        addWrongTexts(document, invoice, drawn, faults);
        addWrongFacts(invoice, drawn, order, faults);
        return faults;
    }

private:
    static QString withoutBlanks(QString text) { return text.remove(u' '); }

    /// Texts that were entered and are not there as they were entered. References are not among
    /// them: one of nothing but wide letters is shortened.
    static void addWrongTexts(const report::Document &document, const PaperInvoice &invoice,
                              const RandomOrder &drawn, QStringList &faults)
    {
        QString all;
        for (const report::Page &page : document.pages)
            all += withoutBlanks(textsOf(page).join(QString()));
        const invoice::Head &head = drawn.head;
        for (const QString &entered :
             QStringList{head.name, head.address1, head.address2, head.place, head.delivery1,
                         head.delivery2, head.deliveryPlace, drawn.note}) {
            if (!all.contains(withoutBlanks(entered)))
                faults += u"«%1» is not whole"_s.arg(entered);
        }

        QString names;
        QString numbers;
        for (const invoice::Line &line : drawn.lines) {
            names += withoutBlanks(line.name);
            numbers += withoutBlanks(line.number);
        }
        QString shownNames;
        QString shownNumbers;
        for (const PaperInvoice::Page &page : invoice.pages) {
            shownNames += page.names;
            shownNumbers += page.numbers;
        }
        if (shownNames != names || shownNumbers != numbers)
            faults += u"entered «%1» «%2», shown «%3» «%4»"_s.arg(names, numbers, shownNames,
                                                                  shownNumbers);
    }

    void addWrongFacts(const PaperInvoice &invoice, const RandomOrder &drawn, int order,
                       QStringList &faults)
    {
        const PaperInvoice::Page &first = invoice.pages.front();
        if (first.number != QString::number(order) ||
            first.date != drawn.head.invoiced.toString(u"dd.MM.yyyy"_s))
            faults += u"headed %1 of %2"_s.arg(first.number, first.date);
        const QList<qint64> sums = savedSums(order);
        if (invoice.net != sums[0] || invoice.vat != sums[1] || invoice.total != sums[2])
            faults += u"saved are %1, %2 and %3"_s.arg(krOf(sums[0]), krOf(sums[1]), krOf(sums[2]));
        const bool credit = sums[2] < 0;
        if (invoice.totalLabel != (credit ? u"Kreditert NOK"_s : u"Å betale NOK"_s) ||
            first.title != (credit ? u"KREDITNOTA"_s : u"FAKTURA"_s))
            faults += u"%1 with «%2»"_s.arg(first.title, invoice.totalLabel);
        if (drawn.rounding != u"0"_s && sums[2] % 100 != 0)
            faults += u"not rounded: %1"_s.arg(krOf(sums[2]));
    }

    int m_sellerLetters = 0;
};

} // namespace

TEST_F(PaperProofTest, EveryOrderAddsUpAndNothingIsOutOfPlace)
{
    const int count = rounds(60);
    const quint32 start = startValue(20140309);
    size_t saved = 0;
    size_t lines = 0;
    size_t pages = 0;
    for (int i = 0; i < count; ++i) {
        const quint32 own = start + static_cast<quint32>(i);
        const RandomOrder drawn = drawOrder(own);
        dressSeller(drawn.longSeller ? 40 : 0);
        const int order = enterOrder(drawn.lines, drawn.rounding, drawn.head);
        if (std::abs(savedSums(order).last()) < 100)
            continue; // the order screen saves none of less than a krone
        const report::Document document = printed(drawn, order);
        EXPECT_EQ(faultsIn(document, drawn, order), QStringList())
            << "start value " << own << ", " << drawn.form.toStdString() << ", "
            << drawn.lines.size() << " lines, rounding " << drawn.rounding.toStdString();
        ++saved;
        lines += drawn.lines.size();
        pages += document.pages.size();
    }
    EXPECT_GE(saved, static_cast<size_t>(count / 2));
    std::puts(qUtf8Printable(
        u"Proof: Faktura: %1 with %2 rows on %3 pages"_s.arg(saved).arg(lines).arg(pages)));
}

// What is above the lines and below them takes so much room that the slip has none on their page.
TEST_F(PaperProofTest, TheWidestOrderIsWholeHoweverManyItsRates)
{
    dressSeller(40);
    const QString wide(40, u'W');
    RandomOrder drawn;
    drawn.head = {.customer = 999'999'999,
                  .name = wide,
                  .address1 = wide,
                  .address2 = wide,
                  .postcode = u"9999999999"_s,
                  .place = wide,
                  .delivery1 = wide,
                  .delivery2 = wide,
                  .deliveryPostcode = u"9999999999"_s,
                  .deliveryPlace = wide};
    drawn.rounding = u"1"_s;
    drawn.note = QString(255, u'W');
    for (const char *form : {"Fak-mgiro-ulogo.rpt", "Fak-ugiro-mlogo.rpt"}) {
        drawn.form = QString::fromLatin1(form);
        drawn.lines.clear();
        for (int rate = 0; rate < 20; ++rate) {
            drawn.lines.push_back({QString(20, u'W'), QString(50, u'W'), u"1.1"_s, u"101.11"_s,
                                   QString::number(rate)});
            const int order = enterOrder(drawn.lines, drawn.rounding, drawn.head);
            EXPECT_EQ(faultsIn(printed(drawn, order), drawn, order), QStringList())
                << form << ", " << rate + 1 << " rates";
        }
    }
}
