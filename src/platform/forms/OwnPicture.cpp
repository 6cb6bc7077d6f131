#include "platform/forms/OwnPicture.h"

#include <QCoreApplication>
#include <QHash>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>

namespace {

constexpr int kHighestPixelRatio = 3;

struct Wanted
{
    QString file;
    QSize size;

    friend bool operator==(const Wanted &, const Wanted &) = default;
    friend size_t qHash(const Wanted &wanted, size_t seed)
    {
        return qHashMulti(seed, wanted.file, wanted.size.width(), wanted.size.height());
    }
};

QHash<Wanted, QIcon> drawn;

/// The icons go ahead of the application object.
void clearAtTheEnd()
{
    constexpr auto clear = [] { drawn.clear(); };
    qRemovePostRoutine(clear);
    qAddPostRoutine(clear);
}

QPixmap pixmapOf(const Wanted &wanted, int pixelRatio)
{
    QPixmap pixmap(wanted.size * pixelRatio);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    if (wanted.file.endsWith(u".svg")) {
        QSvgRenderer renderer(wanted.file);
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(&painter, QRectF(pixmap.rect()));
    } else {
        const QImage scaled =
            QImage(wanted.file)
                .scaled(pixmap.size(), Qt::KeepAspectRatio, Qt::SmoothTransformation);
        QRect place = scaled.rect();
        place.moveCenter(pixmap.rect().center());
        painter.drawImage(place, scaled);
    }
    painter.end();
    pixmap.setDevicePixelRatio(pixelRatio);
    return pixmap;
}

} // namespace

QIcon ownPicture(const QString &file, QSize size)
{
    if (drawn.isEmpty())
        clearAtTheEnd();
    const Wanted wanted{file, size};
    QIcon &icon = drawn[wanted];
    if (icon.isNull()) {
        for (int ratio = 1; ratio <= kHighestPixelRatio; ++ratio)
            icon.addPixmap(pixmapOf(wanted, ratio));
    }
    return icon;
}
