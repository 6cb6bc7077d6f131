#pragma once

#include "platform/ado/dialect/CaseFile.h"
#include "runtime/Value.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace ado::dialect::test {

/// A database of one kind, empty at first, that goes away with this object.
class CaseDatabase
{
public:
    virtual ~CaseDatabase() = default;
    [[nodiscard]] virtual QString connectionString() const = 0;
    /// Looks at the database from outside once a file has been run; fails the test that is running
    /// when it is not whole.
    virtual void check() = 0;
};
using CaseDatabaseMaker = std::function<std::unique_ptr<CaseDatabase>()>;

/// A value as case files write it, whatever the machine's locale.
[[nodiscard]] QString shown(const Value &value);

/// The names of the case files, or of those in a folder among them, without path and ending, in
/// order.
[[nodiscard]] std::vector<std::string> caseNames(const QString &folder = {});

[[nodiscard]] std::vector<CaseStep> stepsOf(const std::string &name, const QString &folder = {});

/// Runs a case file on a new database, through the record interface; every difference from what the
/// file tells is a failure of the test that is running, with the file's line.
void runCase(const std::string &name, const CaseDatabaseMaker &makeDatabase);

} // namespace ado::dialect::test
