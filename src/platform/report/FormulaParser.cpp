#include "platform/report/Formula.h"
#include "platform/report/FormulaLexer.h"
#include "platform/report/Functions.h"
#include "platform/report/ReportError.h"
#include "runtime/Decimal.h"

#include <algorithm>
#include <optional>

using namespace Qt::StringLiterals;

namespace report {

namespace {

constexpr int kMaxNesting = 60; // parentheses, prefix operators, calls and "if" open at one time
constexpr int kMaxDepth = 500;  // levels of a tree, and so links of a chain such as a and b and c

struct Named
{
    QStringView word;
    int value;
};

template<class Enum, size_t n>
std::optional<Enum> lookUp(const Named (&names)[n], QStringView word)
{
    for (const Named &named : names) {
        if (named.word.compare(word, Qt::CaseInsensitive) == 0)
            return static_cast<Enum>(named.value);
    }
    return {};
}

constexpr Named kAggregates[] = {
    {u"Sum", int(Aggregate::Sum)},
    {u"Count", int(Aggregate::Count)},
    {u"Min", int(Aggregate::Min)},
    {u"Max", int(Aggregate::Max)},
    {u"Average", int(Aggregate::Average)},
    {u"RunningSum", int(Aggregate::RunningSum)},
    {u"RunningCount", int(Aggregate::RunningCount)},
};

constexpr Named kSpecials[] = {
    {u"PageNumber", int(Special::PageNumber)},     {u"TotalPages", int(Special::TotalPages)},
    {u"RecordNumber", int(Special::RecordNumber)}, {u"Today", int(Special::Today)},
    {u"TimeOfDay", int(Special::TimeOfDay)},
};

std::optional<Operator> comparisonOf(TokenKind kind)
{
    switch (kind) {
    case TokenKind::Equal:
        return Operator::Equal;
    case TokenKind::NotEqual:
        return Operator::NotEqual;
    case TokenKind::Less:
        return Operator::Less;
    case TokenKind::LessEqual:
        return Operator::LessEqual;
    case TokenKind::Greater:
        return Operator::Greater;
    case TokenKind::GreaterEqual:
        return Operator::GreaterEqual;
    default:
        return {};
    }
}

QString unquoted(QStringView literal)
{
    const QChar quote = literal.front();
    QString text = literal.sliced(1).chopped(1).toString();
    text.replace(QString(2, quote), QString(quote));
    return text;
}

class Parser
{
public:
    explicit Parser(QStringView text) : m_lexer(text), m_token(m_lexer.next()) {}

    ExprPtr whole()
    {
        ExprPtr expr = expression();
        if (!at(TokenKind::End))
            raiseUnexpected();
        return expr;
    }

private:
    class Nesting
    {
    public:
        explicit Nesting(Parser &parser) : m_parser(parser)
        {
            if (++parser.m_nesting > kMaxNesting)
                raiseAt(parser.m_token.position, u"uttrykket er for innviklet"_s);
        }
        ~Nesting() { --m_parser.m_nesting; }
        Nesting(const Nesting &) = delete;
        Nesting &operator=(const Nesting &) = delete;

    private:
        Parser &m_parser;
    };

    [[nodiscard]] bool at(TokenKind kind) const { return m_token.kind == kind; }
    [[nodiscard]] bool atWord(QStringView word) const
    {
        return at(TokenKind::Word) && m_token.text.compare(word, Qt::CaseInsensitive) == 0;
    }
    void advance() { m_token = m_lexer.next(); }
    bool accept(TokenKind kind)
    {
        const bool there = at(kind);
        if (there)
            advance();
        return there;
    }
    bool acceptWord(QStringView word)
    {
        const bool there = atWord(word);
        if (there)
            advance();
        return there;
    }
    void expect(TokenKind kind)
    {
        if (!accept(kind))
            raiseUnexpected();
    }
    void expectWord(QStringView word)
    {
        if (!acceptWord(word))
            raiseAt(m_token.position, u"her mangler «%1»"_s.arg(word));
    }
    [[noreturn]] void raiseUnexpected() const
    {
        if (at(TokenKind::End))
            raiseAt(m_token.position, u"uttrykket slutter for tidlig"_s);
        raiseAt(m_token.position, u"«%1» hører ikke hjemme her"_s.arg(m_token.text));
    }

    static ExprPtr node(ExprKind kind, int position)
    {
        ExprPtr expr(std::make_unique<Expr>());
        expr->kind = kind;
        expr->position = position;
        return expr;
    }

