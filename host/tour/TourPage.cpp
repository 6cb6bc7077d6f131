#include "host/tour/TourPage.h"

#include "data/clsAdoUtils.h"
#include "data/mFaktura.h"
#include "host/tasks/HostError.h"
#include "runtime/Format.h"
#include "runtime/WholeFile.h"
#include "state/SharedState.h"

#include <QFileInfo>
#include <QSaveFile>
#include <QStringBuilder>

#include <utility>

using namespace Qt::StringLiterals;

namespace {

constexpr int kVouchers = 2; // which the tour posts, or fewer

constexpr auto kStyle =
    "body{font:16px sans-serif;max-width:60em;margin:2em auto;padding:0 1em;color:#222}"
    "img{max-width:100%;border:1px solid #ccc}figure{margin:2em 0}figcaption{margin-bottom:.5em}"
    "table{border-collapse:collapse}td,th{padding:.2em .8em;border-bottom:1px solid #ccc;"
    "text-align:left}.tall{text-align:right}"_L1;

/// What the tour may have saved, in the order in which an invoice comes to them.
constexpr std::pair<QStringView, QStringView> kDocuments[] = {
    {u"Faktura.pdf", u"Fakturaen på papir"},
    {u"Faktura.xml", u"Fakturaen som EHF"},
    {u"Faktura-EHF3.xml", u"Fakturaen som EHF 3.0"},
    {u"Kreditnota.pdf", u"En kreditnota på papir"},
    {u"Kreditnota.xml", u"Kreditnotaen som EHF"},
    {u"Kreditnota-EHF3.xml", u"Kreditnotaen som EHF 3.0"},
    {u"Ordreliste.pdf", u"Listen over ordrer"},
    {u"Purreliste.pdf", u"Listen over det som er forfalt"},
    {u"Fakturajournal.pdf", u"Fakturajournalen fra bokføringen"},
    {u"Salgsjournal.pdf", u"Salgsjournalen fra bokføringen"},
};

QString links(const QString &folder)
{
    QString items;
    for (const auto &[file, words] : kDocuments) {
        if (QFileInfo::exists(folder % u'/' % file))
            items += u"<li><a href=\"" % file % u"\">" % words % u"</a></li>\n";
    }
    return u"<ul>\n" % items % u"</ul>\n";
}

QString figures(const std::vector<screentour::Guide::Picture> &pictures)
{
    QString html;
    int number = 0;
    for (const auto &[file, told] : pictures) {
        const QString words = told.toHtmlEscaped();
        html += u"<figure>\n<figcaption>%1. %2</figcaption>\n"_s.arg(++number).arg(words) %
                u"<img src=\"" % file % u"\" alt=\"" % words % u"\">\n</figure>\n";
    }
    return html;
}

QString amount(const ado::Recordset &rows, int column)
{
    const QString shown =
        rows.isNull(column) ? QString() : Format(rows.currency(column), u"# ##0.00");
    return u"<td class=\"tall\">" % shown % u"</td>";
}

/// The last vouchers, line by line.
QString ledger()
{
    enum { BilagNr, Konto, Tekst, Debet, Kredit };
    const Ref<ado::Recordset> rows =
        gDB->GetRS(u"SELECT B.BilagNr,L.Konto,L.Tekst,L.Debet,L.Kredit FROM Bilag B INNER JOIN "
                   u"BilagLinjer L ON B.ID=L.BilagID WHERE B."_s +
                       klientVilkar() + u" ORDER BY B.ID DESC,L.ID"_s,
                   true);
    if (!rows)
        throw HostError(gDB->LastError().simplified());
    QString html = u"<table>\n<tr><th>Bilag</th><th>Konto</th><th>Tekst</th>"
                   u"<th class=\"tall\">Debet</th><th class=\"tall\">Kredit</th></tr>\n"_s;
    int vouchers = 0;
    for (int last = 0; !rows->eof(); rows->moveNext()) {
        const int voucher = rows->integer(BilagNr);
        if (voucher != last && ++vouchers > kVouchers)
            break;
        last = voucher;
        html += u"<tr><td>%1</td><td>%2</td><td>%3</td>"_s.arg(voucher)
                    .arg(rows->integer(Konto))
                    .arg(rows->text(Tekst).toHtmlEscaped()) %
                amount(*rows, Debet) % amount(*rows, Kredit) % u"</tr>\n";
    }
    return html % u"</table>\n";
}

} // namespace

void screentour::writeTourPage(const QString &folder, const std::vector<Guide::Picture> &pictures)
{
    const QString html = u"<!DOCTYPE html>\n<html lang=\"nb\">\n<head>\n<meta charset=\"utf-8\">\n"
                         u"<title>Regningsdel, skjerm for skjerm</title>\n<style>" %
                         kStyle %
                         u"</style>\n</head>\n<body>\n<h1>En faktura gjennom Regningsdel</h1>\n"
                         u"<h2>Det den ble til</h2>\n" %
                         links(folder) % u"<h2>I regnskapet</h2>\n" % ledger() %
                         u"<h2>Skjerm for skjerm</h2>\n" % figures(pictures) %
                         u"</body>\n</html>\n";
    QSaveFile file(folder + u"/index.html"_s);
    if (!file.open(QIODevice::WriteOnly) || !writeWhole(file, html.toUtf8()))
        throw HostError(u"%1 lot seg ikke skrive"_s.arg(file.fileName()));
}
