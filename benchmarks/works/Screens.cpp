#include "benchmarks/works/Screens.h"

#include "benchmarks/works/GridRows.h"
#include "order/frmOrdre.h"
#include "output/lists/frmOversikt.h"
#include "platform/grid/fpSpread.h"
#include "presentation/spread/mVASpread.h"
#include "registers/customers/frmKunder.h"
#include "registers/products/frmProdukt.h"
#include "tests/support/StandingClock.h"

#include <QAbstractButton>
#include <QCoreApplication>
#include <QEvent>

#include <memory>

namespace bench {

namespace {

/// The order screen with its first order, if it is not open already.
void openFirstOrder()
{
    if (!SharedForm<frmOrdre>::existing()) {
        openScreen<frmOrdre>();
        clickOn<frmOrdre>("cmdFirst");
    }
    settle();
}

} // namespace

void settle()
{
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    QCoreApplication::processEvents();
}

void closeScreens()
{
    for (const QPointer<Form> &form : Forms::loaded()) {
        if (form)
            form->unload();
    }
    settle();
}

void press(const Form &screen, const char *button)
{
    auto *found = screen.findChild<QAbstractButton *>(QLatin1StringView(button));
    if (!found || !found->isEnabled())
        qFatal("%s cannot be pressed", button);
    found->click();
}

Work customerList()
{
    return opening<frmKunder>("customers");
}

Work overview()
{
    return opening<frmOversikt>("overview");
}

Work productRegister()
{
    return opening<frmProdukt>("register");
}

Work orderScreen()
{
    return opening<frmOrdre>("orders");
}

Work nextOrder()
{
    return {.name = "next",
            .unit = "move",
            .run = [] { clickOn<frmOrdre>("cmdNext"); },
            .prepare = openFirstOrder};
}

Work firstOrder()
{
    return {.name = "first",
            .unit = "move",
            .run = [] { clickOn<frmOrdre>("cmdFirst"); },
            .prepare = openFirstOrder};
}

Work savedOrder()
{
    return {.name = "save",
            .unit = "order",
            .run =
                [] {
                    const StandingClock clock; // for the second in which the user is told
                    clickOn<frmOrdre>("btnSave");
                },
            .prepare =
                [] {
                    openFirstOrder();
                    clickOn<frmOrdre>("btnChange");
                }};
}

Work sortedGrid(int rows)
{
    const auto grid = std::make_shared<fpSpread>();
    grid->setMaxCols(kGridCols);
    grid->setRedraw(false);
    return {.name = "sort",
            .unit = "grid",
            .run = [grid] { SpreadSort(*grid, kAmountCol, true); },
            .prepare =
                [grid, rows] {
                    SpreadClear(*grid);
                    grid->setRedraw(false);
                    for (int row = 1; row <= rows; ++row)
                        SpreadAddRow(*grid, gridRow(row));
                }};
}

} // namespace bench
