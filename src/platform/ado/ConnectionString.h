#pragma once

#include <QMap>
#include <QString>
#include <QStringView>

namespace ado {

/// A connection string taken apart: "keyword=value" pairs parted by ";". Keywords are the same in
/// upper and lower case, blanks around keyword and value are cut, of two equal keywords the later
/// one counts, and an empty pair between two ";" is passed over.
class ConnectionString
{
public:
    /// Raises kUnspecified for an element without "=" or without a keyword. The error does not show
    /// the text, which may hold a password.
    explicit ConnectionString(QStringView text);

    /// The keyword's value, or the empty string.
    [[nodiscard]] QString value(QStringView keyword) const
    {
        return m_pairs.value(keyword.toString().toLower());
    }
    void setValue(QStringView keyword, const QString &value)
    {
        m_pairs[keyword.toString().toLower()] = value;
    }

    /// One text for all spellings of the same pairs.
    [[nodiscard]] QString normalized() const;

private:
    QMap<QString, QString> m_pairs; // by keyword in lower case
};

} // namespace ado
