#include "platform/ado/dialect/DefinitionTranslator.h"

#include "platform/ado/dialect/Errors.h"
#include "platform/ado/dialect/Writer.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace ado::dialect {

namespace {

const Token &tokenOf(const Name &name, const std::vector<Token> &tokens)
{
    return tokens[size_t(name.token)];
}

const TableInfo &requireTable(const Name &name, const std::vector<Token> &tokens,
                              const Catalog &catalog)
{
    const TableInfo *table = catalog.table(name.text);
    if (!table)
        raiseNoSuchTable(name.text, tokenOf(name, tokens));
    return *table;
}

QByteArray nameList(const std::vector<QString> &names)
{
    QByteArray sql;
    for (const QString &name : names)
        sql += (sql.isEmpty() ? "" : ", ") + Writer::name(name);
    return '(' + sql + ')';
}

/// Turns one CREATE TABLE into a definition with its columns first and all constraints behind them.
class TableDefinition
{
public:
    TableDefinition(const CreateTable &create, const std::vector<Token> &tokens,
                    const Catalog &catalog, const Writer &writer)
        : m_create(create), m_tokens(tokens), m_catalog(catalog), m_writer(writer)
    {
        m_info.name = create.table.text.toString();
        for (const ColumnDefinition &column : create.columns) {
            if (m_info.column(column.name.text))
                raiseColumnExists(column.name.text);
            m_info.columns.push_back(
                {column.name.text.toString(), column.type, column.width, column.counter, false});
        }
    }

    Translation translate()
    {
        findKey();
        QByteArray body;
        for (const ColumnDefinition &column : m_create.columns)
            append(body, columnClause(column));
        for (const Constraint &constraint : m_create.constraints) {
            if (&constraint != m_key || !m_keyIsCounter)
                append(body, constraintClause(constraint));
        }
        Translation translation;
        translation.kind = StatementKind::CreateTable;
        translation.sql = "CREATE TABLE " + Writer::name(m_info.name) + " (" + body + ')';
        translation.followUps = std::move(m_indexes);
        return translation;
    }

private:
    static void append(QByteArray &list, const QByteArray &item)
    {
        list += (list.isEmpty() ? "" : ", ") + item;
    }

    void findKey()
    {
        for (const Constraint &constraint : m_create.constraints) {
            if (constraint.kind != ConstraintKind::PrimaryKey)
                continue;
            if (m_key)
                raiseSyntax(tokenOf(constraint.columns.front(), m_tokens),
                            u"tabellen har flere primærnøkler"_s);
            m_key = &constraint;
            for (const Name &name : constraint.columns)
                columnOf(name, m_info); // must be there
        }
        for (const ColumnDefinition &column : m_create.columns) {
            if (!column.counter)
                continue;
            m_keyIsCounter = m_key && m_key->columns.size() == 1 && isKey(column);
            if (!m_keyIsCounter)
                raiseSyntax(tokenOf(column.name, m_tokens),
                            u"et tellerfelt må alene være primærnøkkel"_s);
        }
    }

    bool isKey(const ColumnDefinition &column) const
    {
        return m_key &&
               std::any_of(m_key->columns.begin(), m_key->columns.end(), [&](const Name &name) {
                   return name.text.compare(column.name.text, Qt::CaseInsensitive) == 0;
               });
    }

    QByteArray quotedName(const Constraint &constraint) const
    {
        return constraint.name.isEmpty() ? QByteArray()
                                         : m_writer.constraintName(m_info.name, constraint.name);
    }

    QByteArray columnClause(const ColumnDefinition &column) const
    {
        const QByteArray start = Writer::name(column.name.text) + ' ';
        if (column.counter)
            return start + m_writer.counterType(quotedName(*m_key));
        return start + m_writer.columnType(column.name.text, column.type, column.width) +
               (column.notNull || isKey(column) ? " NOT NULL" : "");
    }

    QByteArray constraintClause(const Constraint &constraint)
    {
        const std::vector<QString> columns = columnsOf(constraint.columns, m_info);
        QByteArray sql;
        if (!constraint.name.isEmpty())
            sql = "CONSTRAINT " + quotedName(constraint) + ' ';
        if (constraint.kind == ConstraintKind::PrimaryKey)
            return sql + "PRIMARY KEY " + nameList(columns);
        if (constraint.kind == ConstraintKind::Unique)
            return sql + "UNIQUE " + nameList(columns);
        addIndex(constraint, columns);
        return sql + "FOREIGN KEY " + nameList(columns) + " REFERENCES " + reference(constraint);
    }

