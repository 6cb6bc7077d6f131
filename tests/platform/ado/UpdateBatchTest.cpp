#include "platform/ado/AnyDatabase.h"
#include "runtime/Moment.h"

namespace ado::test {

/// Rows changed while detached and written back.
class UpdateBatch : public AnyDatabaseTest
{
protected:
    UpdateBatch()
    {
        m_other.run(u"CREATE TABLE Klient (KlientNr SHORT, Navn TEXT(10), Logo LONGBINARY, Saldo "
                    "CURRENCY, CONSTRAINT K PRIMARY KEY (KlientNr))"_s);
        for (const QString &values : {u"1,'En',1"_s, u"2,'To',2"_s, u"3,'Tre',3"_s})
            m_other.run(u"INSERT INTO Klient (KlientNr,Navn,Saldo) VALUES ("_s + values + u')');
    }
    Recordset detached(const QString &statement, LockType lock = LockType::Optimistic)
    {
        Opened connection(dsn());
        Recordset rows = connection.rows(statement, lock);
        rows.clearActiveConnection();
        return rows;
    }
    /// All rows, of which the first two have got the names A and B.
    Recordset twoRenamed()
    {
        Recordset rows = detached(u"SELECT * FROM Klient ORDER BY KlientNr"_s);
        rows.setValue(u"Navn", Value(u"A"_s));
        rows.moveNext();
        rows.setValue(u"Navn", Value(u"B"_s));
        return rows;
    }
    void write(Recordset &rows)
    {
        rows.setActiveConnection(dsn());
        rows.updateBatch();
        rows.clearActiveConnection();
    }
    QString names() { return m_other.column(u"SELECT Navn FROM Klient ORDER BY KlientNr"_s); }

    Opened m_other{dsn()}; ///< who sees and changes what is stored
};

TEST_F(UpdateBatch, WritesBytesIntoTheRowOfTheKey)
{
    QByteArray picture(1'000'003, '\0');
    for (qsizetype i = 0; i < picture.size(); ++i)
        picture[i] = static_cast<char>(i * 7919 >> 3);
    for (const QByteArray &bytes : {QByteArray("\0\x01\xff\n'", 5), picture}) {
        Recordset rows = detached(u"SELECT KlientNr,Logo FROM Klient WHERE KlientNr= 2"_s);
        rows.setValue(u"Logo", Value(bytes));
        EXPECT_EQ(rows.value(u"Logo").toBytes(), bytes);
        write(rows);
        EXPECT_EQ(stored(u"SELECT COUNT(*), MAX(length(\"Logo\")) FROM \"Klient\" WHERE \"Logo\" "
                         "IS NOT NULL"_s),
                  "1|" + std::to_string(bytes.size()));
        EXPECT_TRUE(detached(u"SELECT Logo FROM Klient WHERE KlientNr=2"_s).value(0).toBytes() ==
                    bytes);
    }
}

TEST_F(UpdateBatch, WritesChangedColumnsOnly)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=1"_s);
    m_other.run(u"UPDATE Klient SET Saldo=99 WHERE KlientNr=1"_s);
    rows.setValue(u"Navn", Value(u"Ny"_s));
    write(rows);
    EXPECT_EQ(names(), u"Ny To Tre"_s);
    EXPECT_EQ(m_other.value(u"SELECT Saldo FROM Klient WHERE KlientNr=1"_s),
              Value(Currency::fromInteger(99)));
    rows.setValue(u"Saldo", Value());
    write(rows);
    EXPECT_EQ(stored(u"SELECT \"KlientNr\" FROM \"Klient\" WHERE \"Saldo\" IS NULL"_s), "1");
}

TEST_F(UpdateBatch, UnchangedSetWritesNothing)
{
    Recordset rows = detached(u"SELECT * FROM Klient"_s);
    m_other.run(u"DELETE FROM Klient"_s);
    write(rows);
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"Klient\""_s), "0");
}

TEST_F(UpdateBatch, SecondWriteFindsTheRowByItsChangedKey)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=3"_s);
    rows.setValue(u"KlientNr", Value(qint16{30}));
    write(rows);
    rows.setValue(u"Navn", Value(u"Tretti"_s));
    write(rows);
    EXPECT_EQ(stored(u"SELECT \"Navn\" FROM \"Klient\" WHERE \"KlientNr\" = 30"_s), "Tretti");
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"Klient\""_s), "3");
}

TEST_F(UpdateBatch, RowThatIsGoneIsAnErrorAndStaysPending)
{
    Recordset rows = twoRenamed();
    m_other.run(u"DELETE FROM Klient WHERE KlientNr=2"_s);
    EXPECT_EQ(errorOf([&] { write(rows); }), errors::kRowNotFound);
    // Outside a transaction it is all or nothing.
    EXPECT_EQ(names(), u"En Tre"_s);
    m_other.run(u"INSERT INTO Klient (KlientNr) VALUES (2)"_s);
    write(rows);
    EXPECT_EQ(names(), u"A B Tre"_s);
}

