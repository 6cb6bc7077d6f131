#pragma once

#include <QTabWidget>

/// A strip of tabs over an empty area. The area belongs to the screen, which stands its own frames
/// in it as it wants; the pages of the tabs are empty and only carry the keys as object names. Tabs
/// are numbered from 1.
///
/// In a .ui file it is promoted from QTabWidget, with captions, tool tips and pages named by key.
class TabStrip : public QTabWidget
{
    Q_OBJECT

public:
    explicit TabStrip(QWidget *parent = nullptr);

    /// The number of the selected tab, 0 when there are no tabs.
    [[nodiscard]] int selected() const { return currentIndex() + 1; }

    /// Selects a tab by number without raising `clicked`. Error 35600 outside 1 to `count`.
    void select(int number);
    /// Goes to the next tab, from the last to the first, as the user does: raises `clicked`.
    void clickNext();

    /// The area below the tabs, in the coordinates of the strip's parent.
    [[nodiscard]] QRect clientArea() const;

Q_SIGNALS:
    /// The user has chosen a tab by mouse or key, also the one that is selected already. `selected`
    /// is the new one.
    void clicked();

private:
    bool m_byCode = false;
};
