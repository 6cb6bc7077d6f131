#include "posting/screen/frmBokfor.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "platform/forms/MsgBox.h"
#include "platform/forms/OuterRim.h"
#include "platform/grid/fpSpread.h"
#include "posting/run/Bokkontroll.h"
#include "presentation/screens/Skjerm.h"
#include "presentation/screens/Timeglass.h"
#include "presentation/spread/Fakturaliste.h"
#include "presentation/spread/mVASpread.h"
#include "rules/Ordre.h"
#include "runtime/Clock.h"
#include "runtime/Conversions.h"
#include "runtime/Format.h"
#include "state/SharedState.h"
#include "ui_frmBokfor.h"

#include <QCoreApplication>
#include <QLineEdit>
#include <QPointer>

#include <optional>

using namespace Qt::StringLiterals;
using namespace bokforkolonne;

namespace {

constexpr int kRaderIUtformingen = 10;
constexpr qint32 kKontoliste = 150; // pixels
constexpr qint32 kLoyveliste = 200;
constexpr int kVedTeksten = 30; // pixels of frame and arrow
// Milliseconds.
constexpr qint64 kMaleintervall = 200;
constexpr qint64 kSieintervall = 5000;
constexpr QStringView kStandardKonto = u"3000";
constexpr QStringView kUtenLoyve = u"<nei>";

/// Adds an item for each row of the query: its fields with a blank between. A Null is no text.
void leggTil(QComboBox &boks, const QString &sporring)
{
    const Ref<ado::Recordset> rs = gDB->GetRS(sporring, true);
    for (; rs && !rs->eof(); rs->moveNext()) {
        passOver([&] {
            QStringList tekster;
            for (int felt = 0; felt < rs->fieldCount(); ++felt)
                tekster += rs->isNull(felt) ? QString() : rs->text(felt);
            boks.addItem(tekster.join(u' '));
        });
    }
}

/// What stands in front of the first blank.
void kuttVedBlank(QComboBox &boks)
{
    boks.setEditText(trimBlanks(boks.currentText().section(u' ', 0, 0)));
}

} // namespace

/// The screen as a run sees it. Once a message is up or pending events run, the form may be closed
/// and gone before the run has ended; the list is read before that.
class frmBokfor::Kjoring final : public BokforSkjerm
{
public:
    explicit Kjoring(frmBokfor &skjerm) : m_skjerm(&skjerm), m_rapport(skjerm.m_rapport) {}
    ~Kjoring() override { sluttFramdrift(); }
    Kjoring(const Kjoring &) = delete;
    Kjoring &operator=(const Kjoring &) = delete;

    int antallRader() const override { return m_skjerm->m_ui->fpSpread1->dataRowCnt(); }
    bool erMerket(int rad) const override { return m_skjerm->erMerket(rad); }
    QString celle(int kol, int rad) const override
    {
        return SpreadGetText(*m_skjerm->m_ui->fpSpread1, kol, rad);
    }
    QString konto() const override { return m_skjerm->m_ui->cmbKonto->currentText(); }
    QString loyve() const override { return m_skjerm->m_ui->cmbLoyve->currentText(); }

    /// Paints at once and without the event loop, for nothing that waits there may run before the
    /// run is over.
    void framdrift(int behandlet, int merket) override
    {
        const QDateTime naa = Clock::current().now();
        if (!m_timeglass) {
            m_timeglass.emplace();
            m_malt = naa;
            m_sagt = naa.addMSecs(-kSieintervall);
        }
        QLabel &fot = *m_skjerm->m_ui->lblFramdrift;
        fot.setText(u"%1 av %2"_s.arg(behandlet).arg(merket));
        if (qAbs(m_sagt.msecsTo(naa)) >= kSieintervall) {
            m_skjerm->announce(fot.text());
            m_sagt = naa;
        }
        if (qAbs(m_malt.msecsTo(naa)) < kMaleintervall) {
            fot.repaint();
            return;
        }
        malAlt();
        m_malt = naa;
    }
    void melding(const QString &tekst, int stil) override
    {
        sluttFramdrift();
        MsgBox(tekst, stil);
    }
    void lesFakturaer() override { m_skjerm->LesFakturaer(); }
    void skrivRapport(const QString &rapport, qint16 modus, const QString &utvalg,
                      const QString &formel1, const QString &formel2) override
    {
        if (m_rapport)
            m_rapport(rapport, modus, utvalg, formel1, formel2);
    }
    void slippHendelser() override { QCoreApplication::processEvents(); }

private:
    /// Something may have covered the window meanwhile. Painting it leaves out what its controls
    /// paint as a whole themselves.
    void malAlt()
    {
        m_skjerm->repaint();
        for (QWidget *kontroll : m_skjerm->findChildren<QWidget *>()) {
            if (kontroll->isVisible())
                kontroll->repaint();
        }
    }
    void sluttFramdrift()
    {
        if (!m_timeglass)
            return;
        m_timeglass.reset();
        if (!m_skjerm)
            return;
        m_skjerm->m_ui->lblFramdrift->clear();
        m_skjerm->setAccessibleDescription({});
    }

