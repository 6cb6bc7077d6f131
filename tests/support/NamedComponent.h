#pragma once

#include <QObject>
#include <QPluginLoader>
#include <QVariant>

#include <gtest/gtest.h>

#include <memory>

/// The component, loaded from its file by a parent that knows names alone. Its instances go before
/// it does.
class NamedComponent
{
public:
    ~NamedComponent() { loader.unload(); }

    QObject *factory()
    {
        QObject *root = loader.instance();
        EXPECT_NE(root, nullptr) << loader.errorString().toStdString();
        return root;
    }
    std::unique_ptr<QObject> createInstance()
    {
        QObject *instance = nullptr;
        EXPECT_TRUE(QMetaObject::invokeMethod(factory(), "CreateInstance",
                                              Q_RETURN_ARG(QObject *, instance)));
        return std::unique_ptr<QObject>(instance);
    }
    /// ModuleInit.
    static int start(QObject &module, const QString &connectionString, int client, int year)
    {
        EXPECT_TRUE(module.setProperty("ConnectStreng", connectionString));
        EXPECT_TRUE(module.setProperty("Klient", client));
        EXPECT_TRUE(module.setProperty("CurrentYear", year));
        EXPECT_TRUE(QMetaObject::invokeMethod(&module, "StartModul"));
        return module.property("ModuleInit").toInt();
    }

    QPluginLoader loader{QStringLiteral(FAKTURA_FILE)};
};
