#include "platform/ado/Recordset.h"

#include "platform/ado/Support.h"
#include "runtime/Moment.h"

namespace ado::test {

/// Rows changed while detached and written back.
class UpdateBatch : public testing::Test
{
protected:
    UpdateBatch()
    {
        Opened connection(m_file);
        connection.run(
            u"CREATE TABLE Klient (KlientNr SHORT, Navn TEXT(10), Logo LONGBINARY, Saldo "
            "CURRENCY, CONSTRAINT K PRIMARY KEY (KlientNr))"_s);
        connection.run(u"INSERT INTO Klient (KlientNr,Navn,Saldo) VALUES (1,'En',1)"_s);
        connection.run(u"INSERT INTO Klient (KlientNr,Navn,Saldo) VALUES (2,'To',2)"_s);
        connection.run(u"INSERT INTO Klient (KlientNr,Navn,Saldo) VALUES (3,'Tre',3)"_s);
    }
    Recordset detached(const QString &statement, LockType lock = LockType::Optimistic)
    {
        Opened connection(m_file);
        Recordset rows = connection.rows(statement, lock);
        rows.clearActiveConnection();
        return rows;
    }
    void write(Recordset &rows)
    {
        rows.setActiveConnection(m_file.dsn());
        rows.updateBatch();
        rows.clearActiveConnection();
    }
    std::string stored(const char *sql) { return m_tool.text(sql); }

    Database m_file;
    Tool m_tool{m_file.path()};
};

TEST_F(UpdateBatch, WritesBytesIntoTheRowOfTheKey)
{
    Recordset rows = detached(u"SELECT KlientNr,Logo FROM Klient WHERE KlientNr= 2"_s);
    const QByteArray picture("\0\x01\xff\n'", 5);
    rows.setValue(u"Logo", Value(picture));
    EXPECT_EQ(rows.value(u"Logo").toBytes(), picture);
    write(rows);
    EXPECT_EQ(stored("SELECT hex(Logo) FROM Klient WHERE KlientNr = 2"), "0001FF0A27");
    EXPECT_EQ(stored("SELECT COUNT(*) FROM Klient WHERE Logo NOTNULL"), "1");
    EXPECT_EQ(detached(u"SELECT Logo FROM Klient WHERE KlientNr=2"_s).value(0).toBytes(), picture);
}

TEST_F(UpdateBatch, WritesChangedColumnsOnly)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=1"_s);
    m_tool.run("UPDATE Klient SET Saldo = 990000 WHERE KlientNr = 1");
    rows.setValue(u"Navn", Value(u"Ny"_s));
    write(rows);
    EXPECT_EQ(stored("SELECT Navn || Saldo FROM Klient WHERE KlientNr = 1"), "Ny990000");
}

TEST_F(UpdateBatch, UnchangedSetWritesNothing)
{
    Recordset rows = detached(u"SELECT * FROM Klient"_s);
    m_tool.run("DELETE FROM Klient");
    write(rows);
    EXPECT_EQ(stored("SELECT COUNT(*) FROM Klient"), "0");
}

TEST_F(UpdateBatch, SecondWriteFindsTheRowByItsChangedKey)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=3"_s);
    rows.setValue(u"KlientNr", Value(qint16{30}));
    write(rows);
    rows.setValue(u"Navn", Value(u"Tretti"_s));
    write(rows);
    EXPECT_EQ(stored("SELECT Navn FROM Klient WHERE KlientNr = 30"), "Tretti");
    EXPECT_EQ(stored("SELECT COUNT(*) FROM Klient"), "3");
}

TEST_F(UpdateBatch, RowThatIsGoneIsAnErrorAndStaysPending)
{
    Recordset rows = detached(u"SELECT * FROM Klient ORDER BY KlientNr"_s);
    rows.setValue(u"Navn", Value(u"A"_s));
    rows.moveNext();
    rows.setValue(u"Navn", Value(u"B"_s));
    m_tool.run("DELETE FROM Klient WHERE KlientNr = 2");
    EXPECT_EQ(errorOf([&] { write(rows); }), errors::kRowNotFound);
    // Outside a transaction it is all or nothing.
    EXPECT_EQ(stored("SELECT Navn FROM Klient WHERE KlientNr = 1"), "En");
    m_tool.run("INSERT INTO Klient (KlientNr) VALUES (2)");
    write(rows);
    EXPECT_EQ(stored("SELECT group_concat(Navn, '') FROM Klient WHERE KlientNr < 3"), "AB");
}

