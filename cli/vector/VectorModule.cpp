#include <cli/vector/VectorModule.h>

#include <KelStd/proj/ProjInspection.h>

#include <QtCore/QCoreApplication>
#include <QtCore/QDir>
#include <QtCore/QFileInfo>
#include <QtCore/QLibrary>

namespace KelStd::cli::vector {

namespace {

/// The folder in which a file was found, where that is a link too.
QString folderOf(const QString &file)
{
    return QDir(QFileInfo(file).absolutePath()).canonicalPath();
}

VectorFiles *loaded(QString &reason)
{
    const QString file = vectorModuleFile();
    if (file.isEmpty()) {
        reason = QStringLiteral("this program was built without GDAL, which reads and writes "
                                "vector files");
        return nullptr;
    }
    // Without the hint to export them, its symbols and those of all that it brings stay its own.
    QLibrary library(file);
    library.setLoadHints(QLibrary::PreventUnloadHint);
    if (!library.load()) {
        reason = QStringLiteral("the part of the program that reads and writes vector files cannot "
                                "be loaded: %1")
                     .arg(library.errorString());
        return nullptr;
    }
    const auto entry = reinterpret_cast<VectorFilesEntry>(library.resolve(vectorFilesEntryName));
    VectorFiles *const files = entry == nullptr ? nullptr : entry(interfaceVersion);
    if (files == nullptr) {
        reason = QStringLiteral("%1 belongs to another release of the program").arg(file);
        return nullptr;
    }
    // GDAL would change what the program's own PROJ does.
    if (folderOf(QString::fromStdString(files->projFile()))
        != folderOf(ProjInspection().libraryFile()))
        return files;
    reason = QStringLiteral("GDAL was loaded behind PROJ and has taken the one of the program");
    return nullptr;
}

} // namespace

VectorFiles *vectorFiles(QString &reason)
{
    static QString failure;
    static VectorFiles *const files = loaded(failure);
    reason = failure;
    return files;
}

QString vectorModuleFile()
{
#ifdef KELSTD_VECTOR_MODULE
    return QDir::cleanPath(QDir(QCoreApplication::applicationDirPath())
                               .filePath(QStringLiteral(KELSTD_VECTOR_MODULE)));
#else
    return {};
#endif
}

QString gdalRelease()
{
    QString reason;
    const VectorFiles *const files = vectorFiles(reason);
    return files == nullptr ? QString() : QString::fromStdString(files->release());
}

} // namespace KelStd::cli::vector
