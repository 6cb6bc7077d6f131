#include "platform/report/Evaluator.h"
#include "platform/report/FormulaChecker.h"
#include "platform/report/Functions.h"
#include "platform/report/ReportError.h"
#include "runtime/MachineLocale.h"
#include "runtime/Moment.h"

#include <gtest/gtest.h>

namespace report::test {

using namespace Qt::StringLiterals;

namespace {

/// One row: Nr 7, Sum 1234.50 kroner, Enkel 0.1 (a single), Dato 9 March 2014, Tekst "Åsen", Ja
/// true, Tom Null.
class Row : public Names, public Environment
{
public:
    Row()
    {
        add(u"Nr"_s, Type::Number, Value(qint32(7)));
        add(u"Sum"_s, Type::Money, Value(Currency::fromTenThousandths(12345000)));
        add(u"Enkel"_s, Type::Number, Value(0.1f));
        add(u"Dato"_s, Type::Date, Value(utcMoment(QDate(2014, 3, 9))));
        add(u"Tekst"_s, Type::Text, Value(u"Åsen"_s));
        add(u"Ja"_s, Type::Truth, Value(true));
        add(u"Tom"_s, Type::Text, Value());
        add(u"Bilde"_s, Type::Bytes, Value(QByteArray("x")));
    }

    FieldInfo field(QStringView name) const override
    {
        for (size_t i = 0; i < m_columns.size(); ++i) {
            if (m_columns[i].name == name)
                return {static_cast<int>(i), m_columns[i].type};
        }
        return {};
    }
    int group(QStringView name) const override { return name == u"Gruppe" ? 0 : kOwnScope; }
    Expr *formula(QStringView name) override
    {
        const auto found = m_formulas.find(name.toString());
        return found == m_formulas.end() ? nullptr : found->second.get();
    }
    Value field(int column) override { return m_columns[static_cast<size_t>(column)].value; }
    Value aggregate(const Expr &) override { return Value(1.0); }
    Value special(Special) override { return Value(4.0); }

    void declare(const QString &name, QStringView text) { m_formulas[name] = parseFormula(text); }

private:
    struct Column
    {
        QString name;
        Value value;
        Type type;
    };

    void add(const QString &name, Type type, const Value &value)
    {
        m_columns.push_back({name, value, type});
    }

    std::vector<Column> m_columns;
    std::map<QString, ExprPtr> m_formulas;
};

class FormulaTest : public testing::Test
{
protected:
    Value valueOf(QStringView text)
    {
        const ExprPtr expr = parseFormula(text);
        FormulaChecker checker(m_row);
        checker.check(*expr);
        return evaluate(*expr, m_row);
    }
    /// With a plain blank for each no-break blank.
    std::string text(QStringView text)
    {
        return textOf(valueOf(text)).replace(u'\u00a0', u' ').toStdString();
    }
    bool holds(QStringView text) { return isTrue(valueOf(text)); }
    /// The place of a fault and what it is; "none" where there is none.
    std::string error(QStringView text)
    {
        try {
            static_cast<void>(valueOf(text));
        } catch (const RunTimeError &error) {
            const QString head = u"Feil i formel ved tegn "_s;
            EXPECT_EQ(error.number(), errors::kFormula);
            EXPECT_TRUE(error.description().startsWith(head)) << error.what();
            return error.description().sliced(head.size()).toStdString();
        }
        return "none";
    }
    int place(QStringView text) { return std::stoi(error(text)); }

