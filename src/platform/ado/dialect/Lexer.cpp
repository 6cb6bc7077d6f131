#include "platform/ado/dialect/Lexer.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace ado::dialect {

namespace {

// Room made ahead; a long text in a statement is one token only.
constexpr qsizetype kTokensAtOnce = 500;

enum class Class : quint8 { Other, Blank, Letter, Digit, Sign };

/// The kinds of the signs of one character, End for what is none.
constexpr std::array<TokenKind, 128> kSigns = [] {
    std::array<TokenKind, 128> table{};
    table[','] = TokenKind::Comma;
    table['.'] = TokenKind::Dot;
    table['('] = TokenKind::LeftParen;
    table[')'] = TokenKind::RightParen;
    table[';'] = TokenKind::Semicolon;
    table['*'] = TokenKind::Star;
    table['/'] = TokenKind::Slash;
    table['+'] = TokenKind::Plus;
    table['-'] = TokenKind::Minus;
    table['='] = TokenKind::Equal;
    table['<'] = TokenKind::Less;
    table['>'] = TokenKind::Greater;
    return table;
}();

constexpr std::array<Class, 128> kClasses = [] {
    std::array<Class, 128> table{};
    for (const size_t c : {u' ', u'\t', u'\r', u'\n'})
        table[c] = Class::Blank;
    for (size_t c = '0'; c <= '9'; ++c)
        table[c] = Class::Digit;
    for (size_t c = 'a'; c <= 'z'; ++c)
        table[c] = table[c - 'a' + 'A'] = Class::Letter;
    table['_'] = Class::Letter;
    for (size_t c = 0; c < kSigns.size(); ++c) {
        if (kSigns[c] != TokenKind::End)
            table[c] = Class::Sign;
    }
    return table;
}();

Class classOf(char16_t c)
{
    if (c < kClasses.size())
        return kClasses[c];
    return QChar::isLetter(c) ? Class::Letter : Class::Other;
}

bool isDigit(char16_t c)
{
    return c >= u'0' && c <= u'9';
}

// Marks lie among the control characters, which stand in no token outside a literal, so no text
// can pass for the shape of another.
constexpr char16_t mark(TokenKind kind)
{
    return char16_t(1 + int(kind) - int(TokenKind::Integer));
}
constexpr char16_t kErrorMark = mark(TokenKind::Date) + 1;
static_assert(kErrorMark < u'\t');

class Scanner
{
public:
    explicit Scanner(QStringView statement)
        : m_begin(statement.utf16()), m_end(m_begin + statement.size()), m_at(m_begin)
    {
    }

    /// The next token, End at the end.
    Token next()
    {
        while (m_at != m_end && classOf(*m_at) == Class::Blank)
            ++m_at;
        const char16_t *start = m_at;
        const TokenKind kind = start == m_end ? TokenKind::End : scan();
        return {QStringView(start, m_at), int(start - m_begin), kind};
    }

private:
    char16_t peek(ptrdiff_t ahead = 0) const { return m_end - m_at > ahead ? m_at[ahead] : u'\0'; }

    TokenKind scan()
    {
        switch (classOf(*m_at)) {
        case Class::Letter:
            skipWord();
            return TokenKind::Word;
        case Class::Digit:
            return number();
        case Class::Sign:
            return sign();
        default:
            return quoted();
        }
    }

    void skipWord()
    {
        while (m_at != m_end && (classOf(*m_at) == Class::Letter || isDigit(*m_at)))
            ++m_at;
    }

    const char16_t *skipDigits()
    {
        while (m_at != m_end && isDigit(*m_at))
            ++m_at;
        return m_at;
    }

    TokenKind number()
    {
        while (m_at != m_end && *m_at == u'0')
            ++m_at;
        const char16_t *whole = m_at;
        ptrdiff_t magnitude = skipDigits() - whole;
        const QStringView digits(whole, m_at);
        bool integer = true;
        if (peek() == u'.') {
            ++m_at;
            skipDigits();
            integer = false;
        }
        const ptrdiff_t sign = peek(1) == u'+' || peek(1) == u'-' ? 1 : 0;
        if ((peek() == u'e' || peek() == u'E') && isDigit(peek(1 + sign))) {
            const bool negative = peek(1) == u'-';
            m_at += 1 + sign;
            int exponent = 0;
            for (; m_at != m_end && isDigit(*m_at); ++m_at)
                exponent = std::min(exponent * 10 + (*m_at - u'0'), 10000);
            magnitude += negative ? -exponent : exponent;
            integer = false;
        }
        if (magnitude > 14)
            return TokenKind::Huge;
        return integer && fitsLong(digits) ? TokenKind::Integer : TokenKind::Decimal;
    }

