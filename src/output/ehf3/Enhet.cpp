#include "output/ehf3/Enhet.h"

using namespace Qt::StringLiterals;

namespace {

struct Enhet
{
    QStringView navn;
    QLatin1StringView kode;
};

constexpr Enhet kEnheter[] = {
    {u"stk", "H87"_L1},         {u"stykk", "H87"_L1},     {u"pcs", "H87"_L1},
    {u"t", "HUR"_L1},           {u"time", "HUR"_L1},      {u"timer", "HUR"_L1},
    {u"døgn", "DAY"_L1},        {u"dag", "DAY"_L1},       {u"dager", "DAY"_L1},
    {u"kg", "KGM"_L1},          {u"kilo", "KGM"_L1},      {u"tonn", "TNE"_L1},
    {u"m", "MTR"_L1},           {u"meter", "MTR"_L1},     {u"lm", "MTR"_L1},
    {u"km", "KMT"_L1},          {u"kilometer", "KMT"_L1}, {u"m3", "MTQ"_L1},
    {u"m³", "MTQ"_L1},          {u"kbm", "MTQ"_L1},       {u"kubikk", "MTQ"_L1},
    {u"kubikkmeter", "MTQ"_L1}, {u"l", "LTR"_L1},         {u"ltr", "LTR"_L1},
    {u"liter", "LTR"_L1},       {u"pall", "XPX"_L1},      {u"paller", "XPX"_L1},
};

} // namespace

QLatin1StringView ehf3::enhetskode(const QString &enhet)
{
    const QString navn = enhet.toLower().remove(u'.').remove(u' ');
    for (const Enhet &kjent : kEnheter) {
        if (kjent.navn == navn)
            return kjent.kode;
    }
    return "C62"_L1;
}
