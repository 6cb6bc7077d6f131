#pragma once

#include <QString>

#include <functional>

/// What a file dialog is asked and what it answers.
struct FileQuestion
{
    bool save = false;
    bool overwritePrompt = false; ///< save: ask before an existing file is chosen
    QString title;
    /// Pairs of description and patterns parted by "|"; several patterns are parted by ";". "*.*"
    /// means every file.
    QString filter;
    /// In and out: the number of the chosen pair, from 1; anything else opens on the first.
    int filterIndex = 0;
    QString defaultExt; ///< added to a name without extension; without the dot
    /// Names what the file is, for FolderMemory; empty to remember nothing.
    QString fileKind;
    QString fileName; ///< in: the suggestion; out: the chosen file with its folder
};

/// What remembers the folder that was used last for a kind of file.
struct FolderMemory
{
    std::function<QString(const QString &fileKind)> folder; ///< empty when none is known
    std::function<void(const QString &fileKind, const QString &folder)> remember;
};
/// While none is set, every dialog is the first of its kind.
void setFolderMemory(FolderMemory memory);

/// Asks the user for a file in the top-level dialog "CommonDialog". It opens in the folder of
/// `fileName`, else the one last used for the kind of file, else the user's documents, else the
/// user's home, whichever is there first. Returns false, with `question` untouched, when the user
/// cancels.
bool askForFile(FileQuestion &question);
