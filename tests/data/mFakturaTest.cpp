#include "data/mFaktura.h"

#include "data/clsAdoUtils.h"
#include "runtime/MachineLocale.h"
#include "state/SharedState.h"
#include "support/ModuleTest.h"
#include "support/SessionTap.h"

using namespace Qt::StringLiterals;

namespace {

class HentFeltTest : public ModuleTest
{
protected:
    HentFeltTest()
    {
        run(u"CREATE TABLE T (Nr LONG CONSTRAINT Nr PRIMARY KEY, Lang LONG, Kort SHORT, "
            u"Tekst TEXT(10), Penger CURRENCY, Tall SINGLE, Dato DATE)"_s);
        run(u"INSERT INTO T (Nr) VALUES (1)"_s);
        run(u"INSERT INTO T (Nr,Lang,Kort,Tekst,Penger,Tall,Dato) "
            u"VALUES (2,70000,7,'æøå',12.5,0.5,#03/09/2014#)"_s);
        gDB->setConnectionString(connectionString());
    }

    static Value hent(const QString &field, int nr)
    {
        return HentFelt(field, u"T"_s, u"Nr="_s + QString::number(nr));
    }
};

TEST_F(ModuleTest, TheClientsConditionHasTheNumberAsAStatementHasIt)
{
    gKlient = 7;
    EXPECT_EQ(klientVilkar(), u"KlientNr= 7");
    gKlient = -7;
    EXPECT_EQ(klientVilkar(), u"KlientNr=-7");
}

TEST_F(HentFeltTest, GivesTheFieldWithItsType)
{
    EXPECT_EQ(hent(u"Lang"_s, 2), Value(qint32{70000}));
    EXPECT_EQ(hent(u"Kort"_s, 2), Value(qint16{7}));
    EXPECT_EQ(hent(u"Tekst"_s, 2), Value(u"æøå"_s));
    EXPECT_EQ(hent(u"Penger"_s, 2), Value(Currency::fromTenThousandths(125000)));
    EXPECT_EQ(hent(u"Tall"_s, 2), Value(0.5f));
    EXPECT_EQ(hent(u"Dato"_s, 2).toDate().date(), QDate(2014, 3, 9));
}

TEST_F(HentFeltTest, NullIsZeroForALongAndTheEmptyTextForAllOthers)
{
    EXPECT_EQ(hent(u"Lang"_s, 1), Value(qint32{0}));
    for (const QString &field : {u"Kort"_s, u"Tekst"_s, u"Penger"_s, u"Tall"_s, u"Dato"_s})
        EXPECT_EQ(hent(field, 1), Value(QString())) << field.toStdString();
}

TEST_F(HentFeltTest, NoRowIsAnsweredByTheColumnsType)
{
    EXPECT_EQ(hent(u"Lang"_s, 9), Value(qint32{0}));
    EXPECT_EQ(hent(u"Kort"_s, 9), Value(QString()));
    EXPECT_EQ(hent(u"Tekst"_s, 9), Value(QString()));
}

TEST_F(HentFeltTest, ComposesTheStatementAndReadsTheFirstRow)
{
    SessionTap tap;
    EXPECT_EQ(HentFelt(u"Lang"_s, u"T"_s, u"Nr> 0 ORDER BY Nr DESC"_s), Value(qint32{70000}));
    EXPECT_EQ(tap.statements(), QStringList(u"SELECT Lang FROM T WHERE Nr> 0 ORDER BY Nr DESC"_s));
}

TEST_F(HentFeltTest, AFailedReadRaisesObjectNotSetAndLeavesTheReasonInLastError)
{
    EXPECT_EQ(raised([] { (void)hent(u"Mangler"_s, 1); }), errors::kObjectNotSet);
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147217904 - "));
}

struct ToSqlCase
{
    QString text;
    QString amount; ///< by "#0.00"
    QString whole;
};

class TilSqlTest : public ::testing::TestWithParam<ToSqlCase>
{
};

TEST_P(TilSqlTest, ReadsANorwegianMachinesText)
{
    const ScopedLocale machine(MachineLocale::norwegian());
    EXPECT_EQ(TallTilSql(GetParam().text, u"#0.00"), GetParam().amount);
    EXPECT_EQ(HeltallTilSql(GetParam().text), GetParam().whole);
}

INSTANTIATE_TEST_SUITE_P(
    Texts, TilSqlTest,
    ::testing::Values(ToSqlCase{QString(), u"0.00"_s, u"0"_s}, ToSqlCase{u" "_s, u"0.00"_s, u"0"_s},
                      ToSqlCase{u"tull"_s, u"0.00"_s, u"0"_s},
                      ToSqlCase{u"12 kr"_s, u"0.00"_s, u"0"_s},
                      ToSqlCase{u"12,5"_s, u"12.50"_s, u"12"_s},
                      ToSqlCase{u"13,5"_s, u"13.50"_s, u"14"_s},
                      ToSqlCase{u"-0,006"_s, u"-0.01"_s, u"0"_s},
                      ToSqlCase{u"1 234,56"_s, u"1234.56"_s, u"1235"_s},
                      ToSqlCase{u"1\u00a0234,56"_s, u"1234.56"_s, u"1235"_s},
                      ToSqlCase{u"\u2212250"_s, u"-250.00"_s, u"-250"_s},
                      ToSqlCase{u"1,00005"_s, u"1.00"_s, u"1"_s},
                      ToSqlCase{u"9999999999999999"_s, u"0.00"_s, u"0"_s},
                      ToSqlCase{u"2147483648"_s, u"2147483648.00"_s, u"0"_s},
                      ToSqlCase{u"-2147483648"_s, u"-2147483648.00"_s, u"-2147483648"_s}));

TEST(TilSql, GivesAPointOnAPointMachineToo)
{
    const ScopedLocale machine(MachineLocale::fromName(u"en_US.UTF-8"_s));
    EXPECT_EQ(TallTilSql(u"12.5"_s, u"#0.00"), u"12.50"_s);
    EXPECT_EQ(TallTilSql(u"12.5"_s, u"#0.0"), u"12.5"_s);
    EXPECT_EQ(HeltallTilSql(u"12.6"_s), u"13"_s);
}

TEST(TilSql, TakesTheFormatGiven)
{
    const ScopedLocale machine(MachineLocale::norwegian());
    EXPECT_EQ(TallTilSql(u"12,25"_s, u"#0.0"), u"12.3"_s);
    EXPECT_EQ(TallTilSql(u"1234,5"_s, u"# ##0.00"), u"1 234.50"_s);
    EXPECT_EQ(TallTilSql(u"5"_s, u"finnes ikke"), QString());
}

} // namespace
