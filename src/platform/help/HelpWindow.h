#pragma once

#include "platform/help/HelpBook.h"

#include <QKeySequence>
#include <QWidget>

class HelpFinder;
class HelpPages;
class QAction;
class QSplitter;
class QTabWidget;
class QToolBar;
class QTreeWidget;

/// The window that the help is read in: a page, and beside it the contents, the keywords and the
/// search. The page has the keyboard when it is shown.
class HelpWindow : public QWidget
{
public:
    HelpWindow();
    ~HelpWindow() override;

    /// Returns false when the file cannot be read; the one that is open stays open then.
    bool openFile(const QString &file);
    /// Shows a page of the open file, named as from the file's root ("html/ordre.htm"), and brings
    /// the window to the front. `owner` is the window that it stays above. Returns false, and shows
    /// nothing, when there is no such page.
    bool showPage(const QString &page, QWindow *owner);

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;
    void keyPressEvent(QKeyEvent *event) override;

private:
    QToolBar *makeTools();
    QAction *addTool(QToolBar &tools, const QString &text, const QString &name,
                     const QKeySequence &key);
    void makeSide();
    void fillContents();
    void closeFile();
    void standAbove(QWindow *owner);
    /// Else the one comes up when the other goes: the page first.
    [[nodiscard]] bool hasRoomForBoth() const;
    void openTarget(const QString &target);
    void pageChanged(const QUrl &url);
    void startSearch();

    HelpPages *m_pages;
    QSplitter *m_parts;
    QTabWidget *m_side;
    QTreeWidget *m_contents = nullptr;
    HelpFinder *m_keywords = nullptr;
    HelpFinder *m_search = nullptr;
    QAction *m_showsSide = nullptr;
    QString m_file;
    HelpBook m_book;
};
