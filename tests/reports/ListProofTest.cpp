#include "reports/ListTest.h"
#include "reports/PaperList.h"
#include "reports/RandomOrder.h"
#include "support/Rounds.h"

#include "host/demo/Insert.h"
#include "platform/ado/Connection.h"

#include <algorithm>
#include <cstdio>

using namespace Qt::StringLiterals;

namespace {

/// Lists and journals of no row, of one, of as many as fill a page and more, and of many: all rows
/// on paper once, and all sums as in the database. FAKTURA_RUNDER tells how many are many in a
/// journal, FAKTURA_FRO from which start value all are drawn.
class ListProofTest : public ListTest
{
protected:
    static QList<int> sizes(int many) { return {1, 54, 55, 56, many}; }
    static constexpr int kMany = 5000;

    /// So many orders of 2012, which has none by itself.
    void fill(int count)
    {
        run(u"DELETE FROM Ordre WHERE Year(OrdreDato)=2012"_s);
        ado::Connection connection;
        connection.open(connectionString());
        connection.beginTrans();
        for (int i = 1; i <= count; ++i)
            connection.execute(order(10'000 + i, count));
        connection.commitTrans();
    }

    /// The list, read and searched for faults.
    PaperList read(const QString &file, const QString &key, const QString &selection)
    {
        const report::Document document = list(file, selection);
        PaperList paper(document, key);
        SCOPED_TRACE(file.toStdString() + ", start value " + std::to_string(m_start));
        EXPECT_EQ(paper.faults(), QStringList());
        EXPECT_EQ(layoutFaults(document), QStringList());
        std::puts(qUtf8Printable(u"Proof: %1 with %2 rows on %3 pages"_s.arg(document.title)
                                     .arg(paper.column(key).size())
                                     .arg(document.pages.size())));
        return paper;
    }

    /// A sum on paper against what a query adds up; `column` is a heading.
    void expectSum(const PaperList &paper, const QString &text, const QString &column,
                   const QString &query)
    {
        const PaperList::Line *line = paper.sum(text);
        ASSERT_TRUE(line) << text.toStdString();
        EXPECT_EQ(line->cells.value(column), amount(query)) << text.toStdString();
    }

    /// New invoices and some credit notes, every one with one to three rates, posted in one run.
    void postNew(int count)
    {
        QList<int> orders;
        for (int i = 0; i < count; ++i) {
            std::vector<Line> lines;
            const QString quantity = m_dice.hits(5) ? u"-1.5"_s : u"1.5"_s;
            for (int more = m_dice.number(1, 3); more > 0; --more)
                lines.push_back({u"T100"_s, m_dice.text(50), quantity,
                                 QString::number(m_dice.number(100, 9'999'999) / 100.0, 'f', 2),
                                 m_dice.oneOf(QStringList{u"25"_s, u"15"_s, u"10"_s, u"0"_s})});
            invoice::Head head;
            head.name = m_dice.text(40);
            head.customer = m_dice.number(1, 999'999'999);
            orders += enterOrder(lines, QString::number(m_dice.number(0, 2)), head);
        }
        run(u"UPDATE Ordre SET OrdreStatus='Fakturert' WHERE OrdreNr>5000 AND OrdreStatus='Ordre'"_s);
        post(orders);
    }

    /// As the tables of rates name it.
    static QString nameOf(const QString &rate)
    {
        return rate == u"0"_s ? u"Avgiftsfritt"_s : rate + u" %"_s;
    }

    static QString invoices(int count)
    {
        return QString::number(count) + (count == 1 ? u" faktura"_s : u" fakturaer"_s);
    }

    void expectInvoices(int count);
    void expectSales();

    const QString k2012 = u" and {Ordre.OrdreDato} in Date( 2012, 1, 1) to Date( 2012, 12, 31)"_s;

private:
    QString order(int number, int count)
    {
        const qint64 net = m_dice.number(-500'000, 19'999'999);
        const qint64 vat = net * m_dice.number(0, 25) / 100;
        const qint64 off = m_dice.number(-50, 50);
        const QDate day = QDate(2012, 1, 1).addDays(m_dice.number(0, 300));
        return Insert(u"Ordre")
            .number(u"KlientNr", 1)
            .number(u"OrdreNr", number)
            .text(u"OrdreStatus",
                  m_dice.oneOf(QStringList{u"Ordre"_s, u"Fakturert"_s, u"Bokført"_s, u"Betalt"_s}))
            .text(u"DeresRef", m_dice.hits(50) ? m_dice.text(20) : QString())
            .text(u"KID", u"1234567890123456789012345"_s.first(m_dice.number(2, 25)))
            .number(u"KundeNr", m_dice.hits(20) ? 1 : m_dice.number(1, count) * 31'007)
            .text(u"KundeNavn", m_dice.text(40))
            .text(u"FakAdresse1", m_dice.text(40))
            .text(u"FakPostNr", u"2406"_s)
            .text(u"FakPoststed", m_dice.text(40))
            .date(u"OrdreDato", day)
            .date(u"FakDato", day)
            .date(u"ForfallDato", day.addDays(m_dice.number(0, 60)))
            .amount(u"MvaKr", ofOre(vat))
            .amount(u"SumNetto", ofOre(net))
            .amount(u"SumBrutto", ofOre(net + vat + off))
            .amount(u"Avrunding", ofOre(off))
            .statement();
    }
    static Currency ofOre(qint64 ore) { return Currency::fromTenThousandths(ore * 100); }

    const quint32 m_start = startValue(20140309);
    Dice m_dice{m_start};
};

void ListProofTest::expectInvoices(int count)
{
    const PaperList paper = read(u"Fakturajournal.rpt"_s, u"Faktura"_s, kClient);
    EXPECT_EQ(paper.column(u"Faktura"_s), rows(u"SELECT FakNr FROM tmpTbl ORDER BY ID"_s));
    expectSum(paper, u"Sum "_s + invoices(count), u"Beløp"_s, u"SELECT Sum(Belop) FROM tmpTbl"_s);
    const QString ofRun = u" FROM (tmpTbl INNER JOIN Ordre ON tmpTbl.FakNr=Ordre.OrdreNr AND "
                          "tmpTbl.KlientNr=Ordre.KlientNr) INNER JOIN OrdreLinjer ON "
                          "Ordre.ID=OrdreLinjer.OrdreID"_s;
    for (const QString &rate :
         rows(u"SELECT MvaPst"_s + ofRun + u" GROUP BY OrdreLinjer.MvaPst"_s)) {
        for (const auto &[heading, column] :
             {std::pair(u"Netto"_s, u"SumNetto"_s), {u"Med mva"_s, u"SumBrutto"_s}})
            expectSum(paper, nameOf(rate), heading,
                      u"SELECT Sum(OrdreLinjer.%1)"_s.arg(column) + ofRun +
                          u" WHERE OrdreLinjer.MvaPst="_s + rate);
    }
}

void ListProofTest::expectSales()
{
    const PaperList paper = read(u"Salgsjournal.rpt"_s, u"Faktura"_s, kClient);
    const QString vouchers = rows(u"SELECT Min(BilagNr),Max(BilagNr) FROM tmpTbl"_s).value(0);
    const QString ofRun =
        u" FROM BilagLinjer INNER JOIN Bilag ON BilagLinjer.BilagID=Bilag.ID WHERE "
        "Year(BilagDato)=2014 AND BilagNr>=%1 AND BilagNr<=%2"_s.arg(vouchers.section(u'|', 0, 0),
                                                                     vouchers.section(u'|', 1));
    const QString sales = ofRun + u" AND Konto<>1500"_s;
    EXPECT_EQ(paper.column(u"Faktura"_s).size(),
              rows(u"SELECT COUNT (*)"_s + sales).value(0).toInt());
    expectSum(paper, u"Sum i alt"_s, u"Beløp"_s, u"SELECT Sum(Kredit-Debet)"_s + sales);
    for (const QString &account : rows(u"SELECT Konto"_s + sales + u" GROUP BY Konto"_s))
        expectSum(paper, u"Sum konto "_s + account, u"Beløp"_s,
                  u"SELECT Sum(Kredit-Debet)"_s + sales + u" AND Konto="_s + account);
    for (const QString &code : rows(u"SELECT MVAkode"_s + sales + u" GROUP BY MVAkode"_s)) {
        const int first = (code.toInt() - 1) / 2 * 2 + 1; // of an invoice; next, a credit note
        const QStringList rates{u"25"_s, u"10"_s, u"15"_s};
        if (code != u"0"_s)
            expectSum(paper, nameOf(rates[first / 2]), u"Med mva"_s,
                      u"SELECT Sum(Kredit-Debet)"_s + sales +
                          u" AND MVAkode>=%1 AND MVAkode<=%2"_s.arg(first).arg(first + 1));
    }
    for (const QString &column : {u"Debet"_s, u"Kredit"_s})
        expectSum(paper, u"Sum bilag"_s, column, u"SELECT Sum(%1)"_s.arg(column) + ofRun);
}

} // namespace

TEST_F(ListProofTest, OrdersByStatus)
{
    const QString of2012 = u" FROM Ordre WHERE Year(OrdreDato)=2012"_s;
    fill(0);
    EXPECT_EQ(raised([&] { list(u"Ordreoversikt.rpt"_s, kClient + k2012); }), 20518);
    for (const int size : sizes(kMany)) {
        SCOPED_TRACE(size);
        fill(size);
        const PaperList paper = read(u"Ordreoversikt.rpt"_s, u"Ordre"_s, kClient + k2012);
        EXPECT_EQ(paper.column(u"Ordre"_s),
                  rows(u"SELECT OrdreNr"_s + of2012 + u" ORDER BY OrdreStatus,OrdreNr"_s));
        const auto expectSums = [&](const QString &text, const QString &where) {
            for (const auto &[heading, column] : {std::pair(u"Netto"_s, u"SumNetto"_s),
                                                  {u"Mva"_s, u"MvaKr"_s},
                                                  {u"Avrund."_s, u"Avrunding"_s},
                                                  {u"Beløp"_s, u"SumBrutto"_s}})
                expectSum(paper, text, heading, u"SELECT Sum(%1)"_s.arg(column) + of2012 + where);
        };
        const QStringList groups =
            rows(u"SELECT OrdreStatus,COUNT (*) AS Antall"_s + of2012 + u" GROUP BY OrdreStatus"_s);
        for (const QString &group : groups) {
            const QString status = group.section(u'|', 0, 0);
            expectSums(u"Sum %1, %2 ordre"_s.arg(status, group.section(u'|', 1)),
                       u" AND OrdreStatus='%1'"_s.arg(status));
        }
        if (groups.size() > 1)
            expectSums(u"Sum i alt, %1 ordre"_s.arg(size), {});
    }
}

TEST_F(ListProofTest, RemindersByCustomer)
{
    const QString of2012 = u" FROM Ordre WHERE Year(OrdreDato)=2012"_s;
    fill(0);
    EXPECT_EQ(raised([&] { list(u"Purreliste.rpt"_s, kClient + k2012); }), 20518);
    for (const int size : sizes(kMany)) {
        SCOPED_TRACE(size);
        fill(size);
        const PaperList paper = read(u"Purreliste.rpt"_s, u"Faktura"_s, kClient + k2012);
        EXPECT_EQ(paper.column(u"Faktura"_s),
                  rows(u"SELECT OrdreNr"_s + of2012 + u" ORDER BY KundeNr,ForfallDato,OrdreNr"_s));
        expectSum(paper, u"Sum forfalt i alt, "_s + invoices(size), u"Beløp"_s,
                  u"SELECT Sum(SumBrutto)"_s + of2012);
        // Each customer's sum is that of its rows; how many have one tells that none is missing.
        const auto sums = std::count_if(paper.lines().begin(), paper.lines().end(), [](auto &line) {
            return line.kind == PaperList::Kind::Sum;
        });
        EXPECT_EQ(
            sums,
            rows(u"SELECT KundeNr"_s + of2012 + u" GROUP BY KundeNr HAVING COUNT (*)>1"_s).size());
    }
}

TEST_F(ListProofTest, JournalsOfARun)
{
    post({});
    EXPECT_EQ(raised([&] { list(u"Fakturajournal.rpt"_s, kClient); }), 20518);
    EXPECT_EQ(raised([&] { list(u"Salgsjournal.rpt"_s, kClient); }), 20518);
    for (const int size : sizes(rounds(2))) {
        SCOPED_TRACE(size);
        postNew(size);
        expectInvoices(size);
        expectSales();
    }
}
