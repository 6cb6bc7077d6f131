#pragma once

#include "platform/forms/Form.h"

#include <QApplication>
#include <QTest>
#include <QTimer>

#include <gtest/gtest.h>

#include <functional>

/// A test of forms: at its end no form is left, neither loaded nor waiting to be deleted.
class FormsFixture : public ::testing::Test
{
protected:
    void TearDown() override;
};

/// Notes its events as words in the order in which they come.
class RecordingForm : public Form
{
    Q_OBJECT

public:
    explicit RecordingForm(const QString &name = QStringLiteral("frmProve")) : Form(name) {}
    ~RecordingForm() override { ++deleted; }

    /// Words since the last call.
    QStringList takeEvents() { return std::exchange(events, {}); }

    QStringList events;
    UnloadMode lastMode = UnloadMode::User;
    bool refuses = false;
    std::function<void()> duringLoad;
    std::function<void()> duringQueryUnload;
    std::function<void()> duringUnload;
    std::function<bool(Qt::Key, Qt::KeyboardModifiers)> duringKeyDown;

    static inline int deleted = 0;

protected:
    void onLoad() override;
    void onActivate() override { events << QStringLiteral("activate"); }
    void onResize() override { events << QStringLiteral("resize"); }
    void onQueryUnload(bool &cancel, UnloadMode mode) override;
    void onUnload() override;
    bool onKeyDown(Qt::Key key, Qt::KeyboardModifiers shift) override;
};

/// Unloads every form that is loaded.
void unloadForms();

/// Runs what the event queue holds, and deletes what waits to be deleted.
void runEvents();

/// Runs `action` with the modal window that the next statement brings up.
template<class Window = QWidget, class Action>
void onNextModal(Action action)
{
    QTimer::singleShot(0, qApp, [action] {
        auto *window = qobject_cast<Window *>(QApplication::activeModalWidget());
        ASSERT_NE(window, nullptr) << "no such modal window came up";
        action(*window);
    });
}
