#pragma once

#include <cli/run/OutputSink.h>

#include <QtCore/QSaveFile>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

namespace KelStd::cli::vector {

/// A file of bytes, which takes its place when all of them are written.
class FileSink : public OutputSink
{
public:
    /// `name`: the file's, as it was given.
    explicit FileSink(const QString &name);

    /// False where it cannot be written.
    bool open();

    QString displayName() const override { return m_name; }
    void write(const QByteArray &bytes) override;
    bool canWrite() const override { return m_canWrite; }
    bool finish() override;
    QString errorText() const override { return m_error; }
    QStringList notes() const override { return m_notes ? m_notes() : QStringList(); }

    /// What is to be said once the file is written.
    void setNotes(std::function<QStringList()> notes) { m_notes = std::move(notes); }

private:
    void fail();

    QString m_name;
    QSaveFile m_file;
    bool m_canWrite = true;
    QString m_error;
    std::function<QStringList()> m_notes;
};

} // namespace KelStd::cli::vector
