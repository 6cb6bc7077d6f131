#pragma once

#include "runtime/Value.h"

#include <QStringList>

#include <string>
#include <vector>

namespace ado::dialect::test {

/// A step of a case file. Steps are parted by empty lines; a line that begins with "#" and a blank
/// is a comment. The first line of a step tells its kind:
///
///   run                     every following line is a statement that has to succeed
///   error NUMBER [TEXT]     the following statement has to fail so, with TEXT in the description
///   query [unordered]       the following statement has to give the rows behind the line "----":
///                           first "Name:type | Name:type", then a line a row with values by " | "
///   schema TABLE            the columns that the catalogue lists, as rows "name:type:width"
///   refused NUMBER          of every following line, "TEXT | statement" or a statement alone, the
///                           statement has to fail so
///   sql                     the following statement has to be translated to the line behind it,
///                           and to those that stand further behind
///   columns                 the following statement has to give the columns in the lines behind
///                           it, as "name:type:width"
///   values STATEMENT        every following line "value:type | literal" tells what a literal in
///                           the place of %1 has to become
///   include FILE            the steps of another file of the folder stand here
///
/// Values: numbers with "." (money with four decimals), 'text', dates as yyyy-MM-dd with HH:mm:ss
/// behind when there is a time, True, False, x'bytes', NULL.
struct CaseStep
{
    enum class Kind { Run, Error, Query, Schema, Sql, Columns, Value };

    Kind kind = Kind::Run;
    QString file;
    int line = 0; ///< of the step's first line, from 1
    QStringList statements;
    QStringList expected;
    bool unordered = false;
    int number = 0; ///< of Error
    QString text;   ///< of Error
    QString table;  ///< of Schema
};

/// Reads a case file with what it includes. Raises std::runtime_error with file and line for
/// anything that is not understood.
[[nodiscard]] std::vector<CaseStep> readCaseFile(const QString &path);

/// The names of the case files, or of those in a folder among them, without path and ending, in
/// order; and what stands in one of them.
[[nodiscard]] std::vector<std::string> caseNames(const QString &folder = {});
[[nodiscard]] std::vector<CaseStep> stepsOf(const std::string &name, const QString &folder = {});

/// A value as case files write it, whatever the machine's locale.
[[nodiscard]] QString shown(const Value &value);

} // namespace ado::dialect::test
