#include "shell/settings/clsRegSettings.h"

#include "platform/registry/Registry.h"
#include "runtime/Conversions.h"
#include "runtime/RunTimeError.h"
#include "support/Child.h"
#include "support/SettingsFolder.h"

#include <gtest/gtest.h>

#include <QCoreApplication>

#include <csignal>
#include <ostream>
#include <sys/resource.h>

using namespace Qt::StringLiterals;
using namespace registry;

inline void PrintTo(const QString &text, std::ostream *out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace {

const QString kSection = u"Regningsdel"_s;
const QString kKey = u"Avrunding"_s;
const QString kFile = u"Brennmark AS/Strekkbok.ini"_s;
const QString kAppPaths = u"Software\\Microsoft\\Windows\\CurrentVersion\\App Paths\\"_s;
const QString kCurrentVersion = u"Software\\Microsoft\\Windows\\CurrentVersion"_s;

QString withZero(const QString &text)
{
    return text + QChar(0);
}

/// Writes a value past the store's class.
void put(Handle root, const char *path, const char *name, quint32 type, QByteArrayView data)
{
    Handle key = 0;
    ASSERT_EQ(RegCreateKeyExA(root, path, KEY_ALL_ACCESS, &key), ERROR_SUCCESS);
    ASSERT_EQ(RegSetValueExA(key, name, type, data), ERROR_SUCCESS);
    RegCloseKey(key);
}

} // namespace

class clsRegSettingsTest : public ::testing::Test
{
protected:
    static Value readRegValue(const QString &path, const QString &name, const Value &standard = {})
    {
        return clsRegSettings::ReadRegValue(HKEY_CURRENT_USER, path, name, standard);
    }
    /// The value that ReadRegValue makes of `data`.
    static Value readBack(quint32 type, QByteArrayView data)
    {
        put(HKEY_CURRENT_USER, "Software\\A\\B\\C", "x", type, data);
        return readRegValue(u"Software\\A\\B\\C"_s, u"x"_s);
    }

    SettingsFolder m_folder;
    clsRegSettings m_settings;
};

TEST_F(clsRegSettingsTest, PointsAtTheBuiltInNames)
{
    EXPECT_EQ(m_settings.Company(), u"Brennmark AS"_s);
    EXPECT_EQ(m_settings.AppName(), u"Strekkbok"_s);
}

TEST_F(clsRegSettingsTest, NamesAreTrimmedAndFallBack)
{
    m_settings.setCompany(u"  Annet firma "_s);
    EXPECT_EQ(m_settings.Company(), u"Annet firma"_s);
    m_settings.setCompany(u"   "_s);
    EXPECT_EQ(m_settings.Company(), QString());
    m_settings.setCompany(QString());
    EXPECT_EQ(m_settings.Company(), u"Brennmark AS"_s);

    m_settings.setAppName(u" Annet "_s);
    EXPECT_EQ(m_settings.AppName(), u"Annet"_s);
    m_settings.setAppName(u" "_s);
    EXPECT_EQ(m_settings.AppName(), QString());
    QCoreApplication::setApplicationName(u"foreldre"_s);
    m_settings.setAppName(QString());
    EXPECT_EQ(m_settings.AppName(), u"foreldre"_s);
}

TEST_F(clsRegSettingsTest, SavesUnderCompanyApplicationAndSection)
{
    EXPECT_TRUE(m_settings.SaveSetting(kSection, kKey, u"1"_s));
    EXPECT_TRUE(m_settings.SaveSetting(u"Regningsdel\\Forms\\frmOrdre"_s, u"FLeft"_s, u"200"_s));
    EXPECT_TRUE(m_settings.SaveSetting(QString(), u"Versjon"_s, u"2"_s));
    EXPECT_EQ(
        m_folder.content(kFile).toStdString(),
        "Versjon=2\n\n[Regningsdel]\nAvrunding=1\n\n[Regningsdel\\Forms\\frmOrdre]\nFLeft=200\n");
}

TEST_F(clsRegSettingsTest, GetSettingEndsInAZeroCharacter)
{
    ASSERT_TRUE(m_settings.SaveSetting(kSection, kKey, u"1"_s));
    const QString text = m_settings.GetSetting(kSection, kKey, u"0"_s);
    EXPECT_EQ(text.size(), 2);
    EXPECT_EQ(text, withZero(u"1"_s));
    EXPECT_EQ(leadingNumber(text), 1.0);
}

TEST_F(clsRegSettingsTest, GetSettingGivesTheDefaultAsItStands)
{
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), u"0"_s);
    ASSERT_TRUE(m_settings.SaveSetting(kSection, u"PrintVis"_s, u"1"_s));
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), u"0"_s);
    EXPECT_EQ(m_settings.GetSetting(u"Annet"_s, u"PrintVis"_s, QString()), QString());
}

