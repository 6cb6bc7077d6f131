#pragma once

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <vector>

namespace ehf3 {

/// The text without what XML 1.0 cannot hold: control characters but tab and line ends, halves of
/// surrogate pairs, and the two code points that are no characters.
[[nodiscard]] QString lovligTekst(const QString &tekst);

/// An XML document in the making, in UTF-8 and with a row for each element. Nothing in it is empty:
/// an element without a value is left out, and so is a group in which nothing is written.
class XmlTekst
{
public:
    /// `rot` is the root's whole opening tag without its brackets.
    explicit XmlTekst(const char *rot);

    /// A group on that level below the root, counted from 1. Ends all groups that are as deep.
    void gruppe(int niva, const char *merke);
    /// `verdi`, of lawful text, between the tags; `attributter` stands in the opening one with a
    /// blank in front.
    void element(int niva, const char *merke, QStringView verdi, QStringView attributter = {});

    /// The whole document; nothing is to be added afterwards.
    [[nodiscard]] QByteArray ferdig() &&;

private:
    struct Gruppe
    {
        int niva;
        const char *merke;
        bool erApnet; ///< its opening tag is written
    };
    void lukk(int niva);
    void apneVentende();
    void innrykk(int niva) { m_tekst.append(2 * niva, ' '); }

    QByteArray m_tekst;
    QByteArray m_rotmerke;
    std::vector<Gruppe> m_grupper;
};

} // namespace ehf3
