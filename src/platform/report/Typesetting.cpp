#include "platform/report/Typesetting.h"

#include <QFontMetricsF>
#include <QRawFont>
#include <QtEndian>

#include <cmath>

namespace report {

QFont fontInUnits(const QFont &font)
{
    QFont scaled(font);
    scaled.setPixelSize(int(std::lround(font.pointSizeF() * kUnitsPerPoint)));
    scaled.setHintingPreference(QFont::PreferNoHinting);
    return scaled;
}

double lineHeightInUnits(const QFont &font)
{
    constexpr qsizetype kPlace = 8; // of the gap in the table, a number of 16 bits
    const QRawFont raw = QRawFont::fromFont(font);
    const QByteArray table = raw.fontTable("hhea");
    double gap = 0;
    if (table.size() >= kPlace + 2)
        gap = qFromBigEndian<qint16>(table.constData() + kPlace) / raw.unitsPerEm();
    return QFontMetricsF(font).height() + gap * font.pixelSize();
}

} // namespace report
