#include "presentation/screens/Skjerm.h"

#include "platform/forms/Form.h"
#include "platform/forms/Forms.h"
#include "platform/forms/ModalDialog.h"
#include "platform/forms/OuterRim.h"
#include "platform/forms/SendKey.h"
#include "platform/forms/Twips.h"
#include "platform/help/HtmlHelp.h"
#include "presentation/screens/frmInvisible.h"
#include "runtime/Conversions.h"
#include "shell/settings/clsRegSettings.h"
#include "state/SharedState.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QFontInfo>
#include <QFontMetrics>
#include <QLabel>
#include <QLayout>
#include <QPushButton>
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString kMapper = u"Regningsdel\\Mapper"_s;

constexpr int kStripehoyde = 46;      // pixels
constexpr int kVanligLinje = 18;      // pixels
constexpr int kHjelpebildeside = 360; // twips
constexpr int kPekerside = 32;
constexpr QPoint kPekerspiss{11, 2};
constexpr int kPlassVedPost = 320;       // twips
constexpr double kVanligeBokstaver = 12; // pixels, nine points

QString seksjonFor(const Form &form)
{
    return u"Regningsdel\\Forms\\"_s + trimBlanks(form.objectName());
}

QString desimaltekst(qint32 tall)
{
    return trimBlanks(numberToText(tall));
}

} // namespace

void LagreSkjermPlass(const Form &form)
{
    if (form.state() == FormState::Minimised)
        return;
    const auto lagre = [seksjon = seksjonFor(form)](const QString &nokkel, int twips) {
        passOver([&] { gReg->SaveSetting(seksjon, nokkel, desimaltekst(twips)); });
    };
    const QRect plass = form.place();
    lagre(u"FLeft"_s, plass.left());
    lagre(u"FTop"_s, plass.top());
    lagre(u"FWidth"_s, plass.width());
    lagre(u"FHeight"_s, plass.height());
}

void HentSkjermPlass(Form &form, qint32 standardTopp, qint32 standardVenstre, qint32 standardBredde,
                     qint32 standardHoyde)
{
    const auto lagret = [seksjon = seksjonFor(form)](const QString &nokkel, qint32 standard) {
        qint32 twips = 0;
        passOver([&] {
            twips =
                toLong(leadingNumber(gReg->GetSetting(seksjon, nokkel, desimaltekst(standard))));
        });
        return twips;
    };
    const QSize tegnet(standardBredde, standardHoyde);
    const QSize rom = roomFor(form) * pixelsToTwips(1);
    const QSize standard = MedBokstavene(form, tegnet).boundedTo(rom).expandedTo(tegnet);
    const qint32 venstre = lagret(u"FLeft"_s, standardVenstre);
    const qint32 topp = lagret(u"FTop"_s, standardTopp);
    const qint32 bredde = lagret(u"FWidth"_s, standard.width());
    const qint32 hoyde = lagret(u"FHeight"_s, standard.height());
    form.setPlace(venstre, topp, bredde, hoyde);
}

QSize MedBokstavene(const QWidget &kontroll, QSize tegnet)
{
    return tegnet * std::max(1.0, QFontInfo(kontroll.font()).pixelSize() / kVanligeBokstaver);
}

bool HarStoreBokstaver(const QWidget &kontroll)
{
    return QFontInfo(kontroll.font()).pixelSize() > kVanligeBokstaver;
}

// As a URL, for the settings have no room for letters beyond their code page.

void LagreMappe(const QString &filslag, const QString &mappe)
{
    passOver([&] {
        gReg->SaveSetting(kMapper, filslag,
                          QUrl::fromLocalFile(mappe).toString(QUrl::FullyEncoded));
    });
}

QString HentMappe(const QString &filslag)
{
    QString lagret;
    passOver([&] { lagret = gReg->GetSetting(kMapper, filslag, {}); });
    return QUrl(lagret.remove(QChar(u'\0'))).toLocalFile();
}

int BreddeFor(const QWidget &kontroll, QStringView tekst, int ved)
{
    return std::max(kontroll.minimumWidth(),
                    kontroll.fontMetrics().horizontalAdvance(tekst.toString()) + ved);
}

void LikeKnapper(const QWidget &skjerm, QSize minst)
{
    for (QPushButton *knapp : skjerm.findChildren<QPushButton *>())
        knapp->setMinimumSize(minst);
}

void TilpassOverskrift(const Form &form, QWidget &stripe, const QLabel &tekst)
{
    // Before a window is first seen its strips have not been told of their places yet.
    stripe.layout()->setGeometry(stripe.rect());
    const QMargins marger = stripe.layout()->contentsMargins();
    const int rundt = marger.top() + marger.bottom();
    int hoyde = kStripehoyde;
    if (tekst.fontMetrics().lineSpacing() > kVanligLinje)
        hoyde = std::clamp(tekst.heightForWidth(tekst.width()) + rundt, kStripehoyde,
                           std::max(kStripehoyde, form.height() / 3));
    stripe.setFixedHeight(hoyde);
}

void VisHjelpBilde(Form &form)
{
    auto *imgF1 = form.findChild<Image *>(u"imgF1"_s);
    if (!imgF1)
        return;
    const int side = twipsToPixels(kHjelpebildeside);
    imgF1->setFixedSize(side, side);
    imgF1->setAccessibleName(u"Hjelp"_s);
    imgF1->setToolTip(u" Vis hjelp for dette skjermbildet (F1)"_s);
    onEvent(imgF1, &Image::clicked, &form, [] { sendKey(Qt::Key_F1); });
    passOver([&] {
        auto &skjult = SharedForm<frmInvisible>::get();
        skjult.load();
        imgF1->setPicture(skjult.Image1->picture());
        const QPixmap peker = skjult.imgURL->picture().pixmap(QSize(kPekerside, kPekerside),
                                                              form.devicePixelRatioF());
        imgF1->setCursor(QCursor(peker, kPekerspiss.x(), kPekerspiss.y()));
    });
}

void VisHjelp(const QString &emne)
{
    passOver([&] {
        gHelpTopic = emne;
        HtmlHelpA(nullptr, gHelpFile, HH_DISPLAY_TOPIC, gHelpTopic);
    });
}

bool ErFormLastet(const QString &navn)
{
    return Forms::byName(navn) != nullptr;
}

void SettListeBredde(QComboBox &liste, qint32 &bredde)
{
    if (bredde <= 0) {
        QString lengste;
        for (int i = 0; i < liste.count(); ++i) {
            if (liste.itemText(i).size() > lengste.size())
                lengste = liste.itemText(i);
        }
        const QFontMetrics maal(liste.window()->font());
        bredde = twipsToPixels(pixelsToTwips(maal.horizontalAdvance(lengste)) + kPlassVedPost);
    }
    liste.view()->setMinimumWidth(bredde);
}
