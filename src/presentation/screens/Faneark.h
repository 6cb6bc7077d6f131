#pragma once

#include <utility>
#include <vector>

class QFrame;
class TabStrip;

/// The pages of a strip of tabs: frames that stand in the strip's empty area, the one of the
/// selected tab in front. One that is out of sight is hidden too, so that the keyboard does not
/// wander into it. Pages are numbered from 1, like their tabs.
class Faneark
{
public:
    Faneark() = default;
    /// `venstre` is where a page in sight stands, `marg` what is left free around the pages; both
    /// in twips. Nothing is moved yet.
    Faneark(TabStrip *faner, std::vector<QFrame *> ark, int venstre, int marg)
        : m_faner(faner), m_ark(std::move(ark)), m_venstre(venstre), m_marg(marg)
    {
    }

    /// Brings the page into sight, and hides the others where they stand.
    void hentFram(int nr) const;
    /// Takes all pages but this one out of the window.
    void leggBortAndre(int nr) const;
    /// Fits the pages into the strip's area and into a window of that width in pixels.
    void tilpass(int bredde) const;

private:
    TabStrip *m_faner = nullptr;
    std::vector<QFrame *> m_ark;
    int m_venstre = 0;
    int m_marg = 0;
};
