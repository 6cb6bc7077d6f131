#include "host/guide/ScreenGuide.h"

#include "platform/forms/MsgBox.h"
#include "platform/grid/fpSpread.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QDir>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QVBoxLayout>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;
using screentour::Guide;

namespace {

/// A screen with a field, a list, a button and a grid, and a guide before it.
class ScreenGuideTest : public ::testing::Test
{
protected:
    ScreenGuideTest()
    {
        screen.setObjectName(u"frmSkjerm"_s);
        field.setObjectName(u"txtNavn"_s);
        list.setObjectName(u"cmbStatus"_s);
        button.setObjectName(u"btnSave"_s);
        grid.setObjectName(u"grdLinjer"_s);
        list.addItems({u"Ordre"_s, u"Fakturert"_s, u"Bokført"_s});
        auto *layout = new QVBoxLayout(&screen);
        for (QWidget *widget : std::initializer_list<QWidget *>{&field, &list, &button, &grid})
            layout->addWidget(widget);
        screen.resize(600, 400);
        screen.show();
        EXPECT_TRUE(QTest::qWaitForWindowActive(&screen));
    }

    void onClick(std::function<void()> action)
    {
        QObject::connect(&button, &QPushButton::clicked, &screen, std::move(action));
    }
    void put(int row, int col, const QString &text)
    {
        grid.setCurrent(col, row);
        grid.setText(text);
    }
    [[nodiscard]] QStringList pictures() const
    {
        return QDir(folder.path()).entryList(QDir::Files, QDir::Name);
    }
    /// What the guide ends with, or nothing when `action` goes through.
    static QString refusal(const std::function<void()> &action)
    {
        try {
            action();
        } catch (const screentour::ScreenError &error) {
            return error.line();
        }
        return {};
    }

