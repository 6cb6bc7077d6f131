#include "platform/forms/OwnPicture.h"

#include <QApplication>
#include <QHash>
#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <QStyle>
#include <QStyleOption>
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

QHash<Wanted, QIcon> icons;

/// The icons go ahead of the application object.
void clearAtTheEnd()
{
    constexpr auto clear = [] { icons.clear(); };
    qRemovePostRoutine(clear);
    qAddPostRoutine(clear);
}

QPixmap drawnIn(const QString &file, QSize pixels)
{
    QPixmap pixmap(pixels);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    if (file.endsWith(u".svg")) {
        QSvgRenderer renderer(file);
        renderer.setAspectRatioMode(Qt::KeepAspectRatio);
        renderer.render(&painter, QRectF(pixmap.rect()));
    } else {
        const QImage scaled =
            QImage(file).scaled(pixels, Qt::KeepAspectRatio, Qt::SmoothTransformation);
        QRect place = scaled.rect();
        place.moveCenter(pixmap.rect().center());
        painter.drawImage(place, scaled);
    }
    painter.end();
    return pixmap;
}

/// Draws the picture when it is shown, in the pixels that it takes there, and keeps what it drew.
class OwnPictureEngine final : public QIconEngine
{
public:
    explicit OwnPictureEngine(Wanted wanted) : m_wanted(std::move(wanted)) {}

    QPixmap pixmap(const QSize &room, QIcon::Mode mode, QIcon::State /*state*/) override
    {
        const QSize most = m_wanted.size * kHighestPixelRatio;
        const QSize pixels = m_wanted.size.scaled(room.boundedTo(most), Qt::KeepAspectRatio);
        if (pixels.isEmpty())
            return {};
        QPixmap &drawn = m_drawn[pixels.width()];
        if (drawn.isNull())
            drawn = drawnIn(m_wanted.file, pixels);
        if (mode == QIcon::Normal)
            return drawn;
        QStyleOption option;
        option.palette = QGuiApplication::palette();
        return QApplication::style()->generatedIconPixmap(mode, drawn, &option);
    }

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override
    {
        const QSize room = rect.size() * painter->device()->devicePixelRatio();
        painter->drawPixmap(rect, pixmap(room, mode, state));
    }

    QList<QSize> availableSizes(QIcon::Mode /*mode*/, QIcon::State /*state*/) override
    {
        QList<QSize> sizes;
        for (int ratio = 1; ratio <= kHighestPixelRatio; ++ratio)
            sizes += m_wanted.size * ratio;
        return sizes;
    }

    QIconEngine *clone() const override { return new OwnPictureEngine(m_wanted); }

private:
    const Wanted m_wanted;
    QHash<int, QPixmap> m_drawn; ///< by width: the proportions are always the same
};

} // namespace

QIcon ownPicture(const QString &file, QSize size)
{
    if (icons.isEmpty())
        clearAtTheEnd();
    const Wanted wanted{file, size};
    QIcon &icon = icons[wanted];
    if (icon.isNull())
        icon = QIcon(new OwnPictureEngine(wanted));
    return icon;
}
