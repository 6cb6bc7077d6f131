#include "platform/report/PdfFaces.h"

#include <QDataStream>
#include <QFontDatabase>
#include <QHash>
#include <QStringEncoder>
#include <QtEndian>

#include <algorithm>
#include <array>
#include <map>
#include <vector>

using namespace Qt::StringLiterals;

namespace report {

namespace {

using Tables = std::map<QByteArray, QByteArray>; // by tag, as a font file has them

constexpr std::array kNeeded = {"cmap", "head", "hhea", "hmtx", "maxp", "name"};
constexpr std::array kKept = {"OS/2", "post", "CFF ", "glyf", "loca", "cvt ", "fpgm"};

/// Each of the first 65,536 characters has its place, so none is searched for (format 10).
QByteArray characterTable(const QRawFont &face)
{
    constexpr int kCharacters = 0x10000;
    constexpr quint16 kTrimmedArray = 10;
    std::vector<QChar> characters(kCharacters);
    for (int code = 0; code < kCharacters; ++code) {
        if (!QChar::isSurrogate(char32_t(code))) // half a character
            characters[size_t(code)] = QChar(quint16(code));
    }
    std::vector<quint32> glyphs(kCharacters);
    int count = kCharacters;
    face.glyphIndexesForChars(characters.data(), kCharacters, glyphs.data(), &count);

    const std::vector<quint16_be> entries(glyphs.begin(), glyphs.end());
    const QByteArray body(reinterpret_cast<const char *>(entries.data()),
                          qsizetype(entries.size() * sizeof(quint16_be)));

    QByteArray head;
    QDataStream out(&head, QIODevice::WriteOnly);
    out << quint16(0) << quint16(1);                // version, subtables
    out << quint16(3) << quint16(1) << quint32(12); // of Unicode, from here
    out << kTrimmedArray << quint16(0) << quint32(20 + body.size()) << quint32(0);
    out << quint32(0) << quint32(kCharacters);
    return head + body;
}

/// The program that sets hinting up for a size: PUSHB 1 1, INSTCTRL, which turns it off. A face
/// that had none at all would be hinted by rules of the toolkit's own.
QByteArray noHinting()
{
    return "\xb1\x01\x01\x8e"_ba;
}

/// The names of a face, of which those that hold its family's are `family` instead.
QByteArray renamed(const QByteArray &names, const QString &family)
{
    constexpr quint16 kMacintosh = 1;
    constexpr std::array<quint16, 4> kOfFamily = {1, 4, 16, 21};
    QDataStream in(names);
    quint16 version = 0;
    quint16 count = 0;
    quint16 start = 0;
    in >> version >> count >> start;
    QByteArray records;
    QByteArray texts;
    QDataStream out(&records, QIODevice::WriteOnly);
    out << quint16(0) << count << quint16(6 + 12 * count);
    for (int record = 0; record < count; ++record) {
        quint16 platform = 0;
        quint16 encoding = 0;
        quint16 language = 0;
        quint16 name = 0;
        quint16 length = 0;
        quint16 offset = 0;
        in >> platform >> encoding >> language >> name >> length >> offset;
        QByteArray text = names.mid(start + offset, length);
        if (std::find(kOfFamily.begin(), kOfFamily.end(), name) != kOfFamily.end()) {
            text = family.toLatin1();
            if (platform != kMacintosh)
                text = QStringEncoder(QStringEncoder::Utf16BE)(family);
        }
        out << platform << encoding << language << name << quint16(text.size())
            << quint16(texts.size());
        texts += text;
    }
    return records + texts;
}

QByteArray fontFile(const Tables &tables)
{
    constexpr quint32 kTrueType = 0x00010000;
    constexpr quint32 kCff = 0x4f54544f; // "OTTO"
    QByteArray file;
    QDataStream out(&file, QIODevice::WriteOnly);
    out << (tables.contains("CFF ") ? kCff : kTrueType);
    out << quint16(tables.size()) << quint16(0) << quint16(0) << quint16(0); // for a quick search
    auto offset = quint32(12 + 16 * tables.size());
    const auto whole = [](const QByteArray &table) { return (table.size() + 3) & ~3; };
    for (const auto &[tag, table] : tables) {
        out.writeRawData(tag.constData(), 4);
        out << quint32(0) << offset << quint32(table.size()); // without a checksum
        offset += quint32(whole(table));
    }
    for (const auto &[tag, table] : tables)
        file += table + QByteArray(whole(table) - table.size(), '\0');
    return file;
}

QString unusedFamily()
{
    const QStringList used = QFontDatabase::families();
    int number = 1;
    while (used.contains(u"Regningsdel %1"_s.arg(number)))
        ++number;
    return u"Regningsdel %1"_s.arg(number);
}

/// The family under which the toolkit knows what is made of a face; none when nothing can be.
QString addedFamily(const QRawFont &face)
{
    Tables tables;
    for (const char *tag : kNeeded) {
        tables[tag] = face.fontTable(tag);
        if (tables[tag].isEmpty())
            return {};
    }
    for (const char *tag : kKept) {
        if (const QByteArray table = face.fontTable(tag); !table.isEmpty())
            tables[tag] = table;
    }
    const bool hasOutlines = tables.contains("glyf") || tables.contains("CFF ");
    if (!hasOutlines || !face.fontTable("fvar").isEmpty())
        return {};
    tables["cmap"] = characterTable(face);
    tables["name"] = renamed(tables["name"], unusedFamily());
    if (tables.contains("glyf"))
        tables["prep"] = noHinting();
    const int added = QFontDatabase::addApplicationFontFromData(fontFile(tables));
    return added < 0 ? QString() : QFontDatabase::applicationFontFamilies(added).value(0);
}

} // namespace

std::optional<QRawFont> quickFace(const QRawFont &face, double pixelSize)
{
    static QHash<QString, QString> families;
    const QString key = face.familyName() + u'/' + face.styleName();
    auto family = families.constFind(key);
    if (family == families.constEnd())
        family = families.insert(key, addedFamily(face));
    if (family->isEmpty())
        return {};
    QFont font(*family);
    font.setWeight(QFont::Weight(face.weight()));
    font.setStyle(face.style());
    font.setPixelSize(int(pixelSize));
    font.setHintingPreference(QFont::PreferNoHinting);
    QRawFont quick = QRawFont::fromFont(font);
    if (quick.familyName() != *family) { // a parent has removed all fonts that were added
        families.erase(family);
        return {};
    }
    return quick;
}

} // namespace report
