#include "order/OrdreMedLinjer.h"
#include "platform/ado/Connection.h"
#include "platform/forms/MsgBox.h"
#include "support/Rows.h"
#include "support/SessionTap.h"

#include <QFile>

#include <algorithm>
#include <map>
#include <random>
#include <set>

using namespace Qt::StringLiterals;

namespace {

const QString kPrint = u"btnPrint"_s;
const QString kCopy = u"btnCopy"_s;
const QString kNew = u"btnNew"_s;
const QString kChange = u"btnChange"_s;
const QString kSave = u"btnSave"_s;
const QString kCancel = u"btnCancel"_s;

/// A long walk of a user who does anything at any time, beside a model of the screen's modes that
/// tells which buttons are on after each step.
class OrdreVandringTest : public OrdreMedLinjer, public ::testing::WithParamInterface<unsigned>
{
protected:
    using Knapper = std::set<QString>;

    OrdreVandringTest() : terning(GetParam()) {}

    // --- The model

    [[nodiscard]] bool iModus() const { return ny || endre; }
    [[nodiscard]] bool erPost() const { return plass >= 0 && plass < int(sett.size()); }
    QList<int> alle()
    {
        QList<int> ids;
        for (const QString &id : rows(u"SELECT ID FROM Ordre WHERE KlientNr= 5"_s))
            ids += id.toInt();
        return ids;
    }
    void settKnapper(Knapper on, bool change)
    {
        if (change && tekst(17).trimmed() == u"Ordre"_s)
            on.insert(kChange);
        on.insert(kCancel);
        knapper = std::move(on);
    }
    void visOrdre()
    {
        if (sett.isEmpty())
            return;
        bool medLinjer = false;
        if (erPost()) {
            aktivID = sett[plass];
            medLinjer =
                rows(u"SELECT COUNT (*) FROM OrdreLinjer WHERE OrdreID=%1"_s.arg(aktivID)) !=
                QStringList{u"0"_s};
        }
        settKnapper(medLinjer ? Knapper{kPrint, kCopy, kNew} : Knapper{kNew}, aktivID > 0);
    }
    void aktiver()
    {
        if (!iModus()) {
            sett = alle();
            if (sett.isEmpty())
                aktivID = 0;
            plass = int(sett.size()) - 1;
            visOrdre();
        }
        knapper.erase(kCancel);
    }
    void apnet()
    {
        ny = endre = false;
        aktivID = 0;
        knapper = {kNew};
        aktiver();
    }

    // --- The steps

    int kast(int sider) { return std::uniform_int_distribution(0, sider - 1)(terning); }
    QString velg(const QStringList &texts) { return texts[kast(int(texts.size()))]; }

