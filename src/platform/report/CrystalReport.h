#pragma once

#include "platform/report/Checkpoint.h"
#include "platform/report/ReportOutput.h"

#include <QString>

#include <array>
#include <memory>

/// The report control: a caller names a report file, a data source, a selection and formulas, and
/// runs it into a window or to the printer. The properties may be set in any order; nothing is read
/// before run(). Every run reads the report file and the data afresh. Tests read back what a caller
/// has set.
class CrystalReport
{
public:
    enum class Destination : short { Window = 0, Printer = 1 };

    static constexpr int kFormulas = 10;

    /// Where reports go; not owned, and it must outlive the control or be replaced before it goes.
    /// Stays through reset(). Without one run() and printReport() raise kOutput.
    void setOutput(report::ReportOutput *output) { m_output = output; }
    [[nodiscard]] report::ReportOutput *output() const { return m_output; }

    /// All properties as in a new control; the shown report is let go of, its window stays.
    void reset();

    /// Path of the report file, in the module's form with backslashes or in the system's.
    void setReportFileName(const QString &path) { m_properties.reportFileName = path; }
    [[nodiscard]] const QString &reportFileName() const { return m_properties.reportFileName; }

    /// A connection string such as "dsn=…; DSQ=". Keywords that name nothing known are passed over.
    void setConnect(const QString &text) { m_properties.connect = text; }
    [[nodiscard]] const QString &connect() const { return m_properties.connect; }

    /// Which rows the report is about, in the selection language; empty for all of the file's own.
    void setSelectionFormula(const QString &text) { m_properties.selection = text; }
    [[nodiscard]] const QString &selectionFormula() const { return m_properties.selection; }

    /// "Name=expression" replaces the file's formula of that name for the runs to come; the empty
    /// text replaces none. `index` from 0 to kFormulas - 1; error 5 for another one.
    void setFormula(int index, const QString &text);
    [[nodiscard]] const QString &formula(int index) const;

    void setDestination(Destination to) { m_properties.destination = to; }
    [[nodiscard]] Destination destination() const { return m_properties.destination; }

    /// The window of the runs to come; pixels.
    void setWindowLeft(int left) { m_properties.window.left = left; }
    void setWindowWidth(int width) { m_properties.window.width = width; }
    void setWindowHeight(int height) { m_properties.window.height = height; }
    void setWindowState(report::WindowState state) { m_properties.window.state = state; }
    /// Native handle; 0 for none.
    void setWindowParentHandle(quintptr handle) { m_properties.window.parent = handle; }
    /// A window of its own for each report. On in a new control.
    void setOwnWindow(bool on) { m_properties.window.ownWindow = on; }
    /// Page buttons, zoom, print and search in the window. On in a new control.
    void setWindowControls(bool on) { m_properties.window.controls = on; }
    [[nodiscard]] const report::WindowSettings &window() const { return m_properties.window; }
    /// Shows data saved with a report instead of reading them. Off in a new control; on, run()
    /// raises kNoData, since no report file here holds data.
    void setSavedData(bool on) { m_properties.savedData = on; }

    /// Lays the report out, past the checkpoint, and shows or prints it. Raises a number of
    /// report::errors; nothing is shown then. A checkpoint that sees the end of the control raises.
    void run(const report::Checkpoint &checkpoint = {});
    /// Page zoom in per cent of the report shown by the last run. kOutput when there is none.
    void pageZoom(int percent);
    /// Brings the report shown by the last run to the front. kOutput when there is none.
    void windowInFront();
    /// Prints the report of the last run, without reading anything again. kOutput when there is
    /// none.
    void printReport();

    /// The report of the last run; null before it and after reset().
    [[nodiscard]] std::shared_ptr<const report::Document> document() const { return m_document; }

private:
    struct Properties
    {
        QString reportFileName;
        QString connect;
        QString selection;
        std::array<QString, kFormulas> formulas;
        Destination destination = Destination::Window;
        report::WindowSettings window;
        bool savedData = false;
    };

    report::ReportOutput &shownOn() const;

    report::ReportOutput *m_output = nullptr;
    Properties m_properties;
    std::shared_ptr<const report::Document> m_document;
};
