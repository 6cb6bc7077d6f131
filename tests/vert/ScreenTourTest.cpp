#include "vert/HostTest.h"

#include <QDir>
#include <QFile>

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

const QStringList kPictures{u"01-hovedmeny.png"_s, u"02-hjelp.png"_s, u"03-melding.png"_s};

TEST_F(ScreenTourTest, LeavesNumberedPicturesAndTheDatabase)
{
    const Outcome outcome = tour();
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_EQ(outcome.err, QString());
    EXPECT_EQ(pictures(), kPictures);
    const QString told = QString::fromUtf8(outcome.out);
    for (qsizetype i = 0; i < kPictures.size(); ++i) {
        const QByteArray picture = content(u"tur/"_s + kPictures[i]);
        EXPECT_TRUE(picture.startsWith("\x89PNG")) << kPictures[i].toStdString();
        EXPECT_GT(picture.size(), 1000) << kPictures[i].toStdString();
        EXPECT_TRUE(told.contains(path(u"tur/"_s + kPictures[i]))) << told.toStdString();
        EXPECT_TRUE(told.contains(u"\n%1. "_s.arg(i + 1))) << told.toStdString();
    }
    const Outcome count = host({u"--dsn"_s, path(u"tur/demo.db"_s), u"--sql"_s,
                                u"SELECT COUNT (*) AS Antall FROM Ordre WHERE KlientNr=1"_s});
    EXPECT_EQ(count.out.split('\n').value(1).toInt(), 60);
}

TEST_F(ScreenTourTest, ASecondTourUsesTheDatabase)
{
    EXPECT_EQ(tour().status, 0);
    QFile::remove(path(u"tur/02-hjelp.png"_s));
    const Outcome second = tour();
    EXPECT_EQ(second.status, 0) << ::testing::PrintToString(second);
    EXPECT_TRUE(QString::fromUtf8(second.out).contains(u"Databasen finnes fra før og brukes"_s));
    EXPECT_EQ(pictures(), kPictures);
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
