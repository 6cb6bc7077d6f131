#include "reports/DemoDatabase.h"
#include "reports/ListTest.h"
#include "shell/component/Main.h"
#include "support/PostgresCluster.h"

using namespace Qt::StringLiterals;

namespace {

/// The company and a posting run, first in a file and then on a server.
class ListPostgresTest : public ListTest
{
protected:
    ~ListPostgresTest() override { reload(); } // ahead of the server's database

    [[nodiscard]] QString connectionString() const override
    {
        return m_onServer ? m_database.connectionString() : ListTest::connectionString();
    }
    void moveToServer()
    {
        reload();
        m_onServer = true;
        makeDemoDatabase(connectionString());
        Main(); // the VAT rates
    }

    /// All that is written on the four lists after a run, with its place.
    QStringList listsOfARun()
    {
        const QString year = kClient + u" and {Ordre.OrdreDato} in Date( 2014, 1, 1) to "
                                       "Date( 2014, 12, 31)"_s;
        const QString overdue =
            kClient + u" and {Ordre.OrdreStatus}<>'Ordre' and {Ordre.OrdreStatus}<>'Betalt' and "
                      "{Ordre.ForfallDato}<Date( 2014, 9, 1) AND {Ordre.KundeNr}=10022"_s;
        QStringList texts;
        note(texts, list(u"Ordreoversikt.rpt"_s, year + u" and {Ordre.OrdreStatus}='Betalt'"_s));
        note(texts, list(u"Ordreoversikt.rpt"_s, year));
        note(texts, list(u"Purreliste.rpt"_s, overdue));
        post({1044, 1045, 1047, 1048, 1051});
        note(texts, list(u"Fakturajournal.rpt"_s, kClient));
        note(texts, list(u"Salgsjournal.rpt"_s, kClient));
        return texts;
    }

private:
    static void note(QStringList &texts, const report::Document &document)
    {
        for (const report::Page &page : document.pages) {
            for (const report::TextCommand &text : page.texts)
                texts += u"%1 %2 %3"_s.arg(text.baseline.x(), 0, 'f', 2)
                             .arg(text.baseline.y(), 0, 'f', 2)
                             .arg(text.text);
        }
    }

    PostgresDatabase m_database;
    bool m_onServer = false;
};

} // namespace

TEST_F(ListPostgresTest, AServersListsAreThoseOfAFile)
{
    const QStringList inFile = listsOfARun();
    EXPECT_GT(inFile.size(), 500);
    moveToServer();
    EXPECT_EQ(listsOfARun(), inFile);
}
