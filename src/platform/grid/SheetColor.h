#pragma once

#include <QtGlobal>

/// A colour of the grid: red in the lowest byte, then green, then blue; or a system colour.
using SheetColor = quint32;

inline constexpr SheetColor kSystemColor = 0x80000000;

/// Each part from 0 to 255.
[[nodiscard]] constexpr SheetColor sheetColor(quint32 red, quint32 green, quint32 blue)
{
    return red | green << 8 | blue << 16;
}

/// The system colour of that number: 5 window background, 8 window text, 15 button face.
[[nodiscard]] constexpr SheetColor systemColor(quint32 number)
{
    return kSystemColor | number;
}

inline constexpr SheetColor kBlack = sheetColor(0, 0, 0);
inline constexpr SheetColor kWhite = sheetColor(255, 255, 255);
inline constexpr SheetColor kWindowBackground = systemColor(5);
inline constexpr SheetColor kWindowText = systemColor(8);
inline constexpr SheetColor kButtonFace = systemColor(15);
