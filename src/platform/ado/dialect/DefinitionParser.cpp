#include "platform/ado/dialect/DefinitionParser.h"

#include "platform/ado/dialect/Errors.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace ado::dialect {

namespace {

constexpr int kMaxTextWidth = 255;

struct TypeWord
{
    QStringView word;
    DataType type;
};
constexpr TypeWord kTypes[] = {
    {u"COUNTER", DataType::Integer},   {u"AUTOINCREMENT", DataType::Integer},
    {u"SHORT", DataType::SmallInt},    {u"LONG", DataType::Integer},
    {u"SINGLE", DataType::Single},     {u"DOUBLE", DataType::Double},
    {u"CURRENCY", DataType::Currency}, {u"BIT", DataType::Boolean},
    {u"DATE", DataType::Date},         {u"DATETIME", DataType::Date},
    {u"TEXT", DataType::VarWChar},     {u"LONGBINARY", DataType::LongVarBinary},
};

int textWidth(TokenStream &tokens)
{
    if (!tokens.accept(TokenKind::LeftParen))
        return kMaxTextWidth;
    const Token &number = tokens.peek();
    tokens.expect(TokenKind::Integer);
    const int width = number.text.toInt();
    if (width < 1 || width > kMaxTextWidth)
        raiseSyntax(number, u"bredden på et tekstfelt er fra 1 til %1"_s.arg(kMaxTextWidth));
    tokens.expect(TokenKind::RightParen);
    return width;
}

ColumnDefinition nameAndType(TokenStream &tokens)
{
    ColumnDefinition column;
    column.name = tokens.expectName();
    const Token &word = tokens.peek();
    const auto *const found =
        std::find_if(std::begin(kTypes), std::end(kTypes), [&](const TypeWord &t) {
            return word.kind == TokenKind::Word &&
                   t.word.compare(word.text, Qt::CaseInsensitive) == 0;
        });
    if (found == std::end(kTypes))
        raiseSyntax(word);
    tokens.advance();
    column.type = found->type;
    column.counter = found < kTypes + 2;
    if (column.type == DataType::VarWChar)
        column.width = textWidth(tokens);
    return column;
}

void readReference(TokenStream &tokens, Constraint &constraint)
{
    constraint.kind = ConstraintKind::ForeignKey;
    constraint.table = tokens.expectName();
    if (tokens.at(TokenKind::LeftParen))
        constraint.referencedColumns = tokens.expectNameList();
}

/// What may stand behind a column's type. A single-column constraint joins the table's.
void columnConstraints(TokenStream &tokens, CreateTable &table)
{
    ColumnDefinition &column = table.columns.back();
    for (;;) {
        Constraint constraint;
        constraint.columns = {column.name};
        const bool named = tokens.acceptWord(u"CONSTRAINT");
        if (named)
            constraint.name = tokens.expectName().text;
        if (tokens.acceptWord(u"PRIMARY")) {
            tokens.expectWord(u"KEY");
            constraint.kind = ConstraintKind::PrimaryKey;
        } else if (tokens.acceptWord(u"UNIQUE")) {
            constraint.kind = ConstraintKind::Unique;
        } else if (tokens.acceptWord(u"REFERENCES")) {
            readReference(tokens, constraint);
        } else if (tokens.acceptWord(u"NOT")) {
            tokens.expectWord(u"NULL");
            column.notNull = true;
            continue;
        } else if (!named && tokens.acceptWord(u"NULL")) {
            continue;
        } else if (named) {
            raiseSyntax(tokens.peek());
        } else {
            return;
        }
        table.constraints.push_back(std::move(constraint));
    }
}

Constraint tableConstraint(TokenStream &tokens)
{
    Constraint constraint;
    if (tokens.acceptWord(u"CONSTRAINT"))
        constraint.name = tokens.expectName().text;
    if (tokens.acceptWord(u"PRIMARY")) {
        tokens.expectWord(u"KEY");
        constraint.kind = ConstraintKind::PrimaryKey;
        constraint.columns = tokens.expectNameList();
    } else if (tokens.acceptWord(u"UNIQUE")) {
        constraint.kind = ConstraintKind::Unique;
        constraint.columns = tokens.expectNameList();
    } else {
        tokens.expectWord(u"FOREIGN");
        tokens.expectWord(u"KEY");
        constraint.columns = tokens.expectNameList();
        tokens.expectWord(u"REFERENCES");
        readReference(tokens, constraint);
    }
    return constraint;
}

bool atTableConstraint(const TokenStream &tokens)
{
    return tokens.atWord(u"CONSTRAINT") || tokens.atWord(u"PRIMARY") || tokens.atWord(u"UNIQUE") ||
           tokens.atWord(u"FOREIGN");
}

} // namespace

Statement parseCreate(TokenStream &tokens)
{
    tokens.expectWord(u"TABLE");
    CreateTable create;
    create.table = tokens.expectName();
    tokens.expect(TokenKind::LeftParen);
    do {
        if (!create.columns.empty() && atTableConstraint(tokens)) {
            create.constraints.push_back(tableConstraint(tokens));
        } else {
            create.columns.push_back(nameAndType(tokens));
            columnConstraints(tokens, create);
        }
    } while (tokens.accept(TokenKind::Comma));
    tokens.expect(TokenKind::RightParen);
    return create;
}

Statement parseAlter(TokenStream &tokens)
{
    tokens.expectWord(u"TABLE");
    const Name table = tokens.expectName();
    if (tokens.acceptWord(u"DROP")) {
        tokens.expectWord(u"COLUMN");
        return DropColumn{table, tokens.expectName()};
    }
    tokens.expectWord(u"ADD");
    tokens.expectWord(u"COLUMN");
    const Token &name = tokens.peek();
    AddColumn add{table, nameAndType(tokens)};
    if (add.column.counter)
        raiseSyntax(name, u"et tellerfelt kan ikke legges til senere"_s);
    if (!tokens.acceptWord(u"NULL") && tokens.acceptWord(u"NOT")) {
        tokens.expectWord(u"NULL");
        add.column.notNull = true;
    }
    return add;
}

Statement parseDrop(TokenStream &tokens)
{
    tokens.expectWord(u"TABLE");
    return DropTable{tokens.expectName()};
}

} // namespace ado::dialect
