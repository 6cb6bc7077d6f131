#include "order/OrdreKnapper.h"

#include "order/OrdreFelter.h"
#include "order/OrdreTilstand.h"
#include "rules/Ordre.h"
#include "ui_frmOrdre.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kPictureSize{16, 16};

} // namespace

OrdreKnapper::OrdreKnapper(Ui::frmOrdre &ui, OrdreTilstand &tilstand, const OrdreFelter &felter)
    : m_ui(ui), m_tilstand(tilstand), m_felter(felter), m_bilder(kPictureSize)
{
    for (const QString &ending : {QString(), u"-graa"_s}) {
        for (const QStringView name : {u"forste", u"forrige", u"neste", u"siste"})
            m_bilder.add({}, u":/faktura/"_s + name.toString() + ending + u".svg"_s);
    }
    for (const Bilde bilde : {Forste, Forrige, Neste, Siste})
        visBilde(bilde, false);
}

void OrdreKnapper::SettKnapper(bool print, bool copy, bool ny, bool change, bool save)
{
    m_ui.btnPrint->setEnabled(print);
    m_ui.btnCopy->setEnabled(copy);
    m_ui.btnNew->setEnabled(ny);
    m_ui.btnChange->setEnabled(change && KanEndres(m_felter.text(ordrefelt::kOrdreStatus)));
    m_ui.btnSave->setEnabled(save);
    m_ui.btnCancel->setEnabled(true);
    m_ui.btnClose->setEnabled(true);
    m_tilstand.TvingOriginal = false;
}

void OrdreKnapper::SettNavigering(bool flag)
{
    if (!flag) {
        for (const Bilde bilde : {Forste, Forrige, Neste, Siste})
            visBilde(bilde, true);
        return;
    }
    for (PictureButton *button : {m_ui.cmdFirst, m_ui.cmdPrevious, m_ui.cmdNext, m_ui.cmdLast})
        button->setEnabled(true);
    // Without a record set both tests fail, and a test that fails counts as met.
    const bool bof = enters([this] { return m_tilstand.rsOrdre->bof(); });
    const bool eof = enters([this] { return m_tilstand.rsOrdre->eof(); });
    if (bof) {
        visBilde(Forste, true);
        visBilde(Forrige, true);
    }
    if (eof) {
        visBilde(Neste, true);
        visBilde(Siste, true);
    }
    if (bof || eof)
        return;
    for (const Bilde bilde : {Forste, Forrige, Neste, Siste})
        visBilde(bilde, false);
    m_tilstand.TvingOriginal = false;
}

void OrdreKnapper::visBilde(Bilde bilde, bool graa)
{
    PictureButton *const buttons[] = {m_ui.cmdFirst, m_ui.cmdPrevious, m_ui.cmdNext, m_ui.cmdLast};
    buttons[bilde - Forste]->setPicture(m_bilder.icon(graa ? bilde + Graa : bilde), kPictureSize);
}
