#include "order/OrdreHode.h"

#include "data/mFaktura.h"
#include "order/OrdreFelter.h"
#include "order/OrdreTilstand.h"
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

using namespace Qt::StringLiterals;
using namespace ordrefelt;

namespace {

struct Pickerfelt
{
    DTPicker *Ui::frmOrdre::*picker;
    int nr;
};

constexpr Pickerfelt kPickers[] = {
    {&Ui::frmOrdre::dtpOrdre, kOrdreDato},
    {&Ui::frmOrdre::dtpLevDato, kLevDato},
    {&Ui::frmOrdre::dtpFakDato, kFakDato},
    {&Ui::frmOrdre::dtpForfall, kForfallDato},
};

constexpr int kInvalidPropertyValue = 380;

int feltNr(KundeFelt felt)
{
    switch (felt) {
    case KundeFelt::KundeNr:
        return kKundeNr;
    case KundeFelt::KundeNavn:
        return kKundeNavn;
    case KundeFelt::BetBet:
        return kBetBet;
    case KundeFelt::FakAdresse1:
        return kFakAdresse1;
    case KundeFelt::FakAdresse2:
        return kFakAdresse2;
    case KundeFelt::FakPostNr:
        return kFakPostNr;
    case KundeFelt::FakPostSted:
        return kFakPostSted;
    case KundeFelt::LevAdresse1:
        return kLevAdresse1;
    case KundeFelt::LevAdresse2:
        return kLevAdresse2;
    case KundeFelt::LevPostNr:
        return kLevPostNr;
    case KundeFelt::LevPostSted:
        return kLevPostSted;
    case KundeFelt::OrganisasjonsNr:
        return kOrgNr;
    case KundeFelt::ForfallDato:
        return kForfallDato;
    case KundeFelt::FakturaType:
        return kFakturaType;
    }
    throw RunTimeError(errors::kInvalidCall);
}

/// The first field with an amount, which is shown as 0.00 when it is blank.
constexpr int kFirstSum = kSumNetto;

} // namespace

OrdreHode::OrdreHode(Ui::frmOrdre &ui, OrdreTilstand &tilstand, const OrdreFelter &felter)
    : m_ui(ui), m_tilstand(tilstand), m_felter(felter)
{
    for (int nr = 0; nr < kAntall; ++nr)
        m_felter[nr].installEventFilter(this);
    for (const Pickerfelt &entry : kPickers)
        wirePicker(*(m_ui.*entry.picker), entry.nr);
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
    for (const Pickerfelt &entry : kPickers) {
        passOver(
            [&] { (m_ui.*entry.picker)->setLimits(QDate(gAar, 1, 1), QDate(gAar + 1, 12, 31)); });
    }
}

void OrdreHode::tomFelter()
{
    for (int nr = 0; nr < kAntall; ++nr)
        m_felter.setText(nr, nr < kFirstSum ? QString() : u"0.00"_s);
    m_felter.setText(kBetBet, u"0"_s);
    m_felter.setText(kOrdreNr, u"0"_s);
    m_felter.setText(kOrgNr, QString());
    m_ui.chkBetalt->setChecked(false);
    m_ui.chkLevAdr->setChecked(false);
}

bool OrdreHode::erUtenforAar() const
{
    return m_felter.dato(kOrdreDato).year() != gAar;
}

void OrdreHode::setKundefelt(KundeFelt felt, const QString &text)
{
    m_felter.setText(feltNr(felt), text);
}

void OrdreHode::setSammeLevAdr(qint32 verdi)
{
    if (verdi < Qt::Unchecked || verdi > Qt::Checked)
        throw RunTimeError(kInvalidPropertyValue);
    // The numbers of the two other states are the other way round in Qt.
    m_ui.chkLevAdr->setCheckState(verdi == 1   ? Qt::Checked
                                  : verdi == 2 ? Qt::PartiallyChecked
                                               : Qt::Unchecked);
}

QString OrdreHode::betBet() const
{
    return m_felter.text(kBetBet);
}

