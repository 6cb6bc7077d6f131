#include "platform/ado/sqlite/SqliteCatalog.h"

#include "platform/ado/Support.h"

namespace ado::test {

struct DeclarationCase
{
    const char *declaration;
    DataType type;
    int width;
};

class Declaration : public testing::TestWithParam<DeclarationCase>
{
};

TEST_P(Declaration, MeansAType)
{
    const DeclarationCase &c = GetParam();
    const DeclaredType declared = declaredType(QString::fromLatin1(c.declaration));
    EXPECT_EQ(declared.type, c.type) << c.declaration;
    EXPECT_EQ(declared.width, c.width) << c.declaration;
}

INSTANTIATE_TEST_SUITE_P(Names, Declaration,
                         testing::Values(DeclarationCase{"SHORT", DataType::SmallInt, 0},
                                         DeclarationCase{"LONG", DataType::Integer, 0},
                                         DeclarationCase{"INTEGER", DataType::Integer, 0},
                                         DeclarationCase{"SINGLE", DataType::Single, 0},
                                         DeclarationCase{"DOUBLE", DataType::Double, 0},
                                         DeclarationCase{"CURRENCY", DataType::Currency, 0},
                                         DeclarationCase{"DATE", DataType::Date, 0},
                                         DeclarationCase{"BIT", DataType::Boolean, 0},
                                         DeclarationCase{"TEXT(40)", DataType::VarWChar, 40},
                                         DeclarationCase{"LONGBINARY", DataType::LongVarBinary, 0},
                                         DeclarationCase{"int", DataType::Integer, 0},
                                         DeclarationCase{"SmallInt", DataType::SmallInt, 0},
                                         DeclarationCase{"BIGINT", DataType::Double, 0},
                                         DeclarationCase{"VARCHAR(20)", DataType::VarWChar, 20},
                                         DeclarationCase{"national varchar ( 7 )",
                                                         DataType::VarWChar, 7},
                                         DeclarationCase{"TEXT", DataType::VarWChar, 0},
                                         DeclarationCase{"CLOB", DataType::VarWChar, 0},
                                         DeclarationCase{"NUMERIC(19,4)", DataType::Double, 0},
                                         DeclarationCase{"DECIMAL(10,5)", DataType::Double, 0},
                                         DeclarationCase{"REAL", DataType::Double, 0},
                                         DeclarationCase{"double precision", DataType::Double, 0},
                                         DeclarationCase{"FLOAT", DataType::Double, 0},
                                         DeclarationCase{"BLOB", DataType::LongVarBinary, 0},
                                         DeclarationCase{"BOOLEAN", DataType::Boolean, 0},
                                         DeclarationCase{"DATETIME", DataType::Date, 0},
                                         DeclarationCase{"TIMESTAMP", DataType::Date, 0},
                                         DeclarationCase{"", DataType::VarWChar, 0},
                                         DeclarationCase{"TEXT(-3)", DataType::VarWChar, 0},
                                         DeclarationCase{"TEXT(mye", DataType::VarWChar, 0}));

class SqliteCatalog : public testing::Test
{
protected:
    dialect::Catalog catalogOf(const char *sql)
    {
        sqlite3 *database = nullptr;
        EXPECT_EQ(sqlite3_open(":memory:", &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(database, sql, nullptr, nullptr, nullptr), SQLITE_OK)
            << sqlite3_errmsg(database);
        dialect::Catalog catalog = readCatalog(database);
        sqlite3_close(database);
        return catalog;
    }
};

TEST_F(SqliteCatalog, KeepsNamesAsTheyWereCreated)
{
    const auto catalog = catalogOf("CREATE TABLE OrdreLinjer (ID INTEGER PRIMARY KEY, \"Mva Pst\" "
                                   "SINGLE, blåBær TEXT(3))");
    const dialect::TableInfo *table = catalog.table(u"ordrelinjer");
    ASSERT_TRUE(table);
    EXPECT_EQ(table->name, u"OrdreLinjer"_s);
    ASSERT_EQ(table->columns.size(), 3U);
    EXPECT_EQ(table->columns[1].name, u"Mva Pst"_s);
    EXPECT_EQ(table->columns[2].name, u"blåBær"_s);
    EXPECT_TRUE(table->column(u"mva pst"));
}

TEST_F(SqliteCatalog, TellsKeysAndCounters)
{
    const auto catalog = catalogOf("CREATE TABLE A (ID INTEGER PRIMARY KEY AUTOINCREMENT, x TEXT);"
                                   "CREATE TABLE B (Nr SHORT, Navn TEXT, PRIMARY KEY (Nr, Navn));"
                                   "CREATE TABLE C (ID INT PRIMARY KEY);"
                                   "CREATE TABLE D (ID INTEGER PRIMARY KEY) WITHOUT ROWID;"
                                   "CREATE TABLE E (ID INTEGER, x INTEGER, PRIMARY KEY (ID, x));");
    const auto column = [&](QStringView table, QStringView name) {
        return *catalog.table(table)->column(name);
    };
    EXPECT_TRUE(column(u"A", u"ID").counter);
    EXPECT_TRUE(column(u"A", u"ID").key);
    EXPECT_FALSE(column(u"A", u"x").key);
    EXPECT_TRUE(column(u"B", u"Nr").key);
    EXPECT_TRUE(column(u"B", u"Navn").key);
    for (const QStringView table : {u"C", u"D", u"E"}) {
        EXPECT_TRUE(column(table, u"ID").key) << table.toString().toStdString();
        EXPECT_FALSE(column(table, u"ID").counter) << table.toString().toStdString();
    }
}

TEST_F(SqliteCatalog, ListsTablesOnlyInTheOrderOfTheirMaking)
{
    const auto catalog = catalogOf("CREATE TABLE B (ID INTEGER PRIMARY KEY AUTOINCREMENT);"
                                   "CREATE TABLE A (x TEXT, y TEXT GENERATED ALWAYS AS (x));"
                                   "CREATE VIEW V AS SELECT x FROM A;"
                                   "CREATE INDEX I ON A (x);"
                                   "CREATE TABLE sqliteAktig (x TEXT);");
    ASSERT_EQ(catalog.tables().size(), 3U);
    EXPECT_EQ(catalog.tables()[0].name, u"B"_s);
    EXPECT_EQ(catalog.tables()[1].name, u"A"_s);
    EXPECT_EQ(catalog.tables()[1].columns.size(), 1U);
    EXPECT_EQ(catalog.tables()[2].name, u"sqliteAktig"_s);
}

TEST_F(SqliteCatalog, KnowsWhatTextsCanBeLookedUp)
{
    const auto catalog = catalogOf("CREATE TABLE A (x TEXT(5), y VARCHAR(5), z, n LONG);"
                                   "CREATE TABLE B (x TEXT(5) PRIMARY KEY) WITHOUT ROWID;"
                                   "CREATE TABLE C (x TEXT(5), _RowId_ LONG);"
                                   "CREATE TABLE D (x TEXT(5), _rowid_ LONG AS (7))");
    const dialect::TableInfo *a = catalog.table(u"A");
    ASSERT_TRUE(a);
    EXPECT_TRUE(a->hasLookups);
    EXPECT_TRUE(a->column(u"x")->textOnly);
    EXPECT_TRUE(a->column(u"y")->textOnly);
    EXPECT_FALSE(a->column(u"z")->textOnly);
    EXPECT_FALSE(a->column(u"n")->textOnly);
    for (const QStringView table : {u"B", u"C", u"D"})
        EXPECT_FALSE(catalog.table(table)->hasLookups) << table.toUtf8().constData();
    EXPECT_EQ(catalog.table(u"D")->columns.size(), 1U);
}

} // namespace ado::test