    const QPointer<frmBokfor> m_skjerm;
    const Rapport m_rapport;
    QDateTime m_malt;                     ///< when the whole window was painted last
    QDateTime m_sagt;                     ///< when a screen reader was told last how far the run is
    std::optional<Timeglass> m_timeglass; ///< while it tells how far it is
};

frmBokfor::frmBokfor()
    : Skjermbilde({.navn = u"frmBokfor"_s,
                   .hjelp = u"html\\bokfor.htm"_s,
                   .lukkesMedEscape = true,
                   .standard = {9345, 4755},
                   .minst = {4000, 4000}}),
      m_ui(std::make_unique<Ui::frmBokfor>())
{
    m_ui->setupUi(this);
    LikeKnapper(*this, {76, 0});

    fpSpread &grid = *m_ui->fpSpread1;
    LagFakturaliste(grid, u"Bokfør"_s);
    SpreadSetCellType(grid, kBokfor, kAll, int(CellKind::CheckBox));
    grid.setLock(false); // the one column that the user edits

    QFont skrift = grid.font();
    skrift.setPointSizeF(skrift.pointSizeF() - 0.5);
    m_ui->lblFramdrift->setFont(skrift);

    tilpassValg();

    // What is typed stays as it is typed: nothing completes it, and one that spells an item is not
    // taken for a choice of it when the box is left.
    for (QComboBox *boks : {m_ui->cmbKonto, m_ui->cmbLoyve}) {
        boks->setCompleter(nullptr);
        disconnect(boks->lineEdit(), &QLineEdit::editingFinished, boks, nullptr);
    }

    onEvent(m_ui->cmbKonto, &QComboBox::activated, this, [this] { kuttVedBlank(*m_ui->cmbKonto); });
    onEvent(m_ui->cmbLoyve, &QComboBox::activated, this, [this] {
        if (trimBlanks(m_ui->cmbLoyve->currentText()) != kUtenLoyve)
            kuttVedBlank(*m_ui->cmbLoyve);
    });
    onEvent(m_ui->Check1, &QCheckBox::toggled, this, [this] { Check1_Click(); });
    onEvent(&grid, &fpSpread::ButtonClicked, this, [this] { fpSpread1_ButtonClicked(); });
    onEvent(m_ui->btnTransfer, &QPushButton::clicked, this, [this] { btnTransfer_Click(); });
    onEvent(m_ui->btnClose, &QPushButton::clicked, this, [this] { unload(); });
}

frmBokfor::~frmBokfor() = default;

void frmBokfor::onLoad()
{
    Skjermbilde::onLoad();
    LesFakturaer();
    m_ui->btnTransfer->setEnabled(false);
    fyllLoyve();
    fyllKonto();
    visMerknad();
}

void frmBokfor::LesFakturaer()
{
    fpSpread &grid = *m_ui->fpSpread1;
    grid.setRedraw(false);
    passOver([&] { SpreadClear(grid); });
    const Ref<ado::Recordset> rs = gDB->GetRS(u"SELECT * FROM Ordre WHERE "_s + klientVilkar() +
                                                  u" AND "_s + StatusLik(ordrestatus::kFakturert),
                                              true);
    if (!gDB->EmptyRS(rs)) {
        if (rs->recordCount() > kRaderIUtformingen)
            grid.setMaxRows(rs->recordCount() + 1);
        for (int rad = 1; !rs->eof(); ++rad, rs->moveNext()) {
            SpreadSetCellAlign(grid, rad, kBelop, int(CellAlign::Right));
            // A Null leaves its cell empty.
            const auto skriv = [&](int kol, const auto &verdi) {
                passOver([&] { SpreadSetText(grid, kol, rad, verdi()); });
            };
            skriv(kFakNr, [&] { return Format(rs->integer(u"OrdreNr"), u"#0"); });
            skriv(kKundeNr, [&] { return Format(rs->integer(u"KundeNr"), u"#0"); });
            skriv(kKundeNavn, [&] { return rs->text(u"KundeNavn"); });
            skriv(kFakDato, [&] { return Format(rs->value(u"FakDato").toDate(), u"dd.mm.yyyy"); });
            skriv(kForfall,
                  [&] { return Format(rs->value(u"ForfallDato").toDate(), u"dd.mm.yyyy"); });
            skriv(kBelop, [&] { return Format(rs->currency(u"SumBrutto"), u"# ##0.00"); });
            skriv(kOrdreId, [&] { return Format(rs->integer(u"ID"), u"#0"); });
        }
    }
    grid.setRedraw(true);
}

