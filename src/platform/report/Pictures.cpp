#include "platform/report/Pictures.h"

#include "platform/pictures/PictureFile.h"
#include "runtime/RunTimeError.h"

namespace report {

int Pictures::fromBytes(const QByteArray &bytes)
{
    const auto known = m_byBytes.constFind(bytes);
    return known != m_byBytes.constEnd() ? *known
                                         : *m_byBytes.insert(bytes, added(pictureFromBytes(bytes)));
}

int Pictures::fromFile(const QString &path)
{
    const auto known = m_byFile.constFind(path);
    if (known != m_byFile.constEnd())
        return *known;
    QImage picture;
    passOver([&] { picture = loadPicture(path); });
    return *m_byFile.insert(path, added(std::move(picture)));
}

int Pictures::added(QImage picture)
{
    if (picture.isNull())
        return -1;
    m_pictures.push_back(std::move(picture));
    return int(m_pictures.size()) - 1;
}

} // namespace report
