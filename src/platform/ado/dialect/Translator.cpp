#include "platform/ado/dialect/Translator.h"

#include "platform/ado/dialect/DefinitionTranslator.h"
#include "platform/ado/dialect/Errors.h"
#include "platform/ado/dialect/Parser.h"
#include "platform/ado/dialect/SelectTranslator.h"

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace ado::dialect {

namespace {

/// Translates a statement that changes the rows of one table.
class ChangeTranslator
{
public:
    ChangeTranslator(const std::vector<Token> &tokens, const Catalog &catalog, const Writer &writer)
        : m_tokens(tokens), m_catalog(catalog), m_writer(writer), m_binder(tokens, m_sources),
          m_emitter(tokens, m_sources, writer, m_translation.parameters)
    {
    }

    Translation translate(const Insert &insert)
    {
        const TableInfo &table = requireTable(insert.table);
        const std::vector<const ColumnInfo *> columns = insertedColumns(insert, table);
        bool numberGiven = false;
        if (columns.size() != insert.values.size())
            raiseSyntax(
                tokenOf(insert.table),
                u"det er %1 felt og %2 verdier"_s.arg(columns.size()).arg(insert.values.size()));
        QByteArray names;
        QByteArray values;
        for (size_t i = 0; i < columns.size(); ++i) {
            Expr &value = *insert.values[i];
            m_binder.bindPlain(value);
            const char *const separator = i == 0 ? "" : ", ";
            names += separator + Writer::name(columns[i]->name);
            const bool next = columns[i]->counter && value.kind == ExprKind::Null;
            numberGiven = numberGiven || (columns[i]->counter && !next);
            values +=
                separator + (next ? m_writer.nextNumber() : m_emitter.assigned(value, *columns[i]));
        }
        return finish(StatementKind::Insert, "INSERT INTO " + Writer::name(table.name) + " (" +
                                                 names + ") VALUES (" + values + ')' +
                                                 counterResult(table, numberGiven));
    }

    Translation translate(const Update &update)
    {
        const TableInfo &table = requireTable(update.table);
        m_sources.push_back({table.name, &table});
        std::vector<const ColumnInfo *> columns;
        QByteArray sql = "UPDATE " + Writer::name(table.name);
        for (const Assignment &assignment : update.assignments) {
            const ColumnInfo *column = addColumn(columns, assignment.column, table);
            m_binder.bindPlain(*assignment.value);
            sql += columns.size() == 1 ? " SET " : ", ";
            sql +=
                Writer::name(column->name) + " = " + m_emitter.assigned(*assignment.value, *column);
        }
        return finish(StatementKind::Update, sql + where(update.where));
    }

    Translation translate(const Delete &remove)
    {
        const TableInfo &table = requireTable(remove.table);
        m_sources.push_back({table.name, &table});
        return finish(StatementKind::Delete,
                      "DELETE FROM " + Writer::name(table.name) + where(remove.where));
    }

private:
    const Token &tokenOf(const Name &name) const { return m_tokens[size_t(name.token)]; }

    const TableInfo &requireTable(const Name &name) const
    {
        const TableInfo *table = m_catalog.table(name.text);
        if (!table)
            raiseNoSuchTable(name.text, tokenOf(name));
        return *table;
    }

    std::vector<const ColumnInfo *> insertedColumns(const Insert &insert,
                                                    const TableInfo &table) const
    {
        std::vector<const ColumnInfo *> columns;
        for (const Name &name : insert.columns)
            addColumn(columns, name, table);
        if (insert.columns.empty()) {
            for (const ColumnInfo &column : table.columns)
                columns.push_back(&column);
        }
        return columns;
    }

    const ColumnInfo *addColumn(std::vector<const ColumnInfo *> &columns, const Name &name,
                                const TableInfo &table) const
    {
        const ColumnInfo *column = table.column(name.text);
        if (!column)
            raiseNoSuchColumn(name.text, tokenOf(name));
        if (std::find(columns.begin(), columns.end(), column) != columns.end())
            raiseSyntax(tokenOf(name), u"feltet «%1» står to ganger"_s.arg(name.text));
        columns.push_back(column);
        return column;
    }

    QByteArray counterResult(const TableInfo &table, bool given) const
    {
        for (const ColumnInfo &column : table.columns) {
            if (column.counter)
                return m_writer.counterResult(table.name, column.name, given);
        }
        return {};
    }

    QByteArray where(const ExprPtr &condition)
    {
        if (!condition)
            return {};
        m_binder.bindCondition(*condition);
        return " WHERE " + m_emitter.condition(*condition);
    }

    Translation finish(StatementKind kind, QByteArray sql)
    {
        m_translation.kind = kind;
        m_translation.sql = std::move(sql);
        return std::move(m_translation);
    }

    const std::vector<Token> &m_tokens;
    const Catalog &m_catalog;
    const Writer &m_writer;
    std::vector<Source> m_sources;
    Translation m_translation;
    Binder m_binder;
    Emitter m_emitter;
};

struct Dispatch
{
    const std::vector<Token> &tokens;
    const Catalog &catalog;
    const Writer &writer;

    Translation operator()(Select &query) const
    {
        return SelectTranslator(tokens, catalog, writer).translate(query);
    }
    Translation operator()(IdentityQuery) const
    {
        Translation translation;
        translation.kind = StatementKind::Identity;
        translation.sql = writer.identityQuery();
        translation.columns.push_back({u"@@IDENTITY"_s, DataType::Integer, 0, false, {}});
        return translation;
    }
    Translation operator()(const Insert &insert) const { return change(insert); }
    Translation operator()(const Update &update) const { return change(update); }
    Translation operator()(const Delete &remove) const { return change(remove); }
    template<class Definition>
    Translation operator()(const Definition &definition) const
    {
        return translateDefinition(definition, tokens, catalog, writer);
    }

private:
    template<class Change>
    Translation change(const Change &statement) const
    {
        return ChangeTranslator(tokens, catalog, writer).translate(statement);
    }
};

} // namespace

Translation translate(const Lexed &statement, const Catalog &catalog, const Writer &writer)
{
    Statement parsed = parse(statement);
    return std::visit(Dispatch{statement.tokens, catalog, writer}, parsed);
}

} // namespace ado::dialect
