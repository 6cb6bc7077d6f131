#include "platform/ado/dialect/Fixture.h"
#include "runtime/Moment.h"

#include <limits>

namespace ado::dialect::test {

namespace {

/// The value of a literal that is assigned to a column.
Value assigned(const QString &column, const QString &literal)
{
    const std::vector<Value> values = valuesOf(u"UPDATE Ordre SET %1=%2"_s.arg(column, literal));
    return values.size() == 1 ? values[0] : Value();
}

/// The value of a literal that is compared with a column.
Value compared(const QString &column, const QString &literal)
{
    const std::vector<Value> values =
        valuesOf(u"SELECT ID FROM Ordre WHERE %1=%2"_s.arg(column, literal));
    return values.size() == 1 ? values[0] : Value();
}

int errorOfAssigned(const QString &column, const QString &literal)
{
    return failureOf(u"UPDATE Ordre SET %1=%2"_s.arg(column, literal)).number;
}

Value money(qint64 tenThousandths)
{
    return Value(Currency::fromTenThousandths(tenThousandths));
}

Value day(int year, int month, int dayOfMonth, QTime time = QTime(0, 0))
{
    return Value(utcMoment(QDate(year, month, dayOfMonth), time));
}

} // namespace

TEST(Literals, WholeNumbersAreRoundedHalfToEven)
{
    EXPECT_EQ(assigned(u"KlientNr"_s, u" 7"_s), Value(qint16{7}));
    EXPECT_EQ(assigned(u"OrdreNr"_s, u"-2147483648"_s), Value(qint32{-2147483647 - 1}));
    EXPECT_EQ(assigned(u"OrdreNr"_s, u"2.5"_s), Value(qint32{2}));
    EXPECT_EQ(assigned(u"OrdreNr"_s, u"3.5"_s), Value(qint32{4}));
    EXPECT_EQ(assigned(u"OrdreNr"_s, u"-.5"_s), Value(qint32{0}));
    EXPECT_EQ(assigned(u"KlientNr"_s, u"32767.4"_s), Value(qint16{32767}));
    EXPECT_EQ(assigned(u"OrdreNr"_s, u"1.5E+08"_s), Value(qint32{150'000'000}));
}

TEST(Literals, NumbersOutsideTheColumnAreRefused)
{
    EXPECT_EQ(errorOfAssigned(u"KlientNr"_s, u"32768"_s), errors::kOutOfRange);
    EXPECT_EQ(errorOfAssigned(u"KlientNr"_s, u"-32769"_s), errors::kOutOfRange);
    EXPECT_EQ(errorOfAssigned(u"KlientNr"_s, u"32767.5"_s), errors::kOutOfRange);
    EXPECT_EQ(errorOfAssigned(u"OrdreNr"_s, u"2147483648"_s), errors::kOutOfRange);
    EXPECT_EQ(errorOfAssigned(u"OrdreNr"_s, u"1E+30"_s), errors::kOutOfRange);
    EXPECT_EQ(errorOfAssigned(u"SumBrutto"_s, u"922337203685477.5808"_s), errors::kOutOfRange);
    EXPECT_EQ(errorOfAssigned(u"RabattPst"_s, u"1E+39"_s), errors::kOutOfRange);
    EXPECT_EQ(errorOfAssigned(u"Vekt"_s, u"1E+309"_s), errors::kOutOfRange);
    EXPECT_EQ(failureOf(u"UPDATE Ordre SET KlientNr= 40000"_s).text,
              u"Verdien «40000» ved tegn 28 er for stor for feltet «KlientNr»."_s);
}

TEST(Literals, MoneyNeverGoesThroughDouble)
{
    EXPECT_EQ(assigned(u"SumBrutto"_s, u"0.10"_s), money(1000));
    EXPECT_EQ(assigned(u"SumBrutto"_s, u"-.3"_s), money(-3000));
    EXPECT_EQ(assigned(u"SumBrutto"_s, u"922337203685477.5807"_s),
              money(std::numeric_limits<qint64>::max()));
    EXPECT_EQ(assigned(u"SumBrutto"_s, u"-922337203685477.5808"_s),
              money(std::numeric_limits<qint64>::min()));
    EXPECT_EQ(assigned(u"SumBrutto"_s, u"0.00005"_s), money(0));
    EXPECT_EQ(assigned(u"SumBrutto"_s, u"0.00015"_s), money(2));
    EXPECT_EQ(assigned(u"SumBrutto"_s, u"0.000150000000000000000001"_s), money(2));
    EXPECT_EQ(assigned(u"SumBrutto"_s, u"0.000050000000000000000001"_s), money(1));
    EXPECT_EQ(assigned(u"SumBrutto"_s, u"1.5E-3"_s), money(15));
    EXPECT_EQ(compared(u"SumBrutto"_s, u"12345678901234.5678"_s), money(123456789012345678));
}

TEST(Literals, SinglesAndDoublesAreTheNearest)
{
    EXPECT_EQ(assigned(u"RabattPst"_s, u"0.1"_s), Value(0.1F));
    EXPECT_EQ(assigned(u"Vekt"_s, u"0.1"_s), Value(0.1));
    EXPECT_EQ(assigned(u"Vekt"_s, u"1.5E+08"_s), Value(1.5E8));
    EXPECT_EQ(assigned(u"Vekt"_s, u"1E-400"_s), Value(0.0));
    EXPECT_EQ(assigned(u"RabattPst"_s, u"1E-60"_s), Value(0.0F));
    EXPECT_EQ(compared(u"RabattPst"_s, u"25"_s), Value(25.0F));
    EXPECT_EQ(compared(u"OrdreNr"_s, u"1.5"_s), Value(1.5));
    EXPECT_EQ(compared(u"OrdreNr"_s, u"70000000000"_s), Value(7E10));
    EXPECT_EQ(compared(u"KlientNr"_s, u"50000"_s), Value(qint32{50000}));
}

TEST(Literals, AnyNumberButZeroIsTrue)
{
    for (const QString &number : {u"1"_s, u"-1"_s, u"2"_s, u"0.5"_s, u"'7'"_s})
        EXPECT_EQ(assigned(u"Betalt"_s, number), Value(true)) << number.toStdString();
    for (const QString &number : {u"0"_s, u"-0"_s, u"0.0"_s, u"'0'"_s})
        EXPECT_EQ(assigned(u"Betalt"_s, number), Value(false)) << number.toStdString();
    EXPECT_EQ(compared(u"Betalt"_s, u"-1"_s), Value(true));
    EXPECT_EQ(compared(u"Betalt"_s, u"1"_s), Value(true));
}

TEST(Literals, TextIsCutToTheColumnsWidth)
{
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u"'1234567890'"_s), Value(u"1234567890"_s));
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u"'12345678901'"_s), Value(u"1234567890"_s));
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u"'O''Hara'"_s), Value(u"O'Hara"_s));
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u"''''''"_s), Value(u"''"_s));
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u"''"_s), Value(u""_s));
    // A pair of UTF-16 units is one character, half of one too.
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u"'123456789\U0001F600x'"_s),
              Value(u"123456789\U0001F600"_s));
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u"'\U0001F600\U0001F6001234567\U0001F600x'"_s),
              Value(u"\U0001F600\U0001F6001234567\U0001F600"_s));
    const QString half = QString(QChar(0xD83D)) + u"123456789"_s;
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u'\'' + half + u"x'"_s), Value(half));
    EXPECT_EQ(compared(u"OrdreStatus"_s, u"'12345678901'"_s), Value(u"12345678901"_s));
}

