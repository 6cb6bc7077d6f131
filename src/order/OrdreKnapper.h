#pragma once

#include "order/OrdreTilstand.h"

#include <array>
#include <initializer_list>

class PictureButton;

/// The enabled states and pictures of the order screen's buttons.
class OrdreKnapper : private OrdreRom
{
public:
    explicit OrdreKnapper(const OrdreRom &rom);

    /// The commands that can be used.
    struct Valg
    {
        bool skriv = false;
        bool kopier = false;
        bool ny = false;
        bool endre = false;
        bool lagre = false;
    };
    /// An order whose status field is no longer "Ordre" cannot be changed, whatever is chosen.
    /// Cancel and close are on afterwards.
    void SettKnapper(const Valg &valg);
    /// False greys the pictures of the four navigation buttons and leaves the buttons in use. True
    /// enables them and greys the pictures of those that lead past the end on which the record set
    /// stands.
    void SettNavigering(bool paa);
    void skjulNavigering();

private:
    enum Bilde { Forste, Forrige, Neste, Siste };
    void visBilder(std::initializer_list<Bilde> bilder, bool graa);

    const std::array<PictureButton *, 4> m_navigering; // as the pictures
};
