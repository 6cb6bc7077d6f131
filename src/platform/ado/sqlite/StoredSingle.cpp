#include "platform/ado/sqlite/StoredSingle.h"

#include <array>
#include <charconv>

namespace ado {

double storedSingle(float number)
{
    std::array<char, 32> text;
    // Without an exponent a large number would have all its digits.
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::scientific)
            .ptr;
    double result = number;
    std::from_chars(text.data(), end, result);
    return result;
}

} // namespace ado