TEST_F(UpdateBatch, WithinATransactionTheRestIsTheCallersToRollBack)
{
    const auto refusal = [this](Recordset &rows) {
        Opened connection(dsn());
        connection.beginTrans();
        rows.setActiveConnection(connection);
        const int number = errorOf([&] { rows.updateBatch(); });
        EXPECT_EQ(connection.value(u"SELECT Navn FROM Klient WHERE KlientNr=1"_s).toText(), u"A"_s);
        connection.rollbackTrans();
        EXPECT_EQ(stored(u"SELECT \"Navn\" FROM \"Klient\" WHERE \"KlientNr\" = 1"_s), "En");
        return number;
    };
    Recordset twice = twoRenamed();
    twice.setValue(u"KlientNr", Value(qint16{3}));
    EXPECT_EQ(refusal(twice), errors::kIntegrity);
    Recordset gone = twoRenamed();
    m_other.run(u"DELETE FROM Klient WHERE KlientNr=2"_s);
    EXPECT_EQ(refusal(gone), errors::kRowNotFound);
}

TEST_F(UpdateBatch, CommittedByTheConnectionThatIsAttached)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=1"_s);
    rows.setValue(u"Navn", Value(u"Ny"_s));
    Opened connection(dsn());
    connection.beginTrans();
    rows.setActiveConnection(connection);
    rows.updateBatch();
    EXPECT_EQ(names(), u"En To Tre"_s);
    connection.commitTrans();
    EXPECT_EQ(names(), u"Ny To Tre"_s);
}

TEST_F(UpdateBatch, TextIsCutAndNumbersAreChecked)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=1"_s);
    rows.setValue(u"Navn", Value(u"Fjord og Fjell Transport"_s));
    EXPECT_EQ(errorOf([&] { rows.setValue(u"KlientNr", Value(qint32{40000})); }),
              errors::kOutOfRange);
    write(rows);
    EXPECT_EQ(stored(u"SELECT \"Navn\" FROM \"Klient\" WHERE \"KlientNr\" = 1"_s), "Fjord og F");
}

TEST_F(UpdateBatch, BrokenConstraintIsToldAndNothingIsWritten)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=1"_s);
    rows.setValue(u"KlientNr", Value(qint16{2}));
    EXPECT_EQ(errorOf([&] { write(rows); }), errors::kIntegrity);
    EXPECT_EQ(names(), u"En To Tre"_s);
}

TEST_F(UpdateBatch, AddedRowIsInsertedAndGetsItsNumber)
{
    m_other.run(u"CREATE TABLE Bil (ID COUNTER CONSTRAINT ID PRIMARY KEY, RegNr TEXT(10), Passiv "
                "BIT, Vekt SINGLE, Kjøpt DATE)"_s);
    const Value bought(utcMoment(QDate(2014, 3, 9), QTime(8, 30)));
    Recordset rows = m_other.rows(u"SELECT * FROM Bil"_s, LockType::Optimistic);
    rows.addNew();
    EXPECT_EQ(rows.absolutePosition(), 1);
    EXPECT_TRUE(rows.isNull(0));
    rows.setValue(u"RegNr", Value(u"DN12345"_s));
    rows.setValue(u"Passiv", Value(true));
    rows.setValue(u"Vekt", Value(12.5F));
    rows.setValue(4, bought);
    rows.addNew();
    rows.setValue(u"RegNr", Value(u"EK54321"_s));
    rows.updateBatch();
    EXPECT_EQ(rows.integer(u"ID"), 2);
    rows.moveFirst();
    EXPECT_EQ(rows.integer(u"ID"), 1);
    const Recordset read = detached(u"SELECT * FROM Bil WHERE ID=1"_s);
    EXPECT_EQ(read.value(1), Value(u"DN12345"_s));
    EXPECT_EQ(read.value(2), Value(true));
    EXPECT_EQ(read.value(3), Value(12.5F));
    EXPECT_EQ(read.value(4), bought);
    EXPECT_EQ(stored(u"SELECT \"Kjøpt\" FROM \"Bil\" WHERE \"ID\" = 1"_s), "2014-03-09 08:30:00");
    // From now on they are rows like others.
    rows.setValue(u"RegNr", Value(u"DN99999"_s));
    rows.updateBatch();
    EXPECT_EQ(m_other.column(u"SELECT RegNr FROM Bil"_s), u"DN99999 EK54321"_s);
}