TEST_F(clsRegSettingsTest, AValueOfNoLengthGivesTheDefault)
{
    ASSERT_TRUE(m_settings.SaveSetting(kSection, kKey, QString()));
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"7"_s), u"7"_s);
    EXPECT_EQ(m_settings.GetSettingEx(HKEY_CURRENT_USER,
                                      u"Software\\Brennmark AS\\Strekkbok\\Regningsdel"_s, kKey,
                                      u"7"_s),
              u"7"_s);
}

TEST_F(clsRegSettingsTest, GetSettingOfAnotherTypeGivesTheRawBytes)
{
    const auto path = "Software\\Brennmark AS\\Strekkbok\\Regningsdel";
    put(HKEY_CURRENT_USER, path, "tall", REG_DWORD, QByteArrayView("\x41\x42\0\xe5", 4));
    put(HKEY_CURRENT_USER, path, "bytes", REG_BINARY, "xyz");
    EXPECT_EQ(m_settings.GetSetting(kSection, u"tall"_s, u"0"_s), u"AB"_s + QChar(0) + u'å');
    EXPECT_EQ(m_settings.GetSetting(kSection, u"bytes"_s, u"0"_s), u"xyz"_s);
}

TEST_F(clsRegSettingsTest, TextGoesThroughTheCodePage)
{
    const QString text = u"Blåbær «og» 10 € – \"ja\"\r\n\tC:\\x; = # "_s;
    ASSERT_TRUE(m_settings.SaveSetting(kSection, u"FakturaTekst1"_s, text + u"日"_s));
    EXPECT_EQ(m_settings.GetSetting(kSection, u"FakturaTekst1"_s, QString()),
              withZero(text + u'?'));
}

TEST_F(clsRegSettingsTest, AStarIsTheUnnamedValue)
{
    ASSERT_TRUE(m_settings.SaveSetting(kSection, u"*"_s, u"uten navn"_s));
    EXPECT_EQ(m_folder.content(kFile), "[Regningsdel]\n@=uten navn\n");
    EXPECT_EQ(m_settings.GetSetting(kSection, u"*"_s, QString()), withZero(u"uten navn"_s));
    EXPECT_EQ(m_settings.GetSettingEx(HKEY_CURRENT_USER,
                                      u"Software\\Brennmark AS\\Strekkbok\\Regningsdel"_s, u"*"_s,
                                      QString()),
              u"uten navn"_s);
    EXPECT_TRUE(m_settings.DeleteSetting(kSection, u"*"_s));
    EXPECT_FALSE(m_settings.DeleteSetting(kSection, u"*"_s));
    EXPECT_EQ(m_folder.content(kFile), "[Regningsdel]\n");
}

TEST_F(clsRegSettingsTest, ACompanyOfBlanksHasALevelOfItsOwn)
{
    ASSERT_TRUE(m_settings.SaveSetting(kSection, kKey, u"1"_s));
    m_settings.setCompany(u"  "_s);
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), u"0"_s);
    ASSERT_TRUE(m_settings.SaveSetting(kSection, kKey, u"2"_s));
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), withZero(u"2"_s));
    EXPECT_EQ(m_settings.GetSettingEx(HKEY_CURRENT_USER, u"Software\\\\Strekkbok\\Regningsdel"_s,
                                      kKey, u"0"_s),
              u"2"_s);
    m_settings.setCompany(QString());
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), withZero(u"1"_s));
}

