#include "shell/plugin/BareParent.h"
#include "support/NamedComponent.h"

#include <QApplication>
#include <QTemporaryDir>
#include <QTest>
#include <QVariant>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A parent with windows, which knows names alone.
class PluginScreensTest : public ::testing::Test
{
protected:
    PluginScreensTest()
    {
        makeBareParent(path());
        QApplication::setQuitOnLastWindowClosed(false);
    }

    [[nodiscard]] QString path() const { return m_folder.filePath(u"parent.db"_s); }

    std::unique_ptr<QObject> start()
    {
        std::unique_ptr<QObject> module = m_component.createInstance();
        EXPECT_EQ(NamedComponent::start(*module, u"dsn="_s + path(), 5, 2014), 1);
        return module;
    }
    /// A widget of the module, found in the application's own list.
    static QWidget *widget(const QString &name)
    {
        for (QWidget *candidate : QApplication::allWidgets()) {
            if (candidate->objectName() == name)
                return candidate;
        }
        return nullptr;
    }

    QTemporaryDir m_folder;
    NamedComponent m_component;
};

TEST_F(PluginScreensTest, TheMenuIsAmongTheParentsWindows)
{
    const std::unique_ptr<QObject> module = start();
    const QWidget *menu = widget(u"frmRegningsdel"_s);
    ASSERT_NE(menu, nullptr);
    EXPECT_TRUE(menu->isWindow());
    EXPECT_TRUE(menu->isVisible());
    ASSERT_NE(widget(u"Command3"_s), nullptr);
    EXPECT_EQ(widget(u"Command3"_s)->window(), menu);
}

TEST_F(PluginScreensTest, TheMenuOutlivesTheParentsInstance)
{
    start().reset();
    ASSERT_NE(widget(u"frmRegningsdel"_s), nullptr);
    EXPECT_TRUE(widget(u"frmRegningsdel"_s)->isVisible());
}

TEST_F(PluginScreensTest, UnloadingTakesTheWindowsAndALaterLoadBeginsAnew)
{
    start().reset();
    QTest::keyClick(widget(u"frmRegningsdel"_s), Qt::Key_F1);
    EXPECT_TRUE(m_component.loader.unload());
    EXPECT_EQ(widget(u"frmRegningsdel"_s), nullptr);
    EXPECT_EQ(widget(u"frmInvisible"_s), nullptr);
    EXPECT_EQ(widget(u"HtmlHelp"_s), nullptr);
    QCoreApplication::processEvents();
    EXPECT_FALSE(QFile::exists(path() + u"-wal"_s)) << "the database is still open";

    start().reset();
    ASSERT_NE(widget(u"frmRegningsdel"_s), nullptr);
    EXPECT_TRUE(widget(u"frmRegningsdel"_s)->isVisible());
}

} // namespace
