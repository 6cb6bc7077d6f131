#pragma once

#include <QComboBox>

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
    }

    void hidePopup() override
    {
        QComboBox::hidePopup();
        // Queued, since a picked item becomes the current one only after its list is gone.
        if (std::exchange(m_open, false))
            QMetaObject::invokeMethod(
                this, [this] { Q_EMIT listClosed(this); }, Qt::QueuedConnection);
    }

Q_SIGNALS:
    /// The open list was closed, with a pick or without.
    void listClosed(QWidget *editor);

private:
    bool m_open = false;
};
