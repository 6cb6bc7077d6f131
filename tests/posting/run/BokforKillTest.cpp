#include "posting/run/BokforProsessTest.h"
#include "posting/run/Bokkontroll.h"
#include "state/SharedState.h"
#include "support/Child.h"
#include "support/Rounds.h"

#include <QElapsedTimer>

#include <algorithm>
#include <random>
#include <sys/socket.h>

using namespace Qt::StringLiterals;

namespace {

constexpr int kInvoices = 8;
constexpr int kLines = 4; // of a whole voucher: three rates and the customer
constexpr int kStatementsOfTable = 2;
// Of an invoice, in their order.
constexpr int kIdentityStatement = 4; // of the voucher, in one transaction with its insert
constexpr int kFirstLineStatement = 5;
constexpr int kWorkRowStatement = 9;
constexpr int kStatusStatement = 10;
constexpr int kStatementsOfInvoice = 12;

void say(int socket, char byte)
{
    if (::write(socket, &byte, 1) != 1)
        ::_exit(1);
}

/// Tells through a socket how far the run is.
class MeldendeSkjerm final : public NoterendeSkjerm
{
public:
    explicit MeldendeSkjerm(int socket) : m_socket(socket) {}
    void framdrift(int behandlet, int) override
    {
        if (behandlet > 0)
            say(m_socket, '.');
    }

private:
    int m_socket;
};

/// Posting runs that are killed, and run again by whoever starts the program the next time.
class BokforKillTest : public BokforProsessTest
{
protected:
    /// What there is of an invoice.
    struct Found
    {
        QStringList linesOfVouchers; ///< how many lines each of its vouchers has, in their order
        int workRows;
        bool posted;
    };
    Found found(int nr)
    {
        Found result{{},
                     count(u"tmpTbl WHERE FakNr=%1"_s.arg(nr)),
                     count(u"Ordre WHERE OrdreStatus='Bokført' AND OrdreNr=%1"_s.arg(nr)) == 1};
        for (const QString &id :
             rows(u"SELECT ID FROM Bilag WHERE Tekst='Faktura Kunde %1' ORDER BY ID"_s.arg(nr)))
            result.linesOfVouchers += QString::number(count(u"BilagLinjer WHERE BilagID="_s + id));
        return result;
    }

    /// Runs the posting in a process of its own and kills it before its statement of that number
    /// or, with a `pause` in nanoseconds, so long after it was let go. How many invoices it told
    /// of.
    int killAt(int statement, qint64 pause)
    {
        NoterendeSkjerm list;
        loadList(list);
        reload(); // nothing open is shared with the child
        int ends[2];
        EXPECT_EQ(::socketpair(AF_UNIX, SOCK_STREAM, 0, ends), 0);
        Child child([&] {
            ::close(ends[0]);
            startAnew();
            nekt = [&, number = 0](const QString &) mutable {
                char answer = 0;
                if (++number == statement) {
                    say(ends[1], '!');
                    if (::read(ends[1], &answer, 1) != 1)
                        ::_exit(1);
                }
            };
            MeldendeSkjerm screen(ends[1]);
            screen.rader = list.rader;
            BokforMerkede(screen);
            return 0;
        });
        ::close(ends[1]);
        char byte = 0;
        int told = 0;
        while (byte != '!' && readByte(ends[0], byte))
            told += byte == '.' ? 1 : 0;
        // No sleep: the moment is to be met within microseconds.
        QElapsedTimer clock;
        clock.start();
        if (pause > 0) {
            EXPECT_EQ(::send(ends[0], &byte, 1, MSG_NOSIGNAL), 1);
        }
        while (clock.nsecsElapsed() < pause) {
        }
        child.kill();
        while (readByte(ends[0], byte))
            told += byte == '.' ? 1 : 0;
        ::close(ends[0]);
        return told;
    }
};

const QStringList kOneWhole{QString::number(kLines)};

/// The lines of the vouchers that an invoice has before its statement of that place.
QStringList linesBefore(int place)
{
    if (place <= kIdentityStatement)
        return {};
    return {QString::number(std::clamp(place - kFirstLineStatement, 0, kLines))};
}

} // namespace

