#include "presentation/options/frmOptions.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "platform/forms/Forms.h"
#include "platform/forms/OuterRim.h"
#include "platform/forms/OwnPicture.h"
#include "platform/forms/Twips.h"
#include "platform/pictures/PictureFile.h"
#include "presentation/options/mPicture.h"
#include "presentation/screens/Skjerm.h"
#include "presentation/screens/frmInvisible.h"
#include "rules/Innstilling.h"
#include "runtime/Conversions.h"
#include "runtime/Paths.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"
#include "ui_frmOptions.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kMiniatyr{127, 180}; // a sheet of A4
constexpr QSize kLogo{237, 76};
constexpr int kIngenSlik = 340; // of a control array
constexpr int kSifferboks = 15; // pixels, at least
constexpr int kVedSiffer = 7;   // pixels that a text box takes for its rim

// Twips.
constexpr int kArkVenstre = 210;
constexpr int kArkBorte = -20000;
constexpr int kFanerVenstre = 120;
constexpr int kFanerTopp = 120;
constexpr int kBunnhoyde = 600;
constexpr int kArkmarg = 120;

/// The setting without the zero character that closes it.
QString tekst(const QString &nokkel, const QString &standard)
{
    const QString lagret = LesInnstilling(nokkel, standard);
    return lagret.left(lagret.indexOf(QChar(u'\0')));
}

double tall(const QString &nokkel, const QString &standard)
{
    return leadingNumber(LesInnstilling(nokkel, standard));
}

/// Also when the setting's number cannot be read.
bool erPaa(const QString &nokkel)
{
    return enters([&] { return tall(nokkel, u"0"_s) == 1; });
}

void lagre(const QString &nokkel, const QString &innstilling)
{
    passOver([&] { gReg->SaveSetting(u"Regningsdel"_s, nokkel, innstilling); });
}

/// A text box that cannot be used has the ground of a button's face.
void settIBruk(QLineEdit &boks, bool paa)
{
    boks.setEnabled(paa);
    QPalette farger;
    if (!paa)
        farger.setColor(QPalette::Base, boks.palette().color(QPalette::Button));
    boks.setPalette(farger);
}

template<size_t N>
void velg(const std::array<QRadioButton *, N> &knapper, int indeks)
{
    if (indeks < 0 || indeks >= int(N))
        throw RunTimeError(kIngenSlik, u"Finner ikke elementet i kontrollmatrisen"_s);
    knapper[size_t(indeks)]->setChecked(true);
}

template<size_t N>
QString valgt(const std::array<QRadioButton *, N> &knapper)
{
    const auto knapp = std::ranges::find_if(knapper, &QRadioButton::isChecked);
    return QString::number(knapp == knapper.end() ? 0 : knapp - knapper.begin());
}

QString sannhet(const QCheckBox &boks)
{
    return QString::number(int(boks.isChecked()));
}

/// The picture of a form, by its index among optLogo.
QIcon miniatyr(int blankett)
{
    return ownPicture(u":/faktura/blankett-%1.png"_s.arg(blankett), kMiniatyr);
}

} // namespace

