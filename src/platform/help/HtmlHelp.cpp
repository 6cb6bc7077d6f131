#include "platform/help/HtmlHelp.h"

#include "runtime/Paths.h"

#include <QAccessibleWidget>
#include <QAction>
#include <QApplication>
#include <QFile>
#include <QFileInfo>
#include <QKeyEvent>
#include <QPointer>
#include <QResource>
#include <QTextBrowser>
#include <QToolBar>
#include <QVBoxLayout>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

const QString kPages = u"/hjelp"_s;   // where the pages of the open file lie among the resources
constexpr QSize kFirstSize{780, 680}; // room for a picture of the widest screen
constexpr double kShareOfScreen = 0.9;
constexpr int kMargin = 18;

/// Takes the pictures of a page for the resolution of the screen: "x@2x.png" where "x.png" would be
/// coarse.
class Pages : public QTextBrowser
{
public:
    using QTextBrowser::QTextBrowser;

    QVariant loadResource(int type, const QUrl &name) override
    {
        if (type == QTextDocument::ImageResource && devicePixelRatioF() > 1) {
            QString fine = u':' + source().resolved(name).path();
            fine.replace(".png"_L1, "@2x.png"_L1);
            if (QFile::exists(fine))
                return QPixmap(fine);
        }
        return QTextBrowser::loadResource(type, name);
    }
};

class HelpWindow : public QWidget
{
public:
    HelpWindow() : m_pages(new Pages(this))
    {
        QAccessible::registerAccessibleInterface(new QAccessibleWidget(this, QAccessible::Window));
        setObjectName(u"HtmlHelp"_s);
        setWindowTitle(u"Hjelp"_s);
        m_pages->setObjectName(u"sider"_s);
        m_pages->setAccessibleName(u"Hjelpeside"_s);
        m_pages->setFrameShape(QFrame::NoFrame);
        m_pages->document()->setDocumentMargin(kMargin);
        auto *tools = new QToolBar(this);
        addTool(*tools, u"Tilbake"_s, u"tilbake"_s, QKeySequence::Back, &QTextBrowser::backward,
                &QTextBrowser::backwardAvailable);
        addTool(*tools, u"Fram"_s, u"fram"_s, QKeySequence::Forward, &QTextBrowser::forward,
                &QTextBrowser::forwardAvailable);
        auto *layout = new QVBoxLayout(this);
        layout->setContentsMargins(0, 0, 0, 0);
        layout->setSpacing(0);
        layout->addWidget(tools);
        layout->addWidget(m_pages);
        resize(kFirstSize.boundedTo(screen()->availableSize() * kShareOfScreen));
        connect(m_pages, &QTextBrowser::sourceChanged, this, [this] {
            const QString title = m_pages->documentTitle();
            setWindowTitle(title.isEmpty() ? u"Hjelp"_s : u"Hjelp - "_s + title);
        });
    }
    ~HelpWindow() override { closeFile(); }

    /// Returns false when the file cannot be read; the one that is open stays open then.
    bool openFile(const QString &file)
    {
        if (file == m_file)
            return true;
        if (!QFile::exists(file))
            return false;
        const QString former = m_file;
        closeFile();
        if (QResource::registerResource(file, kPages)) {
            m_file = file;
            return true;
        }
        if (!former.isEmpty() && QResource::registerResource(former, kPages))
            m_file = former;
        return false;
    }

    void showPage(const QString &page)
    {
        m_pages->setSource(QUrl(u"qrc"_s + page));
        if (isMinimized())
            showNormal();
        show();
        raise();
        activateWindow();
        m_pages->setFocus();
    }

protected:
    void changeEvent(QEvent *event) override
    {
        QWidget::changeEvent(event);
        // The pages take their colours from the palette when they are read.
        if (event->type() == QEvent::PaletteChange)
            m_pages->reload();
    }
    void keyPressEvent(QKeyEvent *event) override
    {
        if (event->matches(QKeySequence::Cancel))
            close();
        else
            QWidget::keyPressEvent(event);
    }

private:
    template<class Slot, class Available>
    void addTool(QToolBar &tools, const QString &text, const QString &name,
                 QKeySequence::StandardKey key, Slot slot, Available available)
    {
        auto *action = new QAction(text, this);
        action->setObjectName(name);
        action->setShortcut(key);
        action->setEnabled(false);
        connect(action, &QAction::triggered, m_pages, slot);
        connect(m_pages, available, action, &QAction::setEnabled);
        tools.addAction(action);
    }

    void closeFile()
    {
        if (!m_file.isEmpty())
            QResource::unregisterResource(m_file, kPages);
        m_file.clear();
    }

    QTextBrowser *m_pages;
    QString m_file;
};

QPointer<HelpWindow> theWindow;

void deleteWindow()
{
    qRemovePostRoutine(deleteWindow);
    delete theWindow.data();
}

HelpWindow &window()
{
    if (!theWindow) {
        theWindow = new HelpWindow;
        qAddPostRoutine(deleteWindow);
    }
    return *theWindow;
}

void standAbove(QWindow *owner)
{
    window().winId();
    QWindow &handle = *window().windowHandle();
    if (handle.transientParent() == owner)
        return;
    window().hide(); // whether it is kept from the user is judged when it comes up
    handle.setTransientParent(owner);
}

/// The compiled file beside the given name.
QString compiledBeside(const QString &moduleFile)
{
    QString file = paths::toSystem(moduleFile);
    const qsizetype ending = file.lastIndexOf(u'.');
    if (ending > file.lastIndexOf(u'/'))
        file.truncate(ending);
    return file + u".rcc"_s;
}

} // namespace

QWidget *HtmlHelpA(QWidget *owner, const QString &file, int command, const QString &topic)
{
    if (command == HH_CLOSE_ALL) {
        deleteWindow();
        return nullptr;
    }
    if (command != HH_DISPLAY_TOPIC || !window().openFile(compiledBeside(file)))
        return nullptr;
    const QString page = u':' + kPages + u'/' + paths::toSystem(topic);
    if (!QFileInfo(page).isFile())
        return nullptr;
    // A modal window would keep the user from any window that is not its own.
    standAbove(owner ? owner->window()->windowHandle() : QGuiApplication::modalWindow());
    window().showPage(page);
    return theWindow;
}
