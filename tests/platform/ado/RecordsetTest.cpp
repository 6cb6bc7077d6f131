#include "platform/ado/Recordset.h"

#include "platform/ado/Support.h"

namespace ado::test {

class RecordsetTest : public testing::Test
{
protected:
    RecordsetTest()
    {
        Opened connection(m_file);
        connection.run(u"CREATE TABLE Kunde (KundeNr LONG CONSTRAINT N PRIMARY KEY, Navn TEXT(40), "
                       "Saldo CURRENCY, Rabatt SINGLE)"_s);
        connection.run(u"INSERT INTO Kunde VALUES (1,'Bjørnåsen Transport',1234.5,0.1)"_s);
        connection.run(u"INSERT INTO Kunde VALUES (2,'Ås Grus',-7,12.5)"_s);
        connection.run(u"INSERT INTO Kunde VALUES (3,Null,Null,Null)"_s);
    }
    Recordset opened(const QString &statement = u"SELECT * FROM Kunde ORDER BY KundeNr"_s)
    {
        Recordset rows;
        rows.setActiveConnection(m_file.dsn());
        rows.setSource(statement);
        rows.open();
        rows.clearActiveConnection();
        return rows;
    }

    Database m_file;
};

TEST_F(RecordsetTest, OpensByTextWithASessionJustForTheCall)
{
    const DataSource source = resolve(ConnectionString(m_file.dsn()));
    Recordset rows;
    rows.setActiveConnection(m_file.dsn());
    rows.setSource(u"SELECT Navn FROM Kunde"_s);
    EXPECT_EQ(rows.state(), ObjectState::Closed);
    rows.open();
    EXPECT_EQ(rows.state(), ObjectState::Open);
    EXPECT_EQ(SessionPool::shared().idleCount(source), 1U);
    EXPECT_EQ(rows.recordCount(), 3);
}

TEST_F(RecordsetTest, DetachedRowsOutliveTheirConnectionAndItsTable)
{
    Recordset rows;
    {
        Opened connection(m_file);
        rows = connection.rows(u"SELECT Navn FROM Kunde ORDER BY KundeNr"_s);
        rows.clearActiveConnection();
        connection.run(u"DROP TABLE Kunde"_s);
    }
    EXPECT_EQ(rows.text(0), u"Bjørnåsen Transport"_s);
    EXPECT_EQ(errorOf([&] { rows.requery(); }), errors::kNoConnection);
    EXPECT_EQ(rows.recordCount(), 3);
}

TEST_F(RecordsetTest, NeedsAConnection)
{
    Recordset rows;
    rows.setSource(u"SELECT Navn FROM Kunde"_s);
    EXPECT_EQ(errorOf([&] { rows.open(); }), errors::kNoConnection);
    Connection closed;
    rows.setActiveConnection(closed);
    EXPECT_EQ(errorOf([&] { rows.open(); }), errors::kNoConnection);
    rows.setActiveConnection(u"dsn=/finnes/ikke.db"_s);
    EXPECT_EQ(errorOf([&] { rows.open(); }), errors::kUnspecified);
    EXPECT_EQ(rows.state(), ObjectState::Closed);
}

TEST_F(RecordsetTest, OpenSetCannotBeOpened)
{
    Recordset rows = opened();
    EXPECT_EQ(errorOf([&] { rows.open(); }), errors::kObjectOpen);
}

TEST_F(RecordsetTest, OnlyKnownOptionsAreTaken)
{
    Recordset rows;
    rows.setActiveConnection(m_file.dsn());
    rows.setSource(u"SELECT Navn FROM Kunde"_s);
    EXPECT_EQ(errorOf([&] { rows.open(2); }), errors::kInvalidArgument);
    rows.open(options::kText);
    EXPECT_EQ(rows.recordCount(), 3);
}

TEST_F(RecordsetTest, ClosedSetRefusesEverything)
{
    Recordset rows = opened();
    rows.close();
    EXPECT_EQ(rows.state(), ObjectState::Closed);
    const std::vector<std::function<void()>> uses{[&] { rows.close(); },
                                                  [&] { rows.requery(); },
                                                  [&] { (void)rows.bof(); },
                                                  [&] { (void)rows.eof(); },
                                                  [&] { rows.moveFirst(); },
                                                  [&] { rows.moveNext(); },
                                                  [&] { (void)rows.value(0); },
                                                  [&] { (void)rows.text(u"Navn"); },
                                                  [&] { (void)rows.fieldCount(); },
                                                  [&] { (void)rows.recordCount(); },
                                                  [&] { rows.addNew(); },
                                                  [&] { rows.updateBatch(); }};
    for (size_t i = 0; i < uses.size(); ++i)
        EXPECT_EQ(errorOf(uses[i]), errors::kObjectClosed) << i;
    rows.setActiveConnection(m_file.dsn());
    rows.open();
    EXPECT_EQ(rows.recordCount(), 3);
}

TEST_F(RecordsetTest, SourceWithoutRowsRunsAndLeavesTheSetClosed)
{
    Recordset rows;
    rows.setActiveConnection(m_file.dsn());
    rows.setSource(u"DELETE FROM Kunde WHERE KundeNr=1"_s);
    rows.open();
    EXPECT_EQ(rows.state(), ObjectState::Closed);
    EXPECT_EQ(opened().recordCount(), 2);
}

TEST_F(RecordsetTest, WalksFromEndToEnd)
{
    Recordset rows = opened();
    EXPECT_FALSE(rows.bof());
    EXPECT_EQ(rows.absolutePosition(), 1);
    rows.moveNext();
    rows.moveNext();
    EXPECT_EQ(rows.integer(0), 3);
    rows.moveNext();
    EXPECT_TRUE(rows.eof());
    EXPECT_FALSE(rows.bof());
    EXPECT_EQ(rows.absolutePosition(), 0);
    EXPECT_EQ(errorOf([&] { rows.moveNext(); }), errors::kNoCurrentRow);
    rows.movePrevious();
    EXPECT_EQ(rows.integer(0), 3);
    rows.moveFirst();
    rows.movePrevious();
    EXPECT_TRUE(rows.bof());
    EXPECT_FALSE(rows.eof());
    EXPECT_EQ(errorOf([&] { rows.movePrevious(); }), errors::kNoCurrentRow);
    rows.moveLast();
    EXPECT_EQ(rows.absolutePosition(), 3);
}

TEST_F(RecordsetTest, PositionCanBeSet)
{
    Recordset rows = opened();
    rows.setAbsolutePosition(2);
    EXPECT_EQ(rows.text(u"Navn"), u"Ås Grus"_s);
    EXPECT_EQ(errorOf([&] { rows.setAbsolutePosition(0); }), errors::kInvalidArgument);
    EXPECT_EQ(errorOf([&] { rows.setAbsolutePosition(4); }), errors::kInvalidArgument);
    EXPECT_EQ(rows.absolutePosition(), 2);
}

TEST_F(RecordsetTest, EmptyResultHasColumnsAndBothEnds)
{
    Recordset rows = opened(u"SELECT * FROM Kunde WHERE KundeNr=99"_s);
    EXPECT_TRUE(rows.bof());
    EXPECT_TRUE(rows.eof());
    EXPECT_EQ(rows.recordCount(), 0);
    EXPECT_EQ(rows.fieldCount(), 4);
    EXPECT_EQ(errorOf([&] { rows.moveFirst(); }), errors::kNoCurrentRow);
    EXPECT_EQ(errorOf([&] { rows.moveLast(); }), errors::kNoCurrentRow);
    EXPECT_EQ(errorOf([&] { rows.moveNext(); }), errors::kNoCurrentRow);
    EXPECT_EQ(errorOf([&] { rows.movePrevious(); }), errors::kNoCurrentRow);
    EXPECT_EQ(errorOf([&] { rows.setAbsolutePosition(1); }), errors::kNoCurrentRow);
    EXPECT_EQ(errorOf([&] { (void)rows.value(0); }), errors::kNoCurrentRow);
}

TEST_F(RecordsetTest, FieldsAreFoundWithoutRegardToCase)
{
    Recordset rows = opened();
    EXPECT_EQ(rows.fieldIndex(u"NAVN"), 1);
    EXPECT_EQ(rows.field(rows.fieldIndex(u"navn")).name, u"Navn"_s);
    EXPECT_EQ(rows.field(1).definedSize, 40);
    EXPECT_EQ(rows.field(rows.fieldIndex(u"saldo")).definedSize, 8);
    EXPECT_EQ(errorOf([&] { (void)rows.value(u"Nav"); }), errors::kNoSuchItem);
    EXPECT_EQ(errorOf([&] { (void)rows.value(4); }), errors::kNoSuchItem);
    EXPECT_EQ(errorOf([&] { (void)rows.field(-1); }), errors::kNoSuchItem);
}

TEST_F(RecordsetTest, TypedReadingIsTheSameAsByValue)
{
    Recordset rows = opened();
    for (; !rows.eof(); rows.moveNext()) {
        for (int i = 0; i < rows.fieldCount(); ++i) {
            const Value value = rows.value(i);
            EXPECT_EQ(errorOf([&] { (void)rows.text(i); }), errorOf([&] { (void)value.toText(); }));
            EXPECT_EQ(errorOf([&] { (void)rows.currency(i); }),
                      errorOf([&] { (void)value.toCurrency(); }));
            EXPECT_EQ(errorOf([&] { (void)rows.integer(i); }),
                      errorOf([&] { (void)value.toLong(); }));
            EXPECT_EQ(errorOf([&] { (void)rows.single(i); }),
                      errorOf([&] { (void)value.toSingle(); }));
            EXPECT_EQ(errorOf([&] { (void)rows.date(i); }), errorOf([&] { (void)value.toDate(); }));
            if (!value.isNull()) {
                EXPECT_EQ(rows.text(i), value.toText());
                QString text = u"før"_s;
                rows.appendText(text, i);
                EXPECT_EQ(text, u"før"_s + value.toText());
            }
        }
    }
    rows.moveFirst();
    EXPECT_EQ(rows.integer(u"KundeNr"), 1);
    EXPECT_EQ(rows.currency(u"Saldo"), Currency::fromTenThousandths(12345000));
    EXPECT_EQ(rows.single(u"Rabatt"), 0.1F);
    EXPECT_EQ(rows.integer(u"Saldo"), 1234);
    rows.moveLast();
    EXPECT_EQ(errorOf([&] { (void)rows.text(u"Navn"); }), ::errors::kInvalidUseOfNull);
    EXPECT_EQ(errorOf([&] { (void)rows.currency(u"Saldo"); }), ::errors::kInvalidUseOfNull);
}

TEST_F(RecordsetTest, TextsAreAppendedAsTheyAreRead)
{
    Opened connection(m_file);
    connection.run(u"CREATE TABLE Ord (Nr LONG CONSTRAINT O PRIMARY KEY, Tekst TEXT(20))"_s);
    Tool(m_file.path())
        .run("INSERT INTO Ord VALUES (1, 'Blåbærsyltetøy'), (2, ''), (3, char(128512, 65)), "
             "(4, char(65279, 65)), (5, CAST(x'41FF42C3' AS TEXT)), (6, NULL)");
    QString all;
    QString appended;
    Recordset rows = connection.rows(u"SELECT Tekst FROM Ord"_s);
    for (; !rows.isNull(0); rows.moveNext()) {
        all += rows.text(0);
        rows.appendText(appended, 0);
    }
    EXPECT_EQ(rows.absolutePosition(), 6);
    EXPECT_EQ(appended, all);
    EXPECT_TRUE(all.startsWith(u"Blåbærsyltetøy")) << all.toStdString();
    EXPECT_EQ(errorOf([&] { rows.appendText(appended, 0); }), ::errors::kInvalidUseOfNull);
    EXPECT_EQ(appended, all);
}

TEST_F(RecordsetTest, TheDayOfADateIsThatOfItsValue)
{
    Opened connection(m_file);
    connection.run(u"CREATE TABLE Dag (Nr LONG CONSTRAINT D PRIMARY KEY, Dato DATE)"_s);
    const QStringList dates{u"0100-01-01"_s, u"1899-12-30"_s,       u"1969-12-31"_s,
                            u"1970-01-01"_s, u"1969-12-31 23:59"_s, u"1969-12-31 00:00:01"_s,
                            u"1900-02-28"_s, u"2014-03-09 18:30"_s, u"9999-12-31 23:59:59"_s};
    for (int nr = 0; nr < dates.size(); ++nr)
        connection.run(u"INSERT INTO Dag VALUES (%1,#%2#)"_s.arg(nr).arg(dates[nr]));
    Recordset rows = opened(u"SELECT Nr,Dato FROM Dag ORDER BY Nr"_s);
    for (; !rows.eof(); rows.moveNext()) {
        const QString date = dates[rows.integer(0)];
        EXPECT_EQ(rows.date(1), QDate::fromString(date.first(10), Qt::ISODate))
            << date.toStdString();
        EXPECT_EQ(rows.date(1), rows.value(1).toDate().date()) << date.toStdString();
        EXPECT_EQ(rows.date(0), rows.value(0).toDate().date()) << "a number counts days";
    }
}

TEST_F(RecordsetTest, JoinsTheTextsOfAField)
{
    Recordset rows = opened();
    EXPECT_EQ(rows.joined(1, '\t'), u"Bjørnåsen Transport\tÅs Grus\t"_s) << "a Null is empty";
    EXPECT_EQ(rows.joined(0, ' '), u"1 2 3"_s);
    EXPECT_EQ(rows.joined(2, ';'), u"1234,5;-7;"_s);
    EXPECT_EQ(rows.absolutePosition(), 1) << "the set stays where it stands";
    EXPECT_EQ(opened(u"SELECT * FROM Kunde WHERE KundeNr>9"_s).joined(1, '\t'), QString());
    EXPECT_EQ(errorOf([&] { (void)rows.joined(4, '\t'); }), errors::kNoSuchItem);
    EXPECT_EQ(errorOf([] { (void)Recordset().joined(0, '\t'); }), errors::kObjectClosed);
}

TEST_F(RecordsetTest, JoinsWhatHasBeenChangedInMemory)
{
    Opened connection(m_file);
    Recordset rows =
        connection.rows(u"SELECT * FROM Kunde ORDER BY KundeNr"_s, LockType::Optimistic);
    rows.setValue(u"Navn", Value(u"Ny"_s));
    rows.addNew();
    rows.setValue(u"Navn", Value(u"Til"_s));
    EXPECT_EQ(rows.joined(1, ','), u"Ny,Ås Grus,,Til"_s);
}

TEST_F(RecordsetTest, CursorPlaceMakesNoDifferenceToTheRows)
{
    Opened connection(m_file);
    for (const CursorLocation location : {CursorLocation::Server, CursorLocation::Client}) {
        for (const CursorType type : {CursorType::ForwardOnly, CursorType::Keyset}) {
            Recordset rows;
            rows.setActiveConnection(connection);
            rows.setCursorLocation(location);
            rows.setCursorType(type);
            rows.setSource(u"SELECT KundeNr FROM Kunde ORDER BY KundeNr DESC"_s);
            rows.open();
            EXPECT_EQ(rows.recordCount(), 3);
            EXPECT_EQ(rows.integer(0), 3);
            rows.moveLast();
            EXPECT_EQ(rows.integer(0), 1);
        }
    }
}

TEST_F(RecordsetTest, RequeryReadsWhatIsThereNow)
{
    Recordset rows;
    rows.setActiveConnection(m_file.dsn());
    rows.setSource(u"SELECT KundeNr FROM Kunde ORDER BY KundeNr"_s);
    rows.open();
    rows.moveLast();
    Tool(m_file.path()).run("DELETE FROM Kunde WHERE KundeNr = 1");
    rows.requery();
    EXPECT_EQ(rows.recordCount(), 2);
    EXPECT_EQ(rows.absolutePosition(), 1);
    EXPECT_EQ(rows.integer(0), 2);
    Tool(m_file.path()).run("DROP TABLE Kunde");
    EXPECT_EQ(errorOf([&] { rows.requery(); }), errors::kNoSuchTable);
    EXPECT_EQ(rows.recordCount(), 2);
}

TEST_F(RecordsetTest, IsMovedWithItsPlace)
{
    Recordset rows = opened();
    rows.moveNext();
    Recordset moved = std::move(rows);
    EXPECT_EQ(moved.text(u"Navn"), u"Ås Grus"_s);
    EXPECT_EQ(moved.source(), u"SELECT * FROM Kunde ORDER BY KundeNr"_s);
}

TEST_F(RecordsetTest, AllTypesComeBackForFullAndEmptyResults)
{
    Opened connection(m_file);
    connection.run(u"CREATE TABLE Alt (A SHORT, B LONG, C SINGLE, D DOUBLE, E CURRENCY, F DATE, "
                   "G BIT, H TEXT(7), I LONGBINARY, J COUNTER CONSTRAINT J PRIMARY KEY)"_s);
    connection.run(u"CREATE TABLE Tom (A SHORT, B LONG, C SINGLE, D DOUBLE, E CURRENCY, F DATE, "
                   "G BIT, H TEXT(7), I LONGBINARY, J COUNTER CONSTRAINT J PRIMARY KEY)"_s);
    connection.run(u"INSERT INTO Alt (A,B,C,D,E,F,G,H) VALUES (1,2,0.5,0.25,3.1,#12/31/2020#,True,"
                   "'tekst')"_s);
    const DataType expected[] = {DataType::SmallInt, DataType::Integer,  DataType::Single,
                                 DataType::Double,   DataType::Currency, DataType::Date,
                                 DataType::Boolean,  DataType::VarWChar, DataType::LongVarBinary,
                                 DataType::Integer,  DataType::Integer};
    for (const QString &table : {u"Alt"_s, u"Tom"_s}) {
        Recordset rows = connection.rows(u"SELECT A,B,C,D,E,F,G,H,I,J,B+1 FROM "_s + table);
        ASSERT_EQ(rows.fieldCount(), 11);
        for (int i = 0; i < 11; ++i)
            EXPECT_EQ(rows.field(i).type, expected[i]) << i;
        EXPECT_EQ(rows.recordCount(), table == u"Alt"_s ? 1 : 0);
        if (rows.eof())
            continue;
        for (const int i : {0, 1, 2, 3, 4, 5, 6, 7, 9, 10})
            EXPECT_EQ(rows.value(i).type(), expected[i]) << i;
        EXPECT_TRUE(rows.isNull(8));
    }
}

} // namespace ado::test
