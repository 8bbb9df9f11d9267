#pragma once

#include <QtCore/QString>

/// The operating system's side of input and output: the only place of the program that differs
/// between platforms.
namespace KelStd::cli::streams {

inline constexpr int standardInput = 0;
inline constexpr int standardOutput = 1;
inline constexpr int standardError = 2;

/// To be called before any file is opened. A standard stream that the program was started without
/// is replaced by one that fails, so that no file takes its number and is written over; and a
/// closed pipe is an error of the write, not a signal that ends the program.
void prepare();

bool isTerminal(int descriptor);

/// Columns of the terminal, or 0 when they are not known.
int terminalWidth(int descriptor);

/// Waits for input and reads what there is, at most `size` bytes: 0 at the end, -1 on an error.
qint64 readSome(int descriptor, char *buffer, qint64 size);

/// True when every byte was written.
bool writeAll(int descriptor, const QByteArray &bytes);

/// The operating system's text for what failed last.
QString lastErrorText();

} // namespace KelStd::cli::streams
