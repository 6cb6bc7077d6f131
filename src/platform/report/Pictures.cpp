#include "platform/report/Pictures.h"

#include <QFile>

namespace report {

int Pictures::fromBytes(const QByteArray &bytes)
{
    const auto known = m_byBytes.constFind(bytes);
    if (known != m_byBytes.constEnd())
        return *known;
    QImage picture = QImage::fromData(bytes);
    int number = -1;
    if (!picture.isNull()) {
        number = static_cast<int>(m_pictures.size());
        m_pictures.push_back(std::move(picture));
    }
    m_byBytes.insert(bytes, number);
    return number;
}

int Pictures::fromFile(const QString &path)
{
    const auto known = m_byFile.constFind(path);
    if (known != m_byFile.constEnd())
        return *known;
    QFile file(path);
    const int number = file.open(QIODevice::ReadOnly) ? fromBytes(file.readAll()) : -1;
    m_byFile.insert(path, number);
    return number;
}

} // namespace report
