#include "order/OrdreSkjerm.h"

#include "platform/forms/Forms.h"
#include "platform/grid/fpSpread.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"
#include "support/Caption.h"

#include <QLabel>
#include <QPushButton>
#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

/// The screen's texts, its life and its place.
class FrmOrdreTest : public OrdreSkjerm
{
protected:
    static QString lagret(const QString &key)
    {
        return gReg->GetSetting(u"Regningsdel\\Forms\\frmOrdre"_s, key, u"mangler"_s);
    }
};

// --- Texts

TEST_F(FrmOrdreTest, TextsAndTips)
{
    apne();
    EXPECT_EQ(skjerm()->windowTitle(), u"Ordre og Faktura"_s);
    const std::pair<QString, QString> captions[] = {
        {u"btnPrint"_s, u"Utskrift"_s},
        {u"btnCopy"_s, u"Kopi"_s},
        {u"btnNew"_s, u"Ny"_s},
        {u"btnChange"_s, u"Endre"_s},
        {u"btnSave"_s, u"Lagre"_s},
        {u"btnCancel"_s, u"Avbryt"_s},
        {u"btnClose"_s, u"Avslutt"_s},
        {u"chkBetalt"_s, u"Betalt"_s},
        {u"chkLevAdr"_s, u"Samme leveringsadresse"_s},
    };
    for (const auto &[name, caption] : captions)
        EXPECT_EQ(captionOf(*control<QAbstractButton>(name)), caption);
    const std::pair<QString, QString> tips[] = {
        {u"cmdFirst"_s, u"Gå til første post"_s},
        {u"cmdPrevious"_s, u"Gå til forrige post"_s},
        {u"cmdNext"_s, u"Gå til neste post"_s},
        {u"cmdLast"_s, u"Gå til siste post"_s},
        {u"imgF1"_s, u" Vis hjelp for dette skjermbildet (F1)"_s}};
    for (const auto &[name, tip] : tips)
        EXPECT_EQ(control(name)->toolTip(), tip);
}

TEST_F(FrmOrdreTest, EachFieldHasItsLabel)
{
    apne();
    const std::pair<int, QString> labels[] = {
        {0, u"Kundenavn:"_s},     {1, u"Adresse:"_s},         {3, u"Poststed:"_s},
        {5, u"Lev. adresse:"_s},  {7, u"Lev. poststed:"_s},   {9, u"Betalingsbet.:"_s},
        {10, u"Ordre dato:"_s},   {11, u"Leverings dato:"_s}, {12, u"Faktura dato:"_s},
        {13, u"Forfall dato:"_s}, {14, u"Vår ref.:"_s},       {15, u"Deres ref.:"_s},
        {16, u"Faktura nr.:"_s},  {17, u"Status:"_s},         {18, u"Kunde nr.:"_s},
        {19, u"KID:"_s},          {20, u"Sum Netto:"_s},      {21, u"Sum MVA:"_s},
        {22, u"Sum Brutto:"_s},   {23, u"Kontrollsiffer"_s},  {24, u"Org.nr.:"_s},
        {25, u"Øreavrunding:"_s},
    };
    for (const auto &[nr, text] : labels) {
        QStringList found;
        for (const QLabel *label : skjerm()->findChildren<QLabel *>()) {
            if (label->buddy() == felt(nr))
                found += captionOf(*label);
        }
        EXPECT_EQ(found, QStringList{text}) << nr;
    }
    // Those that no label tells of have a name for those who cannot see.
    for (const int nr : {2, 4, 6, 8})
        EXPECT_NE(felt(nr)->accessibleName(), QString()) << nr;
    EXPECT_EQ(captionOf(*control<QLabel>(u"lblDager"_s)), u"dager"_s);
    EXPECT_EQ(control<QLabel>(u"Label5"_s)->buddy(), felt(25));
}

TEST_F(FrmOrdreTest, TheCheckDigitAndTheInvoiceTypeAreHidden)
{
    apne();
    EXPECT_FALSE(felt(23)->isVisible());
    EXPECT_FALSE(control(u"lblKontrollsiffer"_s)->isVisible());
    EXPECT_FALSE(felt(26)->isVisible());
    EXPECT_TRUE(felt(22)->isVisible());
}

TEST_F(FrmOrdreTest, ThePickersHaveNames)
{
    apne();
    for (const QString &name : {u"dtpOrdre"_s, u"dtpLevDato"_s, u"dtpFakDato"_s, u"dtpForfall"_s})
        EXPECT_NE(control(name)->accessibleName(), QString());
}

// --- Life

TEST_F(FrmOrdreTest, AFirstOpeningTakesTheDefaultPlace)
{
    apne();
    EXPECT_EQ(skjerm()->place(), QRect(195, 195, 10635, 6870));
}

TEST_F(FrmOrdreTest, ThePlaceIsKept)
{
    apne();
    skjerm()->setPlace(300, 450, 10650, 7500);
    runEvents();
    skjerm()->unload();
    runEvents();
    EXPECT_EQ(lagret(u"FLeft"_s).chopped(1), u"300"_s);
    EXPECT_EQ(lagret(u"FHeight"_s).chopped(1), u"7500"_s);
    apne();
    EXPECT_EQ(skjerm()->place(), QRect(300, 450, 10650, 7500));
}

