#include "output/ehf/EhfFil.h"

#include "data/clsAdoUtils.h"
#include "output/ehf/EhfTest.h"
#include "runtime/MachineLocale.h"
#include "state/SharedState.h"

#include <QBuffer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

/// Whole documents, byte for byte.
class EhfFilTest : public EhfTest
{
protected:
    void enterInvoice()
    {
        enterOrder(
            2001, u"1236951.1783"_s, u"560.83"_s, u"1237512.01"_s,
            {{u"10"_s, u"'T1'"_s, u"'Kjøring'"_s, u"2"_s, u"650.00"_s, u"25"_s, u"1300.00"_s},
             {u"20"_s, u"'T2'"_s, u"' Venting på kaiområdet '"_s, u"2.5"_s, u"400.00"_s, u"25"_s,
              u"1000.00"_s},
             {u"30"_s, u"' S1'"_s, u"'Pall'"_s, u"0.5"_s, u"99.90"_s, u"15"_s, u"49.95"_s},
             {u"40"_s, u"'S2'"_s, u"'Bompenger'"_s, u"1"_s, u"33.3333"_s, u"10"_s, u"33.3333"_s},
             {u"45"_s, u"''"_s, u"'Fritekst uten produkt'"_s, u"1"_s, u"9.00"_s, u"25"_s,
              u"9.00"_s},
             {u"46"_s, u"'X1'"_s, u"'En annen klients produkt'"_s, u"1"_s, u"9.00"_s, u"25"_s,
              u"9.00"_s},
             {u"50"_s, u"'K1'"_s, u"'Grus'"_s, u"123456789"_s, u"0.01"_s, u"0"_s, u"1234567.89"_s},
             {u"60"_s, u"'P1'"_s, u"'Rabatt'"_s, u"-1"_s, u"100.00"_s, u"25"_s, u"-100.00"_s},
             {u"5"_s, u"'T1'"_s, u"'Kjøring i helg'"_s, u"0.1"_s, u"1.005"_s, u"12.5"_s,
              u"1.005"_s}});
        // The product's number is compared as it stands, and written trimmed.
        run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (5,' S1','Stk')"_s);
    }
};

TEST_F(EhfFilTest, Invoice)
{
    enterInvoice();
    const Outcome written = write(0, u"2001"_s);
    EXPECT_EQ(written.error, 0);
    EXPECT_EQ(written.bytes, golden("faktura.xml"));
}

TEST_F(EhfFilTest, TheMachinesDecimalMarkDoesNotReachTheFile)
{
    enterInvoice();
    const ScopedLocale pointMachine(MachineLocale::fromName(u"en_US.UTF-8"_s));
    EXPECT_EQ(write(0, u"2001"_s).bytes, golden("faktura.xml"));
}

TEST_F(EhfFilTest, CreditNote)
{
    enterOrder(2002, u"-1450"_s, u"-325"_s, u"-1250"_s,
               {{u"10"_s, u"'T1'"_s, u"'Kjøring'"_s, u"-2"_s, u"650"_s, u"25"_s, u"-1300"_s},
                {u"20"_s, u"'K1'"_s, u"'Grus'"_s, u"-1.5"_s, u"100"_s, u"0"_s, u"-150"_s}});
    const Outcome written = write(1, u"2002"_s);
    EXPECT_EQ(written.error, 0);
    EXPECT_EQ(written.bytes, golden("kreditnota.xml"));
}

TEST_F(EhfFilTest, WithoutVat)
{
    enterOrder(2003, u"1000"_s, u"0"_s, u"1000"_s,
               {{u"10"_s, u"'K1'"_s, u"'Grus'"_s, u"10"_s, u"100"_s, u"0"_s, u"1000"_s}});
    EXPECT_EQ(write(0, u"2003"_s).bytes, golden("uten-mva.xml"));
}

TEST_F(EhfFilTest, ANegativePriceIsWrittenWithoutItsSign)
{
    // The second line's VAT is -15.075, which is shown as 15.08.
    enterOrder(2009, u"1099.50"_s, u"284.93"_s, u"1384"_s,
               {{u"10"_s, u"'T1'"_s, u"'Kjøring'"_s, u"3"_s, u"400"_s, u"25"_s, u"1200"_s},
                {u"20"_s, u"'S1'"_s, u"'Avslag'"_s, u"2"_s, u"-50.25"_s, u"15"_s, u"-100.50"_s}});
    EXPECT_EQ(write(0, u"2009"_s).bytes, golden("negativ-pris.xml"));
}

TEST_F(EhfFilTest, AnInvoiceWithNegativeTotalsStaysAnInvoice)
{
    enterOrder(2010, u"-80"_s, u"-20"_s, u"-100"_s,
               {{u"10"_s, u"'K1'"_s, u"'Grus'"_s, u"-1"_s, u"80"_s, u"25"_s, u"-80"_s}});
    EXPECT_EQ(write(0, u"2010"_s).bytes, golden("negativ-faktura.xml"));
}

