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
#include <QUrl>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

const QString kFolders = u"Regningsdel\\Mapper"_s;

constexpr int kStripHeight = 46;      // pixels
constexpr int kCommonLine = 18;       // pixels
constexpr int kHelpPictureSide = 360; // twips
constexpr int kPointerSide = 32;
constexpr QPoint kPointerTip{11, 2};
constexpr int kRoomBesideEntry = 320; // twips
constexpr double kCommonLetters = 12; // pixels, nine points

QString sectionOf(const Form &form)
{
    return u"Regningsdel\\Forms\\"_s + trimBlanks(form.objectName());
}

QString decimalText(qint32 number)
{
    return trimBlanks(numberToText(number));
}

} // namespace

void LagreSkjermPlass(const Form &form)
{
    if (form.state() == FormState::Minimised)
        return;
    const auto store = [section = sectionOf(form)](const QString &key, int twips) {
        passOver([&] { gReg->SaveSetting(section, key, decimalText(twips)); });
    };
    const QRect place = form.place();
    store(u"FLeft"_s, place.left());
    store(u"FTop"_s, place.top());
    store(u"FWidth"_s, place.width());
    store(u"FHeight"_s, place.height());
}

void HentSkjermPlass(Form &form, qint32 defaultTop, qint32 defaultLeft, qint32 defaultWidth,
                     qint32 defaultHeight)
{
    const auto stored = [section = sectionOf(form)](const QString &key, qint32 standard) {
        qint32 twips = 0;
        passOver([&] {
            twips = toLong(leadingNumber(gReg->GetSetting(section, key, decimalText(standard))));
        });
        return twips;
    };
    const QSize drawn(defaultWidth, defaultHeight);
    const QSize room = roomFor(form) * pixelsToTwips(1);
    const QSize standard = MedBokstavene(form, drawn).boundedTo(room).expandedTo(drawn);
    const qint32 left = stored(u"FLeft"_s, defaultLeft);
    const qint32 top = stored(u"FTop"_s, defaultTop);
    const qint32 width = stored(u"FWidth"_s, standard.width());
    const qint32 height = stored(u"FHeight"_s, standard.height());
    form.setPlace(left, top, width, height);
}

QSize MedBokstavene(const QWidget &widget, QSize drawn)
{
    return drawn * std::max(1.0, QFontInfo(widget.font()).pixelSize() / kCommonLetters);
}

bool HarStoreBokstaver(const QWidget &widget)
{
    return QFontInfo(widget.font()).pixelSize() > kCommonLetters;
}

// As a URL, for the settings have no room for letters beyond their code page.

void LagreMappe(const QString &fileKind, const QString &folder)
{
    passOver([&] {
        gReg->SaveSetting(kFolders, fileKind,
                          QUrl::fromLocalFile(folder).toString(QUrl::FullyEncoded));
    });
}

QString HentMappe(const QString &fileKind)
{
    QString stored;
    passOver([&] { stored = gReg->GetSetting(kFolders, fileKind, {}); });
    return QUrl(stored.remove(QChar(u'\0'))).toLocalFile();
}

int BreddeFor(const QWidget &control, QStringView text, int beside)
{
    return std::max(control.minimumWidth(),
                    control.fontMetrics().horizontalAdvance(text.toString()) + beside);
}

void TilpassOverskrift(const Form &form, QWidget &strip, const QLabel &text)
{
    // Before a window is first seen its strips have not been told of their places yet.
    strip.layout()->setGeometry(strip.rect());
    const QMargins margins = strip.layout()->contentsMargins();
    const int around = margins.top() + margins.bottom();
    int height = kStripHeight;
    if (text.fontMetrics().lineSpacing() > kCommonLine)
        height = std::clamp(text.heightForWidth(text.width()) + around, kStripHeight,
                            std::max(kStripHeight, form.height() / 3));
    strip.setFixedHeight(height);
}

void VisHjelpBilde(Form &form)
{
    auto *imgF1 = form.findChild<Image *>(u"imgF1"_s);
    if (!imgF1)
        return;
    const int side = twipsToPixels(kHelpPictureSide);
    imgF1->setFixedSize(side, side);
    imgF1->setAccessibleName(u"Hjelp"_s);
    imgF1->setToolTip(u" Vis hjelp for dette skjermbildet (F1)"_s);
    onEvent(imgF1, &Image::clicked, &form, [] { sendKey(Qt::Key_F1); });
    passOver([&] {
        auto &pictures = SharedForm<frmInvisible>::get();
        pictures.load();
        imgF1->setPicture(pictures.Image1->picture());
        const QPixmap pointer = pictures.imgURL->picture().pixmap(QSize(kPointerSide, kPointerSide),
                                                                  form.devicePixelRatioF());
        imgF1->setCursor(QCursor(pointer, kPointerTip.x(), kPointerTip.y()));
    });
}

void VisHjelp(const QString &topic)
{
    passOver([&] {
        gHelpTopic = topic;
        HtmlHelpA(nullptr, gHelpFile, HH_DISPLAY_TOPIC, gHelpTopic);
    });
}

bool ErFormLastet(const QString &name)
{
    return Forms::byName(name) != nullptr;
}

void SettListeBredde(QComboBox &list, qint32 &width)
{
    if (width <= 0) {
        QString longest;
        for (int i = 0; i < list.count(); ++i) {
            if (list.itemText(i).size() > longest.size())
                longest = list.itemText(i);
        }
        const QFontMetrics metrics(list.window()->font());
        width = twipsToPixels(pixelsToTwips(metrics.horizontalAdvance(longest)) + kRoomBesideEntry);
    }
    list.view()->setMinimumWidth(width);
}
