#include "platform/registry/IniFile.h"

#include "platform/registry/Registry.h"
#include "runtime/CodePage.h"

#include <gtest/gtest.h>

#include <random>

using namespace Qt::StringLiterals;
using namespace registry;

namespace {

const QString kRegningsdel = u"Regningsdel"_s;

StoredValue text(const char *content)
{
    return {REG_SZ, QByteArray(content) + '\0'};
}

/// The text of a value without its closing zero, or "none".
std::string read(const IniFile &file, const QString &key, const QString &name)
{
    const auto value = file.value(key, name);
    return value ? value->data.chopped(value->data.isEmpty() ? 0 : 1).toStdString() : "none";
}

} // namespace

TEST(IniFile, ReadsAValueOfItsSection)
{
    const IniFile file = IniFile::fromBytes("[Regningsdel]\nPrintVis=1\n[Annet]\nPrintVis=2\n");
    EXPECT_EQ(read(file, kRegningsdel, u"PrintVis"_s), "1");
    EXPECT_EQ(read(file, u"Annet"_s, u"PrintVis"_s), "2");
    EXPECT_EQ(read(file, kRegningsdel, u"Avrunding"_s), "none");
    EXPECT_EQ(read(file, {}, u"PrintVis"_s), "none");
}

TEST(IniFile, ReadsTheFilesOwnKeyAndUnnamedValues)
{
    const IniFile file = IniFile::fromBytes("a=1\n@=2\n\n[B]\n@=3\n%40=4");
    EXPECT_EQ(read(file, {}, u"a"_s), "1");
    EXPECT_EQ(read(file, {}, {}), "2");
    EXPECT_EQ(read(file, u"B"_s, {}), "3");
    EXPECT_EQ(read(file, u"B"_s, u"@"_s), "4");
}

TEST(IniFile, BlanksAroundNamesAndValuesDoNotCount)
{
    const IniFile file = IniFile::fromBytes("  [Regningsdel]  ; merknad\n\tPrintVis =\t1  \r\n");
    EXPECT_EQ(read(file, kRegningsdel, u"PrintVis"_s), "1");
}

TEST(IniFile, NamesMatchWithoutRegardToCase)
{
    const IniFile file = IniFile::fromBytes("[REGNINGSDEL]\nprintvis=1\nÆØÅ=2\n");
    EXPECT_EQ(read(file, kRegningsdel, u"PrintVis"_s), "1");
    EXPECT_EQ(read(file, kRegningsdel, u"æøå"_s), "2");
    EXPECT_TRUE(file.hasKey(u"regningsdel"_s));
}

TEST(IniFile, ReadsUtf8WithMarkAndTheCodePage)
{
    EXPECT_EQ(read(IniFile::fromBytes("\xef\xbb\xbf[A]\nx=\xc3\xa5\n"), u"A"_s, u"x"_s), "\xe5");
    EXPECT_EQ(read(IniFile::fromBytes("[A]\n\xf8=\xe5\n"), u"A"_s, u"ø"_s), "\xe5");
}

TEST(IniFile, OnlyTheFirstMarkIsTheFiles)
{
    const QString marked = u"\ufeffx"_s;
    const QByteArray below = "\xef\xbb\xbf[A]\n\xef\xbb\xbfx=1\nx=2\n";
    const QByteArray first = "\xef\xbb\xbf\xef\xbb\xbfx=1\nx=2\n";
    for (const auto &[key, bytes] : {std::pair(u"A"_s, below), std::pair(QString(), first)}) {
        IniFile file = IniFile::fromBytes(bytes);
        EXPECT_EQ(read(file, key, marked), "1");
        EXPECT_EQ(read(file, key, u"x"_s), "2");
        file = IniFile::fromBytes(file.toBytes());
        EXPECT_EQ(read(file, key, marked), "1");
        EXPECT_EQ(read(file, key, u"x"_s), "2");
    }
    // Nothing stands before this one when the file is written.
    IniFile alone;
    alone.setValue({}, marked, text("1"));
    EXPECT_EQ(read(IniFile::fromBytes(alone.toBytes()), {}, marked), "1");
}

TEST(IniFile, OfTwoValuesTheLaterCounts)
{
    IniFile file = IniFile::fromBytes("[A]\nx=1\n[B]\ny=2\n[a]\nX=3\n");
    EXPECT_EQ(read(file, u"A"_s, u"x"_s), "3");
    file.setValue(u"A"_s, u"x"_s, text("4"));
    EXPECT_EQ(read(file, u"A"_s, u"x"_s), "4");
    EXPECT_TRUE(file.removeValue(u"A"_s, u"x"_s));
    EXPECT_EQ(read(file, u"A"_s, u"x"_s), "none");
    EXPECT_EQ(read(file, u"B"_s, u"y"_s), "2");
}

TEST(IniFile, AKeyExistsBySectionOrByOneBelow)
{
    const IniFile file = IniFile::fromBytes("[Regningsdel\\Forms\\frmOrdre]\nFTop=1\n");
    EXPECT_TRUE(file.hasKey({}));
    EXPECT_FALSE(IniFile().hasKey({}));
    EXPECT_TRUE(file.hasKey(kRegningsdel));
    EXPECT_TRUE(file.hasKey(u"Regningsdel\\Forms"_s));
    EXPECT_TRUE(file.hasKey(u"Regningsdel\\Forms\\frmOrdre"_s));
    EXPECT_FALSE(file.hasKey(u"Regnings"_s));
    EXPECT_FALSE(file.hasKey(u"Regningsdel\\Forms\\frmOrdre\\x"_s));
    EXPECT_TRUE(file.hasSubkeys({}));
    EXPECT_TRUE(file.hasSubkeys(u"Regningsdel\\Forms"_s));
    EXPECT_FALSE(file.hasSubkeys(u"Regningsdel\\Forms\\frmOrdre"_s));
    EXPECT_FALSE(IniFile().hasSubkeys({}));
}

