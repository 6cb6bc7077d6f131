#include "platform/help/HelpWindow.h"

#include "platform/help/HelpFinder.h"
#include "platform/help/HelpPages.h"

#include <QAccessibleWidget>
#include <QAction>
#include <QFileInfo>
#include <QKeyEvent>
#include <QResource>
#include <QSplitter>
#include <QTabBar>
#include <QTabWidget>
#include <QToolBar>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <QWindow>

using namespace Qt::StringLiterals;

namespace {

const QString kPages = u"/hjelp"_s; // where the pages of the open file lie among the resources
const QString kBook = kPages + u"/html/"_s;
constexpr QSize kPageSize{780, 680}; // room for a picture of the widest screen
constexpr double kShareOfScreen = 0.9;
constexpr int kLettersBeside = 34;
constexpr int kLettersOfPage = 50; // that make a line worth reading
constexpr int kTarget = Qt::UserRole;

} // namespace

HelpWindow::HelpWindow()
    : m_pages(new HelpPages(this)), m_parts(new QSplitter(this)), m_side(new QTabWidget)
{
    QAccessible::registerAccessibleInterface(new QAccessibleWidget(this, QAccessible::Window));
    setObjectName(u"HtmlHelp"_s);
    setWindowTitle(u"Hjelp"_s);
    m_pages->setObjectName(u"sider"_s);
    m_pages->setAccessibleName(u"Hjelpeside"_s);
    makeSide();
    m_parts->addWidget(m_side);
    m_parts->addWidget(m_pages);
    m_parts->setStretchFactor(1, 1);
    m_parts->setChildrenCollapsible(false);
    const int beside = fontMetrics().averageCharWidth() * kLettersBeside;
    m_parts->setSizes({beside, kPageSize.width()});
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->setSpacing(0);
    layout->addWidget(makeTools());
    layout->addWidget(m_parts);
    const QSize wanted = kPageSize + QSize(beside, 0);
    resize(wanted.boundedTo(screen()->availableSize() * kShareOfScreen));
    m_showsSide->setChecked(hasRoomForBoth());
    connect(m_pages, &QTextBrowser::sourceChanged, this, &HelpWindow::pageChanged);
}

HelpWindow::~HelpWindow()
{
    closeFile();
}

void HelpWindow::makeSide()
{
    m_side->setObjectName(u"innholdOgSok"_s);
    m_side->setMinimumWidth(fontMetrics().averageCharWidth() * kLettersBeside / 2);
    m_contents = new QTreeWidget;
    m_contents->setObjectName(u"innhold"_s);
    m_contents->setAccessibleName(u"Innhold"_s);
    m_contents->setHeaderHidden(true);
    m_contents->setWordWrap(true);
    const auto open = [this](const QTreeWidgetItem *item) {
        openTarget(item->data(0, kTarget).toString());
    };
    connect(m_contents, &QTreeWidget::itemActivated, this, open);
    connect(m_contents, &QTreeWidget::itemClicked, this, open);
    m_keywords = new HelpFinder(
        u"stikkord"_s, u"Finn stikkord"_s, u"Stikkord"_s,
        [this](const QString &part) { return m_book.keywords(part); },
        [this](const QString &target) { openTarget(target); });
    m_search = new HelpFinder(
        u"sok"_s, u"Søk i hjelpen"_s, u"Sider med treff"_s,
        [this](const QString &words) { return m_book.pagesWith(words); },
        [this](const QString &target) {
            openTarget(target);
            m_pages->mark(HelpBook::wordsOf(m_search->text()));
        });
    m_side->addTab(m_contents, u"&Innhold"_s);
    m_side->addTab(m_keywords, u"&Stikkord"_s);
    m_side->addTab(m_search, u"Sø&k"_s);
    m_side->tabBar()->installEventFilter(this);
}

QToolBar *HelpWindow::makeTools()
{
    auto *tools = new QToolBar(this);
    QAction *back = addTool(*tools, u"Tilbake"_s, u"tilbake"_s, QKeySequence::Back);
    connect(back, &QAction::triggered, m_pages, &QTextBrowser::backward);
    connect(m_pages, &QTextBrowser::backwardAvailable, back, &QAction::setEnabled);
    QAction *forward = addTool(*tools, u"Fram"_s, u"fram"_s, QKeySequence::Forward);
    connect(forward, &QAction::triggered, m_pages, &QTextBrowser::forward);
    connect(m_pages, &QTextBrowser::forwardAvailable, forward, &QAction::setEnabled);
    for (QAction *action : {back, forward})
        action->setEnabled(false);
    tools->addSeparator();
    QAction *search = addTool(*tools, u"Søk"_s, u"finn"_s, QKeySequence::Find);
    connect(search, &QAction::triggered, this, &HelpWindow::startSearch);
    m_showsSide = addTool(*tools, u"Vis innhold"_s, u"visInnhold"_s, Qt::Key_F9);
    m_showsSide->setCheckable(true);
    m_showsSide->setChecked(true);
    connect(m_showsSide, &QAction::toggled, m_side, &QWidget::setVisible);
    return tools;
}

