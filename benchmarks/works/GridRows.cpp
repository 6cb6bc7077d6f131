#include "benchmarks/works/GridRows.h"

#include "runtime/Format.h"

namespace bench {

QString gridCell(int row, int col)
{
    switch (col) {
    case 1:
        return Format(1000 + row, u"#0");
    case 2:
        return Format(100 + row % 700, u"#0");
    case 3:
        return QStringLiteral("Fjellveien Transport AS");
    case 4:
        return QStringLiteral("14.03.2014");
    case 5:
        return QStringLiteral("13.04.2014");
    case kAmountCol:
        return Format(Currency::fromTenThousandths(qint64{row} * 123457), u"# ##0.00");
    case 7:
        return QStringLiteral("Fakturert");
    default:
        return Format(row, u"#0");
    }
}

QString gridRow(int row)
{
    QString text;
    text.reserve(120);
    text += gridCell(row, 1);
    for (int col = 2; col <= kGridCols; ++col) {
        text += u'\t';
        text += gridCell(row, col);
    }
    return text;
}

} // namespace bench
