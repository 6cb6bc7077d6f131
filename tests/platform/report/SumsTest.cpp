#include "platform/report/Support.h"
#include "runtime/Clock.h"

namespace report::test {

namespace {

class SumsTest : public ReportTest
{
protected:
    SumsTest()
    {
        addOrder(1001, 3);
        addOrder(1002, 2);
        run({u"UPDATE OrdreLinjer SET MvaPst=15, SumNetto=0.1, SumBrutto=0.115 WHERE PosNr=20"_s,
             u"UPDATE OrdreLinjer SET SumBrutto=Null WHERE PosNr=30"_s});
    }

    static QByteArray text(const QByteArray &value)
    {
        return "<text x=\"0\" y=\"0\" width=\"190\" height=\"5\" value=\"" + value + "\"/>";
    }
    static QByteArray grouped(const QByteArray &bands, const QByteArray &detail = {})
    {
        return "<group name=\"Ordre\" on=\"{Ordre.OrdreNr}\">" + bands + "</group>" + detail;
    }
    QStringList textsOfReport(const QByteArray &bands)
    {
        QStringList texts;
        for (const Page &page : made(lineReport(bands)).pages)
            texts += textsOf(page);
        for (QString &text : texts)
            text.replace(u'\u00a0', u' ');
        return texts;
    }
};

} // namespace

TEST_F(SumsTest, SumsAreExactAndLeaveNothingOut)
{
    EXPECT_EQ(textsOfReport("<reportFooter height=\"5\">" +
                            text("ToText(Sum({LinjeBrutto})*1000) &amp; ' ' &amp; "
                                 "Sum({OrdreLinjer.SumNetto})") +
                            "</reportFooter>"),
              QStringList{u"250 230,00 300,20"_s});
}

TEST_F(SumsTest, AReportKnowsWhenItWasMade)
{
    class Afternoon : public Clock
    {
        QDateTime now() const override { return {QDate(2014, 9, 1), QTime(15, 7, 59)}; }
    };
    Afternoon clock;
    const ScopedClock scope(clock);
    EXPECT_EQ(textsOfReport("<reportFooter height=\"5\">" +
                            text("'Laget ' &amp; Today &amp; ' kl. ' &amp; TimeOfDay") +
                            "</reportFooter>"),
              QStringList{u"Laget 01.09.2014 kl. 15:07"_s});
}

TEST_F(SumsTest, ManySmallAmountsAddUpToTheOre)
{
    addOrder(1003, 1000);
    run({u"UPDATE OrdreLinjer SET SumNetto=0.1 WHERE OrdreID=3"_s});
    EXPECT_EQ(textsOfReport("<reportFooter height=\"5\">" +
                            text("if Sum({OrdreLinjer.SumNetto})=400.2 then 'lik' else "
                                 "Sum({OrdreLinjer.SumNetto}) &amp; ''") +
                            "</reportFooter>"),
              QStringList{u"lik"_s});
}

TEST_F(SumsTest, AHeaderKnowsItsGroup)
{
    EXPECT_EQ(textsOfReport(grouped("<header height=\"5\">" +
                                    text("{Ordre.OrdreNr} &amp; ': ' &amp; "
                                         "Sum({OrdreLinjer.SumNetto}) &amp; ' ' &amp; Count()") +
                                    "</header>")),
              (QStringList{u"1001: 200,10 3"_s, u"1002: 100,10 2"_s}));
}

TEST_F(SumsTest, ARowOfEachGroupCountsOnce)
{
    run({u"UPDATE Ordre SET SumBrutto=100.10 WHERE OrdreNr=1001"_s,
         u"UPDATE Ordre SET SumBrutto=-20 WHERE OrdreNr=1002"_s});
    const QByteArray once = "'report', 'Ordre') ";
    EXPECT_EQ(textsOfReport(grouped({}) + "<reportFooter height=\"5\">" +
                            text("Sum({Ordre.SumBrutto}, " + once +
                                 "&amp; ' ' &amp; Count({Ordre.OrdreNr}, " + once +
                                 "&amp; ' ' &amp; Max({Ordre.SumBrutto}, " + once +
                                 "&amp; ' ' &amp; Sum({Ordre.SumBrutto})") +
                            "</reportFooter>"),
              QStringList{u"80,10 2 100,10 260,30"_s});
    EXPECT_EQ(
        textsOfReport(grouped({}, "<detail height=\"5\">" +
                                      text("RunningSum({Ordre.SumBrutto}, " + once) + "</detail>")),
        (QStringList{u"100,10"_s, u"100,10"_s, u"100,10"_s, u"80,10"_s, u"80,10"_s}));
}

TEST_F(SumsTest, EmptyValuesAreNotCounted)
{
    EXPECT_EQ(
        textsOfReport(grouped("<footer height=\"5\">" +
                              text("Count() &amp; ' ' &amp; Count({LinjeBrutto}) &amp; ' ' &amp; "
                                   "Average({LinjeBrutto}) &amp; ' ' &amp; Min({LinjeBrutto}) "
                                   "&amp; ' ' &amp; Max({LinjeBrutto})") +
                              "</footer>")),
        (QStringList{u"3 2 62,56 0,12 125,00"_s, u"2 2 62,56 0,12 125,00"_s}));
}

TEST_F(SumsTest, ExtremesOfDatesAndTexts)
{
    EXPECT_EQ(textsOfReport("<reportFooter height=\"5\">" +
                            text("Min({Ordre.OrdreDato}) &amp; ' ' &amp; "
                                 "Max({OrdreLinjer.ProduktNavn})") +
                            "</reportFooter>"),
              QStringList{u"09.03.2014 Vare 3"_s});
}

TEST_F(SumsTest, RunningSumsFollowTheRow)
{
    EXPECT_EQ(textsOfReport(grouped(
                  {}, "<detail height=\"5\">" +
                          text("RunningCount() &amp; ' ' &amp; RunningSum({OrdreLinjer.SumNetto}) "
                               "&amp; ' ' &amp; RunningSum({OrdreLinjer.SumNetto}, 'report') "
                               "&amp; ' ' &amp; Sum({OrdreLinjer.SumNetto}) &amp; ' ' &amp; "
                               "Sum({OrdreLinjer.SumNetto}, 'report')") +
                          "</detail>")),
              (QStringList{u"1 100,00 100,00 200,10 300,20"_s, u"2 100,10 100,10 200,10 300,20"_s,
                           u"3 200,10 200,10 200,10 300,20"_s, u"1 100,00 300,10 100,10 300,20"_s,
                           u"2 100,10 300,20 100,10 300,20"_s}));
}

TEST_F(SumsTest, ABandForEachValue)
{
    EXPECT_EQ(textsOfReport(grouped("<footer height=\"5\" each=\"{OrdreLinjer.MvaPst}\">" +
                                    text("{Ordre.OrdreNr} &amp; ' ' &amp; {OrdreLinjer.MvaPst} "
                                         "&amp; ' %: ' &amp; Sum({OrdreLinjer.SumNetto}) &amp; "
                                         "' av ' &amp; Sum({OrdreLinjer.SumNetto}, 'Ordre')") +
                                    "</footer>")),
              (QStringList{u"1001 15 %: 0,10 av 200,10"_s, u"1001 25 %: 200,00 av 200,10"_s,
                           u"1002 15 %: 0,10 av 100,10"_s, u"1002 25 %: 100,00 av 100,10"_s}));
}

TEST_F(SumsTest, RunningSumsGoOnFromValueToValue)
{
    EXPECT_EQ(textsOfReport(grouped("<footer height=\"5\" each=\"{OrdreLinjer.PosNr}\">" +
                                    text("{Ordre.OrdreNr} &amp; ' ' &amp; {OrdreLinjer.PosNr} "
                                         "&amp; ': ' &amp; RunningCount() &amp; ' ' &amp; "
                                         "RunningSum({OrdreLinjer.SumNetto})") +
                                    "</footer>")),
              (QStringList{u"1001 10: 1 100,00"_s, u"1001 20: 2 100,10"_s, u"1001 30: 3 200,10"_s,
                           u"1002 10: 1 100,00"_s, u"1002 20: 2 100,10"_s}));
}

TEST_F(SumsTest, AnEmptyValueHasNoBandOfItsOwn)
{
    EXPECT_EQ(textsOfReport("<reportFooter height=\"5\" each=\"if {OrdreLinjer.MvaPst}=15 then "
                            "{OrdreLinjer.MvaPst}\">" +
                            text("{OrdreLinjer.MvaPst} &amp; ' ' &amp; Count()") +
                            "</reportFooter>"),
              QStringList{u"15 2"_s});
}

TEST_F(SumsTest, EachValueIsAskedWhetherItIsShown)
{
    EXPECT_EQ(textsOfReport(grouped("<footer height=\"5\" each=\"{OrdreLinjer.MvaPst}\" "
                                    "visible=\"Sum({OrdreLinjer.SumNetto}) &lt; 100\">" +
                                    text("{Ordre.OrdreNr} &amp; ' ' &amp; {OrdreLinjer.MvaPst}") +
                                    "</footer>")),
              (QStringList{u"1001 15"_s, u"1002 15"_s}));
}

TEST_F(SumsTest, ASumOfWhatAFormulaPicks)
{
    EXPECT_EQ(textsOfReport("<formula name=\"Lav\">if {OrdreLinjer.MvaPst}=15 then "
                            "{OrdreLinjer.SumNetto} else 0</formula><reportFooter height=\"5\">" +
                            text("Sum({@Lav})") + "</reportFooter>"),
              QStringList{u"0,20"_s});
}

TEST_F(SumsTest, OneFormulaServesSeveralBands)
{
    const QByteArray use = text("{@S}");
    EXPECT_EQ(textsOfReport("<formula name=\"S\">Sum({OrdreLinjer.SumNetto})</formula>" +
                            grouped("<footer height=\"5\">" + use + "</footer>") +
                            "<reportFooter height=\"5\">" + use + "</reportFooter>"),
              (QStringList{u"200,10"_s, u"100,10"_s, u"300,20"_s}));
}

} // namespace report::test
