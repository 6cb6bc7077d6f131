#pragma once

#include "registers/customers/KundeMottaker.h"
#include "registers/customers/frmKunder.h"
#include "shell/component/Main.h"
#include "support/ScreenHands.h"
#include "support/StandingClock.h"

#include <QMap>
#include <QPushButton>

using namespace Qt::StringLiterals;

/// Notes what it is given, in order, as words.
class Mottaker : public KundeMottaker
{
public:
    void settKundefelt(KundeFelt felt, const QString &text) override
    {
        if (felt == refused)
            throw RunTimeError(errors::kObjectNotSet);
        given += felt;
        texts[felt] = text;
    }
    void settSammeLevAdr(qint32 verdi) override
    {
        if (verdi > 2)
            throw RunTimeError(errors::kInvalidCall);
        sammeLevAdr = verdi;
        givenBeforeSammeLevAdr = int(given.size());
    }
    QString betBet() const override { return readsBetBetAs.value_or(texts[KundeFelt::BetBet]); }

    QList<KundeFelt> given;
    QMap<KundeFelt, QString> texts;
    int sammeLevAdr = -1;
    int givenBeforeSammeLevAdr = -1;
    std::optional<KundeFelt> refused;
    std::optional<QString> readsBetBetAs;
};

/// The customer picker on a started module with a few customers.
class FrmKunderTest : public ScreenTest, public ScreenHands<frmKunder>
{
protected:
    FrmKunderTest()
    {
        makeParentTables();
        EXPECT_EQ(startModule(), 1);
        run(u"INSERT INTO Poststed (PostNr,PostSted) VALUES ('0150','OSLO')"_s);
        run(u"INSERT INTO Poststed (PostNr,PostSted) VALUES ('5003','BERGEN')"_s);
    }
    void addCustomer(int number, const QString &name, const QString &betBet = u"14"_s)
    {
        run(u"INSERT INTO KundeLev (KlientNr,KundeNr,Navn,BetBet) VALUES (5,%1,%2,%3)"_s.arg(number)
                .arg(name == u"Null" ? name : u'\'' + name + u'\'')
                .arg(betBet));
    }
    /// A customer with everything filled in.
    void addAnne()
    {
        run(u"INSERT INTO KundeLev (KlientNr,KundeNr,Navn,Adr1,Adr2,PostNr,BetBet,"_s
            u"OrganisasjonsNr,LevAdr1,LevAdr2,LevPostNr,SammeLevAdr,FakturaType) VALUES "_s
            u"(5,10001,'  Annes Transport ','Veien 1','Bakgården','0150',14,'987654321',"_s
            u"'Kaia 2','1 etasje','5003',True,'EHF')"_s);
    }

    static QStringList numbers() { return column(1); }
    /// Opens the picker for `receiver` and does something in it; returns once it is closed.
    template<class Action>
    void pick(Mottaker &receiver, Action action)
    {
        onNextModal<frmKunder>([&](frmKunder &) { action(); });
        SharedForm<frmKunder>::get().velgFor(receiver);
    }

    StandingClock clock; // 9 March 2014
    Mottaker mottaker;
};
