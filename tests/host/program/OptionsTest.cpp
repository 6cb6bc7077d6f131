#include "host/program/HostTest.h"

using namespace Qt::StringLiterals;

namespace {

using OptionsTest = HostTest;

TEST_F(OptionsTest, HelpNamesEachOption)
{
    const Outcome outcome = host({u"--help"_s});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, QString());
    const QString text = QString::fromUtf8(outcome.out);
    for (const QString &option : {u"--dsn KILDE"_s,       u"--kopier FRA TIL"_s, u"--klient NR"_s,
                                  u"--aar ÅR"_s,          u"--demo"_s,           u"--sql SETNING"_s,
                                  u"--ehf NUMMER"_s,      u"--ut FIL"_s,         u"--tur MAPPE"_s,
                                  u"--erstatt"_s,         u"--help"_s,           u"--pdf NUMMER"_s,
                                  u"--pdf-alle MAPPE"_s,  u"--fra DATO"_s,       u"--til DATO"_s,
                                  u"--status STATUS"_s,   u"--kontroll"_s,       u"--ehf3 NUMMER"_s,
                                  u"--ehf3-alle MAPPE"_s, u"--version"_s}) {
        EXPECT_TRUE(text.contains(u"\n  "_s + option + u' ')) << option.toStdString();
    }
    for (const QString &status : {u"0 når"_s, u"1 når"_s, u"2 når"_s, u"3 når"_s, u"130 når"_s})
        EXPECT_TRUE(text.contains(status)) << status.toStdString();
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(OptionsTest, HelpWinsOverWhatStandsBeforeIt)
{
    EXPECT_EQ(host({u"--demo"_s, u"--help"_s}).out, host({u"--help"_s}).out);
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(OptionsTest, HelpHasAShortName)
{
    EXPECT_EQ(host({u"-h"_s}).out, host({u"--help"_s}).out);
}

TEST_F(OptionsTest, TellsItsVersion)
{
    const Outcome outcome = host({u"--version"_s});
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_EQ(outcome.out, "strekkbok-vert " FAKTURA_VERSION "\n");
    EXPECT_TRUE(files().isEmpty());
}

TEST_F(OptionsTest, ValueMayStandBehindAnEqualsSign)
{
    makeDemo();
    const QString query = u"SELECT Navn FROM Klient WHERE KlientNr=1"_s;
    const Outcome apart = host({u"--dsn"_s, u"demo.db"_s, u"--sql"_s, query});
    const Outcome joined = host({u"--dsn=demo.db"_s, u"--sql="_s + query});
    EXPECT_EQ(joined.status, 0) << ::testing::PrintToString(joined);
    EXPECT_EQ(joined.out, apart.out);
    EXPECT_EQ(joined.out, QByteArray("Navn:202\nGråbein Bilfrakt AS\n"));
}

struct Misuse
{
    QStringList arguments;
    QString fragment;
};

void PrintTo(const Misuse &misuse, std::ostream *out)
{
    *out << u"'%1'"_s.arg(misuse.arguments.join(u"' '"_s)).toStdString();
}

class MisuseTest : public HostTest, public ::testing::WithParamInterface<Misuse>
{
};

TEST_P(MisuseTest, IsRefusedWithOneLine)
{
    expectRefusal(host(GetParam().arguments), 2, GetParam().fragment);
    EXPECT_TRUE(files().isEmpty());
}

INSTANTIATE_TEST_SUITE_P(
    All, MisuseTest,
    ::testing::Values(
        Misuse{{u"--ukjent"_s}, u"ukjent valg --ukjent"_s},
        Misuse{{u"--ukjent=1"_s}, u"ukjent valg --ukjent"_s},
        Misuse{{u"fil.db"_s}, u"ukjent valg fil.db"_s}, Misuse{{u"-x"_s}, u"ukjent valg -x"_s},
        Misuse{{u"--to\nlinjer"_s}, u"ukjent valg --to linjer"_s},
        Misuse{{u"--klient"_s, u"1\n2"_s}, u"«1 2»"_s},
        Misuse{{u"--DEMO"_s}, u"ukjent valg --DEMO"_s}, Misuse{{u""_s}, u"ukjent valg"_s},
        Misuse{{u"--dsn"_s}, u"--dsn mangler verdien KILDE"_s},
        Misuse{{u"--dsn"_s, u""_s}, u"--dsn har en tom verdi"_s},
        Misuse{{u"--dsn"_s, u"a.db"_s, u"--dsn"_s, u"b.db"_s}, u"--dsn er gitt to ganger"_s},
        Misuse{{u"--dsn"_s, u"a.db;pwd=x"_s}, u"semikolon"_s},
        Misuse{{u"--demo=ja"_s}, u"--demo tar ingen verdi"_s},
        Misuse{{u"--klient"_s, u"en"_s}, u"--klient må være et heltall"_s},
        Misuse{{u"--klient"_s, u"1.5"_s}, u"--klient må være et heltall"_s},
        Misuse{{u"--klient"_s, u" 5"_s}, u"--klient må være et heltall"_s},
        Misuse{{u"--klient"_s, u"+5"_s}, u"--klient må være et heltall"_s},
        Misuse{{u"--klient"_s, u"32768"_s}, u"fra -32768 til 32767, ikke «32768»"_s},
        Misuse{{u"--klient"_s, u"-32769"_s}, u"fra -32768 til 32767, ikke «-32769»"_s},
        Misuse{{u"--klient"_s, u"99999999999999999999"_s}, u"--klient må være et heltall"_s},
        Misuse{{u"--aar"_s, u"1899"_s}, u"--aar må være et heltall fra 1900 til 9999"_s},
        Misuse{{u"--aar"_s, u"10000"_s}, u"--aar må være et heltall fra 1900 til 9999"_s},
        Misuse{{u"--ehf"_s, u"0"_s, u"--ut"_s, u"x.xml"_s}, u"--ehf må være et heltall fra 1"_s},
        Misuse{{u"--ehf"_s, u"1 OR 1=1"_s, u"--ut"_s, u"x.xml"_s}, u"--ehf må være et heltall"_s},
        Misuse{{u"--ehf"_s, u"2147483648"_s, u"--ut"_s, u"x.xml"_s}, u"--ehf må være et heltall"_s},
        Misuse{{u"--ehf"_s, u"1001"_s}, u"--ehf og --ut må gis sammen"_s},
        Misuse{{u"--ut"_s, u"x.xml"_s}, u"--ut gjelder bare --ehf, --ehf3 og --pdf"_s},
        Misuse{{u"--demo"_s, u"--ut"_s, u"x.xml"_s}, u"--ut gjelder bare --ehf, --ehf3 og --pdf"_s},
        Misuse{{u"--demo"_s, u"--sql"_s, u"SELECT 1"_s}, u"bare ett av valgene"_s},
        Misuse{{u"--sql"_s, u"x"_s, u"--ehf"_s, u"1"_s}, u"bare ett av valgene"_s},
        Misuse{{u"--kopier"_s}, u"--kopier mangler verdien FRA TIL"_s},
        Misuse{{u"--kopier"_s, u"a.db"_s}, u"--kopier mangler verdien TIL"_s},
        Misuse{{u"--kopier"_s, u"a.db"_s, u""_s}, u"--kopier mangler verdien TIL"_s},
        Misuse{{u"--kopier"_s, u"a.db"_s, u"b.db"_s, u"c.db"_s}, u"ukjent valg c.db"_s},
        Misuse{{u"--kopier"_s, u"a.db"_s, u"b.db"_s, u"--demo"_s}, u"bare ett av valgene"_s},
        Misuse{{u"--kopier"_s, u"a.db"_s, u"b.db"_s, u"--dsn"_s, u"c.db"_s}, u"uten --dsn"_s},
        Misuse{{u"--kopier"_s, u"a.db"_s, u"b.db"_s, u"--erstatt"_s}, u"--erstatt gjelder bare"_s},
        Misuse{{u"--kopier"_s, u"a.db;x"_s, u"b.db"_s}, u"semikolon"_s},
        Misuse{{u"--tur"_s}, u"--tur mangler verdien MAPPE"_s},
        Misuse{{u"--tur"_s, u"x"_s, u"--dsn"_s, u"c.db"_s}, u"uten --dsn"_s},
        Misuse{{u"--tur"_s, u"x"_s, u"--demo"_s}, u"bare ett av valgene"_s},
        Misuse{{u"--tur"_s, u"x"_s, u"--erstatt"_s}, u"--erstatt gjelder bare"_s},
        Misuse{{u"--erstatt"_s, u"--sql"_s, u"x"_s}, u"--erstatt gjelder bare"_s},
        Misuse{{u"--erstatt"_s, u"--demo"_s}, u"--erstatt gjelder bare"_s},
        Misuse{{u"--pdf"_s, u"0"_s, u"--ut"_s, u"x.pdf"_s}, u"--pdf må være et heltall fra 1"_s},
        Misuse{{u"--pdf"_s, u"1001"_s}, u"--pdf og --ut må gis sammen"_s},
        Misuse{{u"--pdf-alle"_s, u"x"_s, u"--fra"_s, u"0099-12-31"_s},
               u"--fra må være en dato som 2026-01-31"_s},
        Misuse{{u"--pdf-alle"_s, u"x"_s, u"--ut"_s, u"x.pdf"_s},
               u"--ut gjelder bare --ehf, --ehf3 og --pdf"_s},
        Misuse{{u"--pdf-alle"_s, u"x"_s, u"--fra"_s, u"31.12.2014"_s}, u"--fra må være en dato"_s},
        Misuse{{u"--pdf-alle"_s, u"x"_s, u"--til"_s, u"2014-02-30"_s}, u"--til må være en dato"_s},
        Misuse{{u"--pdf-alle"_s, u"x"_s, u"--fra"_s, u"2014-02-02"_s, u"--til"_s, u"2014-02-01"_s},
               u"--fra er senere enn --til"_s},
        Misuse{{u"--pdf-alle"_s, u"x"_s, u"--status"_s, u"bokført"_s}, u"--status må være Ordre"_s},
        Misuse{{u"--demo"_s, u"--fra"_s, u"2014-02-02"_s}, u"--fra gjelder bare --pdf-alle"_s},
        Misuse{{u"--demo"_s, u"--status"_s, u"Ordre"_s}, u"--status gjelder bare --pdf-alle"_s},
        Misuse{{u"--ehf3"_s, u"0"_s, u"--ut"_s, u"x.xml"_s}, u"--ehf3 må være et heltall fra 1"_s},
        Misuse{{u"--ehf3"_s, u"1001"_s}, u"--ehf3 og --ut må gis sammen"_s},
        Misuse{{u"--ehf3"_s, u"1"_s, u"--ehf"_s, u"1"_s, u"--ut"_s, u"x"_s}, u"bare ett av"_s},
        Misuse{{u"--ehf3-alle"_s}, u"--ehf3-alle mangler verdien MAPPE"_s},
        Misuse{{u"--ehf3-alle"_s, u"x"_s, u"--ut"_s, u"x.xml"_s},
               u"--ut gjelder bare --ehf, --ehf3 og --pdf"_s},
        Misuse{{u"--ehf3-alle"_s, u"x"_s, u"--status"_s, u"Sendt"_s}, u"--status må være Ordre"_s},
        Misuse{{u"--ehf3-alle"_s, u"x"_s, u"--fra"_s, u"2014-02-02"_s, u"--til"_s, u"2014-02-01"_s},
               u"--fra er senere enn --til"_s},
        Misuse{{u"--ehf3"_s, u"1"_s, u"--ut"_s, u"x.xml"_s, u"--fra"_s, u"2014-02-02"_s},
               u"--fra gjelder bare --pdf-alle og --ehf3-alle"_s}));

} // namespace
