#include "host/program/HostTest.h"

#include <QDir>
#include <QFile>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

class ScreenTourTest : public HostTest
{
protected:
    [[nodiscard]] Outcome tour() const
    {
        return host({u"--tur"_s, path(u"tur"_s), u"--aar"_s, u"2014"_s});
    }
    [[nodiscard]] QStringList pictures() const
    {
        return QDir(path(u"tur"_s)).entryList({u"*.png"_s}, QDir::Files, QDir::Name);
    }
};

/// The pictures in the order of the tour.
QStringList expectedPictures()
{
    QStringList names{u"hovedmeny"_s,
                      u"produkt-oversikt"_s,
                      u"produkt-detaljer"_s,
                      u"ordre-visning"_s,
                      u"kunder"_s,
                      u"ordre-ny"_s,
                      u"ordre-lagret"_s,
                      u"kreditnota"_s,
                      u"utskrift"_s,
                      u"forhandsvisning"_s,
                      u"faktura"_s,
                      u"utskrift-ehf"_s,
                      u"oversikt"_s,
                      u"kreditnota-utskrift"_s,
                      u"kreditnota-papir"_s,
                      u"ordreskriv"_s,
                      u"ordreliste"_s,
                      u"purreliste"_s,
                      u"bokfor"_s,
                      u"bokfort"_s,
                      u"bilag"_s,
                      u"fakturajournal"_s,
                      u"salgsjournal"_s,
                      u"innstillinger-kid"_s,
                      u"innstillinger-logo"_s,
                      u"innstillinger-faktura"_s,
                      u"kalkyle"_s,
                      u"melding"_s,
                      u"hjelp"_s,
                      u"hjelp-sok"_s};
    for (qsizetype i = 0; i < names.size(); ++i)
        names[i] = u"%1-%2.png"_s.arg(i + 1, 2, 10, QChar(u'0')).arg(names[i]);
    return names;
}

TEST_F(ScreenTourTest, LeavesNumberedPicturesAndTheDatabase)
{
    const Outcome outcome = tour();
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_EQ(outcome.err, QString());
    const QStringList expected = expectedPictures();
    EXPECT_EQ(pictures(), expected);
    const QString told = QString::fromUtf8(outcome.out);
    for (qsizetype i = 0; i < expected.size(); ++i) {
        const QByteArray picture = content(u"tur/"_s + expected[i]);
        EXPECT_TRUE(picture.startsWith("\x89PNG")) << expected[i].toStdString();
        EXPECT_GT(picture.size(), 1000) << expected[i].toStdString();
        EXPECT_TRUE(told.contains(path(u"tur/"_s + expected[i]))) << told.toStdString();
        EXPECT_TRUE(told.contains(u"\n%1. "_s.arg(i + 1))) << told.toStdString();
    }
    for (const QString &name : {u"Faktura"_s, u"Kreditnota"_s, u"Ordreliste"_s, u"Purreliste"_s,
                                u"Fakturajournal"_s, u"Salgsjournal"_s})
        EXPECT_TRUE(content(u"tur/%1.pdf"_s.arg(name)).startsWith("%PDF")) << name.toStdString();
    for (const QString &name : {u"Faktura"_s, u"Faktura-EHF3"_s})
        EXPECT_TRUE(content(u"tur/%1.xml"_s.arg(name)).contains("<cbc:ID>1061</cbc:ID>"));
    for (const QString &name : {u"Kreditnota"_s, u"Kreditnota-EHF3"_s})
        EXPECT_TRUE(content(u"tur/%1.xml"_s.arg(name)).contains("<cbc:ID>1045</cbc:ID>"));
    // The customer's number is a part of the KID, so it was made after the pick.
    const Outcome invoice = host({u"--dsn"_s, path(u"tur/demo.db"_s), u"--sql"_s,
                                  u"SELECT KID FROM Ordre WHERE KlientNr=1 AND OrdreNr=1061"_s});
    EXPECT_EQ(invoice.out.split('\n').value(1), "0100010010617");
    const Outcome count = host({u"--dsn"_s, path(u"tur/demo.db"_s), u"--sql"_s,
                                u"SELECT COUNT (*) AS Antall FROM Ordre WHERE KlientNr=1"_s});
    EXPECT_EQ(count.out.split('\n').value(1).toInt(), 61);
}

TEST_F(ScreenTourTest, GoesOnAMachineThatWritesTheMonthFirst)
{
    const Outcome outcome =
        host({u"--tur"_s, path(u"tur"_s), u"--aar"_s, u"2014"_s}, u"en_US.UTF-8"_s);
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
}

TEST_F(ScreenTourTest, ItsPageLeadsToAllThatItLeaves)
{
    ASSERT_EQ(tour().status, 0);
    const QString page = QString::fromUtf8(content(u"tur/index.html"_s));
    static const QRegularExpression link(u"(?:src|href)=\"([^\"]+)\""_s);
    QStringList linked;
    for (const QRegularExpressionMatch &match : link.globalMatch(page))
        linked += match.captured(1);
    linked.sort();
    EXPECT_EQ(linked,
              QDir(path(u"tur"_s))
                  .entryList({u"*.png"_s, u"*.pdf"_s, u"*.xml"_s}, QDir::Files, QDir::Name));
    EXPECT_TRUE(page.contains(u"<figcaption>6. En ny ordre med kunde, KID og tre linjer<"_s));
    // The tour's invoice in the ledger, from the database itself.
    const QList<QByteArray> voucher =
        host({u"--dsn"_s, path(u"tur/demo.db"_s), u"--sql"_s,
              u"SELECT B.BilagNr,L.Konto FROM Bilag B INNER JOIN BilagLinjer L ON B.ID=L.BilagID "
              u"ORDER BY B.ID DESC,L.ID"_s})
            .out.split('\n')
            .value(1)
            .split('\t');
    EXPECT_TRUE(page.contains(u"<tr><td>%1</td><td>%2</td>"_s.arg(
        QString::fromLatin1(voucher.value(0)), QString::fromLatin1(voucher.value(1)))));
}

TEST_F(ScreenTourTest, ASecondTourUsesTheDatabase)
{
    EXPECT_EQ(tour().status, 0);
    QFile::remove(path(u"tur/30-hjelp-sok.png"_s));
    const Outcome second = tour();
    EXPECT_EQ(second.status, 0) << ::testing::PrintToString(second);
    EXPECT_TRUE(QString::fromUtf8(second.out).contains(u"Databasen finnes fra før og brukes"_s));
    EXPECT_EQ(pictures(), expectedPictures());
}

TEST_F(ScreenTourTest, LeavesTheUsersSettingsAlone)
{
    environment.insert(u"XDG_CONFIG_HOME"_s, path(u"brukerens"_s));
    EXPECT_EQ(tour().status, 0);
    EXPECT_EQ(files(), QStringList{u"tur"_s});
}

TEST_F(ScreenTourTest, AFileInTheFoldersPlaceIsTold)
{
    write(u"tur"_s, "et brev");
    expectRefusal(tour(), 1, u"lot seg ikke lage"_s);
}

TEST_F(ScreenTourTest, AForeignDatabaseIsToldAndKept)
{
    QDir(path(QString())).mkdir(u"tur"_s);
    const QByteArray letter = QByteArray("dette er et brev\n").repeated(100);
    write(u"tur/demo.db"_s, letter);
    const Outcome outcome = tour();
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.contains(u"ModuleInit 0"_s)) << outcome.err.toStdString();
    EXPECT_EQ(content(u"tur/demo.db"_s), letter);
    EXPECT_TRUE(pictures().isEmpty());
}

} // namespace