TEST_F(clsRegSettingsTest, TheExFormsTakeTheWholePath)
{
    ASSERT_TRUE(m_settings.SaveSettingEx(HKEY_LOCAL_MACHINE, u"Software\\X\\Y"_s, u"k"_s, REG_SZ,
                                         u"tekst"_s));
    EXPECT_EQ(m_settings.GetSettingEx(HKEY_LOCAL_MACHINE, u"Software\\X\\Y"_s, u"k"_s, QString()),
              u"tekst"_s);
    EXPECT_EQ(m_settings.GetSettingEx(HKEY_CURRENT_USER, u"Software\\X\\Y"_s, u"k"_s, u"nei"_s),
              u"nei"_s);
    EXPECT_FALSE(m_settings.SaveSettingEx(1234567, u"X"_s, u"k"_s, REG_SZ, u"1"_s));
    EXPECT_EQ(m_settings.GetSettingEx(1234567, u"X"_s, u"k"_s, u"nei"_s), u"nei"_s);
}

TEST_F(clsRegSettingsTest, SaveSettingExKeepsTheTypeOfTheValue)
{
    const auto readType = [&](quint32 type, const QString &text) {
        EXPECT_TRUE(
            m_settings.SaveSettingEx(HKEY_CURRENT_USER, u"Software\\A\\B"_s, u"k"_s, type, text));
        return readRegValue(u"Software\\A\\B"_s, u"k"_s);
    };
    EXPECT_EQ(readType(REG_SZ, u"a"_s), Value(u"a"_s));
    EXPECT_EQ(readType(REG_EXPAND_SZ, u"%A%"_s), Value(u"%A%"_s));
    EXPECT_EQ(readType(REG_BINARY, u"bå"_s), Value(QByteArray("b\xe5")));
    EXPECT_EQ(readType(REG_DWORD, u"A"_s + QChar(1) + QChar(0) + QChar(0)), Value(qint32{0x141}));
    EXPECT_EQ(readType(REG_MULTI_SZ, u"a"_s + QChar(0) + u'b'), Value(u"a"_s + QChar(0) + u'b'));
}

TEST_F(clsRegSettingsTest, GetSettingExCutsTheLastByteOfAnyType)
{
    put(HKEY_CURRENT_USER, "Software\\A\\B", "k", REG_BINARY, "xyz");
    EXPECT_EQ(m_settings.GetSettingEx(HKEY_CURRENT_USER, u"Software\\A\\B"_s, u"k"_s, QString()),
              u"xy"_s);
    put(HKEY_CURRENT_USER, "Software\\A\\B", "k", REG_SZ, QByteArrayView("\0", 1));
    EXPECT_EQ(m_settings.GetSettingEx(HKEY_CURRENT_USER, u"Software\\A\\B"_s, u"k"_s, u"nei"_s),
              QString());
}

TEST_F(clsRegSettingsTest, DeletesAValue)
{
    ASSERT_TRUE(m_settings.SaveSetting(kSection, kKey, u"1"_s));
    ASSERT_TRUE(m_settings.SaveSetting(kSection, u"PrintVis"_s, u"1"_s));
    EXPECT_TRUE(m_settings.DeleteSetting(kSection, kKey));
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), u"0"_s);
    EXPECT_EQ(m_settings.GetSetting(kSection, u"PrintVis"_s, u"0"_s), withZero(u"1"_s));
    EXPECT_FALSE(m_settings.DeleteSetting(kSection, kKey));
    EXPECT_FALSE(m_settings.DeleteSetting(u"Annet"_s, kKey));
}

