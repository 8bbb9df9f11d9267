#include <KelStd/proj/ProjLib.h>

#include <KelStd/grid/GgfGrid.h>

namespace KelStd {

bool ProjLib::ConvertGeoidModelFile_GGF(const QString &sourceFile, const QString &targetFile)
{
    return kelstd_grid::convertGgfToGtx(sourceFile, targetFile);
}

} // namespace KelStd