    static bool fitsLong(QStringView digits)
    {
        return digits.size() < 10 || (digits.size() == 10 && digits <= QStringView(u"2147483647"));
    }

    TokenKind sign()
    {
        const char16_t c = *m_at;
        if (c == u'.' && isDigit(peek(1)))
            return number();
        if ((c == u'-' && peek(1) == u'-') || (c == u'/' && peek(1) == u'*'))
            return fail(2);
        ++m_at;
        if (c == u'<' && skip(u'>'))
            return TokenKind::NotEqual;
        if (c == u'<' && skip(u'='))
            return TokenKind::LessEqual;
        if (c == u'>' && skip(u'='))
            return TokenKind::GreaterEqual;
        return kSigns[c];
    }

    bool skip(char16_t expected)
    {
        const bool found = peek() == expected;
        m_at += found ? 1 : 0;
        return found;
    }

    TokenKind quoted()
    {
        switch (*m_at) {
        case u'\'':
            do {
                if (!skipPast(u'\''))
                    return TokenKind::Error;
            } while (peek() == u'\'');
            return TokenKind::Text;
        case u'#':
            return skipPast(u'#') ? TokenKind::Date : TokenKind::Error;
        case u'[': {
            const char16_t *start = m_at;
            if (!skipPast(u']') || m_at - start == 2)
                return TokenKind::Error;
            for (const char16_t *c = start; c != m_at; ++c) {
                if (*c < u' ' || QChar::isSurrogate(*c))
                    return TokenKind::Error;
            }
            return TokenKind::BracketName;
        }
        case u'@': {
            constexpr QStringView name = u"@@IDENTITY";
            if (!QStringView(m_at, m_end).startsWith(name, Qt::CaseInsensitive))
                return fail(1);
            m_at += name.size();
            return TokenKind::Identity;
        }
        default:
            return fail(1);
        }
    }

    /// Goes behind the next `closing` after the current character, or to the end.
    bool skipPast(char16_t closing)
    {
        ++m_at;
        while (m_at != m_end && *m_at != closing)
            ++m_at;
        if (m_at == m_end)
            return false;
        ++m_at;
        return true;
    }

    TokenKind fail(ptrdiff_t length)
    {
        m_at += length;
        return TokenKind::Error;
    }

    const char16_t *m_begin;
    const char16_t *m_end;
    const char16_t *m_at;
};

bool changesSchema(const Token &first)
{
    for (const QStringView word : {u"CREATE", u"ALTER", u"DROP"}) {
        if (first.text.compare(word, Qt::CaseInsensitive) == 0)
            return true;
    }
    return false;
}

/// Writes the shape behind the lexer: long stretches are copied whole.
class ShapeWriter
{
public:
    explicit ShapeWriter(QStringView statement)
        : m_statement(statement), m_shape(statement.size(), Qt::Uninitialized),
          m_out(reinterpret_cast<char16_t *>(m_shape.data()))
    {
    }

    void replace(const Token &token, char16_t by)
    {
        copyUpTo(token.position);
        *m_out++ = by;
        m_copied = token.position + token.text.size();
    }

    QString finish()
    {
        copyUpTo(m_statement.size());
        m_shape.truncate(m_out - reinterpret_cast<const char16_t *>(m_shape.constData()));
        return std::move(m_shape);
    }

private:
    void copyUpTo(qsizetype position)
    {
        const qsizetype count = position - m_copied;
        if (count > 0)
            std::memcpy(m_out, m_statement.utf16() + m_copied, size_t(count) * sizeof(char16_t));
        m_out += count;
    }

    QStringView m_statement;
    QString m_shape;
    char16_t *m_out;
    qsizetype m_copied = 0;
};

} // namespace

Lexed lex(QStringView statement)
{
    Lexed lexed;
    lexed.tokens.reserve(size_t(std::min(statement.size() / 4, kTokensAtOnce)) + 8);
    Scanner scanner(statement);
    ShapeWriter shape(statement);
    for (;;) {
        lexed.tokens.push_back(scanner.next());
        const Token &token = lexed.tokens.back();
        if (isLiteral(token.kind)) {
            shape.replace(token, mark(token.kind));
        } else if (token.kind == TokenKind::Error) {
            shape.replace(token, kErrorMark);
            lexed.tokens.push_back({{}, int(statement.size()), TokenKind::End});
            break;
        } else if (token.kind == TokenKind::End) {
            break;
        }
    }
    lexed.shape = changesSchema(lexed.tokens.front()) ? statement.toString() : shape.finish();
    return lexed;
}

} // namespace ado::dialect
