#include "benchmarks/works/Statements.h"

#include "data/clsAdoUtils.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

namespace bench {

Work ownTransactions(int statements)
{
    return {.name = "statement", .unit = "statement", .units = statements, .run = [statements] {
                for (int i = 1; i <= statements; ++i) {
                    // A text of its own each time, as on the screens.
                    if (!gDB->Execute(u"UPDATE OrdreLinjer SET Antall=%1 WHERE ID=1"_s.arg(i)))
                        qFatal("%s", qPrintable(gDB->LastError()));
                }
            }};
}

} // namespace bench