    static void add(Expr &parent, ExprPtr argument)
    {
        parent.depth = std::max(parent.depth, argument->depth + 1);
        if (parent.depth > kMaxDepth)
            raiseAt(parent.position, u"uttrykket er for innviklet"_s);
        parent.arguments.push_back(std::move(argument));
    }

    static ExprPtr binary(Operator op, int position, ExprPtr left, ExprPtr right)
    {
        ExprPtr expr = node(ExprKind::Binary, position);
        expr->op = op;
        add(*expr, std::move(left));
        add(*expr, std::move(right));
        return expr;
    }

    ExprPtr expression()
    {
        const Nesting nesting(*this);
        if (!atWord(u"if"))
            return disjunction();
        ExprPtr choice = node(ExprKind::If, m_token.position);
        advance();
        add(*choice, expression());
        expectWord(u"then");
        add(*choice, expression());
        if (acceptWord(u"else"))
            add(*choice, expression());
        return choice;
    }

    ExprPtr disjunction()
    {
        ExprPtr left = conjunction();
        for (int position = m_token.position; acceptWord(u"or"); position = m_token.position)
            left = binary(Operator::Or, position, std::move(left), conjunction());
        return left;
    }

    ExprPtr conjunction()
    {
        ExprPtr left = negation();
        for (int position = m_token.position; acceptWord(u"and"); position = m_token.position)
            left = binary(Operator::And, position, std::move(left), negation());
        return left;
    }

    ExprPtr negation()
    {
        const int position = m_token.position;
        if (!acceptWord(u"not"))
            return comparison();
        const Nesting nesting(*this);
        ExprPtr expr = node(ExprKind::Not, position);
        add(*expr, negation());
        return expr;
    }

    ExprPtr comparison()
    {
        ExprPtr left = join();
        const int position = m_token.position;
        if (const auto op = comparisonOf(m_token.kind)) {
            advance();
            return binary(*op, position, std::move(left), join());
        }
        if (!acceptWord(u"in"))
            return left;
        return at(TokenKind::LeftBracket) ? list(position, std::move(left))
                                          : range(position, std::move(left));
    }

    ExprPtr range(int position, ExprPtr operand)
    {
        ExprPtr expr = node(ExprKind::Range, position);
        add(*expr, std::move(operand));
        add(*expr, join());
        expectWord(u"to");
        add(*expr, join());
        return expr;
    }

    ExprPtr list(int position, ExprPtr operand)
    {
        ExprPtr expr = node(ExprKind::List, position);
        add(*expr, std::move(operand));
        do {
            advance();
            add(*expr, join());
        } while (at(TokenKind::Comma));
        expect(TokenKind::RightBracket);
        return expr;
    }

    ExprPtr join()
    {
        ExprPtr left = sum();
        for (int position = m_token.position; accept(TokenKind::Ampersand);
             position = m_token.position)
            left = binary(Operator::Join, position, std::move(left), sum());
        return left;
    }

    ExprPtr sum()
    {
        ExprPtr left = product();
        while (at(TokenKind::Plus) || at(TokenKind::Minus)) {
            const Operator op = at(TokenKind::Plus) ? Operator::Add : Operator::Subtract;
            const int position = m_token.position;
            advance();
            left = binary(op, position, std::move(left), product());
        }
        return left;
    }

    ExprPtr product()
    {
        ExprPtr left = sign();
        while (at(TokenKind::Star) || at(TokenKind::Slash) || atWord(u"mod")) {
            Operator op = Operator::Modulo;
            if (!at(TokenKind::Word))
                op = at(TokenKind::Star) ? Operator::Multiply : Operator::Divide;
            const int position = m_token.position;
            advance();
            left = binary(op, position, std::move(left), sign());
        }
        return left;
    }

    ExprPtr sign()
    {
        const int position = m_token.position;
        if (!accept(TokenKind::Minus))
            return primary();
        const Nesting nesting(*this);
        ExprPtr expr = node(ExprKind::Negate, position);
        add(*expr, sign());
        return expr;
    }

    ExprPtr primary()
    {
        const Token token = m_token;
        switch (token.kind) {
        case TokenKind::Number:
            advance();
            return constant(token, number(token));
        case TokenKind::Text:
            advance();
            return constant(token, Value(unquoted(token.text)));
        case TokenKind::Field:
        case TokenKind::FormulaName: {
            advance();
            const bool field = token.kind == TokenKind::Field;
            ExprPtr expr = node(field ? ExprKind::Field : ExprKind::FormulaName, token.position);
            expr->name = token.text.toString();
            return expr;
        }
        case TokenKind::LeftParen: {
            advance();
            ExprPtr inner = expression();
            expect(TokenKind::RightParen);
            return inner;
        }
        case TokenKind::Word:
            return word();
        case TokenKind::Error:
            raiseAt(token.position,
                    u"her står «%1», som ikke er begynnelsen på noe helt"_s.arg(token.text));
        default:
            raiseUnexpected();
        }
    }

