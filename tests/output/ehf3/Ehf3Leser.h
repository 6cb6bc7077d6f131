#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QStringList>

#include <vector>

/// An element of a document as Qt's reader finds it. Elements are named as they stand in the file,
/// with their prefix.
struct Element
{
    QString name;
    QString text; ///< of an element without others in it
    QHash<QString, QString> attributes;
    std::vector<Element> children;

    /// Those that a path such as "cac:Item/cbc:Name" leads to, in their order.
    [[nodiscard]] std::vector<const Element *> all(const QString &path) const;
    /// The text of the only one; fails the test when there are more. Empty for none.
    [[nodiscard]] QString at(const QString &path) const;
};

/// The root. Fails the test for what is no XML.
[[nodiscard]] Element readDocument(const QByteArray &bytes);

/// A plain decimal number in ten-thousandths. Fails the test for any other text.
[[nodiscard]] qint64 numberOf(const QString &text);

/// All by which the document's sums, categories and signs do not follow from its own lines, worked
/// out in whole numbers and in a way of its own; empty elements as well.
[[nodiscard]] QStringList faultsOf(const Element &document);
