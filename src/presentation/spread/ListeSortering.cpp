#include "presentation/spread/ListeSortering.h"

#include "presentation/spread/mVASpread.h"

void ListeSortering::glem()
{
    m_iSortKol = 0;
    m_iSortVei = kUsortert;
}

void ListeSortering::sorter(fpSpread &grid, qint16 kol)
{
    const bool synkende = kol == m_iSortKol && m_iSortVei == kStigende;
    SpreadSort(grid, kol, !synkende);
    m_iSortKol = kol;
    m_iSortVei = synkende ? kSynkende : kStigende;
}
