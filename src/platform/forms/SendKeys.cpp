#include "platform/forms/SendKeys.h"

#include "platform/forms/OuterRim.h"
#include "runtime/RunTimeError.h"

#include <QApplication>
#include <QKeyEvent>
#include <QPointer>
#include <QWidget>

#include <array>
#include <optional>
#include <utility>
#include <vector>

using namespace Qt::StringLiterals;

namespace {

struct Stroke
{
    int key = 0;
    Qt::KeyboardModifiers modifiers;
    QString text;
};

constexpr int kMostRepeats = 1000;
constexpr int kFunctionKeys = 16;

constexpr std::array<std::pair<QLatin1StringView, Qt::Key>, 24> kNames{{
    {"BACKSPACE"_L1, Qt::Key_Backspace},
    {"BKSP"_L1, Qt::Key_Backspace},
    {"BREAK"_L1, Qt::Key_Pause},
    {"BS"_L1, Qt::Key_Backspace},
    {"CAPSLOCK"_L1, Qt::Key_CapsLock},
    {"DEL"_L1, Qt::Key_Delete},
    {"DELETE"_L1, Qt::Key_Delete},
    {"DOWN"_L1, Qt::Key_Down},
    {"END"_L1, Qt::Key_End},
    {"ENTER"_L1, Qt::Key_Return},
    {"ESC"_L1, Qt::Key_Escape},
    {"HELP"_L1, Qt::Key_Help},
    {"HOME"_L1, Qt::Key_Home},
    {"INS"_L1, Qt::Key_Insert},
    {"INSERT"_L1, Qt::Key_Insert},
    {"LEFT"_L1, Qt::Key_Left},
    {"NUMLOCK"_L1, Qt::Key_NumLock},
    {"PGDN"_L1, Qt::Key_PageDown},
    {"PGUP"_L1, Qt::Key_PageUp},
    {"PRTSC"_L1, Qt::Key_Print},
    {"RIGHT"_L1, Qt::Key_Right},
    {"SCROLLLOCK"_L1, Qt::Key_ScrollLock},
    {"TAB"_L1, Qt::Key_Tab},
    {"UP"_L1, Qt::Key_Up},
}};

std::optional<Qt::Key> keyNamed(const QString &name)
{
    for (const auto &[known, key] : kNames) {
        if (name.compare(known, Qt::CaseInsensitive) == 0)
            return key;
    }
    if (name.startsWith(u'F', Qt::CaseInsensitive)) {
        bool isNumber = false;
        const int number = QStringView(name).mid(1).toInt(&isNumber);
        if (isNumber && number >= 1 && number <= kFunctionKeys)
            return Qt::Key(Qt::Key_F1 + number - 1);
    }
    return std::nullopt;
}

Qt::KeyboardModifiers modifierOf(QChar sign)
{
    switch (sign.unicode()) {
    case u'+':
        return Qt::ShiftModifier;
    case u'^':
        return Qt::ControlModifier;
    case u'%':
        return Qt::AltModifier;
    default:
        return Qt::NoModifier;
    }
}

Stroke strokeOf(Qt::Key key, Qt::KeyboardModifiers modifiers)
{
    if (key == Qt::Key_Tab && modifiers.testFlag(Qt::ShiftModifier))
        key = Qt::Key_Backtab;
    const QString text = key == Qt::Key_Tab ? u"\t"_s : key == Qt::Key_Return ? u"\r"_s : QString();
    return {key, modifiers, text};
}

Stroke strokeOf(QChar character, Qt::KeyboardModifiers modifiers)
{
    if (character == u'\t')
        return strokeOf(Qt::Key_Tab, modifiers);
    if (character == u'\r' || character == u'\n')
        return strokeOf(Qt::Key_Return, modifiers);
    if (character.isUpper())
        modifiers |= Qt::ShiftModifier;
    const QChar typed = modifiers.testFlag(Qt::ShiftModifier) ? character.toUpper() : character;
    const bool isCommand = modifiers & (Qt::ControlModifier | Qt::AltModifier);
    return {character.toUpper().unicode(), modifiers, isCommand ? QString() : QString(typed)};
}

class Parser
{
public:
    explicit Parser(const QString &keys) : m_keys(keys) {}

