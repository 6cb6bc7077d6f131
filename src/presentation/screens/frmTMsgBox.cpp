#include "presentation/screens/frmTMsgBox.h"

#include "platform/forms/OuterRim.h"
#include "platform/forms/OwnPicture.h"
#include "platform/forms/Twips.h"
#include "ui_frmTMsgBox.h"

#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr int kTikkintervall = 1000; // milliseconds
constexpr qint16 kLevetid = 2;
// Twips.
constexpr int kBredesteTegnet = 1980;
constexpr int kPlassVedTekst = 1200;
constexpr int kKnappOverBunnen = 855;

QStringView bildenavn(qint32 ikon)
{
    switch (ikon) {
    case -3:
        return u"sad";
    case -2:
        return u"smile";
    case -1:
        return u"check";
    case 16:
        return u"stop";
    case 32:
        return u"question";
    case 48:
        return u"exclamation";
    default:
        return u"info";
    }
}

} // namespace

frmTMsgBox::frmTMsgBox()
    : Form(u"frmTMsgBox"_s, FormKind::Note), m_ui(std::make_unique<Ui::frmTMsgBox>()),
      m_timer1(new QTimer(this))
{
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    m_ui->setupUi(this);
    setDefaultButton(m_ui->Command1);
    setCancelButton(m_ui->Command1);
    m_timer1->setObjectName(u"Timer1"_s);
    m_timer1->setInterval(kTikkintervall);
    onEvent(m_timer1, &QTimer::timeout, this, [this] { tikk(); });
    onEvent(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
}

frmTMsgBox::~frmTMsgBox() = default;

void frmTMsgBox::setIconID(qint32 ikon)
{
    if (ikon == 0)
        return;
    m_iconID = ikon;
    if (isVisible())
        visBilde();
}

void frmTMsgBox::settTekst(const QString &tekst)
{
    m_ui->Label1->setText(tekst);
    m_ui->Label1->adjustSize();
    // Ahead of the activation, too: a window that is on its way to the screen takes no new size.
    gjorPlassTilTekst();
    if (isVisible())
        announce(tekst);
}

void frmTMsgBox::gjorPlassTilTekst()
{
    const int tekstbredde = pixelsToTwips(m_ui->Label1->width());
    if (tekstbredde > kBredesteTegnet)
        resize(twipsToPixels(tekstbredde + kPlassVedTekst), height());
}

void frmTMsgBox::skjulKnapp()
{
    m_ui->Command1->setVisible(false);
}

void frmTMsgBox::onLoad()
{
    m_iconID = 0;
}

void frmTMsgBox::onActivate()
{
    m_tikk = 0;
    m_timer1->start();
    gjorPlassTilTekst();
    centreOverOwner();
    announce(m_ui->Label1->text());
    visBilde();
}

void frmTMsgBox::onResize()
{
    m_ui->Command1->move((width() - m_ui->Command1->width()) / 2,
                         height() - twipsToPixels(kKnappOverBunnen));
}

void frmTMsgBox::onUnload()
{
    m_timer1->stop();
}

void frmTMsgBox::visBilde()
{
    m_ui->Image1->setPicture(ownPicture(u":/faktura/%1.svg"_s.arg(bildenavn(m_iconID)), {32, 32}));
}

void frmTMsgBox::tikk()
{
    if (++m_tikk == kLevetid)
        Command1_Click();
}

void frmTMsgBox::Command1_Click()
{
    m_timer1->stop();
    unload();
}
