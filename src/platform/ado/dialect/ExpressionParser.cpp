#include "platform/ado/dialect/ExpressionParser.h"

#include "platform/ado/dialect/Errors.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace ado::dialect {

namespace {

constexpr int kMaxNesting = 30; // open parentheses and prefix operators at one time
constexpr int kMaxDepth = 400;  // levels of a tree, and so links of a chain such as a AND b AND c

[[noreturn]] void raiseTooDeep(const Token &at)
{
    raiseSyntax(at, u"uttrykket er for innviklet"_s);
}

class NestingGuard
{
public:
    NestingGuard(int &nesting, const Token &at) : m_nesting(nesting)
    {
        if (m_nesting == kMaxNesting)
            raiseTooDeep(at);
        ++m_nesting;
    }
    ~NestingGuard() { --m_nesting; }
    NestingGuard(const NestingGuard &) = delete;
    NestingGuard &operator=(const NestingGuard &) = delete;

private:
    int &m_nesting;
};

bool isComparison(TokenKind kind)
{
    return kind >= TokenKind::Equal && kind <= TokenKind::GreaterEqual;
}

} // namespace

ExprPtr ExpressionParser::node(ExprKind kind, int token, ExprPtr first, ExprPtr second)
{
    auto expr = std::make_unique<Expr>();
    expr->kind = kind;
    expr->token = token;
    if (first)
        add(*expr, std::move(first));
    if (second)
        add(*expr, std::move(second));
    return expr;
}

void ExpressionParser::add(Expr &parent, ExprPtr argument)
{
    parent.depth = std::max(parent.depth, argument->depth + 1);
    if (parent.depth > kMaxDepth)
        raiseTooDeep(m_tokens.token(parent.token));
    parent.arguments.push_back(std::move(argument));
}

ExprPtr ExpressionParser::disjunction()
{
    ExprPtr left = conjunction();
    while (m_tokens.acceptWord(u"OR")) {
        const int token = m_tokens.index() - 1;
        left = node(ExprKind::Or, token, std::move(left), conjunction());
    }
    return left;
}

ExprPtr ExpressionParser::conjunction()
{
    ExprPtr left = negation();
    while (m_tokens.acceptWord(u"AND")) {
        const int token = m_tokens.index() - 1;
        left = node(ExprKind::And, token, std::move(left), negation());
    }
    return left;
}

ExprPtr ExpressionParser::negation()
{
    if (!m_tokens.acceptWord(u"NOT"))
        return comparison();
    const int token = m_tokens.index() - 1;
    const NestingGuard guard(m_nesting, m_tokens.token(token));
    return node(ExprKind::Not, token, negation());
}

ExprPtr ExpressionParser::comparison()
{
    ExprPtr left = sum();
    const int token = m_tokens.index();
    if (isComparison(m_tokens.peek().kind)) {
        m_tokens.advance();
        return node(ExprKind::Compare, token, std::move(left), sum());
    }
    if (m_tokens.acceptWord(u"IS")) {
        ExprPtr test = node(ExprKind::IsNull, token, std::move(left));
        test->negative = m_tokens.acceptWord(u"NOT");
        m_tokens.expectWord(u"NULL");
        return test;
    }
    const bool negative = m_tokens.acceptWord(u"NOT");
    ExprPtr test;
    if (m_tokens.acceptWord(u"IN"))
        test = inList(std::move(left));
    else if (m_tokens.acceptWord(u"BETWEEN"))
        test = range(std::move(left));
    else if (negative)
        raiseSyntax(m_tokens.peek());
    else
        return left;
    test->negative = negative;
    return test;
}

ExprPtr ExpressionParser::inList(ExprPtr operand)
{
    ExprPtr test = node(ExprKind::In, m_tokens.index() - 1, std::move(operand));
    m_tokens.expect(TokenKind::LeftParen);
    do
        add(*test, sum());
    while (m_tokens.accept(TokenKind::Comma));
    m_tokens.expect(TokenKind::RightParen);
    return test;
}

ExprPtr ExpressionParser::range(ExprPtr operand)
{
    ExprPtr test = node(ExprKind::Between, m_tokens.index() - 1, std::move(operand), sum());
    m_tokens.expectWord(u"AND");
    add(*test, sum());
    return test;
}

ExprPtr ExpressionParser::sum()
{
    ExprPtr left = product();
    while (m_tokens.at(TokenKind::Plus) || m_tokens.at(TokenKind::Minus)) {
        const int token = m_tokens.index();
        m_tokens.advance();
        left = node(ExprKind::Arithmetic, token, std::move(left), product());
    }
    return left;
}

