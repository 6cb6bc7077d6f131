#include "order/OrdreTilLagring.h"

#include <QClipboard>

using namespace Qt::StringLiterals;
using namespace linjekolonne;
namespace hode = ordrefelt;

namespace {

/// What is taken back, done again and pasted among the lines of an order.
class OrdreAngreTest : public OrdreTilLagring
{
protected:
    static void angre() { gridtast(Qt::Key_Z, Qt::ControlModifier); }
    static void gjorOm() { gridtast(Qt::Key_Z, Qt::ControlModifier | Qt::ShiftModifier); }
    static void lim(int col, int row, const QString &text)
    {
        staaI(col, row);
        QGuiApplication::clipboard()->setText(text);
        gridtast(Qt::Key_V, Qt::ControlModifier);
    }
    static QString linje(int row) { return rad(row, kProduktNr, kSumBrutto).join(u'|'); }
    static QString summer()
    {
        return QStringList{tekst(hode::kSumNetto), tekst(hode::kMvaKr), tekst(hode::kSumBrutto)}
            .join(u'|');
    }
};

TEST_F(OrdreAngreTest, LinesThatWereEmptiedComeBackWithTheirSums)
{
    nyOrdre();
    const QString foer = linje(1);
    staaI(kProduktNavn, 1);
    gridtast(Qt::Key_A, Qt::ControlModifier);
    gridtast(Qt::Key_Delete);
    gridtast(Qt::Key_Down);
    EXPECT_EQ(summer(), u" 0,00| 0,00| 0,00"_s);
    EXPECT_EQ(grid().dataRowCnt(), 0);
    angre();
    EXPECT_EQ(linje(1), foer);
    EXPECT_EQ(summer(), u" 200,00| 50,00| 250,00"_s);
    gjorOm();
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_EQ(summer(), u" 0,00| 0,00| 0,00"_s);
}

TEST_F(OrdreAngreTest, EachLineOfABlockThatIsEmptiedIsSummedAnew)
{
    nyOrdre();
    skrivLinje(2, u"P1"_s, u"3"_s);
    const QStringList foer{linje(1), linje(2)};
    for (const bool klipp : {false, true}) {
        staaI(kAntall, 2);
        gridtast(Qt::Key_Up, Qt::ShiftModifier);
        if (klipp)
            gridtast(Qt::Key_X, Qt::ControlModifier);
        else
            gridtast(Qt::Key_Delete);
        EXPECT_EQ(aktiv(), std::pair(int(kAntall), 2));
        gridtast(Qt::Key_Tab);
        for (const int row : {1, 2}) {
            EXPECT_EQ(celle(kSumNetto, row), u" 0,00"_s) << row;
            EXPECT_EQ(celle(kSumBrutto, row), u" 0,00"_s) << row;
        }
        EXPECT_EQ(summer(), u" 0,00| 0,00| 0,00"_s);
        angre();
        EXPECT_EQ(QStringList({linje(1), linje(2)}), foer);
        EXPECT_EQ(summer(), u" 500,00| 125,00| 625,00"_s);
    }
}

TEST_F(OrdreAngreTest, SumsOfEmptiedLinesAreOneStepWithThem)
{
    endreOrdre();
    const QStringList foer{linje(1), linje(2), linje(3)};
    staaI(kAntall, 1); // which the screen leads to from each product that is emptied
    gridtast(Qt::Key_A, Qt::ControlModifier);
    gridtast(Qt::Key_Delete);
    gridtast(Qt::Key_Down);
    EXPECT_EQ(celle(kSumNetto, 1), u" 0,00"_s);
    angre();
    EXPECT_EQ(QStringList({linje(1), linje(2), linje(3)}), foer);
}

TEST_F(OrdreAngreTest, AProductIsTakenBackWithWhatItBrought)
{
    leggProdukt(u"P2"_s, u"Tips"_s, u"40"_s, u"15"_s);
    nyOrdre();
    skrivCelle(kPris, 1, u"90"_s); // by hand
    EXPECT_EQ(summer(), u" 180,00| 45,00| 225,00"_s);
    const QString foer = linje(1);
    skrivCelle(kProduktNr, 1, u"P2"_s);
    EXPECT_EQ(celle(kPris, 1), u" 40,00"_s);
    ASSERT_TRUE(grid().editMode()) << "the quantity is open";
    angre();
    EXPECT_EQ(linje(1), foer) << "the price by hand, too";
    EXPECT_EQ(summer(), u" 180,00| 45,00| 225,00"_s);
    EXPECT_EQ(aktiv(), std::pair(int(kProduktNr), 1));
}

TEST_F(OrdreAngreTest, AllThatANewOrderWasGivenCanBeTakenBack)
{
    nyOrdre();
    for (int steg = 0; steg < 10; ++steg)
        angre();
    EXPECT_EQ(grid().dataRowCnt(), 0);
    EXPECT_EQ(summer(), u" 0,00| 0,00| 0,00"_s);
    for (int steg = 0; steg < 10; ++steg)
        gjorOm();
    EXPECT_EQ(summer(), u" 200,00| 50,00| 250,00"_s);
}

TEST_F(OrdreAngreTest, PastedLinesFetchTheirProductsAndAreSummed)
{
    nyOrdre();
    lim(kProduktNr, 2, u"P1\tEkspress\t3\r\nfinnes ikke\tTips\tmange\r\n"_s);
    EXPECT_EQ(rad(2, kProduktNr, kAntall),
              QStringList({u"P1"_s, u"Ekspress"_s, celle(kAntall, 2)}));
    EXPECT_EQ(celle(kPris, 2), u" 100,00"_s);
    EXPECT_EQ(rad(3, kProduktNr, kAntall), QStringList({QString(), u"Tips"_s, QString()}));
    EXPECT_EQ(summer(), u" 500,00| 125,00| 625,00"_s);
    angre();
    EXPECT_EQ(grid().dataRowCnt(), 1);
    EXPECT_EQ(summer(), u" 200,00| 50,00| 250,00"_s);
}

TEST_F(OrdreAngreTest, ASaveEndsWhatCouldBeTakenBack)
{
    nyOrdre();
    const QString foer = linje(1);
    lagre();
    skjerm()->activateWindow();
    staaI(kProduktNr, 5);
    angre();
    EXPECT_EQ(linje(1), foer);
}

TEST_F(OrdreAngreTest, ALoadEndsIt)
{
    endreOrdre();
    skrivCelle(kAntall, 1, u"9"_s);
    klikk(u"cmdFirst"_s);
    const QString lest = linje(1);
    staaI(kProduktNavn, 1);
    angre();
    EXPECT_EQ(linje(1), lest);
}

} // namespace