    QWidget screen;
    QLineEdit field;
    QComboBox list;
    QPushButton button;
    fpSpread grid;
    QTemporaryDir folder;
    QStringList told;
    const Guide::Say say = [this](const QString &line) { told += line; };
    Guide guide{folder.path(), say};
};

TEST_F(ScreenGuideTest, FindsWindowsAndControlsByName)
{
    EXPECT_EQ(&guide.window(u"frmSkjerm"_s), &screen);
    EXPECT_EQ(&guide.control(screen, u"btnSave"_s), &button);
    button.hide();
    EXPECT_TRUE(refusal([&] {
                    (void)guide.control(screen, u"btnSave"_s);
                }).contains(u"frmSkjerm har ikke kontrollen btnSave"_s));
}

TEST_F(ScreenGuideTest, TypesOverAFieldWithNorwegianLetters)
{
    field.setText(u"gammelt"_s);
    guide.type(field, u"Kjøring på Ås, 3 % & \"mer\""_s);
    EXPECT_EQ(field.text(), u"Kjøring på Ås, 3 % & \"mer\""_s);
}

TEST_F(ScreenGuideTest, KeysReachTheControl)
{
    field.setFocus();
    guide.key(field, Qt::Key_Tab);
    EXPECT_TRUE(list.hasFocus());
    field.setText(u"tekst"_s);
    guide.key(field, Qt::CTRL | Qt::Key_A);
    EXPECT_EQ(field.selectedText(), u"tekst"_s);
}

TEST_F(ScreenGuideTest, ClicksOnTheMarkOfAWideCheckBoxAndOnATab)
{
    QTabWidget tabs;
    auto *paid = new QCheckBox(u"Betalt"_s);
    auto *copy = new QRadioButton(u"Kopi"_s);
    tabs.setObjectName(u"tabSider"_s);
    tabs.addTab(paid, u"&Liste"_s);
    tabs.addTab(copy, u"&Detaljer"_s);
    tabs.resize(500, 200);
    tabs.show();

    guide.click(*paid);
    EXPECT_TRUE(paid->isChecked());
    guide.chooseTab(tabs, u"Detaljer"_s);
    EXPECT_EQ(tabs.currentIndex(), 1);
    guide.click(*copy);
    EXPECT_TRUE(copy->isChecked());
    EXPECT_TRUE(refusal([&] {
                    guide.chooseTab(tabs, u"Pris"_s);
                }).contains(u"tabSider har ikke fanen Pris"_s));
}

TEST_F(ScreenGuideTest, ADisabledControlEndsTheTour)
{
    button.setEnabled(false);
    EXPECT_EQ(refusal([&] { guide.click(button); }), u"btnSave er sperret"_s);
    EXPECT_EQ(refusal([&] { guide.key(button, Qt::Key_Space); }), u"btnSave er sperret"_s);
}

TEST_F(ScreenGuideTest, PicksFromAListAsAUser)
{
    QStringList picked;
    QObject::connect(&list, &QComboBox::textActivated, &screen,
                     [&](const QString &text) { picked += text; });
    guide.choose(list, u"Bokført"_s);
    EXPECT_EQ(list.currentText(), u"Bokført"_s);
    EXPECT_EQ(picked, QStringList{u"Bokført"_s});
    EXPECT_TRUE(refusal([&] {
                    guide.choose(list, u"Tapt"_s);
                }).contains(u"cmbStatus har ikke valget Tapt"_s));
}

TEST_F(ScreenGuideTest, ReadsAndFillsTheGridsCells)
{
    put(2, 3, u"dieselolje"_s);
    EXPECT_EQ(guide.cell(grid, 2, 3), u"dieselolje"_s);
    EXPECT_EQ(guide.rowOf(grid, 3, u"dieselolje"_s), 2);

    guide.typeInCell(grid, 4, 2, u"pære"_s);
    EXPECT_EQ(guide.cell(grid, 4, 2), u"pære"_s);
    EXPECT_FALSE(grid.editMode());

    EXPECT_TRUE(refusal([&] { (void)guide.cell(grid, 99, 1); }).contains(u"grdLinjer"_s));
    EXPECT_TRUE(refusal([&] { (void)guide.rowOf(grid, 3, u"bensin"_s); }).contains(u"bensin"_s));
    EXPECT_TRUE(refusal([&] { (void)guide.cell(field, 1, 1); }).contains(u"txtNavn"_s));
}

TEST_F(ScreenGuideTest, PicksInAComboCell)
{
    for (const bool editable : {false, true}) {
        grid.setCurrent(2, 3);
        CellType units;
        units.kind = CellKind::ComboBox;
        units.items = u"t\tstk\tkg"_s;
        units.editable = editable;
        grid.setCellType(units);
        put(3, 2, u"t"_s);
        guide.chooseInCell(grid, 3, 2, u"kg"_s);
        EXPECT_EQ(guide.cell(grid, 3, 2), u"kg"_s);
        EXPECT_FALSE(grid.editMode());
    }
}

TEST_F(ScreenGuideTest, ClicksInCells)
{
    QStringList events;
    QObject::connect(&grid, &fpSpread::Click, &screen,
                     [&](int col, int row) { events += u"%1,%2"_s.arg(row).arg(col); });
    QObject::connect(&grid, &fpSpread::DblClick, &screen,
                     [&](int col, int row) { events += u"dobbelt %1,%2"_s.arg(row).arg(col); });
    guide.clickCell(grid, 3, 2);
    EXPECT_EQ(events, QStringList{u"3,2"_s});
    guide.doubleClickCell(grid, 4, 1);
    EXPECT_EQ(events.constLast(), u"dobbelt 4,1"_s);
}

TEST_F(ScreenGuideTest, AnswersAMessageBoxByTheTextOfItsButton)
{
    int pressed = 0;
    onClick([&] { pressed = MsgBox(u"Slette  ordren?"_s, msgbox::kYesNo); });
    const auto click = [&] { guide.click(button); };
    EXPECT_EQ(guide.answer(u"Nei"_s, click), u"Slette  ordren?"_s);
    EXPECT_EQ(pressed, answer::kNo);
    EXPECT_EQ(guide.answer(u"Ja"_s, click, u"spørsmål"_s), u"Slette  ordren?"_s);
    EXPECT_EQ(pressed, answer::kYes);
    EXPECT_EQ(pictures(), QStringList{u"01-spørsmål.png"_s});

    EXPECT_TRUE(refusal([&] {
                    guide.answer(u"Avbryt"_s, [&] { guide.click(button); });
                }).contains(u"meldingen har ikke knappen Avbryt: Slette ordren?"_s));
}

TEST_F(ScreenGuideTest, ABoxThatNobodyExpectsEndsTheTourAndNotItsTime)
{
    onClick([] { MsgBox(u"Noe gikk galt"_s, msgbox::kYesNo); });
    EXPECT_EQ(refusal([&] { guide.click(button); }), u"uventet melding: Noe gikk galt"_s);
    EXPECT_TRUE(refusal([&] {
                    guide.modal(u"frmKunder"_s, [&] { guide.click(button); }, {});
                }).contains(u"uventet melding: Noe gikk galt"_s));
}

TEST_F(ScreenGuideTest, DealsWithABoxInsideAModalWindow)
{
    QString chosen;
    onClick([&] {
        QDialog picker(&screen);
        picker.setObjectName(u"frmKunder"_s);
        QPushButton use(u"Bruk"_s, &picker);
        use.setObjectName(u"cmdBruk"_s);
        QObject::connect(&use, &QPushButton::clicked, &picker, [&] {
            if (MsgBox(u"Sikker?"_s, msgbox::kYesNo) == answer::kYes)
                picker.accept();
        });
        chosen = picker.exec() == QDialog::Accepted ? u"ja"_s : u"nei"_s;
    });
    const auto click = [&] { guide.click(button); };
    guide.modal(u"frmKunder"_s, click, [&](QWidget &picker) {
        guide.answer(u"Ja"_s, [&] { guide.click(guide.control(picker, u"cmdBruk"_s)); });
    });
    EXPECT_EQ(chosen, u"ja"_s);

    // One that is left standing is taken down and told.
    EXPECT_TRUE(refusal([&] {
                    guide.modal(u"frmKunder"_s, click, [](QWidget &) {});
                }).contains(u"frmKunder ble ikke lukket"_s));
    EXPECT_EQ(chosen, u"nei"_s);
}

TEST_F(ScreenGuideTest, ANoteMayBeGoneBeforeTheClickComesBack)
{
    QWidget note;
    note.setObjectName(u"frmTMsgBox"_s);
    bool stands = false;
    onClick([&] {
        note.show();
        note.setVisible(stands);
    });
    const auto click = [&] { guide.click(button); };
    EXPECT_EQ(refusal([&] { guide.note(u"frmTMsgBox"_s, click); }), QString());
    stands = true;
    EXPECT_EQ(refusal([&] { guide.note(u"frmTMsgBox"_s, click); }), QString());
    EXPECT_FALSE(note.isVisible());
}

TEST_F(ScreenGuideTest, ANoteThatDoesNotComeEndsTheTour)
{
    EXPECT_EQ(refusal([&] { guide.note(u"frmTMsgBox"_s, [] {}); }),
              u"skjermbildet frmTMsgBox kom ikke fram"_s);
}

TEST_F(ScreenGuideTest, PicturesAreNumberedAndTold)
{
    guide.picture(screen, u"skjerm"_s, u"Skjermen"_s);
    guide.picture(screen, u"igjen"_s, u"En gang til"_s);
    EXPECT_EQ(pictures(), (QStringList{u"01-skjerm.png"_s, u"02-igjen.png"_s}));
    EXPECT_EQ(told, (QStringList{u"1. Skjermen: "_s + folder.filePath(u"01-skjerm.png"_s),
                                 u"2. En gang til: "_s + folder.filePath(u"02-igjen.png"_s)}));
}

TEST_F(ScreenGuideTest, ClosesAWindow)
{
    guide.close(screen);
    EXPECT_FALSE(screen.isVisible());
}

} // namespace
