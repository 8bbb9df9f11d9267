#include <cli/library/LibraryDocument.h>

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/DocumentLimits.h>
#include <KelStd/io/ListDocuments.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QXmlStreamReader>

namespace KelStd::cli {

namespace {

constexpr int readVersion = 1;
constexpr int rootDepth = 1;
constexpr int recordDepth = 2;

/// A kind of records; none for the document of the offered systems.
using DocumentKind = std::optional<RecordKind>;

bool isList(DocumentKind kind)
{
    return kind == RecordKind::Ellipsoid || kind == RecordKind::Projection;
}

QString recordElement(DocumentKind kind)
{
    return kind == RecordKind::Ellipsoid ? Coord_IO::xml_segName_ellipsoid
                                         : Coord_IO::xml_segName_projection;
}

/// Goes through a document element by element.
class Walk
{
public:
    Walk(QIODevice &file, DocumentKind kind) : m_reader(&file), m_kind(kind)
    {
        m_reader.setNamespaceProcessing(false);
    }

    DocumentOutline run()
    {
        while (!m_reader.atEnd() && m_depth <= io::deepestNesting) {
            switch (m_reader.readNext()) {
            case QXmlStreamReader::StartElement: enter(); break;
            case QXmlStreamReader::EndElement: --m_depth; break;
            case QXmlStreamReader::DTD:
                if (m_reader.text().contains(QLatin1Char('[')))
                    fault(QStringLiteral("it declares entities or elements of its own"));
                break;
            default: break;
            }
        }
        if (m_reader.hasError()) {
            m_outline.fault = QStringLiteral("no well-formed XML (line %1: %2)")
                                  .arg(m_reader.lineNumber())
                                  .arg(m_reader.errorString());
        }
        return m_outline;
    }

private:
    void enter()
    {
        ++m_depth;
        if (m_depth > io::deepestNesting)
            fault(QStringLiteral("its elements are nested deeper than %1").arg(io::deepestNesting));
        const QString name = m_reader.qualifiedName().toString();
        if (m_depth == rootDepth)
            m_outline.rootName = name;
        if (needsVersion(name))
            checkVersion(name);
        if (m_depth == recordDepth && name == Coord_IO::xml_segName_root)
            m_outline.offered += attribute(Coord_IO::xml_attrName_rootName);
    }

    bool needsVersion(const QString &name) const
    {
        if (!m_kind)
            return false;
        if (m_depth == rootDepth)
            return true;
        if (m_depth == recordDepth && isList(m_kind))
            return name == recordElement(m_kind);
        static const QStringList records = {
            Coord_IO::xml_segName_ellipsoid,      Coord_IO::xml_segName_projection,
            Coord_IO::xml_segName_planeTransform, Coord_IO::xml_segName_ellipsoidTransform,
            Coord_IO::xml_segName_geoidModel,     Coord_IO::xml_segName_elevationFitting};
        return (m_depth == recordDepth && records.contains(name))
               || name == Coord_IO::xml_segName_param;
    }

    void checkVersion(const QString &name)
    {
        const QString version = attribute(Coord_IO::xml_attrName_ver);
        if (version.toInt() == readVersion)
            return;
        fault(QStringLiteral("the element [%1] in line %2 has %3, not version %4")
                  .arg(name)
                  .arg(m_reader.lineNumber())
                  .arg(version.isEmpty() ? QStringLiteral("no version")
                                         : QStringLiteral("version \"%1\"").arg(version))
                  .arg(readVersion));
    }

    QString attribute(const QString &name) const
    {
        return m_reader.attributes().value(name).toString();
    }

    void fault(const QString &text)
    {
        if (m_outline.fault.isEmpty())
            m_outline.fault = text;
    }

    QXmlStreamReader m_reader;
    DocumentKind m_kind;
    DocumentOutline m_outline;
    int m_depth = 0;
};

QString faultOf(const QString &fileName, RecordKind kind)
{
    const QString fault = outlineOf(fileName, kind).fault;
    return fault.isEmpty() ? QStringLiteral("it is no XML document that the library takes") : fault;
}

using Findings = QList<io::DocumentFinding>;

/// How a kind of documents is read, with a review and without.
template <typename Found>
struct Reading
{
    bool (*read)(const QString &, Found &, QString *);
    bool (*review)(const QString &, Found &, Findings &, QString *);

