#pragma once

#include <QString>
#include <QStringView>

namespace report {

enum class TokenKind {
    End,
    Error, ///< no token begins here, or it has no end
    Number,
    Text,        ///< in single or double quotes, a quote in it doubled
    Field,       ///< {Tabell.Felt} or {Felt}
    FormulaName, ///< {@Navn}
    Word,
    LeftParen,
    RightParen,
    LeftBracket,
    RightBracket,
    Comma,
    Ampersand,
    Plus,
    Minus,
    Star,
    Slash,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
};

struct Token
{
    TokenKind kind = TokenKind::End;
    int position = 0; ///< UTF-16 units from the start
    QStringView text; ///< as written; of a field or formula name without braces, "@" and blanks
};

/// Walks a formula's text token by token. The text must outlive it and its tokens.
class FormulaLexer
{
public:
    explicit FormulaLexer(QStringView text) : m_text(text) {}

    /// Never raises. End at the end, again and again; so with an Error.
    [[nodiscard]] Token next();

private:
    Token quoted(QChar quote);
    Token braced();
    Token number();
    Token word();
    Token sign();
    Token made(TokenKind kind, int length);

    QStringView m_text;
    int m_at = 0;
};

} // namespace report
