#pragma once

#include "host/guide/Hands.h"
#include "platform/forms/Forms.h"
#include "platform/grid/fpSpread.h"
#include "support/Control.h"
#include "support/ModuleTest.h"
#include "support/TestApplication.h"

#include <QTabWidget>

/// The hands and eyes of a user on the one instance of a screen, which is reached by names as the
/// module's own. A class, so that a test of two screens can tell whose hands it means.
template<class Screen>
struct ScreenHands
{
    /// Null while the screen is not loaded.
    static Screen *screen() { return SharedForm<Screen>::existing(); }
    /// Shows the screen, with the keys.
    static void open()
    {
        SharedForm<Screen>::get().show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(screen()));
        settle();
    }
    /// Lets a chain of sent keys come to its end, and the focus to rest.
    static void settle()
    {
        for (int i = 0; i < 12; ++i)
            runEvents();
    }

    // --- What is on the screen

    template<class Control = QWidget>
    static Control &control(const QString &name)
    {
        return controlOf<Control>(screen(), name);
    }
    /// The name of the control that has the focus.
    static QString focused()
    {
        const QWidget *widget = screen()->focusWidget();
        return widget ? widget->objectName() : QString();
    }
    /// The screen's grid; column and row count from 1, and row 0 is the header.
    static fpSpread &grid() { return controlOf<fpSpread>(screen(), {}); }
    static QString at(int col, int row) { return hands::textAt(grid(), col, row); }
    /// The texts of a column down to the last row that has any.
    static QStringList column(int col)
    {
        QStringList texts;
        for (int row = 1; row <= grid().dataRowCnt(); ++row)
            texts += at(col, row);
        return texts;
    }
    /// The texts of a row's cells from column `first` to `last`.
    static QStringList rowTexts(int row, int first, int last)
    {
        QStringList texts;
        for (int col = first; col <= last; ++col)
            texts += at(col, row);
        return texts;
    }

    // --- What a user does

    static void press(const QString &name)
    {
        hands::click(control(name));
        settle();
    }
    static void clickTab(int number)
    {
        hands::clickTab(*controlOf<QTabWidget>(screen(), {}).tabBar(), number);
        settle();
    }
    /// A key to the control that has the focus.
    static void key(Qt::Key pressed, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(screen()->focusWidget(), pressed, modifiers);
        settle();
    }
    /// Types over what stands in a field.
    static void type(QWidget &field, const QString &text) { hands::typeOver(field, text); }
    static void clickCell(int col, int row, Qt::KeyboardModifiers modifiers = {})
    {
        hands::clickCell(grid(), col, row, modifiers);
        settle();
    }
    static void doubleClickCell(int col, int row)
    {
        hands::doubleClickCell(grid(), col, row);
        settle();
    }
    static void doubleClickHeader(int col)
    {
        hands::doubleClickHeader(grid(), col);
        settle();
    }
};

/// A test of the module's screens, of which none is left at its end.
class ScreenTest : public ModuleTest
{
protected:
    void TearDown() override
    {
        unloadForms();
        runEvents();
    }
};
