#pragma once

#include <QString>
#include <QStringView>

#include <algorithm>
#include <cstddef>

/// A document's text in the making, out of many short pieces. It writes into room made beforehand,
/// since appending piece by piece to a QString would cost more than reading the order.
class EhfTekst
{
public:
    /// Makes room for `vanligLengde` characters; more is made as it is needed.
    explicit EhfTekst(qsizetype vanligLengde)
        : m_tekst(vanligLengde, Qt::Uninitialized), m_tegn(m_tekst.data())
    {
    }

    void legg(QStringView bit) { std::copy(bit.begin(), bit.end(), plassTil(bit.size())); }
    template<std::size_t Lengde>
    void legg(const char16_t (&bit)[Lengde])
    {
        std::copy_n(bit, Lengde - 1, plassTil(Lengde - 1));
    }

    /// One row: `verdi` between the tags `merke` + `attributter` and its closing one.
    template<std::size_t Lengde>
    void leggVerdi(const char16_t (&merke)[Lengde], QStringView verdi, QStringView attributter = {})
    {
        constexpr qsizetype kSkilletegn = 6; // "<", ">", "</", ">" and the line feed
        QChar *ut =
            plassTil(2 * qsizetype{Lengde - 1} + attributter.size() + verdi.size() + kSkilletegn);
        *ut++ = u'<';
        ut = std::copy_n(merke, Lengde - 1, ut);
        ut = std::copy(attributter.begin(), attributter.end(), ut);
        *ut++ = u'>';
        ut = std::copy(verdi.begin(), verdi.end(), ut);
        *ut++ = u'<';
        *ut++ = u'/';
        ut = std::copy_n(merke, Lengde - 1, ut);
        *ut++ = u'>';
        *ut = u'\n';
    }

    /// The whole text; nothing is to be added afterwards.
    [[nodiscard]] QString tekst() &&
    {
        m_tekst.truncate(m_lengde);
        return std::move(m_tekst);
    }

private:
    /// The place of `lengde` further characters.
    QChar *plassTil(qsizetype lengde)
    {
        if (lengde > m_tekst.size() - m_lengde) {
            m_tekst.resize(std::max(2 * m_tekst.size(), m_lengde + lengde));
            m_tegn = m_tekst.data();
        }
        QChar *plass = m_tegn + m_lengde;
        m_lengde += lengde;
        return plass;
    }

    QString m_tekst;
    QChar *m_tegn;
    qsizetype m_lengde = 0;
};
