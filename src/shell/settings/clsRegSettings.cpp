#include "shell/settings/clsRegSettings.h"

#include "platform/registry/Registry.h"
#include "runtime/CodePage.h"
#include "runtime/Conversions.h"

#include <QCoreApplication>
#include <QtEndian>

using namespace Qt::StringLiterals;
using namespace registry;

namespace {

constexpr quint32 kFirstBuffer = 1024; // bytes, enough for nearly every value
constexpr int kUnsupportedType = 1001;
const QString kUnnamedKey = u"*"_s;

QByteArray valueName(const QString &key)
{
    return key == kUnnamedKey ? QByteArray() : codepage::encode(key);
}

/// The value's bytes as text; nothing for a missing, refused or empty one. The opened key stays
/// open.
QString storedText(quint32 root, const QString &path, const QString &key)
{
    Handle handle = 0;
    if (RegOpenKeyExA(root, codepage::encode(path), KEY_ALL_ACCESS, &handle) != ERROR_SUCCESS)
        return {};
    const QByteArray name = valueName(key);
    quint32 type = 0;
    quint32 size = 0;
    if (RegQueryValueExA(handle, name, &type, nullptr, &size) != ERROR_SUCCESS || size == 0)
        return {};
    QByteArray buffer(size, ' ');
    if (RegQueryValueExA(handle, name, &type, buffer.data(), &size) != ERROR_SUCCESS)
        return {};
    return codepage::decode(QByteArrayView(buffer).first(size));
}

bool store(quint32 root, const QString &path, const QString &key, quint32 type, const QString &text)
{
    Handle handle = 0;
    if (RegCreateKeyExA(root, codepage::encode(path), KEY_ALL_ACCESS, &handle) != ERROR_SUCCESS)
        return false;
    const qint32 status = RegSetValueExA(handle, valueName(key), type, codepage::encode(text));
    RegCloseKey(handle);
    return status == ERROR_SUCCESS;
}

/// Missing is the empty text.
QString asText(const Value &value)
{
    return value.isNull() ? QString() : value.toText();
}

} // namespace

void clsRegSettings::setCompany(const QString &NewVal)
{
    m_company = NewVal.isEmpty() ? u"Brennmark AS"_s : trimBlanks(NewVal);
}

void clsRegSettings::setAppName(const QString &NewVal)
{
    m_appName = NewVal.isEmpty() ? QCoreApplication::applicationName() : trimBlanks(NewVal);
}

QString clsRegSettings::pathOf(const QString &Section) const
{
    const QString application = u"Software\\"_s + m_company + u'\\' + m_appName;
    return Section.isEmpty() ? application : application + u'\\' + Section;
}

bool clsRegSettings::DeleteSetting(const QString &Section, const QString &key)
{
    Handle handle = 0;
    const QByteArray path = codepage::encode(pathOf(key.isEmpty() ? QString() : Section));
    if (RegOpenKeyExA(HKEY_CURRENT_USER, path, KEY_ALL_ACCESS, &handle) != ERROR_SUCCESS)
        return false;
    const qint32 status = key.isEmpty() ? RegDeleteKeyA(handle, codepage::encode(Section))
                                        : RegDeleteValueA(handle, valueName(key));
    return status == ERROR_SUCCESS;
}

QString clsRegSettings::GetSetting(const QString &Section, const QString &key,
                                   const QString &Default) const
{
    const QString text = storedText(HKEY_CURRENT_USER, pathOf(Section), key);
    return text.isEmpty() ? Default : text;
}

QString clsRegSettings::GetSettingEx(quint32 FullHKEY, const QString &FullSection,
                                     const QString &key, const QString &Default) const
{
    const QString text = storedText(FullHKEY, FullSection, key);
    return text.isEmpty() ? Default : text.chopped(1);
}

bool clsRegSettings::SaveSetting(const QString &Section, const QString &key, const QString &Setting)
{
    return store(HKEY_CURRENT_USER, pathOf(Section), key, REG_SZ, Setting);
}

bool clsRegSettings::SaveSettingEx(quint32 FullHKEY, const QString &FullSection, const QString &key,
                                   quint32 KeyType, const QString &Setting)
{
    return store(FullHKEY, FullSection, key, KeyType, Setting);
}

Value clsRegSettings::ReadRegValue(quint32 root, const QString &path, const QString &name,
                                   const Value &standard)
{
    Handle handle = 0;
    if (RegOpenKeyExA(root, codepage::encode(path), KEY_READ, &handle) != ERROR_SUCCESS)
        return standard;
    const QByteArray valueName = codepage::encode(name);
    QByteArray buffer(kFirstBuffer, '\0');
    quint32 size = kFirstBuffer;
    quint32 type = 0;
    qint32 status = RegQueryValueExA(handle, valueName, &type, buffer.data(), &size);
    if (status == ERROR_MORE_DATA) {
        buffer.fill('\0', size);
        status = RegQueryValueExA(handle, valueName, &type, buffer.data(), &size);
    }
    RegCloseKey(handle);
    if (status != ERROR_SUCCESS)
        return standard;

    const auto text = [&](quint32 closingZeros) {
        const quint32 length = size > closingZeros ? size - closingZeros : 0;
        return Value(codepage::decode(QByteArrayView(buffer).first(length)));
    };
    switch (type) {
    case REG_SZ:
    case REG_EXPAND_SZ:
        return text(1);
    case REG_MULTI_SZ:
        return text(2);
    case REG_BINARY:
        return Value(buffer.first(size));
    case REG_DWORD: // of fewer than 4 bytes, the buffer's zeros fill up the rest
        return Value(qFromLittleEndian<qint32>(buffer.constData()));
    default:
        throw RunTimeError(kUnsupportedType, u"Unsupported value type"_s);
    }
}

QString clsRegSettings::GetApplicationPath(const QString &ExeName) const
{
    return asText(ReadRegValue(
        HKEY_LOCAL_MACHINE,
        u"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\"_s + ExeName, QString()));
}

QString clsRegSettings::GetProgramFilesPath() const
{
    return asText(ReadRegValue(HKEY_LOCAL_MACHINE,
                               u"Software\\Microsoft\\Windows\\CurrentVersion"_s,
                               u"ProgramFilesDir"_s));
}