TEST_F(clsRegSettingsTest, DeletesASectionWithNoneBelow)
{
    const QString form = u"Regningsdel\\Forms\\frmOrdre"_s;
    ASSERT_TRUE(m_settings.SaveSetting(kSection, kKey, u"1"_s));
    ASSERT_TRUE(m_settings.SaveSetting(form, u"FTop"_s, u"200"_s));
    EXPECT_FALSE(m_settings.DeleteSetting(kSection, QString()));
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), withZero(u"1"_s));
    EXPECT_TRUE(m_settings.DeleteSetting(form, QString()));
    EXPECT_TRUE(m_settings.DeleteSetting(kSection, QString()));
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), u"0"_s);
    EXPECT_FALSE(m_settings.DeleteSetting(kSection, QString()));
}

TEST_F(clsRegSettingsTest, DeletingInAnEmptyStoreIsFalse)
{
    EXPECT_FALSE(m_settings.DeleteSetting(kSection, kKey));
    EXPECT_FALSE(m_settings.DeleteSetting(kSection, QString()));
}

TEST_F(clsRegSettingsTest, ReadRegValueByType)
{
    EXPECT_EQ(readBack(REG_SZ, "tekst å \xe5"), Value(u"tekst Ã¥ å"_s));
    EXPECT_EQ(readBack(REG_SZ, QByteArrayView("\0", 1)), Value(QString()));
    EXPECT_EQ(readBack(REG_SZ, {}), Value(QString()));
    EXPECT_EQ(readBack(REG_EXPAND_SZ, "%HOME%"), Value(u"%HOME%"_s));
    EXPECT_EQ(readBack(REG_BINARY, QByteArrayView("\0\1\xff", 3)),
              Value(QByteArray("\0\1\xff", 3)));
    EXPECT_EQ(readBack(REG_BINARY, {}), Value(QByteArray("")));
    EXPECT_EQ(readBack(REG_DWORD, QByteArrayView("\1\2\3\4", 4)), Value(qint32{0x04030201}));
    EXPECT_EQ(readBack(REG_DWORD, QByteArrayView("\xff\xff\xff\xff", 4)), Value(qint32{-1}));
    EXPECT_EQ(readBack(REG_DWORD, QByteArrayView("\1", 1)), Value(qint32{1}));
    EXPECT_EQ(readBack(REG_MULTI_SZ, QByteArrayView("a\0bc\0\0", 6)),
              Value(u"a"_s + QChar(0) + u"bc"_s));
    EXPECT_EQ(readBack(REG_MULTI_SZ, {}), Value(QString()));
}

TEST_F(clsRegSettingsTest, ReadRegValueGrowsItsBuffer)
{
    for (const int length : {1022, 1023, 1024, 1025, 5000}) {
        const QByteArray text(length, 'x');
        EXPECT_EQ(readBack(REG_SZ, text), Value(QString::fromLatin1(text))) << length;
        EXPECT_EQ(readBack(REG_BINARY, text), Value(text)) << length;
    }
}

TEST_F(clsRegSettingsTest, ReadRegValueRefusesOtherTypes)
{
    for (const quint32 type : {0U, 5U, 6U, 11U, 4294967295U}) {
        try {
            (void)readBack(type, "x");
            ADD_FAILURE() << "no error for type " << type;
        } catch (const RunTimeError &error) {
            EXPECT_EQ(error.number(), 1001);
            EXPECT_EQ(error.description(), u"Unsupported value type"_s);
        }
    }
    // Nothing is left in a state that keeps the next read from working.
    EXPECT_EQ(readBack(REG_SZ, "a"), Value(u"a"_s));
}

TEST_F(clsRegSettingsTest, ReadRegValueOfNothingIsTheDefault)
{
    EXPECT_EQ(readRegValue(u"Software\\X\\Y"_s, u"k"_s), Value());
    EXPECT_EQ(readRegValue(u"Software\\X\\Y"_s, u"k"_s, Value(u"d"_s)), Value(u"d"_s));
    put(HKEY_CURRENT_USER, "Software\\X\\Y", "annen", REG_SZ, "1");
    EXPECT_EQ(readRegValue(u"Software\\X\\Y"_s, u"k"_s, Value(qint32{7})), Value(qint32{7}));
}

