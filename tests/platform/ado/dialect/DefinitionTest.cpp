#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

TEST(Definition, SpellsEveryType)
{
    const Translation t = translated(
        u"CREATE TABLE Alt (a SHORT, b LONG, c SINGLE, d DOUBLE, e CURRENCY, f BIT, g DATE, "
        "h DATETIME, i TEXT, j text(7), k LONGBINARY)"_s);
    EXPECT_EQ(t.kind, StatementKind::CreateTable);
    EXPECT_TRUE(t.changesSchema());
    EXPECT_TRUE(t.followUps.empty());
    EXPECT_EQ(t.sql,
              "CREATE TABLE \"Alt\" ("
              "\"a\" SHORT CONSTRAINT \"a range\" CHECK (\"a\" BETWEEN -32768 AND 32767), "
              "\"b\" LONG CONSTRAINT \"b range\" CHECK (\"b\" BETWEEN -2147483648 AND 2147483647), "
              "\"c\" SINGLE CONSTRAINT \"c range\" CHECK (ABS(\"c\") < 3.4028235677973366e38), "
              "\"d\" DOUBLE CONSTRAINT \"d range\" CHECK (ABS(\"d\") < 9e999), "
              "\"e\" CURRENCY CONSTRAINT \"e range\" "
              "CHECK (typeof(\"e\") <> 'real'), \"f\" BIT DEFAULT 0, \"g\" DATE, "
              "\"h\" DATE, \"i\" TEXT(255), \"j\" TEXT(7), \"k\" LONGBINARY)");
}

TEST(Definition, PutsConstraintsBehindTheColumns)
{
    EXPECT_EQ(sqlOf(u"CREATE TABLE T (ID COUNTER CONSTRAINT ID PRIMARY KEY, A DATE, CONSTRAINT AB "
                    "UNIQUE (A, B),B DATE UNIQUE NOT NULL, UNIQUE (B,A));"_s),
              u"CREATE TABLE \"T\" (\"ID\" INTEGER CONSTRAINT \"ID\" PRIMARY KEY AUTOINCREMENT, "
              "\"A\" DATE, \"B\" DATE NOT NULL, CONSTRAINT \"AB\" UNIQUE (\"A\", \"B\"), "
              "UNIQUE (\"B\"), UNIQUE (\"B\", \"A\"))"_s);
}

TEST(Definition, ACounterIsTheWholeKey)
{
    EXPECT_EQ(sqlOf(u"CREATE TABLE T (A DATE, ID AUTOINCREMENT, PRIMARY KEY (id))"_s),
              u"CREATE TABLE \"T\" (\"A\" DATE, \"ID\" INTEGER PRIMARY KEY AUTOINCREMENT)"_s);
    for (const char16_t *columns :
         {u"ID COUNTER", u"ID COUNTER, A DATE PRIMARY KEY",
          u"ID COUNTER, A DATE, PRIMARY KEY (ID, A)", u"ID COUNTER UNIQUE"}) {
        const Failure failure =
            failureOf(u"CREATE TABLE T (%1)"_s.arg(QString::fromUtf16(columns)));
        EXPECT_EQ(failure.number, errors::kSyntax);
        EXPECT_TRUE(failure.text.contains(u"tellerfelt"));
    }
}

TEST(Definition, AKeyIsNeverNull)
{
    EXPECT_EQ(sqlOf(u"CREATE TABLE T (A TEXT(3), B DATE NULL, C DATE, CONSTRAINT Pk PRIMARY KEY "
                    "(a, c))"_s),
              u"CREATE TABLE \"T\" (\"A\" TEXT(3) NOT NULL, \"B\" DATE, \"C\" DATE NOT NULL, "
              "CONSTRAINT \"Pk\" PRIMARY KEY (\"A\", \"C\"))"_s);
    EXPECT_EQ(failureOf(u"CREATE TABLE T (A DATE PRIMARY KEY, B DATE PRIMARY KEY)"_s).number,
              errors::kSyntax);
}

TEST(Definition, AForeignKeyHasAnIndex)
{
    const Translation t =
        translated(u"CREATE TABLE T (O DATE CONSTRAINT Fk REFERENCES ordre (id), P TEXT(10), "
                   "FOREIGN KEY (P) REFERENCES Poststed)"_s);
    EXPECT_EQ(t.sql, "CREATE TABLE \"T\" (\"O\" DATE, \"P\" TEXT(10), CONSTRAINT \"Fk\" FOREIGN "
                     "KEY (\"O\") REFERENCES \"Ordre\" (\"ID\"), FOREIGN KEY (\"P\") REFERENCES "
                     "\"Poststed\" (\"PostNr\"))");
    EXPECT_EQ(t.followUps, (std::vector<QByteArray>{"CREATE INDEX \"T.Fk\" ON \"T\" (\"O\")",
                                                    "CREATE INDEX \"T.P\" ON \"T\" (\"P\")"}));
}

