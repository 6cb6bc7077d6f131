#pragma once

#include <QString>
#include <QStringView>

#include <utility>
#include <vector>

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
    [[nodiscard]] QString value(QStringView keyword) const;
    void setValue(QStringView keyword, const QString &value);

    /// One text for all spellings of the same pairs.
    [[nodiscard]] QString normalized() const;

private:
    std::vector<std::pair<QString, QString>> m_pairs; // by keyword in lower case, sorted
};

} // namespace ado