TEST(Literals, NumbersBecomeTheirPlainText)
{
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u"0150"_s), Value(u"150"_s));
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u"-1.50"_s), Value(u"-1.5"_s));
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u"1.5E+08"_s), Value(u"150000000"_s));
    EXPECT_EQ(assigned(u"OrdreStatus"_s, u"12345678901234"_s), Value(u"1234567890"_s));
}

TEST(Literals, TextBecomesANumberWhenItReadsAsOne)
{
    EXPECT_EQ(assigned(u"KlientNr"_s, u"' 12 '"_s), Value(qint16{12}));
    EXPECT_EQ(assigned(u"SumBrutto"_s, u"'-1.25'"_s), money(-12500));
    EXPECT_EQ(assigned(u"Vekt"_s, u"'+.5'"_s), Value(0.5));
    for (const QString &text : {u"''"_s, u"'x'"_s, u"'1x'"_s, u"'1,5'"_s, u"'1 2'"_s, u"'-'"_s,
                                u"'--1'"_s, u"'#1/1/2014#'"_s, u"'1;'"_s, u"'''1'''"_s})
        EXPECT_EQ(errorOfAssigned(u"SumBrutto"_s, text), errors::kTypeMismatch)
            << text.toStdString();
    EXPECT_EQ(errorOfAssigned(u"KlientNr"_s, u"'40000'"_s), errors::kOutOfRange);
    EXPECT_EQ(failureOf(u"UPDATE Ordre SET KlientNr='x'"_s).text,
              u"Verdien «'x'» ved tegn 27 har feil datatype for feltet «KlientNr»."_s);
}

