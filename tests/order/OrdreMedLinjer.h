#pragma once

#include "data/clsAdoUtils.h"
#include "order/OrdreFelter.h"
#include "order/OrdreLinjer.h"
#include "order/OrdreSkjerm.h"
#include "platform/forms/Forms.h"
#include "platform/grid/fpSpread.h"
#include "state/SharedState.h"

/// The order screen with hands for its line grid.
class OrdreMedLinjer : public OrdreSkjerm
{
protected:
    static fpSpread &grid() { return Bilde::grid(); }
    static std::pair<int, int> aktiv() { return {grid().activeCol(), grid().activeRow()}; }

    /// Gives the grid the focus, in that cell, without any cell being left.
    static void staaI(int col, int row)
    {
        grid().setFocus();
        runEvents();
        grid().setCurrent(col, row);
        grid().setAction(fpSpread::ActiveCellAction);
    }
    /// Types in the active cell what has a key of its own on the keyboard.
    static void tastInn(const QString &text)
    {
        for (const QChar c : text)
            hands::type(*QApplication::focusWidget(), c);
    }
    /// A key for what has the focus in the grid: the grid itself or the cell that is open.
    static void gridtast(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(QApplication::focusWidget(), key, modifiers);
        runEvents();
    }
    /// Types over one cell and leaves it with Tab.
    static void skrivCelle(int col, int row, const QString &text)
    {
        staaI(col, row);
        if (text.isEmpty())
            gridtast(Qt::Key_Delete);
        else
            tastInn(text);
        gridtast(Qt::Key_Tab);
    }
    /// A line as a user enters it: the product out of the list, Tab, the quantity, Tab.
    static void skrivLinje(int row, const QString &produktNr, const QString &antall)
    {
        skrivCelle(linjekolonne::kProduktNr, row, produktNr);
        tastInn(antall);
        gridtast(Qt::Key_Tab);
    }
    static void klikkCelle(int col, int row) { Bilde::clickCell(col, row); }
    static QStringList rad(int row, int first, int last)
    {
        return Bilde::rowTexts(row, first, last);
    }
    void leggProdukt(const QString &nr, const QString &navn, const QString &utPris,
                     const QString &mvaSats, int bruttoPris = 0)
    {
        run(QStringLiteral("INSERT INTO Produkt "
                           "(KlientNr,ProduktNr,ProduktNavn,UtPris,MvaSats,BruttoPris) "
                           "VALUES (5,'%1','%2',%3,%4,%5)")
                .arg(nr, navn, utPris, mvaSats)
                .arg(bruttoPris));
    }
};