TEST(IniFile, EmptyLevelsAreLevels)
{
    IniFile file;
    file.setValue(u"a\\\\b"_s, u"x"_s, text("1"));
    file.setValue(u"a\\b"_s, u"x"_s, text("2"));
    file.setValue(u"\\b"_s, u"x"_s, text("3"));
    const IniFile back = IniFile::fromBytes(file.toBytes());
    EXPECT_EQ(read(back, u"a\\\\b"_s, u"x"_s), "1");
    EXPECT_EQ(read(back, u"a\\b"_s, u"x"_s), "2");
    EXPECT_EQ(read(back, u"\\b"_s, u"x"_s), "3");
}

TEST(IniFile, ValuesStandWithTheirSectionInOrder)
{
    IniFile file;
    file.setValue(kRegningsdel, u"PrintVis"_s, text("1"));
    file.setValue(u"Annet"_s, {}, text("2"));
    file.setValue(kRegningsdel, u"Avrunding"_s, text("0"));
    file.setValue({}, u"egen"_s, text("3"));
    EXPECT_EQ(file.toBytes().toStdString(), "egen=3\n\n[Annet]\n@=2\n\n"
                                            "[Regningsdel]\nAvrunding=0\nPrintVis=1\n");
}

TEST(IniFile, AChangedValueTakesTheLatestSpelling)
{
    IniFile file = IniFile::fromBytes("[Regningsdel]\nPrintVis = 0\nukjent = \xff\n");
    file.setValue(kRegningsdel, u"PRINTVIS"_s, text("1"));
    EXPECT_EQ(file.toBytes().toStdString(), "[Regningsdel]\nPRINTVIS=1\nukjent=ÿ\n");
}

TEST(IniFile, WhatIsNoValueIsLeftOut)
{
    const IniFile file = IniFile::fromBytes("; om filen\r\nen linje uten mening\n\n[A]\n# a=1\n"
                                            ";b=2\n=3\nc=dword:zz\nd=4\n[Uten slutt\nx=1");
    EXPECT_EQ(file.toBytes().toStdString(), "[A]\nd=4\n");
}

TEST(IniFile, BelowABrokenHeadNothingIsReached)
{
    IniFile file = IniFile::fromBytes("[A]\nx=1\n[B\nx=2\ny=3\n");
    EXPECT_EQ(read(file, u"A"_s, u"x"_s), "1");
    EXPECT_EQ(read(file, u"A"_s, u"y"_s), "none");
    EXPECT_EQ(read(file, u"B"_s, u"x"_s), "none");
    EXPECT_FALSE(file.hasKey(u"B"_s));
    file.setValue(u"B"_s, u"x"_s, text("4"));
    EXPECT_EQ(read(file, u"B"_s, u"x"_s), "4");
}

TEST(IniFile, RemovesAKeyWithItsValuesOnly)
{
    IniFile file = IniFile::fromBytes("a=1\n[A]\nx=1\n[A\\B]\ny=2\n[C]\nz=3\n[a]\nw=4\n");
    file.removeKey(u"A"_s);
    EXPECT_EQ(file.toBytes().toStdString(), "a=1\n\n[A\\B]\ny=2\n\n[C]\nz=3\n");
    EXPECT_TRUE(file.hasKey(u"A"_s)); // by the key below it
    for (const auto &key : {u"A\\B"_s, u"C"_s, QString()})
        file.removeKey(key);
    EXPECT_TRUE(file.isEmpty());
}

TEST(IniFile, AnAddedKeyIsEmptyAndAddedOnce)
{
    IniFile file;
    file.addKey(kRegningsdel);
    file.addKey(u"regningsdel"_s);
    EXPECT_EQ(file.toBytes().toStdString(), "[Regningsdel]\n");
}

TEST(IniFile, AnyNamesAndAnyLinesComeBack)
{
    std::mt19937 random(19990214);
    const QByteArray likely("[]=;#%\\\"@ \t\r\nab.\0", 18);
    const auto bytes = [&](int longest) {
        QByteArray result;
        for (int left = int(random() % unsigned(longest)); left > 0; --left)
            result += random() % 4 ? likely[random() % likely.size()] : char(random() % 256);
        return result;
    };
    for (int round = 0; round < 3000; ++round) {
        IniFile file = IniFile::fromBytes(bytes(80));
        const QString key = codepage::decode(bytes(8).replace('\0', 'x'));
        const QString name = codepage::decode(bytes(8).replace('\0', 'x'));
        const StoredValue value{REG_SZ, bytes(10) + '\0'};
        file.setValue(key, name, value);
        const IniFile back = IniFile::fromBytes(file.toBytes());
        ASSERT_EQ(back.value(key, name), value) << file.toBytes().toStdString();
        ASSERT_TRUE(back.hasKey(key));
        ASSERT_EQ(back.toBytes(), file.toBytes());
    }
}
