#pragma once

#include <QIcon>
#include <QImage>
#include <QPixmap>
#include <QSize>
#include <QString>

#include <vector>

/// A list of pictures of one size, found by their key or by their index from 1 in the order in
/// which they were added. Pictures from SVG files are drawn for the resolution of the screen, so
/// they are crisp at any scale; those from other files should hold three pixels to the
/// device-independent one.
class ImageList
{
public:
    /// `size` in device-independent pixels, such as 32 by 32. A picture of other proportions is
    /// centred in it.
    explicit ImageList(QSize size) : m_size(size) {}

    /// Adds a picture; `key` may be empty. `file` is a file or resource path. Error 53 when it
    /// cannot be read, 481 when it is no picture, 35602 when the key is taken.
    void add(const QString &key, const QString &file);

    [[nodiscard]] int count() const { return int(m_pictures.size()); }
    [[nodiscard]] QSize size() const { return m_size; }

    /// The picture for a screen of `pixelRatio` pixels to the device-independent pixel. Keys are
    /// compared case-sensitively. Error 35600 for an index outside 1 to `count`, 35601 for an
    /// unknown key.
    [[nodiscard]] QPixmap picture(int index, qreal pixelRatio = 1) const;
    [[nodiscard]] QPixmap picture(const QString &key, qreal pixelRatio = 1) const;

    /// The same pictures as icons, which hold them for pixel ratios 1, 2 and 3. One that is asked
    /// for again is the same one: what is drawn of it for a button is kept by Qt for each icon. Of
    /// a resource there is one icon of each size for all lists.
    [[nodiscard]] QIcon icon(int index) const;
    [[nodiscard]] QIcon icon(const QString &key) const;

private:
    struct Picture
    {
        QString key;
        QString file;
        QByteArray svg;
        QImage image;       ///< instead, where the file is no SVG picture
        mutable QIcon icon; ///< drawn when it is first asked for
    };

    [[nodiscard]] const Picture &at(int index) const;
    [[nodiscard]] int indexOf(const QString &key) const;

    QSize m_size;
    std::vector<Picture> m_pictures;
};
