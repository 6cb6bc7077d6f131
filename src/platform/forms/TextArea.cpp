#include "platform/forms/TextArea.h"

using namespace Qt::StringLiterals;

TextArea::TextArea(QWidget *parent) : QPlainTextEdit(parent)
{
    setTabChangesFocus(true);
    connect(this, &QPlainTextEdit::textChanged, this, [this] { cutToLength(); });
}

QString TextArea::text() const
{
    return characters().replace(u'\n', u"\r\n"_s);
}

QString TextArea::characters() const
{
    // Not toPlainText, which makes blanks of those that break no line.
    return document()
        ->toRawText()
        .replace(QChar::ParagraphSeparator, u'\n')
        .replace(QChar::LineSeparator, u'\n');
}

void TextArea::cutToLength()
{
    qsizetype excess = text().size() - m_maxLength;
    if (excess <= 0)
        return;
    // What was typed or pasted ends at the cursor, and its end is what there is no room for; a
    // text that was set leaves the cursor at the beginning.
    QTextCursor cursor = textCursor();
    if (cursor.atStart())
        cursor.movePosition(QTextCursor::End);
    const QString standing = characters();
    int from = cursor.position();
    while (from > 0 && (excess > 0 || standing[from].isLowSurrogate()))
        excess -= standing[--from] == u'\n' ? 2 : 1;

    const QSignalBlocker quiet(this);
    cursor.joinPreviousEditBlock();
    cursor.setPosition(from, QTextCursor::KeepAnchor);
    cursor.removeSelectedText();
    cursor.endEditBlock();
}
