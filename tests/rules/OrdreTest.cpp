#include "rules/Ordre.h"

#include "data/clsAdoUtils.h"
#include "state/SharedState.h"
#include "support/ModuleTest.h"
#include "support/SessionTap.h"

using namespace Qt::StringLiterals;

namespace {

/// A started module; client 5 is active, and client 6 has orders of its own.
class OrdreTest : public ModuleTest
{
protected:
    OrdreTest()
    {
        makeParentTables();
        run(u"INSERT INTO Klient (KlientNr,Navn) VALUES (5,'Fem')"_s);
        EXPECT_EQ(startModule(), 1);
        enter(6, 4711, u"Ordre"_s);
    }

    void enter(int klient, int nr, const QString &status)
    {
        run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,Betalt) VALUES (%1,%2,'%3',0)"_s
                .arg(klient)
                .arg(nr)
                .arg(status));
    }

    void setFirstFakNr(const QString &value)
    {
        run(u"UPDATE Klient SET FirstFakNr="_s + value + u" WHERE KlientNr=5"_s);
    }

    QString status(int klient, int nr)
    {
        return rows(u"SELECT OrdreStatus FROM Ordre WHERE KlientNr=%1 AND OrdreNr=%2"_s.arg(klient)
                        .arg(nr))
            .join(u',');
    }

    QString id(int klient, int nr)
    {
        return rows(u"SELECT ID FROM Ordre WHERE KlientNr=%1 AND OrdreNr=%2"_s.arg(klient).arg(nr))
            .join(u',');
    }
};

TEST_F(OrdreTest, AClientsFirstOrderTakesFirstFakNr)
{
    setFirstFakNr(u"1000"_s);
    EXPECT_EQ(NyttOrdreNr(), 1000);
    enter(5, 1000, u"Ordre"_s);
    EXPECT_EQ(NyttOrdreNr(), 1001);
}

TEST_F(OrdreTest, FirstFakNrOfOneOrLessGivesOne)
{
    for (const QString &value : {u"0"_s, u"1"_s, u"-3"_s, u"Null"_s}) {
        setFirstFakNr(value);
        EXPECT_EQ(NyttOrdreNr(), 1) << value.toStdString();
    }
    setFirstFakNr(u"2"_s);
    EXPECT_EQ(NyttOrdreNr(), 2);
}

TEST_F(OrdreTest, AClientWithoutARowOfItsOwnBeginsAtOne)
{
    gKlient = 8;
    EXPECT_EQ(NyttOrdreNr(), 1);
}

TEST_F(OrdreTest, LaterNumbersRunOnFromTheHighestWhateverFirstFakNrSays)
{
    enter(5, 7, u"Ordre"_s);
    enter(5, 3, u"Betalt"_s);
    setFirstFakNr(u"1000"_s);
    EXPECT_EQ(NyttOrdreNr(), 8);
    gKlient = 6;
    EXPECT_EQ(NyttOrdreNr(), 4712);
}

TEST_F(OrdreTest, TheStatementsCarryTheBlankOfTheClientNumber)
{
    SessionTap tap;
    EXPECT_EQ(NyttOrdreNr(), 1);
    EXPECT_EQ(tap.statements(),
              QStringList({u"SELECT Max([OrdreNr])+1 AS NyttNr FROM Ordre WHERE KlientNr= 5"_s,
                           u"SELECT FirstFakNr FROM Klient WHERE KlientNr= 5"_s}));
}

TEST_F(OrdreTest, TwoCallersGetTheSameNumberAndTheDatabaseRefusesTheSecondRow)
{
    enter(5, 20, u"Ordre"_s);
    const qint32 first = NyttOrdreNr();
    const qint32 second = NyttOrdreNr();
    EXPECT_EQ(first, 21);
    EXPECT_EQ(second, first);
    const QString insert = u"INSERT INTO Ordre (KlientNr,OrdreNr) VALUES (5,21)"_s;
    EXPECT_GT(gDB->ExecuteID(insert), 0);
    EXPECT_EQ(gDB->ExecuteID(insert), 0);
    EXPECT_TRUE(gDB->LastError().startsWith(u"-2147217873 - "));
    EXPECT_EQ(NyttOrdreNr(), 22);
}

