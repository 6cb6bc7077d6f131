#include "output/ehf3/Ehf3Test.h"

#include "data/clsAdoUtils.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

namespace {

/// What is refused, and by which words. Order 1 lacks nothing.
class Ehf3ManglerTest : public Ehf3Test
{
protected:
    Ehf3ManglerTest()
    {
        enterOrder(1, u"125"_s, {{u"'S1'"_s, u"'Pall'"_s, u"1"_s, u"100"_s, u"25"_s, u"100"_s}});
        EXPECT_EQ(missing(1), QStringList());
    }

    void changeClient(const QString &assignments)
    {
        run(u"UPDATE Klient SET %1 WHERE KlientNr=5"_s.arg(assignments));
    }
    void changeCustomer(const QString &assignments)
    {
        run(u"UPDATE KundeLev SET %1 WHERE KlientNr=5"_s.arg(assignments));
    }
    void changeLine(const QString &assignments) { run(u"UPDATE OrdreLinjer SET "_s + assignments); }

    const QString m_customersNumber =
        u"Kunden Ærlig Øl & Ås AS mangler gyldig organisasjonsnummer; rettes i kundekortet"_s;
    const QString m_clientsNumber = u"Klienten Blåbær & Co Transport AS mangler gyldig "
                                    u"organisasjonsnummer; rettes i klientkortet"_s;
    const QString m_clientsAccount =
        u"Klienten Blåbær & Co Transport AS mangler gyldig bankkonto; rettes i klientkortet"_s;
};

TEST_F(Ehf3ManglerTest, NumbersAreValidByModulus11)
{
    for (const QString &number : {u"411223345"_s, u"411 223 345"_s, u"411\u00a0223\u00a0345"_s,
                                  u"NO411223345MVA"_s, u"no 411.223.345 mva"_s}) {
        changeCustomer(u"OrganisasjonsNr='%1'"_s.arg(number));
        EXPECT_EQ(missing(1), QStringList()) << number.toStdString();
    }
    for (const QString &number :
         {u"'411223346'"_s, u"'41122334'"_s, u"'4112233450'"_s, u"Null"_s, u"''"_s,
          u"'000000000'"_s, u"'41122334½'"_s, u"'SE411223345'"_s}) {
        changeCustomer(u"OrganisasjonsNr=%1"_s.arg(number));
        EXPECT_EQ(missing(1), QStringList{m_customersNumber}) << number.toStdString();
    }
}

TEST_F(Ehf3ManglerTest, TheSellersNumbers)
{
    changeClient(u"OrganisasjonsNr='717171722',Giro1='9999.12.34567'"_s);
    EXPECT_EQ(missing(1), (QStringList{m_clientsNumber, m_clientsAccount}));
    changeClient(u"OrganisasjonsNr=Null,Giro1=Null"_s);
    EXPECT_EQ(missing(1), (QStringList{m_clientsNumber, m_clientsAccount}));
}

TEST_F(Ehf3ManglerTest, ACustomerWhoIsNotInTheRegister)
{
    run(u"DELETE FROM KundeLev"_s);
    EXPECT_EQ(missing(1), QStringList{u"Ordre 1 har kunde 10001, som ikke finnes i "
                                      u"kunderegisteret; rettes i ordrebildet"_s});
}

TEST_F(Ehf3ManglerTest, AClientWhoIsNotInTheRegister)
{
    run(u"DELETE FROM Klient"_s);
    EXPECT_EQ(missing(1), QStringList{u"Klienten finnes ikke i klientregisteret"_s});
}

TEST_F(Ehf3ManglerTest, AnOrderThatHasBeenSentIsNotChanged)
{
    change(1, u"LevDato=Null,OrdreStatus='Fakturert'"_s);
    EXPECT_EQ(missing(1), QStringList{u"Ordre 1 mangler leveringsdato; ordren krediteres og "
                                      u"skrives på nytt"_s});
}

TEST_F(Ehf3ManglerTest, NamesAreNotMadeUp)
{
    changeClient(u"Navn=' '"_s);
    change(1, u"KundeNavn='\u0001'"_s);
    EXPECT_EQ(missing(1), (QStringList{u"Klienten mangler navn; rettes i klientkortet"_s,
                                       u"Ordre 1 mangler kundenavn; rettes i ordrebildet"_s}));
    changeCustomer(u"OrganisasjonsNr=''"_s);
    EXPECT_EQ(missing(1).last(),
              u"Kunden 10001 mangler gyldig organisasjonsnummer; rettes i kundekortet"_s);
    changeLine(u"ProduktNr='',ProduktNavn=Null"_s);
    EXPECT_EQ(missing(1).last(), u"Linje 1 mangler produktnavn; rettes i ordrebildet"_s);
}

TEST_F(Ehf3ManglerTest, Dates)
{
    change(1, u"FakDato=Null,ForfallDato=Null,LevDato=Null"_s);
    EXPECT_EQ(missing(1), (QStringList{u"Ordre 1 mangler fakturadato; rettes i ordrebildet"_s,
                                       u"Ordre 1 mangler forfallsdato; rettes i ordrebildet"_s,
                                       u"Ordre 1 mangler leveringsdato; rettes i ordrebildet"_s}));
}

TEST_F(Ehf3ManglerTest, AnOrderWithoutLines)
{
    run(u"DELETE FROM OrdreLinjer"_s);
    EXPECT_EQ(missing(1), QStringList{u"Ordre 1 har ingen linjer; rettes i ordrebildet"_s});
}

TEST_F(Ehf3ManglerTest, ASumOfNought)
{
    for (const QString &sum : {u"0"_s, u"Null"_s, u"0.0049"_s, u"-0.0049"_s}) {
        change(1, u"SumBrutto="_s + sum);
        EXPECT_EQ(missing(1),
                  QStringList{u"Ordre 1 har ingenting å betale; rettes i ordrebildet"_s})
            << sum.toStdString();
    }
}

TEST_F(Ehf3ManglerTest, ALineThatItsQuantityAndPriceDoNotMakeUp)
{
    changeLine(u"SumNetto=100.01"_s);
    EXPECT_EQ(missing(1), QStringList());
    changeLine(u"SumNetto=100.02,Antall=2,Pris=50"_s);
    EXPECT_EQ(missing(1), QStringList{u"Linje 1 har sum netto 100,02, som ikke er antall 2 ganger "
                                      u"pris 50,00; rettes i ordrebildet"_s});
    // 1.04 is stored as 1.0, and 1.06 is not.
    changeLine(u"SumNetto=104,Antall=1,Pris=100"_s);
    change(1, u"SumBrutto=130"_s);
    EXPECT_EQ(missing(1), QStringList());
    changeLine(u"SumNetto=106"_s); // of a quantity that is stored as 1.1
    change(1, u"SumBrutto=132.50"_s);
    EXPECT_EQ(missing(1).size(), 1);
    // Nothing makes up a line without a price.
    changeLine(u"SumNetto=106,Pris=0"_s);
    EXPECT_EQ(missing(1).size(), 1);
}

TEST_F(Ehf3ManglerTest, WhatIsToBePaidIsTheSumOfTheLinesButForRounding)
{
    change(1, u"SumBrutto=126.02"_s);
    EXPECT_EQ(missing(1), QStringList());
    EXPECT_EQ(value(1, "cbc:PayableRoundingAmount"), u"1.02"_s);
    change(1, u"SumBrutto=123.97"_s);
    EXPECT_EQ(missing(1), QStringList{u"Ordre 1 har 123,97 å betale, mens linjene med mva blir "
                                      u"125,00; rettes i ordrebildet"_s});
    // A credit note whose lines are those of an invoice.
    change(1, u"SumBrutto=-125"_s);
    EXPECT_EQ(missing(1), QStringList{u"Ordre 1 har 125,00 å betale, mens linjene med mva blir "
                                      u"-125,00; rettes i ordrebildet"_s});
}

TEST_F(Ehf3ManglerTest, TheRoundingIsThatWhichTheOrderTells)
{
    change(1, u"SumBrutto=125.02,Avrunding=0"_s); // of one line
    EXPECT_EQ(missing(1), QStringList());
    change(1, u"SumBrutto=125.03"_s);
    EXPECT_EQ(missing(1), QStringList{u"Ordre 1 har 125,03 å betale, mens linjene med mva blir "
                                      u"125,00; rettes i ordrebildet"_s});
    change(1, u"Avrunding=0.03"_s);
    EXPECT_EQ(missing(1), QStringList());
    change(1, u"Avrunding=-0.03"_s);
    EXPECT_EQ(missing(1).size(), 1);
    changeLine(u"Antall=-1,SumNetto=-100"_s);
    change(1, u"SumBrutto=-124.97,Avrunding=0.03"_s);
    EXPECT_EQ(missing(1), QStringList());
    EXPECT_EQ(value(1, "cbc:PayableRoundingAmount"), u"-0.03"_s);
}

TEST_F(Ehf3ManglerTest, RatesThatTheRulesCannotHold)
{
    changeLine(u"MvaPst=-5"_s);
    change(1, u"SumBrutto=95"_s);
    EXPECT_EQ(missing(1), QStringList{u"Ordre 1 har mva-satsen -5 %, som formatet ikke tar; "
                                      u"rettes i ordrebildet"_s});
    changeLine(u"MvaPst=0.4,Antall=2,SumNetto=200"_s);
    change(1, u"SumBrutto=200.80"_s);
    EXPECT_EQ(missing(1), QStringList{u"Ordre 1 har mva-satsen 0,4 %, som formatet ikke tar; "
                                      u"rettes i ordrebildet"_s});
    changeLine(u"MvaPst=0.4,Antall=1,SumNetto=100"_s);
    change(1, u"SumBrutto=100.40"_s);
    EXPECT_EQ(missing(1), QStringList());
    changeLine(u"MvaPst=0.5,Antall=2,SumNetto=200"_s);
    change(1, u"SumBrutto=201"_s);
    EXPECT_EQ(missing(1), QStringList());
}

TEST_F(Ehf3ManglerTest, AllGapsAreToldAtOnce)
{
    changeClient(u"OrganisasjonsNr='',Giro1=''"_s);
    changeCustomer(u"OrganisasjonsNr=''"_s);
    change(1, u"LevDato=Null"_s);
    changeLine(u"ProduktNr='',ProduktNavn=''"_s);
    EXPECT_EQ(missing(1), (QStringList{m_clientsNumber, m_clientsAccount, m_customersNumber,
                                       u"Ordre 1 mangler leveringsdato; rettes i ordrebildet"_s,
                                       u"Linje 1 mangler produktnavn; rettes i ordrebildet"_s}));
}

TEST_F(Ehf3ManglerTest, AnOrderThatIsNotThere)
{
    EXPECT_EQ(missing(99), QStringList{u"Ordre 99 finnes ikke for klient 5"_s});
    EXPECT_EQ(Ehf3Skriver(6).lag(1).mangler, u"Ordre 1 finnes ikke for klient 6"_s);
}

TEST_F(Ehf3ManglerTest, AmountsBeyondTheRange)
{
    changeLine(u"Antall=1000000,Pris=900000000000000,SumNetto=1"_s);
    ASSERT_EQ(missing(1).size(), 1);
    EXPECT_TRUE(missing(1).first().startsWith(u"Ordre 1 lot seg ikke lese: "_s));
}

TEST_F(Ehf3ManglerTest, ADatabaseThatCannotBeReadIsToldAndLeavesNoTextBehind)
{
    const QString connection = gDB->ConnectionString();
    gDB->setConnectionString(u"dsn=/finnes/ikke.db"_s);
    ASSERT_EQ(missing(1).size(), 1);
    EXPECT_TRUE(missing(1).first().startsWith(u"Ordre 1 lot seg ikke lese: "_s))
        << missing(1).first().toStdString();
    EXPECT_EQ(gDB->LastError(), QString());
    gDB->setConnectionString(connection);
    EXPECT_EQ(missing(1), QStringList());
}

} // namespace
