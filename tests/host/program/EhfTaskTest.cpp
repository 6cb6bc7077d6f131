#include "host/program/HostTest.h"
#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>
#include <sys/stat.h>

using namespace Qt::StringLiterals;

namespace {

class EhfTaskTest : public HostTest
{
protected:
    void SetUp() override { makeDemo(); }

    [[nodiscard]] Outcome ehf(const QString &number, const QString &target,
                              const QStringList &more = {}) const
    {
        return host(QStringList{u"--dsn"_s, u"demo.db"_s, u"--ehf"_s, number, u"--ut"_s, target} +
                    more);
    }

    /// What is in the folder, with links as such, also those that lead nowhere.
    [[nodiscard]] QStringList links() const
    {
        return QDir(path(QString()))
            .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }

    /// Four lines ended by CR LF, 7-bit, and XML that a parser accepts.
    void expectDocument(const QString &name) const
    {
        const QByteArray bytes = content(name);
        EXPECT_EQ(bytes.count("\r\n"), 4) << name.toStdString();
        EXPECT_EQ(bytes.count('\r'), 4) << name.toStdString();
        EXPECT_TRUE(bytes.endsWith("\r\n"));
        EXPECT_TRUE(std::all_of(bytes.begin(), bytes.end(), [](char c) { return c > 0; }));
        const Outcome parsed = start(u"xmllint"_s, {u"--nonet"_s, u"--noout"_s, path(name)});
        EXPECT_EQ(parsed.status, 0) << ::testing::PrintToString(parsed);
    }
};

TEST_F(EhfTaskTest, InvoiceBecomesAFile)
{
    const Outcome outcome = ehf(u"1048"_s, u"faktura.xml"_s);
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_EQ(outcome.out, QByteArray("EHF skrevet: faktura.xml\n"));
    expectDocument(u"faktura.xml"_s);
    const QByteArray bytes = content(u"faktura.xml"_s);
    EXPECT_TRUE(bytes.contains("href='EHF-faktura_sm&#x00E5;.xslt'"));
    EXPECT_TRUE(bytes.contains("\n<Invoice "));
    EXPECT_TRUE(bytes.endsWith("</Invoice>\r\n"));
    EXPECT_TRUE(bytes.contains("<cbc:ID>1048</cbc:ID>"));
    const QString amount = single(u"SELECT SumBrutto FROM Ordre WHERE OrdreNr=1048"_s);
    EXPECT_TRUE(bytes.contains("<cbc:PayableAmount currencyID=\"NOK\">" + amount.toLatin1() + '<'));
}

TEST_F(EhfTaskTest, AFullDiskIsToldAndLeavesTheFormerFile)
{
    // While somebody has the database open the host makes no file beside it.
    ado::Connection other;
    other.open(u"dsn="_s + path(u"demo.db"_s));
    static_cast<void>(other.openSchema(ado::SchemaList::Columns));
    write(u"faktura.xml"_s, "fra i fjor");
    const QStringList before = links();
    const Outcome outcome = start(
        u"/bin/sh"_s, {u"-c"_s,
                       u"trap '' XFSZ; ulimit -f 8; exec \"$0\" --dsn demo.db --ehf 1048 --ut "
                       u"faktura.xml --erstatt"_s,
                       programFile()});
    expectRefusal(outcome, 1, u"lot seg ikke skrive"_s);
    EXPECT_EQ(content(u"faktura.xml"_s), "fra i fjor");
    EXPECT_EQ(links(), before);
}

TEST_F(EhfTaskTest, NegativeSumBecomesACreditNote)
{
    const QString number =
        single(u"SELECT Max(OrdreNr) FROM Ordre WHERE SumBrutto<0 AND OrdreStatus='Fakturert'"_s);
    EXPECT_EQ(ehf(number, u"kreditnota.xml"_s).status, 0);
    expectDocument(u"kreditnota.xml"_s);
    const QByteArray bytes = content(u"kreditnota.xml"_s);
    EXPECT_TRUE(bytes.contains("href='EHF-kreditnota_sm&#x00E5;.xslt'"));
    EXPECT_TRUE(bytes.contains("\n<CreditNote "));
    EXPECT_TRUE(bytes.endsWith("</CreditNote>\r\n"));
}

TEST_F(EhfTaskTest, EveryDemoOrderHasADocument)
{
    for (int number = 1001; number <= 1060; number += 7) {
        const QString name = u"%1.xml"_s.arg(number);
        EXPECT_EQ(ehf(QString::number(number), name).status, 0) << number;
        expectDocument(name);
    }
}

TEST_F(EhfTaskTest, StatusStays)
{
    EXPECT_EQ(ehf(u"1058"_s, u"x.xml"_s).status, 0);
    EXPECT_EQ(single(u"SELECT OrdreStatus FROM Ordre WHERE OrdreNr=1058"_s), u"Ordre"_s);
}

TEST_F(EhfTaskTest, UnknownNumberIsTold)
{
    expectRefusal(ehf(u"99"_s, u"x.xml"_s), 1, u"ordre 99 finnes ikke for klient 1"_s);
    expectRefusal(ehf(u"1048"_s, u"x.xml"_s, {u"--klient"_s, u"2"_s}), 1,
                  u"ordre 1048 finnes ikke for klient 2"_s);
    EXPECT_EQ(files(), QStringList{u"demo.db"_s});
}

TEST_F(EhfTaskTest, ExistingFileIsReplacedOnlyWhenAskedFor)
{
    write(u"x.xml"_s, "eldre");
    expectRefusal(ehf(u"1048"_s, u"x.xml"_s), 1, u"x.xml finnes fra før"_s);
    EXPECT_EQ(content(u"x.xml"_s), QByteArray("eldre"));
    EXPECT_EQ(ehf(u"1048"_s, u"x.xml"_s, {u"--erstatt"_s}).status, 0);
    expectDocument(u"x.xml"_s);
}

TEST_F(EhfTaskTest, DatabaseIsNoTarget)
{
    for (const QStringView name : {u"demo.db", u"demo.db-wal", u"demo.db-shm", u"demo.db-journal"})
        expectRefusal(ehf(u"1048"_s, name.toString(), {u"--erstatt"_s}), 1,
                      u"hører til databasen"_s);
    EXPECT_EQ(files(), QStringList{u"demo.db"_s});
}

TEST_F(EhfTaskTest, DocumentThatCannotBeComposedLeavesTheOlderFile)
{
    change(u"UPDATE Ordre SET DeresRef=Null WHERE OrdreNr=1048"_s);
    write(u"x.xml"_s, "eldre");
    expectRefusal(ehf(u"1048"_s, u"x.xml"_s, {u"--erstatt"_s}), 1, u"94 - "_s);
    EXPECT_EQ(content(u"x.xml"_s), QByteArray("eldre"));
    expectRefusal(ehf(u"1048"_s, u"ny.xml"_s), 1, u"dokumentet til ordre 1048"_s);
    EXPECT_EQ(files(), (QStringList{u"demo.db"_s, u"x.xml"_s}));
}

TEST_F(EhfTaskTest, UnwritableTargetIsTold)
{
    expectRefusal(ehf(u"1048"_s, u"mangler/x.xml"_s), 1, u"mappen mangler finnes ikke"_s);
    QDir(path(QString())).mkdir(u"mappe"_s);
    expectRefusal(ehf(u"1048"_s, u"mappe"_s, {u"--erstatt"_s}), 1, u"mappe er ingen vanlig fil"_s);
    EXPECT_TRUE(QDir(path(u"mappe"_s)).isEmpty());
    // No user may make a file here.
    expectRefusal(ehf(u"1048"_s, u"/proc/x.xml"_s), 1, u"/proc/x.xml lot seg ikke skrive"_s);
    EXPECT_EQ(files(), (QStringList{u"demo.db"_s, u"mappe"_s}));
}

TEST_F(EhfTaskTest, NameOfSeveralLinesIsToldInOne)
{
    write(u"to\nlinjer.xml"_s, "eldre");
    expectRefusal(ehf(u"1048"_s, u"to\nlinjer.xml"_s), 1, u"to linjer.xml finnes fra før"_s);
    expectRefusal(ehf(u"1048"_s, u"\r\n\u001b\u2028/x.xml"_s), 1, u"mappen      finnes ikke"_s);
}

TEST_F(EhfTaskTest, PipeIsNoTarget)
{
    ASSERT_EQ(::mkfifo(path(u"rør"_s).toUtf8().constData(), 0600), 0);
    expectRefusal(ehf(u"1048"_s, u"rør"_s, {u"--erstatt"_s}), 1, u"rør er ingen vanlig fil"_s);
    EXPECT_FALSE(QFileInfo(path(u"rør"_s)).isFile());
}

TEST_F(EhfTaskTest, LinkThatLeadsNowhereIsNoTarget)
{
    const QString dangling = path(u"hengende.xml"_s);
    const QString looping = path(u"ring.xml"_s);
    ASSERT_TRUE(QFile::link(path(u"borte.xml"_s), dangling));
    ASSERT_TRUE(QFile::link(looping, looping));
    const QStringList before = links();
    for (const QStringList &more : {QStringList{}, {u"--erstatt"_s}}) {
        expectRefusal(ehf(u"1048"_s, u"hengende.xml"_s, more), 1,
                      u"hengende.xml er ingen vanlig fil"_s);
        expectRefusal(ehf(u"1048"_s, u"ring.xml"_s, more), 1, u"ring.xml er ingen vanlig fil"_s);
    }
    EXPECT_EQ(links(), before);
    EXPECT_FALSE(QFileInfo::exists(path(u"borte.xml"_s)));
}

TEST_F(EhfTaskTest, UnreachableDatabaseIsTold)
{
    expectRefusal(host({u"--dsn"_s, u"mangler.db"_s, u"--ehf"_s, u"1048"_s, u"--ut"_s, u"x.xml"_s}),
                  1, u"mangler.db"_s);
    EXPECT_EQ(files(), QStringList{u"demo.db"_s});
}

} // namespace
