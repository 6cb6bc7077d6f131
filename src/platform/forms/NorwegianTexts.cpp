#include "platform/forms/NorwegianTexts.h"

#include <QApplication>
#include <QPointer>
#include <QTranslator>

#include <algorithm>
#include <string_view>

namespace {

/// The classes of Qt whose texts the module's users meet. Names of keys ("QShortcut") are left
/// alone: key sequences are parsed by them.
constexpr std::string_view kContexts[] = {
    "QAbstractFileIconProvider",
    "QAbstractSpinBox",
    "QCalendarWidget",
    "QDialogButtonBox",
    "QFileDialog",
    "QFileSystemModel",
    "QLineEdit",
    "QMessageBox",
    "QPlatformTheme",
    "QTabBar",
    "QWidgetTextControl",
};

struct Text
{
    std::string_view source;
    const char *norwegian;
};

constexpr Text kTexts[] = {
    // Buttons of the file dialogs and their questions.
    {"OK", "OK"},
    {"Cancel", "Avbryt"},
    {"&Cancel", "&Avbryt"},
    {"Open", "Åpne"},
    {"&Open", "&Åpne"},
    {"Save", "Lagre"},
    {"&Save", "&Lagre"},
    {"&Yes", "&Ja"},
    {"&No", "&Nei"},

    // Context menus of text fields.
    {"&Undo", "&Angre"},
    {"&Redo", "&Gjør om"},
    {"Cu&t", "Klipp &ut"},
    {"&Copy", "&Kopier"},
    {"&Paste", "&Lim inn"},
    {"Delete", "Slett"},
    {"&Delete", "&Slett"},
    {"Select All", "Merk alt"},
    {"&Select All", "&Merk alt"},
    {"&Step up", "&Opp"},
    {"Step &down", "&Ned"},
    {"Scroll Left", "Rull til venstre"},
    {"Scroll Right", "Rull til høyre"},
    {"Previous Month", "Forrige måned"},
    {"Next Month", "Neste måned"},

    // The file dialogs.
    {"Look in:", "Let i:"},
    {"Save As", "Lagre som"},
    {"Find Directory", "Finn mappe"},
    {"File &name:", "Fil&navn:"},
    {"Directory:", "Mappe:"},
    {"Files of type:", "Filtype:"},
    {"&Choose", "&Velg"},
    {"&Rename", "&Gi nytt navn"},
    {"&New Folder", "&Ny mappe"},
    {"New Folder", "Ny mappe"},
    {"Show &hidden files", "Vis &skjulte filer"},
    {"Show ", "Vis "},
    {"Back", "Tilbake"},
    {"Go back", "Gå tilbake"},
    {"Forward", "Fremover"},
    {"Go forward", "Gå fremover"},
    {"Parent Directory", "Overordnet mappe"},
    {"Go to the parent directory", "Gå til overordnet mappe"},
    {"Create New Folder", "Lag ny mappe"},
    {"Create a New Folder", "Lag en ny mappe"},
    {"List View", "Liste"},
    {"Change to list view mode", "Vis som liste"},
    {"Detail View", "Detaljer"},
    {"Change to detail view mode", "Vis detaljer"},
    {"Sidebar", "Sidepanel"},
    {"List of places and bookmarks", "Steder og bokmerker"},
    {"Files", "Filer"},
    {"All Files (*)", "Alle filer (*)"},
    {"All files (*)", "Alle filer (*)"},
    {"Recent Places", "Siste steder"},
    {"Remove", "Fjern"},
    {"My Computer", "Maskinen"},
    {"Computer", "Maskinen"},
    {"Drive", "Stasjon"},
    {"Folder", "Mappe"},
    {"File", "Fil"},
    {"%1 File", "%1-fil"},
    {"Unknown", "Ukjent"},
    {"Name", "Navn"},
    {"Size", "Størrelse"},
    {"Type", "Type"},
    {"Kind", "Type"},
    {"Date Modified", "Endret"},
    {"%1 already exists.\nDo you want to replace it?", "%1 finnes fra før.\nVil du erstatte den?"},
    {"%1\nFile not found.\nPlease verify the correct file name was given.",
     "%1\nFant ikke filen.\nKontroller at filnavnet er riktig."},
    {"%1\nDirectory not found.\nPlease verify the correct directory name was given.",
     "%1\nFant ikke mappen.\nKontroller at mappenavnet er riktig."},
    {"Are you sure you want to delete '%1'?", "Er du sikker på at du vil slette «%1»?"},
    {"'%1' is write protected.\nDo you want to delete it anyway?",
     "«%1» er skrivebeskyttet.\nVil du slette den likevel?"},
    {"Could not delete directory.", "Kunne ikke slette mappen."},
    {"Invalid filename", "Ugyldig filnavn"},
    {"<b>The name \"%1\" cannot be used.</b><p>Try using another name, with fewer characters or no "
     "punctuation marks.",
     "<b>Navnet «%1» kan ikke brukes.</b><p>Prøv et annet navn, med færre tegn eller uten "
     "skilletegn."},
};

class NorwegianTexts : public QTranslator
{
public:
    using QTranslator::QTranslator;

    [[nodiscard]] bool isEmpty() const override { return false; }

    [[nodiscard]] QString translate(const char *context, const char *sourceText, const char *,
                                    int) const override
    {
        if (!context || !sourceText || std::ranges::find(kContexts, context) == std::end(kContexts))
            return {};
        const auto found = std::ranges::find(kTexts, std::string_view(sourceText), &Text::source);
        return found == std::end(kTexts) ? QString() : QString::fromUtf8(found->norwegian);
    }
};

} // namespace

void installNorwegianTexts()
{
    static QPointer<NorwegianTexts> installed;
    if (!installed) {
        installed = new NorwegianTexts(qApp);
        QCoreApplication::installTranslator(installed);
    }
}
