#pragma once

#include <QString>
#include <QStringList>

#include <functional>

/// The work that faults are put into: what the screens send through gDB, in their order of calls.
/// Each statement has an effect that can be told from all others and found in the database
/// afterwards; it goes by a name such as "linje 10".
namespace faults {

inline constexpr qint16 kClient = 5;
inline constexpr int kYear = 2014;
inline constexpr int kLines = 10;    ///< of a saved order
inline constexpr int kInvoices = 25; ///< of a posting run
inline constexpr int kStatementsPerInvoice = 8;

/// Makes the parent's tables and the module's, the invoices to post (numbers and IDs from 1), and
/// after them one order with `kLines` lines, to be saved again.
void prepareDatabase(const QString &connectionString);

/// Loads and starts the module; its ModuleInit.
qint16 startModule(const QString &connectionString);
/// Unloads it and closes all sessions, so that the next start begins afresh.
void unloadModule();

/// What happens to the statements of a piece of work. A statement without an effect that can be
/// found has the empty name.
struct Witness
{
    std::function<void(const QString &effect)> starts = [](const QString &) {};
    std::function<void(const QString &effect)> done = [](const QString &) {};
    std::function<void(const QString &effect, const QString &lastError)> failed =
        [](const QString &, const QString &) {};
};

struct SavedOrder
{
    qint32 number = 0;
    qint32 id = 0;
    QString error; ///< LastError of the header's statement; when empty the order was saved
};

/// Saves a new order as the order screen does: a fresh number, the header, its lines.
SavedOrder saveNewOrder(int lines, const Witness &witness = {});
/// Saves the prepared order again: header changed, lines replaced.
void saveOrderAgain(const Witness &witness = {});
/// Posts all prepared invoices, 200 statements.
void postInvoices(const Witness &witness = {});

/// The names of the effects, in the order in which the statements run.
[[nodiscard]] QStringList effectsOfNewOrder();
[[nodiscard]] QStringList effectsOfOrderAgain();
[[nodiscard]] QStringList effectsOfPosting();

/// The effects that the database holds, in the order of `plan` and as often as they are found; what
/// is no part of the plan stands at the end.
[[nodiscard]] QStringList foundEffects(const QString &connectionString, const QStringList &plan);

} // namespace faults
