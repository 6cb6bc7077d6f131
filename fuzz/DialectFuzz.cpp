// Any bytes or words as a statement: it is translated or refused, and what is translated is exactly
// one statement that the database takes.

#include "platform/ado/dialect/Parser.h"
#include "platform/ado/dialect/Translator.h"
#include "platform/ado/sqlite/SqliteFunctions.h"
#include "platform/ado/sqlite/SqliteWriter.h"
#include "runtime/RunTimeError.h"

#include <sqlite3.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace ado;
using namespace ado::dialect;

namespace {

const char kOrdre[] =
    "CREATE TABLE Ordre (ID COUNTER CONSTRAINT ID PRIMARY KEY, KlientNr SHORT, OrdreNr LONG, "
    "CONSTRAINT KlientOrdre UNIQUE (KlientNr, OrdreNr), OrdreStatus TEXT(10), Betalt BIT, "
    "OrdreDato DATE, RabattPst SINGLE, Vekt DOUBLE, SumBrutto CURRENCY, Bilde LONGBINARY)";
const char kOrdreLinjer[] =
    "CREATE TABLE OrdreLinjer (ID COUNTER CONSTRAINT ID PRIMARY KEY, OrdreID LONG CONSTRAINT "
    "OrdreID REFERENCES Ordre (ID), ProduktNr TEXT(20), MvaPst SINGLE, SumBrutto CURRENCY)";
const char kPoststed[] = "CREATE TABLE Poststed (PostNr TEXT(10) PRIMARY KEY, PostSted TEXT(40))";

// What a statement of words is made of: far more of them get past the parser than of any bytes.
// clang-format off
const char *const kWords[] = {
    "SELECT", "DISTINCT", "FROM", "WHERE", "AND", "OR", "NOT", "IS", "NULL", "IN", "BETWEEN",
    "GROUP BY", "HAVING", "ORDER BY", "DESC", "AS", "ON", "INNER JOIN", "LEFT JOIN", "RIGHT JOIN",
    "INSERT INTO", "VALUES", "UPDATE", "SET", "DELETE", "CREATE", "TABLE", "ALTER", "ADD COLUMN",
    "DROP", "CONSTRAINT", "PRIMARY", "KEY", "UNIQUE", "REFERENCES", "COUNTER", "LONG", "TEXT(5)",
    "TRUE", "FALSE", "COUNT", "SUM", "MAX", "AVG", "YEAR", "(", ")", ",", ".", "*", "/", "+", "-",
    "=", "<>", "<", ">=", ";", "Ordre", "OrdreLinjer", "Poststed", "ID", "KlientNr",
    "OrdreStatus", "Betalt", "OrdreDato", "RabattPst", "Vekt", "SumBrutto", "Bilde", "OrdreID",
    "MvaPst", "PostNr", "PostSted", "A", "B", "7", "2.5", "1E+30", "'x'", "#1/2/2014#", "1E",
    "SELECT ID FROM Ordre WHERE", "SELECT * FROM OrdreLinjer L LEFT JOIN Ordre O ON",
    "UPDATE Ordre SET",
};
// clang-format on
constexpr uint8_t kWordsMark = 1; // the first byte of an input whose other bytes choose words

[[noreturn]] void fail(const char *what, const QByteArray &sql)
{
    std::fprintf(stderr, "%s\n%s\n", what, sql.constData());
    std::abort();
}

int compareBytes(void *, int sizeA, const void *a, int sizeB, const void *b)
{
    const int order = std::memcmp(a, b, static_cast<size_t>(std::min(sizeA, sizeB)));
    return order != 0 ? order : sizeA - sizeB;
}

/// An empty database with its catalogue.
class Target
{
public:
    Target()
    {
        sqlite3_open(":memory:", &m_database);
        sqlite3_create_collation(m_database, SqliteWriter::kCollation, SQLITE_UTF8, nullptr,
                                 compareBytes);
        addFunctions(m_database);
        sqlite3_db_config(m_database, SQLITE_DBCONFIG_DQS_DML, 0, nullptr);
        sqlite3_db_config(m_database, SQLITE_DBCONFIG_DQS_DDL, 0, nullptr);
        for (const char *definition : {kOrdre, kOrdreLinjer, kPoststed}) {
            const QString text = QString::fromLatin1(definition);
            const Lexed lexed = lex(text);
            const Translation table = translate(lexed, m_catalog, m_writer);
            if (sqlite3_exec(m_database, table.sql.constData(), nullptr, nullptr, nullptr) !=
                SQLITE_OK)
                fail(sqlite3_errmsg(m_database), table.sql);
            m_catalog.add(described(std::get<CreateTable>(parse(lexed))));
        }
    }

    /// Raises for what is refused; aborts when the database does not take what was translated.
    void take(const QString &statement)
    {
        const Lexed lexed = lex(statement);
        if (lexed.tokens.back().kind != TokenKind::End || lexed.shape.size() > statement.size())
            std::abort();
        const Translation translation = translate(lexed, m_catalog, m_writer);
        prepare(translation);
        if (parameterValues(translation, lexed).size() != translation.parameters.size())
            std::abort();
    }

private:
    static TableInfo described(const CreateTable &create)
    {
        TableInfo table{create.table.text.toString(), {}};
        for (const ColumnDefinition &column : create.columns) {
            const bool key = &column == &create.columns.front(); // so it is in all of the tables
            table.columns.push_back(
                {column.name.text.toString(), column.type, column.width, column.counter, key});
        }
        return table;
    }

    void prepare(const Translation &translation)
    {
        sqlite3_stmt *statement = nullptr;
        const char *rest = nullptr;
        const int result =
            sqlite3_prepare_v2(m_database, translation.sql.constData(), -1, &statement, &rest);
        const QByteArray message = sqlite3_errmsg(m_database);
        const auto parameters = static_cast<size_t>(sqlite3_bind_parameter_count(statement));
        const int columns = sqlite3_column_count(statement);
        sqlite3_finalize(statement);
        if (result != SQLITE_OK) {
            // A change of the schema has its own rules, and all databases have their limits.
            if (translation.changesSchema() || message.contains("too ") ||
                message.contains("stack overflow"))
                return;
            fail(message.constData(), translation.sql);
        }
        if (*rest != '\0')
            fail("a second statement", translation.sql);
        if (parameters != translation.parameters.size())
            fail("parameters", translation.sql);
        if (translation.returnsRows() && static_cast<size_t>(columns) != translation.columns.size())
            fail("columns", translation.sql);
    }

    sqlite3 *m_database = nullptr;
    Catalog m_catalog;
    SqliteWriter m_writer;
};

} // namespace

/// The statement that an input stands for.
static QString statementOf(const uint8_t *data, size_t size)
{
    if (size == 0 || data[0] != kWordsMark)
        return QString::fromUtf8(reinterpret_cast<const char *>(data),
                                 static_cast<qsizetype>(size));
    QString statement;
    for (size_t i = 1; i < size; ++i) {
        statement += QLatin1StringView(kWords[data[i] % std::size(kWords)]);
        statement += u' ';
    }
    return statement;
}

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, size_t size)
{
    static Target target;
    try {
        target.take(statementOf(data, size));
    } catch (const RunTimeError &error) {
        if (error.description().isEmpty())
            std::abort();
    }
    return 0;
}
