#include "rules/SjekkKlient.h"

#include "data/clsAdoUtils.h"
#include "state/SharedState.h"
#include "support/ModuleTest.h"

using namespace Qt::StringLiterals;

namespace {

const QString kPostNr = u"PostNr mangler\tMå rettes\r\n"_s;
const QString kNoTelephone = u"Tlf. arbeid mangler\tBør rettes\r\n"_s;
const QString kBadTelephone = u"Tlf. arbeid feil\tBør rettes\r\n"_s;
const QString kOrgNr = u"Org.Nr mangler\tMå rettes\r\n"_s;
const QString kAccount = u"Bankkonto mangler\tMå rettes\r\n"_s;

/// A client that lacks nothing; each test takes something away.
class SjekkKlientTest : public ModuleTest
{
protected:
    SjekkKlientTest()
    {
        makeParentTables();
        connect();
        run(u"INSERT INTO Klient (KlientNr,Navn,PostNr,TlfArbeid,OrganisasjonsNr,Giro1) "
            "VALUES (5,'Vestfold Frakt','3112','33 12 34 5','999999999','12345678903')"_s);
    }
    void set(const QString &column, const QString &value)
    {
        run(u"UPDATE Klient SET "_s + column + u'=' + value + u" WHERE KlientNr=5"_s);
    }
};

} // namespace

TEST_F(SjekkKlientTest, NothingMissing)
{
    EXPECT_EQ(SjekkKlient(), QString());
    set(u"TlfArbeid"_s, u"'12345678'"_s);
    EXPECT_EQ(SjekkKlient(), QString());
}

TEST_F(SjekkKlientTest, EveryColumnNull)
{
    for (const QString &column : {u"PostNr"_s, u"TlfArbeid"_s, u"OrganisasjonsNr"_s, u"Giro1"_s})
        set(column, u"Null"_s);
    EXPECT_EQ(SjekkKlient(), kPostNr + kNoTelephone + kOrgNr + kAccount);
}

TEST_F(SjekkKlientTest, EveryColumnEmpty)
{
    for (const QString &column : {u"PostNr"_s, u"TlfArbeid"_s, u"OrganisasjonsNr"_s, u"Giro1"_s})
        set(column, u"''"_s);
    EXPECT_EQ(SjekkKlient(), kPostNr + kNoTelephone + kOrgNr + kAccount);
}

TEST_F(SjekkKlientTest, EveryColumnOfBlanks)
{
    for (const QString &column : {u"PostNr"_s, u"TlfArbeid"_s, u"OrganisasjonsNr"_s, u"Giro1"_s})
        set(column, u"'  '"_s);
    EXPECT_EQ(SjekkKlient(), kNoTelephone + kOrgNr + kAccount);
}

TEST_F(SjekkKlientTest, OneFaultAtATime)
{
    set(u"PostNr"_s, u"Null"_s);
    EXPECT_EQ(SjekkKlient(), kPostNr);
    set(u"PostNr"_s, u"'0150'"_s);
    set(u"OrganisasjonsNr"_s, u"''"_s);
    EXPECT_EQ(SjekkKlient(), kOrgNr);
    set(u"OrganisasjonsNr"_s, u"'1'"_s);
    set(u"Giro1"_s, u"' '"_s);
    EXPECT_EQ(SjekkKlient(), kAccount);
}

TEST_F(SjekkKlientTest, AShortTelephoneNumber)
{
    set(u"TlfArbeid"_s, u"'1234567'"_s);
    EXPECT_EQ(SjekkKlient(), kBadTelephone);
    set(u"TlfArbeid"_s, u"'  1234567  '"_s);
    EXPECT_EQ(SjekkKlient(), kBadTelephone);
    set(u"TlfArbeid"_s, u"'1234 567'"_s);
    EXPECT_EQ(SjekkKlient(), QString());
}

TEST_F(SjekkKlientTest, AnUnknownClientHasNoFaults)
{
    gKlient = 6;
    EXPECT_EQ(SjekkKlient(), QString());
}

TEST_F(SjekkKlientTest, AFailedReadLacksEverything)
{
    gDB->setConnectionString(u"dsn=/finnes/ikke.db"_s);
    EXPECT_EQ(SjekkKlient(), kPostNr + kNoTelephone + kOrgNr + kAccount);
}

TEST_F(SjekkKlientTest, AMissingColumnLacksEverything)
{
    run(u"ALTER TABLE Klient DROP COLUMN TlfArbeid"_s);
    EXPECT_EQ(SjekkKlient(), kPostNr + kNoTelephone + kOrgNr + kAccount);
}