frmOptions::frmOptions()
    : Skjermbilde({.navn = u"frmOptions"_s, .hjelp = u"html\\innstillinger.htm"_s}),
      m_ui(std::make_unique<Ui::frmOptions>())
{
    m_ui->setupUi(this);
    LikeKnapper(*m_ui->bunn, {84, 26});
    LikeKnapper(*m_ui->frLogo, {104, 26});
    m_ark = {.faner = m_ui->tbsOptions,
             .ark = {m_ui->picOptions_0, m_ui->picOptions_1, m_ui->picOptions_2},
             .venstre = kArkVenstre,
             .marg = kArkmarg};
    m_optLogo = {m_ui->optLogo_0, m_ui->optLogo_1, m_ui->optLogo_2, m_ui->optLogo_3};
    m_optAvrunding = {m_ui->optAvrunding_0, m_ui->optAvrunding_1, m_ui->optAvrunding_2};

    m_ui->imgBlankett->setFixedSize(kMiniatyr);
    m_ui->imgBlankett->setPicture(miniatyr(0));

    QImage tom(kLogo, QImage::Format_RGB32);
    tom.fill(Qt::white);
    m_ui->imgTomLogo->setPicture(tom);
    m_ui->imgTomLogo->hide();
    m_ui->picLogo->setPicture(tom);
    const int ramme = 2 * m_ui->picLogo->frameWidth();
    m_ui->picLogo->setFixedSize(kLogo + QSize(ramme, ramme));

    for (QLineEdit *boks : {m_ui->Text1, m_ui->Text2, m_ui->Text3}) {
        // Of large letters, too, one digit is to be seen.
        boks->setMinimumWidth(kSifferboks);
        boks->setFixedWidth(BreddeFor(*boks, u"8", kVedSiffer));
    }
    for (QFrame *ark : m_ark.ark)
        ark->move(twipsToPixels(ark == m_ui->picOptions_1 ? kArkBorte : kArkVenstre), 0);
    settMinsteStorrelse();
    m_ui->imgBlankett->hide();
    m_ark.hentFram(1);

    setDefaultButton(m_ui->cmdOK);
    setCancelButton(m_ui->cmdCancel);
    setCommandKey(Qt::CTRL | Qt::Key_S, m_ui->cmdApply);
    kobleKontroller();
}

frmOptions::~frmOptions() = default;

void frmOptions::kobleKontroller()
{
    onEvent(m_ui->tbsOptions, &TabStrip::clicked, this, [this] { tbsOptions_Click(); });
    onEvent(m_ui->Check1, &QCheckBox::toggled, this, [this] { Check1_Click(); });
    for (size_t i = 0; i < m_optLogo.size(); ++i) {
        onEvent(m_optLogo[i], &QRadioButton::toggled, this, [this, i](bool paa) {
            if (paa)
                optLogo_Click(qint16(i));
        });
    }
    onEvent(m_ui->cmdLogoInn, &QPushButton::clicked, this, [this] { cmdLogoInn_Click(); });
    onEvent(m_ui->cmdLogoSlett, &QPushButton::clicked, this, [this] { cmdLogoSlett_Click(); });
    onEvent(m_ui->cmdApply, &QPushButton::clicked, this, [this] { cmdApply_Click(); });
    onEvent(m_ui->cmdOK, &QPushButton::clicked, this, [this] { cmdOK_Click(); });
    onEvent(m_ui->cmdCancel, &QPushButton::clicked, this, [this] { unload(); });
}

// --- The life of the form

void frmOptions::onLoad()
{
    Skjermbilde::onLoad();
    centreOnScreen();
    visKID();
    visBlankett();
    passOver([this] { m_ui->picLogo->setPicture(loadPicture(paths::toSystem(LesLogo()))); });
    Check1_Click();

    const QString vilkar = klientVilkar();
    visForsteFakturanr(vilkar);
    visFakturatekster(vilkar);
    passOver([this] { velg(m_optAvrunding, toInteger(tall(u"Avrunding"_s, u"0"_s))); });
    m_ui->chkPrintVis->setChecked(erPaa(u"PrintVis"_s));
}

void frmOptions::settMinsteStorrelse()
{
    // Wide enough for the longest caption on one line.
    QSize rom(m_ui->rammeKID->sizeHint().width(), 0);
    for (const QFrame *ark : m_ark.ark)
        rom.setWidth(std::max(rom.width(), ark->layout()->minimumSize().width()));
    for (const QFrame *ark : m_ark.ark) {
        const QLayout &oppsett = *ark->layout();
        rom.setHeight(std::max({rom.height(), oppsett.minimumSize().height(),
                                oppsett.minimumHeightForWidth(rom.width())}));
    }
    frmOptions::onResize(); // by its full name, since the form is still being made
    const QSize minst = rom + size() - m_ui->picOptions_0->size();
    setMinimumTwips(pixelsToTwips(minst.width()), pixelsToTwips(minst.height()));
    resize(minst);
}

void frmOptions::onResize()
{
    TabStrip &faner = *m_ui->tbsOptions;
    const int venstre = twipsToPixels(kFanerVenstre);
    const int topp = twipsToPixels(kFanerTopp);
    // Higher than designed where large letters need it.
    const int bunn = std::max(twipsToPixels(kBunnhoyde), m_ui->bunn->sizeHint().height());
    const QSize flate = pageSize();
    faner.setGeometry(venstre, topp, flate.width() - 2 * venstre, flate.height() - topp - bunn);
    m_ui->bunn->setGeometry(0, flate.height() - bunn, flate.width(), bunn);
    m_ark.tilpass(flate.width());
}

