#include "faults/Place.h"
#include "faults/Work.h"
#include "output/ehf/EhfFil.h"
#include "support/ModuleTest.h"
#include "support/SessionTap.h"

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
        SessionTap tap;
        tap.afterEach([&](const QString &call) {
            calls += call;
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
    for (const QString &call : {u"open"_s, u"begin"_s, u"execute"_s, u"query"_s, u"commit"_s})
        EXPECT_TRUE(calls.contains(call)) << call.toStdString();
    EXPECT_EQ(most, 1);
    EXPECT_EQ(threads(), 1);
}

} // namespace faults
