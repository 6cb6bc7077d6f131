#include "output/lists/frmOrdreSkriv.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "output/printing/mUtskrift.h"
#include "platform/forms/OuterRim.h"
#include "presentation/screens/Skjerm.h"
#include "runtime/Clock.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "state/SharedState.h"
#include "ui_frmOrdreSkriv.h"

using namespace Qt::StringLiterals;

namespace {

const QDate kLavesteDato(2010, 1, 1);
// Pixels.
constexpr qint32 kKundeliste = 200;
constexpr int kFeltbredde = 110;
/// Of the customer box, which make a customer number; one of six digits loses its last.
constexpr qsizetype kKundetegn = 5;
const QString kAlle = u"<Alle>"_s;

/// A date as the selection language writes it.
QString datoverdi(QDate dato)
{
    return u"Date("_s + numberToText(dato.year()) + u',' + numberToText(dato.month()) + u',' +
           numberToText(dato.day()) + u')';
}

QString klientUtvalg()
{
    return u"{Klient.KlientNr}="_s + numberToText(gKlient);
}

} // namespace

frmOrdreSkriv::frmOrdreSkriv()
    : Skjermbilde({.navn = u"frmOrdreSkriv"_s, .hjelp = u"html\\lister.htm"_s}),
      m_ui(std::make_unique<Ui::frmOrdreSkriv>())
{
    m_ui->setupUi(this);
    LikeKnapper(*this, {88, 0});
    for (QWidget *felt : std::initializer_list<QWidget *>{m_ui->cmbKunde, m_ui->dtpFraDato,
                                                          m_ui->dtpTilDato, m_ui->cmbStatus})
        felt->setMinimumWidth(kFeltbredde);
    // What is typed stays as it is typed.
    m_ui->cmbKunde->setCompleter(nullptr);
    // What is not hidden with the reminder list stands still.
    for (QLabel *ledetekst : {m_ui->Label1, m_ui->Label3}) {
        QSizePolicy plass = ledetekst->sizePolicy();
        plass.setRetainSizeWhenHidden(true);
        ledetekst->setSizePolicy(plass);
    }
    setDefaultButton(m_ui->OKButton);
    setCancelButton(m_ui->CancelButton);
    setCommandKey(Qt::CTRL | Qt::Key_P, m_ui->OKButton);

    onEvent(m_ui->optType_1, &QRadioButton::toggled, this,
            [this](bool paa) { optType_Click(paa); });
    onEvent(m_ui->dtpFraDato, &DTPicker::dateChosen, this, [this] { dtpFraDato_Change(); });
    onEvent(m_ui->dtpTilDato, &DTPicker::dateChosen, this, [this] { dtpTilDato_Change(); });
    onEvent(m_ui->cmbKunde, &QComboBox::activated, this,
            [this] { m_ui->cmbKunde->setEditText(kunde()); });
    onEvent(m_ui->OKButton, &QPushButton::clicked, this, [this] { OKButton_Click(); });
    onEvent(m_ui->CancelButton, &QPushButton::clicked, this, [this] { unload(); });
}

frmOrdreSkriv::~frmOrdreSkriv() = default;

void frmOrdreSkriv::onLoad()
{
    Skjermbilde::onLoad();
    centreOnScreen();
    const QDate idag = Clock::current().today();
    for (DTPicker *felt : {m_ui->dtpFraDato, m_ui->dtpTilDato})
        felt->setLimits(kLavesteDato, QDate(gAar, 12, 31));
    passOver([&] { m_ui->dtpFraDato->setValue(QDate(gAar, 1, 1)); });
    // A day that the month does not have runs on into the next one.
    passOver(
        [&] { m_ui->dtpTilDato->setValue(QDate(gAar, idag.month(), 1).addDays(idag.day() - 1)); });
    fyllKunde();
    fyllStatus();
    m_ui->optType_0->setFocus();
}

