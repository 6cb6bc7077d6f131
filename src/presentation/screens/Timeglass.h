#pragma once

#include <QDateTime>

/// The mouse pointer as an hourglass, until it is turned back, by itself at the end.
class Timeglass
{
public:
    Timeglass();
    ~Timeglass() { fjern(); }
    Timeglass(const Timeglass &) = delete;
    Timeglass &operator=(const Timeglass &) = delete;

    void fjern();

    /// To be called again and again by work that takes long: now and then shows all windows again
    /// as they were painted last, where something has covered them meanwhile. No event runs for it,
    /// and nothing is painted anew.
    void holdVinduene();

private:
    bool m_staar = true;
    int m_kall = 0;
    QDateTime m_vist; ///< when the windows were shown last
};
