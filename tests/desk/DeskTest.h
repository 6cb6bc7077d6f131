#pragma once

#include "host/program/HostTest.h"
#include "support/NamedComponent.h"

#include <QWidget>

#include <functional>
#include <memory>

/// The started component, with its demo company, on a desk: real windows, a window manager, and a
/// mouse and a keyboard that press where a user would. Everything is found by the names that
/// docs/automation.md promises. Skipped where no X server can be had.
class DeskTest : public HostTest
{
public:
    /// Waits until the window manager of the desk has begun: a window that comes up meanwhile may
    /// be lost to it.
    static void awaitManager();

protected:
    void SetUp() override;

    /// Waits for what the window system and the screens bring about in their own time.
    [[nodiscard]] static bool comes(const std::function<bool()> &state);

    /// The visible window or control of that name. One that does not come ends the test.
    static QWidget &window(const QString &name);
    static QWidget &control(const QWidget &window, const QString &name);
    /// Does `opens`, which brings up a window that the screen waits for, and `does` what is to be
    /// done in it; if it still stands then, it is closed.
    static void inModal(const QString &name, const std::function<void()> &opens,
                        const std::function<void(QWidget &)> &does);
    /// What is in a control's property "text".
    [[nodiscard]] static QString text(const QWidget &control);

    /// The mouse goes to the control's middle, or to a place in it, and presses there.
    static void click(const QWidget &control, int button = kLeft);
    static void clickAt(const QWidget &control, QPoint place, int button = kLeft);
    static void clickTab(const QWidget &tabs, int number);
    static void doubleClick(const QWidget &control);
    /// Presses a button where the mouse stands: the wheel's turns are the buttons 4 and 5.
    static void press(int button);
    static void point(const QWidget &control, QPoint place);
    /// A key by its name on the keyboard, with "ctrl+", "alt+" and "shift+" before it.
    static void key(const QString &name);
    /// Holds the key down until it has come so many times, to whichever windows.
    static void hold(const QString &name, int times);
    static void type(const QString &text);

    /// A property of the window as its manager sees it.
    [[nodiscard]] static QString property(const QWidget &window, const QString &name);
    /// The windows from the bottom of the stack to its top, as the manager has stacked them, by
    /// their names; those of other programs are left out.
    [[nodiscard]] static QStringList stack();
    /// The output of a program that looks at the desk.
    static QByteArray look(const QString &program, const QStringList &arguments);

    /// The desk's display, for programs that the test starts; empty, with a reason, where no desk
    /// can be had.
    [[nodiscard]] static QString display();
    [[nodiscard]] static std::string reason();

    static constexpr int kLeft = 1;
    static constexpr int kMiddle = 2;
    static constexpr int kRight = 3;
    static constexpr int kWheelUp = 4;
    static constexpr int kWheelDown = 5;

private:
    NamedComponent m_component;
    std::unique_ptr<QObject> m_module;
};