TEST_F(UpdateBatch, NumberGivenToAnAddedRowIsKept)
{
    m_other.run(u"CREATE TABLE Bil (ID COUNTER CONSTRAINT ID PRIMARY KEY, Passiv BIT)"_s);
    Recordset rows = m_other.rows(u"SELECT * FROM Bil"_s, LockType::Optimistic);
    rows.addNew();
    rows.setValue(u"ID", Value(qint32{7}));
    rows.updateBatch();
    EXPECT_EQ(rows.integer(u"ID"), 7);
    rows.addNew();
    rows.updateBatch();
    EXPECT_EQ(rows.integer(u"ID"), 8);
    EXPECT_EQ(m_other.value(u"SELECT @@IDENTITY"_s), Value(qint32{8}));
    EXPECT_EQ(m_other.value(u"SELECT Passiv FROM Bil WHERE ID=7"_s), Value(false));
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
    m_other.run(u"CREATE TABLE Notat (Tekst TEXT(20))"_s);
    m_other.run(u"INSERT INTO Notat VALUES ('x')"_s);
    Recordset joined = detached(
        u"SELECT K.KlientNr, K.Navn, N.Tekst FROM Klient AS K, Notat AS N WHERE K.KlientNr=1"_s);
    joined.setValue(1, Value(u"y"_s));
    EXPECT_EQ(errorOf([&] { write(joined); }), errors::kSyntax);
    EXPECT_EQ(names(), u"En To Tre"_s);
}

TEST_F(UpdateBatch, RowsWithoutTheirKeyAreFoundByWhatWasReadOfThem)
{
    Recordset withoutKey = detached(u"SELECT Navn,Logo,Saldo FROM Klient WHERE KlientNr=2"_s);
    withoutKey.setValue(u"Logo", Value(QByteArray("bilde"))); // Null before
    write(withoutKey);
    EXPECT_EQ(stored(u"SELECT \"KlientNr\" FROM \"Klient\" WHERE \"Logo\" IS NOT NULL"_s), "2");
    withoutKey.setValue(u"Logo", Value(QByteArray("annet")));
    withoutKey.setValue(u"Saldo", Value(Currency::fromInteger(20)));
    write(withoutKey);
    const Recordset read = detached(u"SELECT Navn,Logo,Saldo FROM Klient WHERE KlientNr=2"_s);
    EXPECT_EQ(read.value(0), Value(u"To"_s));
    EXPECT_EQ(read.value(1), Value(QByteArray("annet")));
    EXPECT_EQ(read.value(2), Value(Currency::fromInteger(20)));

    m_other.run(u"CREATE TABLE Notat (Tekst TEXT(20), Dag DATETIME, Vekt SINGLE, Bilde LONGBINARY, "
                "Sum CURRENCY)"_s);
    m_other.run(u"INSERT INTO Notat (Tekst,Dag,Vekt,Sum) VALUES ('x',#03/09/2014#,0.1,1.5)"_s);
    Recordset keyless = detached(u"SELECT Tekst,Dag,Vekt,Bilde,Sum FROM Notat"_s);
    for (const char *bytes : {"bilde", "annet"}) {
        keyless.setValue(u"Bilde", Value(QByteArray(bytes)));
        write(keyless);
        EXPECT_EQ(m_other.value(u"SELECT Bilde FROM Notat WHERE Tekst='x'"_s),
                  Value(QByteArray(bytes)));
    }
    keyless.addNew();
    keyless.setValue(0, Value(u"ny"_s));
    write(keyless);
    EXPECT_EQ(stored(u"SELECT COUNT(*) FROM \"Notat\""_s), "2");
}

TEST_F(UpdateBatch, ARowThatCannotBeToldFromOthersIsNotWritten)
{
    m_other.run(u"UPDATE Klient SET Navn='Lik',Saldo=Null"_s);
    Recordset rows = detached(u"SELECT Navn,Saldo FROM Klient WHERE KlientNr=1"_s);
    rows.setValue(0, Value(u"Ny"_s));
    EXPECT_EQ(errorOf([&] { write(rows); }), errors::kIntegrity);
    EXPECT_EQ(names(), u"Lik Lik Lik"_s);
    m_other.run(u"UPDATE Klient SET Navn='Annen'"_s);
    EXPECT_EQ(errorOf([&] { write(rows); }), errors::kRowNotFound);
}

TEST_F(UpdateBatch, NoCurrentRowNoChange)
{
    Recordset rows = detached(u"SELECT * FROM Klient WHERE KlientNr=9"_s);
    EXPECT_EQ(errorOf([&] { rows.setValue(u"Navn", Value(u"x"_s)); }), errors::kNoCurrentRow);
}

} // namespace ado::test
