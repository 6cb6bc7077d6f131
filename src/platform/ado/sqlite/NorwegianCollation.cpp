#include "platform/ado/sqlite/NorwegianCollation.h"

#include "platform/ado/AdoTypes.h"
#include "platform/ado/sqlite/SqliteError.h"
#include "platform/ado/sqlite/SqliteWriter.h"

#include <sqlite3.h>
#include <unicode/ucol.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <optional>
#include <string_view>

using namespace Qt::StringLiterals;

namespace ado {

namespace {

/// The place of an ASCII letter or digit in Norwegian order, case aside; 0 for every other byte.
constexpr std::array<unsigned char, 256> kPlainPlaces = [] {
    std::array<unsigned char, 256> places{};
    unsigned char place = 0;
    for (std::size_t c = '0'; c <= '9'; ++c)
        places[c] = ++place;
    for (std::size_t c = 'a'; c <= 'z'; ++c)
        places[c] = places[c - 'a' + 'A'] = ++place;
    return places;
}();
constexpr unsigned char kPlaceOfA = kPlainPlaces['a'];

/// The order of two texts of plain letters and digits as the collator has it, found without it.
/// Nothing where they may hold more than that up to the one behind the first difference: another
/// byte (a mark above a letter follows it), or an "aa", which counts as one letter in some cases.
std::optional<int> comparePlain(std::string_view left, std::string_view right)
{
    const std::size_t shorter = std::min(left.size(), right.size());
    std::size_t at = 0;
    unsigned char place = 0;
    unsigned char before = 0;
    for (; at < shorter; ++at, before = place) {
        place = kPlainPlaces[static_cast<unsigned char>(left[at])];
        if (place == 0 || (place == kPlaceOfA && before == kPlaceOfA))
            return std::nullopt;
        if (place != kPlainPlaces[static_cast<unsigned char>(right[at])])
            break;
    }
    const auto placeAt = [before, at](std::string_view text) -> int {
        if (at == text.size())
            return 0;
        const unsigned char here = kPlainPlaces[static_cast<unsigned char>(text[at])];
        const unsigned char behind =
            at + 1 == text.size() ? 1 : kPlainPlaces[static_cast<unsigned char>(text[at + 1])];
        const bool mayContract = here == kPlaceOfA && (before == kPlaceOfA || behind == kPlaceOfA);
        return here == 0 || behind == 0 || mayContract ? -1 : here;
    };
    const int leftPlace = placeAt(left);
    const int rightPlace = placeAt(right);
    if (leftPlace < 0 || rightPlace < 0)
        return std::nullopt;
    return leftPlace - rightPlace;
}

int compareNorwegian(void *collator, int leftSize, const void *left, int rightSize,
                     const void *right)
{
    // Equal bytes are equal in every collation; grouping and joining meet them most of the time.
    if (leftSize == rightSize && std::memcmp(left, right, static_cast<size_t>(leftSize)) == 0)
        return 0;
    const auto *leftText = static_cast<const char *>(left);
    const auto *rightText = static_cast<const char *>(right);
    if (const auto order = comparePlain({leftText, static_cast<size_t>(leftSize)},
                                        {rightText, static_cast<size_t>(rightSize)}))
        return *order;
    UErrorCode status = U_ZERO_ERROR;
    return ucol_strcollUTF8(static_cast<UCollator *>(collator), leftText, leftSize, rightText,
                            rightSize, &status);
}

void closeCollator(void *collator)
{
    ucol_close(static_cast<UCollator *>(collator));
}

} // namespace

void addNorwegianCollation(sqlite3 *database)
{
    UErrorCode status = U_ZERO_ERROR;
    UCollator *collator = ucol_open("nb-u-ks-level2", &status);
    if (U_FAILURE(status))
        throw RunTimeError(errors::kUnspecified, u"Norsk sorteringsrekkefølge mangler."_s);
    const int code = sqlite3_create_collation_v2(database, SqliteWriter::kCollation, SQLITE_UTF8,
                                                 collator, compareNorwegian, closeCollator);
    if (code != SQLITE_OK) {
        closeCollator(collator); // a failed registration does not take it over
        throw sqliteError(code, QString::fromUtf8(sqlite3_errmsg(database)));
    }
}

} // namespace ado
