#include "output/ehf3/Enhet.h"

namespace {

struct Enhet
{
    QStringView navn;
    std::string_view kode;
};

constexpr Enhet kEnheter[] = {
    {u"stk", "H87"},       {u"stykk", "H87"},       {u"pcs", "H87"},    {u"t", "HUR"},
    {u"time", "HUR"},      {u"timer", "HUR"},       {u"døgn", "DAY"},   {u"dag", "DAY"},
    {u"dager", "DAY"},     {u"kg", "KGM"},          {u"kilo", "KGM"},   {u"tonn", "TNE"},
    {u"m", "MTR"},         {u"meter", "MTR"},       {u"lm", "MTR"},     {u"km", "KMT"},
    {u"kilometer", "KMT"}, {u"m3", "MTQ"},          {u"m³", "MTQ"},     {u"kbm", "MTQ"},
    {u"kubikk", "MTQ"},    {u"kubikkmeter", "MTQ"}, {u"l", "LTR"},      {u"ltr", "LTR"},
    {u"liter", "LTR"},     {u"pall", "XPX"},        {u"paller", "XPX"},
};

} // namespace

std::string_view ehf3::enhetskode(const QString &enhet)
{
    const QString navn = enhet.toLower().remove(u'.').remove(u' ');
    for (const Enhet &kjent : kEnheter) {
        if (kjent.navn == navn)
            return kjent.kode;
    }
    return "C62";
}
