#include "order/OrdreKnapper.h"

#include "order/OrdreFelter.h"
#include "platform/forms/OwnPicture.h"
#include "rules/Ordre.h"
#include "ui_frmOrdre.h"

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kBilde{16, 16};

} // namespace

OrdreKnapper::OrdreKnapper(const OrdreRom &rom)
    : OrdreRom(rom), m_navigering{m_ui.cmdFirst, m_ui.cmdPrevious, m_ui.cmdNext, m_ui.cmdLast}
{
    for (PictureButton *knapp : m_navigering)
        knapp->setToolButtonStyle(Qt::ToolButtonIconOnly);
    visBilder({Forste, Forrige, Neste, Siste}, false);
}

void OrdreKnapper::SettKnapper(const Valg &valg)
{
    m_ui.btnPrint->setEnabled(valg.skriv);
    m_ui.btnCopy->setEnabled(valg.kopier);
    m_ui.btnNew->setEnabled(valg.ny);
    m_ui.btnChange->setEnabled(valg.endre && KanEndres(m_felter.tekst(ordrefelt::kOrdreStatus)));
    m_ui.btnSave->setEnabled(valg.lagre);
    m_ui.btnCancel->setEnabled(true);
    m_ui.btnClose->setEnabled(true);
    m_tilstand.TvingOriginal = false;
}

void OrdreKnapper::SettNavigering(bool paa)
{
    if (!paa) {
        visBilder({Forste, Forrige, Neste, Siste}, true);
        return;
    }
    for (PictureButton *knapp : m_navigering)
        knapp->setEnabled(true);
    // Without a record set both tests fail, and a test that fails counts as met.
    const bool bof = enters([this] { return m_tilstand.rsOrdre->bof(); });
    const bool eof = enters([this] { return m_tilstand.rsOrdre->eof(); });
    if (bof)
        visBilder({Forste, Forrige}, true);
    if (eof)
        visBilder({Neste, Siste}, true);
    if (bof || eof)
        return;
    visBilder({Forste, Forrige, Neste, Siste}, false);
    m_tilstand.TvingOriginal = false;
}

void OrdreKnapper::skjulNavigering()
{
    for (PictureButton *knapp : m_navigering)
        knapp->setVisible(false);
}

void OrdreKnapper::visBilder(std::initializer_list<Bilde> bilder, bool graa)
{
    constexpr QStringView kNavn[] = {u"forste", u"forrige", u"neste", u"siste"};
    const QString fil = graa ? u":/faktura/%1-graa.svg"_s : u":/faktura/%1.svg"_s;
    for (const Bilde bilde : bilder)
        m_navigering[bilde]->setPicture(ownPicture(fil.arg(kNavn[bilde]), kBilde), kBilde);
}
