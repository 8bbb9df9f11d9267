#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::test {

/// An element as another XML reader (Qt's stream reader) sees it.
struct XmlElement
{
    QString name;
    QMap<QString, QString> attributes;
    QString text; ///< all the text directly inside, white space included
    QList<XmlElement> children;

    QStringList childNames() const;
    /// The first child called `name`; a missing one fails the test and gives an empty element.
    XmlElement child(const char *childName) const;
    /// The children called `name`.
    QList<XmlElement> all(const char *childName) const;
    /// The value of an attribute; a missing one fails the test.
    QString attribute(const char *attributeName) const;
};

/// The root of a document; one that is not well-formed fails the test.
XmlElement parsed(const QByteArray &document);

/// The document with the attributes of each tag in alphabetical order, and the two numbers that an
/// ellipsoid has as attributes in one form of 17 digits: the order and that form are free.
QByteArray withSortedAttributes(const QByteArray &document);

} // namespace KelStd::test
