#pragma once

#include "platform/report/FormulaText.h"

#include <QByteArray>
#include <QColor>
#include <QXmlStreamReader>

#include <set>

namespace report {

/// Raises kReportFile with "Fak.rpt, linje 12, kolonne 5: why".
[[noreturn]] void raiseInFile(const Place &place, const QString &why);

/// One XML file of a report, read element by element, with the place of each in the text.
class XmlSource
{
public:
    /// `bytes` are UTF-8; kReportFile when they are not.
    XmlSource(const QByteArray &bytes, const QString &file);
    XmlSource(const XmlSource &) = delete;
    XmlSource &operator=(const XmlSource &) = delete;

    /// Steps to the next child of the open element, and opens it; at the end of the open element
    /// closes that and returns false. What is not XML, text between elements and a document type
    /// raise kReportFile.
    [[nodiscard]] bool nextChild();
    /// The text of the open element, which has no children, trimmed; closes the element.
    [[nodiscard]] QString takeText();
    /// Closes the open element, which has nothing in it.
    void expectEmpty();
    /// Behind the root element there is nothing more.
    void expectEnd();

    [[nodiscard]] QString name() const { return m_xml.name().toString(); }
    [[nodiscard]] const Place &place() const { return m_place; }
    [[nodiscard]] QXmlStreamAttributes attributes() const { return m_xml.attributes(); }

private:
    QXmlStreamReader::TokenType read();
    [[nodiscard]] Place placeOf(qsizetype offset) const;

    QString m_file;
    QString m_text;
    QXmlStreamReader m_xml;
    Place m_place; ///< where the element opened last begins
};

/// The attributes of one element, asked for by name. Lengths are millimetres. A value that does not
/// read as what is asked for raises kReportFile with the element's place.
class Attributes
{
public:
    explicit Attributes(const XmlSource &source);
    Attributes(const Attributes &) = delete;
    Attributes &operator=(const Attributes &) = delete;

    [[nodiscard]] const Place &place() const { return m_place; }
    [[nodiscard]] bool has(QStringView name) const;
    [[nodiscard]] QString text(QStringView name, const QString &absent = {});
    [[nodiscard]] QString required(QStringView name);
    /// A number from `least` to `most`.
    [[nodiscard]] double number(QStringView name, double absent, double least, double most);
    [[nodiscard]] double length(QStringView name, double absent = 0);
    [[nodiscard]] double requiredLength(QStringView name);
    [[nodiscard]] bool flag(QStringView name, bool absent = false);
    /// "#rrggbb".
    [[nodiscard]] QRgb color(QStringView name, QRgb absent);
    [[nodiscard]] FormulaText formula(QStringView name);
    /// The number of the word among `words`, the first being the one that stands for an absent one.
    [[nodiscard]] int choice(QStringView name, std::initializer_list<QStringView> words);
    /// Raises for an attribute that nobody has asked for.
    void finish() const;

private:
    [[noreturn]] void raiseValue(QStringView name) const;

    Place m_place;
    QString m_element;
    QXmlStreamAttributes m_attributes;
    std::set<QString> m_asked;
};

} // namespace report
