#include "output/printing/mUtskrift.h"

#include "data/clsAdoUtils.h"
#include "output/printing/RapportUtgang.h"
#include "output/printing/Ventenotat.h"
#include "output/printout/Fakturautskrift.h"
#include "platform/forms/Forms.h"
#include "platform/forms/MsgBox.h"
#include "platform/report/ReportError.h"
#include "presentation/screens/Timeglass.h"
#include "presentation/screens/frmDummy.h"
#include "presentation/screens/frmInvisible.h"
#include "runtime/ComponentFolder.h"
#include "state/SharedState.h"

#include <QPointer>

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 kTilSkriver = 1;
constexpr int kForhandsvisningBredde = 900; // pixels
constexpr int kForhandsvisningHoyde = 700;
constexpr int kHelStorrelse = 100; // per cent

/// The data source as the report control takes it. Error 5 for a connection string without one.
QString rapportforbindelse()
{
    const QString forbindelse = gDB->ConnectionString();
    const qsizetype start = forbindelse.indexOf("dsn="_L1);
    if (start < 0)
        throw RunTimeError(errors::kInvalidCall);
    return forbindelse.sliced(start) + u"; DSQ="_s;
}

/// A report without preview runs in a window that is out of sight, and is printed from there.
void settUsynligVindu(CrystalReport &rapport)
{
    rapport.setDestination(CrystalReport::Destination::Window);
    rapport.setWindowState(report::WindowState::Minimized);
    frmDummy &forelder = SharedForm<frmDummy>::get();
    forelder.load();
    forelder.setState(FormState::Minimised);
    rapport.setWindowParentHandle(forelder.winId());
}

void slippUsynligVindu()
{
    if (frmDummy *forelder = SharedForm<frmDummy>::existing())
        forelder->unload();
}

void settForhandsvisning(CrystalReport &rapport)
{
    rapport.setWindowLeft(0);
    rapport.setWindowWidth(kForhandsvisningBredde);
    rapport.setWindowHeight(kForhandsvisningHoyde);
    rapport.setWindowState(report::WindowState::Normal);
}

void kjor(const QPointer<frmInvisible> &skjult)
{
    Ventenotat notat(u"Lager rapporten …"_s);
    skjult->CrystalReport1.run([&] {
        notat.sjekk();
        // The events of the note may have seen the end of the component, and of the control with
        // it.
        if (!skjult)
            report::raise(report::errors::kCancelled, u"Avbrutt."_s);
    });
}

void ryddOpp(frmInvisible &skjult, bool tilSkriver)
{
    skjult.CrystalReport1.setConnect({});
    skjult.CrystalReport1.setReportFileName({});
    skjult.CrystalReport1.reset();
    if (tilSkriver)
        skjult.unload();
}

void meldFeil(const RunTimeError &feil, const QString &rapport)
{
    switch (feil.number()) {
    case report::errors::kFileNotFound:
        MsgBox(u"Beklager! Finner ikke den rapporten du forsøker å starte ("_s + gRptPath +
                   rapport + u")!\r\n\r\nSjekk https://www.strekkbok.example/ for oppdateringer."_s,
               msgbox::kInformation);
        return;
    case report::errors::kNoData:
        MsgBox(u"Tomt datasett, ingen poster å vise."_s, msgbox::kInformation);
        return;
    default:
        MsgBox(u"CRP: "_s + QString::number(feil.number()) + u' ' + feil.description());
    }
}

} // namespace

bool SkrivRapport(const QString &rapport, qint16 modus, const QString &utvalg,
                  const QString &formel1, const QString &formel2)
{
    // A dialog or a message on the way here may have seen the end of the component.
    if (!gConn)
        return true;
    Timeglass timeglass;
    const bool tilSkriver = modus == kTilSkriver;
    // A file dialog on the way to the printer lets events run, and the forms may go with them.
    QPointer<frmInvisible> skjult;
    bool avbrutt = false;
    try {
        gRptPath = rapportMappe(componentFolder());
        skjult = &SharedForm<frmInvisible>::get();
        skjult->load();
        CrystalReport &kontroll = skjult->CrystalReport1;
        kontroll.setOutput(&RapportUtgang::felles());
        kontroll.reset();
        kontroll.setReportFileName(gRptPath + rapport);
        kontroll.setOwnWindow(true);
        kontroll.setSavedData(false);
        if (tilSkriver)
            settUsynligVindu(kontroll);
        else
            settForhandsvisning(kontroll);
        kontroll.setWindowControls(true);
        kontroll.setConnect(rapportforbindelse());
        kontroll.setSelectionFormula(utvalg);
        kontroll.setFormula(0, formel1);
        kontroll.setFormula(1, formel2);
        kjor(skjult);
        kontroll.pageZoom(kHelStorrelse);
        kontroll.windowInFront();
        timeglass.fjern();
        if (tilSkriver) {
            kontroll.setDestination(CrystalReport::Destination::Printer);
            kontroll.printReport();
            slippUsynligVindu();
        }
    } catch (const RunTimeError &feil) {
        timeglass.fjern();
        if (feil.number() != report::errors::kCancelled) {
            meldFeil(feil, rapport);
            return true;
        }
        avbrutt = true;
        slippUsynligVindu();
    }
    if (skjult)
        ryddOpp(*skjult, tilSkriver);
    return !avbrutt;
}
