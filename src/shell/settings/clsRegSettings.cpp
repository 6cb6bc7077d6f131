#include "shell/settings/clsRegSettings.h"

#include "platform/registry/Registry.h"
#include "runtime/CodePage.h"
#include "runtime/Conversions.h"

#include <QCoreApplication>
#include <QtEndian>

using namespace Qt::StringLiterals;
using namespace registry;

namespace {

constexpr quint32 kForsteBuffer = 1024; // bytes, enough for nearly every value
constexpr int kUkjentType = 1001;
const QString kUtenNavn = u"*"_s;

QByteArray verdinavn(const QString &key)
{
    return key == kUtenNavn ? QByteArray() : codepage::encode(key);
}

/// The value's bytes as text; nothing for a missing, refused or empty one. The opened key stays
/// open.
QString lagretTekst(quint32 rot, const QString &sti, const QString &key)
{
    Handle haandtak = 0;
    if (RegOpenKeyExA(rot, codepage::encode(sti), KEY_ALL_ACCESS, &haandtak) != ERROR_SUCCESS)
        return {};
    const QByteArray navn = verdinavn(key);
    quint32 type = 0;
    quint32 storrelse = 0;
    if (RegQueryValueExA(haandtak, navn, &type, nullptr, &storrelse) != ERROR_SUCCESS ||
        storrelse == 0)
        return {};
    QByteArray buffer(storrelse, ' ');
    if (RegQueryValueExA(haandtak, navn, &type, buffer.data(), &storrelse) != ERROR_SUCCESS)
        return {};
    return codepage::decode(QByteArrayView(buffer).first(storrelse));
}

bool lagre(quint32 rot, const QString &sti, const QString &key, quint32 type, const QString &tekst)
{
    Handle haandtak = 0;
    if (RegCreateKeyExA(rot, codepage::encode(sti), KEY_ALL_ACCESS, &haandtak) != ERROR_SUCCESS)
        return false;
    const qint32 status = RegSetValueExA(haandtak, verdinavn(key), type, codepage::encode(tekst));
    RegCloseKey(haandtak);
    return status == ERROR_SUCCESS;
}

/// Missing is the empty text.
QString somTekst(const Value &verdi)
{
    return verdi.isNull() ? QString() : verdi.toText();
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

QString clsRegSettings::stiTil(const QString &Section) const
{
    const QString program = u"Software\\"_s + m_company + u'\\' + m_appName;
    return Section.isEmpty() ? program : program + u'\\' + Section;
}

bool clsRegSettings::DeleteSetting(const QString &Section, const QString &key)
{
    Handle haandtak = 0;
    const QByteArray sti = codepage::encode(stiTil(key.isEmpty() ? QString() : Section));
    if (RegOpenKeyExA(HKEY_CURRENT_USER, sti, KEY_ALL_ACCESS, &haandtak) != ERROR_SUCCESS)
        return false;
    const qint32 status = key.isEmpty() ? RegDeleteKeyA(haandtak, codepage::encode(Section))
                                        : RegDeleteValueA(haandtak, verdinavn(key));
    return status == ERROR_SUCCESS;
}

QString clsRegSettings::GetSetting(const QString &Section, const QString &key,
                                   const QString &Default) const
{
    const QString tekst = lagretTekst(HKEY_CURRENT_USER, stiTil(Section), key);
    return tekst.isEmpty() ? Default : tekst;
}

QString clsRegSettings::GetSettingEx(quint32 FullHKEY, const QString &FullSection,
                                     const QString &key, const QString &Default) const
{
    const QString tekst = lagretTekst(FullHKEY, FullSection, key);
    return tekst.isEmpty() ? Default : tekst.chopped(1);
}

bool clsRegSettings::SaveSetting(const QString &Section, const QString &key, const QString &Setting)
{
    return lagre(HKEY_CURRENT_USER, stiTil(Section), key, REG_SZ, Setting);
}

bool clsRegSettings::SaveSettingEx(quint32 FullHKEY, const QString &FullSection, const QString &key,
                                   quint32 KeyType, const QString &Setting)
{
    return lagre(FullHKEY, FullSection, key, KeyType, Setting);
}

Value clsRegSettings::ReadRegValue(quint32 rot, const QString &sti, const QString &navn,
                                   const Value &standard)
{
    Handle haandtak = 0;
    if (RegOpenKeyExA(rot, codepage::encode(sti), KEY_READ, &haandtak) != ERROR_SUCCESS)
        return standard;
    const QByteArray verdinavn = codepage::encode(navn);
    QByteArray buffer(kForsteBuffer, '\0');
    quint32 storrelse = kForsteBuffer;
    quint32 type = 0;
    qint32 status = RegQueryValueExA(haandtak, verdinavn, &type, buffer.data(), &storrelse);
    if (status == ERROR_MORE_DATA) {
        buffer.fill('\0', storrelse);
        status = RegQueryValueExA(haandtak, verdinavn, &type, buffer.data(), &storrelse);
    }
    RegCloseKey(haandtak);
    if (status != ERROR_SUCCESS)
        return standard;

    const auto tekst = [&](quint32 nullerBak) {
        const quint32 lengde = storrelse > nullerBak ? storrelse - nullerBak : 0;
        return Value(codepage::decode(QByteArrayView(buffer).first(lengde)));
    };
    switch (type) {
    case REG_SZ:
    case REG_EXPAND_SZ:
        return tekst(1);
    case REG_MULTI_SZ:
        return tekst(2);
    case REG_BINARY:
        return Value(buffer.first(storrelse));
    case REG_DWORD: // of fewer than 4 bytes, the buffer's zeros fill up the rest
        return Value(qFromLittleEndian<qint32>(buffer.constData()));
    default:
        throw RunTimeError(kUkjentType, u"Unsupported value type"_s);
    }
}

QString clsRegSettings::GetApplicationPath(const QString &ExeName) const
{
    return somTekst(ReadRegValue(
        HKEY_LOCAL_MACHINE,
        u"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\"_s + ExeName, QString()));
}

QString clsRegSettings::GetProgramFilesPath() const
{
    return somTekst(ReadRegValue(HKEY_LOCAL_MACHINE,
                                 u"Software\\Microsoft\\Windows\\CurrentVersion"_s,
                                 u"ProgramFilesDir"_s));
}
