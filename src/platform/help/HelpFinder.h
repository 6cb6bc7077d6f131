#pragma once

#include "platform/help/HelpBook.h"

#include <QWidget>

#include <functional>

class QLineEdit;
class QListWidget;

/// A field with the list of what is found by what stands in it. Enter in the field opens the line
/// of the list that is chosen, the arrows choose one.
class HelpFinder : public QWidget
{
public:
    using Find = std::function<std::vector<HelpBook::Entry>(const QString &text)>;
    using Open = std::function<void(const QString &target)>;

    HelpFinder(const QString &name, const QString &fieldName, const QString &listName, Find find,
               Open open);

    /// Finds anew, as in another book.
    void refresh();
    /// Gives the field the keyboard, with its text marked.
    void startTyping();
    [[nodiscard]] QString text() const;

protected:
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void openChosen();

    QLineEdit *m_field;
    QListWidget *m_list;
    const Find m_find;
    const Open m_open;
};
