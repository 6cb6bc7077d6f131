#include "host/tour/ScreenTour.h"

#include "host/guide/ScreenGuide.h"
#include "host/tasks/Component.h"
#include "host/tasks/Database.h"
#include "host/tasks/HostError.h"
#include "host/tour/TourPage.h"
#include "host/tour/stops/Stops.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

/// In the order of the tour.
constexpr void (*kStops[])(screentour::Guide &) = {
    screentour::visitMenu,     screentour::visitProducts,  screentour::visitOrders,
    screentour::visitPrinting, screentour::visitOverview,  screentour::visitPosting,
    screentour::visitOptions,  screentour::visitPriceForm, screentour::visitNote,
    screentour::visitHelp,
};

/// The settings of a firm that has payments with KID and reads its invoices before it prints them.
void makeSettings()
{
    gReg->setCompany(u"Brennmark AS"_s);
    gReg->setAppName(u"Strekkbok"_s);
    const std::pair<QString, QString> settings[] = {
        {u"KIDaktivert"_s, u"1"_s},      {u"KIDoppbygning"_s, u"1"_s},
        {u"KIDlengdeKundenr"_s, u"6"_s}, {u"KIDlengdeFakturanr"_s, u"6"_s},
        {u"PrintVis"_s, u"1"_s},
    };
    for (const auto &[name, value] : settings)
        gReg->SaveSetting(u"Regningsdel"_s, name, value);
}

/// The newest invoice and the newest credit note in both electronic formats.
void writeDocuments(const QString &folder, const tour::Say &say)
{
    const std::pair<QString, QStringView> documents[] = {
        {u"Faktura"_s, u"OrdreStatus<>'Ordre' AND SumBrutto>0"},
        {u"Kreditnota"_s, screentour::kIssuedCreditNotes},
    };
    for (const auto &[name, orders] : documents)
        tour::writeEhfs(folder + u'/' + name, tour::newestOrder(orders), true, say);
}

} // namespace

void screentour::run(Component &component, const Options &options, const tour::Say &say)
{
    const QString folder = QFileInfo(options.mappe).absoluteFilePath();
    if (!QDir().mkpath(folder))
        throw HostError(u"mappen %1 lot seg ikke lage"_s.arg(folder));
    // The screens keep their places, and the user's own are not the tour's to change.
    qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder + u"/innstillinger"_s));
    const database::Place place = database::locate(folder + u"/demo.db"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    if (database::isMade(place.source.location)) {
        say(u"Databasen finnes fra før og brukes: %1"_s.arg(place.name));
        tour::startModule(component, place, options, say);
    } else {
        tour::makeDemo(component, place, options, say);
    }

    tour::useDatabase(place, options);
    makeSettings();
    Guide guide(folder, say);
    try {
        for (const auto visit : kStops)
            visit(guide);
        guide.close(guide.window(u"frmRegningsdel"_s));
    } catch (const ScreenError &error) {
        throw HostError(u"turen stoppet: "_s + error.line());
    }
    writeDocuments(folder, say);
    writeTourPage(folder, guide.pictures());
    say(u"Turen er ferdig. Bildene ligger i %1"_s.arg(folder));
}
