#include "presentation/screens/Timeglass.h"

#include <QApplication>

#include <gtest/gtest.h>

namespace {

bool timeglassStaar()
{
    const QCursor *peker = QApplication::overrideCursor();
    return peker && peker->shape() == Qt::WaitCursor;
}

} // namespace

TEST(Timeglass, StandsUntilTheLastOneIsTurnedBack)
{
    EXPECT_FALSE(timeglassStaar());
    {
        const Timeglass ytre;
        EXPECT_TRUE(timeglassStaar());
        Timeglass indre;
        indre.fjern();
        indre.fjern();
        EXPECT_TRUE(timeglassStaar());
    }
    EXPECT_FALSE(timeglassStaar());
}
