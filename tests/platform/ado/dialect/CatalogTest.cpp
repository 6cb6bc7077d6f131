#include "platform/ado/dialect/Catalog.h"

#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

TEST(Catalog, FindsNamesWithoutRegardToCase)
{
    Catalog names;
    names.add({u"Løyve"_s, {{u"ÅrsSum"_s, DataType::Currency, 0, false, false}}});
    const TableInfo *table = names.table(u"LØYVE");
    ASSERT_NE(table, nullptr);
    EXPECT_EQ(table->name, u"Løyve"_s);
    ASSERT_NE(table->column(u"årssum"), nullptr);
    EXPECT_EQ(table->column(u"årssum")->name, u"ÅrsSum"_s);
    EXPECT_EQ(table->column(u"årssu"), nullptr);
    EXPECT_EQ(names.table(u"Løyver"), nullptr);
}

TEST(Catalog, KeepsTheOrderOfItsTables)
{
    const Catalog names = catalog();
    ASSERT_EQ(names.tables().size(), 3u);
    EXPECT_EQ(names.tables()[0].name, u"Ordre"_s);
    EXPECT_EQ(names.tables()[2].name, u"Poststed"_s);
}

} // namespace ado::dialect::test
