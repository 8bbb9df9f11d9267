#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QSaveFile>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>

namespace KelStd::cli {

class Input;

/// The file of the lines that failed, which can be mended there and given to the program again. It
/// appears whole at the end of the run, in place of one of that name; what is no regular file, such
/// as a pipe, is written as the lines come.
class RejectsFile
{
public:
    /// Neither the `input` nor a coordinate system's document nor what the standard streams go to
    /// is overwritten, by whatever name. False with the reason.
    bool open(const QString &name, const Input &input, const QStringList &systemFiles,
              QString &error);
    bool isOpen() const { return m_device != nullptr; }

    /// `above`: whole lines, which stand above the first one that failed: with those that are
    /// passed over and the header of the input, the same options read this file.
    void write(const QByteArray &above, const QByteArray &lines);

    /// True when every line is in the file; false with the reason. Nothing is to be done for one
    /// that was not opened.
    bool finish(QString &error);

private:
    std::unique_ptr<QFileDevice> m_device;
    QSaveFile *m_replacing = nullptr; ///< the device, where it replaces a file
    bool m_isEmpty = true;
    bool m_isComplete = true;
};

} // namespace KelStd::cli