TEST_F(UpdateBatch, WithinATransactionTheRestIsTheCallersToRollBack)
{
    Recordset rows = detached(u"SELECT * FROM Klient ORDER BY KlientNr"_s);
    rows.setValue(u"Navn", Value(u"A"_s));
    rows.moveNext();
    rows.setValue(u"Navn", Value(u"B"_s));
    m_tool.run("DELETE FROM Klient WHERE KlientNr = 2");
    Opened connection(m_file);
    connection.beginTrans();
    rows.setActiveConnection(connection);
    EXPECT_EQ(errorOf([&] { rows.updateBatch(); }), errors::kRowNotFound);
    EXPECT_EQ(connection.value(u"SELECT Navn FROM Klient WHERE KlientNr=1"_s).toText(), u"A"_s);
    connection.rollbackTrans();
    EXPECT_EQ(stored("SELECT Navn FROM Klient WHERE KlientNr = 1"), "En");
}

TEST_F(UpdateBatch, CommittedByTheConnectionThatIsAttached)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=1"_s);
    rows.setValue(u"Navn", Value(u"Ny"_s));
    Opened connection(m_file);
    connection.beginTrans();
    rows.setActiveConnection(connection);
    rows.updateBatch();
    EXPECT_EQ(stored("SELECT Navn FROM Klient WHERE KlientNr = 1"), "En");
    connection.commitTrans();
    EXPECT_EQ(stored("SELECT Navn FROM Klient WHERE KlientNr = 1"), "Ny");
}

TEST_F(UpdateBatch, TextIsCutAndNumbersAreChecked)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=1"_s);
    rows.setValue(u"Navn", Value(u"Fjord og Fjell Transport"_s));
    EXPECT_EQ(errorOf([&] { rows.setValue(u"KlientNr", Value(qint32{40000})); }),
              errors::kOutOfRange);
    write(rows);
    EXPECT_EQ(stored("SELECT Navn FROM Klient WHERE KlientNr = 1"), "Fjord og F");
}

TEST_F(UpdateBatch, BrokenConstraintIsToldAndNothingIsWritten)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=1"_s);
    rows.setValue(u"KlientNr", Value(qint16{2}));
    EXPECT_EQ(errorOf([&] { write(rows); }), errors::kIntegrity);
    EXPECT_EQ(stored("SELECT Navn FROM Klient WHERE KlientNr = 1"), "En");
}

TEST_F(UpdateBatch, AddedRowIsInsertedAndGetsItsNumber)
{
    Opened connection(m_file);
    connection.run(
        u"CREATE TABLE Bil (ID COUNTER CONSTRAINT ID PRIMARY KEY, RegNr TEXT(10), Passiv "
        "BIT, Kjøpt DATE)"_s);
    Recordset rows = connection.rows(u"SELECT * FROM Bil"_s, LockType::Optimistic);
    rows.addNew();
    EXPECT_EQ(rows.absolutePosition(), 1);
    EXPECT_TRUE(rows.isNull(0));
    rows.setValue(u"RegNr", Value(u"DN12345"_s));
    rows.setValue(u"Passiv", Value(true));
    rows.setValue(3, Value(utcMoment(QDate(2014, 3, 9))));
    rows.addNew();
    rows.setValue(u"RegNr", Value(u"EK54321"_s));
    rows.updateBatch();
    EXPECT_EQ(rows.integer(u"ID"), 2);
    rows.moveFirst();
    EXPECT_EQ(rows.integer(u"ID"), 1);
    EXPECT_EQ(stored("SELECT RegNr || Passiv || \"Kjøpt\" FROM Bil WHERE ID = 1"),
              "DN1234512014-03-09");
    // From now on they are rows like others.
    rows.setValue(u"RegNr", Value(u"DN99999"_s));
    rows.updateBatch();
    EXPECT_EQ(stored("SELECT group_concat(RegNr) FROM Bil"), "DN99999,EK54321");
}

