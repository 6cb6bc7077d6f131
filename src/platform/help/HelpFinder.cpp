#include "platform/help/HelpFinder.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>
#include <QListWidget>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace {

constexpr int kTarget = Qt::UserRole;

} // namespace

HelpFinder::HelpFinder(const QString &name, const QString &fieldName, const QString &listName,
                       Find find, Open open)
    : m_field(new QLineEdit(this)), m_list(new QListWidget(this)), m_find(std::move(find)),
      m_open(std::move(open))
{
    setObjectName(name);
    m_field->setObjectName(name + u"Felt"_s);
    m_field->setAccessibleName(fieldName);
    m_field->setPlaceholderText(fieldName);
    m_field->setClearButtonEnabled(true);
    m_field->installEventFilter(this);
    m_list->setObjectName(name + u"Liste"_s);
    m_list->setAccessibleName(listName);
    m_list->setWordWrap(true);
    m_list->setResizeMode(QListView::Adjust);
    m_list->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    auto *rows = new QVBoxLayout(this);
    rows->addWidget(m_field);
    rows->addWidget(m_list);
    setFocusProxy(m_field);
    connect(m_field, &QLineEdit::textChanged, this, &HelpFinder::refresh);
    connect(m_field, &QLineEdit::returnPressed, this, &HelpFinder::openChosen);
    connect(m_list, &QListWidget::itemActivated, this, &HelpFinder::openChosen);
    connect(m_list, &QListWidget::itemClicked, this, &HelpFinder::openChosen);
}

void HelpFinder::refresh()
{
    m_list->clear();
    for (const HelpBook::Entry &entry : m_find(m_field->text())) {
        auto *line = new QListWidgetItem(entry.text, m_list);
        line->setData(kTarget, entry.target);
    }
    if (m_list->count() > 0) {
        m_list->setCurrentRow(0);
    } else if (!m_field->text().trimmed().isEmpty()) {
        auto *line = new QListWidgetItem(u"Ingen treff"_s, m_list);
        line->setFlags(Qt::NoItemFlags);
    }
}

void HelpFinder::startTyping()
{
    m_field->setFocus(Qt::ShortcutFocusReason);
    m_field->selectAll();
}

QString HelpFinder::text() const
{
    return m_field->text();
}

void HelpFinder::openChosen()
{
    if (const QListWidgetItem *line = m_list->currentItem())
        m_open(line->data(kTarget).toString());
}

bool HelpFinder::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::KeyPress) {
        const int key = static_cast<QKeyEvent *>(event)->key();
        if (key == Qt::Key_Up || key == Qt::Key_Down) {
            QCoreApplication::sendEvent(m_list, event);
            return true;
        }
    }
    return QWidget::eventFilter(watched, event);
}
