#include "faults/Place.h"
#include "faults/SessionWatch.h"
#include "faults/Work.h"
#include "output/ehf/EhfFil.h"
#include "support/ModuleTest.h"

#include <QBuffer>
#include <QDir>

using namespace Qt::StringLiterals;

namespace faults {

namespace {

/// The threads of this process.
qsizetype threads()
{
    return QDir(u"/proc/self/task"_s).entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

} // namespace

TEST(ThreadTest, ModuleStartsNoThread)
{
    const std::unique_ptr<Place> place = makePlace();
    ASSERT_EQ(threads(), 1);
    QStringList calls;
    qsizetype most = 0;
    {
        const SessionWatch watch([&](const char *call) {
            calls += QString::fromLatin1(call);
            most = std::max(most, threads());
        });
        ASSERT_EQ(startModule(place->connectionString()), 1);
        EXPECT_EQ(saveNewOrder(kLines).error, QString());
        saveOrderAgain();
        postInvoices();
        QBuffer file;
        file.open(QIODevice::WriteOnly);
        passOver([&] { SkrivEhfFil(file, 0, QString::number(kInvoices + 2)); });
        unloadModule();
    }
    for (const char *call : {"open", "begin", "execute", "query", "commit"})
        EXPECT_TRUE(calls.contains(QString::fromLatin1(call))) << call;
    EXPECT_EQ(most, 1);
    EXPECT_EQ(threads(), 1);
}

} // namespace faults
