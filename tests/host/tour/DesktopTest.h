#pragma once

#include <QSize>
#include <QStringList>
#include <QTemporaryDir>

#include <gtest/gtest.h>

#include <functional>
#include <memory>

class QApplication;
class QWidget;

/// The tour of the screens in an application of the test's own. Screen, letters and colours are
/// those that the test gives it.
class DesktopTest : public ::testing::Test
{
protected:
    explicit DesktopTest(QSize screen = {1366, 768});
    ~DesktopTest() override;

    /// Looks at a window and tells what is wrong there.
    using Look = std::function<QStringList(QWidget &window)>;
    /// Goes on the tour and has `look` look at every window that is open when a picture is taken.
    /// What is found comes once, behind the name of the picture.
    [[nodiscard]] QStringList foundOnTour(const Look &look) const;

private:
    QTemporaryDir m_folder;
    int m_argc = 1;
    char m_name[19] = "vert_desktops_test";
    char *m_argv[2] = {m_name, nullptr};
    std::unique_ptr<QApplication> m_application;
};
