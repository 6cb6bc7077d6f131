#include "platform/ado/dialect/IndexTranslator.h"

#include "platform/ado/dialect/Emitter.h"
#include "platform/ado/dialect/Errors.h"
#include "platform/ado/dialect/ExpressionParser.h"

namespace ado::dialect {

namespace {

struct Item
{
    QByteArray sql;
    DataType type;
};

Item itemOf(QStringView item, const TableInfo &table, const Writer &writer)
{
    const Lexed lexed = lex(item);
    TokenStream tokens(lexed.tokens);
    const ExprPtr expr = ExpressionParser(tokens).parse();
    const Expr &column = expr->kind == ExprKind::DatePart ? *expr->arguments.front() : *expr;
    if (column.kind != ExprKind::Column || !tokens.at(TokenKind::End))
        raiseSyntax(tokens.peek());
    // A definition names its table's columns by themselves.
    const std::vector<Source> sources{{QStringView(), &table}};
    Binder(lexed.tokens, sources).bindPlain(*expr);
    std::vector<Parameter> none;
    return {Emitter(lexed.tokens, sources, writer, none).operand(*expr), expr->type};
}

} // namespace

QByteArray indexName(const TableInfo &table, QStringView index)
{
    return Writer::name(table.name + u'.' + index.toString());
}

std::optional<Translation> translateIndex(QStringView table, QStringView index,
                                          const QStringList &items, const Catalog &catalog,
                                          const Writer &writer)
{
    const TableInfo *info = catalog.table(table);
    if (!info)
        raiseNoSuchTable(table, {});
    QByteArrayList parts;
    for (const QString &item : items) {
        const auto [sql, type] = itemOf(item, *info, writer);
        if (parts.isEmpty() && type == DataType::VarWChar && info->hasLookups)
            return std::nullopt;
        parts += sql;
    }
    Translation translation;
    translation.kind = StatementKind::AlterTable;
    translation.sql = "CREATE INDEX IF NOT EXISTS " + indexName(*info, index) + " ON " +
                      Writer::name(info->name) + " (" + parts.join(", ") + ')';
    return translation;
}

} // namespace ado::dialect
