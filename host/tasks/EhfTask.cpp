#include "host/tasks/EhfTask.h"

#include "host/tasks/HostError.h"
#include "host/tasks/Invoices.h"
#include "host/tasks/OutputFile.h"
#include "output/ehf/EhfFil.h"
#include "runtime/RunTimeError.h"
#include "runtime/WholeFile.h"

#include <QBuffer>
#include <QSaveFile>

using namespace Qt::StringLiterals;

QByteArray ehfDocument(int orderNumber)
{
    const Invoice invoice = findInvoice(orderNumber);
    try {
        QBuffer document;
        document.open(QIODevice::WriteOnly);
        SkrivEhfFil(document, invoice.isCreditNote ? 1 : 0, QString::number(orderNumber));
        return document.data();
    } catch (const RunTimeError &error) {
        throw HostError(u"dokumentet til ordre %1 lot seg ikke lage: %2 - %3"_s.arg(orderNumber)
                            .arg(error.number())
                            .arg(error.description()));
    }
}

void writeEhf(int orderNumber, const QString &target, bool replace)
{
    checkTarget(target, replace);
    const QByteArray document = ehfDocument(orderNumber);
    QSaveFile file(target);
    if (!file.open(QIODevice::WriteOnly) || !writeWhole(file, document))
        throw HostError(u"filen %1 lot seg ikke skrive"_s.arg(target));
}
