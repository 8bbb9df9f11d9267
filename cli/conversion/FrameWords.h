#pragma once

#include <cli/terminal/Values.h>

#include <KelStd/positions/InputForm.h>

#include <QtCore/QString>

namespace KelStd::cli {

/// "wgs84-llh, wgs84-xyz": the frames of positions, by the names that --from takes.
QString frameNames(const QString &separator);

/// "longitude [deg], latitude [deg], height [m]"
QString componentLabels(const positions::InputForm &form);

/// The frames with their components.
QList<Proposal> frameProposals(const TypedLine &line);

} // namespace KelStd::cli
