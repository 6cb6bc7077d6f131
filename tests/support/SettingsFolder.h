#pragma once

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QTemporaryDir>

/// An empty configuration folder of its own, in force while it lives.
class SettingsFolder
{
public:
    SettingsFolder() : m_previous(qgetenv("XDG_CONFIG_HOME")) { use(m_folder.path()); }
    ~SettingsFolder()
    {
        if (m_previous.isNull())
            qunsetenv("XDG_CONFIG_HOME");
        else
            qputenv("XDG_CONFIG_HOME", m_previous);
    }
    SettingsFolder(const SettingsFolder &) = delete;
    SettingsFolder &operator=(const SettingsFolder &) = delete;

    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] QString filePath(const QString &name) const { return m_folder.filePath(name); }

    /// Puts another folder in force.
    static void use(const QString &folder)
    {
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(folder));
    }

    /// The content of a file in the folder; null when there is none.
    [[nodiscard]] QByteArray content(const QString &name) const
    {
        QFile file(filePath(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    /// Writes a file in the folder, past the store, with its folders.
    void write(const QString &name, const QByteArray &bytes) const
    {
        const QString path = filePath(name);
        QDir().mkpath(path.left(path.lastIndexOf(u'/')));
        QFile file(path);
        if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
            qFatal("cannot write %s", qPrintable(path));
    }

private:
    QTemporaryDir m_folder;
    QByteArray m_previous;
};
