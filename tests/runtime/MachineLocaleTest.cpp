#include "runtime/MachineLocale.h"

#include "runtime/Support.h"

#include <optional>

using namespace Qt::StringLiterals;

namespace {

/// Sets the variables that name the locale, and puts back what was there.
class Environment
{
public:
    Environment(const char *all, const char *numeric, const char *time, const char *lang)
    {
        set(0, all);
        set(1, numeric);
        set(2, time);
        set(3, lang);
    }
    ~Environment()
    {
        for (std::size_t i = 0; i < kNames.size(); ++i) {
            if (m_old[i])
                qputenv(kNames[i], *m_old[i]);
            else
                qunsetenv(kNames[i]);
        }
    }
    Environment(const Environment &) = delete;
    Environment &operator=(const Environment &) = delete;

private:
    void set(std::size_t i, const char *value)
    {
        if (qEnvironmentVariableIsSet(kNames[i]))
            m_old[i] = qgetenv(kNames[i]);
        if (value != nullptr)
            qputenv(kNames[i], value);
        else
            qunsetenv(kNames[i]);
    }

    static constexpr std::array<const char *, 4> kNames = {"LC_ALL", "LC_NUMERIC", "LC_TIME",
                                                           "LANG"};
    std::array<std::optional<QByteArray>, 4> m_old;
};

void expectNorwegian(const MachineLocale &locale)
{
    EXPECT_EQ(locale.decimalPoint, u',');
    EXPECT_EQ(locale.shortDate, u"dd.MM.yyyy"_s);
    EXPECT_TRUE(locale.dayBeforeMonth);
}

} // namespace

TEST(MachineLocale, WithoutALanguageIsNorwegian)
{
    expectNorwegian(MachineLocale::norwegian());
    for (const QString &name : {u""_s, u"C"_s, u"POSIX"_s, u"C.UTF-8"_s, u"xx_YY"_s})
        expectNorwegian(MachineLocale::fromName(name));
}

TEST(MachineLocale, OfNorwegianNames)
{
    for (const QString &name : {u"nb_NO.UTF-8"_s, u"nb_NO"_s, u"no_NO"_s, u"nn_NO.UTF-8@euro"_s})
        expectNorwegian(MachineLocale::fromName(name));
}

TEST(MachineLocale, OfAPointLanguage)
{
    const MachineLocale american = MachineLocale::fromName(u"en_US.UTF-8"_s);
    EXPECT_EQ(american.decimalPoint, u'.');
    EXPECT_EQ(american.shortDate, u"M/d/yyyy"_s);
    EXPECT_FALSE(american.dayBeforeMonth);

    const MachineLocale british = MachineLocale::fromName(u"en_GB"_s);
    EXPECT_EQ(british.decimalPoint, u'.');
    EXPECT_EQ(british.shortDate, u"dd/MM/yyyy"_s);
    EXPECT_TRUE(british.dayBeforeMonth);
}

TEST(MachineLocale, OfAYearFirstLanguageReadsTheDayBeforeTheMonth)
{
    const MachineLocale swedish = MachineLocale::fromName(u"sv_SE"_s);
    EXPECT_EQ(swedish.decimalPoint, u',');
    EXPECT_EQ(swedish.shortDate, u"yyyy-MM-dd"_s);
    EXPECT_TRUE(swedish.dayBeforeMonth);
}

TEST(MachineLocale, OfEveryLanguageHasPlainMarksOnly)
{
    for (const QString &name : {u"de_DE"_s, u"cs_CZ"_s, u"hu_HU"_s, u"fa_IR"_s, u"ar_EG"_s,
                                u"fr_FR"_s, u"ko_KR"_s, u"bg_BG"_s, u"he_IL"_s}) {
        const MachineLocale locale = MachineLocale::fromName(name);
        EXPECT_TRUE(locale.decimalPoint == u',' || locale.decimalPoint == u'.')
            << name.toStdString();
        EXPECT_EQ(locale.shortDate.count(u'y'), 4) << name.toStdString();
        for (const QChar c : locale.shortDate) {
            EXPECT_FALSE(c.isSpace() && c != u' ') << name.toStdString();
            EXPECT_NE(c.category(), QChar::Other_Format) << name.toStdString();
        }
    }
}

TEST(MachineLocale, OfASilentEnvironmentIsNorwegian)
{
    const Environment environment(nullptr, nullptr, nullptr, nullptr);
    expectNorwegian(MachineLocale::fromEnvironment());
}

TEST(MachineLocale, TheEnvironmentsLangNamesBoth)
{
    const Environment environment(nullptr, nullptr, nullptr, "en_US.UTF-8");
    EXPECT_EQ(MachineLocale::fromEnvironment().decimalPoint, u'.');
    EXPECT_EQ(MachineLocale::fromEnvironment().shortDate, u"M/d/yyyy"_s);
}

TEST(MachineLocale, TheEnvironmentsCategoriesGoBeforeLang)
{
    const Environment environment("", "en_US.UTF-8", "nb_NO.UTF-8", "sv_SE.UTF-8");
    const MachineLocale locale = MachineLocale::fromEnvironment();
    EXPECT_EQ(locale.decimalPoint, u'.');
    EXPECT_EQ(locale.shortDate, u"dd.MM.yyyy"_s);
}

TEST(MachineLocale, TheEnvironmentsLcAllGoesBeforeAll)
{
    const Environment environment("sv_SE.UTF-8", "en_US.UTF-8", "en_US.UTF-8", "en_US.UTF-8");
    const MachineLocale locale = MachineLocale::fromEnvironment();
    EXPECT_EQ(locale.decimalPoint, u',');
    EXPECT_EQ(locale.shortDate, u"yyyy-MM-dd"_s);
}

TEST(MachineLocale, TheEnvironmentsLcAllOfCIsNorwegian)
{
    const Environment environment("C.UTF-8", "en_US.UTF-8", nullptr, "en_US.UTF-8");
    expectNorwegian(MachineLocale::fromEnvironment());
}

TEST(MachineLocale, TheEnvironmentIsAskedOnce)
{
    const QChar before = MachineLocale::current().decimalPoint;
    const Environment environment(before == u',' ? "en_US" : "nb_NO", nullptr, nullptr, nullptr);
    EXPECT_EQ(MachineLocale::current().decimalPoint, before);
}

TEST(MachineLocale, ScopedLocaleIsInForceWhileItLives)
{
    const ScopedLocale outer(commaLocale());
    {
        const ScopedLocale inner(pointLocale());
        EXPECT_EQ(MachineLocale::current().decimalPoint, u'.');
    }
    expectNorwegian(MachineLocale::current());
}
