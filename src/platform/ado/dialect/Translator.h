#pragma once

#include "platform/ado/dialect/Catalog.h"
#include "platform/ado/dialect/Lexer.h"
#include "runtime/Value.h"

#include <QByteArray>
#include <QString>
#include <QStringView>

#include <vector>

namespace ado::dialect {

class Writer;

enum class StatementKind {
    Select,
    Identity,
    Insert,
    Update,
    Delete,
    CreateTable,
    AlterTable,
    DropTable
};

/// A place in the target statement that takes one value of the source text. The value's literal is
/// converted anew for each run, so that one translation serves every statement of the same shape.
struct Parameter
{
    int token = 0;                      ///< which token of the source holds the literal
    bool negative = false;              ///< a minus sign belongs to the literal
    DataType type = DataType::VarWChar; ///< what the value is converted to
    int width = 0;                      ///< text is cut to so many characters; 0 for no limit
    QString column; ///< named in the error when the value does not fit; may be empty
};

/// A column of a query's result.
struct ResultColumn
{
    QString name;
    DataType type = DataType::VarWChar;
    int width = 0;
    bool key = false;   ///< a key column of `table`, shown as it stands
    QString baseColumn; ///< empty for a computed column
};

/// A text column of a joined table by which a query looks rows up, so that it need not read all of
/// them for each row that it joins them to.
struct Lookup
{
    QString table;
    QString column;

    friend bool operator==(const Lookup &, const Lookup &) = default;
};

/// One statement of the desktop dialect, turned into a database's own.
struct Translation
{
    StatementKind kind = StatementKind::Select;
    QByteArray sql;                    ///< UTF-8; parameters by the writer's place holders
    std::vector<QByteArray> followUps; ///< further statements of the same change (an index)
    std::vector<Parameter> parameters; ///< in the order of the place holders
    std::vector<ResultColumn> columns; ///< of a Select or Identity
    QString baseTable;                 ///< the one table of a Select, empty when it has several
    std::vector<Lookup> lookups;       ///< of a Select

    [[nodiscard]] bool changesSchema() const { return kind >= StatementKind::CreateTable; }
    [[nodiscard]] bool returnsRows() const { return kind <= StatementKind::Identity; }
};

/// Translates exactly one statement. Raises RunTimeError with a number of ado::errors: kSyntax with
/// the position for text that is no statement of the dialect or holds a second one, kNoSuchTable,
/// kNoSuchColumn (unknown or ambiguous), kTableExists, kColumnExists, kTypeMismatch. Names that
/// cannot be resolved are looked up in `catalog` only, so a stale one shows as an unknown name.
[[nodiscard]] Translation translate(const Lexed &statement, const Catalog &catalog,
                                    const Writer &writer);

/// The values of a translation's parameters, taken from a statement of the same shape: converted
/// to the parameter's type, text cut to the column's width. Raises kTypeMismatch, kOutOfRange, and
/// kSyntax for a date literal that names no date.
[[nodiscard]] std::vector<Value> parameterValues(const Translation &translation,
                                                 const Lexed &statement);

} // namespace ado::dialect
