#include "order/OrdreHode.h"

#include "data/mFaktura.h"
#include "order/OrdreFelter.h"
#include "platform/forms/OuterRim.h"
#include "platform/forms/SendKey.h"
#include "rules/Innstilling.h"
#include "rules/Kid.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "state/SharedState.h"
#include "ui_frmOrdre.h"

#include <QFocusEvent>
#include <QKeyEvent>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;
using namespace ordrefelt;

namespace {

struct Datovelger
{
    DTPicker *Ui::frmOrdre::*velger;
    int nr; // of the field that it stands beside
};
constexpr Datovelger kDatovelgere[] = {
    {&Ui::frmOrdre::dtpOrdre, kOrdreDato},
    {&Ui::frmOrdre::dtpLevDato, kLevDato},
    {&Ui::frmOrdre::dtpFakDato, kFakDato},
    {&Ui::frmOrdre::dtpForfall, kForfallDato},
};

/// The fields that a customer fills, in the order of KundeFelt.
constexpr std::array kKundefelter = {
    kKundeNr,     kKundeNavn,   kBetBet,    kFakAdresse1, kFakAdresse2, kFakPostNr,   kFakPostSted,
    kLevAdresse1, kLevAdresse2, kLevPostNr, kLevPostSted, kOrgNr,       kForfallDato, kFakturaType,
};

/// Fields that are filled in by the program alone, which Tab passes by.
constexpr int kUtenforTab[] = {kFakPostSted, kLevPostSted, kOrdreNr,   kOrdreStatus, kKID,
                               kSumNetto,    kMvaKr,       kSumBrutto, kAvrunding};

constexpr QSize kVelger{20, 22}; // pixels

constexpr int kUgyldigVerdi = 380;

/// The first field with an amount, which is shown as 0.00 when it is blank.
constexpr int kForsteSum = kSumNetto;

} // namespace

OrdreHode::OrdreHode(const OrdreRom &rom) : OrdreRom(rom)
{
    for (int nr = 0; nr < kAntall; ++nr)
        m_felter[nr].installEventFilter(this);
    for (const int nr : kUtenforTab)
        m_felter[nr].setFocusPolicy(Qt::ClickFocus);
    for (const auto &[velger, nr] : kDatovelgere)
        kobleVelger(*(m_ui.*velger), nr);
    m_tilstand.vedModus = [this] { laasFelter(); };
}

/// A field that sends the focus on takes no text while the focus is on its way, nor on roads that
/// need none: drag and drop, its menu.
void OrdreHode::laasFelter()
{
    for (int nr = 0; nr < kAntall; ++nr)
        m_felter[nr].setReadOnly(senderVidere(nr));
}

bool OrdreHode::senderVidere(int nr) const
{
    switch (nr) {
    case kFakPostSted:
    case kLevPostSted:
    case kOrdreNr:
    case kOrdreStatus:
    case kKID:
        return true;
    case kOrdreDato:
    case kLevDato:
    case kFakDato:
    case kForfallDato:
        return false;
    default:
        return !m_tilstand.iModus();
    }
}

void OrdreHode::settGrenser()
{
    for (const Datovelger &dato : kDatovelgere) {
        passOver(
            [&] { (m_ui.*dato.velger)->setLimits(QDate(gAar, 1, 1), QDate(gAar + 1, 12, 31)); });
    }
}

void OrdreHode::tomFelter()
{
    for (int nr = 0; nr < kAntall; ++nr)
        m_felter.settTekst(nr, nr < kForsteSum ? QString() : u"0.00"_s);
    m_felter.settTekst(kBetBet, u"0"_s);
    m_felter.settTekst(kOrdreNr, u"0"_s);
    m_felter.settTekst(kOrgNr, QString());
    m_ui.chkBetalt->setChecked(false);
    m_ui.chkLevAdr->setChecked(false);
}

bool OrdreHode::erUtenforAar() const
{
    return m_felter.dato(kOrdreDato).year() != gAar;
}

void OrdreHode::settKundefelt(KundeFelt felt, const QString &tekst)
{
    m_felter.settTekst(kKundefelter.at(size_t(felt)), tekst);
}

void OrdreHode::settSammeLevAdr(qint32 verdi)
{
    if (verdi < Qt::Unchecked || verdi > Qt::Checked)
        throw RunTimeError(kUgyldigVerdi);
    // The numbers of the two other states are the other way round in Qt.
    m_ui.chkLevAdr->setCheckState(verdi == 1   ? Qt::Checked
                                  : verdi == 2 ? Qt::PartiallyChecked
                                               : Qt::Unchecked);
}

QString OrdreHode::betBet() const
{
    return m_felter.tekst(kBetBet);
}

