#include "platform/ado/dialect/Lexer.h"

#include "platform/ado/dialect/Fixture.h"

namespace ado::dialect::test {

namespace {

std::vector<TokenKind> kindsOf(const QString &statement)
{
    std::vector<TokenKind> kinds;
    for (const Token &token : lex(statement).tokens)
        kinds.push_back(token.kind);
    return kinds;
}

/// The kind of a text that is a single token.
TokenKind kindOf(const QString &text)
{
    const Lexed lexed = lex(text);
    EXPECT_EQ(lexed.tokens.front().text, text);
    return lexed.tokens.front().kind;
}

bool sameShape(const QString &a, const QString &b)
{
    return lex(a).shape == lex(b).shape;
}

} // namespace

TEST(Lexer, KnowsEveryKindOfToken)
{
    using enum TokenKind;
    EXPECT_EQ(kindsOf(u"Navn [a b] @@IDENTITY 1 1.5 1E+20 'x' #1/1/2014#"_s),
              (std::vector{Word, BracketName, Identity, Integer, Decimal, Huge, Text, Date, End}));
    EXPECT_EQ(kindsOf(u",.();*/+-=<><<=>>="_s),
              (std::vector{Comma, Dot, LeftParen, RightParen, Semicolon, Star, Slash, Plus, Minus,
                           Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual, End}));
    EXPECT_EQ(kindsOf(u" \t\r\n"_s), (std::vector{End}));
    EXPECT_EQ(kindsOf(QString()), (std::vector{End}));
}

TEST(Lexer, TellsTextAndPosition)
{
    const QString statement = u"  SumÆøå_1 ='it''s'"_s;
    const Lexed lexed = lex(statement);
    ASSERT_EQ(lexed.tokens.size(), 4u);
    EXPECT_EQ(lexed.tokens[0].text, u"SumÆøå_1"_s);
    EXPECT_EQ(lexed.tokens[0].position, 2);
    EXPECT_EQ(lexed.tokens[1].position, 11);
    EXPECT_EQ(lexed.tokens[2].text, u"'it''s'"_s);
    EXPECT_EQ(lexed.tokens[3].position, statement.size());
}

TEST(Lexer, PartsANumberFromTheWordRightBehindIt)
{
    using enum TokenKind;
    EXPECT_EQ(kindsOf(u"1AND"_s), (std::vector{Integer, Word, End}));
    EXPECT_EQ(kindsOf(u"1.5OR"_s), (std::vector{Decimal, Word, End}));
    EXPECT_EQ(kindsOf(u"1E"_s), (std::vector{Integer, Word, End}));
    EXPECT_EQ(kindsOf(u"1E+"_s), (std::vector{Integer, Word, Plus, End}));
    EXPECT_EQ(kindsOf(u"K.KundeNr<50000"_s), (std::vector{Word, Dot, Word, Less, Integer, End}));
    EXPECT_EQ(kindsOf(u"1.2.3"_s), (std::vector{Decimal, Decimal, End}));
}

TEST(Lexer, PartsNumbersByWhatTheyFit)
{
    using enum TokenKind;
    EXPECT_EQ(kindOf(u"0"_s), Integer);
    EXPECT_EQ(kindOf(u"2147483647"_s), Integer);
    EXPECT_EQ(kindOf(u"0000000000002147483647"_s), Integer);
    EXPECT_EQ(kindOf(u"2147483648"_s), Decimal);
    EXPECT_EQ(kindOf(u"99999999999999"_s), Decimal);
    EXPECT_EQ(kindOf(u"100000000000000"_s), Huge);
    EXPECT_EQ(kindOf(u".5"_s), Decimal);
    EXPECT_EQ(kindOf(u"1."_s), Decimal);
    EXPECT_EQ(kindOf(u"1.5E+08"_s), Decimal);
    EXPECT_EQ(kindOf(u"1e-400"_s), Decimal);
    EXPECT_EQ(kindOf(u"1E13"_s), Decimal);
    EXPECT_EQ(kindOf(u"1E14"_s), Huge);
    EXPECT_EQ(kindOf(u"1E+99999999999999999999"_s), Huge);
}

TEST(Lexer, StopsWithAnErrorTokenAtWhatIsNoToken)
{
    struct Case
    {
        QString statement;
        int position;
    };
    for (const Case &c :
         {Case{u"SELECT --"_s, 7}, Case{u"1 /* x */"_s, 2}, Case{u"a = \"b\""_s, 4},
          Case{u"a 'b"_s, 2}, Case{u"a 'b''"_s, 2}, Case{u"a #1/1/2014"_s, 2}, Case{u"a [b"_s, 2},
          Case{u"a []"_s, 2}, Case{u"a [b\nc]"_s, 2}, Case{u"a @b"_s, 2}, Case{u"a @@ID"_s, 2},
          Case{u"a ! b"_s, 2}, Case{u"a $1"_s, 2}, Case{u"a ?"_s, 2}, Case{u"a `b`"_s, 2},
          Case{u"a \u00A0b"_s, 2}, Case{u"a [\U0001F600]"_s, 2}, Case{u"a \x01"_s, 2}}) {
        const Lexed lexed = lex(c.statement);
        ASSERT_GE(lexed.tokens.size(), 2u) << c.statement.toStdString();
        const Token &last = lexed.tokens[lexed.tokens.size() - 2];
        EXPECT_EQ(last.kind, TokenKind::Error) << c.statement.toStdString();
        EXPECT_EQ(last.position, c.position) << c.statement.toStdString();
        EXPECT_EQ(lexed.tokens.back().kind, TokenKind::End);
    }
}

TEST(Lexer, TakesAnyCharacterWithoutHarm)
{
    for (int c = 0; c <= 0xffff; ++c) {
        const QString statement = u"x"_s + QChar(c) + u"'y'"_s;
        const Lexed lexed = lex(statement);
        ASSERT_EQ(lexed.tokens.back().kind, TokenKind::End) << c;
        ASSERT_EQ(lexed.tokens.back().position, statement.size()) << c;
    }
}

TEST(Lexer, ShapeIsTheTextWithoutItsLiterals)
{
    EXPECT_TRUE(sameShape(u"SELECT a FROM t WHERE b= 1AND c='x'"_s,
                          u"SELECT a FROM t WHERE b= 4711AND c='helt annet'"_s));
    EXPECT_TRUE(sameShape(u"a=#1/1/2014#"_s, u"a=# Null#"_s));
    EXPECT_FALSE(sameShape(u"SELECT a FROM t"_s, u"SELECT b FROM t"_s));
    EXPECT_FALSE(sameShape(u"a=1"_s, u"a=-1"_s));
}

TEST(Lexer, ShapeTellsTheClassesOfLiteralsApart)
{
    const QString literals[] = {u"1"_s,   u"1.5"_s,  u"1E+20"_s, u"'1'"_s,
                                u"#1#"_s, u"True"_s, u"Null"_s,  u"x"_s};
    for (const QString &a : literals) {
        for (const QString &b : literals)
            EXPECT_EQ(sameShape(u"a="_s + a, u"a="_s + b), a == b)
                << a.toStdString() << ' ' << b.toStdString();
    }
}

TEST(Lexer, ShapeOfASchemaChangeKeepsItsNumbers)
{
    EXPECT_FALSE(sameShape(u"ALTER TABLE t ADD COLUMN a TEXT(10)"_s,
                           u"ALTER TABLE t ADD COLUMN a TEXT(20)"_s));
    EXPECT_FALSE(sameShape(u" create TABLE t (a TEXT(10))"_s, u" create TABLE t (a TEXT(20))"_s));
}

// Were a mark among the statement's own characters taken for a literal, the statement would run
// with the translation of another.
TEST(Lexer, NoTextPassesForTheShapeOfAnother)
{
    const QString honest = u"a=1"_s;
    const QString mark = lex(honest).shape.sliced(2);
    EXPECT_FALSE(sameShape(honest, u"a="_s + mark));
}

} // namespace ado::dialect::test
