#include "order/frmOrdre.h"

#include "order/OrdreFelter.h"
#include "order/OrdreHode.h"
#include "order/OrdreKnapper.h"
#include "order/OrdreKommandoer.h"
#include "order/OrdreLager.h"
#include "order/OrdreLagring.h"
#include "order/OrdreLinjer.h"
#include "order/OrdreTilstand.h"
#include "platform/forms/Forms.h"
#include "platform/forms/ImageList.h"
#include "platform/forms/OuterRim.h"
#include "platform/forms/Twips.h"
#include "platform/grid/fpSpread.h"
#include "presentation/screens/Skjerm.h"
#include "ui_frmOrdre.h"

#include <QHeaderView>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kTegnet{10635, 6870}; // twips

UtskriftApner &utskriftApner()
{
    static UtskriftApner apner;
    return apner;
}

} // namespace

/// The rooms of the screen. Each sees those above it and none below.
struct frmOrdre::Rom
{
    explicit Rom(frmOrdre &skjerm)
        : felter(skjerm), felles{*skjerm.m_ui, tilstand, felter}, knapper(felles), hode(felles),
          linjer(*skjerm.m_ui->vaSpread1, felter), lager(felles, knapper, linjer),
          lagring(felles, knapper), kommandoer(felles, knapper, hode, linjer, lager)
    {
    }

    OrdreTilstand tilstand;
    OrdreFelter felter;
    const OrdreRom felles;
    OrdreKnapper knapper;
    OrdreHode hode;
    OrdreLinjer linjer;
    OrdreLager lager;
    OrdreLagring lagring;
    OrdreKommandoer kommandoer;
};

frmOrdre::frmOrdre()
    : Skjermbilde({.navn = u"frmOrdre"_s,
                   .hjelp = u"html\\ordre.htm"_s,
                   .lukkesMedEscape = true,
                   .standard = kTegnet,
                   .minst = {10630, 6430}}),
      m_ui(std::make_unique<Ui::frmOrdre>())
{
    m_ui->setupUi(this);
    for (QWidget *hidden : std::initializer_list<QWidget *>{m_ui->imgAar, m_ui->lblKontrollsiffer,
                                                            m_ui->txtFields_23, m_ui->txtFields_26})
        hidden->setVisible(false);
    // The header stays where it is when the warning comes.
    QSizePolicy held = m_ui->imgAar->sizePolicy();
    held.setRetainSizeWhenHidden(true);
    m_ui->imgAar->setSizePolicy(held);
    ImageList warning(m_ui->imgAar->minimumSize());
    warning.add({}, u":/faktura/exclamation.svg"_s);
    m_ui->imgAar->setPicture(warning.icon(1));
    m_rom = std::make_unique<Rom>(*this);
    makeRoomForLetters();
    connectCommands();
}

frmOrdre::~frmOrdre() = default;

qint32 frmOrdre::InnID() const
{
    return m_rom->tilstand.InnID;
}

void frmOrdre::settInnID(qint32 id)
{
    if (id > 0)
        m_rom->tilstand.InnID = id;
}

QString frmOrdre::SumBrutto() const
{
    return m_rom->felter.tekst(ordrefelt::kSumBrutto);
}

void frmOrdre::settUtskriftApner(UtskriftApner apner)
{
    utskriftApner() = std::move(apner);
}

void frmOrdre::makeRoomForLetters()
{
    struct Fast
    {
        int nr;
        QStringView lengste;
    };
    constexpr int kFrameAndMargins = 10; // pixels
    for (const auto &[nr, lengste] :
         {Fast{ordrefelt::kKundeNr, u"00000"}, Fast{ordrefelt::kFakPostNr, u"0000"},
          Fast{ordrefelt::kLevPostNr, u"0000"}, Fast{ordrefelt::kBetBet, u"000"},
          Fast{ordrefelt::kOrdreDato, u"00.00.0000"}, Fast{ordrefelt::kLevDato, u"00.00.0000"},
          Fast{ordrefelt::kFakDato, u"00.00.0000"}, Fast{ordrefelt::kForfallDato, u"00.00.0000"},
          Fast{ordrefelt::kKID, u"0000000000000"}, Fast{ordrefelt::kAvrunding, u"-0,00"},
          Fast{ordrefelt::kSumNetto, u"00 000,00"}, Fast{ordrefelt::kMvaKr, u"00 000,00"},
          Fast{ordrefelt::kSumBrutto, u"00 000,00"}}) {
        QLineEdit &felt = m_rom->felter[nr];
        const int bredde = BreddeFor(felt, lengste, kFrameAndMargins);
        felt.setMinimumWidth(bredde);
        felt.setMaximumWidth(std::max(felt.maximumWidth(), bredde));
    }
    constexpr int kRows = 4; // the headers', two lines' and the scroll bar's
    fpSpread &grid = *m_ui->vaSpread1;
    grid.setMinimumHeight(
        std::max(grid.minimumHeight(), kRows * grid.verticalHeader()->defaultSectionSize()));
    setMinimumSize(minimumSize().expandedTo(layout()->minimumSize()));
}

