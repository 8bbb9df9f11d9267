#pragma once

#include <QtCore/QString>
#include <QtXml/QDomDocument>

/// Text as Qt's tree of a document. The parsers of Qt 5 and Qt 6 differ: that of Qt 6 takes no
/// control characters, XML 1.1 or foreign encodings, and changes ends of lines. Documents of many
/// years were written and read with that of Qt 5, so that it is the one with both.
namespace KelStd::io {

/// Parses a text that `makeSafeToParse` has let through. False with the reason and the line, from 1,
/// for what is no well-formed XML.
bool parseXml(const QString &text, QDomDocument &document, QString &reason, int &line);

/// The line of an element of a document that was parsed here, from 1: where its first tag ends.
int lineOf(const QDomElement &element);

} // namespace KelStd::io