QAction *HelpWindow::addTool(QToolBar &tools, const QString &text, const QString &name,
                             const QKeySequence &key)
{
    auto *action = new QAction(text, this);
    action->setObjectName(name);
    action->setShortcut(key);
    action->setToolTip(u"%1 (%2)"_s.arg(text, key.toString(QKeySequence::NativeText)));
    tools.addAction(action);
    tools.widgetForAction(action)->setObjectName(name);
    return action;
}

bool HelpWindow::openFile(const QString &file)
{
    if (file == m_file)
        return true;
    if (!QFileInfo::exists(file))
        return false;
    const QString former = m_file;
    closeFile();
    const bool opened = QResource::registerResource(file, kPages);
    if (opened)
        m_file = file;
    else if (!former.isEmpty() && QResource::registerResource(former, kPages))
        m_file = former;
    m_book = HelpBook(u':' + kBook);
    fillContents();
    m_keywords->refresh();
    m_search->refresh();
    return opened;
}

void HelpWindow::closeFile()
{
    if (!m_file.isEmpty())
        QResource::unregisterResource(m_file, kPages);
    m_file.clear();
}

void HelpWindow::fillContents()
{
    const auto add = [](auto *parent, const HelpBook::Section &section) {
        auto *item = new QTreeWidgetItem(parent, {section.title});
        item->setData(0, kTarget, section.target);
        return item;
    };
    m_contents->clear();
    for (const HelpBook::Page &page : m_book.pages()) {
        QTreeWidgetItem *top = add(m_contents, page.sections.front());
        for (std::size_t i = 1; i < page.sections.size(); ++i)
            add(top, page.sections[i]);
    }
}

bool HelpWindow::showPage(const QString &page, QWindow *owner)
{
    const QString file = kPages + u'/' + page;
    if (!QFileInfo(u':' + file).isFile())
        return false;
    standAbove(owner);
    m_pages->setSource(QUrl(u"qrc:"_s + file));
    if (isMinimized())
        showNormal();
    show();
    raise();
    activateWindow();
    m_pages->setFocus();
    return true;
}

void HelpWindow::standAbove(QWindow *owner)
{
    winId();
    QWindow &handle = *windowHandle();
    if (handle.transientParent() == owner)
        return;
    hide(); // whether it is kept from the user is judged when it comes up
    handle.setTransientParent(owner);
}

bool HelpWindow::hasRoomForBoth() const
{
    return width() >= fontMetrics().averageCharWidth() * (kLettersBeside + kLettersOfPage);
}

void HelpWindow::openTarget(const QString &target)
{
    if (!hasRoomForBoth()) {
        m_showsSide->setChecked(false);
        m_parts->refresh(); // before a place on the page is gone to
    }
    m_pages->setSource(QUrl(u"qrc:"_s + kBook + target));
    m_pages->setFocus();
}

void HelpWindow::pageChanged(const QUrl &url)
{
    const QString title = m_pages->documentTitle();
    setWindowTitle(title.isEmpty() ? u"Hjelp"_s : u"Hjelp - "_s + title);
    const auto leadsTo = [](const QTreeWidgetItem &item, const QString &target) {
        return item.data(0, kTarget).toString() == target;
    };
    const QString page = url.fileName();
    for (int i = 0; i < m_contents->topLevelItemCount(); ++i) {
        QTreeWidgetItem *item = m_contents->topLevelItem(i);
        const bool here = leadsTo(*item, page);
        item->setExpanded(here);
        if (!here)
            continue;
        m_contents->setCurrentItem(item);
        for (int child = 0; child < item->childCount(); ++child) {
            if (leadsTo(*item->child(child), page + u'#' + url.fragment()))
                m_contents->setCurrentItem(item->child(child));
        }
    }
}

void HelpWindow::startSearch()
{
    m_showsSide->setChecked(true);
    m_side->setCurrentWidget(m_search);
    m_search->startTyping();
}

bool HelpWindow::eventFilter(QObject *watched, QEvent *event)
{
    // The letter of a tab leads into what the tab shows, also when it is in front already.
    if (event->type() == QEvent::Shortcut)
        QMetaObject::invokeMethod(
            this, [this] { m_side->currentWidget()->setFocus(); }, Qt::QueuedConnection);
    return QWidget::eventFilter(watched, event);
}

void HelpWindow::keyPressEvent(QKeyEvent *event)
{
    if (event->key() == Qt::Key_F1)
        openTarget(HelpBook::kContents.toString());
    else if (!event->matches(QKeySequence::Cancel))
        QWidget::keyPressEvent(event);
    else if (m_side->isAncestorOf(focusWidget()))
        m_pages->setFocus();
    else
        close();
}
