#include "support/TestApplication.h"
#include "ui_frmProve.h"

#include <memory>

using namespace Qt::StringLiterals;

namespace {

/// A screen as the module writes them: a class and a design file.
class frmProve : public RecordingForm
{
public:
    frmProve() : RecordingForm(u"frmProve"_s), m_ui(std::make_unique<Ui::frmProve>())
    {
        m_ui->setupUi(this);
    }

private:
    std::unique_ptr<Ui::frmProve> m_ui;
};

class FormDesign : public FormsFixture
{
};

} // namespace

TEST_F(FormDesign, AFormTakesItsControlsFromADesignFile)
{
    auto *form = new frmProve;
    form->show();
    EXPECT_EQ(form->objectName(), u"frmProve"_s);
    EXPECT_EQ(form->windowTitle(), u"Prøve"_s);
    const auto *strip = form->findChild<TabStrip *>(u"tbsProve"_s);
    ASSERT_NE(strip, nullptr);
    EXPECT_EQ(strip->selected(), 1);
    EXPECT_EQ(strip->widget(1)->objectName(), u"Group20"_s);
    EXPECT_EQ(strip->tabToolTip(0), u"Innstillinger for bruk av KID"_s);
    EXPECT_NE(form->findChild<DTPicker *>(u"dtpFakDato"_s), nullptr);
    EXPECT_NE(form->findChild<PictureButton *>(u"Command2"_s), nullptr);
}
