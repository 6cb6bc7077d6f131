#include "output/ehf/mEHF.h"

#include "runtime/CodePage.h"
#include "runtime/Format.h"

#include <QStringBuilder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kBlock = 64;

bool isEscaped(QChar c)
{
    return c > u'z';
}

/// Narrows `block` to `out` and tells whether a character of it needs an escape instead. Without a
/// branch, and in a sum as wide as a character, so that the compiler vectorises it.
bool narrow(QStringView block, char *out)
{
    const char16_t *in = block.utf16();
    quint16 escapes = 0;
    for (qsizetype i = 0; i < block.size(); ++i) {
        escapes = static_cast<quint16>(escapes + (isEscaped(in[i]) ? 1 : 0));
        out[i] = static_cast<char>(in[i]);
    }
    return escapes != 0;
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
    // There is always room for what is left unescaped; a block with escapes makes more.
    constexpr qsizetype kEscapeLength = 8;
    QByteArray result(text.size(), Qt::Uninitialized);
    qsizetype written = 0;
    while (!text.isEmpty()) {
        const QStringView block = text.first(std::min(kBlock, text.size()));
        text = text.sliced(block.size());
        if (!narrow(block, result.data() + written)) { // nearly every one: tags and digits
            written += block.size();
            continue;
        }
        const qsizetype room = written + block.size() * kEscapeLength + text.size();
        if (room > result.size())
            result.resize(std::max(room, result.size() + result.size() / 8));
        char *out = result.data() + written;
        for (const QChar c : block) {
            if (isEscaped(c))
                out = writeEscape(out, c);
            else
                *out++ = static_cast<char>(c.unicode());
        }
        written = out - result.data();
    }
    result.truncate(written);
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
    return QString::number(qAbs(qint64{tall}));
}

QString EhfDato(QDate dato)
{
    return Format(dato.year(), u"0000") % u'-' % Format(dato.month(), u"00") % u'-' %
           Format(dato.day(), u"00");
}
