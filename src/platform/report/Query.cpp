#include "platform/report/Query.h"

#include "platform/ado/dialect/Parser.h"
#include "platform/report/ReportError.h"

using namespace Qt::StringLiterals;

namespace report {

namespace {

namespace dialect = ado::dialect;

bool same(QStringView a, QStringView b)
{
    return a.compare(b, Qt::CaseInsensitive) == 0;
}

void collectTables(const dialect::FromItem &item, std::vector<QString> &tables)
{
    if (!item.left) {
        tables.push_back(item.table.alias.toString());
        return;
    }
    collectTables(*item.left, tables);
    collectTables(*item.right, tables);
}

bool isWord(const dialect::Token &token, QStringView word)
{
    return token.kind == dialect::TokenKind::Word && same(token.text, word);
}

} // namespace

Query::Query(const QString &statement) : m_statement(statement)
{
    const dialect::Lexed lexed = dialect::lex(m_statement);
    const dialect::Statement parsed = dialect::parse(lexed);
    const auto *select = std::get_if<dialect::Select>(&parsed);
    if (!select)
        raise(errors::kReportFile, u"Spørringen er ingen SELECT fra tabeller."_s);
    for (const dialect::SelectItem &item : select->items) {
        const bool field = item.expr && item.expr->kind == dialect::ExprKind::Column;
        if (!field && item.alias.isEmpty())
            raise(errors::kReportFile, u"En kolonne i spørringen har ikke noe navn."_s);
        Column column;
        column.alias = item.alias.toString();
        if (field) {
            column.table = item.expr->qualifier.toString();
            column.name = item.expr->name.toString();
        }
        m_columns.push_back(std::move(column));
    }
    for (const auto &item : select->from)
        collectTables(*item, m_tables);
    findCondition(lexed.tokens);
}

/// A condition stands outside all parentheses, so what ends it does too.
void Query::findCondition(const std::vector<dialect::Token> &tokens)
{
    int parentheses = 0;
    for (const dialect::Token &token : tokens) {
        if (token.kind == dialect::TokenKind::LeftParen)
            ++parentheses;
        else if (token.kind == dialect::TokenKind::RightParen)
            --parentheses;
        if (parentheses > 0)
            continue;
        if (isWord(token, u"WHERE")) {
            m_hasCondition = true;
            m_conditionStart = token.position + token.text.size();
        } else if (isWord(token, u"GROUP") || isWord(token, u"HAVING") || isWord(token, u"ORDER") ||
                   token.kind == dialect::TokenKind::Semicolon ||
                   token.kind == dialect::TokenKind::End) {
            m_conditionEnd = token.position;
            break;
        }
    }
}

int Query::column(QStringView name) const
{
    const qsizetype dot = name.indexOf(u'.');
    const QStringView table = dot < 0 ? QStringView() : name.first(dot).trimmed();
    const QStringView field = dot < 0 ? name : name.sliced(dot + 1).trimmed();
    int found = -1;
    for (int i = 0; i < columnCount(); ++i) {
        const Column &column = m_columns[size_t(i)];
        const bool meant = dot < 0
                               ? same(field, column.alias.isEmpty() ? column.name : column.alias)
                               : same(table, column.table) && same(field, column.name);
        if (!meant)
            continue;
        if (found >= 0)
            return dot < 0 ? -1 : found;
        found = i;
    }
    return found;
}

bool Query::readsTable(QStringView name) const
{
    for (const QString &table : m_tables) {
        if (same(table, name))
            return true;
    }
    return false;
}

QString Query::limitedBy(const QString &condition) const
{
    if (condition.isEmpty())
        return m_statement;
    const QString rest = m_statement.sliced(m_conditionEnd);
    if (!m_hasCondition)
        return m_statement.first(m_conditionEnd).trimmed() + " WHERE "_L1 + condition + u' ' + rest;
    const QString own =
        m_statement.sliced(m_conditionStart, m_conditionEnd - m_conditionStart).trimmed();
    return m_statement.first(m_conditionStart) + " ("_L1 + own + ") AND ("_L1 + condition +
           ") "_L1 + rest;
}

} // namespace report
