#include "registers/products/frmProdukt.h"

#include "data/RowValues.h"
#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "platform/forms/MsgBox.h"
#include "presentation/screens/VisMelding.h"
#include "presentation/spread/mVASpread.h"
#include "registers/products/ProduktKolonne.h"
#include "rules/Beregning.h"
#include "runtime/Conversions.h"
#include "state/SharedState.h"
#include "ui_frmProdukt.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 kOppdater = 0;
constexpr qint16 kSettInn = 1;

} // namespace

void frmProdukt::LagreProdukt()
{
    if (!iModus())
        return;
    const QPointer<frmProdukt> skjerm(this);
    qint32 resultat = 0;
    if (m_bEndre) {
        // A text that is no number leaves 0, which is the ID of no row.
        qint32 id = 0;
        passOver([&] { id = toLong(m_ui->txtFields_11->text()); });
        passOver([&] { resultat = LagrePost(kOppdater, u"Produkt"_s, id); });
    } else {
        passOver([&] { resultat = LagrePost(kSettInn, u"Produkt"_s, 0); });
    }
    if (resultat < 1) {
        const QString feil = gDB->LastError();
        if (!trimBlanks(feil).isEmpty())
            MsgBox(u"Lagring feilet! - Feilmelding: "_s + feil, msgbox::kExclamation);
    } else {
        VisMelding(u"Data er lagret."_s, msgbox::kInformation, u"Lagre"_s, 1, false);
    }
    // Events have run, and one of them may have closed the screen.
    if (!skjerm)
        return;
    avsluttModus();
}

qint32 frmProdukt::LagrePost(qint16 Modus, const QString &Tabell, qint32 ID) const
{
    RowValues rad;
    rad.add(u"KlientNr", numberToText(gKlient));
    rad.addText(u"ProduktNr", m_ui->txtFields_0->text());
    rad.addText(u"ProduktNavn", m_ui->txtFields_1->text());
    rad.addText(u"ProduktGruppe", m_ui->txtFields_2->text());
    rad.addText(u"Enhet", m_ui->txtFields_3->text());
    rad.add(u"InnPris", TallTilSql(m_ui->txtFields_4->text(), u"#0.00"));
    rad.add(u"UtPris", TallTilSql(m_ui->txtFields_5->text(), u"#0.00"));
    rad.add(u"MvaSats", TallTilSql(m_ui->cmbMvaSats->currentText(), u"#0.0"));
    rad.add(u"BruttoPris", numberToText(m_ui->chkBruttoPris->isChecked() ? 1 : 0));

    // By the ID alone, so the row becomes the active client's; no row at all is no failure.
    if (Modus != kSettInn)
        return gDB->Execute(rad.update(Tabell, u"ID="_s + QString::number(ID))) ? 1 : 0;
    const qint32 nokkel = gDB->ExecuteID(rad.insertInto(Tabell));
    // Asking empties it, so a failed insert leaves the caller nothing to show.
    return gDB->LastError().isEmpty() ? nokkel : 0;
}

// The list of a cell in the grid is for the eye alone: nothing of the grid reaches the database.
void frmProdukt::vaSpread1_LeaveCell(int kol, int rad, int nyKol, int nyRad)
{
    fpSpread &grid = *m_ui->vaSpread1;
    const QString inn = SpreadGetText(grid, nyKol, nyRad);
    if (nyKol == kolonne::Gruppe) {
        // Produkt has no such column (its own is ProduktGruppe): the read fails, and nothing
        // follows. Where a database has one, the list goes to the rate's cell, not to this one.
        Ref<ado::Recordset> rs;
        passOver([&] {
            rs = gDB->GetRS(u"SELECT DISTINCT Gruppe FROM Produkt ORDER BY Gruppe ASC"_s, true);
        });
        QString liste;
        if (!gDB->EmptyRS(rs)) {
            passOver([&] { liste = rs->text(u"Gruppe"); });
            passOver([&] { rs->moveNext(); });
        }
        if (!liste.isEmpty())
            SpreadSetCellType(grid, kolonne::MvaSats, rad, int(CellKind::ComboBox), false, liste);
    }
    if (nyKol == kolonne::MvaSats) {
        SpreadSetCellType(grid, kolonne::MvaSats, rad, int(CellKind::ComboBox), false, MvaSatser());
    }
    if (kol == kolonne::Gruppe || kol == kolonne::MvaSats)
        SpreadSetCellType(grid, kolonne::MvaSats, rad, int(CellKind::Edit));
    // Of two cells, not of one before and after. The mark is for nobody.
    const QString ut = SpreadGetText(grid, kol, rad);
    if (inn != ut)
        SpreadSetText(grid, kolonne::Changed, rad, u"1");
}
