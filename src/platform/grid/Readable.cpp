#include "platform/grid/Readable.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double kReadable = 4.5; ///< the contrast that letters of ordinary size need

/// The light of a colour as the eye weighs its parts, from 0 to 1.
double luminance(const QColor &color)
{
    const auto linear = [](float part) {
        return part <= 0.03928F ? double(part) / 12.92
                                : std::pow((double(part) + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
           0.0722 * linear(color.blueF());
}

} // namespace

double contrast(const QColor &one, const QColor &other)
{
    constexpr double kFlare = 0.05; // what a screen always reflects
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + kFlare) / (darker + kFlare);
}

QColor readable(const QColor &wished, const QColor &ground)
{
    if (contrast(wished, ground) >= kReadable)
        return wished;
    return contrast(Qt::black, ground) > contrast(Qt::white, ground) ? Qt::black : Qt::white;
}
