#include "shell/component/Main.h"

#include "data/Schema.h"
#include "order/frmOrdre.h"
#include "output/printing/RapportUtgang.h"
#include "output/printing/frmUtskrift.h"
#include "platform/ado/SessionPool.h"
#include "platform/forms/FileDialog.h"
#include "platform/forms/Forms.h"
#include "platform/forms/MsgBox.h"
#include "platform/help/HtmlHelp.h"
#include "presentation/screens/Skjerm.h"
#include "shell/component/clsFaktura.h"
#include "shell/settings/clsRegSettings.h"
#include "state/Messages.h"
#include "state/SharedState.h"

#include <QApplication>

using namespace Qt::StringLiterals;

void Main()
{
    // Made before anything that ends with the component, so that it is still there when a parent
    // unloads the component in its very last moments.
    ado::SessionPool::shared();
    // A parent may make its application after it has loaded the component.
    messages::setBox([](const QString &tekst, int stil) {
        if (qobject_cast<QApplication *>(QCoreApplication::instance()))
            MsgBox(tekst, stil);
    });
    setFolderMemory({HentMappe, LagreMappe});
    frmOrdre::settUtskriftApner(frmUtskrift::apne);
    TaImot(Ref<clsFaktura>::make());
}

void TaImot(const Ref<clsFaktura> &instans)
{
    gFaktura = instans;
    gReg->setCompany(u"Brennmark AS"_s);
    gReg->setAppName(u"Strekkbok"_s);
    // In spite of its words the message ends nothing.
    if (gFaktura->ModuleInit() == 0)
        messages::show(u"Initiering av Regningsdel feilet!, - Programmet avslutter!"_s,
                       messages::kCritical);
    gMva0 = u"0"_s;
    gMva10 = u"10"_s;
    gMva15 = u"15"_s;
    gMva25 = u"25"_s;
}

void Unload()
{
    HtmlHelpA(nullptr, {}, HH_CLOSE_ALL, {});
    RapportUtgang::felles().lukkAlle();
    Forms::deleteAll();
    releaseSharedState();
    gSchema.clear();
    ado::SessionPool::shared().clear();
}
