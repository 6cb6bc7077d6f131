#include "platform/ado/dialect/SelectTranslator.h"

#include "platform/ado/dialect/Errors.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace ado::dialect {

namespace {

constexpr int kFirstComputed = 1000; // computed columns without alias are Expr1000, Expr1001 …

/// The name that a result column carries; empty for a computed one without alias.
QStringView resultName(const SelectItem &item)
{
    if (!item.alias.isEmpty())
        return item.alias;
    return item.expr->column ? QStringView(item.expr->column->name) : QStringView();
}

// Some databases look for a sum in the result only, before they know what the query is.
[[noreturn]] void raiseNotSummed(const Token &at)
{
    raiseSyntax(at, u"det trengs GROUP BY eller en sumfunksjon i resultatet"_s);
}

/// Whether the condition is never true where the columns of the table known as `alias` are Null: a
/// part of it compares one of them with a literal.
bool excludesNulls(const Expr &condition, QStringView alias)
{
    const auto &arguments = condition.arguments;
    if (condition.kind == ExprKind::And)
        return std::any_of(arguments.begin(), arguments.end(),
                           [alias](const ExprPtr &part) { return excludesNulls(*part, alias); });
    return condition.kind == ExprKind::Compare && arguments[0]->kind == ExprKind::Column &&
           arguments[0]->qualifier.compare(alias, Qt::CaseInsensitive) == 0 &&
           arguments[1]->kind == ExprKind::Literal;
}

} // namespace

SelectTranslator::SelectTranslator(const std::vector<Token> &tokens, const Catalog &catalog,
                                   const Writer &writer)
    : m_tokens(tokens), m_catalog(catalog), m_writer(writer), m_binder(tokens, m_sources),
      m_emitter(tokens, m_sources, writer, m_translation.parameters)
{
}

// In one piece: a step for each clause, in the statement's order.
Translation SelectTranslator::translate(Select &query)
{
    m_translation.kind = StatementKind::Select;
    m_where = query.where.get();
    QByteArray tables;
    for (const std::unique_ptr<FromItem> &item : query.from)
        tables += (tables.isEmpty() ? "" : ", ") + from(*item, !tables.isEmpty());
    expandStars(query);
    bindAll(query);
    const bool grouped = !query.groupBy.empty() || query.having || m_binder.hasAggregate();
    if (grouped)
        checkGrouping(query);
    describe(query, !grouped && !query.distinct);

    QByteArray &sql = m_translation.sql;
    sql = query.distinct ? "SELECT DISTINCT " : "SELECT ";
    sql += itemList(query) + " FROM " + tables;
    if (query.where)
        sql += " WHERE " + m_emitter.condition(*query.where);
    QByteArrayList groups;
    for (const ExprPtr &group : query.groupBy) {
        const QByteArray operand = m_emitter.operand(*group);
        groups += group->type == DataType::VarWChar ? m_writer.collated(operand) : operand;
    }
    if (!groups.isEmpty())
        sql += " GROUP BY " + groups.join(", ");
    if (query.having)
        sql += " HAVING " + m_emitter.condition(*query.having);
    QByteArrayList order = orderList(query);
    for (const QByteArray &item : orderUnasked(query, grouped, std::move(groups))) {
        if (!order.contains(item))
            order += item;
    }
    if (!order.isEmpty())
        sql += " ORDER BY " + order.join(", ");
    return std::move(m_translation);
}

// Databases read a chain of joins from the left as the dialect does, so only a join on the right of
// another, or behind a comma, keeps its parentheses.
QByteArray SelectTranslator::from(FromItem &item, bool grouped)
{
    if (!item.left)
        return tableSource(item);
    const size_t first = m_sources.size();
    const QByteArray left = from(*item.left, false);
    const QByteArray right = from(*item.right, true);
    m_firstMayBeNull = m_firstMayBeNull || item.join == JoinKind::Right;
    m_binder.bindCondition(*item.on, first);
    const QByteArray join = this->join(item);
    const QByteArray sql = left + join + right + " ON " + m_emitter.condition(*item.on);
    return grouped ? '(' + sql + ')' : sql;
}

