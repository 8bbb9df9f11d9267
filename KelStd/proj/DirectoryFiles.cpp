#include <KelStd/proj/DirectoryFiles.h>

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
    return isAbsolute(name) ? QByteArray(name)
                            : *static_cast<const QByteArray *>(directory) + '/' + name;
}

std::FILE *fileOf(PROJ_FILE_HANDLE *handle)
{
    return reinterpret_cast<std::FILE *>(handle);
}

#if defined(Q_OS_WIN)

std::FILE *openNamed(const QByteArray &name, const char *mode)
{
    return _wfopen(QString::fromUtf8(name).toStdWString().c_str(),
                   QString::fromLatin1(mode).toStdWString().c_str());
}

int seekTo(std::FILE *file, long long offset, int whence)
{
    return _fseeki64(file, offset, whence);
}

long long tellOf(std::FILE *file)
{
    return _ftelli64(file);
}

#else

std::FILE *openNamed(const QByteArray &name, const char *mode)
{
    return std::fopen(name.constData(), mode);
}

int seekTo(std::FILE *file, long long offset, int whence)
{
    return fseeko(file, static_cast<off_t>(offset), whence);
}

long long tellOf(std::FILE *file)
{
    return ftello(file);
}

#endif

const char *modeOf(PROJ_OPEN_ACCESS access)
{
    switch (access) {
    case PROJ_OPEN_ACCESS_READ_UPDATE: return "r+b";
    case PROJ_OPEN_ACCESS_CREATE: return "w+b";
    case PROJ_OPEN_ACCESS_READ_ONLY: break;
    }
    return "rb";
}

PROJ_FILE_HANDLE *openFile(PJ_CONTEXT *, const char *name, PROJ_OPEN_ACCESS access, void *directory)
{
    return reinterpret_cast<PROJ_FILE_HANDLE *>(openNamed(nameIn(directory, name), modeOf(access)));
}

std::size_t readFile(PJ_CONTEXT *, PROJ_FILE_HANDLE *handle, void *buffer, std::size_t size, void *)
{
    return std::fread(buffer, 1, size, fileOf(handle));
}

std::size_t writeFile(PJ_CONTEXT *, PROJ_FILE_HANDLE *handle, const void *bytes, std::size_t size,
                      void *)
{
    return std::fwrite(bytes, 1, size, fileOf(handle));
}

int seekFile(PJ_CONTEXT *, PROJ_FILE_HANDLE *handle, long long offset, int whence, void *)
{
    return seekTo(fileOf(handle), offset, whence) == 0 ? 1 : 0;
}

unsigned long long tellFile(PJ_CONTEXT *, PROJ_FILE_HANDLE *handle, void *)
{
    return static_cast<unsigned long long>(tellOf(fileOf(handle)));
}

void closeFile(PJ_CONTEXT *, PROJ_FILE_HANDLE *handle, void *)
{
    std::fclose(fileOf(handle));
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