/// What the check of the books knows of the list, in the place where a run tells how far it is.
void frmBokfor::visMerknad()
{
    int antall = 0;
    if (m_ui->fpSpread1->dataRowCnt() > 0)
        passOver([&] { antall = AntallMedBilagFraFor(); });
    // In two lines there is room for it in the window as designed.
    m_ui->lblFramdrift->setText(antall > 0 ? u"%1 av disse har\nbilag fra før"_s.arg(antall)
                                           : QString());
}

void frmBokfor::fyllKonto()
{
    QComboBox &boks = *m_ui->cmbKonto;
    boks.clear();
    leggTil(boks,
            u"SELECT KontoNr,Navn FROM Kontoplan WHERE (KontoNr=1900 or KtoGruppe=55) AND "_s +
                klientVilkar() + u" ORDER BY KontoNr"_s);
    boks.setCurrentIndex(-1); // the keys choose from the first account on
    boks.setEditText(kStandardKonto.toString());
    qint32 bredde = kKontoliste;
    SettListeBredde(boks, bredde);
}

void frmBokfor::fyllLoyve()
{
    QComboBox &boks = *m_ui->cmbLoyve;
    boks.clear();
    boks.addItem(kUtenLoyve.toString());
    leggTil(boks, u"SELECT BilLoyve,BilRegNr,BilType FROM Bil WHERE Passiv=0 AND "_s +
                      klientVilkar() + u" ORDER BY BilLoyve,BilRegNr"_s);
    boks.setEditText(kUtenLoyve.toString());
    qint32 bredde = kLoyveliste;
    SettListeBredde(boks, bredde);
}

void frmBokfor::Check1_Click()
{
    const bool merk = m_ui->Check1->isChecked();
    fpSpread &grid = *m_ui->fpSpread1;
    grid.setRedraw(false);
    for (int rad = 1; rad <= grid.maxRows(); ++rad) {
        if (enters([&] { return leadingNumber(SpreadGetText(grid, kFakNr, rad)) > 0; }))
            SpreadSetText(grid, kBokfor, rad, merk ? u"1" : u"0");
    }
    grid.setRedraw(true);
    // The button that posts follows clicks in the list alone.
    m_ui->Check1->setText(merk ? u"Fjern &merking"_s : u"&Merk alle"_s);
    tilpassValg();
}

/// The boxes are as wide as drawn, or as their first texts need it in larger letters. In a narrow
/// window the buttons keep their place: the choices beside them are cut off, not pressed together.
void frmBokfor::tilpassValg()
{
    m_ui->cmbKonto->setFixedWidth(BreddeFor(*m_ui->cmbKonto, kStandardKonto, kVedTeksten));
    m_ui->cmbLoyve->setFixedWidth(BreddeFor(*m_ui->cmbLoyve, kUtenLoyve, kVedTeksten));
    m_ui->valg->adjustSize();
    m_ui->venstre->setMaximumWidth(m_ui->valg->width());
}

void frmBokfor::fpSpread1_ButtonClicked()
{
    fpSpread &grid = *m_ui->fpSpread1;
    bool noenMerket = false;
    for (int rad = 1; rad <= grid.dataRowCnt() && !noenMerket; ++rad)
        noenMerket = erMerket(rad) && !SpreadGetText(grid, kFakNr, rad).isEmpty();
    m_ui->btnTransfer->setEnabled(noenMerket);
}

bool frmBokfor::erMerket(int rad) const
{
    m_ui->fpSpread1->setCurrent(kBokfor, rad);
    return m_ui->fpSpread1->value() == u"1";
}

void frmBokfor::btnTransfer_Click()
{
    Kjoring kjoring(*this);
    BokforMerkede(kjoring);
    // The events of the run may have closed this form for good.
}

void frmBokfor::onResize()
{
    TilpassOverskrift(*this, *m_ui->topp, *m_ui->lblTekst);
    tilpassNavn(*m_ui->fpSpread1, kKundeNavn);
}
