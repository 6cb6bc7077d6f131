#pragma once

#include <QString>
#include <QStringView>

#include <vector>

namespace ado::dialect {

enum class TokenKind : quint8 {
    End,
    Error, ///< no token begins here; the last but End
    Word,
    BracketName, ///< [name]
    Identity,    ///< @@IDENTITY
    // Literals. The three classes of numbers part what needs different translations.
    Integer, ///< digits only, fits a LONG
    Decimal, ///< any other number of at most 14 digits before the point
    Huge,    ///< a number beyond what CURRENCY holds
    Text,    ///< 'text', an apostrophe in it doubled
    Date,    ///< #date#
    // Signs.
    Comma,
    Dot,
    LeftParen,
    RightParen,
    Semicolon,
    Star,
    Slash,
    Plus,
    Minus,
    Equal,
    NotEqual,
    Less,
    LessEqual,
    Greater,
    GreaterEqual,
};

[[nodiscard]] constexpr bool isLiteral(TokenKind kind)
{
    return kind >= TokenKind::Integer && kind <= TokenKind::Date;
}
[[nodiscard]] constexpr bool isNumber(TokenKind kind)
{
    return kind >= TokenKind::Integer && kind <= TokenKind::Huge;
}

/// A piece of a statement. It is a view: the statement's text must outlive it.
struct Token
{
    QStringView text; ///< as written, with quotes and brackets
    int position = 0; ///< UTF-16 units from the start of the statement
    TokenKind kind = TokenKind::End;
};

/// The tokens of a statement, End as the last, with its shape: the text with every literal that can
/// become a parameter replaced by a mark of its class. Statements of one shape share one
/// translation. In statements that change the schema no literal does, so they are their own shape.
struct Lexed
{
    std::vector<Token> tokens;
    QString shape;
};

/// Never raises. Stops at the first character that no token begins with, "--", "/*" and an
/// unfinished literal or name included, with an Error token there.
[[nodiscard]] Lexed lex(QStringView statement);

} // namespace ado::dialect
