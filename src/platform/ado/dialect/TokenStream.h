#pragma once

#include "platform/ado/dialect/Ast.h"

#include <vector>

namespace ado::dialect {

/// A walk over the tokens of a statement. The tokens must outlive it.
class TokenStream
{
public:
    explicit TokenStream(const std::vector<Token> &tokens) : m_tokens(tokens) {}

    /// The token `ahead` places on; End behind the end.
    [[nodiscard]] const Token &peek(int ahead = 0) const;
    [[nodiscard]] int index() const { return m_at; }
    [[nodiscard]] const Token &token(int index) const { return m_tokens[size_t(index)]; }

    [[nodiscard]] bool at(TokenKind kind) const { return peek().kind == kind; }
    /// True at this word, in any case.
    [[nodiscard]] bool atWord(QStringView word, int ahead = 0) const;
    void advance();

    /// Steps over the token and returns true when it is there.
    bool accept(TokenKind kind);
    bool acceptWord(QStringView word);
    /// As accept; kSyntax when the token is another.
    void expect(TokenKind kind);
    void expectWord(QStringView word);

    /// True at a bracketed name or a word that is not reserved.
    [[nodiscard]] bool atName() const;
    /// Steps over a name; kSyntax at anything else.
    Name expectName();
    /// "(" name {"," name} ")".
    std::vector<Name> expectNameList();

private:
    const std::vector<Token> &m_tokens;
    int m_at = 0;
};

} // namespace ado::dialect
