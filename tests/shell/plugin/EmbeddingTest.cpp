#include "shell/plugin/BareParent.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTemporaryDir>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// The parent that docs/EMBEDDING.md shows, on a database of its own and without a display.
class EmbeddingTest : public ::testing::Test
{
protected:
    EmbeddingTest()
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"QT_QPA_PLATFORM"_s, u"offscreen"_s);
        environment.insert(u"XDG_CONFIG_HOME"_s, folder.filePath(u"innstillinger"_s));
        parent.setProcessEnvironment(environment);
        makeBareParent(database());
    }
    [[nodiscard]] QString database() const { return folder.filePath(u"parent.db"_s); }
    void start(const QStringList &arguments)
    {
        parent.start(QStringLiteral(PARENT_PROGRAM),
                     QStringList{QStringLiteral(FAKTURA_FILE)} + arguments);
    }
    /// The first line that it prints; it goes on then.
    QByteArray firstLine()
    {
        while (!parent.canReadLine() && parent.waitForReadyRead(-1)) {
        }
        return parent.readLine();
    }
    [[nodiscard]] QStringList tables() const
    {
        QStringList names;
        const auto take = [](void *list, int, char **row, char **) {
            *static_cast<QStringList *>(list) += QString::fromUtf8(row[0]);
            return 0;
        };
        sqlite3 *file = nullptr;
        EXPECT_EQ(sqlite3_open(database().toUtf8().constData(), &file), SQLITE_OK);
        EXPECT_EQ(sqlite3_exec(file, "SELECT name FROM sqlite_schema WHERE type='table'", take,
                               &names, nullptr),
                  SQLITE_OK);
        sqlite3_close(file);
        return names;
    }

    int count = 1;
    char name[16] = "embedding_test";
    char *values[2] = {name, nullptr};
    QCoreApplication application{count, values}; // QProcess wants one
    QTemporaryDir folder;
    QProcess parent;
};

TEST_F(EmbeddingTest, TheParentOfThePageStartsTheModuleAndLives)
{
    start({database(), u"--ny"_s});
    EXPECT_EQ(firstLine(), "started\n") << parent.readAllStandardError().toStdString();
    EXPECT_EQ(parent.state(), QProcess::Running);
    parent.kill();
    parent.waitForFinished(-1);
    for (const QString &table : {u"Ordre"_s, u"OrdreLinjer"_s, u"Produkt"_s})
        EXPECT_TRUE(tables().contains(table)) << table.toStdString();
}

TEST_F(EmbeddingTest, ItEndsWhenTheModuleDoesNotStart)
{
    start({folder.filePath(u"mangler.db"_s)});
    EXPECT_EQ(firstLine(), "not started\n");
    ASSERT_TRUE(parent.waitForFinished(-1));
    EXPECT_EQ(parent.exitStatus(), QProcess::NormalExit);
    EXPECT_EQ(parent.exitCode(), 1);
}

} // namespace
