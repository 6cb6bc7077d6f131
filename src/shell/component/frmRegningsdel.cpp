#include "shell/component/frmRegningsdel.h"

#include "order/frmOrdre.h"
#include "output/lists/frmOversikt.h"
#include "output/printing/mUtskrift.h"
#include "platform/forms/Forms.h"
#include "platform/forms/ImageList.h"
#include "platform/forms/OuterRim.h"
#include "posting/screen/frmBokfor.h"
#include "presentation/options/frmOptions.h"
#include "registers/products/frmProdukt.h"
#include "runtime/RunTimeError.h"
#include "ui_frmRegningsdel.h"

#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kButtonPicture{48, 48};
constexpr int kFromEdge = 4; // pixels

using Opener = void (*)();

/// Shows the single instance of a screen.
template<class Screen>
void open()
{
    SharedForm<Screen>::get().show();
}

/// The posting screen, which prints its journals by the runner of reports.
void openPosting()
{
    frmBokfor &screen = SharedForm<frmBokfor>::get();
    screen.setRapport(SkrivRapport);
    screen.show();
}

/// A menu button with its picture and what it opens.
struct MenuButton
{
    PictureButton *Ui::frmRegningsdel::*button;
    QStringView picture;
    Opener opener;
};

constexpr MenuButton kButtons[] = {
    {&Ui::frmRegningsdel::Command2, u"produkt", open<frmProdukt>},
    {&Ui::frmRegningsdel::Command3, u"ordre", open<frmOrdre>},
    {&Ui::frmRegningsdel::Command5, u"oversikt", open<frmOversikt>},
    {&Ui::frmRegningsdel::Command7, u"innstillinger", open<frmOptions>},
    {&Ui::frmRegningsdel::Command8, u"bokfor", openPosting},
};

/// The screens that close with the menu, in this order. The overview, the list printing and a note
/// close on their own.
constexpr QStringView kClosedWithMenu[] = {
    u"frmBokfor",  u"frmKalkyle",  u"frmKunder",    u"frmOptions", u"frmOrdre",
    u"frmProdukt", u"frmUtskrift", u"frmInvisible", u"frmDummy",
};

QIcon picture(QStringView name, QSize size)
{
    ImageList list(size);
    list.add({}, u":/faktura/%1.svg"_s.arg(name));
    return list.icon(1);
}

} // namespace

frmRegningsdel::frmRegningsdel()
    : Skjermbilde({.navn = u"frmRegningsdel"_s, .hjelp = u"html\\intro1.htm"_s}),
      m_ui(std::make_unique<Ui::frmRegningsdel>())
{
    m_ui->setupUi(this);
    m_ui->Picture1->setPicture(picture(u"regningsdel", m_ui->Picture1->minimumSize()));
    for (const MenuButton &entry : kButtons) {
        PictureButton *button = m_ui.get()->*entry.button;
        button->setPicture(picture(entry.picture, kButtonPicture), kButtonPicture);
        onEvent(button, &PictureButton::clicked, this, [this, opener = entry.opener] {
            opener();
            // The menu stays within reach above what it has opened.
            bringToFront();
        });
    }
}

frmRegningsdel::~frmRegningsdel() = default;

void frmRegningsdel::onLoad()
{
    Skjermbilde::onLoad();
    QFont font(u"Verdana"_s);
    font.setPointSizeF(6.0);
    m_ui->Label1->setFont(font);
    m_ui->Label1->setText(u"Build "_s + QString::number(FAKTURA_REVISION));

    // In the corner that the screens leave free, since the menu stays above them.
    adjustSize();
    const QRect area = screen()->availableGeometry();
    move(area.right() - width() - kFromEdge, area.top());
}

void frmRegningsdel::onUnload()
{
    for (const QStringView name : kClosedWithMenu) {
        passOver([&] {
            if (Form *form = Forms::byName(name.toString()))
                form->unload();
        });
    }
}
