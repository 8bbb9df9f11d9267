// The systems offered when a project is created, and their file.

#include <KelStd/io/XmlDocument.h>
#include <KelStd/library/LibraryFiles.h>
#include <KelStd/library/OfferedNames.h>
#include <KelStd/library/StandardLibrary.h>

namespace KelStd {

namespace {

const QString rootName = QStringLiteral("root");
const QString pairName = QStringLiteral("Coord");
const QString nameAttribute = QStringLiteral("coord_name");
const QString showNameAttribute = QStringLiteral("show_name");

using Names = QList<QPair<QString, QString>>;

LibraryFailure writeNames(const QString &path, const Names &names)
{
    const auto makeDocument = [&names] {
        QDomDocument document = io::documentFrame();
        QDomElement root = document.createElement(rootName);
        for (const auto &[name, showName] : names) {
            QDomElement pair = document.createElement(pairName);
            pair.setAttribute(nameAttribute, name);
            pair.setAttribute(showNameAttribute, showName);
            root.appendChild(pair);
        }
        document.appendChild(root);
        return document;
    };
    return library::written(path, [&makeDocument](const QString &fileName, QString *reason) {
        return io::writeDocument(fileName, makeDocument, reason);
    });
}

} // namespace

namespace library {

bool readOfferedNames(const QString &fileName, QList<QPair<QString, QString>> &names,
                      io::DocumentFailure &failure)
{
    QDomDocument document;
    failure =
        io::readDocument(fileName, io::Source::RegularFile, document, io::LineEnds::WithoutReturns);
    if (failure)
        return false;
    const QDomElement root = document.documentElement();
    for (QDomElement pair = root.firstChildElement(pairName); !pair.isNull();
         pair = pair.nextSiblingElement(pairName)) {
        const QString name = pair.attribute(nameAttribute);
        const QString showName = pair.attribute(showNameAttribute);
        names.append({name, showName.isEmpty() ? name : showName});
    }
    return true;
}

} // namespace library

void StandardLibrary::setShowInCreateProjectCoords(const QList<QPair<QString, QString>> &list)
{
    Names known;
    for (const auto &[name, showName] : list) {
        if (hasCoord(name))
            known.append({name, showName.isEmpty() ? name : showName});
    }
    showInCreateProjectCoords = known;
    failure = {};
    saveShowInProjectCoordNamesFile();
    Q_EMIT sgShowInCreateProjectCoordsChanged();
}

void StandardLibrary::createEmptyShowInProjectCoordNamesFile()
{
    const QString &path = showInCreateProjectCoordsFilePath;
    if (!path.isEmpty() && !QFileInfo::exists(path))
        writeNames(path, {});
}

void StandardLibrary::loadShowInProjectCoordNamesFile()
{
    if (showInCreateProjectCoordsFilePath.isEmpty())
        return;
    createEmptyShowInProjectCoordNamesFile();
    Names names;
    io::DocumentFailure fault;
    library::readOfferedNames(showInCreateProjectCoordsFilePath, names, fault);
    for (const auto &[name, showName] : names) {
        if (hasCoord(name))
            showInCreateProjectCoords.append({name, showName});
    }
}

void StandardLibrary::saveShowInProjectCoordNamesFile()
{
    if (showInCreateProjectCoordsFilePath.isEmpty())
        return;
    createEmptyShowInProjectCoordNamesFile();
    failure = writeNames(showInCreateProjectCoordsFilePath, showInCreateProjectCoords);
}

} // namespace KelStd
