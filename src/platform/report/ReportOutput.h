#pragma once

#include "platform/report/Document.h"

#include <QtGlobal>

#include <memory>

namespace report {

enum class WindowState { Normal = 0, Minimized = 1, Maximized = 2 };

/// How the window that shows a report is placed and equipped.
struct WindowSettings
{
    bool ownWindow = true; ///< a window of its own, not a child of the screen in front
    int left = 0;          ///< pixels, as the others
    int width = 0;         ///< 0 leaves it to the window
    int height = 0;
    WindowState state = WindowState::Normal;
    quintptr parent = 0;  ///< native handle of the parent window; 0 for none
    bool controls = true; ///< page buttons, zoom, print and search are there
};

/// The way from the report control to windows and printers, which the engine itself knows nothing
/// of. An implementation reports a failure as RunTimeError.
class ReportOutput
{
public:
    virtual ~ReportOutput() = default;

    /// Shows the report in a new window and returns at once; the window shares the document.
    virtual void show(std::shared_ptr<const Document> document, const WindowSettings &window) = 0;
    /// Page zoom in per cent of the window shown last; 100 is the paper's own size.
    virtual void setZoom(int percent) = 0;
    /// Brings the window shown last to the front.
    virtual void bringToFront() = 0;
    /// Prints all pages on the printer in force.
    virtual void print(const Document &document) = 0;
};

} // namespace report
