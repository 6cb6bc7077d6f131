#include "host/program/HostTest.h"

#include <QDir>
#include <QRegularExpression>
#include <QSet>

using namespace Qt::StringLiterals;

namespace {

/// All documents of the demo company beside the schemas of UBL 2.0. The schemas are not the
/// project's; they are looked for in a folder beside it.
class EhfSchemaTest : public HostTest
{
protected:
    void SetUp() override
    {
        if (!QDir(m_schemas).exists(u"maindoc"_s))
            GTEST_SKIP() << "The UBL 2.0 schemas are not in " << m_schemas.toStdString()
                         << "; the documents are not checked against them.";
        makeDemo();
    }

    /// Writes the document of each order that `condition` holds for, checks it against the schema
    /// of `kind` and returns the elements that break it. How many were written goes to `m_written`.
    QSet<QString> brokenElements(const QString &kind, const QString &condition)
    {
        static const QRegularExpression complaint(u"element (\\w+): Schemas"_s);
        QSet<QString> result;
        for (const Row &row :
             rows(u"SELECT OrdreNr FROM Ordre WHERE KlientNr=1 AND "_s + condition)) {
            const QString file = row[u"OrdreNr"_s] + u".xml"_s;
            const Outcome written =
                host({u"--dsn"_s, u"demo.db"_s, u"--ehf"_s, row[u"OrdreNr"_s], u"--ut"_s, file});
            EXPECT_EQ(written.status, 0) << ::testing::PrintToString(written);
            const Outcome checked =
                start(u"xmllint"_s, {u"--nonet"_s, u"--noout"_s, u"--schema"_s,
                                     u"%1/maindoc/UBL-%2-2.0.xsd"_s.arg(m_schemas, kind), file});
            auto complaints = complaint.globalMatch(checked.err);
            EXPECT_EQ(checked.status == 0, !complaints.hasNext()) << checked.err.toStdString();
            while (complaints.hasNext())
                result.insert(complaints.next().captured(1));
            ++m_written;
        }
        return result;
    }

    const QString m_schemas = QStringLiteral(UBL_SCHEMAS);
    int m_written = 0;
};

TEST_F(EhfSchemaTest, InvoicesKeepTheirs)
{
    EXPECT_EQ(brokenElements(u"Invoice"_s, u"SumBrutto>=0"_s), QSet<QString>());
    EXPECT_GT(m_written, 40);
}

TEST_F(EhfSchemaTest, CreditNotesBreakTheirsByTheReferenceToAnOrderLine)
{
    EXPECT_EQ(brokenElements(u"CreditNote"_s, u"SumBrutto<0"_s),
              QSet<QString>{u"OrderLineReference"_s});
    EXPECT_GT(m_written, 1);
}

} // namespace
