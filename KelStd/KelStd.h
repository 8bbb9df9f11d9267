#pragma once

/// Every public header of KelStd.

#include <KelStd/Failure.h>
#include <KelStd/coord/Coord.h>
#include <KelStd/coord/Ellipsoid.h>
#include <KelStd/coord/Enumerations.h>
#include <KelStd/coord/Location.h>
#include <KelStd/coord/Param.h>
#include <KelStd/coord/Pos.h>
#include <KelStd/coord/Projection.h>
#include <KelStd/coord/stElevationFitting.h>
#include <KelStd/coord/stEllipsoinTransform.h>
#include <KelStd/coord/stGeoidModel.h>
#include <KelStd/coord/stPlaneTransform.h>
#include <KelStd/coord/uPos.h>
#include <KelStd/display/stShowConfig.h>
#include <KelStd/files/FileLock.h>
#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/DocumentLimits.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/io/ListDocuments.h>
#include <KelStd/io/RecordParamNames.h>
#include <KelStd/library/StandardLibrary.h>
#include <KelStd/location/LocationBuilder.h>
#include <KelStd/platform/AppConfig.h>
#include <KelStd/platform/LogLibrary.h>
#include <KelStd/platform/ResourceQuery.h>
#include <KelStd/platform/Toolkits.h>
#include <KelStd/proj/ProjLib.h>
#include <KelStd/text/CoordStringHelper.h>
#include <KelStd/time/TimeFromVariant.h>
#include <KelStd/time/TimeGpsT.h>
#include <KelStd/time/TimeGpsW.h>
#include <KelStd/time/TimeLocal.h>
#include <KelStd/time/TimeSpan.h>
#include <KelStd/time/TimeUtc.h>
