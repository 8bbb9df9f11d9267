#pragma once

#include <KelStd/catalogue/CatalogueFailure.h>

#include <QtCore/QByteArray>
#include <QtCore/QString>

#include <optional>

namespace KelStd::catalogue {

/// What a source is by its looks.
enum class SourceForm
{
    Code,      ///< "EPSG:28992", "EPSG:28992+5773", "28992"
    Urn,       ///< "urn:ogc:def:crs:EPSG::28992"
    Name,      ///< "Amersfoort / RD New"
    Wkt,       ///< any WKT
    ProjJson,  ///< a JSON object
    ProjString ///< "+proj=..."
};

struct SourceText
{
    SourceForm form = SourceForm::Name;
    QByteArray text; ///< UTF-8 without a byte-order mark and without blanks around it
    QString label;   ///< what to call it in a report
};

/// Decodes a source and finds out its form. Nothing, with the reason in `failure` (when given),
/// where it is empty, too long, nested too deep, no text, or a PROJ string that is refused by its
/// words alone.
std::optional<SourceText> sourceText(const QByteArray &source, CatalogueFailure *failure);

} // namespace KelStd::catalogue
