#include "shell/component/frmRegningsdel.h"

#include "order/frmOrdre.h"
#include "output/lists/frmOversikt.h"
#include "output/printing/mUtskrift.h"
#include "platform/forms/Forms.h"
#include "platform/forms/OuterRim.h"
#include "platform/forms/OwnPicture.h"
#include "posting/screen/frmBokfor.h"
#include "presentation/options/frmOptions.h"
#include "registers/products/frmProdukt.h"
#include "runtime/RunTimeError.h"
#include "ui_frmRegningsdel.h"

#include <QScreen>

using namespace Qt::StringLiterals;

namespace {

constexpr QSize kKnappebilde{48, 48};
constexpr int kKnappehoyde = 92; // pixels, at least
constexpr int kFraKanten = 4;    // pixels

using Apner = void (*)();

/// Shows the single instance of a screen.
template<class Skjerm>
void apne()
{
    SharedForm<Skjerm>::get().show();
}

/// The posting screen, which prints its journals by the runner of reports.
void apneBokforing()
{
    frmBokfor &skjerm = SharedForm<frmBokfor>::get();
    skjerm.settRapport(SkrivRapport);
    skjerm.show();
}

/// A menu button with its picture and what it opens.
struct Menyknapp
{
    PictureButton *Ui::frmRegningsdel::*knapp;
    QStringView bilde;
    Apner apner;
};

constexpr Menyknapp kKnapper[] = {
    {&Ui::frmRegningsdel::Command2, u"produkt", apne<frmProdukt>},
    {&Ui::frmRegningsdel::Command3, u"ordre", apne<frmOrdre>},
    {&Ui::frmRegningsdel::Command5, u"oversikt", apne<frmOversikt>},
    {&Ui::frmRegningsdel::Command7, u"innstillinger", apne<frmOptions>},
    {&Ui::frmRegningsdel::Command8, u"bokfor", apneBokforing},
};

/// The screens that close with the menu, in this order. The overview, the list printing and a note
/// close on their own.
constexpr QStringView kLukkesMedMenyen[] = {
    u"frmBokfor",  u"frmKalkyle",  u"frmKunder",    u"frmOptions", u"frmOrdre",
    u"frmProdukt", u"frmUtskrift", u"frmInvisible", u"frmDummy",
};

QIcon bilde(QStringView navn, QSize storrelse)
{
    return ownPicture(u":/faktura/%1.svg"_s.arg(navn), storrelse);
}

} // namespace

frmRegningsdel::frmRegningsdel()
    : Skjermbilde({.navn = u"frmRegningsdel"_s, .hjelp = u"html\\intro1.htm"_s}),
      m_ui(std::make_unique<Ui::frmRegningsdel>())
{
    m_ui->setupUi(this);
    m_ui->Picture1->setPicture(bilde(u"regningsdel", m_ui->Picture1->minimumSize()));
    for (const Menyknapp &menyknapp : kKnapper) {
        PictureButton *knapp = m_ui.get()->*menyknapp.knapp;
        knapp->setPicture(bilde(menyknapp.bilde, kKnappebilde), kKnappebilde);
        knapp->setSizePolicy(QSizePolicy::Minimum, QSizePolicy::Fixed);
        knapp->setMinimumHeight(kKnappehoyde);
        onEvent(knapp, &PictureButton::clicked, this, [this, apner = menyknapp.apner] {
            apner();
            // The menu stays within reach above what it has opened.
            bringToFront();
        });
    }
}

frmRegningsdel::~frmRegningsdel() = default;

void frmRegningsdel::onLoad()
{
    Skjermbilde::onLoad();
    QFont skrift(u"Verdana"_s);
    skrift.setPointSizeF(6.0);
    m_ui->Label1->setFont(skrift);
    m_ui->Label1->setText(u"Build "_s + QString::number(FAKTURA_REVISION));

    // In the corner that the screens leave free, since the menu stays above them.
    adjustSize();
    const QRect omraade = screen()->availableGeometry();
    move(omraade.right() - width() - kFraKanten, omraade.top());
}

void frmRegningsdel::onUnload()
{
    for (const QStringView navn : kLukkesMedMenyen) {
        passOver([&] {
            if (Form *skjerm = Forms::byName(navn.toString()))
                skjerm->unload();
        });
    }
}
