#include "shell/plugin/BareParent.h"
#include "support/NamedComponent.h"

#include <QFile>
#include <QObject>
#include <QTemporaryDir>
#include <QVariant>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include <cstdlib>
#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A parent that knows names alone.
class PluginTest : public ::testing::Test
{
protected:
    PluginTest() { makeBareParent(path()); }

    [[nodiscard]] QString path() const { return m_folder.filePath(u"parent.db"_s); }

    std::unique_ptr<QObject> createInstance() { return m_component.createInstance(); }
    static void start(QObject &module, const QString &connectionString)
    {
        NamedComponent::start(module, connectionString, 5, 2014);
    }

    /// A number out of the database file, read by other means than the module's.
    int number(const char *query)
    {
        sqlite3 *database = nullptr;
        sqlite3_stmt *statement = nullptr;
        int result = -1;
        EXPECT_EQ(sqlite3_open(path().toUtf8().constData(), &database), SQLITE_OK);
        EXPECT_EQ(sqlite3_prepare_v2(database, query, -1, &statement, nullptr), SQLITE_OK);
        if (sqlite3_step(statement) == SQLITE_ROW)
            result = sqlite3_column_int(statement, 0);
        sqlite3_finalize(statement);
        sqlite3_close(database);
        return result;
    }

    QTemporaryDir m_folder;
    NamedComponent m_component;
};

TEST_F(PluginTest, TheLibraryTellsItsName)
{
    const QPluginLoader loader(QStringLiteral(FAKTURA_FILE));
    EXPECT_EQ(loader.metaData().value(u"IID").toString(), u"Faktura.clsFaktura"_s);
}

TEST_F(PluginTest, TheLibraryTellsItsVersionWithoutBeingLoaded)
{
    const QPluginLoader loader(QStringLiteral(FAKTURA_FILE));
    EXPECT_EQ(loader.metaData().value(u"MetaData").toObject().value(u"version").toString(),
              QStringLiteral(FAKTURA_VERSION));
    EXPECT_FALSE(loader.isLoaded());
}

TEST_F(PluginTest, AnInstanceIsReadyWithEmptyValues)
{
    const auto module = createInstance();
    ASSERT_NE(module, nullptr);
    EXPECT_EQ(module->property("ModuleInit").toInt(), 1);
    EXPECT_EQ(module->property("ConnectStreng").toString(), QString());
    EXPECT_EQ(module->property("Klient").toInt(), 0);
    EXPECT_EQ(module->property("CurrentYear").toInt(), 0);
    EXPECT_EQ(module->parent(), nullptr);
}

TEST_F(PluginTest, TheNumbersAreOfSixteenBits)
{
    const auto module = createInstance();
    for (const char *name : {"ModuleInit", "Klient", "CurrentYear"})
        EXPECT_EQ(module->property(name).typeId(), QMetaType::Short) << name;
}

TEST_F(PluginTest, AStartBringsTheDatabaseUp)
{
    const auto module = createInstance();
    start(*module, u"dsn="_s + path());
    EXPECT_EQ(module->property("ModuleInit").toInt(), 1);
    EXPECT_EQ(number("SELECT COUNT(*) FROM sqlite_master WHERE type='table' AND name IN "
                     "('Ordre','OrdreLinjer','Produkt')"),
              3);
    EXPECT_EQ(number("SELECT COUNT(*) FROM pragma_table_info('KundeLev') WHERE name IN "
                     "('LevAdr1','LevAdr2','LevPostNr','SammeLevAdr','FakturaType')"),
              5);
    EXPECT_EQ(number("SELECT KontoNr FROM Kontoplan WHERE KlientNr=5"), 3000);
    EXPECT_EQ(number("SELECT Aar FROM Hovedbok WHERE KlientNr=5"), 2014);
}

TEST_F(PluginTest, ClassesAreMadeByTheirExternalNames)
{
    const auto made = [&](const QString &name) {
        QObject *instance = nullptr;
        EXPECT_TRUE(QMetaObject::invokeMethod(m_component.factory(), "CreateInstance",
                                              Q_RETURN_ARG(QObject *, instance),
                                              Q_ARG(QString, name)));
        return std::unique_ptr<QObject>(instance);
    };
    EXPECT_EQ(made(u"Faktura.clsFaktura"_s)->property("ModuleInit").toInt(), 1);
    EXPECT_GE(
        made(u"Faktura.clsEhf3"_s)->metaObject()->indexOfMethod("SkrivEhf3(short,int,QString)"), 0);
    for (const QString &name : {QString(), u"clsEhf3"_s, u"Faktura.clsehf3"_s, u"Faktura."_s})
        EXPECT_EQ(made(name), nullptr) << name.toStdString();
}

TEST_F(PluginTest, AFailedStartTellsByModuleInitAlone)
{
    const auto module = createInstance();
    start(*module, u"dsn="_s + path() + u".borte"_s);
    EXPECT_EQ(module->property("ModuleInit").toInt(), 0);
    const auto other = createInstance();
    EXPECT_EQ(other->property("ModuleInit").toInt(), 1);
}

TEST_F(PluginTest, AFurtherInstanceSharesTheValues)
{
    const auto module = createInstance();
    module->setProperty("Klient", 7);
    module->setProperty("ConnectStreng", u"dsn=a"_s);
    const auto further = createInstance();
    EXPECT_EQ(further->property("Klient").toInt(), 7);
    EXPECT_EQ(further->property("ConnectStreng").toString(), u"dsn=a"_s);
}

TEST_F(PluginTest, TheInstanceMayGoWhileTheModuleRuns)
{
    start(*createInstance(), u"dsn="_s + path());
    const auto next = createInstance();
    EXPECT_EQ(next->property("Klient").toInt(), 5);
}

TEST_F(PluginTest, AParentMayEndWithoutUnloading)
{
    const auto startAndEnd = [this] {
        static const std::unique_ptr<QObject> module = createInstance();
        start(*module, u"dsn="_s + path());
        m_component.loader.setFileName({}); // lets go of the library and leaves it loaded
        std::exit(module->property("ModuleInit").toInt() == 1 ? 0 : 1);
    };
    EXPECT_EXIT(startAndEnd(), ::testing::ExitedWithCode(0), "");
    EXPECT_FALSE(QFile::exists(path() + u"-wal"_s)) << "the database was not closed";
}

TEST_F(PluginTest, ALaterLoadBeginsAnew)
{
    {
        QPluginLoader loader(QStringLiteral(FAKTURA_FILE));
        QObject *instance = nullptr;
        QMetaObject::invokeMethod(loader.instance(), "CreateInstance",
                                  Q_RETURN_ARG(QObject *, instance));
        ASSERT_NE(instance, nullptr);
        start(*instance, u"dsn="_s + path());
        EXPECT_EQ(instance->property("ModuleInit").toInt(), 1);
        delete instance;
        EXPECT_TRUE(loader.unload());
    }
    const auto module = createInstance();
    EXPECT_EQ(module->property("ConnectStreng").toString(), QString());
    EXPECT_EQ(module->property("Klient").toInt(), 0);
    // With a fresh picture of the catalogue the tables are found.
    start(*module, u"dsn="_s + path());
    EXPECT_EQ(module->property("ModuleInit").toInt(), 1);
}

} // namespace
