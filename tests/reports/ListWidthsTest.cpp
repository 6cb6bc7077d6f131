#include "reports/ListTest.h"

using namespace Qt::StringLiterals;

namespace {

/// An invoice whose every column is as wide as it can be, posted in a run of its own.
struct Liste
{
    const char *file;
    const char *selection; ///< beside the client's
};

class ListWidthsTest : public ListTest, public testing::WithParamInterface<Liste>
{
protected:
    /// `name` is the customer's and the seller's.
    report::Document listWith(const QString &name)
    {
        const int order =
            enterOrder({{u"A"_s, u"Full"_s, u"1"_s, u"799999999.67"_s, u"25"_s}}, u"2"_s);
        change(order, u"OrdreNr=2147483647,OrdreStatus='Fakturert',KundeNr=999999999,"
                      "OrdreDato=#12/29/2013#,KundeNavn='%1',DeresRef='WWWWWWWWWWWWWWWWWWWW',"
                      "KID='1234567890123456789012345'"_s.arg(name));
        run(u"UPDATE Klient SET Navn='%1' WHERE KlientNr=1"_s.arg(name));
        run(u"UPDATE Kontoplan SET Navn='%1' WHERE KlientNr=1"_s.arg(name));
        run(u"INSERT INTO Bilag (KlientNr,BilagNr,BilagDato,Tekst) VALUES "
            "(1,999998,#01/01/2014#,'')"_s);
        post({kNumber}, u"3000"_s, u"WWWWWWWWWW"_s);
        const auto [file, selection] = GetParam();
        return list(QString::fromLatin1(file), kClient + QString::fromLatin1(selection));
    }
    void expectWhole(const QString &name)
    {
        const report::Document document = listWith(name);
        expectTidy(document);
        const report::Page &page = document.pages.at(0);
        EXPECT_EQ(textsOf(page).filter(u"…"_s), QStringList());
        const QStringList row = rowOf(page, u"2147483647"_s);
        EXPECT_TRUE(row.last().startsWith(u"999 999 999,"_s)) << row.join(u" | "_s).toStdString();
    }
    static constexpr int kNumber = 2147483647;
};

} // namespace

INSTANTIATE_TEST_SUITE_P(
    Lists, ListWidthsTest,
    testing::Values(Liste{"Ordreoversikt.rpt", " and {Ordre.OrdreNr}=2147483647"},
                    Liste{"Purreliste.rpt", " and {Ordre.KundeNr}=999999999"},
                    Liste{"Fakturajournal.rpt", ""}, Liste{"Salgsjournal.rpt", ""}),
    [](const auto &list) {
        const std::string file = list.param.file;
        return file.substr(0, file.find('.'));
    });

TEST_P(ListWidthsTest, TheWidestValuesAreWholeAndClearOfEachOther)
{
    expectWhole(QString(40, u'W'));
}

TEST_P(ListWidthsTest, AWrappedNamePushesNoFigure)
{
    expectWhole(u"WWWWWWWWW WWWWWWWWW WWWWWWWWW WWWWWWWWWW"_s);
}
