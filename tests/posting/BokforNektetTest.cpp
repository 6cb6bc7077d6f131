#include "platform/ado/AdoTypes.h"
#include "posting/BokforProsessTest.h"
#include "posting/Bokkontroll.h"
#include "support/Rounds.h"

#include <map>
#include <random>

using namespace Qt::StringLiterals;

namespace {

constexpr int kInvoices = 4;

/// Runs of which the database refuses statements here and there, as it does while its disk is full:
/// what then is wrong in the books the check of the books tells.
class BokforNektetTest : public BokforProsessTest
{
protected:
    /// Invoices of which the books are as if the run had gone well, or as if it had not been; the
    /// others are what a refusal has left.
    QStringList brokenInvoices()
    {
        QStringList broken;
        for (int nr = kFirst; nr < kFirst + kInvoices; ++nr) {
            const bool posted =
                count(u"Ordre WHERE OrdreStatus='Bokført' AND OrdreNr=%1"_s.arg(nr)) == 1;
            const QStringList vouchers =
                rows(u"SELECT ID,AntPost FROM Bilag WHERE Tekst='Faktura Kunde %1'"_s.arg(nr));
            QStringList lines;
            for (const QString &voucher : vouchers)
                lines += rows(u"SELECT Konto,Debet,Kredit FROM BilagLinjer WHERE BilagID=%1 ORDER "
                              u"BY Konto,Kredit"_s.arg(voucher.section(u'|', 0, 0)));
            const bool whole = vouchers.size() == 1 && vouchers[0].endsWith(u"|3") &&
                               lines == QStringList{u"1500|350|0"_s, u"3000|0|110"_s,
                                                    u"3000|0|115"_s, u"3000|0|125"_s};
            const bool untouched = vouchers.isEmpty();
            if (!(posted ? whole : untouched))
                broken += QString::number(nr);
        }
        return broken;
    }
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
        const QStringList wrong = brokenInvoices();
        QStringList numbers = rows(u"SELECT BilagNr FROM Bilag"_s);
        const bool twice = numbers.removeDuplicates() > 0;
        const bool loose = count(u"BilagLinjer WHERE BilagID=0"_s) > 0;
        const QStringList findings = KontrollerBoker();
        EXPECT_EQ(findings.isEmpty(), wrong.isEmpty() && !twice && !loose)
            << wrong.join(u' ').toStdString() << '\n'
            << findings.join(u'\n').toStdString() << "\nafter\n"
            << refused.join(u'\n').toStdString();
        broken += int(wrong.size());
    }
    EXPECT_GT(broken, 20) << "the refusals came where they matter";
}
