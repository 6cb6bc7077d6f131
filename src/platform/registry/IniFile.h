#pragma once

#include "platform/registry/TextForm.h"

#include <QByteArray>
#include <QString>

#include <map>
#include <optional>

namespace registry {

/// A tree of keys with values, which an INI file in UTF-8 holds:
///
///     setting=values of the file's own key stand before the first section
///
///     [Regningsdel\Forms\frmOrdre]
///     FLeft=200
///     @=the unnamed value
///
/// Names and values are escaped as TextForm.h tells. Keys and names match without regard to case.
/// A section may stand in several places; of two values with one name the later counts. Lines that
/// are neither section nor value, those under a section head without its "]" and values that do
/// not read are left out, also when the file is written again. A line that is not UTF-8 is read by
/// the code page.
///
/// A key is given by its names joined with "\"; the empty one is the file's own key.
class IniFile
{
public:
    [[nodiscard]] static IniFile fromBytes(const QByteArray &bytes);
    [[nodiscard]] QByteArray toBytes() const;

    /// Without any key, not even the file's own: what stands for no file.
    [[nodiscard]] bool isEmpty() const { return m_keys.empty(); }
    /// True for a key of its own, and for one with a key below it.
    [[nodiscard]] bool hasKey(const QString &key) const;
    [[nodiscard]] bool hasSubkeys(const QString &key) const;
    [[nodiscard]] std::optional<StoredValue> value(const QString &key, const QString &name) const;

    void addKey(const QString &key);
    /// Makes the key too when it is absent.
    void setValue(const QString &key, const QString &name, const StoredValue &value);
    /// False when there was no such value.
    bool removeValue(const QString &key, const QString &name);
    /// Takes out the key with its values, not those of keys below it.
    void removeKey(const QString &key);

private:
    struct NameLess
    {
        bool operator()(const QString &a, const QString &b) const
        {
            return a.compare(b, Qt::CaseInsensitive) < 0;
        }
    };
    using Values = std::map<QString, StoredValue, NameLess>;

    std::map<QString, Values, NameLess> m_keys;
};

} // namespace registry
