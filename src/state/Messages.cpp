#include "state/Messages.h"

#include <utility>

namespace messages {

namespace {
Box gBox;
} // namespace

void setBox(Box box)
{
    gBox = std::move(box);
}

void show(const QString &text, int style)
{
    if (gBox)
        gBox(text, style);
}

} // namespace messages
