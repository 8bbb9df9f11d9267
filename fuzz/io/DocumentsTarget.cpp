// Coordinate-system documents, as `Coord_IO::xml_read` and the review of documents find them in a
// file.

#include "FuzzTarget.h"

#include <KelStd/io/Coord_IO.h>
#include <KelStd/io/DocumentReview.h>
#include <KelStd/io/SystemDocument.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>

#include <algorithm>
#include <exception>
#include <memory>

namespace {

using KelStd::Coord;
using KelStd::Coord_IO;
using KelStd::SystemOrigin;
namespace io = KelStd::io;
using KelStd::fuzz::require;

/// False when `coord` holds a parameter that has no form in a document.
bool written(const Coord &coord, const QString &fileName)
{
    try {
        QString error;
        require(Coord_IO::xml_write(coord, fileName, &error), "a system can be written");
        return true;
    } catch (std::exception *raised) {
        const std::unique_ptr<std::exception> owned(raised);
        return false;
    }
}

QByteArray content(const QString &fileName)
{
    QFile file(fileName);
    require(file.open(QIODevice::ReadOnly), "what was written can be read");
    return file.readAll();
}

/// Whether it says that a document was not taken over as it stands. The rest is about the values of
/// a system, which a document of it has, too.
bool isAboutReading(const io::DocumentFinding &finding)
{
    switch (finding.kind) {
    case io::FindingKind::NotANumber:   // a number that is none is written as "nan" or "inf"
    case io::FindingKind::MissingValue: // texts, and values beside dictionaries, are not written
    case io::FindingKind::Repeated:     // of parameters that PROJ takes for the same
    case io::FindingKind::MissingAttribute:
    case io::FindingKind::NotUsed:
    case io::FindingKind::UnitNotUsed:
    case io::FindingKind::Contradiction:
    case io::FindingKind::UnusedProjName:
    case io::FindingKind::NotOneProjName:
    case io::FindingKind::Overruling:
    case io::FindingKind::Implausible: return false;
    case io::FindingKind::UnknownWord: // a direction as a parameter, which only "N" and "S" are
                                       // read
        return finding.written != QLatin1String("WSU");
    default: return true;
    }
}

/// Says why when it is not read, and nothing otherwise.
void explain(const QString &fileName, bool isRead)
{
    Coord coord;
    io::DocumentFailure failure;
    require(Coord_IO::xml_read(fileName, coord, failure) == isRead, "a reason changes nothing");
    require(bool(failure) != isRead && failure.text.isEmpty() == isRead, "a failure has a reason");
    require(failure.line >= 0 && failure.line <= content(fileName).size() + 1,
            "a line is one of the document");
}

/// Reads as the reader does, with the same system.
void review(const QString &fileName, bool isRead, const Coord &coord)
{
    Coord reviewed;
    QList<io::DocumentFinding> findings;
    QString error;
    require(io::reviewCoord(fileName, reviewed, findings, &error) == isRead,
            "a review takes what reading takes");
    require(findings.size() <= io::maxFindings, "findings have a bound");
    require(!isRead || reviewed.coord_name == coord.coord_name, "a review reads the same");
    for (const io::DocumentFinding &finding : findings)
        require(!io::describedFinding(finding).isEmpty(), "a finding has a text");
}

/// What is written is read as it is written.
void reviewWritten(const QString &fileName)
{
    Coord coord;
    QList<io::DocumentFinding> findings;
    require(io::reviewCoord(fileName, coord, findings), "what was written can be reviewed");
    require(std::none_of(findings.cbegin(), findings.cend(), isAboutReading),
            "what was written is understood");
}

/// What was read can be written, and reads as the document of itself. The first writing may round a
/// number, and the second, too, by a last digit; so the third is the same as the second.
void readAndWrite(const QString &fileName, const QString &copyName)
{
    Coord coord;
    QString error;
    const bool isRead = Coord_IO::xml_read(fileName, coord, &error);
    explain(fileName, isRead);
    review(fileName, isRead, coord);
    if (!isRead || !written(coord, copyName))
        return;
    reviewWritten(copyName);
    Coord copy;
    require(Coord_IO::xml_read(copyName, copy, &error), "what was written can be read");
    require(copy.coord_name == coord.coord_name, "the name comes back");
    require(written(copy, copyName), "what was read again can be written");
    const QByteArray second = content(copyName);
    Coord third;
    require(Coord_IO::xml_read(copyName, third, &error), "what was written twice can be read");
    require(written(third, copyName) && content(copyName) == second, "documents settle");
}

/// What is read of an origin is written, and read back the same.
void readAndWriteOrigin(const QString &fileName, const QString &copyName)
{
    SystemOrigin origin;
    io::DocumentFailure failure;
    if (!io::readOrigin(fileName, origin, failure)) {
        require(origin.isEmpty(), "a failed call leaves the origin");
        return;
    }
    require(io::writeSystem(Coord(), origin, copyName, failure), "an origin can be written");
    SystemOrigin copy;
    Coord coord;
    require(io::readSystem(copyName, coord, copy, failure), "what was written can be read");
    require(copy == origin, "the origin comes back");
    require(!origin.area || origin.area->isValid(), "an area is a box");
    require(!origin.planeUnit || origin.planeUnit->metres > 0.0, "a unit has a length");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const bool silent = (KelStd::fuzz::silenceQt(), true);
    Q_UNUSED(silent)
    static const QTemporaryDir directory;
    const QString fileName = directory.filePath(QStringLiteral("system.xml"));
    {
        QFile file(fileName);
        require(file.open(QIODevice::WriteOnly), "the temporary file can be written");
        file.write(reinterpret_cast<const char *>(data), qint64(size));
    }
    readAndWrite(fileName, directory.filePath(QStringLiteral("copy.xml")));
    readAndWriteOrigin(fileName, directory.filePath(QStringLiteral("origin.xml")));
    return 0;
}
