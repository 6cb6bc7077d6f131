#include "output/ehf3/Enhet.h"

#include "support/ModuleTest.h"

using namespace Qt::StringLiterals;

namespace {

TEST(Ehf3Enhet, HasACodeForTheUnitsOfTransport)
{
    const std::initializer_list<std::pair<QString, QString>> units{
        {u"t"_s, u"HUR"_s},    {u"time"_s, u"HUR"_s},     {u"Timer"_s, u"HUR"_s},
        {u"stk"_s, u"H87"_s},  {u"Stk."_s, u"H87"_s},     {u"døgn"_s, u"DAY"_s},
        {u"DØGN"_s, u"DAY"_s}, {u"kg"_s, u"KGM"_s},       {u"tonn"_s, u"TNE"_s},
        {u"m"_s, u"MTR"_s},    {u"km"_s, u"KMT"_s},       {u"m3"_s, u"MTQ"_s},
        {u"m³"_s, u"MTQ"_s},   {u"l"_s, u"LTR"_s},        {u"Liter"_s, u"LTR"_s},
        {u"pall"_s, u"XPX"_s}, {u" paller "_s, u"XPX"_s}, {QString(), u"C62"_s},
        {u"tur"_s, u"C62"_s},  {u"."_s, u"C62"_s},        {u"\"><x"_s, u"C62"_s}};
    for (const auto &[unit, code] : units)
        EXPECT_EQ(QString::fromLatin1(ehf3::enhetskode(unit)), code) << unit.toStdString();
}

} // namespace
