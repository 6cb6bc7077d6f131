#pragma once

#include "platform/report/Document.h"

class QPainter;

namespace report {

class PdfTexts;

/// Draws one page. The preview, the printer and the PDF file all draw through here, so they show
/// the same. The painter's origin is the paper's upper left corner; `unitsPerMm` tells how many of
/// its units make a millimetre (resolution / 25.4 for an untransformed printer painter). `page`
/// counts from 0 and must exist. On a PDF file `texts` draws the texts, and is kept from page to
/// page. The painter is left as it was.
void paintPage(QPainter &painter, const Document &document, int page, double unitsPerMm,
               PdfTexts *texts = nullptr);

} // namespace report