bool frmOptions::onKeyDown(Qt::Key tast, Qt::KeyboardModifiers skift)
{
    if (tast != Qt::Key_Tab || skift != Qt::ControlModifier)
        return Skjermbilde::onKeyDown(tast, skift);
    m_ui->tbsOptions->clickNext();
    return true;
}

// --- Opening

void frmOptions::visKID()
{
    m_ui->Check1->setChecked(erPaa(u"KIDaktivert"_s));
    const bool medKundenr = erPaa(u"KIDoppbygning"_s);
    (medKundenr ? m_ui->optKID_1 : m_ui->optKID_0)->setChecked(true);
    m_ui->Label3->setEnabled(medKundenr);
    m_ui->Text2->setText(tekst(u"KIDlengdeFakturanr"_s, u"6"_s));
    m_ui->Text3->setText(tekst(u"KIDlengdeFakturanr"_s, u"6"_s));
    // The order screen takes 6 where nothing is stored; here 5 is offered.
    m_ui->Text1->setText(tekst(u"KIDlengdeKundenr"_s, u"5"_s));

    m_ui->optMOD_0->setChecked(true);
    if (enters([] { return tall(u"KIDmodulus"_s, u"10"_s) == 11; }))
        m_ui->optMOD_1->setChecked(true);
}

void frmOptions::visBlankett()
{
    const QString lagret = LesInnstilling(u"Fakturablankett"_s, u"0"_s);
    passOver([&] { velg(m_optLogo, toInteger(leadingNumber(lagret))); });
    m_ui->imgBlankett->show();
    passOver([&] { optLogo_Click(toInteger(leadingNumber(lagret))); });
}

void frmOptions::visForsteFakturanr(const QString &vilkar)
{
    const bool fri = !enters([&] { return gDB->GetCount(u"Ordre"_s, vilkar) > 0; });
    settIBruk(*m_ui->txtFirstFak, fri);
    m_ui->Frame4->setEnabled(fri);
    // The stored number is not shown while no order has been made from it, and a save puts the 1
    // that shows in its place.
    if (fri)
        return;
    passOver([&] {
        m_ui->txtFirstFak->setText(HentFelt(u"FirstFakNr"_s, u"Klient"_s, vilkar).toText());
    });
}

void frmOptions::visFakturatekster(const QString &vilkar)
{
    const auto lest = [&](const QString &felt) {
        QString verdi;
        passOver([&] { verdi = HentFelt(felt, u"Klient"_s, vilkar).toText(); });
        return verdi;
    };
    double bruk = 0;
    passOver([&] { bruk = leadingNumber(lest(u"FakTekstBruk"_s)); });
    m_ui->chkTxt1->setChecked(bruk == 1 || bruk == 3);
    m_ui->chkTxt2->setChecked(bruk == 2 || bruk == 3);

    m_ui->txtFaktekst1->setText(lest(u"FakTekst1"_s));
    m_ui->txtFaktekst2->setText(lest(u"FakTekst2"_s));
    if (trimBlanks(m_ui->txtFaktekst1->text()).isEmpty())
        m_ui->txtFaktekst1->setText(u"Etter forfall beregnes maksimal rente i hht. bestemmelsene i "
                                    "Lov om renter ved forsinket betaling."_s);
}

// --- Saving

void frmOptions::cmdApply_Click()
{
    lagreKID();
    lagre(u"Fakturablankett"_s, valgt(m_optLogo));
    // Touched or not, so that a client without a logo has a blank picture.
    passOver([this] { SkrivLogo(*m_ui->picLogo); });
    lagreKlient();
    lagre(u"Avrunding"_s, valgt(m_optAvrunding));
    lagre(u"PrintVis"_s, sannhet(*m_ui->chkPrintVis));
}

