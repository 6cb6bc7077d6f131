#include <QApplication>
#include <gtest/gtest.h>

// Tests of widgets run without a display, and need the application object around all of them.
int main(int argc, char *argv[])
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication app(argc, argv);
    QApplication::setStyle(QStringLiteral("Fusion"));
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
