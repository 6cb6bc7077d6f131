#include "platform/forms/MsgBox.h"

#include "platform/forms/ModalDialog.h"

#include <QApplication>
#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLayout>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QScrollBar>
#include <QTextEdit>
#include <QtMath>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

constexpr int kButtonBits = 0x0F;
constexpr int kIconBits = 0xF0;

QMessageBox::Icon iconOf(int style)
{
    switch (style & kIconBits) {
    case msgbox::kCritical:
        return QMessageBox::Critical;
    case msgbox::kQuestion:
        return QMessageBox::Question;
    case msgbox::kExclamation:
        return QMessageBox::Warning;
    case msgbox::kInformation:
        return QMessageBox::Information;
    default:
        return QMessageBox::NoIcon;
    }
}

/// A box that answers to its buttons' letters, whose text scrolls by the page keys, and of which
/// the user must press a button when none of them stands for Escape.
class Box : public QMessageBox
{
public:
    void setScrollBar(QScrollBar *bar) { m_scrollBar = bar; }
    void mustChoose()
    {
        m_mustChoose = true;
        setWindowFlag(Qt::WindowCloseButtonHint, false);
    }
    QPushButton *add(int answer, ButtonRole role, const QString &caption)
    {
        QPushButton *button = addButton(caption, role);
        button->setObjectName(u"button%1"_s.arg(answer));
        return button;
    }

protected:
    void keyPressEvent(QKeyEvent *event) override
    {
        if (m_mustChoose && event->matches(QKeySequence::Cancel))
            return;
        for (QAbstractButton *button : buttons()) {
            if (event->modifiers() == Qt::NoModifier &&
                button->shortcut() == QKeySequence(Qt::ALT | Qt::Key(event->key()))) {
                button->click();
                return;
            }
        }
        QMessageBox::keyPressEvent(event);
        const bool scrolls = event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown;
        if (m_scrollBar && scrolls)
            QApplication::sendEvent(m_scrollBar, event);
    }
    void showEvent(QShowEvent *event) override
    {
        QMessageBox::showEvent(event); // takes the box's final size
        putOnScreen(*this);
    }
    void closeEvent(QCloseEvent *event) override
    {
        if (m_mustChoose)
            event->ignore();
        else
            QMessageBox::closeEvent(event);
    }

private:
    bool m_mustChoose = false;
    QScrollBar *m_scrollBar = nullptr; ///< null while all text is seen
};

/// Puts the box's text into a view of `width` pixels that breaks words where it must and scrolls
/// beyond the height `highest`.
void showInView(Box &box, QLabel &label, int width, int highest)
{
    auto *view = new QTextEdit;
    view->setObjectName(u"textView"_s);
    view->setReadOnly(true);
    view->setFrameShape(QFrame::NoFrame);
    view->viewport()->setAutoFillBackground(false);
    view->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    view->setWordWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    view->setPlainText(box.text());
    // The view gives its own document the width that the view has now.
    const std::unique_ptr<QTextDocument> document(view->document()->clone());
    width += qCeil(2 * document->documentMargin());
    document->setTextWidth(width);
    const int height = qCeil(document->size().height());
    if (height > highest)
        width += view->verticalScrollBar()->sizeHint().width();
    view->setFixedSize(width, std::min(height, highest));
    delete box.layout()->replaceWidget(&label, view);
    label.hide();
    box.setScrollBar(view->verticalScrollBar());
}

/// The box by itself breaks lines earlier than it needs to, cuts words that are too long, and grows
/// until its buttons are below the screen. The callers' own line breaks shall be seen.
void giveRoom(Box &box)
{
    constexpr int kWidest = 600;
    auto *label = box.findChild<QLabel *>(u"qt_msgbox_label"_s);
    const QSize screen = box.screen()->availableGeometry().size();
    const int width = std::min({label->sizeHint().width(), screen.width() * 3 / 4, kWidest});
    const int highest = screen.height() * 2 / 3;
    label->setWordWrap(true);
    if (label->minimumSizeHint().width() > width || label->heightForWidth(width) > highest)
        showInView(box, *label, width, highest);
    else
        label->setMinimumWidth(width);
}

} // namespace

int MsgBox(const QString &text, int style)
{
    Box box;
    box.setObjectName(u"MsgBox"_s);
    box.setWindowTitle(applicationTitle());
    box.setIcon(iconOf(style));
    box.setTextFormat(Qt::PlainText);
    QString shown = text;
    box.setText(shown.replace("\r\n"_L1, "\n"_L1));

    const bool asks = (style & kButtonBits) == msgbox::kYesNo;
    QPushButton *yes = nullptr;
    if (asks) {
        // The letter behind "&" chooses the button from the keyboard, with Alt or without.
        yes = box.add(answer::kYes, QMessageBox::YesRole, u"&Ja"_s);
        QPushButton *no = box.add(answer::kNo, QMessageBox::NoRole, u"&Nei"_s);
        box.setDefaultButton(style & msgbox::kDefaultButton2 ? no : yes);
        box.mustChoose();
    } else {
        box.setDefaultButton(box.add(answer::kOk, QMessageBox::AcceptRole, u"OK"_s));
    }
    giveRoom(box);
    runModal(box);

    // A box that ends without a button, since the program is stopping, counts as its last one.
    if (!asks)
        return answer::kOk;
    return box.clickedButton() == yes ? answer::kYes : answer::kNo;
}

QString applicationTitle()
{
    return u"Regningsdel"_s;
}
