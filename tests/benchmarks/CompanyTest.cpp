#include "benchmarks/support/Company.h"
#include "benchmarks/support/FileDatabase.h"
#include "benchmarks/support/ModuleDatabase.h"
#include "data/clsAdoUtils.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

namespace {

class CompanyTest : public ::testing::Test
{
protected:
    static int count(const QString &table, const QString &condition = {})
    {
        return gDB->GetCount(table, condition);
    }

    bench::FileDatabase database;
    bench::ModuleDatabase module{database};
    bench::Company company{database};
};

} // namespace

TEST_F(CompanyTest, BeginsSmall)
{
    EXPECT_EQ(count(u"Poststed"_s), 50);
    EXPECT_EQ(count(u"KundeLev"_s), 25);
    EXPECT_EQ(count(u"Produkt"_s), 25);
    EXPECT_EQ(count(u"Ordre"_s), 60);
    EXPECT_EQ(count(u"OrdreLinjer"_s), 600);
    EXPECT_EQ(count(u"Bilag"_s), 0);
}

TEST_F(CompanyTest, GrowsToWhatIsTold)
{
    company.growPostalCodes(500);
    company.growCustomers(100);
    company.growProducts(250);
    company.growOrders(100);
    company.growVouchers(20);
    company.growVouchers(30);
    company.growOldVouchers(7);
    EXPECT_EQ(count(u"Poststed"_s), 500);
    EXPECT_EQ(count(u"KundeLev"_s), 100);
    EXPECT_EQ(count(u"Produkt"_s), 250);
    EXPECT_EQ(count(u"Ordre"_s), 100);
    EXPECT_EQ(count(u"OrdreLinjer"_s), 1000);
    EXPECT_EQ(count(u"Bilag"_s, u"Year(BilagDato)=2014"_s), 30);
    EXPECT_EQ(count(u"Bilag"_s, u"Year(BilagDato)=2013"_s), 7);
    EXPECT_EQ(count(u"BilagLinjer"_s), 74) << "two a voucher";
}

TEST_F(CompanyTest, LinesGrowInTheFirstOrderAlone)
{
    company.growLines(100);
    EXPECT_EQ(count(u"OrdreLinjer"_s, u"OrdreID=1"_s), 100);
    EXPECT_EQ(count(u"OrdreLinjer"_s, u"OrdreID=2"_s), 10);
}

TEST_F(CompanyTest, WhatRowsNameIsThere)
{
    company.growOrders(100);
    EXPECT_EQ(count(u"Ordre"_s, u"ID=OrdreNr"_s), 100);
    EXPECT_EQ(count(u"OrdreLinjer INNER JOIN Produkt ON OrdreLinjer.ProduktNr=Produkt.ProduktNr"_s),
              1000);
    EXPECT_EQ(count(u"Ordre INNER JOIN KundeLev ON Ordre.KundeNr=KundeLev.KundeNr"_s), 100);
    EXPECT_EQ(count(u"KundeLev INNER JOIN Poststed ON KundeLev.LevPostNr=Poststed.PostNr"_s), 25);
}

TEST_F(CompanyTest, OrdersTakeAStatus)
{
    company.setStatus("Fakturert", 20);
    EXPECT_EQ(count(u"Ordre"_s, u"OrdreStatus='Fakturert'"_s), 20);
}
