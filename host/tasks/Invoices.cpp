#include "host/tasks/Invoices.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "host/tasks/HostError.h"
#include "host/tasks/Progress.h"
#include "output/printout/Fakturautskrift.h"
#include "rules/Ordre.h"
#include "runtime/Conversions.h"
#include "state/SharedState.h"

using namespace Qt::StringLiterals;

namespace {

QList<Invoice> read(const QString &condition)
{
    const Ref<ado::Recordset> orders =
        gDB->GetRS(u"SELECT OrdreNr,SumBrutto,OrdreStatus FROM Ordre WHERE "_s + klientVilkar() +
                       condition + u" ORDER BY OrdreNr"_s,
                   true);
    if (!orders)
        throw HostError(gDB->LastError().simplified());
    QList<Invoice> found;
    if (gDB->EmptyRS(orders))
        return found;
    for (; !orders->eof(); orders->moveNext()) {
        found += {.number = orders->isNull(0) ? 0 : orders->integer(0),
                  .isCreditNote = !orders->isNull(1) && orders->currency(1).isNegative(),
                  .isIssued = !orders->isNull(2) && orders->text(2) != ordrestatus::kOrdre};
    }
    return found;
}

QString dateLiteral(QDate date)
{
    return date.toString(u"'#'MM'/'dd'/'yyyy'#'");
}

} // namespace

Invoice findInvoice(int number)
{
    const QList<Invoice> found = read(u" AND OrdreNr="_s + numberToText(number));
    if (found.isEmpty())
        throw HostError(u"ordre %1 finnes ikke for klient %2"_s.arg(number).arg(gKlient));
    return found.first();
}

QList<Invoice> findInvoices(const InvoiceSelection &selection)
{
    QString condition = selection.status.isEmpty()
                            ? u" AND OrdreStatus<>'%1'"_s.arg(ordrestatus::kOrdre)
                            : u" AND OrdreStatus='%1'"_s.arg(selection.status);
    if (selection.from.isValid())
        condition += u" AND FakDato>="_s + dateLiteral(selection.from);
    if (selection.to.isValid())
        condition += u" AND FakDato<"_s + dateLiteral(selection.to.addDays(1));
    return read(condition);
}

QString invoiceFileName(const Invoice &invoice, const QString &ending)
{
    return fakturafilnavn(invoice.isCreditNote, QString::number(invoice.number)) + ending;
}

void writeEach(const QList<Invoice> &invoices,
               const std::function<QString(const Invoice &invoice)> &write,
               const std::function<void(const QString &line)> &say)
{
    if (invoices.isEmpty())
        throw HostError(u"utvalget har ingen fakturaer"_s);
    Progress progress(say);
    progress.begin(invoices.size(), u"fakturaer"_s, u"er skrevet"_s);
    qsizetype refused = 0;
    for (qsizetype i = 0; i < invoices.size(); ++i) {
        progress.at(i - refused);
        const QString place = u"%1 av %2: "_s.arg(i + 1).arg(invoices.size());
        try {
            if (invoices[i].number == 0)
                throw HostError(u"en ordre uten nummer ble ikke skrevet"_s);
            progress.say(place + write(invoices[i]));
        } catch (const HostError &error) {
            progress.say(place + error.line());
            ++refused;
        }
    }
    if (refused > 0)
        throw HostError(u"%1 av %2 ble ikke skrevet"_s.arg(refused).arg(invoices.size()));
    progress.say(u"Skrevet: %1"_s.arg(invoices.size()));
}