    std::vector<Stroke> parse()
    {
        group(Qt::NoModifier, QChar());
        return std::move(m_strokes);
    }

private:
    /// Reads up to and with `end`; a null `end` is the end of the text.
    void group(Qt::KeyboardModifiers outer, QChar end)
    {
        Qt::KeyboardModifiers modifiers = outer;
        while (m_at < m_keys.size()) {
            const QChar sign = m_keys[m_at++];
            if (sign == end && !end.isNull()) {
                if (modifiers != outer)
                    break;
                return;
            }
            if (const Qt::KeyboardModifiers modifier = modifierOf(sign)) {
                modifiers |= modifier;
                continue;
            }
            if (sign == u'(')
                group(modifiers, u')');
            else if (sign == u'{')
                named(modifiers);
            else if (sign == u')' || sign == u'}')
                throw RunTimeError(errors::kInvalidCall);
            else if (sign == u'~')
                m_strokes.push_back(strokeOf(Qt::Key_Return, modifiers));
            else
                m_strokes.push_back(strokeOf(sign, modifiers));
            modifiers = outer;
        }
        if (!end.isNull() || modifiers != outer)
            throw RunTimeError(errors::kInvalidCall);
    }

    /// The inside of braces: a name or one sign, and a count after a blank.
    void named(Qt::KeyboardModifiers modifiers)
    {
        // "{}}" is the closing brace itself.
        const qsizetype close = m_keys.indexOf(u'}', m_at + 1);
        if (close < 0)
            throw RunTimeError(errors::kInvalidCall);
        QString name = m_keys.mid(m_at, close - m_at);
        m_at = close + 1;

        int count = 1;
        if (const qsizetype blank = name.indexOf(u' ', 1); blank > 0) {
            bool isNumber = false;
            count = QStringView(name).mid(blank + 1).toInt(&isNumber);
            if (!isNumber || count < 0 || count > kMostRepeats)
                throw RunTimeError(errors::kInvalidCall);
            name.truncate(blank);
        }
        const std::optional<Qt::Key> key = keyNamed(name);
        if (!key && name.size() != 1)
            throw RunTimeError(errors::kInvalidCall);
        const Stroke stroke = key ? strokeOf(*key, modifiers) : strokeOf(name[0], modifiers);
        m_strokes.insert(m_strokes.end(), size_t(count), stroke);
    }

    QString m_keys;
    qsizetype m_at = 0;
    std::vector<Stroke> m_strokes;
};

QWidget *receiver()
{
    if (QWidget *popup = QApplication::activePopupWidget())
        return popup->focusWidget() ? popup->focusWidget() : popup;
    return QApplication::focusWidget() ? QApplication::focusWidget() : QApplication::activeWindow();
}

void deliver(const Stroke &stroke)
{
    for (const QEvent::Type type : {QEvent::KeyPress, QEvent::KeyRelease}) {
        if (QWidget *target = receiver()) {
            QKeyEvent event(type, stroke.key, stroke.modifiers, stroke.text);
            QCoreApplication::sendEvent(target, &event);
        }
    }
}

/// A key in the event queue.
class StrokeEvent : public QEvent
{
public:
    explicit StrokeEvent(Stroke stroke) : QEvent(QEvent::User), m_stroke(std::move(stroke)) {}
    [[nodiscard]] const Stroke &stroke() const { return m_stroke; }

private:
    Stroke m_stroke;
};

/// Takes the keys out of the event queue; owned by the application.
class Typist : public QObject
{
public:
    using QObject::QObject;

protected:
    void customEvent(QEvent *event) override
    {
        atOuterRim([event] { deliver(static_cast<StrokeEvent *>(event)->stroke()); });
    }
};

} // namespace

void sendKeys(const QString &keys)
{
    static QPointer<Typist> typist;
    if (!typist)
        typist = new Typist(qApp);
    for (const Stroke &stroke : Parser(keys).parse())
        QCoreApplication::postEvent(typist, new StrokeEvent(stroke));
}
