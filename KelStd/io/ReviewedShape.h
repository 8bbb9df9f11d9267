#pragma once

#include <KelStd/io/ReviewFindings.h>

#include <QtCore/QStringList>

/// What of an element is none of the format, whatever the element is.
namespace KelStd::io {

/// What an element has in the format.
struct Shape
{
    QStringList attributes;
    QStringList single;   ///< children of which one is read
    QStringList repeated; ///< children of which each is read
    bool hasText = false;
};

/// The names of the attributes in their alphabet's order, as a document has them in none. Of very
/// many only some: Qt finds the last of them by passing over all the others.
QStringList attributeNames(const QDomElement &element);

/// Compares an element with its shape: attributes and children that are none of it, second ones,
/// texts where none is read.
void reviewShape(const QDomElement &element, const Shape &shape, ReviewFindings &findings);

/// The version of an element that is passed over, or refused, without it.
bool reviewVersion(const QDomElement &element, ReviewFindings &findings);

/// An attribute whose absence leaves a parameter without what it needs.
void reviewPresence(const QDomElement &element, const QString &attribute, const QString &understood,
                    ReviewFindings &findings);

/// A number that stands in an attribute.
void reviewNumber(const QDomElement &element, const QString &attribute, ReviewFindings &findings);

} // namespace KelStd::io