TEST_F(BokforKillTest, AKilledRunCanBeRunAgain)
{
    std::mt19937 random(20140309);
    for (int point = 0; point < rounds(underlag().killPoints()) && !HasFailure(); ++point) {
        SCOPED_TRACE(point);
        startAnew();
        prepare(kInvoices);
        // Every second one is killed before a statement, at each place of an invoice in turn, the
        // others at any moment of the few statements after one.
        const bool before = point % 2 == 0;
        const int invoice = std::uniform_int_distribution(0, kInvoices - 1)(random);
        const int place = point / 2 % kStatementsOfInvoice;
        const int statement = kStatementsOfTable + invoice * kStatementsOfInvoice + place + 1;
        constexpr qint64 kFewStatements = 3'000'000; // nanoseconds
        const qint64 pause =
            before ? 0 : std::uniform_int_distribution<qint64>(1, kFewStatements)(random);
        const int told = killAt(statement, pause);
        ASSERT_EQ(underlag().integrity(ModuleTest::connectionString()), u"ok"_s);
        startAnew();

        if (before) {
            ASSERT_EQ(told, invoice);
            const Found there = found(kFirst + told);
            EXPECT_EQ(there.linesOfVouchers, linesBefore(place));
            EXPECT_EQ(there.workRows, place > kWorkRowStatement ? 1 : 0);
            EXPECT_EQ(there.posted, place > kStatusStatement);
        }
        for (int i = 0; i < kInvoices; ++i) {
            SCOPED_TRACE(kFirst + i);
            const Found there = found(kFirst + i);
            const int vouchers = int(there.linesOfVouchers.size());
            if (i < told) { // what was told as done is there once
                EXPECT_EQ(there.linesOfVouchers, kOneWhole);
                EXPECT_EQ(there.workRows, 1);
                EXPECT_TRUE(there.posted);
            } else if (i > told) { // what was not begun is as it was
                EXPECT_EQ(vouchers, 0);
                EXPECT_EQ(there.workRows, 0);
                EXPECT_FALSE(there.posted);
            } else { // of the one under way the first statements, up to any of them
                EXPECT_LE(vouchers, 1);
                EXPECT_LE(there.workRows, 1);
                EXPECT_TRUE(there.workRows == 0 || there.linesOfVouchers == kOneWhole);
                EXPECT_TRUE(!there.posted || there.workRows == 1);
            }
        }
        // The check of the books finds just the invoice that was broken off.
        const QStringList findings = KontrollerBoker();
        const bool brokenOff = told < kInvoices && !found(kFirst + told).posted &&
                               !found(kFirst + told).linesOfVouchers.isEmpty();
        EXPECT_EQ(!findings.isEmpty(), brokenOff) << ::testing::PrintToString(findings);
        const bool lastWasPosted = told < kInvoices && found(kFirst + told).posted;
        const QStringList leftBehind =
            told < kInvoices ? found(kFirst + told).linesOfVouchers : QStringList();

        NoterendeSkjerm again;
        loadList(again);
        ASSERT_EQ(int(again.rader.size()), kInvoices - told - (lastWasPosted ? 1 : 0));
        BokforMerkede(again);
        for (int i = 0; i < kInvoices; ++i) {
            SCOPED_TRACE(kFirst + i);
            const Found there = found(kFirst + i);
            EXPECT_TRUE(there.posted);
            EXPECT_EQ(there.workRows, i < told || (i == told && lastWasPosted) ? 0 : 1);
            // A voucher begun before the kill stays beside the whole one.
            EXPECT_EQ(there.linesOfVouchers,
                      i == told && !lastWasPosted ? leftBehind + kOneWhole : kOneWhole);
        }
        EXPECT_EQ(count(u"BilagLinjer WHERE BilagID=0"_s), 0);
    }
}
