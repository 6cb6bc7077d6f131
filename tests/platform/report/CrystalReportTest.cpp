#include "platform/report/CrystalReport.h"

#include "platform/report/Support.h"
#include "runtime/Paths.h"

namespace report::test {

namespace {

/// Takes down what it is asked for.
class RecordedOutput : public ReportOutput
{
public:
    void show(std::shared_ptr<const Document> document, const WindowSettings &settings) override
    {
        shown = std::move(document);
        window = settings;
        calls += u"show"_s;
    }
    void setZoom(int percent) override { calls += u"zoom %1"_s.arg(percent); }
    void bringToFront() override { calls += u"front"_s; }
    void print(const Document &document) override
    {
        calls += u"print %1"_s.arg(document.pages.size());
    }

    std::shared_ptr<const Document> shown;
    WindowSettings window;
    QStringList calls;
};

class CrystalReportTest : public ReportTest
{
protected:
    CrystalReportTest()
    {
        addOrder(1001, 1);
        addOrder(1002, 2);
        m_file = written(u"Liste.rpt"_s, lineReport(R"(<formula name="Type">'a'</formula>
<detail height="5"><text x="0" y="0" width="50" height="5"
value="{OrdreLinjer.ProduktNavn} &amp; {@Type}"/></detail>)"));
        m_report.setOutput(&m_output);
    }
    void prepare()
    {
        m_report.setReportFileName(paths::toModule(m_file));
        m_report.setConnect(dsn() + u"; DSQ="_s);
    }
    int errorOfRun()
    {
        try {
            m_report.run();
        } catch (const RunTimeError &error) {
            return error.number();
        }
        return 0;
    }

    QString m_file;
    RecordedOutput m_output;
    CrystalReport m_report;
};

} // namespace

TEST_F(CrystalReportTest, ShowsInAWindow)
{
    prepare();
    m_report.setSelectionFormula(u"{Ordre.OrdreNr}=1002"_s);
    m_report.setFormula(1, u"Type='b'"_s);
    m_report.setWindowLeft(0);
    m_report.setWindowWidth(900);
    m_report.setWindowHeight(700);
    m_report.setWindowState(WindowState::Normal);
    m_report.run();
    m_report.pageZoom(100);
    m_report.windowInFront();
    EXPECT_EQ(m_output.calls, (QStringList{u"show"_s, u"zoom 100"_s, u"front"_s}));
    EXPECT_EQ(m_output.window.width, 900);
    EXPECT_EQ(m_output.window.height, 700);
    EXPECT_TRUE(m_output.window.ownWindow);
    EXPECT_EQ(textsOf(m_output.shown->pages[0]), (QStringList{u"Vare 1b"_s, u"Vare 2b"_s}));
    EXPECT_EQ(m_report.document(), m_output.shown);
}

TEST_F(CrystalReportTest, PrintsWhatIsShownWithoutReadingAgain)
{
    prepare();
    m_report.run();
    run({u"DELETE FROM OrdreLinjer"_s});
    m_report.setDestination(CrystalReport::Destination::Printer);
    m_report.printReport();
    EXPECT_EQ(m_output.calls, (QStringList{u"show"_s, u"print 1"_s}));
}

TEST_F(CrystalReportTest, PrintsAtOnceToThePrinter)
{
    prepare();
    m_report.setDestination(CrystalReport::Destination::Printer);
    m_report.run();
    EXPECT_EQ(m_output.calls, QStringList{u"print 1"_s});
}

TEST_F(CrystalReportTest, ResetForgetsAllButTheOutput)
{
    prepare();
    m_report.setSelectionFormula(u"{Ordre.OrdreNr}=1"_s);
    m_report.setFormula(0, u"Type='b'"_s);
    m_report.setDestination(CrystalReport::Destination::Printer);
    m_report.setWindowWidth(900);
    m_report.setOwnWindow(false);
    m_report.reset();
    EXPECT_EQ(m_report.reportFileName(), QString());
    EXPECT_EQ(m_report.connect(), QString());
    EXPECT_EQ(m_report.selectionFormula(), QString());
    EXPECT_EQ(m_report.formula(0), QString());
    EXPECT_EQ(m_report.destination(), CrystalReport::Destination::Window);
    EXPECT_EQ(m_report.window().width, 0);
    EXPECT_TRUE(m_report.window().ownWindow);
    EXPECT_EQ(m_report.document(), nullptr);
    EXPECT_EQ(errorOfRun(), errors::kFileNotFound);
}

TEST_F(CrystalReportTest, AFailedRunShowsNothing)
{
    prepare();
    m_report.run();
    m_report.setSelectionFormula(u"{Ordre.OrdreNr}=1"_s);
    EXPECT_EQ(errorOfRun(), errors::kNoData);
    EXPECT_EQ(m_output.calls, QStringList{u"show"_s});
    EXPECT_THROW(m_report.printReport(), RunTimeError);
    EXPECT_THROW(m_report.pageZoom(100), RunTimeError);
    EXPECT_THROW(m_report.windowInFront(), RunTimeError);
}

TEST_F(CrystalReportTest, WithoutAnOutputNothingRuns)
{
    prepare();
    m_report.setOutput(nullptr);
    EXPECT_EQ(errorOfRun(), errors::kOutput);
}

TEST_F(CrystalReportTest, HasTenFormulas)
{
    m_report.setFormula(9, u"x=1"_s);
    EXPECT_EQ(m_report.formula(9), u"x=1"_s);
    EXPECT_THROW(m_report.setFormula(10, {}), RunTimeError);
    EXPECT_THROW(m_report.setFormula(-1, {}), RunTimeError);
}

TEST_F(CrystalReportTest, HasNoSavedData)
{
    prepare();
    m_report.setSavedData(true);
    EXPECT_EQ(errorOfRun(), errors::kNoData);
}

} // namespace report::test
