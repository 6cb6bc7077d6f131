#pragma once

#include "runtime/Value.h"

#include <QString>

/// The settings store: the registry with every setting under a company and an application, at
/// HKEY_CURRENT_USER\Software\Company\AppName\Section. All values are text; who wants a number
/// takes the text's leading number.
///
/// A `key` of "*" is the unnamed value of its section. An empty `Section` is the application's own
/// key. Section may hold levels parted by "\".
class clsRegSettings
{
public:
    [[nodiscard]] const QString &Company() const { return m_company; }
    /// Stored trimmed of blanks; an empty text gives the built-in company.
    void setCompany(const QString &NewVal);

    [[nodiscard]] const QString &AppName() const { return m_appName; }
    /// Stored trimmed of blanks; an empty text gives the running application's own name.
    void setAppName(const QString &NewVal);

    /// Deletes a value, or with an empty `key` the whole section, which must have no sections below
    /// it. True when it was there and is gone.
    bool DeleteSetting(const QString &Section, const QString &key);

    /// The stored text WITH the zero character that closes it, so "1" comes back as two characters;
    /// `Default` as it stands for a missing or refused value and for one of no length. A value of
    /// another type comes back as its raw bytes in text form.
    [[nodiscard]] QString GetSetting(const QString &Section, const QString &key,
                                     const QString &Default) const;

    /// As GetSetting at `FullSection` under the root `FullHKEY`, but without the last character,
    /// which of text is the closing zero.
    [[nodiscard]] QString GetSettingEx(quint32 FullHKEY, const QString &FullSection,
                                       const QString &key, const QString &Default) const;

    /// Stores text, making its section when needed. True when it is on the disk. An empty text is
    /// stored as a value of no length. Characters that the code page lacks become "?".
    bool SaveSetting(const QString &Section, const QString &key, const QString &Setting);

    /// As SaveSetting at `FullSection` under the root `FullHKEY`; the text's bytes become a value
    /// of type `KeyType`.
    bool SaveSettingEx(quint32 FullHKEY, const QString &FullSection, const QString &key,
                       quint32 KeyType, const QString &Setting);

    /// Where the program `ExeName` is registered to lie; empty when it is not. Error 1001 for a
    /// value of a type that ReadRegValue does not know, error 13 for bytes.
    [[nodiscard]] QString GetApplicationPath(const QString &ExeName) const;
    /// The machine's folder of programs; errors as GetApplicationPath.
    [[nodiscard]] QString GetProgramFilesPath() const;

private:
    friend class clsRegSettingsTest;

    /// A value of any kind: text for the three types of text (zero characters inside a list are
    /// kept), bytes, or a 32-bit integer. `standard` where the key or the value is missing; error
    /// 1001 for any other type.
    [[nodiscard]] static Value ReadRegValue(quint32 rot, const QString &sti, const QString &navn,
                                            const Value &standard = Value());

    [[nodiscard]] QString stiTil(const QString &Section) const;

    QString m_company = QStringLiteral("Brennmark AS");
    QString m_appName = QStringLiteral("Strekkbok");
};