TEST(Literals, ReadsDatesInBothForms)
{
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"#03/09/2014#"_s), day(2014, 3, 9));
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"#3/9/2014#"_s), day(2014, 3, 9));
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"#2014-03-09#"_s), day(2014, 3, 9));
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"# 02/29/2012 23:59:58 #"_s),
              day(2012, 2, 29, QTime(23, 59, 58)));
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"#2014-03-09 7:05#"_s), day(2014, 3, 9, QTime(7, 5)));
    EXPECT_EQ(compared(u"OrdreDato"_s, u"#12/31/9999#"_s), day(9999, 12, 31));
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"#01/01/0100#"_s), day(100, 1, 1));
}

TEST(Literals, RefusesWhatIsNoDate)
{
    for (const QString &text : {u"# Null#"_s,
                                u"##"_s,
                                u"#13/45/2020#"_s,
                                u"#25/12/2014#"_s,
                                u"#02/29/2013#"_s,
                                u"#03/09/14#"_s,
                                u"#03/09/0014#"_s,
                                u"#03/09/20140#"_s,
                                u"#03.09.2014#"_s,
                                u"#14-03-09#"_s,
                                u"#142-03-09#"_s,
                                u"#2014-03#"_s,
                                u"#2014/03/09#"_s,
                                u"#03-09-2014#"_s,
                                u"#03/09/2014 24:00#"_s,
                                u"#03/09/2014 12#"_s,
                                u"#03/09/2014 12:00:00:00#"_s,
                                u"#03/09/2014 x#"_s,
                                u"#/3/9/2014#"_s,
                                u"#+3/09/2014#"_s,
                                u"#03//2014#"_s}) {
        EXPECT_EQ(errorOfAssigned(u"OrdreDato"_s, text), errors::kSyntax) << text.toStdString();
    }
    EXPECT_EQ(failureOf(u"UPDATE Ordre SET OrdreDato=# Null#"_s).text,
              u"Syntaksfeil i setningen ved tegn 28: «# Null#» er ingen dato."_s);
}

TEST(Literals, TextAndNumbersBecomeDates)
{
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"'2014-03-09'"_s), day(2014, 3, 9));
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"'2014-03-09 13:05'"_s), day(2014, 3, 9, QTime(13, 5)));
    EXPECT_EQ(errorOfAssigned(u"OrdreDato"_s, u"'i dag'"_s), errors::kTypeMismatch);
    EXPECT_EQ(errorOfAssigned(u"OrdreDato"_s, u"''"_s), errors::kTypeMismatch);
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"0"_s), day(1899, 12, 30));
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"41707.5"_s), day(2014, 3, 9, QTime(12, 0)));
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"-1.25"_s), day(1899, 12, 29, QTime(6, 0)));
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"41707.999999"_s), day(2014, 3, 10));
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"2958465.99998"_s), day(9999, 12, 31, QTime(23, 59, 58)));
    EXPECT_EQ(errorOfAssigned(u"OrdreDato"_s, u"2958465.9999999"_s), errors::kOutOfRange);
    EXPECT_EQ(assigned(u"OrdreDato"_s, u"-657434"_s), day(100, 1, 1));
    EXPECT_EQ(errorOfAssigned(u"OrdreDato"_s, u"-657435"_s), errors::kOutOfRange);
    EXPECT_EQ(errorOfAssigned(u"OrdreDato"_s, u"3000000"_s), errors::kOutOfRange);
    EXPECT_EQ(errorOfAssigned(u"OrdreDato"_s, u"-700000"_s), errors::kOutOfRange);
}

} // namespace ado::dialect::test
