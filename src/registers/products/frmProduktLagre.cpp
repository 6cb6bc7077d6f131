#include "registers/products/frmProdukt.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "platform/forms/MsgBox.h"
#include "presentation/screens/VisMelding.h"
#include "presentation/spread/mVASpread.h"
#include "registers/products/ProduktKolonne.h"
#include "runtime/Conversions.h"
#include "state/SharedState.h"
#include "ui_frmProdukt.h"

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 kUpdate = 0;
constexpr qint16 kInsert = 1;

/// A column of a row that is to be written, its value as text, and the quote mark around that.
struct Entry
{
    QString column;
    QString quote;
    QString value;

    [[nodiscard]] QString quoted() const { return quote + value + quote; }
};

} // namespace

void frmProdukt::LagreProdukt()
{
    if (!isEditing())
        return;
    const QPointer<frmProdukt> self(this);
    qint32 result = 0;
    if (m_bEndre) {
        // A text that is no number leaves 0, which is the ID of no row.
        qint32 id = 0;
        passOver([&] { id = toLong(m_ui->txtFields_11->text()); });
        passOver([&] { result = LagrePost(kUpdate, u"Produkt"_s, id); });
    } else {
        passOver([&] { result = LagrePost(kInsert, u"Produkt"_s, 0); });
    }
    if (result < 1) {
        const QString error = gDB->LastError();
        if (!trimBlanks(error).isEmpty())
            MsgBox(u"Lagring feilet! - Feilmelding: "_s + error, msgbox::kExclamation);
    } else {
        VisMelding(u"Data er lagret."_s, msgbox::kInformation, u"Lagre"_s, 1, false);
    }
    // Events have run, and one of them may have closed the screen.
    if (!self)
        return;
    setMode(false, false);
}

qint32 frmProdukt::LagrePost(qint16 Modus, const QString &Tabell, qint32 ID) const
{
    const QString text = u"'"_s;
    const QString number;
    const Entry entries[] = {
        {u"KlientNr"_s, number, numberToText(gKlient)},
        {u"ProduktNr"_s, text, m_ui->txtFields_0->text()},
        {u"ProduktNavn"_s, text, m_ui->txtFields_1->text()},
        {u"ProduktGruppe"_s, text, m_ui->txtFields_2->text()},
        {u"Enhet"_s, text, m_ui->txtFields_3->text()},
        {u"InnPris"_s, number, TallTilSql(m_ui->txtFields_4->text(), u"#0.00")},
        {u"UtPris"_s, number, TallTilSql(m_ui->txtFields_5->text(), u"#0.00")},
        {u"MvaSats"_s, number, TallTilSql(m_ui->cmbMvaSats->currentText(), u"#0.0")},
        {u"BruttoPris"_s, number, numberToText(m_ui->chkBruttoPris->isChecked() ? 1 : 0)},
    };

    if (Modus != kInsert) {
        QStringList assignments;
        for (const Entry &entry : entries)
            assignments += entry.column + u'=' + entry.quoted();
        // By the ID alone, so the row becomes the active client's; no row at all is no failure.
        const bool done = gDB->Execute(u"UPDATE "_s + Tabell + u" SET "_s + assignments.join(u',') +
                                       u" WHERE ID="_s + QString::number(ID));
        return done ? 1 : 0;
    }

    QStringList columns;
    QStringList values;
    for (const Entry &entry : entries) {
        columns += entry.column;
        values += entry.quoted();
    }
    const qint32 key = gDB->ExecuteID(u"INSERT INTO "_s + Tabell + u" ("_s + columns.join(u',') +
                                      u") VALUES ("_s + values.join(u',') + u')');
    // Asking empties it, so a failed insert leaves the caller nothing to show.
    return gDB->LastError().isEmpty() ? key : 0;
}

// The list of a cell in the grid is for the eye alone: nothing of the grid reaches the database.
void frmProdukt::vaSpread1_LeaveCell(int col, int row, int newCol, int newRow)
{
    fpSpread &grid = *m_ui->vaSpread1;
    const QString entered = SpreadGetText(grid, newCol, newRow);
    if (newCol == kolonne::Gruppe) {
        // Produkt has no such column (its own is ProduktGruppe): the read fails, and nothing
        // follows. Where a database has one, the list goes to the rate's cell, not to this one.
        Ref<ado::Recordset> rs;
        passOver([&] {
            rs = gDB->GetRS(u"SELECT DISTINCT Gruppe FROM Produkt ORDER BY Gruppe ASC"_s, true);
        });
        QString list;
        if (!gDB->EmptyRS(rs)) {
            passOver([&] { list = rs->text(u"Gruppe"); });
            passOver([&] { rs->moveNext(); });
        }
        if (!list.isEmpty())
            SpreadSetCellType(grid, kolonne::MvaSats, row, int(CellKind::ComboBox), false, list,
                              {});
    }
    if (newCol == kolonne::MvaSats) {
        const QString rates = QStringList{gMva0, gMva10, gMva15, gMva25}.join(u'\t');
        SpreadSetCellType(grid, kolonne::MvaSats, row, int(CellKind::ComboBox), false, rates, {});
    }
    if (col == kolonne::Gruppe || col == kolonne::MvaSats)
        SpreadSetCellType(grid, kolonne::MvaSats, row, int(CellKind::Edit), false, {}, {});
    // Of two cells, not of one before and after. The mark is for nobody.
    const QString left = SpreadGetText(grid, col, row);
    if (entered != left)
        SpreadSetText(grid, kolonne::Changed, row, u"1", false);
}
