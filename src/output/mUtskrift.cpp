#include "output/mUtskrift.h"

#include "data/clsAdoUtils.h"
#include "output/Fakturautskrift.h"
#include "output/RapportUtgang.h"
#include "platform/forms/Forms.h"
#include "platform/forms/MsgBox.h"
#include "platform/report/ReportError.h"
#include "presentation/frmDummy.h"
#include "presentation/frmInvisible.h"
#include "runtime/ComponentFolder.h"
#include "state/SharedState.h"

#include <QApplication>

using namespace Qt::StringLiterals;

namespace {

constexpr qint16 kTilSkriver = 1;
constexpr int kForhandsvisningBredde = 900; // pixels
constexpr int kForhandsvisningHoyde = 700;
constexpr int kHelStorrelse = 100; // per cent

/// The mouse pointer as an hourglass, until it is turned back.
class Timeglass
{
public:
    Timeglass() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~Timeglass() { fjern(); }
    Timeglass(const Timeglass &) = delete;
    Timeglass &operator=(const Timeglass &) = delete;

    void fjern()
    {
        if (std::exchange(m_staar, false))
            QApplication::restoreOverrideCursor();
    }

private:
    bool m_staar = true;
};

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

void settForhandsvisning(CrystalReport &rapport)
{
    rapport.setWindowLeft(0);
    rapport.setWindowWidth(kForhandsvisningBredde);
    rapport.setWindowHeight(kForhandsvisningHoyde);
    rapport.setWindowState(report::WindowState::Normal);
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

void SkrivRapport(const QString &rapport, qint16 modus, const QString &utvalg,
                  const QString &formel1, const QString &formel2)
{
    // A dialog or a message on the way here may have seen the end of the component.
    if (!gConn)
        return;
    Timeglass timeglass;
    try {
        const bool tilSkriver = modus == kTilSkriver;
        gRptPath = rapportMappe(componentFolder());
        // A file dialog on the way to the printer lets events run, and the forms may go with them.
        const QPointer<frmInvisible> skjult = &SharedForm<frmInvisible>::get();
        skjult->load();
        CrystalReport &kontroll = skjult->CrystalReport1;
        kontroll.setOutput(&RapportUtgang::instance());
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
        kontroll.run();
        kontroll.pageZoom(kHelStorrelse);
        kontroll.windowInFront();
        timeglass.fjern();
        if (tilSkriver) {
            kontroll.setDestination(CrystalReport::Destination::Printer);
            kontroll.printReport();
            if (frmDummy *forelder = SharedForm<frmDummy>::existing())
                forelder->unload();
        }
        if (!skjult)
            return;
        kontroll.setConnect({});
        kontroll.setReportFileName({});
        kontroll.reset();
        if (tilSkriver)
            skjult->unload();
    } catch (const RunTimeError &feil) {
        timeglass.fjern();
        meldFeil(feil, rapport);
    }
}
