#pragma once

#include <QString>

#include <memory>

namespace faults {

/// A prepared database (see prepareDatabase) that faults are tried on. The same tests are built
/// once for each kind, with that kind's makePlace().
class Place
{
public:
    virtual ~Place() = default;

    [[nodiscard]] virtual QString connectionString() const = 0;
    /// Puts it back to as it was prepared. The module must not stand on it.
    virtual void restore() = 0;
    /// To be asked after a process that used it has ended: waits until nothing of it is under way
    /// any more; "ok", or what is wrong with the database itself.
    [[nodiscard]] virtual QString integrity() = 0;
    /// At how many random points a posting run is to be killed.
    [[nodiscard]] virtual int randomPoints() const = 0;
};

[[nodiscard]] std::unique_ptr<Place> makePlace();

} // namespace faults
