#pragma once

/// Gives the standard texts of Qt's own dialogs and context menus in Norwegian, whatever
/// translations the machine has. The first call installs them for the application; a parent program
/// that has its own translations of the same texts and installs them later keeps those.
/// Needs a QApplication.
void installNorwegianTexts();
