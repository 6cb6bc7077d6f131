#include "output/printing/Rapportsok.h"

#include "platform/report/Typesetting.h"

#include <QFontMetricsF>

#include <algorithm>

namespace {

/// Before the other in reading order.
bool kommerFor(const report::TextCommand &a, const report::TextCommand &b)
{
    return a.baseline.y() != b.baseline.y() ? a.baseline.y() < b.baseline.y()
                                            : a.baseline.x() < b.baseline.x();
}

/// Amounts are parted by blanks that do not break, which no keyboard has.
QString medVanligeBlanke(QString tekst)
{
    return tekst.replace(QChar::Nbsp, u' ').replace(u'\u202f', u' ');
}

} // namespace

std::vector<Treff> finnTekst(const report::Document &dokument, const QString &ord)
{
    std::vector<Treff> alle;
    if (ord.isEmpty())
        return alle;
    const QString sokt = medVanligeBlanke(ord);
    for (int side = 0; side < int(dokument.pages.size()); ++side) {
        const auto &tekster = dokument.pages[size_t(side)].texts;
        const auto forste = std::ptrdiff_t(alle.size());
        for (int nr = 0; nr < int(tekster.size()); ++nr) {
            const QString tekst = medVanligeBlanke(tekster[size_t(nr)].text());
            qsizetype fra = tekst.indexOf(sokt, 0, Qt::CaseInsensitive);
            for (; fra >= 0; fra = tekst.indexOf(sokt, fra + sokt.size(), Qt::CaseInsensitive))
                alle.push_back({side, nr, fra, sokt.size()});
        }
        std::stable_sort(alle.begin() + forste, alle.end(), [&](const Treff &a, const Treff &b) {
            return kommerFor(tekster[size_t(a.tekst)], tekster[size_t(b.tekst)]);
        });
    }
    return alle;
}

QRectF plassAv(const report::Document &dokument, const Treff &treff)
{
    const report::TextCommand &tekst =
        dokument.pages.at(size_t(treff.side)).texts.at(size_t(treff.tekst));
    const QFontMetricsF mal(report::fontInUnits(dokument.styles[size_t(tekst.style())].font));
    const auto bredde = [&](qsizetype tegn) {
        return mal.horizontalAdvance(tekst.text().left(tegn)) / report::kUnitsPerMm;
    };
    const double venstre = bredde(treff.fra);
    return {tekst.baseline.x() + venstre, tekst.baseline.y() - mal.ascent() / report::kUnitsPerMm,
            bredde(treff.fra + treff.lengde) - venstre, mal.height() / report::kUnitsPerMm};
}
