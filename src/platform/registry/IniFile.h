#pragma once

#include "platform/registry/TextForm.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace registry {

/// A tree of keys with values as the lines of an INI file in UTF-8:
///
///     ; a comment
///     setting=values of the file's own key stand before the first section
///
///     [Regningsdel\Forms\frmOrdre]
///     FLeft=200
///     @=the unnamed value
///
/// Names and values are escaped as TextForm.h tells. Keys and names match without regard to case.
/// A section may stand in several places; of two values with one name the later counts. Lines that
/// are neither section nor value are carried along unchanged; those under a section head without
/// its "]" are out of reach. A line that is not UTF-8 is read by the code page.
///
/// A key is given by its names joined with "\"; the empty one is the file's own key.
class IniFile
{
public:
    [[nodiscard]] static IniFile fromBytes(const QByteArray &bytes);
    [[nodiscard]] QByteArray toBytes() const;

    /// True for a key with a section of its own or one below it, and for the empty key.
    [[nodiscard]] bool hasKey(const QString &key) const;
    [[nodiscard]] bool hasSubkeys(const QString &key) const;
    [[nodiscard]] std::optional<StoredValue> value(const QString &key, const QString &name) const;

    void addKey(const QString &key);
    /// Makes the key too when it is absent.
    void setValue(const QString &key, const QString &name, const StoredValue &value);
    /// False when there was no such value.
    bool removeValue(const QString &key, const QString &name);
    /// Takes out the key's sections with all their lines, not those of keys below it.
    void removeKey(const QString &key);

private:
    struct Line
    {
        enum class Kind { Section, Entry, Other };

        QByteArray raw; ///< without the line feed
        Kind kind = Kind::Other;
        QString section;         ///< case-folded key of the section that the line stands in
        bool isReachable = true; ///< false below a broken section head
        QString name;            ///< of an entry, case-folded
        QString text;            ///< of an entry, what follows "="

        [[nodiscard]] bool isIn(const QString &folded) const
        {
            return isReachable && section == folded;
        }
        [[nodiscard]] bool isEntry(const QString &folded, const QString &foldedName) const
        {
            return kind == Kind::Entry && isIn(folded) && name == foldedName;
        }
    };

    static Line parsed(const QByteArray &raw, const Line *previous);
    static Line head(const QString &key);

    std::vector<Line> m_lines;
};

} // namespace registry
