#pragma once

#include "runtime/Value.h"

#include <vector>

namespace ado {

/// The text form in which the server reads a value that is not Null; bytes stand as they are.
[[nodiscard]] QByteArray postgresText(const Value &value);

/// The values of a statement's parameters as libpq takes them: text and bytes with their length,
/// all else in the text form of its type. Each is read by the type that the place holder names.
class PostgresParameters
{
public:
    explicit PostgresParameters(const std::vector<Value> &values);

    [[nodiscard]] int count() const { return int(m_texts.size()); }
    /// Valid as long as this object.
    [[nodiscard]] const char *const *values() const { return m_values.data(); }
    [[nodiscard]] const int *lengths() const { return m_lengths.data(); }
    [[nodiscard]] const int *formats() const { return m_formats.data(); }

private:
    std::vector<QByteArray> m_texts;
    std::vector<const char *> m_values;
    std::vector<int> m_lengths;
    std::vector<int> m_formats;
};

} // namespace ado
