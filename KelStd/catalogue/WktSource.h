#pragma once

#include <KelStd/catalogue/CatalogueFailure.h>
#include <KelStd/catalogue/ProjSession.h>

#include <QtCore/QByteArray>

namespace KelStd::catalogue {

/// What PROJ makes of a WKT. Null, with the reason in `failure` (when given), where it cannot read
/// it.
proj::ProjObject readWkt(const ProjSession &session, const QByteArray &text,
                         CatalogueFailure *failure);

/// PROJ's own WKT 2 of an object; empty where it cannot write it.
QByteArray wktOf(const ProjSession &session, const PJ *object);

} // namespace KelStd::catalogue
