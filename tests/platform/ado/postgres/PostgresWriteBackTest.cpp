#include "platform/ado/postgres/Support.h"
#include "runtime/Moment.h"

namespace ado::test {

/// Rows changed while detached and written back.
class PostgresWriteBack : public PostgresTest
{
protected:
    PostgresWriteBack()
    {
        Client client(m_database);
        client.run(u"CREATE TABLE Klient (KlientNr SHORT, Navn TEXT(10), Logo LONGBINARY, Saldo "
                   "CURRENCY, CONSTRAINT K PRIMARY KEY (KlientNr))"_s);
        for (const QString &values : {u"1,'En',1"_s, u"2,'To',2"_s, u"3,'Tre',3"_s})
            client.run(u"INSERT INTO Klient (KlientNr,Navn,Saldo) VALUES ("_s + values + u')');
    }
    Recordset detached(const QString &statement)
    {
        Client client(m_database);
        Recordset rows = client.rows(statement, LockType::Optimistic);
        rows.clearActiveConnection();
        return rows;
    }
    void write(Recordset &rows)
    {
        rows.setActiveConnection(m_database.connectionString());
        rows.updateBatch();
        rows.clearActiveConnection();
    }
};

TEST_F(PostgresWriteBack, MegabyteOfBytesComesBackAsItWent)
{
    QByteArray picture(1'000'003, '\0');
    for (qsizetype i = 0; i < picture.size(); ++i)
        picture[i] = static_cast<char>(i * 7919 >> 3);
    Recordset rows = detached(u"SELECT KlientNr,Logo FROM Klient WHERE KlientNr= 2"_s);
    rows.setValue(u"Logo", Value(picture));
    write(rows);
    EXPECT_EQ(
        stored(u"SELECT COUNT(*), MAX(length(\"Logo\")) FROM \"Klient\" WHERE \"Logo\" IS NOT "
               "NULL"_s),
        "1|1000003");
    EXPECT_TRUE(detached(u"SELECT Logo FROM Klient WHERE KlientNr=2"_s).value(0).toBytes() ==
                picture);
}

TEST_F(PostgresWriteBack, WritesChangedColumnsOnly)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=1"_s);
    m_database.run(u"UPDATE \"Klient\" SET \"Saldo\" = 99 WHERE \"KlientNr\" = 1"_s);
    rows.setValue(u"Navn", Value(u"Fjord og Fjell"_s));
    write(rows);
    EXPECT_EQ(stored(u"SELECT \"Navn\", \"Saldo\" FROM \"Klient\" WHERE \"KlientNr\" = 1"_s),
              "Fjord og F|99.0000");
    rows.setValue(u"KlientNr", Value(qint16{10}));
    write(rows);
    rows.setValue(u"Saldo", Value());
    write(rows);
    EXPECT_EQ(stored(u"SELECT \"Saldo\" IS NULL FROM \"Klient\" WHERE \"KlientNr\" = 10"_s), "t");
}

TEST_F(PostgresWriteBack, AllRowsOrNoneWithoutATransaction)
{
    Recordset rows = detached(u"SELECT * FROM Klient ORDER BY KlientNr"_s);
    rows.setValue(u"Navn", Value(u"A"_s));
    rows.moveNext();
    rows.setValue(u"Navn", Value(u"B"_s));
    m_database.run(u"DELETE FROM \"Klient\" WHERE \"KlientNr\" = 2"_s);
    EXPECT_EQ(errorOf([&] { write(rows); }), errors::kRowNotFound);
    EXPECT_EQ(stored(u"SELECT \"Navn\" FROM \"Klient\" WHERE \"KlientNr\" = 1"_s), "En");
    m_database.run(u"INSERT INTO \"Klient\" VALUES (2)"_s);
    write(rows);
    EXPECT_EQ(stored(u"SELECT string_agg(\"Navn\", ' ' ORDER BY \"KlientNr\") FROM \"Klient\""_s),
              "A B Tre");
}

TEST_F(PostgresWriteBack, WithinATransactionTheRestIsTheCallersToRollBack)
{
    Recordset rows = detached(u"SELECT * FROM Klient ORDER BY KlientNr"_s);
    rows.setValue(u"Navn", Value(u"A"_s));
    rows.moveNext();
    rows.setValue(u"KlientNr", Value(qint16{3}));
    Client client(m_database);
    client.beginTrans();
    rows.setActiveConnection(client);
    EXPECT_EQ(errorOf([&] { rows.updateBatch(); }), errors::kIntegrity);
    EXPECT_EQ(client.value(u"SELECT Navn FROM Klient WHERE KlientNr=1"_s), Value(u"A"_s));
    client.rollbackTrans();
    EXPECT_EQ(stored(u"SELECT \"Navn\" FROM \"Klient\" WHERE \"KlientNr\" = 1"_s), "En");
}