TEST(Definition, ATableMayReferToItself)
{
    EXPECT_TRUE(sqlOf(u"CREATE TABLE T (ID COUNTER PRIMARY KEY, Over DATE REFERENCES t)"_s)
                    .contains(u"FOREIGN KEY (\"Over\") REFERENCES \"T\" (\"ID\")"));
}

TEST(Definition, AReferenceNeedsItsTarget)
{
    EXPECT_EQ(failureOf(u"CREATE TABLE T (A LONG REFERENCES X (ID))"_s).number,
              errors::kNoSuchTable);
    EXPECT_EQ(failureOf(u"CREATE TABLE T (A LONG REFERENCES Ordre (X))"_s).number,
              errors::kNoSuchColumn);
    const Failure unequal = failureOf(u"CREATE TABLE T (A LONG REFERENCES Ordre (ID, OrdreNr))"_s);
    EXPECT_EQ(unequal.number, errors::kSyntax);
    EXPECT_EQ(unequal.text, u"Syntaksfeil i setningen ved tegn 35: nøkkelen det vises til har et "
                            "annet antall felt."_s);
    EXPECT_EQ(failureOf(u"CREATE TABLE T (A LONG, B LONG REFERENCES T)"_s).number, errors::kSyntax);
    EXPECT_EQ(failureOf(u"CREATE TABLE T (A LONG, UNIQUE (B))"_s).number, errors::kNoSuchColumn);
    EXPECT_EQ(failureOf(u"CREATE TABLE T (A LONG, PRIMARY KEY (B))"_s).number,
              errors::kNoSuchColumn);
}

TEST(Definition, WhatIsThereIsNotMadeAgain)
{
    EXPECT_EQ(failureOf(u"CREATE TABLE ORDRE (A LONG)"_s).number, errors::kTableExists);
    EXPECT_EQ(failureOf(u"CREATE TABLE ORDRE (A LONG)"_s).text,
              u"Tabellen «ORDRE» finnes fra før."_s);
    EXPECT_EQ(failureOf(u"CREATE TABLE T (A LONG, a SHORT)"_s).number, errors::kColumnExists);
    EXPECT_EQ(failureOf(u"ALTER TABLE Ordre ADD COLUMN ORDRENR LONG"_s).number,
              errors::kColumnExists);
    EXPECT_EQ(failureOf(u"ALTER TABLE Ordre ADD COLUMN ORDRENR LONG"_s).text,
              u"Feltet «ORDRENR» finnes fra før."_s);
}

TEST(Definition, AddsAndDropsColumns)
{
    const Translation added = translated(u"ALTER TABLE ordre ADD COLUMN Logo LONGBINARY NULL"_s);
    EXPECT_EQ(added.kind, StatementKind::AlterTable);
    EXPECT_EQ(added.sql, "ALTER TABLE \"Ordre\" ADD COLUMN \"Logo\" LONGBINARY");
    EXPECT_EQ(sqlOf(u"ALTER TABLE Ordre ADD COLUMN Kode TEXT(3) NOT NULL"_s),
              u"ALTER TABLE \"Ordre\" ADD COLUMN \"Kode\" TEXT(3) NOT NULL DEFAULT ''"_s);
    EXPECT_EQ(sqlOf(u"ALTER TABLE Ordre DROP COLUMN ordrenr"_s),
              u"ALTER TABLE \"Ordre\" DROP COLUMN \"OrdreNr\""_s);
    EXPECT_EQ(failureOf(u"ALTER TABLE X ADD COLUMN A LONG"_s).number, errors::kNoSuchTable);
    EXPECT_EQ(failureOf(u"ALTER TABLE X DROP COLUMN A"_s).number, errors::kNoSuchTable);
    EXPECT_EQ(failureOf(u"ALTER TABLE Ordre DROP COLUMN A"_s).number, errors::kNoSuchColumn);
}

TEST(Definition, DropsTables)
{
    const Translation t = translated(u"DROP TABLE ORDRE"_s);
    EXPECT_EQ(t.kind, StatementKind::DropTable);
    EXPECT_EQ(t.sql, "DROP TABLE \"Ordre\"");
    EXPECT_EQ(failureOf(u"DROP TABLE tmpTbl"_s).number, errors::kNoSuchTable);
}

} // namespace ado::dialect::test
