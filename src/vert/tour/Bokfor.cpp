#include "data/clsAdoUtils.h"
#include "runtime/Format.h"
#include "state/SharedState.h"
#include "vert/HostError.h"
#include "vert/ScreenGuide.h"
#include "vert/tour/Stops.h"

#include <QApplication>
#include <QHeaderView>
#include <QTableWidget>

using namespace Qt::StringLiterals;

namespace {

constexpr int kNumberColumn = 1;
constexpr int kDateColumn = 4;
constexpr int kMarkColumn = 7;

/// The first invoice of the active year in the list; 0 when earlier tours have posted them all.
int firstInvoice(const QWidget &grid)
{
    for (int row = 1; !screentour::Guide::cell(grid, row, kNumberColumn).isEmpty(); ++row) {
        if (screentour::Guide::cell(grid, row, kDateColumn).endsWith(QString::number(gAar)))
            return row;
    }
    return 0;
}

/// The voucher that was posted last, as the parent program might show it.
void pictureVoucher(screentour::Guide &guide)
{
    const auto voucher = gDB->GetRS(u"SELECT ID,BilagNr,Tekst FROM Bilag ORDER BY ID DESC"_s, true);
    if (gDB->EmptyRS(voucher))
        throw HostError(u"Det er ingen bilag i regnskapet."_s);
    const auto lines = gDB->GetRS(u"SELECT Konto,Tekst,Debet,Kredit,MVAkode FROM BilagLinjer WHERE "
                                  u"BilagID="_s +
                                      voucher->text(u"ID") + u" ORDER BY ID"_s,
                                  true);
    QTableWidget table(lines->recordCount(), lines->fieldCount());
    table.setObjectName(u"bilag"_s);
    table.setWindowTitle(
        u"Bilag %1 - %2"_s.arg(voucher->text(u"BilagNr"), voucher->text(u"Tekst")));
    table.setHorizontalHeaderLabels(
        {u"Konto"_s, u"Tekst"_s, u"Debet"_s, u"Kredit"_s, u"Mva-kode"_s});
    table.verticalHeader()->hide();
    for (int row = 0; !lines->eof(); ++row, lines->moveNext()) {
        for (int col = 0; col < lines->fieldCount(); ++col) {
            const bool amount = lines->field(col).type == DataType::Currency;
            auto *cell = new QTableWidgetItem(amount ? Format(lines->currency(col), u"# ##0.00")
                                                     : lines->text(col));
            if (amount)
                cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            table.setItem(row, col, cell);
        }
    }
    table.horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    table.resize(640, 40 + 32 * lines->recordCount());
    table.show();
    guide.picture(table, u"bilag"_s, u"Bilaget i regnskapet, med bruttobeløp for hver mva-sats"_s);
}

/// The run has left its two journals open.
void closeJournals()
{
    for (QWidget *window : QApplication::topLevelWidgets()) {
        if (window->objectName() == u"Forhandsvisning"_s)
            window->close();
    }
    screentour::Guide::expectClosed(u"Forhandsvisning"_s);
}

} // namespace

void screentour::visitPosting(Guide &guide)
{
    guide.click(guide.control(guide.window(u"frmRegningsdel"_s), u"Command8"_s));
    QWidget &screen = guide.window(u"frmBokfor"_s);
    QWidget &grid = guide.control(screen, u"fpSpread1"_s);
    const int row = firstInvoice(grid);
    if (row != 0)
        guide.clickCell(grid, row, kMarkColumn);
    guide.picture(screen, u"bokfor"_s,
                  u"Fakturaer som er klare for regnskapet, én av dem merket"_s);
    if (row != 0)
        guide.answer(
            u"OK"_s, [&] { guide.click(guide.control(screen, u"btnTransfer"_s)); }, u"bokfort"_s);
    closeJournals();
    guide.close(screen);
    pictureVoucher(guide);
}