/// What stands between the two sides, which are bound. Marks what is looked up.
QByteArray SelectTranslator::join(const FromItem &item)
{
    if (item.join == JoinKind::Right)
        return " RIGHT JOIN ";
    if (Expr *lookup = item.right->left ? nullptr : findLookups(*item.on)) {
        const Source &joined = m_sources.back();
        if (item.join == JoinKind::Inner || (m_where && excludesNulls(*m_where, joined.alias))) {
            lookup->lookup = LookupUse::Joined;
            return m_writer.lookupJoin(joined.alias, joined.table->name,
                                       lookup->arguments[1]->column->name);
        }
    }
    return item.join == JoinKind::Inner ? " INNER JOIN " : " LEFT JOIN ";
}

/// Marks what in the condition of a join, of which the table named last is the right side, asks for
/// that table's rows with a certain text. The first such part, or nullptr.
Expr *SelectTranslator::findLookups(Expr &condition)
{
    if (condition.kind == ExprKind::And) {
        Expr *first = nullptr;
        for (const ExprPtr &part : condition.arguments) {
            Expr *lookup = findLookups(*part);
            first = first ? first : lookup;
        }
        return first;
    }
    if (condition.kind != ExprKind::Compare || m_binder.tokenOf(condition).kind != TokenKind::Equal)
        return nullptr;
    const int joined = int(m_sources.size()) - 1;
    const TableInfo &table = *m_sources.back().table;
    ExprPtr &left = condition.arguments[0];
    ExprPtr &right = condition.arguments[1];
    const auto isText = [](const Expr &expr) { return expr.column && expr.column->textOnly; };
    if (!table.hasLookups || !isText(*left) || !isText(*right) ||
        (left->source == joined) == (right->source == joined))
        return nullptr;
    if (left->source == joined)
        left.swap(right);
    condition.lookup = LookupUse::Asked;
    m_translation.lookups.push_back({table.name, right->column->name});
    return &condition;
}

QByteArray SelectTranslator::tableSource(const FromItem &item)
{
    const Name &name = item.table.table;
    const Token &token = m_tokens[size_t(name.token)];
    const TableInfo *table = m_catalog.table(name.text);
    if (!table)
        raiseNoSuchTable(name.text, token);
    const bool renamed = item.table.alias.compare(table->name, Qt::CaseInsensitive) != 0;
    const QStringView alias = renamed ? item.table.alias : QStringView(table->name);
    for (const Source &source : m_sources) {
        if (alias.compare(source.alias, Qt::CaseInsensitive) == 0)
            raiseSyntax(token, u"«%1» står to ganger blant tabellene"_s.arg(alias));
    }
    m_sources.push_back({alias, table});
    const QByteArray sql = Writer::name(table->name);
    return renamed ? sql + " AS " + Writer::name(alias) : sql;
}

void SelectTranslator::expandStars(Select &query) const
{
    std::vector<SelectItem> items;
    for (SelectItem &item : query.items) {
        if (item.expr) {
            items.push_back(std::move(item));
            continue;
        }
        const Name &wanted = item.qualifier;
        bool found = false;
        for (size_t i = 0; i < m_sources.size(); ++i) {
            if (!wanted.text.isEmpty() &&
                wanted.text.compare(m_sources[i].alias, Qt::CaseInsensitive) != 0)
                continue;
            found = true;
            appendColumnsOf(items, i, wanted.token);
        }
        if (!found)
            raiseNoSuchTable(wanted.text, m_tokens[size_t(wanted.token)]);
    }
    query.items = std::move(items);
}

