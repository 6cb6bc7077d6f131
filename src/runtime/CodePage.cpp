#include "runtime/CodePage.h"

#include <algorithm>
#include <array>

namespace {

/// The characters of the codes 0x80 to 0x9F; 0 where the page leaves the code open. Every other
/// code is the Unicode character of the same number.
constexpr std::array<char16_t, 32> kUpperControls = {
    0x20AC, 0,      0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, // 80-87
    0x02C6, 0x2030, 0x0160, 0x2039, 0x0152, 0,      0x017D, 0,      // 88-8F
    0,      0x2018, 0x2019, 0x201C, 0x201D, 0x2022, 0x2013, 0x2014, // 90-97
    0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0,      0x017E, 0x0178, // 98-9F
};
constexpr int kFirstUpperControl = 0x80;

} // namespace

namespace codepage {

char fromUnicode(QChar character)
{
    const char16_t unit = character.unicode();
    if (unit < 0x80 || (unit >= 0xA0 && unit <= 0xFF))
        return char(unit);
    if (unit > 0xFF) {
        const auto found = std::find(kUpperControls.begin(), kUpperControls.end(), unit);
        if (found != kUpperControls.end())
            return char(kFirstUpperControl + (found - kUpperControls.begin()));
    }
    return kReplacement;
}

QByteArray encode(QStringView text)
{
    QByteArray bytes(text.size(), Qt::Uninitialized);
    std::transform(text.begin(), text.end(), bytes.begin(), fromUnicode);
    return bytes;
}

QString decode(QByteArrayView bytes)
{
    QString text(bytes.size(), Qt::Uninitialized);
    std::transform(bytes.begin(), bytes.end(), text.begin(), [](char byte) {
        const auto code = uchar(byte);
        if (code < 0x80 || code >= 0xA0)
            return QChar(char16_t{code});
        const char16_t unit = kUpperControls[code - kFirstUpperControl];
        return unit == 0 ? QChar(QChar::ReplacementCharacter) : QChar(unit);
    });
    return text;
}

} // namespace codepage
