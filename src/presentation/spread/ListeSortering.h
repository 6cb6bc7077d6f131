#pragma once

#include <QtGlobal>

class fpSpread;

/// How a user has sorted a list by a double click on a column's header.
class ListeSortering
{
public:
    /// The list has been filled anew.
    void glem();
    /// Sorts rising; falling the column that was sorted rising last.
    void sorter(fpSpread &grid, qint16 kol);

private:
    enum Vei : qint16 { kUsortert = 0, kStigende = 1, kSynkende = 2 };

    qint16 m_iSortKol = 0; ///< the column sorted last; 0 for none
    Vei m_iSortVei = kUsortert;
};