TEST_F(clsRegSettingsTest, ApplicationPathIsTheUnnamedValueOfTheProgram)
{
    EXPECT_EQ(m_settings.GetApplicationPath(u"calc.exe"_s), QString());
    ASSERT_TRUE(m_settings.SaveSettingEx(HKEY_LOCAL_MACHINE, kAppPaths + u"calc.exe"_s, u"*"_s,
                                         REG_SZ, u"C:\\Prog\\calc.exe"_s));
    EXPECT_EQ(m_settings.GetApplicationPath(u"calc.exe"_s), u"C:\\Prog\\calc.exe"_s);
    EXPECT_EQ(m_settings.GetApplicationPath(u"CALC.EXE"_s), u"C:\\Prog\\calc.exe"_s);
}

TEST_F(clsRegSettingsTest, ProgramFilesPathIsANamedValue)
{
    EXPECT_EQ(m_settings.GetProgramFilesPath(), QString());
    const auto store = [&](quint32 type, const QString &text) {
        ASSERT_TRUE(m_settings.SaveSettingEx(HKEY_LOCAL_MACHINE, kCurrentVersion,
                                             u"ProgramFilesDir"_s, type, text));
    };
    store(REG_EXPAND_SZ, u"C:\\Prog"_s);
    EXPECT_EQ(m_settings.GetProgramFilesPath(), u"C:\\Prog"_s);
    store(REG_DWORD, u"A"_s + QString(3, QChar(0)));
    EXPECT_EQ(m_settings.GetProgramFilesPath(), u"65"_s);
    store(REG_BINARY, u"A"_s);
    EXPECT_EQ(passOver([&] { (void)m_settings.GetProgramFilesPath(); }), errors::kTypeMismatch);
    store(99, u"A"_s);
    EXPECT_EQ(passOver([&] { (void)m_settings.GetProgramFilesPath(); }), 1001);
}

TEST_F(clsRegSettingsTest, AStoreOutOfReachGivesDefaultsAndFalse)
{
    m_folder.write(u"fil"_s, "x");
    SettingsFolder::use(m_folder.filePath(u"fil"_s));
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), u"0"_s);
    EXPECT_FALSE(m_settings.SaveSetting(kSection, kKey, u"1"_s));
    EXPECT_FALSE(m_settings.DeleteSetting(kSection, kKey));
    EXPECT_EQ(m_settings.GetProgramFilesPath(), QString());
}

TEST_F(clsRegSettingsTest, SavingOnAFullDiskIsFalse)
{
    ASSERT_TRUE(m_settings.SaveSetting(kSection, kKey, QString(3000, u'x')));
    Child user([&] {
        ::signal(SIGXFSZ, SIG_IGN);
        const rlimit limit{2000, 2000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        return m_settings.SaveSetting(kSection, u"PrintVis"_s, u"1"_s) ? 1 : 0;
    });
    EXPECT_EQ(user.wait(), 0);
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s).size(), 3001);
}

TEST_F(clsRegSettingsTest, WhatAnotherProcessSavesIsReadAtOnce)
{
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), u"0"_s);
    Child other([&] { return m_settings.SaveSetting(kSection, kKey, u"2"_s) ? 0 : 1; });
    EXPECT_EQ(other.wait(), 0);
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), withZero(u"2"_s));
}

TEST_F(clsRegSettingsTest, ASpoiltFileGivesDefaults)
{
    m_folder.write(kFile, "[Regningsdel\nAvrunding=2\n\xff\xfe\x00");
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), u"0"_s);
    EXPECT_TRUE(m_settings.SaveSetting(kSection, kKey, u"1"_s));
    EXPECT_EQ(m_settings.GetSetting(kSection, kKey, u"0"_s), withZero(u"1"_s));
}
