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
    /// Makes room for `usualLength` characters; more is made as it is needed.
    explicit EhfTekst(qsizetype usualLength)
        : m_text(usualLength, Qt::Uninitialized), m_data(m_text.data())
    {
    }

    void legg(QStringView bit) { std::copy(bit.begin(), bit.end(), room(bit.size())); }
    template<std::size_t Size>
    void legg(const char16_t (&bit)[Size])
    {
        std::copy_n(bit, Size - 1, room(Size - 1));
    }

    /// One row: `verdi` between the tags `merke` + `attributter` and its closing one.
    template<std::size_t Size>
    void leggVerdi(const char16_t (&merke)[Size], QStringView verdi, QStringView attributter = {})
    {
        constexpr qsizetype kMarks = 6; // "<", ">", "</", ">" and the line feed
        QChar *ut = room(2 * qsizetype{Size - 1} + attributter.size() + verdi.size() + kMarks);
        *ut++ = u'<';
        ut = std::copy_n(merke, Size - 1, ut);
        ut = std::copy(attributter.begin(), attributter.end(), ut);
        *ut++ = u'>';
        ut = std::copy(verdi.begin(), verdi.end(), ut);
        *ut++ = u'<';
        *ut++ = u'/';
        ut = std::copy_n(merke, Size - 1, ut);
        *ut++ = u'>';
        *ut = u'\n';
    }

    /// The whole text; nothing is to be added afterwards.
    [[nodiscard]] QString tekst() &&
    {
        m_text.truncate(m_size);
        return std::move(m_text);
    }

private:
    /// The place of `length` further characters.
    QChar *room(qsizetype length)
    {
        if (length > m_text.size() - m_size) {
            m_text.resize(std::max(2 * m_text.size(), m_size + length));
            m_data = m_text.data();
        }
        QChar *place = m_data + m_size;
        m_size += length;
        return place;
    }

    QString m_text;
    QChar *m_data;
    qsizetype m_size = 0;
};