ExprPtr ExpressionParser::product()
{
    ExprPtr left = sign();
    while (m_tokens.at(TokenKind::Star) || m_tokens.at(TokenKind::Slash)) {
        const int token = m_tokens.index();
        m_tokens.advance();
        left = node(ExprKind::Arithmetic, token, std::move(left), sign());
    }
    return left;
}

ExprPtr ExpressionParser::sign()
{
    if (!m_tokens.accept(TokenKind::Minus)) {
        m_tokens.accept(TokenKind::Plus);
        return primary();
    }
    const int token = m_tokens.index() - 1;
    if (isNumber(m_tokens.peek().kind)) {
        ExprPtr literal = primary();
        literal->negative = true;
        return literal;
    }
    const NestingGuard guard(m_nesting, m_tokens.token(token));
    return node(ExprKind::Negate, token, sign());
}

ExprPtr ExpressionParser::primary()
{
    const Token &token = m_tokens.peek();
    const int index = m_tokens.index();
    if (isLiteral(token.kind)) {
        m_tokens.advance();
        return node(ExprKind::Literal, index);
    }
    if (m_tokens.accept(TokenKind::LeftParen)) {
        const NestingGuard guard(m_nesting, token);
        ExprPtr inner = disjunction();
        m_tokens.expect(TokenKind::RightParen);
        return inner;
    }
    if (m_tokens.acceptWord(u"NULL"))
        return node(ExprKind::Null, index);
    if (m_tokens.atWord(u"TRUE") || m_tokens.atWord(u"FALSE")) {
        ExprPtr truth = node(ExprKind::Truth, index);
        truth->truth = m_tokens.atWord(u"TRUE");
        m_tokens.advance();
        return truth;
    }
    if (m_tokens.at(TokenKind::Word) && m_tokens.peek(1).kind == TokenKind::LeftParen)
        return function();
    return column();
}

ExprPtr ExpressionParser::column()
{
    const Name first = m_tokens.expectName();
    ExprPtr expr = node(ExprKind::Column, first.token);
    expr->name = first.text;
    if (m_tokens.accept(TokenKind::Dot)) {
        expr->qualifier = first.text;
        expr->name = m_tokens.expectName().text;
    }
    return expr;
}

ExprPtr ExpressionParser::function()
{
    struct Function
    {
        QStringView name;
        ExprKind kind;
        DatePart part = DatePart::Year;
        Aggregate aggregate = Aggregate::Count;
    };
    static constexpr Function kFunctions[] = {
        {u"COUNT", ExprKind::Aggregate, {}, Aggregate::Count},
        {u"SUM", ExprKind::Aggregate, {}, Aggregate::Sum},
        {u"MAX", ExprKind::Aggregate, {}, Aggregate::Max},
        {u"MIN", ExprKind::Aggregate, {}, Aggregate::Min},
        {u"AVG", ExprKind::Aggregate, {}, Aggregate::Avg},
        {u"YEAR", ExprKind::DatePart, DatePart::Year, {}},
        {u"MONTH", ExprKind::DatePart, DatePart::Month, {}},
        {u"DAY", ExprKind::DatePart, DatePart::Day, {}},
    };
    const Token &name = m_tokens.peek();
    const auto *const found =
        std::find_if(std::begin(kFunctions), std::end(kFunctions), [&](const Function &f) {
            return f.name.compare(name.text, Qt::CaseInsensitive) == 0;
        });
    if (found == std::end(kFunctions))
        raiseSyntax(name, u"«%1» er ingen kjent funksjon"_s.arg(name.text));

    ExprPtr call = node(found->kind, m_tokens.index());
    call->part = found->part;
    call->aggregate = found->aggregate;
    m_tokens.advance();
    m_tokens.expect(TokenKind::LeftParen);
    const bool countAll = found->kind == ExprKind::Aggregate &&
                          found->aggregate == Aggregate::Count && m_tokens.accept(TokenKind::Star);
    if (m_tokens.at(TokenKind::RightParen) && !countAll)
        raiseSyntax(name, u"funksjonen «%1» mangler et argument"_s.arg(name.text));
    if (!countAll) {
        const NestingGuard guard(m_nesting, name);
        add(*call, disjunction());
    }
    m_tokens.expect(TokenKind::RightParen);
    return call;
}

} // namespace ado::dialect
