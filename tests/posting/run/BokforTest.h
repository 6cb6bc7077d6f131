#pragma once

#include "posting/run/Bokforing.h"
#include "support/SessionTap.h"
#include "support/UnderlagTest.h"

#include <vector>

/// A line of an invoice, of which posting needs no more: VAT percent and gross amount as SQL
/// literals.
struct Linje
{
    QString mvaPst;
    QString brutto;
};

/// An order as it is entered for a test; amounts are SQL literals.
struct Faktura
{
    int nr = 0;
    std::vector<Linje> linjer = {};
    QString brutto = QStringLiteral("125.00");
    QString avrunding = QStringLiteral("0");
    QString navn = QStringLiteral("Ås Pukk AS");
    QString fakDato = QStringLiteral("#03/09/2014#");
    QString forfall = QStringLiteral("#03/23/2014#");
    QString status = QStringLiteral("Fakturert");
    int klient = 5;
};

/// A posting screen without a window: a list of rows, and a note of all that the run asks of it.
class NoterendeSkjerm : public BokforSkjerm
{
public:
    struct Rad
    {
        QString celler[9]; // by column
        bool merket = true;
    };

    int antallRader() const override { return int(rader.size()); }
    bool erMerket(int row) const override { return rader.at(size_t(row - 1)).merket; }
    QString celle(int col, int row) const override { return rader.at(size_t(row - 1)).celler[col]; }
    QString konto() const override { return kontoTekst; }
    QString loyve() const override { return loyveTekst; }
    void framdrift(int behandlet, int merket) override;
    void melding(const QString &text, int style) override;
    void lesFakturaer() override { hendelser += QStringLiteral("les fakturaer"); }
    void skrivRapport(const QString &rapport, qint16 modus, const QString &utvalg,
                      const QString &formel1, const QString &formel2) override;
    void slippHendelser() override { hendelser += QStringLiteral("slipp hendelser"); }

    std::vector<Rad> rader;
    QString kontoTekst = QStringLiteral("3000");
    QString loyveTekst = QStringLiteral("<nei>");
    QStringList hendelser;
};

/// A started module with client 5 in 2014, on the database of this test program.
class BokforTest : public UnderlagTest
{
protected:
    BokforTest();

    /// Enters the invoice and puts it at the end of the screen's list, marked.
    NoterendeSkjerm::Rad &legg(const Faktura &faktura);
    void enter(const Faktura &faktura);

    /// Every statement of a run through gDB, in order, then what the screen was asked to do, then
    /// the rows that it has left.
    QStringList kjor();
    QStringList ledgerRows();
    /// What `action` sends to the database.
    template<class Action>
    QStringList statementsOf(Action &&action)
    {
        m_tap.forget();
        action();
        return m_tap.statements();
    }

    NoterendeSkjerm skjerm;
    /// Puts the VAT groups of an invoice in falling order; each database has one of its own choice.
    bool fallendeGrupper = false;
    /// Raises for a statement that is to fail.
    std::function<void(const QString &statement)> nekt = [](const QString &) {};

private:
    SessionTap m_tap;
};
