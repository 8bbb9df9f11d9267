#pragma once

#include <cli/conversion/LocationForms.h>
#include <cli/run/OutputSink.h>
#include <cli/vector/VectorInput.h>

#include <KelStd/positions/PositionWriter.h>

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <memory>
#include <optional>

namespace KelStd::cli {

class CommandLine;
class Console;

namespace vector {

struct FileForm;

/// The file that a run writes instead of printing: its extension says in which form.
class FileOutput
{
public:
    /// The options -o and --force.
    static void addOptions(CommandLine &line);

    /// ".csv .json .geojson"
    static QString extensions();

    /// Whether a file of this name would be of one of the forms.
    static bool hasExtension(const QString &name);

    /// What -o asks for; nothing without it, or with the `mistake`.
    static std::optional<FileOutput> from(const CommandLine &line, QString &mistake);

    /// The option of the form in which numbers are printed: "csv".
    QString formOption() const;

    /// Whether the file is one of lines that may lack their header.
    bool mayLackHeader() const;

    /// The file, as it was given.
    QString name() const { return m_name; }

    /// Whether the module for vector files is needed, which has to be loaded before PROJ. False
    /// after a report where it is and is not there.
    bool prepare(Console &console);

    /// Whether it may be written: neither over a file without --force nor over what is read. False
    /// after a report. `read`: names of files.
    bool mayBeWritten(const QStringList &read, const CommandLine &line, Console &console) const;

    /// Whether a file of this name would be one of those that are written.
    bool writes(const QString &name) const;

    /// Makes writer and sink; false after a report. PROJ has to be loaded.
    bool open(const LayerSystem &system, const LocationOutput &output, Console &console);

    positions::PositionWriter &writer() { return *m_writer; }
    OutputSink &sink() { return *m_sink; }

private:
    FileOutput(const FileForm &form, QString name) : m_form(&form), m_name(std::move(name)) {}

    bool openLayer(const LayerSystem &system, const LocationOutput &output, Console &console);

    const FileForm *m_form;
    QString m_name;
    VectorFiles *m_files = nullptr;
    std::shared_ptr<positions::PositionWriter> m_writer;
    std::shared_ptr<OutputSink> m_sink;
};

} // namespace vector

} // namespace KelStd::cli