TEST_F(EhfFilTest, NegativePaymentTermsAreWrittenWithoutTheirSign)
{
    // 8333 / 333.33 is 24.99925, so 24.9992 as money, shown as 25.00.
    enterOrder(2011, u"333.33"_s, u"83.33"_s, u"417"_s,
               {{u"10"_s, u"'P1'"_s, u"'Pall'"_s, u"1"_s, u"333.33"_s, u"25"_s, u"333.33"_s}});
    change(2011, u"BetBet=-30"_s);
    EXPECT_EQ(write(0, u"2011"_s).bytes, golden("negativ-betalingsfrist.xml"));
}

TEST_F(EhfFilTest, CharactersOfTheCodePageAndBeyond)
{
    enterOrder(2004, u"100"_s, u"25"_s, u"125"_s,
               {{u"10"_s, u"'S1'"_s, u"'«Pall» × ½ €'"_s, u"1"_s, u"100"_s, u"25"_s, u"100"_s}});
    change(2004, u"KundeNavn='yz{|}~\u007f', EgenRef='«æøå»', DeresRef='ÆØÅ Ωλ', "
                 u"FakAdresse1='€ ‚ƒ„…†‡ˆ‰Š‹Œ Ž ‘’“”', FakAdresse2='•–—˜™š›œ žŸ'"_s);
    EXPECT_EQ(write(0, u"2004"_s).bytes, golden("kodeside.xml"));
}

TEST_F(EhfFilTest, OnlyLinesWithoutAProductGiveNoLineElement)
{
    enterOrder(2007, u"500"_s, u"125"_s, u"625"_s,
               {{u"10"_s, u"''"_s, u"'Fritekst'"_s, u"1"_s, u"500"_s, u"25"_s, u"500"_s}});
    EXPECT_EQ(write(0, u"2007"_s).bytes, golden("uten-linjer.xml"));
}

TEST_F(EhfFilTest, ANullInTheOrderEndsTheFileAfterTheHead)
{
    enterOrder(2005, u"100"_s, u"25"_s, u"125"_s, {});
    change(2005, u"EgenRef=Null"_s);
    const Outcome invoice = write(0, u"2005"_s);
    EXPECT_EQ(invoice.error, errors::kInvalidUseOfNull);
    EXPECT_EQ(invoice.bytes, golden("bare-hode-faktura.xml"));
    EXPECT_EQ(write(1, u"2005"_s).bytes, golden("bare-hode-kreditnota.xml"));
}

TEST_F(EhfFilTest, ASumNettoOfZeroEndsTheFileAfterTheHead)
{
    enterOrder(2006, u"0"_s, u"25"_s, u"25"_s, {});
    const Outcome vatAlone = write(0, u"2006"_s);
    EXPECT_EQ(vatAlone.error, errors::kDivisionByZero);
    EXPECT_EQ(vatAlone.bytes, golden("bare-hode-faktura.xml"));

    change(2006, u"MvaKr=0"_s);
    const Outcome nothing = write(1, u"2006"_s);
    EXPECT_EQ(nothing.error, errors::kOverflow);
    EXPECT_EQ(nothing.bytes, golden("bare-hode-kreditnota.xml"));
}

TEST_F(EhfFilTest, AnUnknownNumberEndsTheFileAfterTheHead)
{
    const Outcome written = write(0, u"9999"_s);
    EXPECT_NE(written.error, 0);
    EXPECT_EQ(written.bytes, golden("bare-hode-faktura.xml"));
}

TEST_F(EhfFilTest, ANullInALineEndsTheFileBeforeTheLines)
{
    enterOrder(2008, u"100"_s, u"25"_s, u"125"_s,
               {{u"10"_s, u"'S1'"_s, u"'Pall'"_s, u"1"_s, u"100"_s, u"25"_s, u"100"_s}});
    run(u"UPDATE OrdreLinjer SET RabattPst=Null"_s);
    const Outcome written = write(0, u"2008"_s);
    EXPECT_EQ(written.error, errors::kInvalidUseOfNull);
    EXPECT_EQ(written.bytes, golden("null-i-linje.xml"));
}

TEST_F(EhfFilTest, TheFileIsSevenBitAndEveryPieceEndsInCrLf)
{
    enterInvoice();
    const QByteArray bytes = write(0, u"2001"_s).bytes;
    EXPECT_TRUE(std::all_of(bytes.begin(), bytes.end(),
                            [](char c) { return static_cast<unsigned char>(c) < 0x80; }));
    EXPECT_EQ(bytes.count("\r\n"), 4);
    EXPECT_EQ(bytes.count('\r'), 4);
    EXPECT_TRUE(bytes.endsWith("\r\n</Invoice>\r\n"));
}

TEST_F(EhfFilTest, ADeviceThatTakesNothingRaises)
{
    QBuffer closed;
    closed.open(QIODevice::ReadOnly);
    EXPECT_EQ(raised([&] { SkrivEhfFil(closed, 0, u"1"_s); }), errors::kPathAccess);
}

} // namespace
