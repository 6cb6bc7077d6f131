#pragma once

#include "platform/report/Document.h"

#include <QRectF>
#include <QString>

#include <vector>

/// A place where a text was found.
struct Treff
{
    int side = 0;      ///< from 0
    int tekst = 0;     ///< index in Page::texts
    qsizetype fra = 0; ///< first character in that text
    qsizetype lengde = 0;

    friend bool operator==(const Treff &, const Treff &) = default;
};

/// All places where `ord` stands on the pages within a line, whatever the case of its letters and
/// the kind of its blanks, in reading order: from the top of each page, and from the left within a
/// line. Empty for an empty text.
[[nodiscard]] std::vector<Treff> finnTekst(const report::Document &dokument, const QString &ord);

/// Where the found text stands on its page, in millimetres.
[[nodiscard]] QRectF plassAv(const report::Document &dokument, const Treff &treff);
