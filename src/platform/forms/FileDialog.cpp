#include "platform/forms/FileDialog.h"

#include "platform/forms/ModalDialog.h"
#include "platform/forms/NorwegianTexts.h"

#include <QFileDialog>
#include <QStandardPaths>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace {

struct Filters
{
    QStringList descriptions;
    /// The pairs in Qt's form "description (patterns)". The dialog is told to hide the patterns, so
    /// a description shows as it was given.
    QStringList pairs;
};

Filters filtersOf(const QString &filter)
{
    const QStringList parts = filter.split(u'|');
    Filters result;
    for (qsizetype i = 0; i + 1 < parts.size(); i += 2) {
        QStringList patterns = parts[i + 1].split(u';', Qt::SkipEmptyParts);
        for (QString &pattern : patterns) {
            pattern = pattern.trimmed();
            if (pattern == "*.*"_L1)
                pattern = u"*"_s;
        }
        result.descriptions.append(parts[i].trimmed());
        result.pairs.append(parts[i] + u" ("_s + patterns.join(u' ') + u')');
    }
    return result;
}

FolderMemory &folderMemory()
{
    static FolderMemory memory;
    return memory;
}

QString folderToStartIn(const FileQuestion &question)
{
    const auto &recall = folderMemory().folder;
    const bool isKnownKind = recall && !question.fileKind.isEmpty();
    const QFileInfo suggested(question.fileName);
    const QString candidates[] = {
        suggested.isAbsolute() ? suggested.path() : QString(),
        isKnownKind ? recall(question.fileKind) : QString(),
        QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation),
    };
    const auto found = std::ranges::find_if(
        candidates, [](const QString &folder) { return QFileInfo(folder).isDir(); });
    return found == std::end(candidates) ? QDir::homePath() : *found;
}

void rememberFolder(const FileQuestion &question)
{
    const auto &remember = folderMemory().remember;
    if (remember && !question.fileKind.isEmpty())
        remember(question.fileKind, QFileInfo(question.fileName).absolutePath());
}

} // namespace

void setFolderMemory(FolderMemory memory)
{
    folderMemory() = std::move(memory);
}

bool askForFile(FileQuestion &question)
{
    installNorwegianTexts();
    QFileDialog dialog;
    dialog.setObjectName(u"CommonDialog"_s);
    dialog.setWindowTitle(question.title);
    dialog.setOption(QFileDialog::DontUseNativeDialog);
    dialog.setOption(QFileDialog::HideNameFilterDetails);
    dialog.setOption(QFileDialog::DontConfirmOverwrite, !question.overwritePrompt);
    dialog.setAcceptMode(question.save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(QFileDialog::AnyFile);
    dialog.setDirectory(folderToStartIn(question));
    dialog.setDefaultSuffix(question.defaultExt);
    const Filters filters = filtersOf(question.filter);
    if (const QStringList &pairs = filters.pairs; !pairs.isEmpty()) {
        dialog.setNameFilters(pairs);
        const bool isInside = question.filterIndex >= 1 && question.filterIndex <= pairs.size();
        dialog.selectNameFilter(pairs[isInside ? question.filterIndex - 1 : 0]);
    }
    dialog.selectFile(QFileInfo(question.fileName).fileName());

    if (runModal(dialog) != QDialog::Accepted)
        return false;
    question.fileName = dialog.selectedFiles().value(0);
    rememberFolder(question);
    // With the patterns hidden, the dialog answers with the description or, from Qt 6.5, the pair.
    const QString chosen = dialog.selectedNameFilter();
    question.filterIndex = int(std::max(filters.descriptions.indexOf(chosen.trimmed()),
                                        dialog.nameFilters().indexOf(chosen))) +
                           1;
    return true;
}
