#pragma once

#include <QtCore/QByteArray>

#include <initializer_list>
#include <optional>
#include <vector>

/// A WKT taken apart, for what PROJ does not tell of it.
namespace KelStd::catalogue {

/// A text or a number of a node.
struct WktValue
{
    QByteArray text; ///< without quotation marks
    int begin = 0;   ///< its first byte in the WKT, quotation marks included
    int end = 0;     ///< behind its last one
};

/// KEYWORD[value,value,NODE[...],...].
struct WktNode
{
    QByteArray keyword; ///< in capital letters
    std::vector<WktValue> values;
    std::vector<WktNode> nodes;
    int begin = 0; ///< its first byte in the WKT
    int end = 0;   ///< behind its closing bracket

    /// The text of its first value; empty where it has none.
    QByteArray name() const { return values.empty() ? QByteArray() : values.front().text; }
    /// The first child with one of these keywords; null where there is none.
    const WktNode *child(std::initializer_list<const char *> keywords) const;
    bool is(std::initializer_list<const char *> keywords) const;
};

/// A node without a keyword that has the text's first one below it, and the second of ESRI's
/// compound systems, PROJCS[...],VERTCS[...]. Something may stand behind its end. Nothing where
/// brackets or quotation marks do not close. The text must not nest deeper than
/// `Catalogue::maxSourceDepth`.
std::optional<WktNode> wktTree(const QByteArray &wkt);

/// The first node with one of these keywords, the root included, in the order of the text; null
/// where there is none.
const WktNode *findNode(const WktNode &root, std::initializer_list<const char *> keywords);

/// A name as WKT compares them: small letters and digits alone, so that "False_Easting" is
/// "false easting".
QByteArray plainName(const QByteArray &name);

} // namespace KelStd::catalogue
