#include "platform/registry/Registry.h"

#include "support/SettingsFolder.h"

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using namespace registry;

namespace {

constexpr auto kApplication = "Software\\Brennmark AS\\Strekkbok";
constexpr auto kSection = "Software\\Brennmark AS\\Strekkbok\\Regningsdel";

class Registry : public ::testing::Test
{
protected:
    static Handle create(QByteArrayView path, Handle root = HKEY_CURRENT_USER)
    {
        Handle key = 0;
        EXPECT_EQ(RegCreateKeyExA(root, path, KEY_ALL_ACCESS, &key), ERROR_SUCCESS);
        return key;
    }
    static qint32 open(QByteArrayView path, Handle *key = nullptr)
    {
        Handle unused = 0;
        return RegOpenKeyExA(HKEY_CURRENT_USER, path, KEY_ALL_ACCESS, key ? key : &unused);
    }
    static qint32 set(Handle key, QByteArrayView name, QByteArrayView data, quint32 type = REG_SZ)
    {
        return RegSetValueExA(key, name, type, data);
    }
    /// The value's bytes as a string, or the status of the read in "<>".
    static std::string get(Handle key, QByteArrayView name, quint32 *type = nullptr)
    {
        quint32 size = 0;
        qint32 status = RegQueryValueExA(key, name, type, nullptr, &size);
        QByteArray buffer(size, ' ');
        if (status == ERROR_SUCCESS)
            status = RegQueryValueExA(key, name, nullptr, buffer.data(), &size);
        return status == ERROR_SUCCESS ? buffer.toStdString() : '<' + std::to_string(status) + '>';
    }

    SettingsFolder m_folder;
};

std::string bytes(const char *data, int size)
{
    return std::string(data, size_t(size));
}

} // namespace

TEST_F(Registry, KeepsALevelForCompanyApplicationAndSection)
{
    ASSERT_EQ(set(create(kSection), "Avrunding", "1"), ERROR_SUCCESS);
    ASSERT_EQ(set(create(kApplication), {}, "x"), ERROR_SUCCESS);
    ASSERT_EQ(set(create("Software\\Brennmark AS\\Strekkbok\\Regningsdel\\Forms\\frmOrdre"), "FTop",
                  "200"),
              ERROR_SUCCESS);
    EXPECT_EQ(m_folder.content(u"Brennmark AS/Strekkbok.ini"_s).toStdString(),
              "@=x\n\n[Regningsdel]\nAvrunding=1\n\n[Regningsdel\\Forms\\frmOrdre]\nFTop=200\n");
}

TEST_F(Registry, OtherKeysLieInTheFileOfTheirRoot)
{
    ASSERT_EQ(set(create("Software\\A\\B", HKEY_LOCAL_MACHINE), "x", "1"), ERROR_SUCCESS);
    ASSERT_EQ(set(create("Software\\A"), "y", "2"), ERROR_SUCCESS);
    EXPECT_EQ(m_folder.content(u"HKEY_LOCAL_MACHINE.ini"_s).toStdString(),
              "[Software\\A\\B]\nx=1\n");
    EXPECT_EQ(m_folder.content(u"HKEY_CURRENT_USER.ini"_s).toStdString(), "[Software\\A]\ny=2\n");
}

TEST_F(Registry, WithoutTheVariableTheFolderLiesInTheHomeFolder)
{
    const QByteArray home = qgetenv("HOME");
    qputenv("HOME", m_folder.path().toUtf8());
    for (const QByteArray &value : {QByteArray(), QByteArray("relativ/mappe")}) {
        qputenv("XDG_CONFIG_HOME", value);
        ASSERT_EQ(set(create(kSection), "x", "1"), ERROR_SUCCESS);
        EXPECT_TRUE(QFile::remove(m_folder.filePath(u".config/Brennmark AS/Strekkbok.ini"_s)));
    }
    qputenv("HOME", home);
}

