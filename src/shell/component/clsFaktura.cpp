#include "shell/component/clsFaktura.h"

#include "data/clsAdoUtils.h"
#include "platform/forms/Forms.h"
#include "runtime/ComponentFolder.h"
#include "runtime/Paths.h"
#include "shell/component/frmRegningsdel.h"
#include "state/SharedState.h"

#include <QApplication>

using namespace Qt::StringLiterals;

clsFaktura::clsFaktura()
{
    Class_Initialize();
}

void clsFaktura::Class_Initialize()
{
    m_moduleInit = 1;
    // Keeps the client when the parent makes a further instance after setting it.
    gKlient = gKlientInn;
    gAppPath = paths::applicationFolder(componentFolder());
    gHelpFile = gAppPath + u"\\help\\Regningsdel.chm"_s;
    gRptPath = gAppPath + u"\\rpt\\Faktura"_s;
}

void clsFaktura::setKlient(qint16 vData)
{
    gKlientInn = vData;
    gKlient = vData;
}

void clsFaktura::StartModul()
{
    m_moduleInit = 1;
    // The tables below may be known from an earlier start of this load, and are then all found.
    if (passOver(OpenConnection) != 0)
        m_moduleInit = 0;

    // All four run, whatever became of the ones before.
    for (const auto steg :
         {LagTabellOrdre, LagTabellProdukt, LagTabellOrdreLinjer, OppgraderTabeller}) {
        bool ferdig = false;
        passOver([&] { ferdig = steg(); });
        if (!ferdig)
            m_moduleInit = 0;
    }

    // Order lines name their product by its number. Without the index, as where the user may make
    // none, all products are read for it.
    passOver([] { gConn->provideIndex(u"Produkt"_s, u"ProduktNr"_s, {u"ProduktNr"_s}); });

    // A parent without windows, such as a command line, has the module without its screens.
    if (m_moduleInit == 1 && qobject_cast<QApplication *>(QCoreApplication::instance())) {
        passOver([] { SharedForm<frmRegningsdel>::get().show(); });
        passOver([] { SharedForm<frmRegningsdel>::get().repaint(); });
    }
}

void clsFaktura::OpenConnection()
{
    // What was opened before is over, so that after a failed open gDB has nothing to write to.
    gDB->setConnectionString(QString());
    gConn = Ref<ado::Connection>::make();
    gConn->setCursorLocation(ado::CursorLocation::Client);
    gConn->open(gConnect, {}, {}, ado::options::kUnspecified);
    gDB->setConnectionString(gConnect);
}