TEST_F(UpdateBatch, ReadOnlySetRefusesChanges)
{
    Recordset rows = detached(u"SELECT * FROM Klient"_s, LockType::ReadOnly);
    EXPECT_EQ(errorOf([&] { rows.setValue(u"Navn", Value(u"x"_s)); }), errors::kReadOnlySet);
    EXPECT_EQ(errorOf([&] { rows.addNew(); }), errors::kReadOnlySet);
    EXPECT_EQ(errorOf([&] { rows.updateBatch(); }), errors::kReadOnlySet);
}

TEST_F(UpdateBatch, DetachedSetCannotBeWritten)
{
    Recordset rows = detached(u"SELECT * FROM Klient"_s);
    rows.setValue(u"Navn", Value(u"x"_s));
    EXPECT_EQ(errorOf([&] { rows.updateBatch(); }), errors::kNoConnection);
}

TEST_F(UpdateBatch, SetOfNoOneTableCannotBeWritten)
{
    m_tool.run("CREATE TABLE Notat (Tekst TEXT)");
    m_tool.run("INSERT INTO Notat VALUES ('x')");
    Recordset joined = detached(
        u"SELECT K.KlientNr, K.Navn, N.Tekst FROM Klient AS K, Notat AS N WHERE K.KlientNr=1"_s);
    joined.setValue(1, Value(u"y"_s));
    EXPECT_EQ(errorOf([&] { write(joined); }), errors::kSyntax);
    EXPECT_EQ(stored("SELECT Navn FROM Klient WHERE KlientNr = 1"), "En");
}

TEST_F(UpdateBatch, RowsWithoutTheirKeyAreFoundByWhatWasReadOfThem)
{
    Recordset withoutKey = detached(u"SELECT Navn,Logo,Saldo FROM Klient WHERE KlientNr=2"_s);
    withoutKey.setValue(u"Logo", Value(QByteArray("bilde"))); // Null before
    write(withoutKey);
    EXPECT_EQ(stored("SELECT KlientNr FROM Klient WHERE Logo NOTNULL"), "2");
    withoutKey.setValue(u"Logo", Value(QByteArray("annet")));
    withoutKey.setValue(u"Saldo", Value(Currency::fromInteger(20)));
    write(withoutKey);
    EXPECT_EQ(stored("SELECT Navn || Logo || Saldo FROM Klient WHERE KlientNr = 2"),
              "Toannet200000");

    Opened connection(m_file);
    connection.run(u"CREATE TABLE Notat (Tekst TEXT(20), Dag DATETIME, Vekt SINGLE)"_s);
    connection.run(u"INSERT INTO Notat (Tekst,Dag,Vekt) VALUES ('x',#03/09/2014#,0.1)"_s);
    Recordset keyless = detached(u"SELECT Tekst,Dag,Vekt FROM Notat"_s);
    keyless.setValue(0, Value(u"y"_s));
    write(keyless);
    EXPECT_EQ(stored("SELECT Tekst FROM Notat"), "y");
    keyless.addNew();
    keyless.setValue(0, Value(u"ny"_s));
    write(keyless);
    EXPECT_EQ(stored("SELECT COUNT(*) FROM Notat"), "2");
}

TEST_F(UpdateBatch, ARowThatCannotBeToldFromOthersIsNotWritten)
{
    m_tool.run("UPDATE Klient SET Navn = 'Lik', Saldo = NULL");
    Recordset rows = detached(u"SELECT Navn,Saldo FROM Klient WHERE KlientNr=1"_s);
    rows.setValue(0, Value(u"Ny"_s));
    EXPECT_EQ(errorOf([&] { write(rows); }), errors::kIntegrity);
    EXPECT_EQ(stored("SELECT group_concat(Navn) FROM Klient"), "Lik,Lik,Lik");
    m_tool.run("UPDATE Klient SET Navn = 'Annen'");
    EXPECT_EQ(errorOf([&] { write(rows); }), errors::kRowNotFound);
}

TEST_F(UpdateBatch, NoCurrentRowNoChange)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=9"_s);
    EXPECT_EQ(errorOf([&] { rows.setValue(u"Navn", Value(u"x"_s)); }), errors::kNoCurrentRow);
}

} // namespace ado::test
