#include "reports/DemoDatabase.h"
#include "reports/ListTest.h"
#include "shell/component/Main.h"
#include "support/PostgresCluster.h"

using namespace Qt::StringLiterals;

namespace {

/// The company, first in a file and then on a server, and all that is written on its papers.
class ServerPaperTest : public ListTest
{
protected:
    ~ServerPaperTest() override { reload(); } // ahead of the server's database

    [[nodiscard]] QString connectionString() const override
    {
        return m_onServer ? m_database.connectionString() : ListTest::connectionString();
    }
    /// Expects that the papers are the same on a server as in a file: texts and logos with their
    /// places, of which a file's papers must have more than `least`.
    void expectTheSame(const std::function<QStringList()> &papers, int least)
    {
        const QStringList inFile = papers();
        EXPECT_GT(inFile.size(), least);
        reload();
        m_onServer = true;
        makeDemoDatabase(connectionString());
        Main(); // the VAT rates
        EXPECT_EQ(papers(), inFile);
    }
    static void note(QStringList &seen, const report::Document &document)
    {
        for (const report::Page &page : document.pages) {
            for (const report::TextCommand &text : page.texts)
                seen += u"%1 %2 %3"_s.arg(text.baseline.x(), 0, 'f', 2)
                            .arg(text.baseline.y(), 0, 'f', 2)
                            .arg(text.text());
            for (const report::PictureCommand &picture : page.pictures)
                seen += u"%1 mm"_s.arg(picture.rect.width());
        }
    }

private:
    PostgresDatabase m_database;
    bool m_onServer = false;
};

} // namespace

TEST_F(ServerPaperTest, AServersInvoicesAreThoseOfAFile)
{
    const auto invoices = [this] {
        run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (1,'T100','dag')"_s);
        storeLogo(QByteArray::fromBase64("R0lGODdhAQABAIAAAP///////ywAAAAAAQABAAACAkQBADs="));
        QStringList seen;
        for (const QString &form : {u"Fak-mgiro-mlogo.rpt"_s, u"Fak-ugiro-ulogo.rpt"_s}) {
            for (int order = 1030; order < 1050; ++order)
                note(seen, print(form, order));
        }
        EXPECT_EQ(seen.count(u"20 mm"_s), 20);
        return seen;
    };
    expectTheSame(invoices, 1000);
}

TEST_F(ServerPaperTest, AServersListsAreThoseOfAFile)
{
    const QString year =
        kClient + u" and {Ordre.OrdreDato} in Date( 2014, 1, 1) to Date( 2014, 12, 31)"_s;
    const QString overdue =
        kClient + u" and {Ordre.OrdreStatus}<>'Ordre' and {Ordre.OrdreStatus}<>'Betalt' and "
                  "{Ordre.ForfallDato}<Date( 2014, 9, 1) AND {Ordre.KundeNr}=10022"_s;
    const auto listsOfARun = [&] {
        QStringList seen;
        note(seen, list(u"Ordreoversikt.rpt"_s, year + u" and {Ordre.OrdreStatus}='Betalt'"_s));
        note(seen, list(u"Ordreoversikt.rpt"_s, year));
        note(seen, list(u"Purreliste.rpt"_s, overdue));
        post({1044, 1045, 1047, 1048, 1051});
        note(seen, list(u"Fakturajournal.rpt"_s, kClient));
        note(seen, list(u"Salgsjournal.rpt"_s, kClient));
        return seen;
    };
    expectTheSame(listsOfARun, 500);
}
