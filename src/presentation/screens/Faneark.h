#pragma once

#include <vector>

class QFrame;
class TabStrip;

/// The pages of a strip of tabs: frames that stand in the strip's empty area, the one of the
/// selected tab in front. One that is out of sight is hidden too, so that the keyboard does not
/// wander into it. Pages are numbered from 1, like their tabs.
struct Faneark
{
    /// Brings the page into sight, and hides the others where they stand.
    void hentFram(int nr) const;
    /// Takes all pages but this one out of the window.
    void leggBortAndre(int nr) const;
    /// Fits the pages into the strip's area and into a window of that width in pixels.
    void tilpass(int bredde) const;

    TabStrip *faner = nullptr;
    std::vector<QFrame *> ark;
    int venstre = 0; ///< where a page in sight stands, in twips
    int marg = 0;    ///< what is left free above and below the pages, in twips
};
