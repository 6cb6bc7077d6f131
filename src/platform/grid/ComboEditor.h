#pragma once

#include <QAbstractItemView>
#include <QComboBox>
#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

#include <utility>

/// The list of a combo cell while it is edited. What is typed is what is kept: no completion, and
/// no new items.
class ComboEditor : public QComboBox
{
    Q_OBJECT

public:
    ComboEditor(const QStringList &items, bool editable, QWidget *parent) : QComboBox(parent)
    {
        setFrame(false);
        // Without a frame it draws nothing between text and arrow, and the cell would show through.
        setBackgroundRole(QPalette::Base);
        setAutoFillBackground(true);
        setEditable(editable);
        setInsertPolicy(NoInsert);
        if (editable)
            setCompleter(nullptr);
        addItems(items);
    }

    void showPopup() override
    {
        m_open = true;
        QComboBox::showPopup();
        view()->installEventFilter(this);
    }

    void hidePopup() override
    {
        QComboBox::hidePopup();
        // Queued, since a picked item becomes the current one only after its list is gone.
        if (std::exchange(m_open, false))
            QMetaObject::invokeMethod(
                this, [this] { Q_EMIT listClosed(this); }, Qt::QueuedConnection);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        return (isEditable() && event->type() == QEvent::KeyPress &&
                typesOverList(static_cast<QKeyEvent *>(event))) ||
               QComboBox::eventFilter(watched, event);
    }

Q_SIGNALS:
    /// The open list was closed, with a pick or without.
    void listClosed(QWidget *editor);

private:
    /// The list itself would take what is typed for the beginning of an item, and keep another item
    /// when none begins so.
    bool typesOverList(QKeyEvent *key)
    {
        if (key->text().isEmpty() || !key->text().front().isPrint())
            return false;
        m_open = false; // the cell is edited on
        hidePopup();
        lineEdit()->selectAll();
        QCoreApplication::sendEvent(lineEdit(), key);
        return true;
    }

    bool m_open = false;
};