void SelectTranslator::appendColumnsOf(std::vector<SelectItem> &items, size_t source,
                                       int token) const
{
    for (const ColumnInfo &column : m_sources[source].table->columns) {
        SelectItem item;
        item.expr = std::make_unique<Expr>();
        item.expr->kind = ExprKind::Column;
        item.expr->token = token;
        item.expr->qualifier = m_sources[source].alias;
        item.expr->name = column.name;
        items.push_back(std::move(item));
    }
}

void SelectTranslator::bindAll(Select &query)
{
    if (query.where)
        m_binder.bindCondition(*query.where);
    for (const SelectItem &item : query.items) {
        m_binder.bindResult(*item.expr);
        if (query.distinct)
            m_binder.requireComparable(*item.expr);
    }
    for (const ExprPtr &group : query.groupBy) {
        m_binder.bindPlain(*group);
        m_binder.requireComparable(*group);
        // A database may take a constant there for the number of a result column.
        if (!dependsOnRows(*group))
            raiseSyntax(m_binder.tokenOf(*group));
    }
    const bool summed = !query.groupBy.empty() || m_binder.hasAggregate();
    if (query.having) {
        m_binder.bindResult(*query.having);
        m_binder.requireCondition(*query.having);
        if (!summed)
            raiseNotSummed(m_binder.tokenOf(*query.having));
    }
    bindOrder(query);
    if (!summed && m_binder.hasAggregate())
        raiseNotSummed(m_binder.tokenOf(*query.orderBy.front().expr));
}

void SelectTranslator::bindOrder(Select &query)
{
    for (const OrderItem &item : query.orderBy) {
        Expr &expr = *item.expr;
        // The name of a result column comes before that of a table's column.
        if (resultNumber(expr, query) > 0)
            continue;
        m_binder.bindResult(expr);
        m_binder.requireComparable(expr);
        if (!dependsOnRows(expr))
            raiseSyntax(m_binder.tokenOf(expr));
        if (query.distinct && resultNumber(expr, query) == 0)
            raiseSyntax(m_binder.tokenOf(expr),
                        u"med DISTINCT kan det bare sorteres etter felt i resultatet"_s);
    }
}

/// The number, from 1, of the result column that an item of ORDER BY means; 0 for none.
int SelectTranslator::resultNumber(const Expr &expr, const Select &query) const
{
    const bool bound = expr.column || expr.type != DataType::Empty;
    const bool mayBeName = expr.kind == ExprKind::Column && expr.qualifier.isEmpty();
    const Expr *named = nullptr;
    int number = 0;
    for (size_t i = 0; i < query.items.size(); ++i) {
        const SelectItem &item = query.items[i];
        if (bound) {
            if (isSame(expr, *item.expr, m_tokens))
                return int(i) + 1;
        } else if (mayBeName && expr.name.compare(resultName(item), Qt::CaseInsensitive) == 0) {
            if (named && !isSame(*named, *item.expr, m_tokens))
                return 0; // left to the tables to tell
            if (!named)
                number = int(i) + 1;
            named = item.expr.get();
        }
    }
    if (named)
        m_binder.requireComparable(*named);
    return number;
}

const Expr &SelectTranslator::meantBy(const OrderItem &item, const Select &query) const
{
    const int number = resultNumber(*item.expr, query);
    return number > 0 ? *query.items[size_t(number) - 1].expr : *item.expr;
}

void SelectTranslator::checkGrouping(const Select &query) const
{
    for (const SelectItem &item : query.items)
        m_binder.requireGrouped(*item.expr, query.groupBy);
    if (query.having)
        m_binder.requireGrouped(*query.having, query.groupBy);
    for (const OrderItem &item : query.orderBy) {
        if (resultNumber(*item.expr, query) == 0)
            m_binder.requireGrouped(*item.expr, query.groupBy);
    }
}

