#include "platform/report/Support.h"

#include "runtime/MachineLocale.h"

namespace report::test {

namespace {

const QByteArray kDetail = R"(<detail height="5">
<text x="0" y="0" width="50" height="5" value="{OrdreLinjer.ProduktNavn}"/></detail>)";

class MakeReportTest : public ReportTest
{
protected:
    MakeReportTest()
    {
        addOrder(1001, 1);
        addOrder(1002, 2);
    }
    QStringList texts(const QByteArray &bands, const QString &selection = {},
                      const std::vector<QString> &formulas = {})
    {
        return textsOf(made(lineReport(bands), selection, formulas).pages.front());
    }
    static QByteArray detail(const QByteArray &value, const QByteArray &attributes = {})
    {
        return "<detail height=\"5\"><text x=\"0\" y=\"0\" width=\"90\" height=\"5\" value=\"" +
               value + "\" " + attributes + "/></detail>";
    }
};

} // namespace

TEST_F(MakeReportTest, TheSelectionPicksTheRows)
{
    EXPECT_EQ(texts(kDetail).size(), 3);
    EXPECT_EQ(texts(kDetail, u"{Ordre.KlientNr}= 1 and {Ordre.OrdreNr}=1002"_s).size(), 2);
    EXPECT_EQ(texts(kDetail, u"{Ordre.OrdreNr}=001001"_s).size(), 1);
    EXPECT_EQ(
        texts(kDetail, u"{Ordre.OrdreDato} in Date( 2014, 3, 9) to Date( 2014, 3, 9)"_s).size(), 3);
    EXPECT_EQ(texts(kDetail, u"{Ordre.OrdreStatus}='fakturert' AND {Ordre.KundeNr}=00123"_s).size(),
              3);
    EXPECT_EQ(texts(kDetail, u"not {Ordre.Betalt}"_s).size(), 3);
}

TEST_F(MakeReportTest, ATextInASelectionIsNeverAStatement)
{
    const RunTimeError error =
        errorOf(lineReport(kDetail), u"{Ordre.KundeNavn}=\"x'; DELETE FROM OrdreLinjer; --\""_s);
    EXPECT_EQ(error.number(), errors::kNoData);
    EXPECT_EQ(texts(kDetail).size(), 3);
}

TEST_F(MakeReportTest, ErrorNumbers)
{
    const QByteArray good = lineReport(kDetail);
    EXPECT_EQ(errorOf(good).number(), 0);
    EXPECT_EQ(errorOf(good, u"{Ordre.OrdreNr}=9"_s).number(), 20518);
    EXPECT_EQ(errorOf(good, u"{Ordre.OrdreNr}="_s).number(), errors::kFormula);
    EXPECT_EQ(errorOf(good, u"{Produkt.Navn}='x'"_s).number(), errors::kFormula);
    EXPECT_EQ(errorOf(good, u"{Ordre.Finnesikke}=1"_s).number(), errors::kDataSource);
    EXPECT_EQ(errorOf(good, u"{Ordre.OrdreNr}='x'"_s).number(), errors::kDataSource);
    EXPECT_EQ(errorOf(good, {}, {u"Note='x'"_s}).number(), errors::kFormula);
    EXPECT_EQ(errorOf("<report/>").number(), errors::kReportFile);
    const auto numberOf = [](const Request &request) {
        try {
            static_cast<void>(makeReport(request));
        } catch (const RunTimeError &error) {
            return error.number();
        }
        return 0;
    };
    EXPECT_EQ(numberOf({folder() + u"/borte.rpt"_s, dsn(), {}, {}}), 20507);
    EXPECT_EQ(numberOf({folder(), dsn(), {}, {}}), 20507);
    const QString file = written(u"God.rpt"_s, good);
    EXPECT_EQ(numberOf({file, dsn() + u"; DSQ="_s, {}, {}}), 0);
    EXPECT_EQ(numberOf({file, u"dsn="_s + folder() + u"/borte/firma.db"_s, {}, {}}),
              errors::kDataSource);
}

TEST_F(MakeReportTest, TheCheckpointIsPassedAgainAndAgain)
{
    addOrder(1003, 200);
    const auto passed = [this](const QByteArray &bands) {
        int times = 0;
        const Request request{written(u"Lang.rpt"_s, lineReport(bands)), dsn(), {}, {}};
        static_cast<void>(makeReport(request, [&] { ++times; }));
        return times;
    };
    const int filling = passed(kDetail);
    EXPECT_GT(filling, 10);
    // A sum alone looks at every row.
    const int summing = passed("<reportHeader height=\"5\"><text x=\"0\" y=\"0\" width=\"90\" "
                               "height=\"5\" value=\"Sum({OrdreLinjer.SumNetto})\"/>"
                               "</reportHeader>" +
                               kDetail);
    EXPECT_GT(summing, filling + 10);
}

TEST_F(MakeReportTest, WhatTheCheckpointRaisesEndsTheReport)
{
    addOrder(1003, 200);
    int times = 0;
    const Request request{written(u"Lang.rpt"_s, lineReport(kDetail)), dsn(), {}, {}};
    const auto cancel = [&] {
        if (++times == 3)
            raise(errors::kCancelled, {});
    };
    int error = 0;
    try {
        static_cast<void>(makeReport(request, cancel));
    } catch (const RunTimeError &raised) {
        error = raised.number();
    }
    EXPECT_EQ(error, errors::kCancelled);
    EXPECT_EQ(times, 3);
}

