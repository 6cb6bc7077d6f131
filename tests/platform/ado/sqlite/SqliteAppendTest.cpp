#include "platform/ado/Session.h"
#include "platform/ado/Support.h"

namespace ado::test {

/// Many rows added at once.
class SqliteAppend : public testing::Test
{
protected:
    SqliteAppend()
        : m_session(SessionPool::shared().acquire(resolve(ConnectionString(m_database.dsn()))))
    {
        m_session->execute(u"CREATE TABLE Ordre (ID COUNTER CONSTRAINT ID PRIMARY KEY, Navn "
                           "TEXT(3), Sum CURRENCY)");
    }
    static RowSet rowsOf(const QStringList &names, const std::vector<qint32> &numbers)
    {
        dialect::ResultColumn number;
        number.name = u"id"_s;
        number.type = DataType::Integer;
        dialect::ResultColumn name;
        name.name = u"Navn"_s;
        RowSet rows({number, name});
        for (qsizetype i = 0; i < names.size(); ++i) {
            rows.store(0).append(numbers[static_cast<std::size_t>(i)]);
            rows.store(1).append(names[i].isNull() ? Value() : Value(names[i]));
            rows.closeRow();
        }
        return rows;
    }
    std::string stored(const char *sql) { return Tool(m_database.path()).text(sql); }

    Database m_database;
    std::shared_ptr<Session> m_session;
};

TEST_F(SqliteAppend, KeepsNumbersAndGoesOnBehindThem)
{
    m_session->append(u"ORDRE", rowsOf({u"Æsop"_s, QString(), u""_s}, {70, 5, 90}));
    EXPECT_EQ(
        stored("SELECT group_concat(x, ' ') FROM (SELECT ID || quote(Navn) || quote(Sum) AS x "
               "FROM Ordre ORDER BY ID)"),
        "5NULLNULL 70'Æsop'NULL 90''NULL");
    m_session->execute(u"INSERT INTO Ordre (Navn) VALUES ('ny')");
    EXPECT_EQ(stored("SELECT ID FROM Ordre WHERE Navn='ny'"), "91");
}

TEST_F(SqliteAppend, AllRowsOrNone)
{
    const RowSet ones = rowsOf({u"a"_s, u"b"_s}, {1, 1});
    EXPECT_EQ(errorOf([&] { m_session->append(u"Ordre", ones); }), errors::kIntegrity);
    EXPECT_EQ(stored("SELECT COUNT(*) FROM Ordre"), "0");

    m_session->begin();
    m_session->execute(u"INSERT INTO Ordre (Navn) VALUES ('før')");
    const RowSet eights = rowsOf({u"a"_s, u"b"_s}, {8, 8});
    EXPECT_EQ(errorOf([&] { m_session->append(u"Ordre", eights); }), errors::kIntegrity);
    m_session->append(u"Ordre", rowsOf({u"c"_s}, {9}));
    m_session->commit();
    EXPECT_EQ(stored("SELECT group_concat(ID) FROM Ordre"), "1,9");
}

TEST_F(SqliteAppend, UnknownTableAndColumnAreErrors)
{
    EXPECT_EQ(errorOf([&] { m_session->append(u"Finnes", rowsOf({u"a"_s}, {1})); }),
              errors::kNoSuchTable);
    m_session->execute(u"CREATE TABLE Annet (ID LONG)");
    EXPECT_NE(errorOf([&] { m_session->append(u"Annet", rowsOf({u"a"_s}, {1})); }), 0);
}

} // namespace ado::test
