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
#include "platform/forms/OuterRim.h"
#include "platform/forms/OwnPicture.h"
#include "platform/forms/Twips.h"
#include "platform/grid/fpSpread.h"
#include "presentation/screens/Skjerm.h"
#include "ui_frmOrdre.h"

#include <QHeaderView>

#include <algorithm>

using namespace Qt::StringLiterals;
using namespace ordrefelt;

namespace {

constexpr QSize kTegnet{10635, 6870}; // twips
// Pixels.
constexpr QSize kKnapp{68, 0};
constexpr QSize kVarsel{18, 18};

/// A header field of fixed width in pixels, with the longest text for which it has room in larger
/// letters as well.
struct FastFelt
{
    int nr;
    int minst;
    int storst;
    QStringView lengste;
};
constexpr FastFelt kFasteFelter[] = {
    {kKundeNr, 60, 90, u"00000"},
    {kFakPostNr, 44, 54, u"0000"},
    {kLevPostNr, 44, 54, u"0000"},
    {kBetBet, 40, 40, u"000"},
    {kOrdreDato, 78, 78, u"00.00.0000"},
    {kLevDato, 78, 78, u"00.00.0000"},
    {kFakDato, 78, 78, u"00.00.0000"},
    {kForfallDato, 78, 78, u"00.00.0000"},
    {kKID, 0, QWIDGETSIZE_MAX, u"0000000000000"},
    {kAvrunding, 56, 56, u"-0,00"},
    {kSumNetto, 56, QWIDGETSIZE_MAX, u"00 000,00"},
    {kMvaKr, 56, QWIDGETSIZE_MAX, u"00 000,00"},
    {kSumBrutto, 56, QWIDGETSIZE_MAX, u"00 000,00"},
};

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
    LikeKnapper(*this, kKnapp);
    for (QWidget *skjult : std::initializer_list<QWidget *>{m_ui->imgAar, m_ui->lblKontrollsiffer,
                                                            m_ui->txtFields_23, m_ui->txtFields_26})
        skjult->setVisible(false);
    // The header stays where it is when the warning comes.
    QSizePolicy plassholder = m_ui->imgAar->sizePolicy();
    plassholder.setRetainSizeWhenHidden(true);
    m_ui->imgAar->setSizePolicy(plassholder);
    m_ui->imgAar->setFixedSize(kVarsel);
    m_ui->imgAar->setPicture(ownPicture(u":/faktura/exclamation.svg"_s, kVarsel));
    m_rom = std::make_unique<Rom>(*this);
    giPlassTilBokstaver();
    kobleKommandoer();
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
    return m_rom->felter.tekst(kSumBrutto);
}

void frmOrdre::settUtskriftApner(UtskriftApner apner)
{
    utskriftApner() = std::move(apner);
}

void frmOrdre::giPlassTilBokstaver()
{
    constexpr int kRammeOgMarg = 10; // pixels
    for (const auto &[nr, minst, storst, lengste] : kFasteFelter) {
        QLineEdit &felt = m_rom->felter[nr];
        felt.setMinimumWidth(minst);
        const int bredde = BreddeFor(felt, lengste, kRammeOgMarg);
        felt.setMinimumWidth(bredde);
        felt.setMaximumWidth(std::max(storst, bredde));
    }
    constexpr int kRader = 4; // the headers', two lines' and the scroll bar's
    fpSpread &grid = *m_ui->vaSpread1;
    grid.setMinimumHeight(
        std::max(grid.minimumHeight(), kRader * grid.verticalHeader()->defaultSectionSize()));
    setMinimumSize(minimumSize().expandedTo(layout()->minimumSize()));
}

void frmOrdre::kobleKommandoer()
{
    const auto vedKlikk = [this](auto *knapp, void (OrdreKommandoer::*kommando)()) {
        onEvent(knapp, &QAbstractButton::clicked, this,
                [this, kommando] { (m_rom->kommandoer.*kommando)(); });
    };
    vedKlikk(m_ui->btnNew, &OrdreKommandoer::btnNew_Click);
    vedKlikk(m_ui->btnCopy, &OrdreKommandoer::btnCopy_Click);
    vedKlikk(m_ui->btnChange, &OrdreKommandoer::btnChange_Click);
    vedKlikk(m_ui->btnCancel, &OrdreKommandoer::btnCancel_Click);
    vedKlikk(m_ui->chkBetalt, &OrdreKommandoer::chkBetalt_Click);
    vedKlikk(m_ui->cmdFirst, &OrdreKommandoer::cmdFirst_Click);
    vedKlikk(m_ui->cmdPrevious, &OrdreKommandoer::cmdPrevious_Click);
    vedKlikk(m_ui->cmdNext, &OrdreKommandoer::cmdNext_Click);
    vedKlikk(m_ui->cmdLast, &OrdreKommandoer::cmdLast_Click);
    vedKlikk(m_ui->cmdKunder, &OrdreKommandoer::cmdKunder_Click);
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
