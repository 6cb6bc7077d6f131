#include "output/mEHF.h"

#include "runtime/CodePage.h"
#include "runtime/Format.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kBlock = 64;

bool isEscaped(QChar c)
{
    return c > u'z';
}

QStringView takeBlock(QStringView &text)
{
    const QStringView block = text.first(std::min(kBlock, text.size()));
    text = text.sliced(block.size());
    return block;
}

/// Counts without a branch, in a sum as wide as a character, so that the compiler vectorises it.
quint16 escapesIn(QStringView block)
{
    quint16 count = 0;
    for (const QChar c : block)
        count = static_cast<quint16>(count + (isEscaped(c) ? 1 : 0));
    return count;
}

char *writeEscape(char *out, QChar c)
{
    static constexpr char kHex[] = "0123456789ABCDEF";
    const auto code = static_cast<unsigned char>(codepage::fromUnicode(c));
    for (const char piece : {'&', '#', 'x', '0', '0', kHex[code >> 4], kHex[code & 15], ';'})
        *out++ = piece;
    return out;
}

} // namespace

QByteArray EhfTegn(QStringView text)
{
    constexpr qsizetype kEscapeLength = 8;
    qsizetype escapes = 0;
    for (QStringView rest = text; !rest.isEmpty();)
        escapes += escapesIn(takeBlock(rest));

    QByteArray result(text.size() + escapes * (kEscapeLength - 1), Qt::Uninitialized);
    char *out = result.data();
    const auto narrow = [](QChar c) { return static_cast<char>(c.unicode()); };
    while (!text.isEmpty()) {
        const QStringView block = takeBlock(text);
        if (escapesIn(block) == 0) { // nearly every one: tags and digits
            out = std::transform(block.begin(), block.end(), out, narrow);
            continue;
        }
        for (const QChar c : block) {
            if (isEscaped(c))
                out = writeEscape(out, c);
            else
                *out++ = narrow(c);
        }
    }
    return result;
}

QString EhfBelop(Currency belop)
{
    return Format(belop.abs(), u"#0.00").replace(u',', u'.');
}

QString EhfProsent(float prosent)
{
    return Format(prosent, u"#0.0").replace(u',', u'.');
}

QString EhfHeltall(qint32 tall)
{
    return Format(qAbs(qint64{tall}), u"#0");
}

QString EhfDato(QDate dato)
{
    return Format(dato.year(), u"0000") + u'-' + Format(dato.month(), u"00") + u'-' +
           Format(dato.day(), u"00");
}
