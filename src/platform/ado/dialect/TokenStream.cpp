#include "platform/ado/dialect/TokenStream.h"

#include "platform/ado/dialect/Errors.h"

#include <algorithm>

namespace ado::dialect {

namespace {

// Words that are no names unless they stand in brackets, else an alias without AS could not be told
// from the clause behind it.
constexpr QStringView kReserved[] = {
    u"ALL",        u"ALTER",   u"AND",    u"AS",    u"ASC",      u"BETWEEN", u"BY",
    u"CONSTRAINT", u"CREATE",  u"DELETE", u"DESC",  u"DISTINCT", u"DROP",    u"EXISTS",
    u"FALSE",      u"FOREIGN", u"FROM",   u"FULL",  u"GROUP",    u"HAVING",  u"IN",
    u"INNER",      u"INSERT",  u"INTO",   u"IS",    u"JOIN",     u"LEFT",    u"LIKE",
    u"NOT",        u"NULL",    u"ON",     u"OR",    u"ORDER",    u"OUTER",   u"PRIMARY",
    u"REFERENCES", u"RIGHT",   u"SELECT", u"SET",   u"TABLE",    u"TRUE",    u"UNION",
    u"UNIQUE",     u"UPDATE",  u"VALUES", u"WHERE", u"WITH",
};

bool isReserved(QStringView word)
{
    return std::any_of(std::begin(kReserved), std::end(kReserved), [word](QStringView reserved) {
        return word.compare(reserved, Qt::CaseInsensitive) == 0;
    });
}

} // namespace

const Token &TokenStream::peek(int ahead) const
{
    return m_tokens[std::min(size_t(m_at + ahead), m_tokens.size() - 1)];
}

bool TokenStream::atWord(QStringView word, int ahead) const
{
    const Token &token = peek(ahead);
    return token.kind == TokenKind::Word && token.text.compare(word, Qt::CaseInsensitive) == 0;
}

void TokenStream::advance()
{
    if (!at(TokenKind::End))
        ++m_at;
}

bool TokenStream::accept(TokenKind kind)
{
    if (!at(kind))
        return false;
    advance();
    return true;
}

bool TokenStream::acceptWord(QStringView word)
{
    if (!atWord(word))
        return false;
    advance();
    return true;
}

void TokenStream::expect(TokenKind kind)
{
    if (!accept(kind))
        raiseSyntax(peek());
}

void TokenStream::expectWord(QStringView word)
{
    if (!acceptWord(word))
        raiseSyntax(peek());
}

bool TokenStream::atName() const
{
    return at(TokenKind::BracketName) || (at(TokenKind::Word) && !isReserved(peek().text));
}

Name TokenStream::expectName()
{
    if (!atName())
        raiseSyntax(peek());
    const Token &token = peek();
    const QStringView text =
        token.kind == TokenKind::BracketName ? token.text.sliced(1).chopped(1) : token.text;
    advance();
    return {text, m_at - 1};
}

std::vector<Name> TokenStream::expectNameList()
{
    std::vector<Name> names;
    expect(TokenKind::LeftParen);
    do
        names.push_back(expectName());
    while (accept(TokenKind::Comma));
    expect(TokenKind::RightParen);
    return names;
}

} // namespace ado::dialect