void frmOrdreSkriv::fyllKunde()
{
    QComboBox &boks = *m_ui->cmbKunde;
    boks.clear();
    boks.addItem(kAlle);
    const Ref<ado::Recordset> rs =
        gDB->GetRS(u"SELECT DISTINCT KundeNr,KundeNavn FROM Ordre WHERE "_s + klientVilkar() +
                       u" ORDER BY KundeNavn"_s,
                   true);
    for (; rs && !rs->eof(); rs->moveNext()) {
        // An order without customer number or name makes no entry of its own.
        passOver([&] {
            boks.addItem(Format(rs->integer(u"KundeNr"), u"00000\\ ") +
                         trimBlanks(rs->text(u"KundeNavn")));
        });
    }
    boks.setEditText(boks.itemText(0));
    // The list keeps the width for each time that it opens.
    qint32 bredde = kKundeliste;
    SettListeBredde(boks, bredde);
}

void frmOrdreSkriv::fyllStatus()
{
    m_ui->cmbStatus->clear();
    m_ui->cmbStatus->addItems({kAlle, u"Betalt"_s, u"Bokført"_s, u"Fakturert"_s, u"Ordre"_s});
}

void frmOrdreSkriv::dtpFraDato_Change()
{
    if (m_ui->dtpFraDato->value() > m_ui->dtpTilDato->value())
        m_ui->dtpTilDato->setValue(m_ui->dtpFraDato->value());
}

void frmOrdreSkriv::dtpTilDato_Change()
{
    if (m_ui->dtpTilDato->value() < m_ui->dtpFraDato->value())
        m_ui->dtpFraDato->setValue(m_ui->dtpTilDato->value());
}

void frmOrdreSkriv::optType_Click(bool purreliste)
{
    m_ui->Label6->setText(purreliste
                              ? u"Purreliste, ikke betalte ordre hvor forfallsdato er passert."_s
                              : u"Oversikt-liste over registrerte ordre, med forhåndsvisning."_s);
    setWindowTitle(purreliste ? u"Purreliste"_s : u"Ordre oversikt"_s);
    for (QWidget *kontroll :
         std::initializer_list<QWidget *>{m_ui->Label1, m_ui->Label3, m_ui->Label4,
                                          m_ui->dtpFraDato, m_ui->dtpTilDato, m_ui->cmbStatus})
        kontroll->setVisible(!purreliste);
}

QString frmOrdreSkriv::kunde() const
{
    return m_ui->cmbKunde->currentText().left(kKundetegn);
}

QString frmOrdreSkriv::ordreUtvalg() const
{
    QString utvalg = klientUtvalg() + u" and {Ordre.OrdreDato} in "_s +
                     datoverdi(m_ui->dtpFraDato->value()) + u" to "_s +
                     datoverdi(m_ui->dtpTilDato->value());
    if (kunde() != kAlle.left(kKundetegn))
        utvalg += u" and {Ordre.KundeNr}="_s + kunde();
    if (const QString status = m_ui->cmbStatus->currentText(); status != kAlle)
        utvalg += u" and {Ordre.OrdreStatus}='"_s + status + u'\'';
    return utvalg;
}

QString frmOrdreSkriv::purreUtvalg() const
{
    QString utvalg = klientUtvalg() +
                     u" and {Ordre.OrdreStatus}<>'Ordre' and {Ordre.OrdreStatus}<>'Betalt'"_s +
                     u" and {Ordre.ForfallDato}<"_s + datoverdi(Clock::current().today());
    if (kunde() != kAlle.left(kKundetegn))
        utvalg += u" AND {Ordre.KundeNr}="_s + kunde();
    return utvalg;
}

void frmOrdreSkriv::OKButton_Click()
{
    const qint16 modus = m_ui->optSkriv_1->isChecked() ? 1 : 0;
    passOver([&] {
        if (m_ui->optType_1->isChecked())
            SkrivRapport(u"Purreliste.rpt"_s, modus, purreUtvalg(), {}, {});
        else
            SkrivRapport(u"Ordreoversikt.rpt"_s, modus, ordreUtvalg(), {}, {});
    });
}
