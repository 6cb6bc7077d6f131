#include "output/ehf3/XmlTekst.h"

#include <algorithm>
#include <utility>

namespace {

/// What a document of some lines takes, in bytes.
constexpr qsizetype kVanligLengde = qsizetype{16} * 1024;
constexpr std::size_t kVanligDybde = 8;

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

/// How far a row of that level stands from the left.
constexpr qsizetype innrykk(int niva)
{
    return qsizetype{2} * niva;
}

char *legg(char *ut, std::string_view bit)
{
    return std::copy(bit.begin(), bit.end(), ut);
}

/// At most six bytes for each UTF-16 unit.
constexpr qsizetype kMestForEttTegn = 6;

/// A carriage return would come out of a parser as a line feed, were it not for its reference.
std::string_view omskriving(QChar tegn)
{
    switch (tegn.unicode()) {
    case u'&':
        return "&amp;";
    case u'<':
        return "&lt;";
    case u'>':
        return "&gt;";
    case u'"':
        return "&quot;";
    case u'\r':
        return "&#13;";
    default:
        return {};
    }
}

char *leggTekst(char *ut, QStringView tekst)
{
    const auto erAscii = [](QChar c) { return c.unicode() < 0x80; };
    for (auto fra = tekst.begin(); fra != tekst.end();) {
        if (!erAscii(*fra)) {
            const auto til = std::find_if(fra, tekst.end(), erAscii);
            const QByteArray utf8 = QStringView(fra, til).toUtf8();
            ut = std::copy(utf8.begin(), utf8.end(), ut);
            fra = til;
            continue;
        }
        const std::string_view omskrevet = omskriving(*fra);
        if (omskrevet.empty())
            *ut++ = char(fra->unicode());
        else
            ut = legg(ut, omskrevet);
        ++fra;
    }
    return ut;
}

} // namespace

QString ehf3::lovligTekst(const QString &tekst)
{
    const auto erVanlig = [](QChar c) { return c >= u' ' && c < QChar(0xd800); };
    if (std::all_of(tekst.begin(), tekst.end(), erVanlig)) // as nearly all are
        return tekst;
    QString lovlig;
    lovlig.reserve(tekst.size());
    for (QStringView rest(tekst); !rest.isEmpty();) {
        const qsizetype lengde = lovligTegn(rest);
        lovlig += rest.first(lengde);
        rest = rest.sliced(std::max<qsizetype>(lengde, 1));
    }
    return lovlig;
}

ehf3::XmlTekst::XmlTekst(std::string_view rot)
    : m_tekst(kVanligLengde, Qt::Uninitialized), m_rot(rot.substr(0, rot.find(' ')))
{
    m_grupper.reserve(kVanligDybde);
    constexpr std::string_view kProlog = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";
    ferdigTil(legg(plassTil(qsizetype(kProlog.size())), kProlog));
    skrivRad(0, "<", rot);
}

void ehf3::XmlTekst::gruppe(int niva, std::string_view merke)
{
    lukk(niva);
    m_grupper.push_back({niva, merke, false});
}

void ehf3::XmlTekst::element(int niva, std::string_view merke, QStringView verdi,
                             Attributt attributt)
{
    lukk(niva);
    if (verdi.isEmpty())
        return;
    apneVentende();
    constexpr qsizetype kSkilletegn = 10; // brackets, a blank, "=", two quotes, the line feed
    char *ut =
        plassTil(innrykk(niva) + 2 * qsizetype(merke.size()) + qsizetype(attributt.navn.size()) +
                 qsizetype(attributt.verdi.size()) + kMestForEttTegn * verdi.size() + kSkilletegn);
    ut = std::fill_n(ut, innrykk(niva), ' ');
    *ut++ = '<';
    ut = legg(ut, merke);
    if (!attributt.navn.empty()) {
        *ut++ = ' ';
        ut = legg(legg(ut, attributt.navn), "=\"");
        ut = legg(legg(ut, attributt.verdi), "\"");
    }
    *ut++ = '>';
    ut = leggTekst(ut, verdi);
    ut = legg(legg(legg(ut, "</"), merke), ">\n");
    ferdigTil(ut);
}

QByteArray ehf3::XmlTekst::ferdig() &&
{
    lukk(1);
    skrivRad(0, "</", m_rot);
    m_tekst.truncate(m_lengde);
    return std::move(m_tekst);
}

void ehf3::XmlTekst::lukk(int niva)
{
    for (; !m_grupper.empty() && m_grupper.back().niva >= niva; m_grupper.pop_back()) {
        if (m_grupper.back().erApnet)
            skrivRad(m_grupper.back().niva, "</", m_grupper.back().merke);
    }
}

void ehf3::XmlTekst::apneVentende()
{
    for (Gruppe &gruppe : m_grupper) {
        if (!std::exchange(gruppe.erApnet, true))
            skrivRad(gruppe.niva, "<", gruppe.merke);
    }
}

void ehf3::XmlTekst::skrivRad(int niva, std::string_view apning, std::string_view merke)
{
    constexpr std::string_view kSlutt = ">\n";
    char *ut = plassTil(innrykk(niva) + qsizetype(apning.size() + merke.size() + kSlutt.size()));
    ut = std::fill_n(ut, innrykk(niva), ' ');
    ferdigTil(legg(legg(legg(ut, apning), merke), kSlutt));
}

char *ehf3::XmlTekst::plassTil(qsizetype lengde)
{
    if (lengde > m_tekst.size() - m_lengde)
        m_tekst.resize(std::max(2 * m_tekst.size(), m_lengde + lengde));
    return m_tekst.data() + m_lengde;
}
