#pragma once

#include <QString>

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

/// The names of the case files, without path and ending, in order.
[[nodiscard]] std::vector<std::string> caseNames();

/// Runs a case file on a new database, through the record interface; every difference from what the
/// file tells is a failure of the test that is running, with the file's line.
void runCase(const std::string &name, const CaseDatabaseMaker &makeDatabase);

} // namespace ado::dialect::test
