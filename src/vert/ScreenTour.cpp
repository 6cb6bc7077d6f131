#include "vert/ScreenTour.h"

#include "presentation/VisMelding.h"
#include "vert/Database.h"
#include "vert/HostError.h"

#include <QApplication>
#include <QDir>
#include <QFileInfo>
#include <QTest>
#include <QWidget>

using namespace Qt::StringLiterals;

namespace {

constexpr int kPatience = 5000; // milliseconds for a window to come or go

/// The visible widget of that name inside `window`, or the visible window itself when that is null.
QWidget *visible(const QString &name, const QWidget *window = nullptr)
{
    for (QWidget *widget : QApplication::allWidgets()) {
        if (widget->objectName() == name && widget->isVisible() &&
            (window ? widget->window() == window : widget->isWindow()))
            return widget;
    }
    return nullptr;
}

class Guide
{
public:
    Guide(QString folder, const tour::Say &say) : m_folder(std::move(folder)), m_say(say) {}

    /// Waits for a window to come up.
    static QWidget &window(const QString &name)
    {
        QWidget *found = nullptr;
        if (!QTest::qWaitFor([&] { return (found = visible(name)) != nullptr; }, kPatience))
            throw HostError(u"turen stoppet: skjermbildet %1 kom ikke fram"_s.arg(name));
        return *found;
    }
    static QWidget &control(const QWidget &window, const QString &name)
    {
        QWidget *found = visible(name, &window);
        if (!found) {
            throw HostError(
                u"turen stoppet: %1 har ikke kontrollen %2"_s.arg(window.objectName(), name));
        }
        return *found;
    }
    /// Waits for a window to be gone.
    static void expectClosed(const QString &name)
    {
        if (!QTest::qWaitFor([&] { return visible(name) == nullptr; }, kPatience))
            throw HostError(u"turen stoppet: skjermbildet %1 lukket seg ikke"_s.arg(name));
    }

    /// Saves what the window shows now as the next picture.
    void picture(QWidget &window, const QString &name, const QString &told)
    {
        QCoreApplication::processEvents();
        const QString file =
            u"%1/%2-%3.png"_s.arg(m_folder).arg(++m_count, 2, 10, QChar(u'0')).arg(name);
        if (!window.grab().save(file))
            throw HostError(u"bildet %1 lot seg ikke skrive"_s.arg(file));
        m_say(u"%1. %2: %3"_s.arg(m_count).arg(told, file));
    }

private:
    const QString m_folder;
    const tour::Say &m_say;
    int m_count = 0;
};

/// A click brings its window to the front, as the window system of a display does it.
void click(QWidget &widget)
{
    widget.window()->activateWindow();
    QCoreApplication::processEvents();
    QTest::mouseClick(&widget, Qt::LeftButton);
}

void showMenuAndHelp(Guide &guide)
{
    QWidget &menu = Guide::window(u"frmRegningsdel"_s);
    guide.picture(menu, u"hovedmeny"_s, u"Hovedmenyen, med fem knapper til de andre bildene"_s);

    QTest::keyClick(&Guide::control(menu, u"Command2"_s), Qt::Key_F1);
    QWidget &help = Guide::window(u"HtmlHelp"_s);
    guide.picture(help, u"hjelp"_s, u"F1 viser hjelpen for bildet som er framme"_s);
    QTest::keyClick(&Guide::control(help, u"sider"_s), Qt::Key_Escape);
    Guide::expectClosed(u"HtmlHelp"_s);

    click(Guide::control(menu, u"imgF1"_s));
    (void)Guide::window(u"HtmlHelp"_s);
    Guide::window(u"HtmlHelp"_s).close();
}

/// The note comes from the host's own copy of it as long as no screen of the tour saves anything.
void showNote(Guide &guide)
{
    VisMelding(u"Posten er lagret."_s, 64, u"Lagre"_s, 0, false);
    QWidget &note = Guide::window(u"frmTMsgBox"_s);
    guide.picture(note, u"melding"_s, u"Meldingen etter en lagring, som lukker seg selv"_s);
    click(Guide::control(note, u"Command1"_s));
    Guide::expectClosed(u"frmTMsgBox"_s);
}

} // namespace

void screentour::run(Component &component, const Options &options, const tour::Say &say)
{
    const QString folder = QFileInfo(options.mappe).absoluteFilePath();
    if (!QDir().mkpath(folder))
        throw HostError(u"mappen %1 lot seg ikke lage"_s.arg(folder));
    const database::Place place = database::locate(folder + u"/demo.db"_s);
    QApplication::setQuitOnLastWindowClosed(false);
    if (database::isMade(place.name)) {
        say(u"Databasen finnes fra før og brukes: %1"_s.arg(place.name));
        tour::startModule(component, place, options, say);
    } else {
        tour::makeDemo(component, place, options, say);
    }

    Guide guide(folder, say);
    showMenuAndHelp(guide);
    showNote(guide);
    Guide::window(u"frmRegningsdel"_s).close();
    Guide::expectClosed(u"frmRegningsdel"_s);
    say(u"Turen er ferdig. Bildene ligger i %1"_s.arg(folder));
}