    /// Clicks a button; true when the model says that it is on.
    bool trykk(const QString &name)
    {
        klikk(name);
        return knapper.contains(name);
    }
    void rediger(bool asNew)
    {
        ny = asNew;
        endre = !asNew;
        knapper = {kSave, kCancel};
    }
    void lagre()
    {
        const int raden = aktivID;
        const int before = int(alle().size());
        if (!trykk(kSave))
            return;
        ASSERT_TRUE(iModus());
        const QStringList boxes = meldinger.ta();
        const auto said = [&](const QString &start) {
            return std::any_of(boxes.begin(), boxes.end(),
                               [&](const QString &box) { return box.startsWith(start); });
        };
        if (said(u"Feil som må rettes"_s)) {
            ASSERT_EQ(alle().size(), before);
            return;
        }
        if (!said(u"Lagring feilet"_s)) {
            ++lagret;
            ASSERT_EQ(alle().size(), before + int(ny));
            const int id = ny ? rows(u"SELECT Max(ID) FROM Ordre"_s)[0].toInt() : raden;
            ASSERT_EQ(rows(u"SELECT KundeNr,KundeNavn FROM Ordre WHERE ID=%1"_s.arg(id)),
                      QStringList{tekst(18).trimmed() + u'|' + tekst(0)});
            aktivID = 1;
            Forms::byName(u"frmTMsgBox"_s)->unload();
            roFokus();
        }
        settKnapper({kPrint, kCopy}, true);
        knapper.erase(kCancel);
    }
    void avbryt()
    {
        if (!trykk(kCancel))
            return;
        if (endre) {
            sett = alle();
            plass = 0;
            visOrdre();
        }
        ny = endre = false;
        settKnapper({kNew}, aktivID > 0);
        knapper.erase(kCancel);
    }
    void flytt(const QString &name, int til)
    {
        klikk(name);
        plass = std::clamp(til, -1, int(sett.size()));
        visOrdre();
    }
    void skrivUt()
    {
        const QString status = tekst(17);
        utskrift = {};
        bool medShift = knapper.contains(kPrint) && kast(2) == 0;
        if (medShift) {
            control(kPrint)->setFocus();
            medShift = fokus() == kPrint; // the grid takes it from whoever leaves the invoice date
            tast(Qt::Key_F5, Qt::ShiftModifier);
        }
        if (!trykk(kPrint))
            return;
        knapper.insert(kNew);
        ASSERT_EQ(utskrift.fakID, QString::number(aktivID));
        ASSERT_EQ(utskrift.original, medShift || status == u"Ordre"_s);
        if (kast(2) == 0)
            run(u"UPDATE Ordre SET OrdreStatus='Fakturert' WHERE ID=%1"_s.arg(aktivID));
    }
    void velgKunde()
    {
        if (!iModus()) {
            klikk(u"cmdKunder"_s);
            return;
        }
        // What a field says when it is left comes ahead of the list.
        control(u"cmdKunder"_s)->setFocus();
        roFokus();
        const QString button = velg({u"OKButton"_s, u"CancelButton"_s});
        onNextModal<Form>([button](Form &kunder) {
            QTest::mouseClick(kunder.findChild<QWidget *>(button), Qt::LeftButton);
        });
        QTest::mouseClick(control(u"cmdKunder"_s), Qt::LeftButton);
        roFokus();
        aktiver();
    }
    void skrivNoe()
    {
        static const std::map<int, QStringList> kTekster{
            {0, {u"Kunde AS"_s, u"O'Brien"_s, u""_s}},
            {3, {u"0150"_s, u"7010"_s, u"0000"_s, u""_s}},
            {9, {u"14"_s, u"x"_s, u""_s}},
            {10, {u"05.05.2014"_s, u"31.12.2013"_s, u""_s}},
            {12, {u"01.02.2014"_s, u"snart"_s}},
            {18, {u"10001"_s, u"10002"_s, u"99999"_s, u""_s}},
        };
        const auto &[nr, texts] = *std::next(kTekster.begin(), kast(int(kTekster.size())));
        const bool satt = skjerm()->focusWidget() == felt(nr);
        gaTil(nr);
        const bool holder = skjerm()->focusWidget() == felt(nr);
        const bool erDato = nr == 10 || nr == 12;
        // The grid takes the focus of whoever leaves the invoice date.
        if (fokus() != u"vaSpread1"_s && !satt) {
            ASSERT_EQ(holder, iModus() || erDato);
        }
        if (!holder)
            return;
        felt(nr)->selectAll();
        QTest::keyClick(felt(nr), Qt::Key_Delete);
        QTest::keyClicks(felt(nr), velg(texts));
    }
    void skrivLinjeEtSted()
    {
        const int row = 1 + kast(3);
        skrivCelle(1, row, velg({u"P1"_s, u""_s}));
        skrivCelle(3, row, velg({u"1"_s, u"2"_s, u"-3"_s, u""_s}));
        roFokus();
    }
    /// What a save asks for.
    void fyllUt()
    {
        if (!iModus())
            return;
        for (const auto &[nr, text] : {std::pair{18, u"10001"_s}, std::pair{0, u"Kunde AS"_s},
                                       std::pair{3, u"0150"_s}, std::pair{9, u"14"_s}}) {
            felt(nr)->setFocus();
            felt(nr)->selectAll();
            QTest::keyClicks(felt(nr), text);
        }
        skrivCelle(1, 1, u"P1"_s);
        skrivCelle(3, 1, u"2"_s);
        roFokus();
    }
    void gaBort()
    {
        auto *other = new RecordingForm(u"frmAnnet"_s);
        other->show();
        roFokus();
        other->unload();
        roFokus();
        aktiver();
    }
    void lukkOgApne()
    {
        tast(Qt::Key_Escape);
        ASSERT_EQ(skjerm(), nullptr);
        apne();
        apnet();
    }
    void betalt()
    {
        meldinger.svar = kast(2) ? answer::kYes : answer::kNo;
        klikk(u"chkBetalt"_s);
    }