TEST_F(FrmOrdreTest, TheWindowHasALeastSize)
{
    apne();
    skjerm()->setPlace(300, 450, 3000, 1500);
    runEvents();
    // Whole pixels of 15 twips.
    EXPECT_EQ(skjerm()->place().size(), QSize(10635, 6435));
}

TEST_F(FrmOrdreTest, NothingIsCutOffInTheLeastWindow)
{
    apne();
    skjerm()->setPlace(0, 0, 0, 0);
    runEvents();
    for (const QWidget *widget : skjerm()->findChildren<QWidget *>()) {
        if (!widget->isVisible() || widget->parentWidget() != skjerm())
            continue;
        EXPECT_TRUE(skjerm()->rect().contains(widget->geometry()))
            << widget->objectName().toStdString();
        if (const auto *button = qobject_cast<const QAbstractButton *>(widget)) {
            EXPECT_GT(widget->width(), button->fontMetrics().horizontalAdvance(button->text()))
                << widget->objectName().toStdString();
        } else if (qobject_cast<const QLabel *>(widget)) {
            EXPECT_GE(widget->width(), widget->sizeHint().width())
                << widget->objectName().toStdString();
        }
        for (const QWidget *other : skjerm()->findChildren<QWidget *>()) {
            if (other == widget || !other->isVisible() || other->parentWidget() != skjerm())
                continue;
            EXPECT_FALSE(widget->geometry().intersects(other->geometry()))
                << widget->objectName().toStdString() << other->objectName().toStdString();
        }
    }
}

TEST_F(FrmOrdreTest, LargeLettersAreNotCutOff)
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 1.25);
    QApplication::setFont(large);
    apne();
    skjerm()->setPlace(0, 0, 0, 0);
    runEvents();
    for (const QLabel *label : skjerm()->findChildren<QLabel *>()) {
        if (label->isVisible() && label->parentWidget() == felt(0)->parentWidget()) {
            EXPECT_GE(label->width(), label->sizeHint().width())
                << label->objectName().toStdString();
        }
    }
    for (const QPushButton *button : skjerm()->findChildren<QPushButton *>()) {
        EXPECT_GT(button->width(), button->fontMetrics().horizontalAdvance(button->text()))
            << button->objectName().toStdString();
    }
    constexpr int kFrameAndMargins = 10;
    for (const auto &[nr, text] :
         std::initializer_list<std::pair<int, QString>>{{18, u"10001"_s},
                                                        {3, u"0150"_s},
                                                        {9, u"14"_s},
                                                        {10, u"28.08.2014"_s},
                                                        {13, u"28.08.2014"_s},
                                                        {19, u"0100010010617"_s},
                                                        {20, u"1 234,50"_s},
                                                        {22, u"1 234,50"_s}}) {
        EXPECT_GE(felt(nr)->width(),
                  felt(nr)->fontMetrics().horizontalAdvance(text) + kFrameAndMargins)
            << nr;
    }
    const auto *grid = control<fpSpread>(u"vaSpread1"_s);
    EXPECT_GE(grid->viewport()->height(), 2 * grid->rowHeight(0));
    // However low the window may get: with the headers and the scroll bar.
    EXPECT_GE(grid->minimumHeight(), 4 * grid->rowHeight(0));
    QApplication::setFont(usual);
}

TEST_F(FrmOrdreTest, EvenWithTheLargestLettersTheWindowStaysOnTheScreen)
{
    const QFont usual = QApplication::font();
    QFont large = usual;
    large.setPointSizeF(usual.pointSizeF() * 3);
    QApplication::setFont(large);
    apne();
    skjerm()->setPlace(0, 0, 0, 0);
    runEvents();
    EXPECT_LE(skjerm()->width(), skjerm()->screen()->availableSize().width());
    EXPECT_LE(skjerm()->height(), skjerm()->screen()->availableSize().height());
    QApplication::setFont(usual);
}

TEST_F(FrmOrdreTest, TheGridTakesTheRoomOfALargerWindow)
{
    apne();
    const QSize before = control(u"vaSpread1"_s)->size();
    const int header = felt(0)->y();
    skjerm()->resize(skjerm()->size() + QSize(200, 150));
    runEvents();
    EXPECT_EQ(control(u"vaSpread1"_s)->size(), before + QSize(200, 150));
    EXPECT_EQ(felt(0)->y(), header);
}

TEST_F(FrmOrdreTest, TheProductsNameTakesTheRoomOfALargerWindow)
{
    apne();
    auto *grid = control<fpSpread>(u"vaSpread1"_s);
    EXPECT_EQ(grid->colWidth(2), 16.25);
    const int first = skjerm()->width();
    skjerm()->resize(first + 300, skjerm()->height());
    runEvents();
    EXPECT_DOUBLE_EQ(grid->colWidth(2), 16.25 + grid->twipsToColWidth(300 * 15));
    EXPECT_EQ(grid->colWidth(1), 11.0);
    skjerm()->resize(first, skjerm()->height());
    runEvents();
    EXPECT_EQ(grid->colWidth(2), 16.25);
}