    static ExprPtr constant(const Token &token, Value value)
    {
        ExprPtr expr = node(ExprKind::Constant, token.position);
        expr->constant = std::move(value);
        return expr;
    }

    static Value number(const Token &token)
    {
        const std::optional<Decimal> decimal = Decimal::read(token.text, u'.');
        if (!decimal || !decimal->fitsDouble())
            raiseAt(token.position, u"tallet er for stort"_s);
        return Value(decimal->toDouble());
    }

    ExprPtr word()
    {
        const Token token = m_token;
        advance();
        if (at(TokenKind::LeftParen))
            return call(token);
        if (const auto special = lookUp<Special>(kSpecials, token.text)) {
            ExprPtr expr = node(ExprKind::Special, token.position);
            expr->special = *special;
            return expr;
        }
        const auto is = [&](QStringView name) {
            return token.text.compare(name, Qt::CaseInsensitive) == 0;
        };
        if (is(u"True") || is(u"False"))
            return constant(token, Value(is(u"True")));
        if (is(u"NewLine"))
            return constant(token, Value(u"\n"_s));
        if (is(u"Null"))
            return constant(token, Value());
        raiseAt(token.position, u"«%1» hører ikke hjemme her"_s.arg(token.text));
    }

    ExprPtr call(const Token &name)
    {
        if (const auto aggregate = lookUp<Aggregate>(kAggregates, name.text))
            return aggregateCall(name, *aggregate);
        const Function *function = findFunction(name.text);
        if (!function)
            raiseAt(name.position, u"«%1» er ingen kjent funksjon"_s.arg(name.text));
        ExprPtr expr = node(ExprKind::Call, name.position);
        expr->function = function;
        advance();
        if (!at(TokenKind::RightParen)) {
            do
                add(*expr, expression());
            while (accept(TokenKind::Comma));
        }
        expect(TokenKind::RightParen);
        if (!takesCount(*function, expr->arguments.size()))
            raiseAt(name.position, u"«%1» har feil antall argumenter"_s.arg(name.text));
        return expr;
    }

    /// A group's name behind a comma, if there is one.
    QString groupName()
    {
        if (!accept(TokenKind::Comma))
            return {};
        if (!at(TokenKind::Text))
            raiseAt(m_token.position, u"her skal gruppens navn stå i hermetegn"_s);
        const QString name = unquoted(m_token.text);
        advance();
        return name;
    }

    /// Name(expression[, 'group'[, 'group']]); the counts may do without the expression.
    ExprPtr aggregateCall(const Token &name, Aggregate aggregate)
    {
        ExprPtr expr = node(ExprKind::Aggregate, name.position);
        expr->aggregate = aggregate;
        advance();
        const bool counts = aggregate == Aggregate::Count || aggregate == Aggregate::RunningCount;
        if (!(counts && at(TokenKind::RightParen))) {
            add(*expr, expression());
            expr->name = groupName();
            expr->once = groupName();
        }
        expect(TokenKind::RightParen);
        return expr;
    }

    FormulaLexer m_lexer;
    Token m_token;
    int m_nesting = 0;
};

} // namespace

ExprPtr parseFormula(QStringView text)
{
    return Parser(text).whole();
}

void raiseAt(int position, const QString &why)
{
    raise(errors::kFormula, u"Feil i formel ved tegn %1: %2"_s.arg(position + 1).arg(why));
}

Type typeOf(DataType column)
{
    switch (column) {
    case DataType::Empty:
        return Type::Null;
    case DataType::SmallInt:
    case DataType::Integer:
    case DataType::Single:
    case DataType::Double:
        return Type::Number;
    case DataType::Currency:
        return Type::Money;
    case DataType::Date:
        return Type::Date;
    case DataType::Boolean:
        return Type::Truth;
    case DataType::VarWChar:
        return Type::Text;
    case DataType::LongVarBinary:
        break;
    }
    return Type::Bytes;
}

QString nameOf(Type type)
{
    switch (type) {
    case Type::Null:
        return u"ingenting"_s;
    case Type::Number:
        return u"tall"_s;
    case Type::Money:
        return u"beløp"_s;
    case Type::Text:
        return u"tekst"_s;
    case Type::Date:
        return u"dato"_s;
    case Type::Truth:
        return u"ja/nei"_s;
    case Type::Bytes:
        break;
    }
    return u"bytes"_s;
}

} // namespace report
