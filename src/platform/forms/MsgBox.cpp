#include "platform/forms/MsgBox.h"

#include "platform/forms/ModalDialog.h"
#include "runtime/RunTimeError.h"

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
#include <array>
#include <memory>
#include <span>

using namespace Qt::StringLiterals;

namespace {

constexpr int kButtonBits = 0x0F;
constexpr int kIconBits = 0xF0;
constexpr int kDefaultBits = 0x300;
constexpr int kDefaultStep = 0x100;
constexpr size_t kMostButtons = 3;

struct Button
{
    int answer;
    QMessageBox::ButtonRole role;
    /// A letter that stands behind "&" chooses the button from the keyboard, with Alt or without.
    QStringView text;
};

constexpr Button kOkButton{answer::kOk, QMessageBox::AcceptRole, u"OK"};
constexpr Button kCancelButton{answer::kCancel, QMessageBox::RejectRole, u"Avbryt"};
constexpr Button kAbortButton{answer::kAbort, QMessageBox::YesRole, u"&Avbryt"};
constexpr Button kRetryButton{answer::kRetry, QMessageBox::AcceptRole, u"&Prøv igjen"};
constexpr Button kIgnoreButton{answer::kIgnore, QMessageBox::NoRole, u"&Ignorer"};
constexpr Button kYesButton{answer::kYes, QMessageBox::YesRole, u"&Ja"};
constexpr Button kNoButton{answer::kNo, QMessageBox::NoRole, u"&Nei"};

constexpr Button kOkOnly[] = {kOkButton};
constexpr Button kOkCancel[] = {kOkButton, kCancelButton};
constexpr Button kAbortRetryIgnore[] = {kAbortButton, kRetryButton, kIgnoreButton};
constexpr Button kYesNoCancel[] = {kYesButton, kNoButton, kCancelButton};
constexpr Button kYesNo[] = {kYesButton, kNoButton};
constexpr Button kRetryCancel[] = {kRetryButton, kCancelButton};

std::span<const Button> buttonsOf(int style)
{
    switch (style & kButtonBits) {
    case msgbox::kOkOnly:
        return kOkOnly;
    case msgbox::kOkCancel:
        return kOkCancel;
    case msgbox::kAbortRetryIgnore:
        return kAbortRetryIgnore;
    case msgbox::kYesNoCancel:
        return kYesNoCancel;
    case msgbox::kYesNo:
        return kYesNo;
    case msgbox::kRetryCancel:
        return kRetryCancel;
    default:
        throw RunTimeError(errors::kInvalidCall);
    }
}

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

QString &title()
{
    static QString text = u"Regningsdel"_s;
    return text;
}

} // namespace

int MsgBox(const QString &text, int style, const QString &givenTitle)
{
    const std::span<const Button> buttons = buttonsOf(style);

    Box box;
    box.setObjectName(u"MsgBox"_s);
    box.setWindowTitle(givenTitle.isEmpty() ? title() : givenTitle);
    box.setIcon(iconOf(style));
    box.setTextFormat(Qt::PlainText);
    QString shown = text;
    box.setText(shown.replace("\r\n"_L1, "\n"_L1));

    std::array<const QAbstractButton *, kMostButtons> made{};
    size_t wanted = size_t(style & kDefaultBits) / kDefaultStep;
    if (wanted >= buttons.size())
        wanted = 0;
    for (size_t i = 0; i < buttons.size(); ++i) {
        const Button &button = buttons[i];
        QPushButton *widget = box.addButton(button.text.toString(), button.role);
        widget->setObjectName(u"button%1"_s.arg(button.answer));
        if (i == wanted)
            box.setDefaultButton(widget);
        made[i] = widget;
    }
    // Cancel stands last in every combination that has it.
    if (buttons.size() > 1 && buttons.back().answer != answer::kCancel)
        box.mustChoose();

    giveRoom(box);
    runModal(box);

    // A box that ends without a button (the program is stopping) counts as its last one.
    const auto clicked = std::find(made.begin(), made.end(), box.clickedButton());
    const auto index = size_t(clicked - made.begin());
    return index < buttons.size() ? buttons[index].answer : buttons.back().answer;
}

const QString &applicationTitle()
{
    return title();
}

void setApplicationTitle(const QString &text)
{
    title() = text;
}
