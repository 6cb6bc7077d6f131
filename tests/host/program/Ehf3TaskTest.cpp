#include "host/program/HostTest.h"
#include "platform/ado/Connection.h"
#include "platform/ado/Recordset.h"
#include "support/NamedComponent.h"

#include <QDir>

using namespace Qt::StringLiterals;

namespace {

/// In the demo company 1048 is an invoice that is issued, and 1045 a credit note.
class Ehf3TaskTest : public HostTest
{
protected:
    void SetUp() override { makeDemo(); }

    [[nodiscard]] Outcome ehf3(const QStringList &arguments) const
    {
        return host(QStringList{u"--dsn"_s, u"demo.db"_s} + arguments);
    }
    [[nodiscard]] Outcome one(const QString &number, const QStringList &more = {}) const
    {
        return ehf3(QStringList{u"--ehf3"_s, number, u"--ut"_s, u"x.xml"_s} + more);
    }
    [[nodiscard]] QStringList filesIn(const QString &folder) const
    {
        return QDir(path(folder)).entryList(QDir::Files | QDir::Hidden, QDir::Name);
    }
    /// The numbers of issued orders of customers with, or without, an organisation number.
    [[nodiscard]] std::vector<Row> issued(bool withNumber) const
    {
        return rows(
            u"SELECT O.OrdreNr,O.SumBrutto FROM Ordre O INNER JOIN KundeLev K "
            u"ON O.KundeNr=K.KundeNr WHERE O.OrdreStatus<>'Ordre' AND K.OrganisasjonsNr%1'' "
            u"ORDER BY O.OrdreNr"_s.arg(withNumber ? u"<>" : u"="));
    }
};

TEST_F(Ehf3TaskTest, AnInvoiceIsWrittenAndNothingElseChanges)
{
    const QByteArray before = dump(u"demo.db"_s);
    const Outcome outcome = one(u"1048"_s);
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_EQ(outcome.out, QByteArray("EHF 3.0 skrevet: x.xml\n"));
    EXPECT_EQ(outcome.err, QString());
    EXPECT_EQ(dump(u"demo.db"_s), before);
    const QByteArray bytes = content(u"x.xml"_s);
    EXPECT_TRUE(bytes.contains("\n<Invoice "));
    EXPECT_TRUE(bytes.contains("<cbc:ID>1048</cbc:ID>"));
    const QString amount = single(u"SELECT SumBrutto FROM Ordre WHERE OrdreNr=1048"_s);
    EXPECT_TRUE(bytes.contains("<cbc:PayableAmount currencyID=\"NOK\">" + amount.toLatin1() + '<'));
    EXPECT_EQ(start(u"xmllint"_s, {u"--nonet"_s, u"--noout"_s, path(u"x.xml"_s)}).status, 0);
}

TEST_F(Ehf3TaskTest, ANegativeSumBecomesACreditNote)
{
    ASSERT_EQ(one(u"1045"_s).status, 0);
    const QByteArray bytes = content(u"x.xml"_s);
    EXPECT_TRUE(bytes.contains("\n<CreditNote "));
    const QString amount = single(u"SELECT -SumBrutto FROM Ordre WHERE OrdreNr=1045"_s);
    EXPECT_TRUE(bytes.contains("<cbc:PayableAmount currencyID=\"NOK\">" + amount.toLatin1() + '<'));
}

TEST_F(Ehf3TaskTest, AllThatIsMissingIsToldInOneLineAndNothingIsWritten)
{
    change(u"UPDATE KundeLev SET OrganisasjonsNr='123456789'"_s);
    change(u"UPDATE Klient SET Giro1=''"_s);
    const QString customer = single(u"SELECT KundeNavn FROM Ordre WHERE OrdreNr=1048"_s);
    expectRefusal(
        one(u"1048"_s), 1,
        u"ordre 1048 ble ikke skrevet: Klienten Gråbein Bilfrakt AS mangler gyldig "
        u"bankkonto; rettes i klientkortet. Kunden %1 mangler gyldig organisasjonsnummer; "
        u"rettes i kundekortet"_s.arg(customer));
    EXPECT_EQ(files(), QStringList{u"demo.db"_s});
}

TEST_F(Ehf3TaskTest, AFileThatIsThereIsReplacedOnDemandOnly)
{
    write(u"x.xml"_s, "mitt");
    expectRefusal(one(u"1048"_s), 1, u"x.xml finnes fra før"_s);
    EXPECT_EQ(content(u"x.xml"_s), QByteArray("mitt"));
    EXPECT_EQ(one(u"1048"_s, {u"--erstatt"_s}).status, 0);
    EXPECT_TRUE(content(u"x.xml"_s).startsWith("<?xml"));
    expectRefusal(one(u"9999"_s, {u"--erstatt"_s}), 1, u"ordre 9999 finnes ikke for klient 1"_s);
    expectRefusal(ehf3({u"--ehf3"_s, u"1048"_s, u"--ut"_s, u"demo.db"_s, u"--erstatt"_s}), 1,
                  u"hører til databasen"_s);
}

TEST_F(Ehf3TaskTest, AFullDiskIsToldAndLeavesTheFormerFile)
{
    // While somebody has the database open the host makes no file beside it.
    ado::Connection other;
    other.open(u"dsn="_s + path(u"demo.db"_s));
    static_cast<void>(other.openSchema(ado::SchemaList::Columns));
    write(u"x.xml"_s, "fra i fjor");
    const Outcome outcome = start(
        u"/bin/sh"_s, {u"-c"_s,
                       u"trap '' XFSZ; ulimit -f 8; exec \"$0\" --dsn demo.db --ehf3 1048 --ut "
                       u"x.xml --erstatt"_s,
                       programFile()});
    expectRefusal(outcome, 1, u"Filen x.xml lot seg ikke skrive"_s);
    EXPECT_EQ(content(u"x.xml"_s), "fra i fjor");
}

TEST_F(Ehf3TaskTest, AllAreWrittenButThoseThatAreRefused)
{
    change(u"UPDATE KundeLev SET OrganisasjonsNr='' WHERE KundeNr=10022"_s);
    QDir(path(QString())).mkdir(u"ut"_s);
    const Outcome outcome = ehf3({u"--ehf3-alle"_s, u"ut"_s});
    QStringList names;
    for (const Row &row : issued(true)) {
        names += (row[u"SumBrutto"_s].startsWith(u'-') ? u"Kreditnota-"_s : u"Faktura-"_s) +
                 row[u"OrdreNr"_s] + u".xml"_s;
    }
    names.sort();
    ASSERT_GT(names.size(), 40);
    EXPECT_EQ(filesIn(u"ut"_s), names);
    const auto refused = issued(false);
    ASSERT_GT(refused.size(), 0U);
    const QString lines = QString::fromUtf8(outcome.out);
    for (const Row &row : refused) {
        EXPECT_TRUE(
            lines.contains(u": ordre %1 ble ikke skrevet: Kunden "_s.arg(row[u"OrdreNr"_s])))
            << lines.toStdString();
    }
    const qsizetype all = names.size() + qsizetype(refused.size());
    EXPECT_EQ(lines.count(u" av %1: "_s.arg(all)), all);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_TRUE(outcome.err.contains(u"%1 av %2 ble ikke skrevet"_s.arg(refused.size()).arg(all)))
        << outcome.err.toStdString();
}

TEST_F(Ehf3TaskTest, AnOrderThatIsSpoiltLeavesTheOthers)
{
    // As another program may have left them. The order lies among those that are read with it.
    const struct
    {
        QByteArray sql;
        QByteArray told;
    } spoilt[] = {
        {"UPDATE Ordre SET ForfallDato='' WHERE OrdreNr=1030",
         "ordre 1030 ble ikke skrevet: Ordre 1030 lot seg ikke lese: "},
        {"UPDATE Ordre SET OrdreNr=NULL WHERE OrdreNr=1030",
         "en ordre uten nummer ble ikke skrevet"},
    };
    const qsizetype all = qsizetype(issued(true).size() + issued(false).size());
    const QByteArray whole = content(u"demo.db"_s);
    for (const auto &[sql, told] : spoilt) {
        write(u"demo.db"_s, whole);
        runInFile(u"demo.db"_s, sql);
        QDir(path(QString())).mkdir(u"ut"_s);
        const Outcome outcome = ehf3({u"--ehf3-alle"_s, u"ut"_s});
        EXPECT_EQ(filesIn(u"ut"_s).size(), all - 1);
        EXPECT_EQ(outcome.out.count(" ble ikke skrevet"), 1) << outcome.out.toStdString();
        EXPECT_TRUE(outcome.out.contains(told)) << outcome.out.toStdString();
        EXPECT_TRUE(outcome.err.contains(u"1 av %1 ble ikke skrevet"_s.arg(all)));
        QDir(path(u"ut"_s)).removeRecursively();
    }
}

TEST_F(Ehf3TaskTest, APeriodAndAStatusChooseAmongThem)
{
    QDir(path(QString())).mkdir(u"ut"_s);
    const Outcome outcome = ehf3({u"--ehf3-alle"_s, u"ut"_s, u"--fra"_s, u"2014-07-01"_s,
                                  u"--til"_s, u"2014-07-31"_s, u"--status"_s, u"Fakturert"_s});
    const auto chosen = rows(u"SELECT OrdreNr FROM Ordre WHERE OrdreStatus='Fakturert' AND "
                             u"FakDato>=#07/01/2014# AND FakDato<=#07/31/2014#"_s);
    ASSERT_GT(chosen.size(), 1U);
    EXPECT_EQ(filesIn(u"ut"_s).size(), qsizetype(chosen.size()));
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
    EXPECT_TRUE(outcome.out.endsWith("Skrevet: " + QByteArray::number(chosen.size()) + '\n'));
    expectRefusal(ehf3({u"--ehf3-alle"_s, u"borte"_s}), 1, u"mappen borte finnes ikke"_s);
}

TEST_F(Ehf3TaskTest, AParentReachesTheSameByNamesAlone)
{
    ASSERT_EQ(one(u"1048"_s).status, 0);
    NamedComponent component;
    const auto module = component.createInstance();
    ASSERT_EQ(NamedComponent::start(*module, u"dsn="_s + path(u"demo.db"_s), 7, 2014), 1);
    QObject *instance = nullptr;
    ASSERT_TRUE(QMetaObject::invokeMethod(component.factory(), "CreateInstance",
                                          Q_RETURN_ARG(QObject *, instance),
                                          Q_ARG(QString, u"Faktura.clsEhf3"_s)));
    const std::unique_ptr<QObject> ehf(instance);
    const auto answer = [&](int client, const QString &file) {
        QString missing;
        EXPECT_TRUE(QMetaObject::invokeMethod(
            ehf.get(), "SkrivEhf3", Q_RETURN_ARG(QString, missing), Q_ARG(qint16, qint16(client)),
            Q_ARG(qint32, 1048), Q_ARG(QString, path(file))));
        return missing;
    };
    EXPECT_EQ(answer(1, u"parent.xml"_s), QString());
    EXPECT_EQ(content(u"parent.xml"_s), content(u"x.xml"_s));
    EXPECT_EQ(answer(7, u"ingen.xml"_s), u"Ordre 1048 finnes ikke for klient 7"_s);
    EXPECT_FALSE(files().contains(u"ingen.xml"_s));
    EXPECT_EQ(module->property("Klient").toInt(), 7);
}

} // namespace
