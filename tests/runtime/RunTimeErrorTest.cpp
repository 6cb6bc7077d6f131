#include "runtime/RunTimeError.h"

#include "runtime/Conversions.h"
#include "runtime/Currency.h"
#include "runtime/Support.h"

#include <stdexcept>

using namespace Qt::StringLiterals;

TEST(RunTimeError, HasTheStandardDescriptionOfItsNumber)
{
    EXPECT_EQ(RunTimeError(errors::kInvalidCall).description(),
              u"Ugyldig prosedyrekall eller argument"_s);
    EXPECT_EQ(RunTimeError(errors::kOverflow).description(), u"Overflyt"_s);
    EXPECT_EQ(RunTimeError(errors::kDivisionByZero).description(), u"Divisjon med null"_s);
    EXPECT_EQ(RunTimeError(errors::kTypeMismatch).description(), u"Typene stemmer ikke overens"_s);
    EXPECT_EQ(RunTimeError(errors::kFileNotFound).description(), u"Finner ikke filen"_s);
    EXPECT_EQ(RunTimeError(errors::kPathAccess).description(),
              u"Feil ved tilgang til bane eller fil"_s);
    EXPECT_EQ(RunTimeError(errors::kObjectNotSet).description(),
              u"Objektvariabelen er ikke satt"_s);
    EXPECT_EQ(RunTimeError(errors::kInvalidUseOfNull).description(), u"Ugyldig bruk av Null"_s);
    EXPECT_EQ(RunTimeError(481).description(), u"Ugyldig bilde"_s);
}

TEST(RunTimeError, AnyOtherNumberHasTheGeneralDescription)
{
    EXPECT_EQ(RunTimeError(1).description(), u"Programdefinert eller objektdefinert feil"_s);
}

TEST(RunTimeError, KeepsANumberAndADescriptionOfItsOwn)
{
    const RunTimeError error(-2147217900, u"Finner ikke tabellen «Ordre»"_s);
    EXPECT_EQ(error.number(), -2147217900);
    EXPECT_EQ(error.description(), u"Finner ikke tabellen «Ordre»"_s);
    EXPECT_EQ(std::string(error.what()), error.description().toStdString());
}

TEST(RunTimeError, WhatIsUtf8AndAStandardException)
{
    try {
        throw RunTimeError(3705, u"Postsettet er åpent når det røres"_s);
    } catch (const std::exception &error) {
        EXPECT_EQ(QString::fromUtf8(error.what()), u"Postsettet er åpent når det røres"_s);
    }
}

TEST(RunTimeError, PassOverGoesOnWithTheVariablesAsTheyStood)
{
    int amount = 5;
    const auto failing = []() -> int { throw RunTimeError(errors::kTypeMismatch); };
    EXPECT_EQ(passOver([&] { amount = failing(); }), 13);
    EXPECT_EQ(amount, 5);
    EXPECT_EQ(passOver([&] { amount = 6; }), 0);
    EXPECT_EQ(amount, 6);
}

/// Products of amounts that are read one after the other, some of which may not be readable.
struct Products
{
    Currency first;
    Currency second;
};

[[gnu::noinline]] Currency amountOf(const QString &text)
{
    return toCurrency(text);
}

[[gnu::noinline]] void multiply(const QString *texts, Products &products)
{
    Currency price;
    Currency rate;
    Currency count;
    passOver([&] { price = amountOf(texts[0]); });
    passOver([&] { rate = amountOf(texts[1]); });
    passOver([&] { count = amountOf(texts[2]); });
    passOver([&] { products.first = price * count; });
    passOver([&] { products.second = rate * count; });
}

TEST(RunTimeError, AnAmountWhoseStatementFailedKeepsItsValueUnderEveryOptimiser)
{
    const QString texts[] = {u"abc"_s, u"25"_s, u"2"_s};
    Products products;
    multiply(texts, products);
    EXPECT_EQ(products.first.tenThousandths(), 0);
    EXPECT_EQ(products.second.tenThousandths(), 50 * Currency::kScale);

    const QString unreadable[] = {u"3"_s, u"abc"_s, u"abc"_s};
    multiply(unreadable, products);
    EXPECT_EQ(products.first.tenThousandths(), 0);
    EXPECT_EQ(products.second.tenThousandths(), 0);
}

TEST(RunTimeError, PassOverLetsOtherExceptionsThrough)
{
    EXPECT_THROW(passOver([] { throw std::logic_error("a fault of the program"); }),
                 std::logic_error);
}

TEST(RunTimeError, AConditionThatFailsEntersItsBranch)
{
    EXPECT_TRUE(enters([]() -> bool { throw RunTimeError(errors::kObjectNotSet); }));
    EXPECT_TRUE(enters([] { return true; }));
    EXPECT_FALSE(enters([] { return false; }));
    EXPECT_THROW((void)enters([]() -> bool { throw std::logic_error("a fault"); }),
                 std::logic_error);
}
