#include "host/tour/DesktopTest.h"

#include "host/tasks/Component.h"
#include "host/tasks/HostError.h"
#include "host/tour/ScreenTour.h"

#include <QApplication>
#include <QFile>
#include <QWidget>

using namespace Qt::StringLiterals;

DesktopTest::DesktopTest(QSize screen)
{
    QFile screens(m_folder.filePath(u"skjermer.json"_s));
    EXPECT_TRUE(screens.open(QIODevice::WriteOnly));
    screens.write(u"{\"screens\":[{\"name\":\"skjerm\",\"x\":0,\"y\":0,\"width\":%1,\"height\":%2,"
                  "\"logicalDpi\":96,\"logicalBaseDpi\":96,\"dpr\":1}]}"_s.arg(screen.width())
                      .arg(screen.height())
                      .toUtf8());
    screens.close();
    qputenv("QT_QPA_PLATFORM", "offscreen:configfile=" + QFile::encodeName(screens.fileName()));
    m_application = std::make_unique<QApplication>(m_argc, m_argv);
    QApplication::setStyle(u"Fusion"_s);
}

DesktopTest::~DesktopTest() = default;

QStringList DesktopTest::foundOnTour(const Look &look) const
{
    Options options;
    options.aar = 2014;
    options.mappe = m_folder.filePath(u"tur"_s);
    QStringList found;
    const auto lookAtAll = [&](const QString &told) {
        const QString picture = told.section(u'/', -1);
        if (!picture.endsWith(u".png"_s))
            return;
        for (QWidget *window : QApplication::topLevelWidgets()) {
            if (!window->isVisible())
                continue;
            for (const QString &text : look(*window))
                found += picture + u' ' + text;
        }
    };
    Component component(QStringLiteral(FAKTURA_FILE));
    try {
        screentour::run(component, options, lookAtAll);
    } catch (const HostError &error) {
        ADD_FAILURE() << error.line().toStdString();
    }
    found.removeDuplicates();
    return found;
}