void frmOptions::lagreKID()
{
    lagre(u"KIDaktivert"_s, sannhet(*m_ui->Check1));
    if (!m_ui->Check1->isChecked())
        return;
    const bool medKundenr = m_ui->optKID_1->isChecked();
    lagre(u"KIDoppbygning"_s, medKundenr ? u"1"_s : u"0"_s);
    lagre(u"KIDlengdeFakturanr"_s, trimBlanks((medKundenr ? m_ui->Text2 : m_ui->Text3)->text()));
    lagre(u"KIDlengdeKundenr"_s, trimBlanks(m_ui->Text1->text()));
    lagre(u"KIDmodulus"_s, m_ui->optMOD_1->isChecked() ? u"11"_s : u"10"_s);
}

void frmOptions::lagreKlient()
{
    const QString vilkar = u" WHERE "_s + klientVilkar();
    // Not whether the page is enabled, which it is not while another one is in front.
    const bool fri = m_ui->txtFirstFak->isEnabledTo(m_ui->picOptions_2);
    const QString forste = m_ui->txtFirstFak->text();
    if (enters([&] { return fri && leadingNumber(forste) >= 1; }))
        passOver([&] { gDB->Execute(u"UPDATE Klient SET FirstFakNr="_s + forste + vilkar); });

    // Only this screen reads these columns: a printout takes its text from the settings.
    const int bruk = int(m_ui->chkTxt1->isChecked()) + 2 * int(m_ui->chkTxt2->isChecked());
    passOver([&] {
        gDB->Execute(u"UPDATE Klient SET FakTekstBruk="_s + numberToText(bruk) +
                     u", FakTekst1='"_s + m_ui->txtFaktekst1->text() + u"', FakTekst2='"_s +
                     m_ui->txtFaktekst2->text() + u"'"_s + vilkar);
    });
}

void frmOptions::cmdOK_Click()
{
    cmdApply_Click();
    unload();
}

// --- Events of the controls

void frmOptions::Check1_Click()
{
    const bool paa = m_ui->Check1->isChecked();
    for (QRadioButton *knapp : std::initializer_list<QRadioButton *>{
             m_ui->optMOD_0, m_ui->optMOD_1, m_ui->optKID_0, m_ui->optKID_1})
        knapp->setEnabled(paa);
    for (QLineEdit *boks : {m_ui->Text1, m_ui->Text2, m_ui->Text3})
        settIBruk(*boks, paa);
}

void frmOptions::optLogo_Click(qint16 indeks)
{
    const bool utenLogo = indeks == 0 || indeks == 2;
    const bool medLogo = indeks == 1 || indeks == 3;
    if (!utenLogo && !medLogo)
        return;
    for (QWidget *kontroll :
         std::initializer_list<QWidget *>{m_ui->frLogo, m_ui->cmdLogoInn, m_ui->cmdLogoSlett})
        kontroll->setEnabled(medLogo);
    m_ui->imgBlankett->setPicture(miniatyr(indeks));
}

void frmOptions::cmdLogoInn_Click()
{
    passOver([this] {
        CommonDialog &dialog = SharedForm<frmInvisible>::get().CommonDialog1;
        dialog.cancelError = true;
        dialog.flags = dialogflags::kHideReadOnly;
        dialog.filter = u"Bitmaps(*.bmp)|*.bmp|Bitmaps(*.dib)|*.dib|GIF bilder(*.gif)|*.gif|"
                        "JPEG bilder(*.jpg)|*.jpg|WMF filer(*.wmf)|*.wmf|Alle filer (*.*)|*.*"_s;
        dialog.filterIndex = 0;
        // Not the file that another screen has asked for.
        dialog.fileName.clear();
        dialog.fileKind = u"Logo"_s;
        dialog.showOpen();
        m_ui->picLogo->setPicture(loadPicture(dialog.fileName));
    });
}

void frmOptions::cmdLogoSlett_Click()
{
    m_ui->picLogo->setPicture(m_ui->imgTomLogo->picture());
}

void frmOptions::tbsOptions_Click()
{
    const int nr = m_ui->tbsOptions->selected();
    m_ark.hentFram(nr);
    m_ark.leggBortAndre(nr);
    for (QFrame *ark : m_ark.ark)
        ark->setEnabled(ark == m_ark.ark[size_t(nr - 1)]);
}
