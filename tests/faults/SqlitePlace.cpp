#include "faults/Place.h"
#include "faults/SqliteFile.h"

using namespace Qt::StringLiterals;

namespace faults {

namespace {

class SqlitePlace final : public Place
{
public:
    QString connectionString() const override { return m_file.connectionString(); }
    void restore() override { m_file.restore(); }
    QString integrity() override { return m_file.integrity(); }
    int randomPoints() const override { return 200; }

private:
    SqliteFile m_file;
};

} // namespace

std::unique_ptr<Place> makePlace()
{
    return std::make_unique<SqlitePlace>();
}

} // namespace faults