    QByteArray reference(const Constraint &constraint) const
    {
        const bool itself = constraint.table.text.compare(m_info.name, Qt::CaseInsensitive) == 0;
        const TableInfo &table =
            itself ? m_info : requireTable(constraint.table, m_tokens, m_catalog);
        std::vector<QString> columns = columnsOf(constraint.referencedColumns, table);
        if (columns.empty() && itself && m_key)
            columns = columnsOf(m_key->columns, table);
        for (const ColumnInfo &column : table.columns) {
            if (constraint.referencedColumns.empty() && column.key)
                columns.push_back(column.name);
        }
        if (columns.size() != constraint.columns.size())
            raiseSyntax(tokenOf(constraint.table, m_tokens),
                        u"nøkkelen det vises til har et annet antall felt"_s);
        return Writer::name(table.name) + ' ' + nameList(columns);
    }

    // Deletes in the other table look for rows by the foreign key, and so do joins.
    void addIndex(const Constraint &constraint, const std::vector<QString> &columns)
    {
        QString index = m_info.name + u'.';
        index += constraint.name;
        if (constraint.name.isEmpty()) {
            for (const QString &column : columns)
                index += column;
        }
        m_indexes.push_back("CREATE INDEX " + Writer::name(index) + " ON " +
                            Writer::name(m_info.name) + ' ' + nameList(columns));
    }

    const ColumnInfo &columnOf(const Name &name, const TableInfo &table) const
    {
        const ColumnInfo *column = table.column(name.text);
        if (!column)
            raiseNoSuchColumn(name.text, tokenOf(name, m_tokens));
        return *column;
    }

    std::vector<QString> columnsOf(const std::vector<Name> &names, const TableInfo &table) const
    {
        std::vector<QString> columns;
        columns.reserve(names.size());
        for (const Name &name : names)
            columns.push_back(columnOf(name, table).name);
        return columns;
    }

    const CreateTable &m_create;
    const std::vector<Token> &m_tokens;
    const Catalog &m_catalog;
    const Writer &m_writer;
    TableInfo m_info;
    const Constraint *m_key = nullptr;
    bool m_keyIsCounter = false;
    std::vector<QByteArray> m_indexes;
};

} // namespace

Translation translateDefinition(const CreateTable &create, const std::vector<Token> &tokens,
                                const Catalog &catalog, const Writer &writer)
{
    if (catalog.table(create.table.text))
        raiseTableExists(create.table.text);
    return TableDefinition(create, tokens, catalog, writer).translate();
}

Translation translateDefinition(const AddColumn &add, const std::vector<Token> &tokens,
                                const Catalog &catalog, const Writer &writer)
{
    const TableInfo &table = requireTable(add.table, tokens, catalog);
    const ColumnDefinition &column = add.column;
    if (table.column(column.name.text))
        raiseColumnExists(column.name.text);
    Translation translation;
    translation.kind = StatementKind::AlterTable;
    translation.sql = "ALTER TABLE " + Writer::name(table.name) + " ADD COLUMN " +
                      Writer::name(column.name.text) + ' ' +
                      writer.columnType(column.name.text, column.type, column.width) +
                      (column.notNull ? writer.addedNotNull(column.type) : QByteArray());
    return translation;
}

Translation translateDefinition(const DropColumn &drop, const std::vector<Token> &tokens,
                                const Catalog &catalog, const Writer &)
{
    const TableInfo &table = requireTable(drop.table, tokens, catalog);
    const ColumnInfo *column = table.column(drop.column.text);
    if (!column)
        raiseNoSuchColumn(drop.column.text, tokenOf(drop.column, tokens));
    Translation translation;
    translation.kind = StatementKind::AlterTable;
    translation.sql =
        "ALTER TABLE " + Writer::name(table.name) + " DROP COLUMN " + Writer::name(column->name);
    return translation;
}

Translation translateDefinition(const DropTable &drop, const std::vector<Token> &tokens,
                                const Catalog &catalog, const Writer &)
{
    Translation translation;
    translation.kind = StatementKind::DropTable;
    translation.sql = "DROP TABLE " + Writer::name(requireTable(drop.table, tokens, catalog).name);
    return translation;
}

} // namespace ado::dialect
