#pragma once

#include "order/OrdreUtskrift.h"

struct OrdreTilstand;
class OrdreFelter;
class OrdreHode;
class OrdreKnapper;
class OrdreLager;
class OrdreLinjer;
namespace Ui {
class frmOrdre;
}

/// The rooms of the order screen that its commands drive.
struct OrdreRom
{
    const OrdreFelter &felter;
    OrdreKnapper &knapper;
    OrdreHode &hode;
    OrdreLinjer &linjer;
    OrdreLager &lager;
};

/// The commands of the order screen and what they do to its mode. Those named "passes over" skip a
/// statement that fails and go on.
class OrdreKommandoer
{
public:
    /// All arguments are the screen's and outlive this object.
    OrdreKommandoer(Ui::frmOrdre &ui, OrdreTilstand &tilstand, const OrdreRom &rom);

    /// What happens each time the screen becomes the active one. Passes over.
    void aktiver();

    void btnNew_Click();                             ///< passes over
    void btnPrint_Click(const UtskriftApner &apner); ///< passes over
    void btnCopy_Click();
    void btnChange_Click();
    void btnCancel_Click();
    void chkBetalt_Click(); ///< passes over
    void cmdFirst_Click();  ///< passes over, as do the next three
    void cmdPrevious_Click();
    void cmdNext_Click();
    void cmdLast_Click();
    void cmdKunder_Click();
    void imgAar_Click();

private:
    void TomSkjema();
    void visPost();
    void settDagens();
    void visAarvarsel();
    void gridIBruk();
    void tilKundeNr();

    Ui::frmOrdre &m_ui;
    OrdreTilstand &m_tilstand;
    OrdreRom m_rom;
};