void SelectTranslator::describe(const Select &query, bool updatable)
{
    int computed = kFirstComputed;
    for (const SelectItem &item : query.items) {
        const Expr &expr = *item.expr;
        ResultColumn result;
        result.name = resultName(item).toString();
        if (result.name.isEmpty())
            result.name = u"Expr%1"_s.arg(computed++);
        result.type = expr.type == DataType::Empty ? DataType::VarWChar : expr.type;
        if (expr.column) {
            result.width = expr.column->width;
            result.key = expr.column->key;
            result.baseColumn = expr.column->name;
        } else if (expr.kind == ExprKind::Aggregate && expr.type == DataType::VarWChar &&
                   expr.arguments.front()->column) {
            result.width = expr.arguments.front()->column->width;
        }
        m_translation.columns.push_back(std::move(result));
    }
    if (updatable && m_sources.size() == 1)
        m_translation.baseTable = m_sources.front().table->name;
}

QByteArray SelectTranslator::itemList(const Select &query)
{
    QByteArray sql;
    for (const SelectItem &item : query.items) {
        QByteArray operand = m_emitter.operand(*item.expr);
        if (query.distinct && item.expr->type == DataType::VarWChar)
            operand = m_writer.collated(operand);
        if (!sql.isEmpty())
            sql += ", ";
        sql += m_writer.resultItem(operand, item.expr->type);
    }
    return sql;
}

/// How rows come of which the query's own ORDER BY says nothing, or which it leaves equal: as a
/// desktop database gives them, by the key of the table or by the query's groups. No database of
/// ours does so unasked; SQLite walks whatever index its planner likes.
QByteArrayList SelectTranslator::orderUnasked(const Select &query, bool grouped,
                                              QByteArrayList groups) const
{
    if (query.distinct)
        return resultOrder(query);
    return grouped ? groupOrder(std::move(groups)) : keyOrder(query);
}

/// By the keys of the tables, the last of several left out, spelled so that an index gives the
/// order. One that is read backwards gives equal numbers with their keys backwards, and so they
/// come; an index of texts there is on no file.
QByteArrayList SelectTranslator::keyOrder(const Select &query) const
{
    const OrderItem *last = query.orderBy.empty() ? nullptr : &query.orderBy.back();
    const bool descending =
        last && last->descending && meantBy(*last, query).type != DataType::VarWChar;
    const size_t tables = std::max<size_t>(m_sources.size() - 1, 1);
    QByteArrayList order;
    for (size_t i = 0; i < tables; ++i) {
        const Source &source = m_sources[i];
        const qsizetype before = order.size();
        for (const ColumnInfo &column : source.table->columns) {
            if (!column.key)
                continue;
            QByteArray key = m_writer.column(source.alias, column.name, column.type);
            if (column.type == DataType::VarWChar)
                key = m_writer.collated(key);
            order += descending || m_firstMayBeNull ? m_writer.orderItem(key, descending) : key;
        }
        if (order.size() == before)
            break; // behind a table without a key no order would hold
    }
    return order;
}

QByteArrayList SelectTranslator::resultOrder(const Select &query) const
{
    QByteArrayList numbers;
    for (const SelectItem &item : query.items) {
        const QByteArray number = QByteArray::number(int(numbers.size()) + 1);
        numbers += item.expr->type == DataType::VarWChar ? m_writer.collated(number) : number;
    }
    return groupOrder(std::move(numbers));
}

QByteArrayList SelectTranslator::groupOrder(QByteArrayList groups) const
{
    for (QByteArray &group : groups)
        group = m_writer.orderItem(group, false);
    return groups;
}

QByteArrayList SelectTranslator::orderList(const Select &query)
{
    QByteArrayList order;
    for (const OrderItem &item : query.orderBy) {
        const int number = resultNumber(*item.expr, query);
        QByteArray operand =
            number > 0 ? QByteArray::number(number) : m_emitter.operand(*item.expr);
        if (meantBy(item, query).type == DataType::VarWChar)
            operand = m_writer.collated(operand);
        order += m_writer.orderItem(operand, item.descending);
    }
    return order;
}

} // namespace ado::dialect
