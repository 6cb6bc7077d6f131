#include "host/tasks/Ehf3Task.h"

#include "host/tasks/HostError.h"
#include "host/tasks/OutputFile.h"
#include "output/ehf3/Ehf3.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

namespace {

void refuseGaps(int orderNumber, QString missing)
{
    if (!missing.isEmpty()) {
        throw HostError(u"ordre %1 ble ikke skrevet: %2"_s.arg(orderNumber)
                            .arg(missing.replace(u'\n', u". "_s)));
    }
}

} // namespace

void writeEhf3(const Invoice &invoice, const QString &target, bool replace)
{
    checkTarget(target, replace);
    refuseGaps(invoice.number, SkrivEhf3(gKlient, invoice.number, target));
}

QByteArray ehf3Document(int orderNumber)
{
    const Ehf3 made = LagEhf3(gKlient, orderNumber);
    refuseGaps(orderNumber, made.mangler);
    return made.dokument;
}
