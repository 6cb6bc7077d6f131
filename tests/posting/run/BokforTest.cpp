#include "posting/run/BokforTest.h"

#include "shell/component/Main.h"

using namespace Qt::StringLiterals;

void NoterendeSkjerm::framdrift(int behandlet, int merket)
{
    hendelser += u"framdrift %1 av %2"_s.arg(behandlet).arg(merket);
}

void NoterendeSkjerm::melding(const QString &text, int style)
{
    QString synlig = text;
    hendelser += u"melding %1 [%2]"_s.arg(style).arg(synlig.replace(u"\r\n"_s, u"\\r\\n"_s));
}

void NoterendeSkjerm::skrivRapport(const QString &rapport, qint16 modus, const QString &utvalg,
                                   const QString &formel1, const QString &formel2)
{
    hendelser +=
        u"rapport [%1] %2 [%3] [%4] [%5]"_s.arg(rapport).arg(modus).arg(utvalg, formel1, formel2);
}

BokforTest::BokforTest()
{
    makeParentTables();
    Main(); // the VAT rates
    EXPECT_EQ(startModule(), 1);
    m_tap.rewriteStatements([this](const QString &statement) {
        nekt(statement);
        if (!statement.contains(u"GROUP BY MvaPst"))
            return statement;
        return statement.chopped(1) +
               (fallendeGrupper ? u" ORDER BY MvaPst DESC"_s : u" ORDER BY MvaPst"_s);
    });
}

void BokforTest::enter(const Faktura &faktura)
{
    QString navn = faktura.navn;
    navn.replace(u'\'', u"''"_s);
    run(u"INSERT INTO Ordre (KlientNr,OrdreNr,OrdreStatus,KundeNr,KundeNavn,FakDato,ForfallDato,"
        u"SumBrutto,Avrunding) VALUES (%1,%2,'%3',10001,'%4',%5,%6,%7,%8)"_s.arg(faktura.klient)
            .arg(faktura.nr)
            .arg(faktura.status, navn, faktura.fakDato, faktura.forfall, faktura.brutto,
                 faktura.avrunding));
    const QString id = rows(u"SELECT Max(ID) FROM Ordre"_s).join(u',');
    for (const Linje &linje : faktura.linjer)
        run(u"INSERT INTO OrdreLinjer (OrdreID,MvaPst,SumNetto,SumBrutto) VALUES (%1,%2,0,%3)"_s
                .arg(id, linje.mvaPst, linje.brutto));
}

NoterendeSkjerm::Rad &BokforTest::legg(const Faktura &faktura)
{
    enter(faktura);
    const auto norsk = [](const QString &literal) {
        return literal.size() < 12
                   ? QString()
                   : literal.mid(4, 2) + u'.' + literal.mid(1, 2) + u'.' + literal.mid(7, 4);
    };
    const QString id = rows(u"SELECT Max(ID) FROM Ordre"_s).join(u',');
    skjerm.rader.push_back({{{},
                             QString::number(faktura.nr),
                             u"10001"_s,
                             faktura.navn,
                             norsk(faktura.fakDato),
                             norsk(faktura.forfall),
                             faktura.brutto,
                             u"1"_s,
                             id},
                            true});
    return skjerm.rader.back();
}

QStringList BokforTest::kjor()
{
    ado::SessionPool::shared().clear();
    m_tap.forget();
    skjerm.hendelser.clear();
    BokforMerkede(skjerm);
    const QStringList setninger = m_tap.statements();
    return QStringList{u"-- setninger"_s} + setninger + QStringList{u"-- skjerm"_s} +
           skjerm.hendelser + ledgerRows();
}

QStringList BokforTest::ledgerRows()
{
    nekt = [](const QString &) {};
    const auto table = [this](const QString &name, const QString &columns) {
        return QStringList{u"-- "_s + name + u": "_s + columns} +
               rows(u"SELECT "_s + columns + u" FROM "_s + name + u" ORDER BY ID"_s);
    };
    return table(u"Bilag"_s, u"KlientNr,BilagNr,BilagDato,Tekst,BilagType,AntPost,Aar,ID"_s) +
           table(u"BilagLinjer"_s, u"BilagID,Konto,Tekst,LevNr,Debet,Kredit,FaktDato,FaktForfall,"
                                   u"MVAkode,cFaktNr,Loyve"_s) +
           table(u"tmpTbl"_s, u"KlientNr,BilagNr,FakNr,KndNr,Type,FakDto,Forfall,Belop"_s) +
           table(u"Ordre"_s, u"KlientNr,OrdreNr,OrdreStatus"_s);
}