TEST_F(OrdreTest, AFailedReadReachesTheCaller)
{
    gDB->setConnectionString(u"tull"_s);
    EXPECT_EQ(raised([] { (void)NyttOrdreNr(); }), errors::kObjectNotSet);
}

TEST_F(OrdreTest, AnEhfFileMovesOneRowByItsId)
{
    enter(5, 4711, u"Ordre"_s);
    EXPECT_EQ(FakturertSql(u"12"_s), u"UPDATE Ordre SET OrdreStatus='Fakturert' WHERE ID=12"_s);
    EXPECT_TRUE(gDB->Execute(FakturertSql(id(5, 4711))));
    EXPECT_EQ(status(5, 4711), u"Fakturert"_s);
    EXPECT_EQ(status(6, 4711), u"Ordre"_s);
}

TEST_F(OrdreTest, PaperMovesTheNumberUnderEveryClientAndFromEveryStatus)
{
    enter(5, 4711, u"Betalt"_s);
    enter(5, 4712, u"Bokført"_s);
    EXPECT_EQ(FakturertSqlForOrdreNr(u"4711"_s),
              u"UPDATE Ordre SET OrdreStatus='Fakturert' WHERE OrdreNr=4711"_s);
    EXPECT_TRUE(gDB->Execute(FakturertSqlForOrdreNr(u"4711"_s)));
    EXPECT_EQ(status(5, 4711), u"Fakturert"_s);
    EXPECT_EQ(status(6, 4711), u"Fakturert"_s);
    EXPECT_EQ(status(5, 4712), u"Bokført"_s);
}

TEST_F(OrdreTest, PostingSelectsAndMovesAnInvoiceOnce)
{
    enter(5, 1, u"Fakturert"_s);
    const QString number = id(5, 1);
    EXPECT_EQ(BokfortSql(u"12"_s), u"UPDATE Ordre SET OrdreStatus='Bokført' WHERE ID=12"_s);
    EXPECT_EQ(ErFakturertVilkar(u"12"_s), u" AND OrdreStatus='Fakturert' AND ID=12"_s);
    const QString clause = u"KlientNr= 5"_s + ErFakturertVilkar(number);
    EXPECT_EQ(gDB->GetCount(u"Ordre"_s, clause), 1);
    EXPECT_TRUE(gDB->Execute(BokfortSql(number)));
    EXPECT_EQ(status(5, 1), u"Bokført"_s);
    EXPECT_EQ(gDB->GetCount(u"Ordre"_s, clause), 0);
}

TEST_F(OrdreTest, MarkingAsPaidLeavesTheColumnBetaltAlone)
{
    enter(5, 1, u"Fakturert"_s);
    EXPECT_EQ(BetaltSql(12), u"UPDATE Ordre SET OrdreStatus='Betalt' WHERE ID= 12"_s);
    EXPECT_TRUE(gDB->Execute(BetaltSql(id(5, 1).toInt())));
    EXPECT_EQ(rows(u"SELECT OrdreStatus,Betalt FROM Ordre WHERE KlientNr=5"_s),
              QStringList(u"Betalt|False"_s));
}

TEST(Ordrestatus, OnlyAnOrderMayBeChanged)
{
    EXPECT_TRUE(KanEndres(ordrestatus::kOrdre));
    EXPECT_TRUE(KanEndres(u" Ordre "));
    EXPECT_FALSE(KanEndres(u"ordre"));
    EXPECT_FALSE(KanEndres(QString()));
    for (const QStringView status :
         {ordrestatus::kFakturert, ordrestatus::kBokfort, ordrestatus::kBetalt})
        EXPECT_FALSE(KanEndres(status)) << status.toUtf8().constData();
}

TEST(Ordrestatus, OnlyWhatHasGoneOutAndIsNotPaidMayBeMarkedAsPaid)
{
    EXPECT_FALSE(KanMerkesBetalt(ordrestatus::kOrdre));
    EXPECT_TRUE(KanMerkesBetalt(ordrestatus::kFakturert));
    EXPECT_TRUE(KanMerkesBetalt(ordrestatus::kBokfort));
    EXPECT_FALSE(KanMerkesBetalt(ordrestatus::kBetalt));
}

} // namespace
