#include "benchmarks/support/FileDatabase.h"

std::unique_ptr<bench::Database> bench::makeDatabase()
{
    return std::make_unique<FileDatabase>();
}
