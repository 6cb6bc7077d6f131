#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <string_view>
#include <vector>

namespace ehf3 {

/// The text without what XML 1.0 cannot hold: control characters but tab and line ends, halves of
/// surrogate pairs, and the two code points that are no characters.
[[nodiscard]] QString lovligTekst(const QString &tekst);

/// An XML document in the making, in UTF-8 and with a row for each element. Nothing in it is empty:
/// an element without a value is left out, and so is a group in which nothing is written. It writes
/// into room made beforehand, since appending piece by piece would cost more than reading the
/// order. Names have to outlive it.
class XmlTekst
{
public:
    /// `rot` is the root's whole opening tag without its brackets.
    explicit XmlTekst(std::string_view rot);

    /// An element's attribute, of no more than letters; none by itself.
    struct Attributt
    {
        std::string_view navn;
        std::string_view verdi;
    };

    /// A group on that level below the root, counted from 1. Ends all groups that are as deep.
    void gruppe(int niva, std::string_view merke);
    /// `verdi`, of lawful text, between the tags.
    void element(int niva, std::string_view merke, QStringView verdi, Attributt attributt = {});

    /// The whole document; nothing is to be added afterwards.
    [[nodiscard]] QByteArray ferdig() &&;

private:
    struct Gruppe
    {
        int niva;
        std::string_view merke;
        bool erApnet; ///< its opening tag is written
    };
    void lukk(int niva);
    void apneVentende();
    void skrivRad(int niva, std::string_view apning, std::string_view merke);
    /// The place of at most `lengde` further bytes; how many they are tells `ferdigTil`.
    char *plassTil(qsizetype lengde);
    void ferdigTil(const char *slutt) { m_lengde = slutt - m_tekst.constData(); }

    QByteArray m_tekst;
    qsizetype m_lengde = 0;
    std::string_view m_rot;
    std::vector<Gruppe> m_grupper;
};

} // namespace ehf3
