#pragma once

#include <KelStd/catalogue/CarriedShift.h>
#include <KelStd/catalogue/CatalogueWords.h>
#include <KelStd/catalogue/ProjSession.h>
#include <KelStd/catalogue/Similarity.h>
#include <KelStd/catalogue/SystemList.h>

#include <QtCore/QStringList>

#include <optional>

namespace KelStd::catalogue {

/// The system of a source, taken apart.
struct SourceSystem
{
    QString source;
    FoundSystem system;                  ///< name, code, kind and area as far as they are known
    proj::ProjObject projected;          ///< null where it has none
    proj::ProjObject geodetic;           ///< what the projected system lies on
    proj::ProjObject likelyGeodetic;     ///< what a text may lie on that names no datum; else null
    proj::ProjObject vertical;           ///< of a compound system; else null
    double verticalShift = 0.0;          ///< a text's own, in the unit of its heights
    std::optional<Similarity> textShift; ///< a text's own "TOWGS84"
    /// A text's own operation of another kind, which has to be one of the database.
    std::optional<CarriedShift> textOperation;
    bool isText = false; ///< a definition, and none of the database's own
    QStringList warnings;
};

/// Finds or reads the system of a source. Nothing, with the reason in `failure` (when given), where
/// there is none or it cannot be told which. Messages name what helps by `words`.
std::optional<SourceSystem> sourceSystem(ProjSession &session, SystemList &list,
                                         const QByteArray &source, const CatalogueWords &words,
                                         CatalogueFailure *failure);

} // namespace KelStd::catalogue
