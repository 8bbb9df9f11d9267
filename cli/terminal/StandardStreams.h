#pragma once

#include <QtCore/QString>

#include <optional>

/// The operating system's side of input and output: the only place of the program that differs
/// between platforms.
namespace KelStd::cli::streams {

inline constexpr int standardInput = 0;
inline constexpr int standardOutput = 1;
inline constexpr int standardError = 2;

/// To be called before any file is opened. A standard stream that the program was started without
/// is replaced by one that fails, so that no file takes its number and is written over; and a
/// closed pipe or a limit of the sizes of files is an error of the write, not a signal that ends
/// the program.
void prepare();

bool isTerminal(int descriptor);

/// Columns of the terminal, or 0 when they are not known.
int terminalWidth(int descriptor);

/// How many bytes a regular file has left to read; nothing for anything else.
std::optional<qint64> bytesToCome(int descriptor);

/// Whether the descriptor is of the regular file of that name.
bool isFile(int descriptor, const QString &name);

/// Whether two names are of the same regular file, also by a link or a hard link.
bool areSameFile(const QString &one, const QString &other);

/// Whether reading does not have to wait.
bool isReady(int descriptor);

/// Waits at most so long until reading does not have to wait; true where it does not, and once a
/// stop is requested.
bool isReadyWithin(int descriptor, int milliseconds);

/// Waits until the bytes of a file are on the disk; false where that failed.
bool storeOnDisk(const QString &name);

/// True when every byte was written.
bool writeAll(int descriptor, const QByteArray &bytes);

/// The operating system's text for what failed last.
QString lastErrorText();

/// While this lives, the interrupt key, a request to end and a terminal that is closed do not end
/// the program where it stands: `isMade` is true then. The next request ends it.
class StopRequests
{
public:
    StopRequests();
    ~StopRequests();
    StopRequests(const StopRequests &) = delete;
    StopRequests &operator=(const StopRequests &) = delete;

    /// Whether there was a request, of this object or of one before it.
    bool isMade() const;
};

/// Waits for input and reads what there is, at most `size` bytes: 0 at the end and once a stop is
/// requested (`stop` may be null), -1 on an error.
qint64 readSome(int descriptor, char *buffer, qint64 size, const StopRequests *stop);

/// Ends the program as the request would have ended it, so that whoever started it sees that.
void endAsTold();

} // namespace KelStd::cli::streams
