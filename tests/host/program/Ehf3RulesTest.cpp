#include "host/program/HostTest.h"

#include <QDir>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace {

// All documents of the demo company beside the official rules, which are not the project's and are
// looked for in a folder beside it.
TEST_F(HostTest, TheDemoCompanysEhf3DocumentsKeepTheOfficialRules)
{
    const QString checker = QStringLiteral(EHF3_CHECK);
    if (!QFileInfo::exists(checker))
        GTEST_SKIP() << "The rules of EHF 3.0 are not beside the repository; the documents of the "
                        "demo company are not checked by them.";
    makeDemo();
    QDir(path(QString())).mkdir(u"ut"_s);
    for (const QStringList &chosen : {QStringList{}, {u"--status"_s, u"Ordre"_s}})
        static_cast<void>(
            host(QStringList{u"--dsn"_s, u"demo.db"_s, u"--ehf3-alle"_s, u"ut"_s} + chosen));
    const qsizetype documents = QDir(path(u"ut"_s)).entryList(QDir::Files).size();
    EXPECT_GT(documents, 50);
    constexpr int kToolIsMissing = 3;
    const Outcome checked = start(checker, {path(u"ut"_s)});
    if (checked.status == kToolIsMissing)
        GTEST_SKIP() << checked.out.toStdString();
    EXPECT_EQ(checked.out, u"%1 documents, 0 faults\n"_s.arg(documents).toUtf8());
}

} // namespace
