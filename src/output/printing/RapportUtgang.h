#pragma once

#include "platform/report/ReportOutput.h"

#include <QPointer>

#include <memory>
#include <vector>

class Forhandsvisning;

/// Where the module's reports go: into preview windows and to printers. A report whose window is
/// minimised has none that anyone could see; only its pages are kept, until they are printed.
class RapportUtgang final : public report::ReportOutput
{
public:
    [[nodiscard]] static RapportUtgang &felles();

    void show(std::shared_ptr<const report::Document> dokument,
              const report::WindowSettings &vinduvalg) override;
    void setZoom(int prosent) override;
    void bringToFront() override;
    /// To the printer in force, see skrivUt. kOutput when it refuses.
    void print(const report::Document &dokument) override;

    /// The open preview windows, the one that was opened last at the end.
    [[nodiscard]] std::vector<QPointer<Forhandsvisning>> vinduer() const;
    /// Deletes all preview windows, as the end of the component does. A window closes by itself
    /// when the user closes it.
    void lukkAlle();

private:
    RapportUtgang() = default;

    std::vector<QPointer<Forhandsvisning>> m_vinduer;
    QPointer<Forhandsvisning> m_siste; ///< null while the report shown last is out of sight
    std::shared_ptr<const report::Document> m_usett;
};
