#include "host/program/HostTest.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

class TourTest : public HostTest
{
protected:
    [[nodiscard]] QString demoFile(const QString &name) const { return u"demo-ut/"_s + name; }
    [[nodiscard]] QStringList demoFiles() const
    {
        return QDir(path(u"demo-ut"_s)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    /// Runs the program in that folder without a task; the lines that it prints.
    QStringList tour(const QStringList &options = {}, const QString &locale = {}) const
    {
        const Outcome outcome = host(options, locale);
        EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
        EXPECT_EQ(outcome.err, QString());
        return QString::fromUtf8(outcome.out).split(u'\n');
    }
    static bool hasLine(const QStringList &lines, const QString &start, const QString &end)
    {
        return std::any_of(lines.begin(), lines.end(), [&](const QString &line) {
            return line.startsWith(start) && line.endsWith(end);
        });
    }
};

TEST_F(TourTest, MakesStartsAndWrites)
{
    const QStringList lines = tour({u"--aar"_s, u"2014"_s});
    EXPECT_TRUE(hasLine(lines, u"Foreldreprogrammets tabeller"_s, path(u"demo-ut/strekkbok.db"_s)));
    EXPECT_TRUE(hasLine(lines, u"Modulen er startet for klient 1, år 2014"_s, u"ModuleInit 1"_s));
    EXPECT_TRUE(hasLine(lines, u"EHF skrevet: "_s, u"Faktura-1052.xml"_s));
    EXPECT_TRUE(hasLine(lines, u"EHF skrevet: "_s, u"Kreditnota-1045.xml"_s));
    EXPECT_TRUE(hasLine(lines, u"EHF 3.0 skrevet: "_s, u"Faktura-1052-EHF3.xml"_s));
    EXPECT_TRUE(hasLine(lines, u"EHF 3.0 skrevet: "_s, u"Kreditnota-1045-EHF3.xml"_s));
    EXPECT_TRUE(hasLine(lines, u"Prøv videre"_s, QString()));
    EXPECT_TRUE(hasLine(lines, u"  --ehf 1052 --ut"_s, u"faktura.xml"_s)); // what was just written
    EXPECT_EQ(demoFiles(), (QStringList{u"Faktura-1052-EHF3.xml"_s, u"Faktura-1052.xml"_s,
                                        u"Kreditnota-1045-EHF3.xml"_s, u"Kreditnota-1045.xml"_s,
                                        u"strekkbok.db"_s}));
    EXPECT_TRUE(content(demoFile(u"Faktura-1052.xml"_s)).endsWith("</Invoice>\r\n"));
    EXPECT_TRUE(content(demoFile(u"Kreditnota-1045.xml"_s)).endsWith("</CreditNote>\r\n"));
}

TEST_F(TourTest, SecondRunUsesWhatIsThere)
{
    tour({u"--aar"_s, u"2014"_s});
    const QByteArray invoice = content(demoFile(u"Faktura-1052.xml"_s));
    const QStringList lines = tour({u"--aar"_s, u"2014"_s});
    EXPECT_TRUE(hasLine(lines, u"Databasen finnes fra før og brukes: "_s, u"strekkbok.db"_s));
    EXPECT_TRUE(hasLine(lines, u"Modulen er startet"_s, u"ModuleInit 1"_s));
    EXPECT_TRUE(hasLine(lines, u"EHF finnes fra før, uendret: "_s, u"Faktura-1052.xml"_s));
    EXPECT_TRUE(hasLine(lines, u"EHF finnes fra før, uendret: "_s, u"Kreditnota-1045.xml"_s));
    EXPECT_EQ(content(demoFile(u"Faktura-1052.xml"_s)), invoice);
    EXPECT_TRUE(hasLine(lines, u"EHF 3.0 finnes fra før, uendret: "_s, u"Faktura-1052-EHF3.xml"_s));
}

TEST_F(TourTest, WhatIsMissingForEhf3IsToldAndStopsNothing)
{
    tour({u"--aar"_s, u"2014"_s});
    EXPECT_EQ(host({u"--sql"_s, u"UPDATE KundeLev SET OrganisasjonsNr=''"_s}).status, 0);
    QFile::remove(path(demoFile(u"Faktura-1052-EHF3.xml"_s)));
    const QStringList lines = tour();
    EXPECT_TRUE(hasLine(lines, u"EHF 3.0: ordre 1052 ble ikke skrevet: Kunden "_s, QString()));
    EXPECT_TRUE(hasLine(lines, u"Prøv videre"_s, QString()));
    EXPECT_FALSE(demoFiles().contains(u"Faktura-1052-EHF3.xml"_s));
}

TEST_F(TourTest, ChangedFileIsReplacedOnlyWhenAskedFor)
{
    tour({u"--aar"_s, u"2014"_s});
    const QString name = demoFile(u"Faktura-1052.xml"_s);
    const QByteArray invoice = content(name);
    write(name, "min egen");
    EXPECT_TRUE(hasLine(tour(), u"EHF finnes fra før med annet innhold"_s, u"Faktura-1052.xml"_s));
    EXPECT_EQ(content(name), QByteArray("min egen"));
    EXPECT_TRUE(hasLine(tour({u"--erstatt"_s}), u"EHF skrevet: "_s, u"Faktura-1052.xml"_s));
    EXPECT_EQ(content(name), invoice);
}

TEST_F(TourTest, EnvironmentThatSaysNothingIsEnough)
{
    EXPECT_TRUE(hasLine(tour({}, u"C"_s), u"EHF skrevet: "_s, u"Faktura-1052.xml"_s));
    EXPECT_TRUE(
        hasLine(tour({}, u"POSIX"_s), u"EHF finnes fra før, uendret: "_s, u"Faktura-1052.xml"_s));
}

TEST_F(TourTest, DatabaseWithoutInvoicesIsTold)
{
    tour({u"--aar"_s, u"2014"_s});
    const QStringList lines = tour({u"--klient"_s, u"9"_s});
    EXPECT_TRUE(hasLine(lines, u"Ingen fakturert faktura"_s, QString()));
    EXPECT_TRUE(hasLine(lines, u"Ingen fakturert kreditnota"_s, QString()));
    EXPECT_FALSE(hasLine(lines, u"  --ehf"_s, QString()));
}

TEST_F(TourTest, ForeignFileInTheDatabasesPlaceIsTold)
{
    QDir(path(QString())).mkdir(u"demo-ut"_s);
    write(demoFile(u"strekkbok.db"_s), QByteArray("dette er et brev\n").repeated(100));
    const Outcome outcome = host({});
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.contains(u"ModuleInit 0"_s)) << outcome.err.toStdString();
}

} // namespace
