#include "presentation/spread/ListeSortering.h"

#include "presentation/spread/mVASpread.h"

void ListeSortering::glem()
{
    m_iSortKol = 0;
    m_iSortVei = kUsortert;
}

void ListeSortering::sorter(fpSpread &grid, qint16 col)
{
    const bool synkende = col == m_iSortKol && m_iSortVei == kStigende;
    SpreadSort(grid, col, !synkende);
    m_iSortKol = col;
    m_iSortVei = synkende ? kSynkende : kStigende;
}