bool OrdreHode::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress)
        return apnerKalender(m_felter.nrFor(watched), *static_cast<QKeyEvent *>(event));
    if (event->type() != QEvent::FocusIn && event->type() != QEvent::FocusOut)
        return false;
    const Qt::FocusReason grunn = static_cast<QFocusEvent *>(event)->reason();
    const int nr = m_felter.nrFor(watched);
    if (nr < 0)
        return false;
    // A context menu takes the focus for a while without the field being left, and so does another
    // window. One that comes back has to find a field that may hold the focus: the key that was to
    // send it on has gone to the menu.
    const bool fraMeny = grunn == Qt::PopupFocusReason;
    if (event->type() == QEvent::FocusIn && (!fraMeny || senderVidere(nr)))
        atOuterRim([&] { fikkFokus(nr, grunn); });
    else if (event->type() == QEvent::FocusOut && !fraMeny && grunn != Qt::ActiveWindowFocusReason)
        atOuterRim([&] { forlatFelt(nr); });
    return false;
}

/// A date field opens the calendar beside it by the calendar's own keys.
bool OrdreHode::apnerKalender(int nr, const QKeyEvent &tast)
{
    const auto dato = std::ranges::find(kDatovelgere, nr, &Datovelger::nr);
    if (dato == std::end(kDatovelgere) || !DTPicker::dropsDown(tast))
        return false;
    (m_ui.*dato->velger)->dropDown();
    return true;
}

/// Passes over.
void OrdreHode::fikkFokus(int nr, Qt::FocusReason grunn)
{
    if (senderVidere(nr)) {
        sendKey(Qt::Key_Tab);
        return;
    }
    const auto dato = std::ranges::find(kDatovelgere, nr, &Datovelger::nr);
    if (dato == std::end(kDatovelgere))
        return;
    visDato(*(m_ui.*dato->velger), nr);
    m_felter[nr].selectAll();
    // The press of the mouse that has brought the focus here sets the cursor afterwards.
    if (grunn == Qt::MouseFocusReason)
        QMetaObject::invokeMethod(&m_felter[nr], &QLineEdit::selectAll, Qt::QueuedConnection);
}

/// Tells of a failure once the focus has come to rest. A message that came up while it moves could
/// outlive the screen, and with it the fields between which it moves.
void OrdreHode::forlatFelt(int nr)
{
    try {
        mistetFokus(nr);
    } catch (const RunTimeError &feil) {
        QMetaObject::invokeMethod(this, [feil] { showUntrapped(feil); }, Qt::QueuedConnection);
    }
}

/// In every mode: while browsing it changes what the screen shows and nothing that is stored.
/// Not trapped: days that are no number and dates that are none raise error 13.
void OrdreHode::mistetFokus(int nr)
{
    const auto poststed = [this](int postNr) {
        return HentFelt(u"PostSted"_s, u"Poststed"_s,
                        u"PostNr='"_s + m_felter.tekst(postNr) + u"'"_s)
            .toText();
    };
    switch (nr) {
    case kFakPostNr:
        m_felter.settTekst(kFakPostSted, poststed(kFakPostNr));
        break;
    case kLevPostNr:
        m_felter.settTekst(kLevPostSted, poststed(kLevPostNr));
        break;
    case kBetBet:
        settForfall();
        break;
    case kFakDato:
        settForfall();
        m_ui.vaSpread1->setFocus(); // wherever the user was heading
        break;
    case kKundeNr:
        if (leadingNumber(LesInnstilling(u"KIDaktivert"_s, u"0"_s)) == 1) {
            m_felter.settTekst(
                kKID, LagKID(LesInnstilling, m_felter.tekst(kOrdreNr), m_felter.tekst(kKundeNr)));
        }
        break;
    default:
        break;
    }
}

void OrdreHode::settForfall()
{
    m_felter.settTekst(kForfallDato, m_felter.forfallFra(m_felter.dato(kFakDato)));
}

void OrdreHode::kobleVelger(DTPicker &velger, int nr)
{
    velger.setFixedWidth(kVelger.width());
    velger.setMaximumHeight(kVelger.height());
    velger.setFocusPolicy(Qt::ClickFocus);
    onEvent(&velger, &DTPicker::dateChosen, this, [this, &velger, nr] {
        if (m_tilstand.iModus())
            m_felter.settTekst(nr, Format(velger.value(), u"short date"));
    });
    onEvent(&velger, &DTPicker::entered, this, [this, &velger, nr] {
        visDato(velger, nr);
        velger.update();
    });
}

/// Passes over.
void OrdreHode::visDato(DTPicker &velger, int nr)
{
    passOver([&] { velger.setValue(toDate(m_felter.tekst(nr)).date()); });
}
