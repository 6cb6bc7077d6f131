#pragma once

#include "platform/grid/fpSpread.h"

#include <QApplication>
#include <QVBoxLayout>
#include <QWidget>

namespace bench {

/// Shows a bare window of that size with a bare grid in it, which `fill` fills, and lets it paint
/// itself; what a screen with a list costs at the least.
template<class Fill>
void showBareGrid(QSize size, Fill fill)
{
    QWidget window;
    auto *layout = new QVBoxLayout(&window);
    auto *grid = new fpSpread;
    layout->addWidget(grid);
    grid->setRedraw(false);
    fill(*grid);
    grid->setRedraw(true);
    window.resize(size);
    window.show();
    QApplication::processEvents();
}

} // namespace bench
