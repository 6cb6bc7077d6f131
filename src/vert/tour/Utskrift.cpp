#include "shell/clsRegSettings.h"
#include "state/SharedState.h"
#include "vert/ScreenGuide.h"
#include "vert/tour/Stops.h"

#include <QFile>
#include <QFileDialog>
#include <QPushButton>

using namespace Qt::StringLiterals;

namespace {

/// Presses `button` and answers the file dialog that comes up with a name in the tour's folder. A
/// file of an earlier tour makes room.
void saveAs(screentour::Guide &guide, QWidget &button, const QString &name)
{
    QFile::remove(guide.folder() + u'/' + name);
    guide.modal(
        u"CommonDialog"_s, [&] { guide.click(button); },
        [&](QWidget &window) {
            auto &dialog = dynamic_cast<QFileDialog &>(window);
            dialog.setDirectory(guide.folder());
            guide.type(guide.control(dialog, u"fileNameEdit"_s), name);
            for (QPushButton *choice : dialog.findChildren<QPushButton *>()) {
                if (choice->isDefault()) {
                    guide.click(*choice);
                    return;
                }
            }
        });
}

} // namespace

void screentour::visitPrinting(Guide &guide)
{
    gReg->setCompany(u"Brennmark AS"_s);
    gReg->setAppName(u"Strekkbok"_s);
    gReg->SaveSetting(u"Regningsdel"_s, u"PrintVis"_s, u"1"_s);

    guide.click(guide.control(guide.window(u"frmRegningsdel"_s), u"Command3"_s));
    QWidget &orders = guide.window(u"frmOrdre"_s);
    guide.click(guide.control(orders, u"btnPrint"_s));
    QWidget &dialog = guide.window(u"frmUtskrift"_s);
    guide.picture(dialog, u"utskrift"_s, u"Utskriften av den siste ordren"_s);
    guide.click(guide.control(dialog, u"OKButton"_s));
    guide.expectClosed(u"frmUtskrift"_s);

    QWidget &preview = guide.window(u"Forhandsvisning"_s);
    guide.picture(preview, u"forhandsvisning"_s, u"Fakturaen i forhåndsvisning"_s);
    guide.choose(guide.control(preview, u"cmbZoom"_s), u"Hel side"_s);
    preview.resize(preview.width(), 1250);
    guide.picture(preview, u"faktura"_s, u"Hele fakturaen"_s);
    saveAs(guide, guide.control(preview, u"cmdPdf"_s), u"Faktura.pdf"_s);
    guide.close(preview);

    guide.click(guide.control(orders, u"btnPrint"_s));
    QWidget &again = guide.window(u"frmUtskrift"_s);
    guide.click(guide.control(again, u"chkEHF"_s));
    guide.picture(again, u"utskrift-ehf"_s, u"Den samme fakturaen som EHF-fil"_s);
    saveAs(guide, guide.control(again, u"OKButton"_s), u"Faktura.xml"_s);
    guide.expectClosed(u"frmUtskrift"_s);
    guide.close(orders);
}
