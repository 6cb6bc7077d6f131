#include "data/clsAdoUtils.h"
#include "host/guide/ScreenGuide.h"
#include "host/tour/stops/Stops.h"
#include "runtime/Format.h"
#include "state/SharedState.h"

#include <QAbstractItemView>
#include <QApplication>
#include <QHeaderView>
#include <QLabel>
#include <QTableWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int kDateColumn = 4;
constexpr int kAmountColumn = 6;
constexpr int kMarkColumn = 7;

/// The rows to post: the first and the last invoice of the active year, which may be one; none when
/// earlier tours have posted them all. A credit note would make what follows it one as well.
QList<int> rowsToPost(const QWidget &grid)
{
    QList<int> rows;
    const int last = dynamic_cast<const QAbstractItemView &>(grid).model()->rowCount();
    for (int row = 1; row <= last; ++row) {
        const bool credit = screentour::Guide::cell(grid, row, kAmountColumn).startsWith(u'-');
        const QString date = screentour::Guide::cell(grid, row, kDateColumn);
        if (!credit && date.endsWith(QString::number(gAar)))
            rows.append(row);
    }
    if (rows.size() > 2)
        rows = {rows.first(), rows.last()};
    return rows;
}

/// The voucher that was posted last, as the parent program might show it.
void pictureVoucher(screentour::Guide &guide)
{
    const auto voucher = gDB->GetRS(u"SELECT ID,BilagNr,Tekst FROM Bilag ORDER BY ID DESC"_s, true);
    if (gDB->EmptyRS(voucher))
        throw screentour::ScreenError(u"Det er ingen bilag i regnskapet."_s);
    const auto lines = gDB->GetRS(u"SELECT Konto,Tekst,Debet,Kredit,MVAkode FROM BilagLinjer WHERE "
                                  u"BilagID="_s +
                                      voucher->text(u"ID") + u" ORDER BY ID"_s,
                                  true);
    QWidget window;
    window.setObjectName(u"bilag"_s);
    auto *heading = new QLabel(
        u"<b>Bilag %1</b> - %2"_s.arg(voucher->text(u"BilagNr"), voucher->text(u"Tekst")));
    auto *table = new QTableWidget(lines->recordCount(), lines->fieldCount());
    table->setHorizontalHeaderLabels(
        {u"Konto"_s, u"Tekst"_s, u"Debet"_s, u"Kredit"_s, u"Mva-kode"_s});
    table->verticalHeader()->hide();
    table->setFocusPolicy(Qt::NoFocus);
    for (int row = 0; !lines->eof(); ++row, lines->moveNext()) {
        for (int col = 0; col < lines->fieldCount(); ++col) {
            const bool amount = lines->field(col).type == DataType::Currency;
            auto *cell = new QTableWidgetItem(amount ? Format(lines->currency(col), u"# ##0.00")
                                                     : lines->text(col));
            if (amount)
                cell->setTextAlignment(Qt::AlignRight | Qt::AlignVCenter);
            table->setItem(row, col, cell);
        }
    }
    table->horizontalHeader()->setSectionResizeMode(1, QHeaderView::Stretch);
    table->setFixedHeight(table->horizontalHeader()->sizeHint().height() +
                          table->verticalHeader()->length() + 2 * table->frameWidth());
    auto *layout = new QVBoxLayout(&window);
    layout->addWidget(heading);
    layout->addWidget(table);
    window.resize(640, window.sizeHint().height());
    window.show();
    guide.picture(window, u"bilag"_s, u"Bilaget i regnskapet, med bruttobeløp for hver mva-sats"_s);
}

/// The run has left its two journals open. Each is pictured, saved and closed.
void pictureJournals(screentour::Guide &guide)
{
    for (const QString &title : {u"Fakturajournal"_s, u"Salgsjournal"_s}) {
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (window->objectName() != u"Forhandsvisning"_s ||
                !window->windowTitle().startsWith(title))
                continue;
            guide.picture(*window, title.toLower(), title + u" over det som ble bokført"_s);
            guide.saveAs(guide.control(*window, u"cmdPdf"_s), title + u".pdf"_s);
            window->close();
            break;
        }
    }
    screentour::Guide::expectClosed(u"Forhandsvisning"_s);
}

} // namespace

void screentour::visitPosting(Guide &guide)
{
    guide.click(guide.control(guide.window(u"frmRegningsdel"_s), u"Command8"_s));
    QWidget &screen = guide.window(u"frmBokfor"_s);
    QWidget &grid = guide.control(screen, u"fpSpread1"_s);
    const QList<int> rows = rowsToPost(grid);
    for (const int row : rows)
        guide.clickCell(grid, row, kMarkColumn);
    guide.picture(screen, u"bokfor"_s,
                  u"Fakturaer som er klare for regnskapet, med hake ved dem som skal føres"_s);
    if (!rows.isEmpty()) {
        guide.answer(
            u"OK"_s, [&] { guide.click(guide.control(screen, u"btnTransfer"_s)); }, u"bokfort"_s);
        pictureVoucher(guide);
        pictureJournals(guide);
    }
    guide.close(screen);
}
