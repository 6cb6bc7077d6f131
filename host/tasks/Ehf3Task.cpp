#include "host/tasks/Ehf3Task.h"

#include "host/tasks/HostError.h"
#include "host/tasks/Invoices.h"
#include "host/tasks/OutputFile.h"
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

void writeEhf3(Ehf3Skriver &writer, int orderNumber, const QString &target, bool replace)
{
    checkTarget(target, replace);
    refuseGaps(orderNumber, writer.skriv(orderNumber, target));
}

void writeEhf3(int orderNumber, const QString &target, bool replace)
{
    Ehf3Skriver writer(gKlient);
    writeEhf3(writer, findInvoice(orderNumber).number, target, replace);
}

QByteArray ehf3Document(int orderNumber)
{
    const Ehf3 made = Ehf3Skriver(gKlient).lag(orderNumber);
    refuseGaps(orderNumber, made.mangler);
    return made.dokument;
}