bool OrdreHode::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress)
        return apnerKalender(m_felter.nrOf(watched), *static_cast<QKeyEvent *>(event));
    if (event->type() != QEvent::FocusIn && event->type() != QEvent::FocusOut)
        return false;
    const Qt::FocusReason reason = static_cast<QFocusEvent *>(event)->reason();
    const int nr = m_felter.nrOf(watched);
    if (nr < 0)
        return false;
    // A context menu takes the focus for a while without the field being left, and so does another
    // window. One that comes back has to find a field that may hold the focus: the key that was to
    // send it on has gone to the menu.
    const bool fraMeny = reason == Qt::PopupFocusReason;
    if (event->type() == QEvent::FocusIn && (!fraMeny || senderVidere(nr)))
        atOuterRim([&] { fikkFokus(nr, reason); });
    else if (event->type() == QEvent::FocusOut && !fraMeny && reason != Qt::ActiveWindowFocusReason)
        atOuterRim([&] { forlatFelt(nr); });
    return false;
}

/// A date field opens the calendar beside it by the calendar's own keys.
bool OrdreHode::apnerKalender(int nr, const QKeyEvent &key)
{
    const auto entry = std::ranges::find(kPickers, nr, &Pickerfelt::nr);
    if (entry == std::end(kPickers) || !DTPicker::dropsDown(key))
        return false;
    (m_ui.*entry->picker)->dropDown();
    return true;
}

/// Passes over.
void OrdreHode::fikkFokus(int nr, Qt::FocusReason reason)
{
    if (senderVidere(nr)) {
        sendKey(Qt::Key_Tab);
        return;
    }
    for (const Pickerfelt &entry : kPickers) {
        if (entry.nr != nr)
            continue;
        passOver([&] { (m_ui.*entry.picker)->setValue(toDate(m_felter.text(nr)).date()); });
        m_felter[nr].selectAll();
        // The press of the mouse that has brought the focus here sets the cursor afterwards.
        if (reason == Qt::MouseFocusReason)
            QMetaObject::invokeMethod(&m_felter[nr], &QLineEdit::selectAll, Qt::QueuedConnection);
    }
}

/// Tells of a failure once the focus has come to rest. A message that came up while it moves could
/// outlive the screen, and with it the fields between which it moves.
void OrdreHode::forlatFelt(int nr)
{
    try {
        mistetFokus(nr);
    } catch (const RunTimeError &error) {
        const auto tell = [error] { showUntrapped(error); };
        QMetaObject::invokeMethod(this, tell, Qt::QueuedConnection);
    }
}

/// In every mode: while browsing it changes what the screen shows and nothing that is stored.
/// Not trapped: days that are no number and dates that are none raise error 13.
void OrdreHode::mistetFokus(int nr)
{
    const auto poststed = [this](int postNr) {
        return HentFelt(u"PostSted"_s, u"Poststed"_s,
                        u"PostNr='"_s + m_felter.text(postNr) + u"'"_s)
            .toText();
    };
    switch (nr) {
    case kFakPostNr:
        m_felter.setText(kFakPostSted, poststed(kFakPostNr));
        break;
    case kLevPostNr:
        m_felter.setText(kLevPostSted, poststed(kLevPostNr));
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
            m_felter.setText(
                kKID, LagKID(LesInnstilling, m_felter.text(kOrdreNr), m_felter.text(kKundeNr)));
        }
        break;
    default:
        break;
    }
}

void OrdreHode::settForfall()
{
    m_felter.setText(kForfallDato, m_felter.forfallFra(m_felter.dato(kFakDato)));
}

void OrdreHode::wirePicker(DTPicker &picker, int nr)
{
    onEvent(&picker, &DTPicker::dateChosen, this, [this, &picker, nr] {
        if (m_tilstand.iModus())
            m_felter.setText(nr, Format(picker.value(), u"short date"));
    });
    onEvent(&picker, &DTPicker::entered, this, [this, &picker, nr] {
        passOver([&] { picker.setValue(toDate(m_felter.text(nr)).date()); });
        picker.update();
    });
}
