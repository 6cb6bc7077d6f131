// Any bytes or pieces of XML as a report file: read, or refused with the place of the fault.

#include "platform/report/ReportError.h"
#include "platform/report/ReportReader.h"

#include <cstdlib>

using namespace Qt::StringLiterals;
using namespace report;

namespace {

// clang-format off
const char *const kPieces[] = {
    "<report version=\"1\">", "</report>", "<report version=\"1\" title=\"x\">", "<part version=\"1\">",
    "</part>", "<query>SELECT A.B FROM A</query>", "<query>SELECT * FROM A</query>", "<query>",
    "</query>", "SELECT A.B, A.C AS D FROM A INNER JOIN E ON A.B=E.B WHERE A.B=1 ORDER BY A.C",
    "<page width=\"100\"/>", "<page left=\"500\"/>", "<page", "<style name=\"a\" size=\"9\"/>",
    "<style name=\"b\" base=\"a\" bold=\"yes\" color=\"#ff0000\"/>", "<formula name=\"F\">1</formula>",
    "<formula name=\"G\">", "</formula>", "<group name=\"G\" on=\"{B}\">", "</group>",
    "<header height=\"5\">", "</header>", "<footer height=\"5\" each=\"{B}\">", "</footer>",
    "<carryHeader height=\"5\">", "</carryHeader>", "<carryFooter height=\"5\">", "</carryFooter>",
    "<detail height=\"5\">", "</detail>", "<pageFooter height=\"5\" on=\"last\">", "</pageFooter>",
    "<pageHeader height=\"5\" visible=\"1=1\">", "</pageHeader>", "<reportHeader height=\"1\">",
    "</reportHeader>", "<text x=\"1\" y=\"1\" width=\"9\" height=\"5\" value=\"{A.B}\"/>",
    "<text x=\"1\" y=\"1\" width=\"9\" height=\"5\" grow=\"yes\">tekst</text>",
    "<line x=\"1\" y=\"1\" x2=\"9\"/>", "<box x=\"1\" y=\"1\" width=\"9\" height=\"5\" fill=\"#eeeeee\"/>",
    "<picture x=\"1\" y=\"1\" width=\"9\" height=\"5\" file=\"a.png\"/>", "<include file=\"self\"/>",
    "<include file=\"none\"/>", "<!-- c -->", "<![CDATA[x]]>", "&amp;", "&x;", "<!DOCTYPE r>", "\n",
    " x=\"1\"", ">", "/>", "\xc3\xa6", "\xff", "tekst",
};
// clang-format on
constexpr uint8_t kPiecesMark = 1; // the first byte of an input whose other bytes choose pieces

QByteArray bytesOfInput(const uint8_t *data, size_t size)
{
    if (size == 0 || data[0] != kPiecesMark)
        return {reinterpret_cast<const char *>(data), static_cast<qsizetype>(size)};
    QByteArray bytes;
    for (size_t i = 1; i < size; ++i)
        bytes += kPieces[data[i] % std::size(kPieces)];
    return bytes;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    const QByteArray bytes = bytesOfInput(data, size);
    int left = 20; // files that may be taken in
    const auto include = [&](const QString &name) {
        if (name != u"self"_s || --left < 0)
            raise(report::errors::kReportFile, u"Filen finnes ikke."_s);
        return QByteArray(bytes).replace("report", "part");
    };
    try {
        const ReportFile file = readReport(bytes, u"F.rpt"_s, include);
        if (!file.query || file.styles.empty())
            std::abort();
    } catch (const RunTimeError &error) {
        const bool placed = error.description().contains(u"linje"_s);
        const int number = error.number();
        if (!placed ||
            (number != report::errors::kReportFile && number != report::errors::kFormula))
            std::abort();
    }
    return 0;
}
