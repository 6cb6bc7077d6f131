#include "rules/Forfall.h"

#include "runtime/MachineLocale.h"
#include "runtime/RunTimeError.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

TEST(ForfallTest, TheDaysAreAdded)
{
    EXPECT_EQ(ForfallsDato(QDate(2026, 2, 1), u"14"_s), u"15.02.2026"_s);
    EXPECT_EQ(ForfallsDato(QDate(2026, 2, 1), u"0"_s), u"01.02.2026"_s);
    EXPECT_EQ(ForfallsDato(QDate(2026, 2, 1), u" 28 "_s), u"01.03.2026"_s);
    EXPECT_EQ(ForfallsDato(QDate(2026, 2, 1), u"-1"_s), u"31.01.2026"_s);
}

TEST(ForfallTest, AFractionDoesNotReachTheNextDay)
{
    const ScopedLocale norwegian(MachineLocale::norwegian());
    EXPECT_EQ(ForfallsDato(QDate(2026, 2, 1), u"14,9"_s), u"15.02.2026"_s);
    EXPECT_EQ(ForfallsDato(QDate(2026, 2, 1), u"-0,5"_s), u"31.01.2026"_s);
    EXPECT_EQ(passOver([] { (void)ForfallsDato(QDate(2026, 2, 1), u"14.5"_s); }),
              errors::kTypeMismatch);
}

TEST(ForfallTest, WhatIsNoNumberOrNoDateIsAnError)
{
    for (const QString &days : {u""_s, u"fjorten"_s})
        EXPECT_EQ(passOver([&] { (void)ForfallsDato(QDate(2026, 2, 1), days); }),
                  errors::kTypeMismatch);
    EXPECT_EQ(passOver([] { (void)ForfallsDato(QDate(), u"14"_s); }), errors::kTypeMismatch);
}

TEST(ForfallTest, DaysBeyondTheCalendarAreAnError)
{
    EXPECT_EQ(ForfallsDato(QDate(9999, 12, 30), u"1"_s), u"31.12.9999"_s);
    EXPECT_EQ(ForfallsDato(QDate(100, 1, 2), u"-1"_s), u"01.01.0100"_s);
    for (const QString &days : {u"1"_s, u"1E+300"_s})
        EXPECT_EQ(passOver([&] { (void)ForfallsDato(QDate(9999, 12, 31), days); }),
                  errors::kOverflow);
    EXPECT_EQ(passOver([] { (void)ForfallsDato(QDate(100, 1, 1), u"-1"_s); }), errors::kOverflow);
    EXPECT_EQ(passOver([] { (void)ForfallsDato(QDate(2026, 1, 1), u"-1E+9"_s); }),
              errors::kOverflow);
}

} // namespace
