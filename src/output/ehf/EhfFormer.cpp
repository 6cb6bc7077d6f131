#include "output/ehf/mEHF.h"

#include "runtime/CodePage.h"
#include "runtime/Format.h"

#include <QStringBuilder>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr qsizetype kBlokk = 64;

bool skalOmskrives(QChar c)
{
    return c > u'z';
}

/// Narrows `blokk` to `ut` and tells whether a character of it needs an escape instead. Without a
/// branch, and in a sum as wide as a character, so that the compiler vectorises it.
bool smalne(QStringView blokk, char *ut)
{
    const char16_t *inn = blokk.utf16();
    quint16 omskrevne = 0;
    for (qsizetype i = 0; i < blokk.size(); ++i) {
        omskrevne = quint16(omskrevne + (skalOmskrives(inn[i]) ? 1 : 0));
        ut[i] = char(inn[i]);
    }
    return omskrevne != 0;
}

char *skrivOmskriving(char *ut, QChar c)
{
    static constexpr char kHeks[] = "0123456789ABCDEF";
    const auto kode = uchar(codepage::fromUnicode(c));
    for (const char tegn : {'&', '#', 'x', '0', '0', kHeks[kode >> 4], kHeks[kode & 15], ';'})
        *ut++ = tegn;
    return ut;
}

} // namespace

QByteArray EhfTegn(QStringView tekst)
{
    // There is always room for what is left unescaped; a block with escapes makes more.
    constexpr qsizetype kOmskrivingslengde = 8;
    QByteArray resultat(tekst.size(), Qt::Uninitialized);
    qsizetype skrevet = 0;
    while (!tekst.isEmpty()) {
        const QStringView blokk = tekst.first(std::min(kBlokk, tekst.size()));
        tekst = tekst.sliced(blokk.size());
        if (!smalne(blokk, resultat.data() + skrevet)) { // nearly every one: tags and digits
            skrevet += blokk.size();
            continue;
        }
        const qsizetype plass = skrevet + blokk.size() * kOmskrivingslengde + tekst.size();
        if (plass > resultat.size())
            resultat.resize(std::max(plass, resultat.size() + resultat.size() / 8));
        char *ut = resultat.data() + skrevet;
        for (const QChar c : blokk) {
            if (skalOmskrives(c))
                ut = skrivOmskriving(ut, c);
            else
                *ut++ = char(c.unicode());
        }
        skrevet = ut - resultat.data();
    }
    resultat.truncate(skrevet);
    return resultat;
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
