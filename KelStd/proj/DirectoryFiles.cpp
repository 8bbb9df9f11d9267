#include <KelStd/proj/DirectoryFiles.h>

#include <KelStd/proj/ProjFile.h>

#include <QtCore/QDir>
#include <QtCore/QFile>

#include <cstdio>

namespace KelStd::proj {

namespace {

bool isAbsolute(const char *name)
{
#if defined(Q_OS_UNIX)
    return name[0] == '/';
#else
    return QDir::isAbsolutePath(QString::fromUtf8(name));
#endif
}

QByteArray nameIn(void *directory, const char *name)
{
    if (directory == nullptr || isAbsolute(name))
        return QByteArray(name);
    return *static_cast<const QByteArray *>(directory) + '/' + name;
}

ProjFile *fileOf(PROJ_FILE_HANDLE *handle)
{
    return reinterpret_cast<ProjFile *>(handle);
}

PROJ_FILE_HANDLE *openFile(PJ_CONTEXT *, const char *name, PROJ_OPEN_ACCESS access, void *directory)
{
    return reinterpret_cast<PROJ_FILE_HANDLE *>(
        ProjFile::open(nameIn(directory, name), access).release());
}

std::size_t readFile(PJ_CONTEXT *, PROJ_FILE_HANDLE *handle, void *buffer, std::size_t size, void *)
{
    return fileOf(handle)->read(buffer, size);
}

std::size_t writeFile(PJ_CONTEXT *, PROJ_FILE_HANDLE *handle, const void *bytes, std::size_t size,
                      void *)
{
    return fileOf(handle)->write(bytes, size);
}

int seekFile(PJ_CONTEXT *, PROJ_FILE_HANDLE *handle, long long offset, int whence, void *)
{
    return fileOf(handle)->seek(offset, whence) ? 1 : 0;
}

unsigned long long tellFile(PJ_CONTEXT *, PROJ_FILE_HANDLE *handle, void *)
{
    return static_cast<unsigned long long>(fileOf(handle)->tell());
}

void closeFile(PJ_CONTEXT *, PROJ_FILE_HANDLE *handle, void *)
{
    delete fileOf(handle);
}

int fileExists(PJ_CONTEXT *, const char *name, void *directory)
{
    return QFile::exists(QFile::decodeName(nameIn(directory, name))) ? 1 : 0;
}

// PROJ keeps what it has from a network in files of its own, by absolute names. A definition gives
// it no reason to change any.

int makeDirectory(PJ_CONTEXT *, const char *name, void *directory)
{
    return QDir().mkdir(QFile::decodeName(nameIn(directory, name))) ? 1 : 0;
}

int removeFile(PJ_CONTEXT *, const char *name, void *directory)
{
    return std::remove(nameIn(directory, name).constData()) == 0 ? 1 : 0;
}

int renameFile(PJ_CONTEXT *, const char *from, const char *to, void *directory)
{
    return std::rename(nameIn(directory, from).constData(), nameIn(directory, to).constData()) == 0
               ? 1
               : 0;
}

} // namespace

const PROJ_FILE_API &directoryFiles()
{
    static const PROJ_FILE_API files = {
        1,         openFile,   readFile,      writeFile,  seekFile,   tellFile,
        closeFile, fileExists, makeDirectory, removeFile, renameFile,
    };
    return files;
}

} // namespace KelStd::proj
