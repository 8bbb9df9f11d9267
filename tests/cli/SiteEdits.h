#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QPair>
#include <QtCore/QString>

/// Edits that make sites of the test data's documents, for `editedSystem`.
namespace KelStd::test {

inline QString text(const char *latin1)
{
    return QString::fromLatin1(latin1);
}

/// What makes a document's record of a function, with values for its parameters.
inline QMap<QString, QString> edits(const char *record, const char *attribute, const char *function,
                                    const QList<QPair<QString, QString>> &values)
{
    const QString start = text("<%1 ver=\"1\" %2=\"").arg(text(record), text(attribute));
    QMap<QString, QString> all{{start + text("None\""), start + text(function) + text("\"")}};
    static const QMap<QString, QString> attributes = {
        {text("north_translate"), text("unit=\"Meter\" valType=\"Distance\"")},
        {text("east_translate"), text("unit=\"Meter\" valType=\"Distance\"")},
        {text("rotate_angle"), text("unit=\"Second\" valType=\"Angle\"")}};
    for (const auto &value : values) {
        const QString opened =
            text("<%1 ver=\"1\" %2 isDictionary=\"false\">")
                .arg(value.first,
                     attributes.value(value.first, text("unit=\"None\" valType=\"Double\"")));
        all.insert(opened + text("0<"), opened + value.second + text("<"));
    }
    return all;
}

/// A quarter turn: easting 1000 and northing 2000 at Amersfoort, where the plane has 155000 and
/// 463000; E' = N - 462000, N' = 157000 - E, H' = H + 0.5.
inline QMap<QString, QString> quarterTurn(const char *ratio = "1")
{
    auto all = edits("Plane_Transform", "fuction", "Four",
                     {{text("north_translate"), text("157000")},
                      {text("east_translate"), text("-462000")},
                      {text("rotate_angle"), text("324000")},
                      {text("ratio"), text(ratio)}});
    const auto fitting =
        edits("Elevation_Fitting", "function", "Fixed", {{text("a"), text("0.5")}});
    for (auto each = fitting.begin(); each != fitting.end(); ++each)
        all.insert(each.key(), each.value());
    return all;
}

} // namespace KelStd::test
