#include "host/program/HostTest.h"

using namespace Qt::StringLiterals;

namespace {

/// A machine without the library that completes PDF files.
class NoQpdfTest : public HostTest
{
protected:
    void SetUp() override { hideLibrary(QStringLiteral(QPDF_LIBRARY)); }
};

} // namespace

TEST_F(NoQpdfTest, TheModuleStartsAllTheSame)
{
    makeDemo();
    const Outcome outcome = host({u"--dsn"_s, path(u"demo.db"_s)});
    EXPECT_EQ(outcome.status, 0) << ::testing::PrintToString(outcome);
}

TEST_F(NoQpdfTest, APdfIsRefusedByTheLibrarysNameAndNoneIsLeft)
{
    makeDemo();
    expectRefusal(
        host({u"--dsn"_s, path(u"demo.db"_s), u"--pdf"_s, u"1048"_s, u"--ut"_s, u"ut.pdf"_s}), 1,
        u"biblioteket qpdf (" QPDF_LIBRARY ") mangler på denne maskinen"_s);
    EXPECT_FALSE(files().contains(u"ut.pdf"_s));
}
