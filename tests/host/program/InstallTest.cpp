#include "host/program/HostTest.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>

using namespace Qt::StringLiterals;

namespace {

/// The installed tree, laid into a folder with blanks in its name, and nothing of the build's.
class InstallTest : public HostTest
{
protected:
    InstallTest()
    {
        const Outcome outcome =
            start(QStringLiteral(CMAKE_PROGRAM),
                  {u"--install"_s, QStringLiteral(BUILD_FOLDER), u"--prefix"_s, path(u"tre"_s)});
        EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
        // As for a user who has set up nothing.
        const QString home = path(u"hjem"_s);
        EXPECT_TRUE(QDir().mkpath(home));
        environment = QProcessEnvironment();
        environment.insert(u"HOME"_s, home);
        environment.insert(u"LC_ALL"_s, u"C.UTF-8"_s);
    }
    [[nodiscard]] QString tree(const QString &name) const { return path(u"tre/"_s + name); }
    [[nodiscard]] Outcome installed(const QStringList &arguments) const
    {
        return start(tree(u"bin/strekkbok-vert"_s), arguments);
    }
    /// The source of the host's page, without its backslashes.
    [[nodiscard]] QString manPage() const
    {
        const QString page = tree(u"share/man/nb/man1/strekkbok-vert.1.gz"_s);
        const Outcome unpacked = start(u"/bin/gzip"_s, {u"-dc"_s, page});
        EXPECT_EQ(unpacked.status, 0) << ::testing::PrintToString(unpacked);
        return QString::fromUtf8(unpacked.out).remove(u'\\');
    }
    static QByteArray read(const QString &name)
    {
        QFile file(name);
        EXPECT_TRUE(file.open(QIODevice::ReadOnly)) << name.toStdString();
        return file.readAll();
    }
};

TEST_F(InstallTest, TheTreeMayBeMovedAndDoesItsWorkThere)
{
    ASSERT_TRUE(QDir().rename(path(u"tre"_s), path(u"flyttet"_s)));
    // Called by its name alone, as from a terminal, which finds the link.
    const auto host = [&](const QString &arguments) {
        environment.insert(u"PATH"_s, path(u"flyttet/bin"_s));
        return start(u"/bin/sh"_s, {u"-c"_s, u"strekkbok-vert "_s + arguments});
    };
    const Outcome demo = host(u"--demo --dsn firma.db"_s);
    EXPECT_EQ(demo.status, 0) << ::testing::PrintToString(demo);
    const Outcome pdf = host(u"--dsn firma.db --pdf 1052 --ut f.pdf"_s);
    EXPECT_EQ(pdf.status, 0) << ::testing::PrintToString(pdf);
    EXPECT_TRUE(content(u"f.pdf"_s).startsWith("%PDF-"));
}

TEST_F(InstallTest, TheHelpIsFoundFromTheScreens)
{
    const Outcome outcome = installed({u"--tur"_s, u"tur"_s});
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_TRUE(outcome.out.contains("F1 viser hjelpen")) << outcome.out.toStdString();
    EXPECT_TRUE(outcome.out.contains("Turen er ferdig.")) << outcome.out.toStdString();
}

TEST_F(InstallTest, OneVersionStandsEverywhere)
{
    const QByteArray version = FAKTURA_VERSION;
    EXPECT_EQ(installed({u"--version"_s}).out, "strekkbok-vert " + version + '\n');
    const QString documents = u"share/doc/regningsdel/"_s;
    EXPECT_TRUE(read(tree(documents + u"CHANGELOG.md"_s)).contains("\n## " + version + ' '));
    EXPECT_TRUE(read(tree(documents + u"regningsdel.spdx.json"_s))
                    .contains("\"versionInfo\": \"" + version + '"'));
    EXPECT_TRUE(read(tree(u"share/metainfo/no.strekkbok.regningsdel.metainfo.xml"_s))
                    .contains("<release version=\"" + version + '"'));
}

TEST_F(InstallTest, TheListOfWhatItIsMadeOfHolds)
{
    const QJsonObject list =
        QJsonDocument::fromJson(read(tree(u"share/doc/regningsdel/regningsdel.spdx.json"_s)))
            .object();
    QStringList ids{u"SPDXRef-DOCUMENT"_s};
    for (const QJsonValue &package : list[u"packages"_s].toArray()) {
        ids += package[u"SPDXID"_s].toString();
        EXPECT_FALSE(package[u"versionInfo"_s].toString().isEmpty()) << ids.last().toStdString();
        // Where it is not told, each file would have to be listed.
        EXPECT_EQ(package[u"filesAnalyzed"_s], QJsonValue(false)) << ids.last().toStdString();
    }
    EXPECT_GT(ids.size(), 5);
    for (const QJsonValue &relationship : list[u"relationships"_s].toArray()) {
        EXPECT_TRUE(ids.contains(relationship[u"spdxElementId"_s].toString()));
        EXPECT_TRUE(ids.contains(relationship[u"relatedSpdxElement"_s].toString()));
    }
}

TEST_F(InstallTest, TheManPageIsFoundInAnyLanguage)
{
    EXPECT_EQ(read(tree(u"share/man/man1/strekkbok-vert.1.gz"_s)),
              read(tree(u"share/man/nb/man1/strekkbok-vert.1.gz"_s)));
}

TEST_F(InstallTest, TheManPageTellsTheHostsOptions)
{
    const QString text = manPage();
    const QString help = QString::fromUtf8(installed({u"--help"_s}).out);
    const QRegularExpression option(u"^  --[a-z].*$"_s, QRegularExpression::MultilineOption);
    int options = 0;
    for (const QRegularExpressionMatch &match : option.globalMatch(help)) {
        EXPECT_TRUE(text.contains(match.captured())) << match.captured().toStdString();
        ++options;
    }
    EXPECT_GT(options, 15);
}

TEST_F(InstallTest, TheManPagesExamplesRunOneAfterTheOther)
{
    environment.insert(u"PATH"_s, tree(u"bin"_s) + u":/bin"_s);
    const QStringList examples =
        manPage().section(u"EKSEMPLER\n.nf\n"_s, 1).section(u"\n.fi"_s, 0, 0).split(u'\n');
    EXPECT_GT(examples.size(), 2);
    for (const QString &example : examples) {
        const Outcome outcome = start(u"/bin/sh"_s, {u"-c"_s, example});
        EXPECT_EQ(outcome.status, 0) << example.toStdString() << '\n'
                                     << ::testing::PrintToString(outcome);
    }
}

TEST_F(InstallTest, LibrariesAreNotLookedForInTheBuild)
{
    for (const QString &name : {u"strekkbok-vert"_s, u"libFaktura.so"_s}) {
        const QString file = tree(u"lib/regningsdel/bin/"_s + name);
        const Outcome told = start(u"/usr/bin/readelf"_s, {u"-d"_s, file});
        EXPECT_TRUE(told.out.contains("NEEDED")) << ::testing::PrintToString(told);
        EXPECT_FALSE(told.out.contains("PATH")) << ::testing::PrintToString(told);
    }
}

} // namespace
