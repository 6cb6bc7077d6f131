#include "host/guide/ScreenGuide.h"
#include "host/parent/ParentTables.h"
#include "host/tasks/Component.h"
#include "host/tasks/Database.h"
#include "host/tasks/Tour.h"
#include "host/tour/stops/Stops.h"
#include "support/Rows.h"
#include "support/SettingsFolder.h"

#include <QApplication>
#include <QPointer>

#include <gtest/gtest.h>

using namespace Qt::StringLiterals;

namespace {

/// The host's own way of starting the module, with its windows.
class FirstOrderTest : public ::testing::Test
{
protected:
    FirstOrderTest()
    {
        QApplication::setQuitOnLastWindowClosed(false);
        options.aar = 2014;
    }

    /// The products of the lines that were stored last.
    [[nodiscard]] QStringList lastProducts() const
    {
        return rowsOf(place.connectionString, u"SELECT ProduktNr FROM OrdreLinjer ORDER BY ID"_s)
            .last(orderedProducts.size());
    }

    /// What the tour orders.
    const QStringList orderedProducts{u"T100"_s, u"M200"_s, u"F510"_s};
    SettingsFolder settings;
    QTemporaryDir folder;
    const database::Place place = database::locate(folder.filePath(u"firma.db"_s));
    Options options;
    const tour::Say silent = [](const QString &) {};
    Component component{QStringLiteral(FAKTURA_FILE)};
};

TEST_F(FirstOrderTest, ANewCompanysFirstOrderKeepsItsLines)
{
    tour::makeDemo(component, place, options, silent);
    screentour::Guide guide(folder.path(), silent);
    ASSERT_NO_THROW(screentour::visitOrders(guide));
    EXPECT_EQ(lastProducts(), orderedProducts);
}

TEST_F(FirstOrderTest, TheFirstOrderAfterTheFirstPostingKeepsItsLines)
{
    tour::run(component, place, options, silent);
    screentour::Guide guide(folder.path(), silent);
    ASSERT_NO_THROW(screentour::visitPosting(guide));
    ASSERT_NO_THROW(screentour::visitOrders(guide));
    EXPECT_EQ(lastProducts(), orderedProducts);
}

TEST_F(FirstOrderTest, TablesThatAreThereNeedNoSecondStart)
{
    tour::makeDemo(component, place, options, silent);
    component.unload();
    tour::startModule(component, place, options, silent);
    const QPointer<QWidget> menu = &screentour::Guide::window(u"frmRegningsdel"_s);
    tour::startModule(component, place, options, silent);
    EXPECT_TRUE(menu) << "the screens are those of the first start";
}

} // namespace
