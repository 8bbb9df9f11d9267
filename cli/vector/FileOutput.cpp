#include <cli/vector/FileOutput.h>

#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>
#include <cli/terminal/StandardStreams.h>
#include <cli/vector/DrawingComment.h>
#include <cli/vector/FieldNames.h>
#include <cli/vector/FileSink.h>
#include <cli/vector/LayerOutput.h>
#include <cli/vector/LayerPlans.h>
#include <cli/vector/PlaneText.h>
#include <cli/vector/VectorModule.h>

#include <KelStd/positions/DxfWriter.h>
#include <KelStd/positions/GpxWriter.h>
#include <KelStd/positions/KmlWriter.h>

#include <QtCore/QDir>
#include <QtCore/QFileInfo>

#include <algorithm>

namespace KelStd::cli::vector {

/// A form of files. Those without a form of output for themselves print numbers as CSV does.
struct FileForm
{
    enum class Kind
    {
        Printed, ///< as it would be printed
        Kml,
        Gpx,
        Dxf,
        Layer ///< by the module
    };

    const char *extension;
    Kind kind;
    const char *option; ///< of the form of output
    const char *driver; ///< of a layer
};

namespace {

using Kind = FileForm::Kind;

constexpr FileForm forms[] = {
    {"csv", Kind::Printed, "csv", ""},
    {"csv", Kind::Printed, "excel", ""}, // the first of an extension is its default
    {"json", Kind::Printed, "json", ""},
    {"geojson", Kind::Printed, "geojson", ""},
    {"gpkg", Kind::Layer, "csv", "GPKG"},
    {"shp", Kind::Layer, "csv", "ESRI Shapefile"},
    {"kml", Kind::Kml, "csv", ""},
    {"gpx", Kind::Gpx, "csv", ""},
    {"dxf", Kind::Dxf, "csv", ""},
};

const QString outputOption = QStringLiteral("output");
const QString forceOption = QStringLiteral("force");

/// The form of the extension whose option is given, else the first.
const FileForm *findForm(const QString &extension, const CommandLine &line)
{
    const FileForm *found = nullptr;
    for (const FileForm &form : forms) {
        if (extension != QLatin1String(form.extension))
            continue;
        const bool isChosen =
            form.kind == FileForm::Kind::Printed && line.isSet(QLatin1String(form.option));
        if (found == nullptr || isChosen)
            found = &form;
    }
    return found;
}

QString heightNote(const QString &name, const char *format)
{
    return QStringLiteral("note: heights in %1 are WGS84 ellipsoidal; programs take those of %2 as "
                          "above mean sea level")
        .arg(name, QLatin1String(format));
}

QStringList nameNotes(const QString &file, const QStringList &names, const QStringList &written)
{
    const QString changed = changedNames(names, written);
    return changed.isEmpty()
               ? QStringList()
               : QStringList(QStringLiteral("note: names in %1: %2").arg(file, changed));
}

/// Where the points of a plane lie, which some would look for at the site.
QStringList siteNotes(const QString &name, const LocationOutput &output)
{
    if (output.columns.site == positions::SiteKind::None)
        return {};
    return {QStringLiteral("note: the points of %1 lie at easting and northing of the projection; "
                           "their coordinates at the site are attributes")
                .arg(name)};
}

} // namespace

void FileOutput::addOptions(CommandLine &line)
{
    line.addOption({{QStringLiteral("o"), outputOption},
                    QStringLiteral("Write a file instead of printing, whole or not at\n"
                                   "all, in the form of its extension (see below)."),
                    QStringLiteral("FILE")});
    line.addOption({forceOption, QStringLiteral("Replace a FILE that exists.")});
}

QString FileOutput::extensions()
{
    QStringList words;
    for (const FileForm &form : forms)
        words += QLatin1Char('.') + QString::fromLatin1(form.extension);
    words.removeDuplicates();
    return words.join(QLatin1Char(' '));
}

bool FileOutput::hasExtension(const QString &name)
{
    const QString suffix = QFileInfo(name).suffix().toLower();
    return std::any_of(std::begin(forms), std::end(forms), [&suffix](const FileForm &form) {
        return suffix == QLatin1String(form.extension);
    });
}

std::optional<FileOutput> FileOutput::from(const CommandLine &line, QString &mistake)
{
    if (!line.isSet(outputOption)) {
        if (line.isSet(forceOption))
            mistake = QStringLiteral("--force is for -o FILE");
        return std::nullopt;
    }
    const QString name = line.value(outputOption);
    const QFileInfo info(onDisk(name));
    const FileForm *const form = findForm(info.suffix().toLower(), line);
    if (form == nullptr || info.completeBaseName().isEmpty()) {
        mistake = QStringLiteral("-o '%1' has none of the extensions %2").arg(name, extensions());
        return std::nullopt;
    }
    for (const LocationForm &row : locationForms()) {
        const QString option = QString::fromLatin1(row.form.option);
        const bool isSame = form->kind == Kind::Printed && option == QLatin1String(form->option);
        if (line.isSet(option) && !isSame) {
            mistake = QStringLiteral("--%1 and -o %2 exclude each other").arg(option, name);
            return std::nullopt;
        }
    }
    return FileOutput(*form, name);
}

QString FileOutput::formOption() const
{
    return QString::fromLatin1(m_form->option);
}

bool FileOutput::mayLackHeader() const
{
    return m_form->kind == Kind::Printed
           && QLatin1String(m_form->extension) == QLatin1String("csv");
}

bool FileOutput::prepare(Console &console)
{
    if (m_form->kind != Kind::Layer)
        return true;
    QString reason;
    m_files = vectorFiles(reason);
    if (m_files == nullptr)
        console.report(QStringLiteral("cannot write %1: %2").arg(m_name, reason));
    return m_files != nullptr;
}

bool FileOutput::mayBeWritten(const QStringList &read, const CommandLine &line,
                              Console &console) const
{
    const QString path = onDisk(m_name);
    const QStringList names =
        m_form->kind == Kind::Layer ? FileSet(path).names() : QStringList(path);
    QStringList existing;
    for (const QString &file : names) {
        if (QFileInfo::exists(file))
            existing += file;
    }
    for (const QString &file : existing) {
        const bool isRead = std::any_of(read.begin(), read.end(), [&file](const QString &each) {
            return !each.isEmpty() && streams::areSameFile(onDisk(each), file);
        });
        if (isRead) {
            console.report(QStringLiteral("cannot write %1: it is read in this run").arg(file));
            return false;
        }
        if (!QFileInfo(file).isFile()) {
            console.report(QStringLiteral("cannot write %1: it is no file").arg(file));
            return false;
        }
        for (const int stream : {streams::standardOutput, streams::standardError}) {
            if (streams::isFile(stream, file)) {
                console.report(QStringLiteral("cannot write %1: it is the output").arg(file));
                return false;
            }
        }
    }
    if (existing.isEmpty() || line.isSet(forceOption))
        return true;
    const bool isMain = QFileInfo::exists(path);
    console.report(
        QStringLiteral("%1 exists; --force replaces it").arg(isMain ? m_name : existing.first()));
    return false;
}

bool FileOutput::writes(const QString &name) const
{
    return !name.isEmpty() && FileSet(onDisk(m_name)).has(onDisk(name));
}

bool FileOutput::open(const LayerSystem &system, const LocationOutput &output, Console &console)
{
    if (m_form->kind == Kind::Layer)
        return openLayer(system, output, console);
    const positions::LocationPrinter printer(output.display, positions::ValuePrinter::Output::Csv,
                                             output.planeUnit);
    auto sink = std::make_shared<FileSink>(m_name);
    const QString name = m_name;
    switch (m_form->kind) {
    case Kind::Kml: {
        const auto writer = std::make_shared<positions::KmlWriter>(
            printer, QFileInfo(m_name).completeBaseName(), output.columns);
        m_writer = writer;
        sink->setNotes([name, writer] {
            return QStringList(heightNote(name, "KML"))
                   + nameNotes(name, writer->columnNames(), writer->fieldNames());
        });
        break;
    }
    case Kind::Gpx: {
        const auto writer = std::make_shared<positions::GpxWriter>(printer, output.columns);
        m_writer = writer;
        sink->setNotes([name, writer] {
            return QStringList(heightNote(name, "GPX"))
                   + nameNotes(name, writer->columnNames(), writer->elementNames());
        });
        break;
    }
    case Kind::Dxf: {
        const PlaneText plane = planeTextOf(system);
        const QString beside = plane.code.isEmpty() ? QString() : shiftBesideCode(system, m_name);
        if (!beside.isEmpty())
            console.report(beside);
        sink->setNotes([notes = siteNotes(m_name, output)] { return notes; });
        const auto writer = std::make_shared<positions::DxfWriter>(
            printer,
            DrawingComment{systemInComment(plane.code, system.coord.coord_name),
                           planeUnitName(system, output),
                           positions::heightReference(system.geoidModel)}
                .text(),
            planeUnitOf(system, output), output.columns);
        writer->setDefinition(plane.definition);
        m_writer = writer;
        break;
    }
    case Kind::Printed: {
        const auto row = std::find_if(locationForms().begin(), locationForms().end(),
                                      [this](const LocationForm &each) {
                                          return formOption() == QLatin1String(each.form.option);
                                      });
        m_writer = row->makeWriter(output);
        break;
    }
    case Kind::Layer: break;
    }
    m_sink = sink;
    if (sink->open())
        return true;
    console.report(QStringLiteral("cannot write %1: %2").arg(m_name, sink->errorText()));
    return false;
}

bool FileOutput::openLayer(const LayerSystem &system, const LocationOutput &output,
                           Console &console)
{
    auto plan = layerPlan(m_name, m_form->driver, system, output, *m_files, console);
    if (!plan)
        return false;
    plan->notes = siteNotes(m_name, output) + plan->notes;
    const positions::LocationPrinter printer(output.display, positions::ValuePrinter::Output::Csv,
                                             output.planeUnit);
    const auto layer =
        std::make_shared<LayerOutput>(*m_files, printer, output.columns, std::move(*plan));
    m_writer = layer;
    m_sink = layer;
    if (layer->open())
        return true;
    console.report(QStringLiteral("cannot write %1: %2").arg(m_name, layer->errorText()));
    return false;
}

} // namespace KelStd::cli::vector
