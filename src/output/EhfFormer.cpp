#include "output/mEHF.h"

#include "runtime/CodePage.h"
#include "runtime/Format.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

bool isEscaped(QChar c)
{
    return c > u'z';
}

} // namespace

QByteArray EhfTegn(QStringView text)
{
    static constexpr char kHex[] = "0123456789ABCDEF";
    constexpr qsizetype kEscapeLength = 8;

    const qsizetype escapes = std::count_if(text.begin(), text.end(), isEscaped);
    QByteArray result(text.size() + escapes * (kEscapeLength - 1), Qt::Uninitialized);
    char *out = result.data();
    const auto plain = [](QChar c) { return static_cast<char>(c.unicode()); };
    for (auto at = text.begin(); at != text.end();) {
        const auto next = std::find_if(at, text.end(), isEscaped);
        out = std::transform(at, next, out, plain);
        at = next;
        if (at == text.end())
            break;
        const auto code = static_cast<unsigned char>(codepage::fromUnicode(*at++));
        for (const char piece : {'&', '#', 'x', '0', '0', kHex[code >> 4], kHex[code & 15], ';'})
            *out++ = piece;
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
