#pragma once

#include <QByteArray>
#include <QHash>
#include <QImage>
#include <QString>

#include <vector>

namespace report {

/// The pictures of a document, each kept once however often it is shown.
class Pictures
{
public:
    /// The number of the picture in these bytes, in any form that PictureFile.h tells of; -1 when
    /// they are no picture there.
    [[nodiscard]] int fromBytes(const QByteArray &bytes);
    /// The same of a file; a file that is not there is no picture.
    [[nodiscard]] int fromFile(const QString &path);

    [[nodiscard]] const QImage &picture(int number) const { return m_pictures[size_t(number)]; }
    [[nodiscard]] std::vector<QImage> takeAll() { return std::move(m_pictures); }

private:
    int added(QImage picture);

    std::vector<QImage> m_pictures;
    QHash<QByteArray, int> m_byBytes;
    QHash<QString, int> m_byFile;
};

} // namespace report
