#include "reports/DemoDatabase.h"
#include "reports/InvoiceTest.h"
#include "support/PostgresCluster.h"

using namespace Qt::StringLiterals;

namespace {

/// The company first in a file and then on a server.
class FakturaPostgresTest : public InvoiceTest
{
protected:
    ~FakturaPostgresTest() override { reload(); } // ahead of the server's database

    [[nodiscard]] QString connectionString() const override
    {
        return m_onServer ? m_database.connectionString() : InvoiceTest::connectionString();
    }
    void moveToServer()
    {
        reload();
        m_onServer = true;
        makeDemoDatabase(connectionString());
    }

    /// All that is written on some invoices, with its place, and the places of the logos.
    QStringList invoices()
    {
        run(u"INSERT INTO Produkt (KlientNr,ProduktNr,Enhet) VALUES (1,'T100','dag')"_s);
        storeLogo(QByteArray::fromBase64("R0lGODdhAQABAIAAAP///////ywAAAAAAQABAAACAkQBADs="));
        QStringList seen;
        for (const QString &form : {u"Fak-mgiro-mlogo.rpt"_s, u"Fak-ugiro-ulogo.rpt"_s}) {
            for (int order = 1030; order < 1050; ++order) {
                for (const report::Page &page : print(form, order).pages)
                    note(seen, page);
            }
        }
        return seen;
    }

private:
    static void note(QStringList &seen, const report::Page &page)
    {
        for (const report::TextCommand &text : page.texts)
            seen += u"%1 %2 %3"_s.arg(text.baseline.x(), 0, 'f', 2)
                        .arg(text.baseline.y(), 0, 'f', 2)
                        .arg(text.text);
        for (const report::PictureCommand &picture : page.pictures)
            seen += u"%1 mm"_s.arg(picture.rect.width());
    }

    PostgresDatabase m_database;
    bool m_onServer = false;
};

} // namespace

TEST_F(FakturaPostgresTest, AServersInvoicesAreThoseOfAFile)
{
    const QStringList inFile = invoices();
    EXPECT_GT(inFile.size(), 1000);
    EXPECT_EQ(inFile.count(u"20 mm"_s), 20);
    moveToServer();
    EXPECT_EQ(invoices(), inFile);
}