TEST_F(PostgresWriteBack, CommittedByTheConnectionThatIsAttached)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=1"_s);
    rows.setValue(u"Navn", Value(u"Ny"_s));
    Client client(m_database);
    client.beginTrans();
    rows.setActiveConnection(client);
    rows.updateBatch();
    EXPECT_EQ(stored(u"SELECT \"Navn\" FROM \"Klient\" WHERE \"KlientNr\" = 1"_s), "En");
    client.commitTrans();
    EXPECT_EQ(stored(u"SELECT \"Navn\" FROM \"Klient\" WHERE \"KlientNr\" = 1"_s), "Ny");
}

TEST_F(PostgresWriteBack, AddedRowsAreInsertedAndGetTheirNumbers)
{
    Client client(m_database);
    client.run(
        u"CREATE TABLE Bil (ID COUNTER CONSTRAINT ID PRIMARY KEY, RegNr TEXT(10), Passiv BIT, "
        "Vekt SINGLE, Dag DATE)"_s);
    Recordset rows = client.rows(u"SELECT * FROM Bil"_s, LockType::Optimistic);
    rows.addNew();
    rows.setValue(u"RegNr", Value(u"DN12345"_s));
    rows.setValue(u"Passiv", Value(true));
    rows.setValue(u"Vekt", Value(12.5F));
    rows.setValue(u"Dag", Value(utcMoment(QDate(2014, 3, 9), QTime(8, 30))));
    rows.addNew();
    rows.setValue(u"ID", Value(qint32{7}));
    rows.updateBatch();
    EXPECT_EQ(rows.integer(u"ID"), 7);
    rows.moveFirst();
    EXPECT_EQ(rows.integer(u"ID"), 1);
    rows.addNew();
    rows.updateBatch();
    EXPECT_EQ(rows.integer(u"ID"), 8);
    EXPECT_EQ(client.value(u"SELECT @@IDENTITY"_s), Value(qint32{8}));
    EXPECT_EQ(stored(u"SELECT * FROM \"Bil\" WHERE \"ID\" < 8 ORDER BY 1"_s),
              "1|DN12345|t|12.5|2014-03-09 08:30:00\n7||f||");
}

TEST_F(PostgresWriteBack, SetOfNoOneTableCannotBeWritten)
{
    m_database.run(u"CREATE TABLE \"Notat\" (\"Tekst\" text)"_s);
    m_database.run(u"INSERT INTO \"Notat\" VALUES ('x')"_s);
    Recordset rows =
        detached(u"SELECT N.Tekst,K.KlientNr FROM Notat AS N, Klient AS K WHERE K.KlientNr=1"_s);
    rows.setValue(0, Value(u"y"_s));
    EXPECT_EQ(errorOf([&] { write(rows); }), errors::kSyntax);
    EXPECT_EQ(stored(u"SELECT \"Tekst\" FROM \"Notat\""_s), "x");
}

TEST_F(PostgresWriteBack, RowsWithoutTheirKeyAreFoundByWhatWasReadOfThem)
{
    m_database.run(u"CREATE TABLE \"Notat\" (\"Tekst\" text, \"Dag\" timestamp, "
                   "\"Vekt\" real, \"Bilde\" bytea, \"Sum\" numeric(19,4))"_s);
    m_database.run(u"INSERT INTO \"Notat\" VALUES ('x', '2014-03-09', 0.1, NULL, 1.5)"_s);
    Recordset rows = detached(u"SELECT Tekst,Dag,Vekt,Bilde,Sum FROM Notat"_s);
    rows.setValue(u"Bilde", Value(QByteArray("bilde")));
    write(rows);
    rows.setValue(u"Bilde", Value(QByteArray("annet")));
    write(rows);
    EXPECT_EQ(stored(u"SELECT \"Tekst\", \"Bilde\" = 'annet' FROM \"Notat\""_s), "x|t");
}

TEST_F(PostgresWriteBack, ARowThatCannotBeToldFromOthersIsNotWritten)
{
    m_database.run(u"CREATE TABLE \"Notat\" (\"Tekst\" text)"_s);
    m_database.run(u"INSERT INTO \"Notat\" VALUES ('x'), ('x')"_s);
    Recordset rows = detached(u"SELECT Tekst FROM Notat"_s);
    rows.setValue(0, Value(u"y"_s));
    EXPECT_EQ(errorOf([&] { write(rows); }), errors::kIntegrity);
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"Notat\" WHERE \"Tekst\" = 'x'"_s), "2");
}

} // namespace ado::test