    ScopedLocale m_locale{MachineLocale::norwegian()};
    Row m_row;
};

} // namespace

TEST_F(FormulaTest, ReckonsByPrecedence)
{
    EXPECT_EQ(text(u"1+2*3"), "7");
    EXPECT_EQ(text(u"(1+2)*3"), "9");
    EXPECT_EQ(text(u"-2*3 mod 4"), "-2");
    EXPECT_EQ(text(u"7/2"), "3,5");
    EXPECT_EQ(text(u"'a' & 1+1 & 'b'"), "a2b");
    EXPECT_TRUE(holds(u"1=1 or 1=2 and 1=3"));
    EXPECT_FALSE(holds(u"(1=1 or 1=2) and 1=3"));
    EXPECT_TRUE(holds(u"not 1=2 and 1=1"));
    EXPECT_FALSE(holds(u"not (1=2 or 1=1)"));
}

TEST_F(FormulaTest, WordsAndNamesHaveNoCase)
{
    EXPECT_TRUE(holds(u"{Nr} IN 1 TO 9 And TRUE oR nOt true"));
    EXPECT_EQ(text(u"UPPER('æ')"), "Æ");
    EXPECT_EQ(text(u"IF {Ja} THEN 'x' ELSE 'y'"), "x");
}

TEST_F(FormulaTest, ReadsNumbersWithLeadingZerosAndBlanks)
{
    EXPECT_TRUE(holds(u"{Nr}= 007"));
    EXPECT_TRUE(holds(u"{Nr}=7"));
    EXPECT_TRUE(holds(u".5 = 0.50"));
}

TEST_F(FormulaTest, ReadsQuotedText)
{
    EXPECT_EQ(text(u"'O''Hara'"), "O'Hara");
    EXPECT_EQ(text(u"\"si \"\"ja\"\"\""), "si \"ja\"");
    EXPECT_EQ(text(u"'to\nlinjer'"), "to\nlinjer");
    EXPECT_EQ(text(u"''"), "");
}

TEST_F(FormulaTest, MoneyStaysExactMoney)
{
    EXPECT_EQ(valueOf(u"{Sum}*3"), Value(Currency::fromTenThousandths(37035000)));
    EXPECT_EQ(valueOf(u"{Sum}-0.0001"), Value(Currency::fromTenThousandths(12344999)));
    EXPECT_EQ(valueOf(u"{Sum}*{Enkel}"), Value(Currency::fromTenThousandths(1234500)));
    EXPECT_EQ(valueOf(u"-{Sum}"), Value(Currency::fromTenThousandths(-12345000)));
    EXPECT_EQ(valueOf(u"{Sum}/{Sum}"), Value(1.0));
    EXPECT_EQ(text(u"{Sum}"), "1 234,50");
    EXPECT_EQ(text(u"-{Sum}*1000"), "-1 234 500,00");
}

TEST_F(FormulaTest, ASingleIsTheNumberThatItShows)
{
    EXPECT_TRUE(holds(u"{Enkel}=0.1"));
    EXPECT_EQ(text(u"{Enkel}*3"), "0,3");
}

TEST_F(FormulaTest, Dates)
{
    EXPECT_TRUE(holds(u"{Dato}=Date( 2014, 3, 9)"));
    EXPECT_TRUE(holds(u"{Dato} in Date(2014,3,9) to Date(2014,3,9)"));
    EXPECT_FALSE(holds(u"{Dato}<Date(2014,3,9)"));
    EXPECT_EQ(text(u"{Dato}+30"), "08.04.2014");
    EXPECT_EQ(text(u"{Dato}-Date(2014,1,1)"), "67");
    EXPECT_EQ(text(u"Year({Dato}) & '-' & Month({Dato}) & '-' & Day({Dato})"), "2014-3-9");
    const std::string noSuchDate = "1: det finnes ingen slik dato";
    EXPECT_EQ(error(u"Date(2014,2,29)"), noSuchDate);
    EXPECT_EQ(error(u"Date(2014,2.5,1)"), noSuchDate);
    EXPECT_EQ(error(u"Date(10000,1,1)"), noSuchDate);
    EXPECT_EQ(error(u"Date(99,1,1)"), noSuchDate);
}

TEST_F(FormulaTest, NothingIsEqualToNothing)
{
    EXPECT_FALSE(holds(u"{Tom}=''"));
    EXPECT_FALSE(holds(u"{Tom}<>''"));
    EXPECT_TRUE(holds(u"Trim({Tom})=''"));
    EXPECT_TRUE(holds(u"IsNull({Tom})"));
    EXPECT_EQ(text(u"'a' & {Tom} & 'b'"), "ab");
    EXPECT_EQ(text(u"IfNull({Tom},'ingen')"), "ingen");
    EXPECT_FALSE(holds(u"{Tekst}=Null"));
    EXPECT_FALSE(holds(u"Null={Tekst}"));
    EXPECT_EQ(text(u"if {Nr}=7 then 'ja' else Null"), "ja");
    EXPECT_EQ(text(u"if {Nr}=8 then Null else 'nei'"), "nei");
    EXPECT_TRUE(valueOf(u"Null+1").isNull());
    EXPECT_TRUE(valueOf(u"Abs(Null)").isNull());
    EXPECT_TRUE(valueOf(u"if {Tom}='x' then 1").isNull());
}

TEST_F(FormulaTest, TextsCompareWithoutRegardToCase)
{
    EXPECT_TRUE(holds(u"{Tekst}='åSEN'"));
    EXPECT_TRUE(holds(u"{Tekst} in ['x','åsen']"));
    EXPECT_FALSE(holds(u"{Tekst} in ['x']"));
}

TEST_F(FormulaTest, Functions)
{
    EXPECT_EQ(text(u"ToText({Sum},'0.00')"), "1234,50");
    EXPECT_EQ(text(u"ToText(1234567,'### ##0')"), "1 234 567");
    EXPECT_EQ(text(u"ToText({Dato})"), "09.03.2014");
    EXPECT_EQ(text(u"ToText({Ja})"), "Ja");
    EXPECT_EQ(text(u"Mid('abcdef',3)"), "cdef");
    EXPECT_EQ(text(u"Mid('abcdef',3,2) & Left('abc',1) & Right('abc',9)"), "cdaabc");
    EXPECT_EQ(text(u"Length('æøå')"), "3");
    EXPECT_EQ(text(u"Replace('a-b-c','-','')"), "abc");
    EXPECT_EQ(text(u"PadLeft('42',5,'0')"), "00042");
    EXPECT_EQ(text(u"Lines('a',' ','',{Tom},'b')"), "a\nb");
    EXPECT_EQ(text(u"Abs(-{Sum})"), "1 234,50");
    EXPECT_EQ(text(u"Round(2.5) & Round(-2.5) & Round(0.125,2)"), "3-30,13");
    EXPECT_EQ(text(u"Truncate(-2.9)"), "-2");
    EXPECT_EQ(text(u"ToNumber('12 kr')"), "12");
    // The examples of the published algorithm end in the digit that it gives.
    EXPECT_EQ(text(u"Mod10('7992739871')"), "3");
    EXPECT_EQ(text(u"Mod10('1 234 56')"), text(u"Mod10('123456')"));
    EXPECT_EQ(text(u"Mod10('0')"), "0");
}

TEST_F(FormulaTest, FormulasThatDoubleTheWorkAreRefused)
{
    m_row.declare(u"F0"_s, u"1"_s);
    for (int i = 1; i < 45; ++i)
        m_row.declare(u"F%1"_s.arg(i), u"{@F%1}+{@F%1}"_s.arg(i - 1));
    EXPECT_EQ(text(u"{@F10}"), "1024");
    EXPECT_EQ(error(u"{@F44}"), "7: formlene viser til hverandre for mange ganger");
    // Over rows alone each would be looked at anew.
    EXPECT_EQ(place(u"Sum({@F44})"), 7);
}

TEST_F(FormulaTest, ALongChainOfFormulasIsRefused)
{
    m_row.declare(u"F0"_s, u"1"_s);
    for (int i = 1; i < 1000; ++i)
        m_row.declare(u"F%1"_s.arg(i), u"{@F%1}"_s.arg(i - 1));
    EXPECT_EQ(text(u"{@F49}"), "1");
    EXPECT_EQ(error(u"{@F999}"), "1: for mange formler viser til hverandre");
}

TEST_F(FormulaTest, NamedFormulas)
{
    m_row.declare(u"Type"_s, u"if {Nr}>5 then 'stor' else 'liten'");
    m_row.declare(u"Ring"_s, u"{@Ring2}");
    m_row.declare(u"Ring2"_s, u"1 & {@Ring}");
    EXPECT_EQ(text(u"{@Type} & '!'"), "stor!");
    EXPECT_EQ(error(u"{@Ring}"), "5: formelen {@Ring} viser til seg selv");
    EXPECT_EQ(error(u"1 & {@Ukjent}"), "5: formelen {@Ukjent} finnes ikke");
}

TEST_F(FormulaTest, ATypeThatDoesNotFitIsRefused)
{
    EXPECT_EQ(error(u"1+'a'"), "2: tall og tekst passer ikke sammen");
    EXPECT_EQ(error(u"{Dato}=1"), "7: dato og tall passer ikke sammen");
    EXPECT_EQ(error(u"{Nr} and True"), "1: her skal et vilkår stå, ikke tall");
    EXPECT_EQ(place(u"if 1 then 2"), 4);
    EXPECT_NE(error(u"if True then 1 else 'a'"), "none");
    EXPECT_EQ(place(u"(if True then 1 else 2)+'a'"), 24);
    EXPECT_NE(error(u"1+True"), "none");
    EXPECT_NE(error(u"Year({Tekst})"), "none");
    EXPECT_NE(error(u"Sum({Tekst})"), "none");
    EXPECT_NE(error(u"{Bilde} & 'x'"), "none");
    EXPECT_NE(error(u"{Bilde} = 'x'"), "none");
    EXPECT_NE(error(u"not {Tekst}"), "none");
    EXPECT_NE(error(u"-{Tekst}"), "none");
    EXPECT_NE(error(u"{Ja} < True"), "none");
    EXPECT_NE(error(u"{Nr} in 'a' to 'b'"), "none");
}

TEST_F(FormulaTest, AFaultTellsItsPlace)
{
    EXPECT_EQ(error(u"{Nr} = "), "8: uttrykket slutter for tidlig");
    EXPECT_EQ(error(u"{Nr"), "1: her står «{», som ikke er begynnelsen på noe helt");
    EXPECT_EQ(place(u"'abc"), 1);
    EXPECT_EQ(place(u"\U0001F69A"), 1);
    EXPECT_EQ(error(u"1 2"), "3: «2» hører ikke hjemme her");
    EXPECT_EQ(error(u"Finn(1)"), "1: «Finn» er ingen kjent funksjon");
    EXPECT_EQ(error(u"Mid('a')"), "1: «Mid» har feil antall argumenter");
    EXPECT_EQ(error(u"{Ukjent}"), "1: feltet {Ukjent} finnes ikke");
    EXPECT_EQ(error(u"1 in 2"), "7: her mangler «to»");
    EXPECT_EQ(error(u"Sum({Nr},'Annen')"), "1: gruppen «Annen» finnes ikke");
    EXPECT_EQ(place(u"Sum({Nr},'Gruppe','Annen')"), 1);
    EXPECT_EQ(error(u"Sum({Nr},'Gruppe',1)"), "19: her skal gruppens navn stå i hermetegn");
    EXPECT_EQ(place(u""), 1);
    EXPECT_EQ(place(u"Kari's"), 1);
}

TEST_F(FormulaTest, AFunctionThatGivesItsArgumentGivesItsTypeToo)
{
    EXPECT_EQ(error(u"Trim(Round(1.5))"), "6: «Trim» tar ikke imot tall her");
    EXPECT_EQ(error(u"Trim(Abs({Sum}))"), "6: «Trim» tar ikke imot beløp her");
}

TEST_F(FormulaTest, WhatGoesWrongInReckoningTellsItsPlace)
{
    EXPECT_EQ(error(u"1/0"),
              "2: " + RunTimeError(::errors::kDivisionByZero).description().toStdString());
    EXPECT_EQ(error(u"{Sum}*1000000000000000"),
              "6: " + RunTimeError(::errors::kOverflow).description().toStdString());
    EXPECT_NE(error(u"Mid('a',0)"), "none");
    EXPECT_NE(error(u"PadLeft('a',100000000,'x')"), "none");
    EXPECT_NE(error(u"ToText(1,'0.000')"), "none");
}

TEST_F(FormulaTest, ATextThatExplodesIsRefused)
{
    QString text = u"'xxxxxxxxxx'"_s;
    for (int i = 0; i < 8; ++i)
        text = u"Replace("_s + text + u",'x','xxxxxxxxxx')"_s;
    EXPECT_NE(error(text).find("teksten blir for lang"), std::string::npos);
}

TEST_F(FormulaTest, NestingIsLimited)
{
    EXPECT_NE(error(QString(10'000, u'(') + u'1').find("for innviklet"), std::string::npos);
    EXPECT_NE(error(QString(10'000, u'-') + u'1').find("for innviklet"), std::string::npos);
    EXPECT_NE(error(u"1"_s + u"+1"_s.repeated(10'000)).find("for innviklet"), std::string::npos);
    EXPECT_EQ(text(u"1"_s + u"+1"_s.repeated(400)), "401");
}

TEST_F(FormulaTest, ASumWithinASumIsRefused)
{
    EXPECT_NE(error(u"Sum(Sum({Nr}))"), "none");
    EXPECT_NE(error(u"Sum(PageNumber)"), "none");
    m_row.declare(u"S"_s, u"Sum({Nr})");
    EXPECT_EQ(error(u"{@S}"), "none");
    EXPECT_NE(error(u"Sum({@S})"), "none");
}

} // namespace report::test
