#pragma once

#include "output/lists/OversiktTest.h"

#include <QHeaderView>

/// The overview, driven by mouse and keyboard.
class FrmOversiktTest : public OversiktTest
{
protected:
    enum Kolonne { kNr = 1, kKundeNr, kNavn, kFakDato, kForfall, kBelop, kStatus, kId };

    static void open() { show<frmOversikt>(); }
    static fpSpread &grid() { return *in<fpSpread>(oversikt(), QStringLiteral("fpSpread1")); }
    static void press(const QString &button) { click(in(oversikt(), button)); }

    static QString at(int col, int row)
    {
        grid().setCurrent(col, row);
        return grid().text();
    }
    /// A row's cells with "|" between them.
    static QString rowText(int row)
    {
        QStringList cells;
        for (int col = kNr; col <= kId; ++col)
            cells += at(col, row);
        return cells.join(u'|');
    }
    static QStringList column(int col)
    {
        QStringList texts;
        for (int row = 1; row <= grid().dataRowCnt(); ++row)
            texts += at(col, row);
        return texts;
    }
    static QStringList numbers() { return column(kNr); }

    static void doubleClick(QWidget *viewport, QPoint place)
    {
        QTest::mouseClick(viewport, Qt::LeftButton, {}, place);
        QTest::mouseDClick(viewport, Qt::LeftButton, {}, place);
        runEvents();
    }
    static void doubleClickRow(int row, int col = kNavn)
    {
        const QModelIndex index = grid().model()->index(row - 1, col - 1);
        grid().scrollTo(index);
        doubleClick(grid().viewport(), grid().visualRect(index).center());
    }
    static void doubleClickHeader(int col)
    {
        const QHeaderView *header = grid().horizontalHeader();
        doubleClick(header->viewport(),
                    QPoint(header->sectionViewportPosition(col - 1) + 10, header->height() / 2));
    }
    void leggMange(int count)
    {
        for (int nr = 1; nr <= count; ++nr)
            legg({.nr = nr});
    }
};
