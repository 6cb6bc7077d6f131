#include "output/printing/Forhandsvisning.h"

#include "output/printing/RapportUtgang.h"
#include "output/printing/UtskriftTest.h"
#include "support/Control.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDir>
#include <QLabel>
#include <QMessageBox>
#include <QScrollBar>
#include <QSpinBox>
#include <QToolBar>
#include <QToolButton>

using namespace Qt::StringLiterals;

namespace {

/// The preview window of a list of orders, six to the page.
class ForhandsvisningTest : public UtskriftTest
{
protected:
    void vis(int ordrer) { m_vindu = visListe(ordrer); }

    template<class Control>
    Control *i(const QString &name)
    {
        return &controlOf<Control>(m_vindu, name);
    }
    void klikkI(const QString &name)
    {
        QTest::mouseClick(i<QToolButton>(name), Qt::LeftButton);
        runEvents();
    }
    void taste(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
    {
        QTest::keyClick(m_vindu->focusWidget(), key, modifiers);
        runEvents();
    }
    bool erPaa(const QString &name) { return i<QToolButton>(name)->isEnabled(); }
    Sidevisning &visning() { return *sider(m_vindu); }
    /// As the user reads it, from 1.
    int side() { return i<QSpinBox>(u"txtSide"_s)->value(); }
    QString zoom() { return i<QComboBox>(u"cmbZoom"_s)->currentText(); }
    QString treff() { return i<QLabel>(u"lblTreff"_s)->text(); }
    void sok(const QString &tekst)
    {
        taste(Qt::Key_F, Qt::ControlModifier);
        EXPECT_EQ(m_vindu->focusWidget(), i<QLineEdit>(u"txtSok"_s));
        QTest::keyClicks(m_vindu->focusWidget(), tekst);
        runEvents();
    }
    void hjul(int hakk, Qt::KeyboardModifiers modifiers)
    {
        const QPointF midt = visning().viewport()->rect().center();
        QWheelEvent event(midt, visning().viewport()->mapToGlobal(midt), {}, QPoint(0, 120 * hakk),
                          Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
        QApplication::sendEvent(visning().viewport(), &event);
        runEvents();
    }
    /// The number of pixels of that colour in view.
    int piksler(QRgb farge)
    {
        const QImage bilde = visning().viewport()->grab().toImage();
        int antall = 0;
        for (int y = 0; y < bilde.height(); ++y) {
            for (int x = 0; x < bilde.width(); ++x)
                antall += bilde.pixel(x, y) == farge;
        }
        return antall;
    }

    QPointer<Forhandsvisning> m_vindu;
};

constexpr QRgb kMerket = 0xfffff0a0;
constexpr QRgb kValgt = 0xffffb84d;

} // namespace

TEST_F(ForhandsvisningTest, WhatTakesTheFocusHasAName)
{
    vis(1);
    EXPECT_EQ(visning().accessibleName(), u"Rapportens sider"_s);
    for (const QString &navn : {u"txtSide"_s, u"cmbZoom"_s, u"txtSok"_s})
        EXPECT_NE(i<QWidget>(navn)->accessibleName(), QString()) << navn.toStdString();
}

TEST_F(ForhandsvisningTest, ThePageAndTheirNumberAreTold)
{
    vis(14);
    EXPECT_EQ(visning().antallSider(), 3);
    EXPECT_EQ(side(), 1);
    EXPECT_EQ(i<QLabel>(u"lblAntallSider"_s)->text().trimmed(), u"av 3"_s);
    EXPECT_EQ(zoom(), u"100 %"_s);
}

TEST_F(ForhandsvisningTest, TheButtonsTurnThePages)
{
    vis(14);
    EXPECT_FALSE(erPaa(u"cmdForste"_s));
    EXPECT_FALSE(erPaa(u"cmdForrige"_s));
    klikkI(u"cmdNeste"_s);
    EXPECT_EQ(side(), 2);
    EXPECT_EQ(visning().sideplass(1).top(), 14);
    EXPECT_TRUE(erPaa(u"cmdForste"_s));
    klikkI(u"cmdSiste"_s);
    EXPECT_EQ(side(), 3);
    EXPECT_FALSE(erPaa(u"cmdNeste"_s));
    EXPECT_FALSE(erPaa(u"cmdSiste"_s));
    klikkI(u"cmdForrige"_s);
    EXPECT_EQ(side(), 2);
    klikkI(u"cmdForste"_s);
    EXPECT_EQ(side(), 1);
}

TEST_F(ForhandsvisningTest, TheKeysTurnThePages)
{
    vis(14);
    taste(Qt::Key_PageDown, Qt::ControlModifier);
    EXPECT_EQ(side(), 2);
    taste(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(side(), 3);
    taste(Qt::Key_PageUp, Qt::ControlModifier);
    EXPECT_EQ(side(), 2);
    taste(Qt::Key_Home, Qt::ControlModifier);
    EXPECT_EQ(side(), 1);
    taste(Qt::Key_End);
    EXPECT_EQ(side(), 3);
    EXPECT_EQ(visning().verticalScrollBar()->value(), visning().verticalScrollBar()->maximum());
    taste(Qt::Key_Home);
    EXPECT_EQ(side(), 1);
    EXPECT_EQ(visning().verticalScrollBar()->value(), 0);
    taste(Qt::Key_Space);
    const int enSkjerm = visning().verticalScrollBar()->value();
    EXPECT_GT(enSkjerm, 500);
    taste(Qt::Key_Space, Qt::ShiftModifier);
    EXPECT_EQ(visning().verticalScrollBar()->value(), 0);
    taste(Qt::Key_PageDown);
    EXPECT_EQ(visning().verticalScrollBar()->value(), enSkjerm);
    taste(Qt::Key_Down);
    EXPECT_EQ(visning().verticalScrollBar()->value(), enSkjerm + 40);
}

TEST_F(ForhandsvisningTest, APageNumberCanBeTyped)
{
    vis(14);
    auto *felt = i<QSpinBox>(u"txtSide"_s);
    felt->setFocus();
    felt->selectAll();
    QTest::keyClicks(felt, u"3"_s);
    EXPECT_EQ(visning().side(), 0) << "not while it is being typed";
    QTest::keyClick(felt, Qt::Key_Return);
    EXPECT_EQ(visning().side(), 2);
}

TEST_F(ForhandsvisningTest, ScrollingTellsThePage)
{
    vis(14);
    visning().verticalScrollBar()->setValue(900);
    EXPECT_EQ(side(), 2);
    hjul(20, Qt::NoModifier);
    EXPECT_EQ(side(), 1);
}

TEST_F(ForhandsvisningTest, TheLastPageHasTheSameEdgeBelowAsTheFirstHasAbove)
{
    vis(14);
    const int over = visning().sideplass(0).top();
    EXPECT_GT(over, 0);
    visning().verticalScrollBar()->setValue(visning().verticalScrollBar()->maximum());
    EXPECT_EQ(visning().viewport()->rect().bottom() - visning().sideplass(2).bottom(), over);
}

TEST_F(ForhandsvisningTest, AllPagesCanBeReachedWhenSeveralFitTheWindow)
{
    vis(14);
    visning().settZoom(20);
    QList<int> lest{side()};
    while (erPaa(u"cmdNeste"_s)) {
        klikkI(u"cmdNeste"_s);
        lest += side();
        ASSERT_LE(lest.size(), 3);
    }
    EXPECT_EQ(lest, QList<int>({1, 2, 3}));
}

TEST_F(ForhandsvisningTest, ZoomByButtonsAndKeys)
{
    vis(1);
    klikkI(u"cmdZoomInn"_s);
    EXPECT_EQ(zoom(), u"110 %"_s);
    EXPECT_EQ(visning().sideplass(0).width(), 873);
    klikkI(u"cmdZoomUt"_s);
    klikkI(u"cmdZoomUt"_s);
    EXPECT_EQ(zoom(), u"90 %"_s);
    taste(Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_EQ(zoom(), u"100 %"_s);
    taste(Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_EQ(zoom(), u"90 %"_s);
    taste(Qt::Key_0, Qt::ControlModifier);
    EXPECT_EQ(zoom(), u"100 %"_s);
}

TEST_F(ForhandsvisningTest, ZoomHasEnds)
{
    vis(1);
    for (int n = 0; n < 30; ++n)
        klikkI(u"cmdZoomInn"_s);
    EXPECT_EQ(zoom(), u"500 %"_s);
    for (int n = 0; n < 30; ++n)
        klikkI(u"cmdZoomUt"_s);
    EXPECT_EQ(zoom(), u"10 %"_s);
    hjul(-40, Qt::ControlModifier);
    EXPECT_EQ(zoom(), u"10 %"_s);
    hjul(100, Qt::ControlModifier);
    EXPECT_EQ(zoom(), u"500 %"_s);
}

TEST_F(ForhandsvisningTest, AZoomBetweenTwoStepsGoesToTheNextOne)
{
    vis(1);
    const auto etter = [&](double prosent, const QString &knapp) {
        visning().settZoom(prosent);
        klikkI(knapp);
        return visning().zoom();
    };
    EXPECT_EQ(etter(99, u"cmdZoomInn"_s), 100);
    EXPECT_EQ(etter(91, u"cmdZoomUt"_s), 90);
    EXPECT_EQ(etter(99.8, u"cmdZoomInn"_s), 110); // shown as 100 already
    EXPECT_EQ(etter(90.2, u"cmdZoomUt"_s), 75);
}

TEST_F(ForhandsvisningTest, TheWheelPassesOverZoomAndPageNumber)
{
    vis(14);
    const QString zoomFor = zoom();
    for (QWidget *boks : {i<QWidget>(u"cmbZoom"_s), i<QWidget>(u"txtSide"_s)}) {
        visning().setFocus();
        QWheelEvent event(QPointF(5, 5), boks->mapToGlobal(QPointF(5, 5)), {}, QPoint(0, 120),
                          Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase, false);
        QApplication::sendEvent(boks, &event);
        runEvents();
    }
    EXPECT_EQ(zoom(), zoomFor);
    EXPECT_EQ(side(), 1);
}

TEST_F(ForhandsvisningTest, CtrlAndTheWheelZoomAroundThePointer)
{
    vis(14);
    visning().verticalScrollBar()->setValue(300);
    const QPoint peker = visning().viewport()->rect().center();
    const auto papirpunkt = [&] {
        const QRect plass = visning().sideplass(0);
        return QPointF(peker - plass.topLeft()) / plass.width();
    };
    const QPointF foer = papirpunkt();
    hjul(3, Qt::ControlModifier);
    EXPECT_EQ(zoom(), u"133 %"_s);
    EXPECT_NEAR(papirpunkt().x(), foer.x(), 0.01);
    EXPECT_NEAR(papirpunkt().y(), foer.y(), 0.01);
    hjul(-3, Qt::ControlModifier);
    EXPECT_EQ(zoom(), u"100 %"_s);
    EXPECT_NEAR(papirpunkt().y(), foer.y(), 0.01);
}

TEST_F(ForhandsvisningTest, ZoomByChoice)
{
    vis(1);
    auto *valg = i<QComboBox>(u"cmbZoom"_s);
    const auto velg = [&](const QString &tekst) {
        valg->showPopup();
        valg->view()->setCurrentIndex(valg->model()->index(valg->findText(tekst), 0));
        QTest::keyClick(valg->view(), Qt::Key_Return);
        runEvents();
    };
    velg(u"200 %"_s);
    EXPECT_EQ(visning().zoom(), 200);
    velg(u"Sidebredde"_s);
    EXPECT_NEAR(visning().sideplass(0).width(), visning().viewport()->width() - 28, 20);
    velg(u"Hel side"_s);
    EXPECT_GE(visning().viewport()->height(), visning().sideplass(0).bottom());
    EXPECT_NEAR(visning().sideplass(0).height(), visning().viewport()->height() - 28, 2);
    // It goes on fitting when the window grows.
    m_vindu->resize(1100, 900);
    runEvents();
    EXPECT_NEAR(visning().sideplass(0).height(), visning().viewport()->height() - 28, 2);
    EXPECT_EQ(zoom(), QString::number(visning().zoom()) + u" %"_s);
}

TEST_F(ForhandsvisningTest, AFittedPageIsShownWholeAndAFittedWidthStaysWhereItIsRead)
{
    vis(14);
    visning().verticalScrollBar()->setValue(900);
    ASSERT_EQ(side(), 2);
    visning().settTilpasning(Sidevisning::Tilpasning::HelSide);
    EXPECT_EQ(side(), 2);
    EXPECT_GE(visning().sideplass(1).top(), 0);
    EXPECT_LE(visning().sideplass(1).bottom(), visning().viewport()->height());

    visning().settZoom(100);
    visning().verticalScrollBar()->setValue(500);
    const QPoint midt = visning().viewport()->rect().center();
    const auto lest = [&] {
        const QRect plass = visning().sideplass(0);
        return double(midt.y() - plass.top()) / plass.height();
    };
    const double foer = lest();
    visning().settTilpasning(Sidevisning::Tilpasning::Sidebredde);
    EXPECT_NEAR(lest(), foer, 0.02);
}

TEST_F(ForhandsvisningTest, AZoomCanBeTyped)
{
    vis(1);
    auto *felt = i<QComboBox>(u"cmbZoom"_s)->lineEdit();
    const auto skriv = [&](const QString &tekst) {
        felt->setFocus();
        felt->selectAll();
        QTest::keyClicks(felt, tekst);
        QTest::keyClick(felt, Qt::Key_Return);
        return zoom();
    };
    EXPECT_EQ(skriv(u"85"_s), u"85 %"_s);
    EXPECT_EQ(skriv(u"120 %"_s), u"120 %"_s);
    EXPECT_EQ(skriv(u"9999"_s), u"500 %"_s);
    EXPECT_EQ(skriv(u"mye"_s), u"500 %"_s);
}

TEST_F(ForhandsvisningTest, TheMousePullsThePaper)
{
    vis(14);
    QWidget *flate = visning().viewport();
    QTest::mousePress(flate, Qt::LeftButton, {}, QPoint(400, 500));
    EXPECT_EQ(flate->cursor().shape(), Qt::ClosedHandCursor);
    QMouseEvent flytt(QEvent::MouseMove, QPointF(400, 380), flate->mapToGlobal(QPointF(400, 380)),
                      Qt::NoButton, Qt::LeftButton, {});
    QApplication::sendEvent(flate, &flytt);
    QTest::mouseRelease(flate, Qt::LeftButton, {}, QPoint(400, 380));
    EXPECT_EQ(visning().verticalScrollBar()->value(), 120);
    EXPECT_EQ(flate->cursor().shape(), Qt::OpenHandCursor);
}

// --- Search

TEST_F(ForhandsvisningTest, FindsMarksAndScrolls)
{
    vis(14);
    EXPECT_EQ(piksler(kMerket) + piksler(kValgt), 0);
    sok(u"SLUTTORD"_s);
    EXPECT_EQ(treff(), u"1 av 14"_s);
    EXPECT_GT(piksler(kValgt), 100);
    EXPECT_GT(piksler(kMerket), 100);
    for (int nr = 2; nr <= 14; ++nr) {
        taste(Qt::Key_F3);
        EXPECT_EQ(treff(), u"%1 av 14"_s.arg(nr));
        EXPECT_EQ(side(), (nr + 5) / 6);
        EXPECT_GT(piksler(kValgt), 100) << "in view";
    }
    taste(Qt::Key_F3);
    EXPECT_EQ(treff(), u"1 av 14"_s) << "round to the first";
    taste(Qt::Key_F3, Qt::ShiftModifier);
    EXPECT_EQ(treff(), u"14 av 14"_s);
    klikkI(u"cmdNesteTreff"_s);
    EXPECT_EQ(treff(), u"1 av 14"_s);
    klikkI(u"cmdForrigeTreff"_s);
    EXPECT_EQ(treff(), u"14 av 14"_s);
}

TEST_F(ForhandsvisningTest, EnterGoesOnInTheSearchField)
{
    vis(14);
    sok(u"kunde"_s);
    taste(Qt::Key_Return);
    EXPECT_EQ(treff(), u"2 av 14"_s);
    taste(Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(treff(), u"1 av 14"_s);
}

TEST_F(ForhandsvisningTest, TheSearchBeginsOnThePageInView)
{
    vis(14);
    klikkI(u"cmdSiste"_s);
    sok(u"ordre 1"_s); // 1, 10, 11, 12, 13, 14
    EXPECT_EQ(treff(), u"5 av 6"_s);
    EXPECT_EQ(side(), 3);
}

TEST_F(ForhandsvisningTest, WhatIsNotThereIsTold)
{
    vis(1);
    sok(u"finnes ikke"_s);
    EXPECT_EQ(treff(), u"Ingen treff"_s);
    EXPECT_FALSE(erPaa(u"cmdNesteTreff"_s));
    taste(Qt::Key_F3);
    i<QLineEdit>(u"txtSok"_s)->clear();
    runEvents();
    EXPECT_EQ(treff(), QString());
    EXPECT_EQ(piksler(kMerket) + piksler(kValgt), 0);
}

// --- Printing and saving

TEST_F(ForhandsvisningTest, PrintsOnTheChosenPrinter)
{
    vis(14);
    onNextModal<QDialog>([](QDialog &d) { svarMedSkriver(d, u"Kontor"_s, 2); });
    klikkI(u"cmdSkriv"_s);
    ASSERT_EQ(utskrifter().size(), 1);
    EXPECT_EQ(antallSider(utskrifter()[0]), 6) << "two copies";
    onNextModal<QDialog>([](QDialog &d) { d.reject(); });
    taste(Qt::Key_P, Qt::ControlModifier);
    EXPECT_EQ(utskrifter().size(), 1);
}

TEST_F(ForhandsvisningTest, APrinterThatRefusesIsTold)
{
    vis(1);
    onNextModal<QDialog>([](QDialog &d) { svarMedSkriver(d, u"Nekter"_s); });
    klikkI(u"cmdSkriv"_s);
    EXPECT_EQ(meldinger.ta().size(), 1);
    EXPECT_EQ(meldinger.ikoner, QList<int>{QMessageBox::Warning});
    EXPECT_TRUE(m_vindu);
}

TEST_F(ForhandsvisningTest, SavesAsPdf)
{
    vis(14);
    onNextModal<QFileDialog>([this](QFileDialog &d) {
        EXPECT_EQ(d.windowTitle(), u"Lagre som PDF"_s);
        EXPECT_EQ(d.findChild<QLineEdit *>(u"fileNameEdit"_s)->text(), u"Liste.pdf"_s);
        svarMedFil(d, fil(u"liste"_s));
    });
    klikkI(u"cmdPdf"_s);
    EXPECT_EQ(antallSider(innhold(u"liste.pdf"_s)), 3);
    onNextModal<QFileDialog>([](QFileDialog &d) { d.reject(); });
    taste(Qt::Key_S, Qt::ControlModifier);
}

TEST_F(ForhandsvisningTest, APdfFileThatCannotBeWrittenIsTold)
{
    vis(1);
    onNextModal<QFileDialog>([this](QFileDialog &d) {
        svarMedFil(d, fil(u"ny.pdf"_s));
        QDir().mkdir(fil(u"ny.pdf"_s)); // in the file's place by now
    });
    klikkI(u"cmdPdf"_s);
    EXPECT_TRUE(meldinger.ta().value(0).startsWith(u"Kan ikke skrive PDF-filen "_s));
    EXPECT_EQ(meldinger.ikoner, QList<int>{QMessageBox::Warning});
    EXPECT_TRUE(m_vindu);
}

TEST_F(ForhandsvisningTest, TheWindowMayGoWhileADialogIsUp)
{
    vis(1);
    onNextModal<QFileDialog>([this](QFileDialog &d) {
        delete m_vindu.data();
        svarMedFil(d, fil(u"l.pdf"_s));
    });
    QMetaObject::invokeMethod(m_vindu->findChild<QAction *>(u"cmdPdf"_s), "trigger");
    EXPECT_EQ(antallSider(innhold(u"l.pdf"_s)), 1);
}

// --- The window

TEST_F(ForhandsvisningTest, TwoWindowsGoTheirOwnWays)
{
    vis(14);
    const QPointer<Forhandsvisning> forste = m_vindu;
    klikkI(u"cmdNeste"_s);
    m_vindu = visListe(0);
    ASSERT_NE(m_vindu, forste);
    sok(u"Kunde"_s);
    klikkI(u"cmdZoomInn"_s);
    EXPECT_EQ(side(), 1);
    taste(Qt::Key_Escape); // out of the search
    taste(Qt::Key_Escape);
    EXPECT_TRUE(m_vindu.isNull());
    m_vindu = forste;
    EXPECT_EQ(side(), 2);
    EXPECT_EQ(zoom(), u"100 %"_s);
    EXPECT_EQ(treff(), QString());
}

TEST_F(ForhandsvisningTest, EscapeClosesFromEverywhere)
{
    leggOrdre({});
    for (const QString &name : {u"sider"_s, u"txtSide"_s, u"cmbZoom"_s}) {
        vis(0);
        i<QWidget>(name)->setFocus();
        taste(Qt::Key_Escape);
        EXPECT_TRUE(m_vindu.isNull()) << name.toStdString();
    }
    EXPECT_TRUE(vinduer().isEmpty());
}

TEST_F(ForhandsvisningTest, EscapeLeavesTheSearchAheadOfTheWindow)
{
    vis(1);
    sok(u"Kunde"_s);
    i<QWidget>(u"txtSok"_s)->setFocus();
    taste(Qt::Key_Escape);
    ASSERT_FALSE(m_vindu.isNull());
    EXPECT_TRUE(i<QWidget>(u"sider"_s)->hasFocus());
    taste(Qt::Key_Escape);
    EXPECT_TRUE(m_vindu.isNull());
}

TEST_F(ForhandsvisningTest, EveryCommandHasAKeyInItsTip)
{
    vis(1);
    for (const QString &name :
         {u"cmdForste"_s, u"cmdForrige"_s, u"cmdNeste"_s, u"cmdSiste"_s, u"cmdZoomUt"_s,
          u"cmdZoomInn"_s, u"cmdSkriv"_s, u"cmdPdf"_s, u"cmdForrigeTreff"_s, u"cmdNesteTreff"_s}) {
        EXPECT_TRUE(i<QToolButton>(name)->toolTip().endsWith(u")"_s)) << name.toStdString();
        EXPECT_FALSE(i<QToolButton>(name)->icon().isNull());
    }
}

TEST_F(ForhandsvisningTest, TheSearchStaysWithinANarrowWindow)
{
    vis(1);
    const QStringList felter = {u"txtSok"_s, u"cmdForrigeTreff"_s, u"cmdNesteTreff"_s,
                                u"lblTreff"_s};
    const auto iVinduet = [&] {
        for (const QString &navn : felter) {
            const auto *felt = i<QWidget>(navn);
            EXPECT_TRUE(felt->isVisible()) << navn.toStdString();
            EXPECT_LE(felt->mapTo(m_vindu, felt->rect().bottomRight()).x(), m_vindu->width())
                << navn.toStdString();
        }
        return i<QWidget>(u"txtSok"_s)->mapTo(m_vindu, QPoint()).y();
    };
    const int sammeLinje = iVinduet();
    EXPECT_LT(sammeLinje, i<QWidget>(u"cmdPdf"_s)->geometry().bottom());
    m_vindu->resize(600, 480);
    runEvents();
    EXPECT_EQ(m_vindu->width(), 600);
    EXPECT_GT(iVinduet(), sammeLinje) << "on a line of its own";
    const int beggesBredde =
        i<QToolBar>(u"verktoy"_s)->sizeHint().width() + i<QToolBar>(u"sok"_s)->sizeHint().width();
    m_vindu->resize(beggesBredde, 480);
    runEvents();
    EXPECT_EQ(iVinduet(), sammeLinje);
    m_vindu->resize(beggesBredde - 1, 480);
    runEvents();
    EXPECT_GT(iVinduet(), sammeLinje);
    m_vindu->resize(900, 700);
    runEvents();
    EXPECT_EQ(iVinduet(), sammeLinje);

    QFont stor = m_vindu->font();
    stor.setPointSizeF(stor.pointSizeF() * 2);
    m_vindu->setFont(stor);
    runEvents();
    EXPECT_GT(iVinduet(), sammeLinje);
    EXPECT_EQ(m_vindu->width(), 900);
}

TEST_F(ForhandsvisningTest, WithoutControlsOnlyThePagesShow)
{
    vis(1);
    report::WindowSettings valg;
    valg.controls = false;
    valg.width = 400;
    valg.height = 300;
    RapportUtgang::felles().show(m_vindu->dokument(), valg);
    Forhandsvisning *uten = vindu();
    ASSERT_NE(uten, m_vindu);
    EXPECT_EQ(uten->findChild<QWidget *>(u"verktoy"_s), nullptr);
    EXPECT_EQ(sider(uten)->size(), QSize(400, 300));
    QTest::keyClick(sider(uten), Qt::Key_End);
    QTest::keyClick(sider(uten), Qt::Key_Return);
    QTest::keyClick(sider(uten), Qt::Key_Escape);
    runEvents();
    EXPECT_EQ(vinduer().size(), 1);
}

TEST_F(ForhandsvisningTest, AThousandPagesAreNoHeavierToShow)
{
    vis(1);
    auto stor = std::make_shared<report::Document>(*m_vindu->dokument());
    stor->pages.resize(1000, stor->pages[0]);
    RapportUtgang::felles().show(stor, {});
    m_vindu = vindu();
    EXPECT_TRUE(QTest::qWaitForWindowActive(m_vindu));
    runEvents();
    EXPECT_EQ(visning().antallSider(), 1000);
    taste(Qt::Key_End, Qt::ControlModifier);
    EXPECT_EQ(side(), 1000);
    EXPECT_TRUE(visning().viewport()->rect().intersects(visning().sideplass(999)));
    sok(u"Sluttord"_s);
    EXPECT_EQ(treff(), u"1000 av 1000"_s);
}
