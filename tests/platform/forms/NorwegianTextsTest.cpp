#include "platform/forms/NorwegianTexts.h"

#include "platform/forms/CommonDialog.h"
#include "support/TestApplication.h"

#include <QDialogButtonBox>
#include <QFileDialog>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QPushButton>
#include <QToolButton>
#include <QTreeView>

using namespace Qt::StringLiterals;

namespace {

class Norwegian : public FormsFixture
{
protected:
    void SetUp() override { installNorwegianTexts(); }
};

} // namespace

TEST_F(Norwegian, StandardButtons)
{
    const QMessageBox box(QMessageBox::NoIcon, QString(), QString(),
                          QMessageBox::Ok | QMessageBox::Cancel | QMessageBox::Yes |
                              QMessageBox::No | QMessageBox::Save | QMessageBox::Open);
    const std::pair<QMessageBox::StandardButton, QString> texts[] = {
        {QMessageBox::Ok, u"OK"_s},      {QMessageBox::Cancel, u"Avbryt"_s},
        {QMessageBox::Yes, u"Ja"_s},     {QMessageBox::No, u"Nei"_s},
        {QMessageBox::Save, u"Lagre"_s}, {QMessageBox::Open, u"Åpne"_s},
    };
    for (const auto &[button, text] : texts)
        EXPECT_EQ(box.button(button)->text().remove(u'&'), text);
}

TEST_F(Norwegian, ContextMenuOfATextField)
{
    QLineEdit edit;
    const std::unique_ptr<QMenu> menu(edit.createStandardContextMenu());
    QStringList texts;
    for (const QAction *action : menu->actions()) {
        if (!action->isSeparator())
            texts << action->text().section(u'\t', 0, 0).remove(u'&');
    }
    EXPECT_EQ(texts, (QStringList{u"Angre"_s, u"Gjør om"_s, u"Klipp ut"_s, u"Kopier"_s,
                                  u"Lim inn"_s, u"Slett"_s, u"Merk alt"_s}));
}

TEST_F(Norwegian, EveryTextOfTheFileDialog)
{
    QStringList texts;
    onNextModal<QFileDialog>([&](QFileDialog &dialog) {
        for (const QLabel *label : dialog.findChildren<QLabel *>()) {
            if (label->isVisible())
                texts << label->text().remove(u'&');
        }
        for (const QPushButton *button : dialog.findChildren<QPushButton *>())
            texts << button->text().remove(u'&');
        for (const QToolButton *button : dialog.findChildren<QToolButton *>()) {
            if (button->isVisible())
                texts << button->toolTip();
        }
        const auto *tree = dialog.findChild<QTreeView *>(u"treeView"_s);
        for (int column = 0; column < tree->model()->columnCount(); ++column)
            texts << tree->model()->headerData(column, Qt::Horizontal).toString();
        dialog.reject();
    });
    CommonDialog dialog;
    dialog.showOpen();
    texts.sort();
    EXPECT_EQ(texts, (QStringList{u"Avbryt"_s, u"Detaljer"_s, u"Endret"_s, u"Filnavn:"_s,
                                  u"Filtype:"_s, u"Fremover"_s, u"Lag ny mappe"_s, u"Let i:"_s,
                                  u"Liste"_s, u"Navn"_s, u"Overordnet mappe"_s, u"Størrelse"_s,
                                  u"Tilbake"_s, u"Type"_s, u"Åpne"_s}));
}

TEST_F(Norwegian, TextsOfOthersAreLeftAlone)
{
    EXPECT_EQ(QCoreApplication::translate("Foreldreprogram", "Open"), u"Open"_s);
    EXPECT_EQ(QKeySequence(Qt::Key_Delete).toString(QKeySequence::NativeText), u"Del"_s);
}
