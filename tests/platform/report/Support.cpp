#include "platform/report/Support.h"

namespace report::test {

ReportTest::ReportTest()
{
    run({u"CREATE TABLE Klient (KlientNr SHORT CONSTRAINT K PRIMARY KEY, Navn TEXT(40), Logo LONGBINARY)"_s,
         u"CREATE TABLE Ordre (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr SHORT, "
         "OrdreNr LONG, OrdreStatus TEXT(10), Betalt BIT, KundeNr LONG, KundeNavn TEXT(40), "
         "OrdreDato DATE, SumBrutto CURRENCY)"_s,
         u"CREATE TABLE OrdreLinjer (ID COUNTER CONSTRAINT ID PRIMARY KEY, OrdreID LONG, "
         "PosNr SHORT, ProduktNavn TEXT(200), Antall SINGLE, MvaPst SINGLE, SumNetto CURRENCY, "
         "SumBrutto CURRENCY)"_s,
         u"INSERT INTO Klient (KlientNr,Navn) VALUES (1,'Nordfjord Transport AS')"_s});
}

void ReportTest::run(const QStringList &statements)
{
    ado::Connection connection;
    connection.open(dsn());
    connection.beginTrans();
    for (const QString &statement : statements)
        connection.execute(statement);
    connection.commitTrans();
}

void ReportTest::addOrder(int number, int lines)
{
    QStringList statements{
        u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,Betalt,KundeNr,KundeNavn,OrdreDato,"
        "SumBrutto) VALUES (1,%1,'Fakturert',0,123,'Åsen Grus',#03/09/2014#,%2)"_s.arg(number)
            .arg(lines * 125)};
    ++m_orders;
    for (int line = 1; line <= lines; ++line)
        statements += u"INSERT INTO OrdreLinjer (OrdreID,PosNr,ProduktNavn,Antall,MvaPst,SumNetto,"
                      "SumBrutto) VALUES (%1,%2,'Vare %3',1,25,100,125)"_s.arg(m_orders)
                          .arg(line * 10)
                          .arg(line);
    run(statements);
}

QString ReportTest::written(const QString &name, const QByteArray &bytes) const
{
    QFile file(folder() + u'/' + name);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
    return file.fileName();
}

QByteArray ReportTest::lineReport(const QByteArray &bands)
{
    return R"(<report version="1" title="Linjer">
<page left="10" top="10" right="10" bottom="10"/>
<query>SELECT Klient.Logo, Klient.Navn, Ordre.OrdreNr, Ordre.KundeNavn, Ordre.OrdreDato,
Ordre.OrdreStatus, Ordre.Betalt, Ordre.SumBrutto, OrdreLinjer.ProduktNavn, OrdreLinjer.PosNr,
OrdreLinjer.Antall, OrdreLinjer.MvaPst, OrdreLinjer.SumNetto, OrdreLinjer.SumBrutto AS LinjeBrutto
FROM (Klient INNER JOIN Ordre ON Klient.KlientNr=Ordre.KlientNr)
INNER JOIN OrdreLinjer ON Ordre.ID=OrdreLinjer.OrdreID
ORDER BY Ordre.OrdreNr, OrdreLinjer.PosNr</query>
)" + bands +
           "</report>";
}

Document ReportTest::made(const QByteArray &xml, const QString &selection,
                          const std::vector<QString> &formulas) const
{
    return makeReport({written(u"Test.rpt"_s, xml), dsn(), selection, formulas});
}

RunTimeError ReportTest::errorOf(const QByteArray &xml, const QString &selection,
                                 const std::vector<QString> &formulas) const
{
    try {
        static_cast<void>(made(xml, selection, formulas));
    } catch (const RunTimeError &error) {
        return error;
    }
    return RunTimeError(0, {});
}

QStringList textsOf(const Page &page)
{
    QStringList texts;
    for (const TextCommand &text : page.texts)
        texts += text.text();
    return texts;
}

TextCommand textOn(const Page &page, const QString &text)
{
    for (const TextCommand &command : page.texts) {
        if (command.text() == text)
            return command;
    }
    ADD_FAILURE() << "no text " << text.toStdString();
    return {{}, 0, 0, {}};
}

} // namespace report::test
