#include "platform/report/Typesetting.h"

#include <cmath>

namespace report {

QFont fontInUnits(const QFont &font)
{
    QFont scaled(font);
    scaled.setPixelSize(static_cast<int>(std::lround(font.pointSizeF() * kUnitsPerPoint)));
    scaled.setHintingPreference(QFont::PreferNoHinting);
    return scaled;
}

} // namespace report
