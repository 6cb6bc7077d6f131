#include "platform/report/FormulaLexer.h"

#include <algorithm>

namespace report {

namespace {

bool isDigit(QChar c)
{
    return c >= u'0' && c <= u'9';
}

bool isWordCharacter(QChar c)
{
    return c.isLetterOrNumber() || c == u'_';
}

} // namespace

Token FormulaLexer::next()
{
    while (m_at < m_text.size() && m_text[m_at].isSpace())
        ++m_at;
    if (m_at >= m_text.size())
        return {TokenKind::End, m_at, {}};
    const QChar c = m_text[m_at];
    if (c == u'\'' || c == u'"')
        return quoted(c);
    if (c == u'{')
        return braced();
    if (isDigit(c) || (c == u'.' && m_at + 1 < m_text.size() && isDigit(m_text[m_at + 1])))
        return number();
    if (c.isLetter() || c == u'_')
        return word();
    return sign();
}

Token FormulaLexer::made(TokenKind kind, int length)
{
    const Token token{kind, m_at, m_text.sliced(m_at, length)};
    if (kind != TokenKind::Error)
        m_at += length;
    return token;
}

Token FormulaLexer::quoted(QChar quote)
{
    int end = m_at + 1;
    while (end < m_text.size()) {
        if (m_text[end] != quote) {
            ++end;
        } else if (end + 1 < m_text.size() && m_text[end + 1] == quote) {
            end += 2;
        } else {
            return made(TokenKind::Text, end + 1 - m_at);
        }
    }
    return made(TokenKind::Error, 1);
}

Token FormulaLexer::braced()
{
    const auto end = int(m_text.indexOf(u'}', m_at));
    if (end < 0)
        return made(TokenKind::Error, 1);
    QStringView name = m_text.sliced(m_at + 1, end - m_at - 1).trimmed();
    const bool formula = name.startsWith(u'@');
    if (formula)
        name = name.sliced(1).trimmed();
    const bool plain = std::all_of(name.begin(), name.end(), [](QChar c) {
        return isWordCharacter(c) || c == u'.' || c == u' ';
    });
    if (name.isEmpty() || !plain)
        return made(TokenKind::Error, 1);
    const Token token{formula ? TokenKind::FormulaName : TokenKind::Field, m_at, name};
    m_at = end + 1;
    return token;
}

Token FormulaLexer::number()
{
    int end = m_at;
    while (end < m_text.size() && isDigit(m_text[end]))
        ++end;
    if (end < m_text.size() && m_text[end] == u'.') {
        ++end;
        while (end < m_text.size() && isDigit(m_text[end]))
            ++end;
    }
    return made(TokenKind::Number, end - m_at);
}

Token FormulaLexer::word()
{
    int end = m_at + 1;
    while (end < m_text.size() && isWordCharacter(m_text[end]))
        ++end;
    return made(TokenKind::Word, end - m_at);
}

// In one piece: a case for each sign.
Token FormulaLexer::sign()
{
    const QChar next = m_at + 1 < m_text.size() ? m_text[m_at + 1] : QChar();
    switch (m_text[m_at].unicode()) {
    case '(':
        return made(TokenKind::LeftParen, 1);
    case ')':
        return made(TokenKind::RightParen, 1);
    case '[':
        return made(TokenKind::LeftBracket, 1);
    case ']':
        return made(TokenKind::RightBracket, 1);
    case ',':
        return made(TokenKind::Comma, 1);
    case '&':
        return made(TokenKind::Ampersand, 1);
    case '+':
        return made(TokenKind::Plus, 1);
    case '-':
        return made(TokenKind::Minus, 1);
    case '*':
        return made(TokenKind::Star, 1);
    case '/':
        return made(TokenKind::Slash, 1);
    case '=':
        return made(TokenKind::Equal, 1);
    case '<':
        if (next == u'>')
            return made(TokenKind::NotEqual, 2);
        return next == u'=' ? made(TokenKind::LessEqual, 2) : made(TokenKind::Less, 1);
    case '>':
        return next == u'=' ? made(TokenKind::GreaterEqual, 2) : made(TokenKind::Greater, 1);
    default:
        return made(TokenKind::Error,
                    m_text[m_at].isHighSurrogate() && next.isLowSurrogate() ? 2 : 1);
    }
}

} // namespace report
