#pragma once

#include "benchmarks/works/Work.h"
#include "platform/forms/Forms.h"

/// Works on the module's screens, shown on no screen. The program has an Application.
namespace bench {

/// Lets all that is pending run.
void settle();
/// Closes every window of the module.
void closeScreens();

/// Shows the single instance of a screen, which reads and paints itself.
template<class Screen>
void openScreen()
{
    SharedForm<Screen>::get().show();
    settle();
}
template<class Screen>
void closeScreen()
{
    if (Screen *open = SharedForm<Screen>::existing())
        open->unload();
    settle();
}
/// A button that cannot be pressed ends the program.
void press(const Form &screen, const char *button);
template<class Screen>
void clickOn(const char *button)
{
    press(*SharedForm<Screen>::existing(), button);
}

/// Opens a screen, which has been closed before.
template<class Screen>
[[nodiscard]] Work opening(const char *name)
{
    return {
        .name = name, .unit = "window", .run = openScreen<Screen>, .prepare = closeScreen<Screen>};
}

/// The list of customers that the order screen lets the user pick from.
[[nodiscard]] Work customerList();
/// The overview of all orders.
[[nodiscard]] Work overview();
/// The product register.
[[nodiscard]] Work productRegister();
/// The order screen, which reads all orders.
[[nodiscard]] Work orderScreen();
/// From order to order, from the first one on; without the painting that follows.
[[nodiscard]] Work nextOrder();
/// The first order shown again; without the painting.
[[nodiscard]] Work firstOrder();
/// The first order saved as it stands, from the click to the note that tells of it.
[[nodiscard]] Work savedOrder();
/// A grid like the overview's, sorted by its amounts.
[[nodiscard]] Work sortedGrid(int rows);

} // namespace bench
