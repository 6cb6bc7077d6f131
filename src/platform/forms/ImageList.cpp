#include "platform/forms/ImageList.h"

#include "runtime/RunTimeError.h"

#include <QCoreApplication>
#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace {

constexpr int kInvalidPicture = 481;
constexpr int kIndexOutOfBounds = 35600;
constexpr int kElementNotFound = 35601;
constexpr int kKeyNotUnique = 35602;
constexpr int kHighestPixelRatio = 3;

/// A picture of the program's own, in one size.
struct OwnPicture
{
    QString file;
    QSize size;

    friend bool operator==(const OwnPicture &, const OwnPicture &) = default;
    friend size_t qHash(const OwnPicture &picture, size_t seed)
    {
        return qHashMulti(seed, picture.file, picture.size.width(), picture.size.height());
    }
};

QHash<OwnPicture, QIcon> ownIcons;

/// The icons go ahead of the application object.
QIcon &ownIcon(const OwnPicture &picture)
{
    constexpr auto atTheEnd = [] { ownIcons.clear(); };
    if (ownIcons.isEmpty()) {
        qRemovePostRoutine(atTheEnd);
        qAddPostRoutine(atTheEnd);
    }
    return ownIcons[picture];
}

} // namespace

void ImageList::add(const QString &key, const QString &file)
{
    QFile source(file);
    if (!source.open(QIODevice::ReadOnly))
        throw RunTimeError(errors::kFileNotFound);
    const QByteArray bytes = source.readAll();
    Picture picture{key, file, {}, {}, {}};
    const bool isSvg = bytes.trimmed().startsWith('<');
    if (isSvg)
        picture.svg = bytes;
    if (isSvg ? !QSvgRenderer(bytes).isValid() : !picture.image.loadFromData(bytes))
        throw RunTimeError(kInvalidPicture);
    if (!key.isEmpty() &&
        std::ranges::any_of(m_pictures, [&](const Picture &other) { return other.key == key; }))
        throw RunTimeError(kKeyNotUnique, u"Nøkkelen finnes fra før i samlingen"_s);
    m_pictures.push_back(std::move(picture));
}

QPixmap ImageList::picture(int index, qreal pixelRatio) const
{
    const Picture &picture = at(index);
    QPixmap pixmap((QSizeF(m_size) * pixelRatio).toSize());
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    if (picture.image.isNull()) {
        QSvgRenderer renderer(picture.svg);
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(&painter, QRectF(pixmap.rect()));
    } else {
        const QImage scaled =
            picture.image.scaled(pixmap.size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
        QRect place = scaled.rect();
        place.moveCenter(pixmap.rect().center());
        painter.drawImage(place, scaled);
    }
    painter.end();
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

QPixmap ImageList::picture(const QString &key, qreal pixelRatio) const
{
    return picture(indexOf(key), pixelRatio);
}

QIcon ImageList::icon(int index) const
{
    const Picture &known = at(index);
    const bool isOwn = known.file.startsWith(u':');
    QIcon &icon = isOwn ? ownIcon({known.file, m_size}) : known.icon;
    if (icon.isNull()) {
        for (int ratio = 1; ratio <= kHighestPixelRatio; ++ratio)
            icon.addPixmap(picture(index, ratio));
    }
    return icon;
}

QIcon ImageList::icon(const QString &key) const
{
    return icon(indexOf(key));
}

const ImageList::Picture &ImageList::at(int index) const
{
    if (index < 1 || index > count())
        throw RunTimeError(kIndexOutOfBounds, u"Indeksen er utenfor samlingen"_s);
    return m_pictures[size_t(index - 1)];
}

int ImageList::indexOf(const QString &key) const
{
    const auto found = std::ranges::find(m_pictures, key, &Picture::key);
    if (key.isEmpty() || found == m_pictures.end())
        throw RunTimeError(kElementNotFound, u"Fant ikke elementet i samlingen"_s);
    return int(found - m_pictures.begin()) + 1;
}