void frmOrdre::connectCommands()
{
    const auto onClick = [this](auto *button, void (OrdreKommandoer::*command)()) {
        onEvent(button, &QAbstractButton::clicked, this,
                [this, command] { (m_rom->kommandoer.*command)(); });
    };
    onClick(m_ui->btnNew, &OrdreKommandoer::btnNew_Click);
    onClick(m_ui->btnCopy, &OrdreKommandoer::btnCopy_Click);
    onClick(m_ui->btnChange, &OrdreKommandoer::btnChange_Click);
    onClick(m_ui->btnCancel, &OrdreKommandoer::btnCancel_Click);
    onClick(m_ui->chkBetalt, &OrdreKommandoer::chkBetalt_Click);
    onClick(m_ui->cmdFirst, &OrdreKommandoer::cmdFirst_Click);
    onClick(m_ui->cmdPrevious, &OrdreKommandoer::cmdPrevious_Click);
    onClick(m_ui->cmdNext, &OrdreKommandoer::cmdNext_Click);
    onClick(m_ui->cmdLast, &OrdreKommandoer::cmdLast_Click);
    onClick(m_ui->cmdKunder, &OrdreKommandoer::cmdKunder_Click);
    onEvent(m_ui->btnPrint, &QAbstractButton::clicked, this,
            [this] { m_rom->kommandoer.btnPrint_Click(utskriftApner()); });
    onEvent(m_ui->btnSave, &QAbstractButton::clicked, this,
            [this] { m_rom->lagring.btnSave_Click(); });
    onEvent(m_ui->btnClose, &QAbstractButton::clicked, this, [this] { unload(); });
    setCommandKey(Qt::ALT | Qt::Key_Home, m_ui->cmdFirst);
    setCommandKey(Qt::ALT | Qt::Key_Left, m_ui->cmdPrevious);
    setCommandKey(Qt::ALT | Qt::Key_Right, m_ui->cmdNext);
    setCommandKey(Qt::ALT | Qt::Key_End, m_ui->cmdLast);
    setCommandKey(Qt::CTRL | Qt::Key_P, m_ui->btnPrint);
    setCommandKey(Qt::CTRL | Qt::Key_N, m_ui->btnNew);
    setCommandKey(Qt::CTRL | Qt::Key_S, m_ui->btnSave);
    onEvent(m_ui->imgAar, &Image::clicked, this, [this] { m_rom->kommandoer.imgAar_Click(); });
}

void frmOrdre::onLoad()
{
    Skjermbilde::onLoad();
    m_rom->tilstand.settModus(OrdreModus::Visning);
}

void frmOrdre::onActivate()
{
    m_rom->kommandoer.aktiver();
}

void frmOrdre::onResize()
{
    const int tegnet = MedBokstavene(*this, kTegnet).width();
    m_rom->linjer.brukPlass(pixelsToTwips(pageSize().width()) -
                            std::max(tegnet, pixelsToTwips(minimumWidth())));
}

bool frmOrdre::onKeyDown(Qt::Key key, Qt::KeyboardModifiers shift)
{
    // Any key: the way to print an original once more.
    if (shift.testFlag(Qt::ShiftModifier) && focusWidget() == m_ui->btnPrint)
        m_rom->tilstand.TvingOriginal = true;
    return Skjermbilde::onKeyDown(key, shift);
}

void frmOrdre::onUnload()
{
    m_rom->tilstand.rsOrdre.reset();
    Skjermbilde::onUnload();
}
