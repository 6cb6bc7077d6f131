#include "presentation/screens/frmTMsgBox.h"

#include "platform/forms/OuterRim.h"
#include "platform/forms/Twips.h"
#include "ui_frmTMsgBox.h"

#include <QTimer>

using namespace Qt::StringLiterals;

namespace {

constexpr int kTickInterval = 1000; // milliseconds
constexpr qint16 kTicksToLive = 2;
// Twips.
constexpr int kWidestAsDrawn = 1980;
constexpr int kRoomBesideText = 1200;
constexpr int kButtonAboveBottom = 855;

QString pictureKey(qint32 icon)
{
    switch (icon) {
    case -3:
        return u"Sad"_s;
    case -2:
        return u"Smile"_s;
    case -1:
        return u"Check"_s;
    case 16:
        return u"Stop"_s;
    case 32:
        return u"Question"_s;
    case 48:
        return u"Exclamation"_s;
    default:
        return u"Info"_s;
    }
}

} // namespace

frmTMsgBox::frmTMsgBox()
    : Form(u"frmTMsgBox"_s, FormKind::Note), m_ui(std::make_unique<Ui::frmTMsgBox>()),
      m_timer1(new QTimer(this)), m_imageList1(QSize(32, 32))
{
    setWindowFlags(Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint |
                   Qt::WindowSystemMenuHint | Qt::WindowCloseButtonHint);
    m_ui->setupUi(this);
    for (const qint32 icon : {-3, -2, -1, 0, 16, 32, 48}) {
        const QString key = pictureKey(icon);
        m_imageList1.add(key, u":/faktura/"_s + key.toLower() + u".svg"_s);
    }
    setDefaultButton(m_ui->Command1);
    setCancelButton(m_ui->Command1);
    m_timer1->setObjectName(u"Timer1"_s);
    m_timer1->setInterval(kTickInterval);
    onEvent(m_timer1, &QTimer::timeout, this, [this] { tick(); });
    onEvent(m_ui->Command1, &QPushButton::clicked, this, [this] { Command1_Click(); });
}

frmTMsgBox::~frmTMsgBox() = default;

void frmTMsgBox::setIconID(qint32 icon)
{
    if (icon == 0)
        return;
    m_iconID = icon;
    if (isVisible())
        showPicture();
}

void frmTMsgBox::setText(const QString &text)
{
    m_ui->Label1->setText(text);
    m_ui->Label1->adjustSize();
    // Ahead of the activation, too: a window that is on its way to the screen takes no new size.
    makeRoomForText();
    if (isVisible())
        announce(text);
}

void frmTMsgBox::makeRoomForText()
{
    const int textWidth = pixelsToTwips(m_ui->Label1->width());
    if (textWidth > kWidestAsDrawn)
        resize(twipsToPixels(textWidth + kRoomBesideText), height());
}

void frmTMsgBox::hideButton()
{
    m_ui->Command1->setVisible(false);
}

void frmTMsgBox::onLoad()
{
    m_iconID = 0;
}

void frmTMsgBox::onActivate()
{
    m_ticks = 0;
    m_timer1->start();
    makeRoomForText();
    centreOverOwner();
    announce(m_ui->Label1->text());
    showPicture();
}

void frmTMsgBox::onResize()
{
    m_ui->Command1->move((width() - m_ui->Command1->width()) / 2,
                         height() - twipsToPixels(kButtonAboveBottom));
}

void frmTMsgBox::onUnload()
{
    m_timer1->stop();
}

void frmTMsgBox::showPicture()
{
    m_ui->Image1->setPicture(m_imageList1.icon(pictureKey(m_iconID)));
}

void frmTMsgBox::tick()
{
    if (++m_ticks == kTicksToLive)
        Command1_Click();
}

void frmTMsgBox::Command1_Click()
{
    m_timer1->stop();
    unload();
}
