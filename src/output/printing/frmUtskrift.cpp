#include "output/printing/frmUtskrift.h"

#include "data/clsAdoUtils.h"
#include "order/frmOrdre.h"
#include "output/ehf/EhfFil.h"
#include "output/printing/Skriver.h"
#include "output/printing/mUtskrift.h"
#include "output/printout/Fakturautskrift.h"
#include "platform/forms/Forms.h"
#include "platform/forms/OuterRim.h"
#include "presentation/screens/frmInvisible.h"
#include "rules/Innstilling.h"
#include "rules/Ordre.h"
#include "runtime/Conversions.h"
#include "runtime/RunTimeError.h"
#include "state/SharedState.h"
#include "ui_frmUtskrift.h"

#include <QFile>

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 kForhandsvis = 0;
constexpr qint16 kTilSkriver = 1;

/// Prepares the dialog of the hidden form and shows it. The form may go while it is up, so what is
/// shown is a copy, which becomes the form's own afterwards. The end of the component is a Cancel.
template<class Forbered>
CommonDialog vis(void (CommonDialog::*dialogtype)(), Forbered forbered)
{
    const QPointer<frmInvisible> skjult = &SharedForm<frmInvisible>::get();
    skjult->load();
    forbered(skjult->CommonDialog1);
    CommonDialog dialog = skjult->CommonDialog1;
    (dialog.*dialogtype)();
    if (!gConn)
        throw RunTimeError(CommonDialog::kCancelled);
    if (skjult)
        skjult->CommonDialog1 = dialog;
    return dialog;
}

} // namespace

frmUtskrift::frmUtskrift()
    : Skjermbilde(
          {.navn = u"frmUtskrift"_s, .slag = FormKind::Dialog, .hjelp = u"html\\utskrift.htm"_s}),
      m_ui(std::make_unique<Ui::frmUtskrift>())
{
    m_ui->setupUi(this);
    setDefaultButton(m_ui->OKButton);
    setCancelButton(m_ui->CancelButton);
    setCommandKey(Qt::CTRL | Qt::Key_P, m_ui->OKButton);
    onEvent(m_ui->OKButton, &QAbstractButton::clicked, this, [this] { OKButton_Click(); });
    onEvent(m_ui->CancelButton, &QAbstractButton::clicked, this, [this] { unload(); });
}

frmUtskrift::~frmUtskrift() = default;

void frmUtskrift::apne(const OrdreUtskrift &utskrift)
{
    if (frmUtskrift *forrige = SharedForm<frmUtskrift>::existing())
        forrige->unload();
    frmUtskrift &skjerm = SharedForm<frmUtskrift>::get();
    skjerm.settErKreditnota(utskrift.ErKreditnota);
    skjerm.m_ui->txtFakID->setText(utskrift.fakID);
    skjerm.m_ui->txtFakNr->setText(utskrift.fakNr);
    skjerm.m_ui->optType_1->setChecked(utskrift.original);
    skjerm.m_ui->optType_0->setChecked(!utskrift.original);
    skjerm.m_ui->optType_1->setEnabled(utskrift.original);
    skjerm.show();
}

void frmUtskrift::onLoad()
{
    Skjermbilde::onLoad();
    m_rapport = fakturablankett();
    adjustSize();
}

void frmUtskrift::OKButton_Click()
{
    if (m_ui->chkEHF->isChecked())
        skrivEhf();
    else
        skrivRapport();
}

void frmUtskrift::skrivEhf()
{
    const QPointer<frmUtskrift> dette = this;
    const QString fakNr = m_ui->txtFakNr->text();
    const QString fakID = m_ui->txtFakID->text();
    const int kreditnota = m_erKreditnota ? 1 : 0;
    // From the dialog on any error ends the command, and what is in the file by then stays.
    passOver([&] {
        const CommonDialog dialog = vis(&CommonDialog::showSave, [&](CommonDialog &d) {
            d.cancelError = true;
            d.flags = dialogflags::kOverwritePrompt | dialogflags::kHideReadOnly;
            d.filter = u"EHF Format (*.xml)|*.xml|All Files (*.*)|*.*"_s;
            d.filterIndex = 1;
            d.fileName = fakturafilnavn(m_erKreditnota, fakNr) + u".xml"_s;
            d.defaultExt = u"xml"_s;
            d.fileKind = u"EHF"_s;
        });
        QFile fil(dialog.fileName);
        if (!fil.open(QIODevice::WriteOnly))
            throw RunTimeError(errors::kPathAccess);
        SkrivEhfFil(fil, kreditnota, fakNr);
        if (!fil.flush()) // a full disk may not show before
            throw RunTimeError(errors::kPathAccess);
        fil.close();
        gDB->Execute(FakturertSql(fakID));
        if (dette)
            dette->unload();
    });
}

void frmUtskrift::skrivRapport()
{
    const QPointer<frmUtskrift> dette = this;
    const QString fakNr = m_ui->txtFakNr->text();
    const QString rapport = m_rapport;
    const QString utvalg = fakturautvalg(fakNr);
    const QString type = fakType();
    QString note;
    passOver([&] { note = merknadFormel(); });

    // A report that fails makes it "Fakturert" all the same. One that the user cancels is as if he
    // had cancelled the printer dialog.
    const auto bliFakturert = [&] {
        gDB->Execute(FakturertSqlForOrdreNr(fakNr));
        if (dette)
            dette->unload();
    };
    if (enters([] { return leadingNumber(LesInnstilling(u"PrintVis"_s, u"0"_s)) == 1; })) {
        if (SkrivRapport(rapport, kForhandsvis, utvalg, type, note))
            passOver(bliFakturert);
        return;
    }
    passOver([&] {
        const CommonDialog dialog = vis(&CommonDialog::showPrinter, [&](CommonDialog &d) {
            d.cancelError = true;
            d.flags = dialogflags::kPrinterHidePrintToFile | dialogflags::kPrinterNoPageNumbers |
                      dialogflags::kPrinterNoSelection;
            d.fileName = fakturafilnavn(m_erKreditnota, fakNr) + u".pdf"_s;
            d.copies = 1;
        });
        const ValgtSkriver valgt(dialog);
        for (int kopi = 0; kopi < dialog.copies; ++kopi) {
            if (!SkrivRapport(rapport, kTilSkriver, utvalg, type, note))
                return;
        }
        bliFakturert();
    });
}

/// What the printout is, by the option and by the amount that the order screen shows now.
QString frmUtskrift::fakType() const
{
    const bool original = m_ui->optType_1->isChecked();
    bool kreditnota = false;
    if (const frmOrdre *ordre = SharedForm<frmOrdre>::existing())
        passOver([&] { kreditnota = leadingNumber(ordre->SumBrutto()) < 0; });
    return fakTypeFormel(kreditnota, original);
}
