#include "platform/ado/dialect/Parser.h"

#include "platform/ado/dialect/DefinitionParser.h"
#include "platform/ado/dialect/Errors.h"
#include "platform/ado/dialect/ExpressionParser.h"
#include "platform/ado/dialect/TokenStream.h"

using namespace Qt::StringLiterals;

namespace ado::dialect {

namespace {

constexpr int kMaxTables = 60; // of one query; bounds the depth of a chain of joins too

class QueryParser
{
public:
    explicit QueryParser(TokenStream &tokens) : m_tokens(tokens), m_expressions(tokens) {}

    Statement select()
    {
        if (m_tokens.accept(TokenKind::Identity))
            return IdentityQuery{};
        Select query;
        query.distinct = m_tokens.acceptWord(u"DISTINCT");
        do
            query.items.push_back(selectItem());
        while (m_tokens.accept(TokenKind::Comma));
        m_tokens.expectWord(u"FROM");
        do
            query.from.push_back(join());
        while (m_tokens.accept(TokenKind::Comma));
        query.where = optionalCondition(u"WHERE");
        if (acceptBy(u"GROUP")) {
            do
                query.groupBy.push_back(m_expressions.parse());
            while (m_tokens.accept(TokenKind::Comma));
        }
        query.having = optionalCondition(u"HAVING");
        if (acceptBy(u"ORDER")) {
            do
                query.orderBy.push_back(orderItem());
            while (m_tokens.accept(TokenKind::Comma));
        }
        return query;
    }

    Statement insert()
    {
        m_tokens.expectWord(u"INTO");
        Insert statement;
        statement.table = m_tokens.expectName();
        if (m_tokens.at(TokenKind::LeftParen))
            statement.columns = m_tokens.expectNameList();
        m_tokens.expectWord(u"VALUES");
        m_tokens.expect(TokenKind::LeftParen);
        do
            statement.values.push_back(m_expressions.parse());
        while (m_tokens.accept(TokenKind::Comma));
        m_tokens.expect(TokenKind::RightParen);
        return statement;
    }

    Statement update()
    {
        Update statement;
        statement.table = m_tokens.expectName();
        m_tokens.expectWord(u"SET");
        do {
            Assignment assignment;
            assignment.column = m_tokens.expectName();
            m_tokens.expect(TokenKind::Equal);
            assignment.value = m_expressions.parse();
            statement.assignments.push_back(std::move(assignment));
        } while (m_tokens.accept(TokenKind::Comma));
        statement.where = optionalCondition(u"WHERE");
        return statement;
    }

    Statement remove()
    {
        m_tokens.expectWord(u"FROM");
        Delete statement;
        statement.table = m_tokens.expectName();
        statement.where = optionalCondition(u"WHERE");
        return statement;
    }

private:
    ExprPtr optionalCondition(QStringView word)
    {
        return m_tokens.acceptWord(word) ? m_expressions.parse() : ExprPtr();
    }

    bool acceptBy(QStringView word)
    {
        if (!m_tokens.acceptWord(word))
            return false;
        m_tokens.expectWord(u"BY");
        return true;
    }

    SelectItem selectItem()
    {
        SelectItem item;
        if (m_tokens.accept(TokenKind::Star))
            return item;
        if (m_tokens.atName() && m_tokens.peek(1).kind == TokenKind::Dot &&
            m_tokens.peek(2).kind == TokenKind::Star) {
            item.qualifier = m_tokens.expectName();
            m_tokens.advance();
            m_tokens.advance();
            return item;
        }
        item.expr = m_expressions.parse();
        if (m_tokens.acceptWord(u"AS"))
            item.alias = m_tokens.expectName().text;
        return item;
    }

    OrderItem orderItem()
    {
        OrderItem item;
        item.expr = m_expressions.parse();
        item.descending = m_tokens.acceptWord(u"DESC");
        if (!item.descending)
            m_tokens.acceptWord(u"ASC");
        return item;
    }

    std::unique_ptr<FromItem> join()
    {
        std::unique_ptr<FromItem> left = tableOrGroup();
        for (;;) {
            JoinKind kind = JoinKind::Inner;
            if (m_tokens.acceptWord(u"INNER")) {
                m_tokens.expectWord(u"JOIN");
            } else if (m_tokens.atWord(u"LEFT") || m_tokens.atWord(u"RIGHT")) {
                kind = m_tokens.atWord(u"LEFT") ? JoinKind::Left : JoinKind::Right;
                m_tokens.advance();
                m_tokens.acceptWord(u"OUTER");
                m_tokens.expectWord(u"JOIN");
            } else {
                return left;
            }
            auto joined = std::make_unique<FromItem>();
            joined->join = kind;
            joined->left = std::move(left);
            joined->right = tableOrGroup();
            m_tokens.expectWord(u"ON");
            joined->on = m_expressions.parse();
            left = std::move(joined);
        }
    }

    std::unique_ptr<FromItem> tableOrGroup()
    {
        const Token &start = m_tokens.peek();
        if (m_tokens.accept(TokenKind::LeftParen)) {
            if (++m_groups > kMaxTables)
                raiseSyntax(start, u"for mange parenteser"_s);
            std::unique_ptr<FromItem> inner = join();
            m_tokens.expect(TokenKind::RightParen);
            return inner;
        }
        auto item = std::make_unique<FromItem>();
        item->table.table = m_tokens.expectName();
        item->table.alias = item->table.table.text;
        if (m_tokens.acceptWord(u"AS") || m_tokens.atName())
            item->table.alias = m_tokens.expectName().text;
        if (++m_tables > kMaxTables)
            raiseSyntax(start, u"for mange tabeller"_s);
        return item;
    }

    TokenStream &m_tokens;
    ExpressionParser m_expressions;
    int m_tables = 0;
    int m_groups = 0;
};

Statement parseStatement(TokenStream &tokens)
{
    QueryParser queries(tokens);
    if (tokens.acceptWord(u"SELECT"))
        return queries.select();
    if (tokens.acceptWord(u"INSERT"))
        return queries.insert();
    if (tokens.acceptWord(u"UPDATE"))
        return queries.update();
    if (tokens.acceptWord(u"DELETE"))
        return queries.remove();
    if (tokens.acceptWord(u"CREATE"))
        return parseCreate(tokens);
    if (tokens.acceptWord(u"ALTER"))
        return parseAlter(tokens);
    if (tokens.acceptWord(u"DROP"))
        return parseDrop(tokens);
    raiseSyntax(tokens.peek());
}

} // namespace

Statement parse(const Lexed &statement)
{
    TokenStream tokens(statement.tokens);
    Statement result = parseStatement(tokens);
    tokens.accept(TokenKind::Semicolon);
    if (!tokens.at(TokenKind::End))
        raiseSyntax(tokens.peek());
    return result;
}

} // namespace ado::dialect