TEST_F(FrmOrdreTest, SumsOfMillionsAreShownWholeInTheLeastWindow)
{
    apne();
    skjerm()->setPlace(0, 0, 0, 0);
    runEvents();
    constexpr int kFrameAndMargins = 10;
    for (const int nr : {20, 21, 22}) {
        EXPECT_GE(felt(nr)->width(),
                  felt(nr)->fontMetrics().horizontalAdvance(u"12345 678,00"_s) + kFrameAndMargins)
            << nr;
    }
    EXPECT_GE(felt(25)->width(),
              felt(25)->fontMetrics().horizontalAdvance(u"-0,50"_s) + kFrameAndMargins);
}

TEST_F(FrmOrdreTest, TheWarningMovesNothing)
{
    gAar = 2015;
    apne();
    const QRect before = felt(0)->geometry();
    klikk(u"btnNew"_s);
    ASSERT_TRUE(control(u"imgAar"_s)->isVisible());
    EXPECT_EQ(felt(0)->geometry(), before);
}

TEST_F(FrmOrdreTest, EscapeClosesSilentlyAnywhere)
{
    leggOrdre({});
    for (const QString &where : {u"btnClose"_s, u"vaSpread1"_s, u"txtFields_10"_s}) {
        apne();
        control(where)->setFocus();
        tast(Qt::Key_Escape);
        EXPECT_EQ(skjerm(), nullptr) << where.toStdString();
    }
    apne();
    klikk(u"btnNew"_s);
    skriv(0, u"Tapt AS"_s);
    tast(Qt::Key_Escape);
    EXPECT_EQ(skjerm(), nullptr);
}

TEST_F(FrmOrdreTest, CloseClosesInEachMode)
{
    leggOrdre({});
    for (const QString &mode : {u""_s, u"btnNew"_s, u"btnCopy"_s, u"btnChange"_s}) {
        apne();
        if (!mode.isEmpty())
            klikk(mode);
        QTest::mouseClick(control(u"btnClose"_s), Qt::LeftButton);
        runEvents();
        EXPECT_EQ(skjerm(), nullptr) << mode.toStdString();
    }
    EXPECT_EQ(rows(u"SELECT COUNT (*) FROM Ordre"_s), QStringList{u"1"_s});
}

TEST_F(FrmOrdreTest, ANextOpeningBrowses)
{
    leggOrdre({.ordreNr = 7});
    apne();
    klikk(u"btnNew"_s);
    skjerm()->unload();
    runEvents();
    apne();
    EXPECT_EQ(tekst(16), u"7"_s);
    EXPECT_EQ(knapperPaa(),
              QStringList({u"btnPrint"_s, u"btnCopy"_s, u"btnNew"_s, u"btnChange"_s}));
}

TEST_F(FrmOrdreTest, LoggingOffUnloads)
{
    apne();
    EXPECT_TRUE(Forms::instance().logOff());
    runEvents();
    EXPECT_EQ(skjerm(), nullptr);
}

TEST_F(FrmOrdreTest, F1ShowsTheHelpPageAnywhere)
{
    apne();
    for (const QString &where : {u"btnClose"_s, u"vaSpread1"_s, u"txtFields_10"_s}) {
        gHelpTopic.clear();
        control(where)->setFocus();
        tast(Qt::Key_F1);
        EXPECT_EQ(gHelpTopic, u"html\\ordre.htm"_s) << where.toStdString();
    }
    gHelpTopic.clear();
    klikk(u"imgF1"_s);
    EXPECT_EQ(gHelpTopic, u"html\\ordre.htm"_s);
}

// --- Keys

TEST_F(FrmOrdreTest, ButtonsHaveKeysOfTheirOwn)
{
    leggOrdre({});
    apne();
    const auto press = [](Qt::Key key) { tast(key, Qt::AltModifier); };
    press(Qt::Key_E);
    // A button pressed by its key stays down for a moment before it clicks.
    EXPECT_TRUE(QTest::qWaitFor([] { return erPaa(u"btnSave"_s); }));
    gaTil(3);
    felt(3)->setText(u"7010"_s);
    press(Qt::Key_B);
    EXPECT_TRUE(QTest::qWaitFor([] { return !erPaa(u"btnSave"_s); }));
    press(Qt::Key_N);
    EXPECT_TRUE(QTest::qWaitFor([] { return tekst(16) == u"2"_s; }));
    // The field that had the focus is left as by a click.
    skriv(3, u"7010"_s);
    press(Qt::Key_A);
    EXPECT_EQ(tekst(4), u"TRONDHEIM"_s);
    EXPECT_TRUE(QTest::qWaitFor([] { return skjerm() == nullptr; }));
    apne();
    QStringList keys;
    for (const QPushButton *button : skjerm()->findChildren<QPushButton *>())
        keys += button->shortcut().toString();
    EXPECT_EQ(keys.removeDuplicates(), 0);
    EXPECT_FALSE(keys.contains(QString()));
}

} // namespace
