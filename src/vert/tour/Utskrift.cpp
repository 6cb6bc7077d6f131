#include "vert/ScreenGuide.h"
#include "vert/tour/Stops.h"

using namespace Qt::StringLiterals;

namespace {

/// The order screen on its last order, and the print dialog for that.
QWidget &openDialog(screentour::Guide &guide, QWidget &orders)
{
    guide.click(guide.control(orders, u"btnPrint"_s));
    return guide.window(u"frmUtskrift"_s);
}

/// Answers a file dialog with a name in the tour's folder.
void saveAs(screentour::Guide &guide, QWidget &window, QWidget &button, const QString &name)
{
    Q_UNUSED(window);
    guide.modal(
        u"CommonDialog"_s, [&] { guide.click(button); },
        [&](QWidget &dialog) { guide.chooseFile(dialog, name); });
}

} // namespace
