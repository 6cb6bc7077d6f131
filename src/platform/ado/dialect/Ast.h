#pragma once

#include "platform/ado/dialect/Catalog.h"
#include "platform/ado/dialect/Lexer.h"

#include <memory>
#include <variant>
#include <vector>

/// What the parser makes of a statement. Names and literals are views of the statement's text.
namespace ado::dialect {

/// A name as written, without brackets, with the token that it came from.
struct Name
{
    QStringView text;
    int token = 0;
};

enum class ExprKind {
    Literal,
    Null,
    Truth, ///< True or False
    Column,
    Negate,
    Not,
    And,
    Or,
    Compare,
    Arithmetic,
    IsNull,
    In,      ///< first argument in the others
    Between, ///< first argument between the two others
    DatePart,
    Aggregate, ///< COUNT(*) has no argument
};

enum class DatePart { Year, Month, Day };
enum class Aggregate { Count, Sum, Max, Min, Avg };

/// Of a comparison: whether it finds the rows of a joined table by a lookup (Translator.h), and
/// how.
enum class LookupUse {
    None,
    Asked, ///< for the rows that it holds
    Joined ///< as a table of its own, in front of the one that is looked up
};

struct Expr;
using ExprPtr = std::unique_ptr<Expr>;

/// One node of an expression.
struct Expr
{
    ExprKind kind = ExprKind::Null;
    int token = 0;         ///< the literal, the operator, or where the expression begins
    bool negative = false; ///< Literal: a minus sign belongs to it; IsNull, In, Between: NOT
    bool truth = false;    ///< of Truth
    DatePart part = DatePart::Year;
    Aggregate aggregate = Aggregate::Count;
    QStringView qualifier; ///< of Column; may be empty
    QStringView name;      ///< of Column
    std::vector<ExprPtr> arguments;
    int depth = 1; ///< levels of the tree, limited by the parser

    // Filled in when names are resolved.
    DataType type = DataType::Empty;        ///< Empty for Null alone
    DataType operandType = DataType::Empty; ///< what the operands of a comparison are turned into
    const ColumnInfo *column = nullptr;
    int source = -1;                    ///< the table of `column` within the statement's scope
    LookupUse lookup = LookupUse::None; ///< of Compare: by the second argument
};

struct TableRef
{
    Name table;
    QStringView alias; ///< the table's name as written when no alias is given
};

enum class JoinKind { Inner, Left, Right };

/// A table, or a join of two items.
struct FromItem
{
    TableRef table;
    JoinKind join = JoinKind::Inner;
    std::unique_ptr<FromItem> left; ///< null for a table
    std::unique_ptr<FromItem> right;
    ExprPtr on;
};

/// An expression, or "*" with an optional qualifier.
struct SelectItem
{
    ExprPtr expr; ///< null for "*"
    QStringView alias;
    Name qualifier; ///< of "*"
};

struct OrderItem
{
    ExprPtr expr;
    bool descending = false;
};

struct Select
{
    bool distinct = false;
    std::vector<SelectItem> items;
    std::vector<std::unique_ptr<FromItem>> from;
    ExprPtr where;
    std::vector<ExprPtr> groupBy;
    ExprPtr having;
    std::vector<OrderItem> orderBy;
};

struct IdentityQuery
{
};

struct Insert
{
    Name table;
    std::vector<Name> columns; ///< empty: all of the table's
    std::vector<ExprPtr> values;
};

struct Assignment
{
    Name column;
    ExprPtr value;
};

struct Update
{
    Name table;
    std::vector<Assignment> assignments;
    ExprPtr where;
};

struct Delete
{
    Name table;
    ExprPtr where;
};

struct ColumnDefinition
{
    Name name;
    DataType type = DataType::Empty;
    int width = 0;
    bool counter = false;
    bool notNull = false;
};

enum class ConstraintKind { PrimaryKey, Unique, ForeignKey };

struct Constraint
{
    ConstraintKind kind = ConstraintKind::Unique;
    QStringView name; ///< may be empty
    std::vector<Name> columns;
    Name table;                          ///< that a foreign key refers to
    std::vector<Name> referencedColumns; ///< empty: its primary key
};

struct CreateTable
{
    Name table;
    std::vector<ColumnDefinition> columns;
    std::vector<Constraint> constraints; ///< those of single columns included
};

struct AddColumn
{
    Name table;
    ColumnDefinition column;
};

struct DropColumn
{
    Name table;
    Name column;
};

struct DropTable
{
    Name table;
};

using Statement = std::variant<Select, IdentityQuery, Insert, Update, Delete, CreateTable,
                               AddColumn, DropColumn, DropTable>;

} // namespace ado::dialect
