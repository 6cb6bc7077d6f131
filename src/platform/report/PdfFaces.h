#pragma once

#include <QRawFont>

#include <optional>

namespace report {

/// The face as the toolkit's PDF writer embeds it several times as fast: glyph for glyph the same,
/// but for the two tables in which an embedding spends its time. The writer asks a face for the
/// glyph of each of 65,536 characters, to tell readers the letters of a text, and hints each letter
/// at a size that needs no hinting. So characters are looked up here, not searched, and nothing is
/// hinted.
///
/// The toolkit embeds only faces that it knows by a family's name. So what is made of a face is
/// added to its fonts, in memory and once a process, some milliseconds each, as a family whose name
/// says nothing of the face. The face's other names are kept, and with them what the PDF calls it.
///
/// None for a face without outlines, and for a variable one.
[[nodiscard]] std::optional<QRawFont> quickFace(const QRawFont &face, double pixelSize);

} // namespace report
