#pragma once

#include <QPluginLoader>
#include <QString>

#include <memory>

class QObject;

/// The invoicing component as the bookkeeping program sees it: loaded from its file and driven by
/// the names of its properties and methods alone. It is loaded when it is first started and stays
/// so while this lives, which is for as long as `main` runs: behind its end the component would
/// find what it has shared among its statics gone.
class Component
{
public:
    explicit Component(const QString &file);
    ~Component() { unload(); }
    Component(const Component &) = delete;
    Component &operator=(const Component &) = delete;

    /// Takes an instance of `Faktura.clsFaktura`, sets the three values, runs `StartModul` and
    /// returns `ModuleInit`: 1 ready, 0 failed. Raises HostError when the file is no such
    /// component.
    int start(const QString &connectionString, qint16 client, qint16 year);
    /// Lets go of the component, and its screens and all that it has shared are gone. The next
    /// start loads it anew.
    void unload();

private:
    void load();

    QString m_file; ///< which the loader does not tell of a file that is missing
    QPluginLoader m_loader;
    std::unique_ptr<QObject> m_instance;
};