    QString gjorNoe()
    {
        switch (kast(20)) {
        case 0:
        case 1:
            if (trykk(kNew))
                rediger(true);
            return kNew;
        case 2:
            if (trykk(kCopy) && !iModus())
                rediger(true);
            return kCopy;
        case 3:
            if (trykk(kChange))
                rediger(false);
            return kChange;
        case 4:
        case 5:
            lagre();
            return kSave;
        case 6:
            avbryt();
            return kCancel;
        case 7:
            flytt(u"cmdFirst"_s, 0);
            return u"cmdFirst"_s;
        case 8:
            flytt(u"cmdLast"_s, int(sett.size()) - 1);
            return u"cmdLast"_s;
        case 9:
            flytt(u"cmdNext"_s, plass + 1);
            return u"cmdNext"_s;
        case 10:
            flytt(u"cmdPrevious"_s, plass - 1);
            return u"cmdPrevious"_s;
        case 11:
            skrivUt();
            return kPrint;
        case 12:
            velgKunde();
            return u"cmdKunder"_s;
        case 13:
            skrivNoe();
            return u"felt"_s;
        case 14:
            skrivLinjeEtSted();
            return u"linje"_s;
        case 17:
        case 18:
            fyllUt();
            return u"alt"_s;
        case 15:
            tast(kast(2) ? Qt::Key_Tab : Qt::Key_Backtab);
            return u"Tab"_s;
        case 16:
            if (kast(2))
                gaBort();
            else
                betalt();
            return u"bort"_s;
        default:
            if (kast(4) == 0)
                lukkOgApne();
            return u"lukk"_s;
        }
    }

    std::mt19937 terning;
    bool ny = false;
    bool endre = false;
    int aktivID = 0;
    QList<int> sett;
    int plass = -1;
    Knapper knapper;
    OrdreUtskrift utskrift;
    int lagret = 0;
};

QStringList innhold(const QString &dsn)
{
    QStringList result;
    for (const QString &table : {u"Ordre"_s, u"OrdreLinjer"_s}) {
        for (const QString &row : rowsOf(dsn, u"SELECT * FROM "_s + table + u" ORDER BY ID"_s))
            result += table + u'|' + row;
    }
    return result;
}

TEST_P(OrdreVandringTest, TheButtonsFollowTheModelAndTheDatabaseItsStatements)
{
    constexpr int kSteps = 1000;
    leggOrdre({.ordreNr = 1});
    leggOrdre({.ordreNr = 2, .status = u"Fakturert"_s});
    leggOrdre({.ordreNr = 3, .medLinje = false});
    leggOrdre({.ordreNr = 4, .status = u"Bokført"_s, .sumBrutto = u"-125"_s});
    // Both parts of the file, while nobody writes.
    const QString copy = folder() + u"/kopi.db"_s;
    ASSERT_TRUE(QFile::copy(path(), copy));
    QFile::copy(path() + u"-wal"_s, copy + u"-wal"_s);

    frmOrdre::settUtskriftApner([this](const OrdreUtskrift &u) { utskrift = u; });
    const SessionTap tap;
    apne();
    apnet();
    for (int step = 0; step < kSteps; ++step) {
        const QString done = gjorNoe();
        ASSERT_FALSE(HasFatalFailure()) << done.toStdString() << " in step " << step;
        meldinger.ta();
        ASSERT_NE(skjerm(), nullptr);
        const QStringList on = knapperPaa();
        ASSERT_EQ(Knapper(on.begin(), on.end()), knapper)
            << "after " << done.toStdString() << " in step " << step;
        ASSERT_TRUE(!knapper.contains(kSave) || iModus());
    }
    // The walk has come to what it is for.
    EXPECT_GT(lagret, 5);

    ado::Connection connection;
    connection.open(u"dsn="_s + copy);
    for (const QString &statement : tap.statements()) {
        if (!statement.startsWith(u"SELECT "))
            passOver([&] { connection.execute(statement); });
    }
    connection.close();
    EXPECT_EQ(innhold(connectionString()), innhold(u"dsn="_s + copy));
}

INSTANTIATE_TEST_SUITE_P(Walks, OrdreVandringTest, ::testing::Values(1u, 20140309u));

} // namespace