    /// Without `findings` nothing is reviewed.
    bool operator()(const QString &fileName, Found &found, Findings *findings,
                    QString &reason) const
    {
        return findings != nullptr ? review(fileName, found, *findings, &reason)
                                   : read(fileName, found, &reason);
    }
};

constexpr Reading<Coord> systems = {&Coord_IO::xml_read, &io::reviewCoord};
constexpr Reading<QList<Ellipsoid>> ellipsoidLists = {&io::readEllipsoidList,
                                                      &io::reviewEllipsoidList};
constexpr Reading<QList<Projection>> projectionLists = {&io::readProjectionList,
                                                        &io::reviewProjectionList};

QList<LibraryRecord> asRecords(const Coord &coord)
{
    return {coord};
}

template <typename Found>
QList<LibraryRecord> asRecords(const QList<Found> &found)
{
    QList<LibraryRecord> records;
    for (const Found &each : found)
        records += each;
    return records;
}

template <typename Found>
std::optional<QList<LibraryRecord>> recordsOf(const Reading<Found> &reading,
                                              const QString &fileName, RecordKind kind,
                                              Findings *findings, QString &reason)
{
    Found found;
    if (reading(fileName, found, findings, reason))
        return asRecords(found);
    if (reason.isEmpty())
        reason = faultOf(fileName, kind);
    return std::nullopt;
}

std::optional<QList<LibraryRecord>> readRecords(const QString &fileName, RecordKind kind,
                                                Findings *findings, QString &reason)
{
    reason.clear();
    if (QFileInfo::exists(fileName) && !QFileInfo(fileName).isFile()) {
        reason = QFileInfo(fileName).isDir() ? QStringLiteral("it is a directory")
                                             : QStringLiteral("it is no regular file");
        return std::nullopt;
    }
    if (!QFileInfo::exists(fileName)) {
        QFile file(fileName);
        file.open(QIODevice::ReadOnly);
        reason = file.errorString();
        return std::nullopt;
    }
    switch (kind) {
    case RecordKind::Ellipsoid: return recordsOf(ellipsoidLists, fileName, kind, findings, reason);
    case RecordKind::Projection:
        return recordsOf(projectionLists, fileName, kind, findings, reason);
    case RecordKind::Custom:
    case RecordKind::Standard: break;
    }
    return recordsOf(systems, fileName, kind, findings, reason);
}

} // namespace

DocumentOutline outlineOf(const QString &fileName, std::optional<RecordKind> kind)
{
    DocumentOutline outline;
    // Waiting for what may never come is nothing for a look at a file.
    if (QFileInfo::exists(fileName) && !QFileInfo(fileName).isFile()) {
        outline.fault = QStringLiteral("it is no regular file");
        return outline;
    }
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        outline.fault = file.errorString();
        return outline;
    }
    if (file.size() == 0) {
        outline.fault = QStringLiteral("the file is empty");
        return outline;
    }
    if (file.size() > io::largestDocument) {
        outline.fault = QStringLiteral("the file is larger than %1 MiB")
                            .arg(io::largestDocument / (1024 * 1024));
        return outline;
    }
    if (!io::isWithinLimits(fileName)) {
        outline.fault = QStringLiteral("it has more tags and attributes than the library reads "
                                       "(%1), or is no XML")
                            .arg(io::maxMarkup);
        return outline;
    }
    return Walk(file, kind).run();
}

std::optional<RecordKind> kindOfRoot(const QString &rootName)
{
    if (rootName == Coord_IO::xml_segName_root)
        return RecordKind::Custom;
    if (rootName == QLatin1String("Ellipsoid_List"))
        return RecordKind::Ellipsoid;
    if (rootName == QLatin1String("Projection_List"))
        return RecordKind::Projection;
    return std::nullopt;
}

std::optional<QList<LibraryRecord>> recordsIn(const QString &fileName, RecordKind kind,
                                              QString &reason)
{
    return readRecords(fileName, kind, nullptr, reason);
}

std::optional<QList<LibraryRecord>> reviewedRecordsIn(const QString &fileName, RecordKind kind,
                                                      QList<io::DocumentFinding> &findings,
                                                      QString &reason)
{
    return readRecords(fileName, kind, &findings, reason);
}

} // namespace KelStd::cli
