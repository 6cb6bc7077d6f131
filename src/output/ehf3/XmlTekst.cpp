#include "output/ehf3/XmlTekst.h"

#include <utility>

namespace {

/// What a document of some lines takes, in bytes.
constexpr qsizetype kVanligLengde = 16 * 1024;

/// How many UTF-16 units at the front of `tekst` make one lawful character, or 0.
qsizetype lovligTegn(QStringView tekst)
{
    const QChar c = tekst.front();
    if (c.isHighSurrogate())
        return tekst.size() > 1 && tekst[1].isLowSurrogate() ? 2 : 0;
    if (c.isLowSurrogate() || c.unicode() >= 0xfffe)
        return 0;
    return c >= u' ' || c == u'\t' || c == u'\n' || c == u'\r' ? 1 : 0;
}

bool trengerOmskriving(QChar c)
{
    return c == u'&' || c == u'<' || c == u'>' || c == u'"' || c == u'\r';
}

/// A carriage return would come out of a parser as a line feed, were it not for its reference.
void leggTekst(QByteArray &ut, QStringView tekst)
{
    if (std::none_of(tekst.begin(), tekst.end(), trengerOmskriving)) {
        ut += tekst.toUtf8();
        return;
    }
    QString omskrevet;
    for (const QChar c : tekst) {
        if (c == u'&')
            omskrevet += u"&amp;";
        else if (c == u'<')
            omskrevet += u"&lt;";
        else if (c == u'>')
            omskrevet += u"&gt;";
        else if (c == u'"')
            omskrevet += u"&quot;";
        else if (c == u'\r')
            omskrevet += u"&#13;";
        else
            omskrevet += c;
    }
    ut += omskrevet.toUtf8();
}

} // namespace

QString ehf3::lovligTekst(const QString &tekst)
{
    QString lovlig;
    lovlig.reserve(tekst.size());
    for (QStringView rest(tekst); !rest.isEmpty();) {
        const qsizetype lengde = lovligTegn(rest);
        lovlig += rest.first(lengde);
        rest = rest.sliced(std::max<qsizetype>(lengde, 1));
    }
    return lovlig;
}

ehf3::XmlTekst::XmlTekst(const char *rot) : m_rotmerke(QByteArray(rot).split(' ').first())
{
    m_tekst.reserve(kVanligLengde);
    m_tekst += "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<";
    m_tekst += rot;
    m_tekst += ">\n";
}

void ehf3::XmlTekst::gruppe(int niva, const char *merke)
{
    lukk(niva);
    m_grupper.push_back({niva, merke, false});
}

void ehf3::XmlTekst::element(int niva, const char *merke, QStringView verdi,
                             QStringView attributter)
{
    lukk(niva);
    if (verdi.isEmpty())
        return;
    apneVentende();
    innrykk(niva);
    m_tekst += '<';
    m_tekst += merke;
    m_tekst += attributter.toUtf8();
    m_tekst += '>';
    leggTekst(m_tekst, verdi);
    m_tekst += "</";
    m_tekst += merke;
    m_tekst += ">\n";
}

QByteArray ehf3::XmlTekst::ferdig() &&
{
    lukk(1);
    m_tekst += "</";
    m_tekst += m_rotmerke;
    m_tekst += ">\n";
    return std::move(m_tekst);
}

void ehf3::XmlTekst::lukk(int niva)
{
    for (; !m_grupper.empty() && m_grupper.back().niva >= niva; m_grupper.pop_back()) {
        const Gruppe &gruppe = m_grupper.back();
        if (!gruppe.erApnet)
            continue;
        innrykk(gruppe.niva);
        m_tekst += "</";
        m_tekst += gruppe.merke;
        m_tekst += ">\n";
    }
}

void ehf3::XmlTekst::apneVentende()
{
    for (Gruppe &gruppe : m_grupper) {
        if (std::exchange(gruppe.erApnet, true))
            continue;
        innrykk(gruppe.niva);
        m_tekst += '<';
        m_tekst += gruppe.merke;
        m_tekst += ">\n";
    }
}
