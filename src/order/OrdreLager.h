#pragma once

#include "order/OrdreTilstand.h"

class OrdreKnapper;
class OrdreLinjer;

/// Reads orders into the order screen: the record set, the header's fields and the line grid.
/// Everything here passes over.
class OrdreLager : private OrdreRom
{
public:
    /// The other rooms outlive this object.
    OrdreLager(const OrdreRom &rom, OrdreKnapper &knapper, OrdreLinjer &linjer);

    /// Reads the client's orders, or the one of `innId` when that is above 0, and shows the first
    /// one's header; without any the fields are blank.
    void LesOrdre(qint32 innId);
    /// Shows the current record's header in the fields; to be called after each move of the record
    /// set. Beyond its ends they are blank. Without any record the fields keep what they hold.
    void VisFelter();
    /// Fills the grid from the current record.
    void VisOrdre();

private:
    void tomFelter();
    void visLinjer();

    OrdreKnapper &m_knapper;
    OrdreLinjer &m_linjer;
};
