#include "rules/Innstilling.h"

#include "rules/Beregning.h"
#include "rules/Kid.h"
#include "rules/Ordrelinjer.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"
#include "support/SettingsFolder.h"

using namespace Qt::StringLiterals;

namespace {

class InnstillingTest : public ::testing::Test
{
protected:
    ~InnstillingTest() override { releaseSharedState(); }

    static void save(const QString &key, const QString &value)
    {
        ASSERT_TRUE(gReg->SaveSetting(u"Regningsdel"_s, key, value));
    }

    SettingsFolder m_folder;
};

} // namespace

TEST_F(InnstillingTest, ReadsTheModulesSection)
{
    EXPECT_EQ(LesInnstilling(u"PrintVis"_s, u"0"_s), u"0"_s);
    save(u"PrintVis"_s, u"1"_s);
    EXPECT_EQ(LesInnstilling(u"PrintVis"_s, u"0"_s), u"1"_s + QChar(0));
}

TEST_F(InnstillingTest, AChangedRoundingCountsAtTheNextCalculation)
{
    Ordrelinjer ordre;
    ordre.add(u"1"_s, u"102,60"_s, u"0"_s);
    for (const auto &[setting, brutto] :
         {std::pair{u"0"_s, u" 102,60"_s}, std::pair{u"1"_s, u" 103,00"_s},
          std::pair{u"2"_s, u" 102,00"_s}}) {
        save(u"Avrunding"_s, setting);
        BeregnSummer(ordre, LesInnstilling, ordre);
        EXPECT_EQ(ordre.field(SumFelt::SumBrutto), brutto);
    }
}

TEST_F(InnstillingTest, TheKidFollowsTheStore)
{
    EXPECT_EQ(LagKID(LesInnstilling, u"1234"_s, u"77"_s), QString());
    save(u"KIDaktivert"_s, u"1"_s);
    EXPECT_EQ(LagKID(LesInnstilling, u"1234"_s, u"77"_s), u"0012344"_s);
    save(u"KIDoppbygning"_s, u"1"_s);
    save(u"KIDlengdeKundenr"_s, u"5"_s);
    save(u"KIDlengdeFakturanr"_s, u"4"_s);
    save(u"KIDmodulus"_s, u"11"_s);
    EXPECT_EQ(LagKID(LesInnstilling, u"1234"_s, u"77"_s), Modulus11(u"000771234"_s));
    save(u"KIDmodulus"_s, u"9"_s);
    EXPECT_EQ(LagKID(LesInnstilling, u"1234"_s, u"77"_s), QString());
}
