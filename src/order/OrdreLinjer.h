#pragma once

#include "rules/Beregning.h"

#include <QObject>
#include <QString>

#include <optional>

class OrdreFelter;
class fpSpread;

/// The columns of the line grid that the calculation has no use for, counted from 1.
namespace linjekolonne {
inline constexpr int kProduktNr = 1;
inline constexpr int kProduktNavn = 2;
inline constexpr int kRabatt = 5; ///< hidden
inline constexpr int kID = 9;     ///< hidden
inline constexpr int kPos = 10;   ///< hidden
} // namespace linjekolonne

/// The line grid of the order screen. Its cells are the working data of the lines; all that
/// happens, happens when a cell is left.
class OrdreLinjer : public QObject
{
    Q_OBJECT

public:
    /// Both arguments are the screen's and outlive this object. Gives the grid its columns and
    /// connects to its events.
    OrdreLinjer(fpSpread &grid, const OrdreFelter &felter);

    /// Gives the product's name the room, in twips, that the screen has beyond its first width.
    void brukPlass(int twips);
    /// Empties the grid and gives its columns their types and lists.
    void InitLinjer();
    /// The client's product numbers in the database's order, parted by tabs; empty after a failed
    /// read.
    [[nodiscard]] QString ProduktListe() const;

    /// While one lives, the grid reads the product list once however often it is emptied: for
    /// routines that show several orders in one go.
    class FellesProduktliste
    {
    public:
        explicit FellesProduktliste(OrdreLinjer &linjer) : m_linjer(linjer)
        {
            m_linjer.m_felles = true;
        }
        ~FellesProduktliste()
        {
            m_linjer.m_felles = false;
            m_linjer.m_liste.reset();
        }
        FellesProduktliste(const FellesProduktliste &) = delete;
        FellesProduktliste &operator=(const FellesProduktliste &) = delete;

    private:
        OrdreLinjer &m_linjer;
    };

private:
    /// `forlaterGrid`: for another control.
    void vaSpread1_LeaveCell(int kol, int rad, bool forlaterGrid);
    void slaOppProdukt(int rad);
    void gaTilAntall(int rad, bool forlaterGrid);

    fpSpread &m_grid;
    const OrdreFelter &m_felter;
    bool m_felles = false;          ///< a FellesProduktliste lives
    std::optional<QString> m_liste; ///< what it has read
};
