#pragma once

#include <QApplication>
#include <QEvent>
#include <QMessageBox>

namespace bench {

/// The application object of a measurement: windows on no screen, which may all be closed. A
/// message box, which nobody would answer, ends the program with its text.
class Application : private QObject
{
public:
    Application(int &argc, char **argv) : m_application(offscreen(argc), argv)
    {
        QApplication::setQuitOnLastWindowClosed(false);
        qApp->installEventFilter(this);
    }

protected:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show) {
            if (const auto *box = qobject_cast<QMessageBox *>(watched))
                qFatal("a message box: %s", qPrintable(box->text()));
        }
        return false;
    }

private:
    static int &offscreen(int &argc)
    {
        qputenv("QT_QPA_PLATFORM", "offscreen");
        // That there is no session, and that windows on no screen cannot be raised.
        qputenv("QT_LOGGING_RULES", "default.warning=false");
        return argc;
    }

    const QApplication m_application;
};

} // namespace bench
