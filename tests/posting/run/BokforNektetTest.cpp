#include "platform/ado/AdoTypes.h"
#include "posting/run/BokforProsessTest.h"
#include "posting/run/Bokkontroll.h"
#include "support/Rounds.h"

#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr int kInvoices = 4;

/// Runs of which the database refuses statements here and there, as it does while its disk is full:
/// what then is wrong in the books the check of the books tells.
class BokforNektetTest : public BokforProsessTest
{
};

} // namespace

TEST_F(BokforNektetTest, WhatRefusedStatementsLeaveIsFound)
{
    std::mt19937 random(20140309);
    int broken = 0;
    for (int round = 0; round < rounds(60) && !HasFailure(); ++round) {
        SCOPED_TRACE(round);
        startAnew();
        prepare(kInvoices);
        NoterendeSkjerm list;
        loadList(list);
        // From one statement in thirty to every second one; and the disk may be full for a while.
        const double share = std::uniform_real_distribution(0.03, 0.5)(random);
        const int from = std::uniform_int_distribution(0, 60)(random);
        const int until = from + std::uniform_int_distribution(1, 60)(random);
        QStringList refused;
        nekt = [&, number = 0](const QString &statement) mutable {
            const bool full = round % 2 == 0 ? std::bernoulli_distribution(share)(random)
                                             : number >= from && number < until;
            ++number;
            if (full) {
                refused += statement;
                throw RunTimeError(ado::errors::kUnspecified, u"Disken er full."_s);
            }
        };
        BokforMerkede(list);
        nekt = [](const QString &) {};
        const bool whole = booksAreWhole(kInvoices);
        const QStringList findings = KontrollerBoker();
        EXPECT_EQ(findings.isEmpty(), whole) << findings.join(u'\n').toStdString() << "\nafter\n"
                                             << refused.join(u'\n').toStdString();
        broken += whole ? 0 : 1;
    }
    EXPECT_GT(broken, 20) << "the refusals came where they matter";
}