TEST_F(Registry, OpensOnlyKeysThatExist)
{
    EXPECT_EQ(open(kSection), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(open(kApplication), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(open("Software\\Brennmark AS"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(open("Software"), ERROR_SUCCESS);
    EXPECT_EQ(open({}), ERROR_SUCCESS);
    create("Software\\Brennmark AS\\Strekkbok\\Regningsdel\\Forms\\frmOrdre");
    EXPECT_EQ(open("Software\\Brennmark AS\\Strekkbok\\Regningsdel\\Forms"), ERROR_SUCCESS);
    EXPECT_EQ(open(kSection), ERROR_SUCCESS);
    EXPECT_EQ(open(kApplication), ERROR_SUCCESS);
    EXPECT_EQ(open("Software\\Brennmark AS"), ERROR_SUCCESS);
    EXPECT_EQ(open("Software\\Brennmark AS\\Annet"), ERROR_FILE_NOT_FOUND);
}

TEST_F(Registry, ACreatedKeyExistsWithoutValues)
{
    create("Software\\A\\B");
    EXPECT_EQ(open("Software\\A\\B"), ERROR_SUCCESS);
    create("Annet");
    EXPECT_EQ(open("Annet"), ERROR_SUCCESS);
}

TEST_F(Registry, NamesMatchWithoutRegardToCaseAtEveryLevel)
{
    ASSERT_EQ(set(create(kSection), "PrintVis", "1"), ERROR_SUCCESS);
    Handle key = 0;
    ASSERT_EQ(open("SOFTWARE\\BRENNMARK as\\strekkBOK\\REGNINGSDEL", &key), ERROR_SUCCESS);
    EXPECT_EQ(get(key, "PRINTVIS"), bytes("1\0", 2));
    ASSERT_EQ(set(key, "printvis", "2"), ERROR_SUCCESS);
    EXPECT_EQ(m_folder.content(u"Brennmark AS/Strekkbok.ini"_s), "[Regningsdel]\nprintvis=2\n");
    EXPECT_EQ(QDir(m_folder.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
              QStringList{u"Brennmark AS"_s});
}

TEST_F(Registry, OddNamesComeBack)
{
    const QByteArray odd[] = {"a=b",  "]x[", ";merknad", "#",     "a\r\nb", " x ",
                              "@",    "%41", "..",       "\"q\"", "a\\b",   "\xe6\xf8\xe5",
                              "\x81", "/",   "*"};
    for (const QByteArray &name : odd) {
        const Handle key = create("Software\\" + QByteArray(name).replace('\\', '_') + "\\" +
                                  QByteArray(name).replace('\\', '_') + "\\" + name);
        ASSERT_EQ(set(key, name, name), ERROR_SUCCESS) << name.toStdString();
    }
    for (const QByteArray &name : odd) {
        Handle key = 0;
        ASSERT_EQ(open("Software\\" + QByteArray(name).replace('\\', '_') + "\\" +
                           QByteArray(name).replace('\\', '_') + "\\" + name,
                       &key),
                  ERROR_SUCCESS)
            << name.toStdString();
        EXPECT_EQ(get(key, name), name.toStdString() + '\0');
    }
}

TEST_F(Registry, NoNameLeavesTheFolder)
{
    ASSERT_EQ(set(create("Software\\..\\..\\x"), "a", "1"), ERROR_SUCCESS);
    EXPECT_TRUE(QFile::exists(m_folder.filePath(u"%2e%2e/%2e%2e.ini"_s)));
    ASSERT_EQ(set(create("Software\\/tmp\\../x\\x"), "a", "1"), ERROR_SUCCESS);
    EXPECT_TRUE(QFile::exists(m_folder.filePath(u"%2ftmp/%2e.%2fx.ini"_s)));
}

TEST_F(Registry, ADoubledSeparatorIsALevelOfItsOwn)
{
    ASSERT_EQ(set(create("Software\\\\Strekkbok\\Regningsdel"), "x", "1"), ERROR_SUCCESS);
    ASSERT_EQ(set(create("Software\\Strekkbok\\Regningsdel"), "x", "2"), ERROR_SUCCESS);
    EXPECT_EQ(get(create("Software\\\\Strekkbok\\Regningsdel"), "x"), bytes("1\0", 2));
    EXPECT_EQ(get(create("Software\\Strekkbok\\Regningsdel"), "x"), bytes("2\0", 2));
    EXPECT_EQ(open("Software\\Strekkbok\\\\Regningsdel"), ERROR_FILE_NOT_FOUND);
    EXPECT_TRUE(QFile::exists(m_folder.filePath(u"%00/Strekkbok.ini"_s)));
}

TEST_F(Registry, SeparatorsAtTheEndMeanNothing)
{
    ASSERT_EQ(set(create("Software\\A\\B\\C\\"), "x", "1"), ERROR_SUCCESS);
    EXPECT_EQ(get(create("Software\\A\\B\\C"), "x"), bytes("1\0", 2));
}

TEST_F(Registry, ANameEndsBeforeItsFirstZero)
{
    const Handle key = create(QByteArrayView("Software\\A\\B\0\\C", 15));
    ASSERT_EQ(set(key, QByteArrayView("x\0y", 3), "1"), ERROR_SUCCESS);
    EXPECT_EQ(get(create("Software\\A\\B"), "x"), bytes("1\0", 2));
    // A name that begins with one is none, and a key without a name is the one it lies in.
    Handle same = 0;
    ASSERT_EQ(RegOpenKeyExA(key, QByteArrayView("\0C", 2), KEY_ALL_ACCESS, &same), ERROR_SUCCESS);
    EXPECT_EQ(get(same, "x"), bytes("1\0", 2));
}

TEST_F(Registry, OpensBelowAnOpenKey)
{
    const Handle application = create(kApplication);
    Handle section = 0;
    EXPECT_EQ(RegOpenKeyExA(application, "Regningsdel", KEY_READ, &section), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(RegCreateKeyExA(application, "Regningsdel", KEY_ALL_ACCESS, &section), ERROR_SUCCESS);
    ASSERT_EQ(set(section, "x", "1"), ERROR_SUCCESS);
    EXPECT_EQ(get(create(kSection), "x"), bytes("1\0", 2));
}

TEST_F(Registry, TextGetsItsClosingZeros)
{
    const Handle key = create(kSection);
    ASSERT_EQ(set(key, "a", "10"), ERROR_SUCCESS);
    EXPECT_EQ(get(key, "a"), bytes("10\0", 3));
    ASSERT_EQ(set(key, "a", QByteArrayView("10\0", 3)), ERROR_SUCCESS);
    EXPECT_EQ(get(key, "a"), bytes("10\0", 3));
    ASSERT_EQ(set(key, "a", "%HOME%", REG_EXPAND_SZ), ERROR_SUCCESS);
    EXPECT_EQ(get(key, "a"), bytes("%HOME%\0", 7));
    for (const int size : {3, 4, 5}) {
        ASSERT_EQ(set(key, "a", QByteArrayView("x\0y\0\0", size), REG_MULTI_SZ), ERROR_SUCCESS);
        EXPECT_EQ(get(key, "a"), bytes("x\0y\0\0", 5));
    }
}

TEST_F(Registry, DataOfNoBytesStayThat)
{
    const Handle key = create(kSection);
    quint32 type = 0;
    for (const quint32 wanted : {REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ, 99U}) {
        ASSERT_EQ(set(key, "a", {}, wanted), ERROR_SUCCESS);
        EXPECT_EQ(get(key, "a", &type), "");
        EXPECT_EQ(type, wanted);
    }
}

TEST_F(Registry, ValuesKeepTypeAndBytes)
{
    const Handle key = create(kSection);
    QByteArray all;
    for (int byte = 0; byte < 256; ++byte)
        all += char(byte);
    all += QByteArray(2, '\0');
    for (const quint32 wanted : {REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_DWORD, REG_MULTI_SZ, 99U}) {
        quint32 type = 0;
        ASSERT_EQ(set(key, "a", all, wanted), ERROR_SUCCESS);
        EXPECT_EQ(get(key, "a", &type), all.toStdString());
        EXPECT_EQ(type, wanted);
    }
}

TEST_F(Registry, TheUnnamedValueIsOneOfItsOwn)
{
    const Handle key = create(kSection);
    ASSERT_EQ(set(key, {}, "uten navn"), ERROR_SUCCESS);
    ASSERT_EQ(set(key, "@", "krøllalfa"), ERROR_SUCCESS);
    EXPECT_EQ(get(key, {}), bytes("uten navn\0", 10));
    EXPECT_EQ(get(key, ""), bytes("uten navn\0", 10));
    EXPECT_EQ(RegDeleteValueA(key, {}), ERROR_SUCCESS);
    EXPECT_EQ(get(key, {}), "<2>");
    EXPECT_NE(get(key, "@"), "<2>");
}

TEST_F(Registry, AQueryTellsTypeAndSizeAndMindsTheRoom)
{
    const Handle key = create(kSection);
    ASSERT_EQ(set(key, "a", "12345"), ERROR_SUCCESS);
    quint32 type = 0;
    quint32 size = 0;
    EXPECT_EQ(RegQueryValueExA(key, "a", &type, nullptr, &size), ERROR_SUCCESS);
    EXPECT_EQ(type, REG_SZ);
    EXPECT_EQ(size, 6U);
    QByteArray buffer(6, '.');
    size = 5;
    EXPECT_EQ(RegQueryValueExA(key, "a", &type, buffer.data(), &size), ERROR_MORE_DATA);
    EXPECT_EQ(size, 6U);
    EXPECT_EQ(buffer, "......");
    EXPECT_EQ(RegQueryValueExA(key, "a", nullptr, buffer.data(), &size), ERROR_SUCCESS);
    EXPECT_EQ(buffer, QByteArray("12345\0", 6));
    EXPECT_EQ(RegQueryValueExA(key, "a", &type, nullptr, nullptr), ERROR_SUCCESS);
    EXPECT_EQ(RegQueryValueExA(key, "a", nullptr, buffer.data(), nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegQueryValueExA(key, "b", &type, nullptr, &size), ERROR_FILE_NOT_FOUND);
}

TEST_F(Registry, HandlesAreValidUntilClosed)
{
    Handle key = create("Software\\A\\B\\Lukket");
    EXPECT_EQ(RegCloseKey(key), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(key), ERROR_INVALID_HANDLE);
    EXPECT_EQ(get(key, "a"), "<6>");
    EXPECT_EQ(set(key, "a", "1"), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegDeleteValueA(key, "a"), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegDeleteKeyA(key, "a"), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegOpenKeyExA(key, {}, KEY_READ, &key), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCreateKeyExA(0, {}, KEY_READ, &key), ERROR_INVALID_HANDLE);
    EXPECT_EQ(RegCloseKey(HKEY_CURRENT_USER), ERROR_SUCCESS);
    EXPECT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, {}, KEY_READ, nullptr), ERROR_INVALID_PARAMETER);
    EXPECT_EQ(RegCreateKeyExA(HKEY_USERS, "x", KEY_READ, nullptr), ERROR_INVALID_PARAMETER);
}

TEST_F(Registry, AKeyOpenedTwiceIsClosedTwice)
{
    const Handle first = create("Software\\A\\B\\Dobbelt");
    const Handle second = create("SOFTWARE\\a\\b\\DOBBELT");
    EXPECT_EQ(first, second);
    EXPECT_EQ(RegCloseKey(first), ERROR_SUCCESS);
    EXPECT_EQ(set(second, "a", "1"), ERROR_SUCCESS);
    EXPECT_EQ(RegCloseKey(second), ERROR_SUCCESS);
    EXPECT_EQ(set(second, "a", "1"), ERROR_INVALID_HANDLE);
}

TEST_F(Registry, AKeyOpenForReadingIsNotWritten)
{
    ASSERT_EQ(set(create(kSection), "a", "1"), ERROR_SUCCESS);
    Handle key = 0;
    ASSERT_EQ(RegOpenKeyExA(HKEY_CURRENT_USER, kSection, KEY_READ, &key), ERROR_SUCCESS);
    EXPECT_EQ(set(key, "a", "2"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteValueA(key, "a"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(get(key, "a"), bytes("1\0", 2));
}

TEST_F(Registry, DeletesAValueAlone)
{
    const Handle key = create(kSection);
    ASSERT_EQ(set(key, "a", "1"), ERROR_SUCCESS);
    ASSERT_EQ(set(key, "b", "2"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueA(key, "A"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteValueA(key, "a"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(m_folder.content(u"Brennmark AS/Strekkbok.ini"_s), "[Regningsdel]\nb=2\n");
}

TEST_F(Registry, DeletesAKeyWithoutSubkeysOnly)
{
    const Handle application = create(kApplication);
    ASSERT_EQ(set(create(kSection), "a", "1"), ERROR_SUCCESS);
    ASSERT_EQ(set(create("Software\\Brennmark AS\\Strekkbok\\Regningsdel\\Forms"), "b", "2"),
              ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyA(application, "Regningsdel"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(get(create(kSection), "a"), bytes("1\0", 2));
    EXPECT_EQ(RegDeleteKeyA(application, "regningsdel\\forms"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyA(application, "Regningsdel"), ERROR_SUCCESS);
    EXPECT_EQ(RegDeleteKeyA(application, "Regningsdel"), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(open(kSection), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(open(kApplication), ERROR_SUCCESS);
}

TEST_F(Registry, DeletesApplicationAndCompany)
{
    create(kApplication);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, "Software"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, {}), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, "Software\\Brennmark AS"), ERROR_ACCESS_DENIED);
    EXPECT_EQ(RegDeleteKeyA(HKEY_CURRENT_USER, kApplication), ERROR_SUCCESS);
    EXPECT_FALSE(QFile::exists(m_folder.filePath(u"Brennmark AS/Strekkbok.ini"_s)));
    EXPECT_EQ(open(kApplication), ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(open("Software\\Brennmark AS"), ERROR_FILE_NOT_FOUND);
}
