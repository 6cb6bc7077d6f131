#include "platform/help/HtmlHelp.h"

#include "platform/help/HelpWindow.h"
#include "runtime/Paths.h"

#include <QGuiApplication>
#include <QPointer>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

QPointer<HelpWindow> theWindow;

void deleteWindow()
{
    qRemovePostRoutine(deleteWindow);
    delete theWindow.data();
}

HelpWindow &window()
{
    if (!theWindow) {
        theWindow = new HelpWindow;
        qAddPostRoutine(deleteWindow);
    }
    return *theWindow;
}

/// The compiled file beside the given name.
QString compiledBeside(const QString &moduleFile)
{
    QString file = paths::toSystem(moduleFile);
    const qsizetype ending = file.lastIndexOf(u'.');
    if (ending > file.lastIndexOf(u'/'))
        file.truncate(ending);
    return file + u".rcc"_s;
}

} // namespace

QWidget *HtmlHelpA(QWidget *owner, const QString &file, int command, const QString &topic)
{
    if (command == HH_CLOSE_ALL) {
        deleteWindow();
        return nullptr;
    }
    if (command != HH_DISPLAY_TOPIC || !window().openFile(compiledBeside(file)))
        return nullptr;
    // A modal window would keep the user from any window that is not its own.
    QWindow *above = owner ? owner->window()->windowHandle() : QGuiApplication::modalWindow();
    if (!window().showPage(paths::toSystem(topic), above))
        return nullptr;
    return theWindow;
}
