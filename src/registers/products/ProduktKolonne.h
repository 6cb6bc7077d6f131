#pragma once

/// The columns of the product grid.
namespace kolonne {
inline constexpr int ProduktNr = 1;
inline constexpr int ProduktNavn = 2;
inline constexpr int Gruppe = 3; ///< hidden
inline constexpr int Enhet = 4;
inline constexpr int InnPris = 5;
inline constexpr int UtPris = 6;
inline constexpr int MvaSats = 7;
inline constexpr int BruttoPris = 8;
inline constexpr int ID = 9;       ///< hidden
inline constexpr int Changed = 10; ///< hidden; written and never read
} // namespace kolonne
