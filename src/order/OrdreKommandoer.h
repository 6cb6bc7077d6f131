#pragma once

#include "order/OrdreTilstand.h"
#include "order/OrdreUtskrift.h"

class OrdreHode;
class OrdreKnapper;
class OrdreLager;
class OrdreLinjer;

/// The commands of the order screen and what they do to its mode. Those named "passes over" skip a
/// statement that fails and go on.
class OrdreKommandoer : private OrdreRom
{
public:
    /// The rooms that the commands drive outlive this object.
    OrdreKommandoer(const OrdreRom &rom, OrdreKnapper &knapper, OrdreHode &hode,
                    OrdreLinjer &linjer, OrdreLager &lager);

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
    void tilEnde(void (ado::Recordset::*flytt)());
    void visPost();
    void settDagens();
    void visAarvarsel();
    void gridIBruk();
    void tilKundeNr();

    OrdreKnapper &m_knapper;
    OrdreHode &m_hode;
    OrdreLinjer &m_linjer;
    OrdreLager &m_lager;
};
