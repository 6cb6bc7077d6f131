#pragma once

#include <QString>

/// What a file dialog is asked and what it answers.
struct FileQuestion
{
    bool save = false;
    bool overwritePrompt = false; ///< save: ask before an existing file is chosen
    bool mustExist = false;       ///< open: only an existing file can be chosen
    QString title;
    /// Pairs of description and patterns parted by "|"; several patterns are parted by ";". "*.*"
    /// means every file.
    QString filter;
    /// In and out: the number of the chosen pair, from 1; anything else opens on the first.
    int filterIndex = 0;
    QString defaultExt; ///< added to a name without extension; without the dot
    QString initDir;    ///< where to start when `fileName` has no folder; empty: current folder
    QString fileName;   ///< in: the suggestion; out: the chosen file with its folder
};

/// Asks the user for a file in the top-level dialog "CommonDialog". Returns false, with `question`
/// untouched, when the user cancels.
bool askForFile(FileQuestion &question);
