#include "data/RowValues.h"

using namespace Qt::StringLiterals;

namespace {

TEST(RowValues, StandInTheOrderInWhichTheyWereAdded)
{
    RowValues row;
    row.add(u"Nr", u" 5"_s).addText(u"Navn", u"Ås"_s).add(u"Dato", u"#03/09/2014#"_s);
    EXPECT_EQ(row.insertInto(u"T"_s),
              u"INSERT INTO T (Nr,Navn,Dato) VALUES ( 5,'Ås',#03/09/2014#)"_s);
    EXPECT_EQ(row.update(u"T"_s, u"ID= 7"_s),
              u"UPDATE T SET Nr= 5,Navn='Ås',Dato=#03/09/2014# WHERE ID= 7"_s);
}

TEST(RowValues, LeaveAnApostropheAsItStands)
{
    RowValues row;
    row.addText(u"Navn", u"O'Brien"_s);
    EXPECT_EQ(row.insertInto(u"T"_s), u"INSERT INTO T (Navn) VALUES ('O'Brien')"_s);
}

TEST(RowValues, KeepThePlaceOfAnEmptyLiteral)
{
    RowValues row;
    row.add(u"Nr", QString()).add(u"Navn", QString());
    EXPECT_EQ(row.insertInto(u"T"_s), u"INSERT INTO T (Nr,Navn) VALUES (,)"_s);
    EXPECT_EQ(row.update(u"T"_s, u"ID=7"_s), u"UPDATE T SET Nr=,Navn= WHERE ID=7"_s);
}

} // namespace
