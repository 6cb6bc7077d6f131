#pragma once

#include "platform/forms/ImageList.h"

struct OrdreTilstand;
class OrdreFelter;
namespace Ui {
class frmOrdre;
}

/// The enabled states and pictures of the order screen's buttons.
class OrdreKnapper
{
public:
    /// All arguments are the screen's and outlive this object.
    OrdreKnapper(Ui::frmOrdre &ui, OrdreTilstand &tilstand, const OrdreFelter &felter);

    /// Each argument enables or disables the command of its name; an order whose status field is no
    /// longer "Ordre" cannot be changed, whatever `change` is. Cancel and close are on afterwards.
    void SettKnapper(bool print, bool copy, bool ny, bool change, bool save);

    /// False greys the pictures of the four navigation buttons and leaves the buttons in use. True
    /// enables them and greys the pictures of those that lead past the end on which the record set
    /// stands.
    void SettNavigering(bool flag);

private:
    enum Bilde { Forste = 1, Forrige, Neste, Siste, Graa = 4 };

    void visBilde(Bilde bilde, bool graa);

    Ui::frmOrdre &m_ui;
    OrdreTilstand &m_tilstand;
    const OrdreFelter &m_felter;
    ImageList m_bilder;
};
