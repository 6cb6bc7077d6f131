#include "platform/report/ReportFiles.h"

#include "platform/report/ReportError.h"
#include "platform/report/ReportReader.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace Qt::StringLiterals;

namespace report {

namespace {

/// A parsed report with the bytes that it was parsed from.
struct ParsedReport
{
    struct Include
    {
        QString name;
        QByteArray bytes;
    };

    QByteArray bytes;
    std::vector<Include> includes;
    ReportFile report;
};

QByteArray bytesOf(const QString &path, int errorNumber)
{
    QFile file(path);
    if (!QFileInfo(path).isFile())
        raise(errorNumber, u"Filen %1 finnes ikke."_s.arg(path));
    if (!file.open(QIODevice::ReadOnly))
        raise(errors::kReportFile, u"Filen %1 kan ikke leses."_s.arg(path));
    return file.readAll();
}

QByteArray includedBytes(const QDir &folder, const QString &name)
{
    return bytesOf(folder.filePath(name), errors::kReportFile);
}

/// Whether the report would be parsed from the same bytes as then.
bool isStill(const ParsedReport &parsed, const QString &path, const QByteArray &bytes,
             const QDir &folder)
{
    if (parsed.report.path != path || parsed.bytes != bytes)
        return false;
    try {
        return std::all_of(parsed.includes.begin(), parsed.includes.end(),
                           [&](const ParsedReport::Include &include) {
                               return includedBytes(folder, include.name) == include.bytes;
                           });
    } catch (const RunTimeError &) {
        return false; // the parser tells where the file that is gone is included
    }
}

ParsedReport parse(const QString &path, const QByteArray &bytes, const QDir &folder)
{
    ParsedReport parsed;
    parsed.bytes = bytes;
    parsed.report = readReport(bytes, path, [&](const QString &name) {
        const QByteArray included = includedBytes(folder, name);
        parsed.includes.push_back({name, included});
        return included;
    });
    return parsed;
}

} // namespace

ReportFile readReportFile(const QString &path)
{
    static ParsedReport last; // invoices are printed one after another, on one form
    const QByteArray bytes = bytesOf(path, errors::kFileNotFound);
    const QDir folder = QFileInfo(path).dir();
    if (!isStill(last, path, bytes, folder))
        last = parse(path, bytes, folder);
    return last.report;
}

} // namespace report