TEST_F(MakeReportTest, ASelectionThatIsBrokenShowsItself)
{
    EXPECT_EQ(errorOf(lineReport(kDetail), u"{Ordre.OrdreNr}=12 A"_s).description(),
              u"Utvalget «{Ordre.OrdreNr}=12 A»: Feil i formel ved tegn 20: «A» hører ikke hjemme "
              "her"_s);
}

TEST_F(MakeReportTest, CallersReplaceFormulas)
{
    const QByteArray bands = "<formula name=\"FakType\">1</formula><formula name=\"Note\">''"
                             "</formula>" +
                             detail("{@FakType} &amp; {@Note}");
    const QString one = u"{Ordre.OrdreNr}=1001"_s;
    EXPECT_EQ(texts(bands, one), QStringList{u"1"_s});
    EXPECT_EQ(texts(bands, one, {u"FakType=-2"_s}), QStringList{u"-2"_s});
    EXPECT_EQ(texts(bands, one, {u" faktype = 0"_s, u"Note=' Takk = hei!'"_s}),
              QStringList{u"0 Takk = hei!"_s});
    // A quote that ends the text too early makes the formula broken.
    EXPECT_EQ(errorOf(lineReport(bands), one, {u"Note='Kari's'"_s}).number(), errors::kFormula);
    EXPECT_EQ(errorOf(lineReport(bands), one, {u"Note"_s}).number(), errors::kFormula);
    EXPECT_EQ(errorOf(lineReport(bands), one, {u"=1"_s}).number(), errors::kFormula);
}

TEST_F(MakeReportTest, AReplacedFormulaIsCheckedWhereItIsUsed)
{
    const QByteArray bands =
        "<formula name=\"FakType\">1</formula>" + detail("'x'", "visible=\"{@FakType}=1\"");
    EXPECT_EQ(errorOf(lineReport(bands), {}, {u"FakType='en'"_s}).number(), errors::kFormula);
}

TEST_F(MakeReportTest, TypesAreCheckedBeforeAnythingIsPrinted)
{
    for (const QByteArray &bands :
         {detail("{OrdreLinjer.ProduktNavn}+1"), detail("{Klient.Logo}"), detail("{Ordre.Ukjent}"),
          detail("'x'", "visible=\"{Ordre.OrdreNr}\""),
          detail("{Ordre.OrdreNr}", "format=\"0.000\""),
          detail("{LinjeBrutto}", "format=\"dd.mm.yyyy\""), detail("Today", "format=\"0.00\""),
          detail("Sum({OrdreLinjer.ProduktNavn})"),
          QByteArray("<formula name=\"A\">{@A}</formula>") + kDetail,
          QByteArray("<formula name=\"Ubrukt\">1+'x'</formula>") + kDetail,
          QByteArray("<group name=\"G\" on=\"Sum({Ordre.OrdreNr})\"/>") + kDetail,
          QByteArray("<group name=\"G\" on=\"PageNumber\"/>") + kDetail,
          QByteArray("<detail height=\"5\" each=\"Count()\"/>"),
          QByteArray("<detail height=\"5\"><picture x=\"0\" y=\"0\" width=\"5\" height=\"5\" "
                     "value=\"{Klient.Navn}\"/></detail>")}) {
        // The same without rows: a fault does not wait for the first one.
        const RunTimeError error = errorOf(lineReport(bands), u"{Ordre.OrdreNr}=9"_s);
        EXPECT_EQ(error.number(), errors::kFormula) << bands.toStdString();
        EXPECT_TRUE(error.description().startsWith(u"Test.rpt, linje "_s))
            << error.description().toStdString();
    }
}

TEST_F(MakeReportTest, WhatFailsOnARowTellsItsPlaceInTheFile)
{
    const RunTimeError error = errorOf(lineReport(detail("1/({OrdreLinjer.PosNr}-20)")));
    EXPECT_EQ(error.number(), errors::kFormula);
    EXPECT_TRUE(error.description().startsWith(u"Test.rpt, linje 9, kolonne 20: value: "_s))
        << error.description().toStdString();
}

TEST_F(MakeReportTest, ValuesAsTextAndByFormat)
{
    const ScopedLocale locale(MachineLocale::norwegian());
    const QString one = u"{Ordre.OrdreNr}=1001"_s;
    EXPECT_EQ(texts(detail("{LinjeBrutto}"), one), QStringList{u"125,00"_s});
    EXPECT_EQ(texts(detail("{LinjeBrutto}", "format=\"#0.0\""), one), QStringList{u"125,0"_s});
    EXPECT_EQ(texts(detail("{OrdreLinjer.Antall}", "format=\"0.00\""), one),
              QStringList{u"1,00"_s});
    EXPECT_EQ(texts(detail("{Ordre.OrdreDato}"), one), QStringList{u"09.03.2014"_s});
    EXPECT_EQ(texts(detail("{Ordre.Betalt}"), one), QStringList{u"Nei"_s});
    EXPECT_EQ(texts(detail("{Ordre.OrdreNr}", "format=\"000000000\""), one),
              QStringList{u"000001001"_s});
    EXPECT_EQ(texts(detail("'123456789'", "format=\"@@@\\ @@@\\ @@@\""), one),
              QStringList{u"123 456 789"_s});
}

TEST_F(MakeReportTest, ReadsTheDatabaseAfreshEachTime)
{
    EXPECT_EQ(texts(kDetail).size(), 3);
    run({u"DELETE FROM OrdreLinjer WHERE PosNr=20"_s});
    EXPECT_EQ(texts(kDetail).size(), 2);
}

} // namespace report::test
