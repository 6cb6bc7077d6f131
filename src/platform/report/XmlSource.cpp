#include "platform/report/XmlSource.h"

#include "platform/report/ReportError.h"

#include <QStringDecoder>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace report {

namespace {

constexpr double kLongest = 2000; // mm

QString decoded(const QByteArray &bytes, const QString &file)
{
    QStringDecoder decoder(QStringDecoder::Utf8);
    QString text = decoder.decode(bytes);
    if (decoder.hasError())
        raiseInFile({file, 1, 1}, u"filen er ikke skrevet i UTF-8"_s);
    return text;
}

} // namespace

void raiseInFile(const Place &place, const QString &why)
{
    raiseAt(place, why, errors::kReportFile);
}

XmlSource::XmlSource(const QByteArray &bytes, const QString &file)
    : m_file(file), m_text(decoded(bytes, file)), m_xml(m_text), m_place{file, 1, 1}
{
}

Place XmlSource::placeOf(qsizetype offset) const
{
    const QStringView before =
        QStringView(m_text).first(std::clamp<qsizetype>(offset, 0, m_text.size()));
    const qsizetype lineStart = before.lastIndexOf(u'\n') + 1;
    return {m_file, int(before.count(u'\n')) + 1, int(before.size() - lineStart) + 1};
}

QXmlStreamReader::TokenType XmlSource::read()
{
    const auto before = qsizetype(m_xml.characterOffset());
    const auto token = m_xml.readNext();
    const auto after = qsizetype(m_xml.characterOffset());
    if (m_xml.hasError())
        raiseInFile(placeOf(after), u"filen er ikke velformet XML"_s);
    if (token == QXmlStreamReader::StartElement)
        m_place = placeOf(m_text.lastIndexOf(u'<', after - 1));
    if (token == QXmlStreamReader::DTD)
        raiseInFile(placeOf(m_text.lastIndexOf(u'<', before)),
                    u"en dokumenttype hører ikke hjemme her"_s);
    if (token == QXmlStreamReader::Characters && !m_xml.isWhitespace())
        raiseInFile(placeOf(before), u"tekst hører ikke hjemme her"_s);
    return token;
}

bool XmlSource::nextChild()
{
    for (;;) {
        switch (read()) {
        case QXmlStreamReader::StartElement:
            return true;
        case QXmlStreamReader::EndElement:
        case QXmlStreamReader::EndDocument:
            return false;
        default:
            break;
        }
    }
}

QString XmlSource::takeText()
{
    const QString text = m_xml.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement);
    if (m_xml.hasError())
        raiseInFile(m_place, u"<%1> skal bare inneholde tekst"_s.arg(name()));
    return text.trimmed();
}

void XmlSource::expectEmpty()
{
    const QString parent = name();
    if (nextChild())
        raiseInFile(m_place, u"<%1> hører ikke hjemme i <%2>"_s.arg(name(), parent));
}

void XmlSource::expectEnd()
{
    while (nextChild()) {
    }
}

Attributes::Attributes(const XmlSource &source)
    : m_place(source.place()), m_element(source.name()), m_attributes(source.attributes())
{
}

void Attributes::raiseValue(QStringView name) const
{
    raiseInFile(m_place, u"<%1> har ikke noen gyldig verdi for «%2»"_s.arg(m_element, name));
}

bool Attributes::has(QStringView name) const
{
    return m_attributes.hasAttribute(name.toString());
}

QString Attributes::text(QStringView name, const QString &absent)
{
    m_asked.insert(name.toString());
    return has(name) ? m_attributes.value(name.toString()).toString() : absent;
}

QString Attributes::required(QStringView name)
{
    QString value = text(name);
    if (value.isEmpty())
        raiseInFile(m_place, u"<%1> mangler «%2»"_s.arg(m_element, name));
    return value;
}

double Attributes::number(QStringView name, double absent, double least, double most)
{
    const QString value = text(name);
    if (!has(name))
        return absent;
    bool read = false;
    const double number = value.toDouble(&read);
    if (!read || !std::isfinite(number) || number < least || number > most)
        raiseValue(name);
    return number;
}

double Attributes::length(QStringView name, double absent)
{
    return number(name, absent, 0, kLongest);
}

double Attributes::requiredLength(QStringView name)
{
    if (!has(name))
        raiseInFile(m_place, u"<%1> mangler «%2»"_s.arg(m_element, name));
    return length(name);
}

bool Attributes::flag(QStringView name, bool absent)
{
    const QString value = text(name);
    if (!has(name))
        return absent;
    if (value != u"yes" && value != u"no")
        raiseValue(name);
    return value == u"yes";
}

QRgb Attributes::color(QStringView name, QRgb absent)
{
    const QString value = text(name);
    if (!has(name))
        return absent;
    bool read = false;
    const uint rgb = QStringView(value).mid(1).toUInt(&read, 16);
    if (!read || value.size() != 7 || value.front() != u'#' || value[1] == u'+')
        raiseValue(name);
    return 0xff000000 | rgb;
}

FormulaText Attributes::formula(QStringView name)
{
    const QString value = text(name);
    if (!has(name))
        return {};
    return readFormula(value, m_place, name.toString());
}

int Attributes::choice(QStringView name, std::initializer_list<QStringView> words)
{
    const QString value = text(name);
    if (!has(name))
        return 0;
    int number = 0;
    for (const QStringView word : words) {
        if (word == value)
            return number;
        ++number;
    }
    raiseValue(name);
}

void Attributes::finish() const
{
    for (const QXmlStreamAttribute &attribute : m_attributes) {
        const QString name = attribute.qualifiedName().toString();
        if (m_asked.count(name) == 0)
            raiseInFile(m_place, u"<%1> har ikke noe «%2»"_s.arg(m_element, name));
    }
}

} // namespace report
