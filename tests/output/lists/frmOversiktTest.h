#pragma once

#include "output/lists/OversiktTest.h"

/// The overview, driven by mouse and keyboard.
class FrmOversiktTest : public OversiktTest, public ScreenHands<frmOversikt>
{
protected:
    using ScreenHands::control;
    enum Kolonne { kNr = 1, kKundeNr, kNavn, kFakDato, kForfall, kBelop, kStatus, kId };

    /// A row's cells with "|" between them.
    static QString rowText(int row) { return rowTexts(row, kNr, kId).join(u'|'); }
    static QStringList numbers() { return column(kNr); }

    static void doubleClickRow(int row, int col = kNavn) { doubleClickCell(col, row); }
    void leggMange(int count)
    {
        for (int nr = 1; nr <= count; ++nr)
            legg({.nr = nr});
    }
};
