#include <cli/geoids/GeoidModel.h>

#include <cli/terminal/FilePath.h>
#include <cli/terminal/UnknownWord.h>

#include <KelStd/grid/GridFile.h>
#include <KelStd/proj/ProjLib.h>

#include <QtCore/QFileInfo>

namespace KelStd::cli {

namespace {

QString textOf(const GeoidModelFailure &failure)
{
    return failure.kind == GeoidModelFailureKind::RefusedByProj
                   || failure.kind == GeoidModelFailureKind::BadGrid
               ? failure.text + QStringLiteral(" ('kelstd geoid info' tells what is in it)")
               : failure.text;
}

} // namespace

Values geoidModelValues(Values::Files files)
{
    const auto names = [](const TypedLine &) {
        QList<Proposal> proposals;
        for (const QString &name : GeoidModels::names())
            proposals.append({name, QStringLiteral("geoid model")});
        return proposals;
    };
    return Values::ofSource(names, files);
}

QString titleOf(GeoidModels::Folder folder)
{
    return folder == GeoidModels::Folder::Home ? QStringLiteral("home directory")
                                               : QStringLiteral("program directory");
}

std::optional<QString> findGeoidModel(const QString &name, QString &reason)
{
    GeoidModelFailure failure;
    auto path = GeoidModels::find(name, &failure);
    if (!path)
        reason = textOf(failure);
    return path;
}

bool geoidGridIsReadable(const QString &path, QString &reason)
{
    const GeoidModelFailure failure = GeoidModels::tryInProj(path);
    if (failure.kind != GeoidModelFailureKind::RefusedByProj)
        return true;
    reason = textOf(failure);
    return false;
}

bool ChosenGrid::choose(const QString &nameOrFile, QString &reason)
{
    const auto model = findGeoidModel(nameOrFile, reason);
    if (model && !GeoidModels::meansFile(nameOrFile)) {
        m_path = *model;
        return true;
    }
    const QFileInfo file(onDisk(nameOrFile));
    if (!file.exists()) {
        reason += QStringLiteral("; nor is there a file of that name")
                  + nearHint(nameOrFile, GeoidModels::names())
                  + QStringLiteral(" ('kelstd geoid list' lists the models)");
        return false;
    }
    if (!file.isFile()) {
        reason = QStringLiteral("it is no file");
        return false;
    }
    if (GridFile::isGgfName(nameOrFile))
        return convertForTheRun(file.absoluteFilePath(), reason);
    // PROJ looks for a relative path in places of its own.
    m_path = file.absoluteFilePath();
    return true;
}

bool ChosenGrid::convertForTheRun(const QString &ggf, QString &reason)
{
    // The signs of its path do not matter: PROJ is given the conversion.
    GridFile grid;
    GridFailure failure = grid.open(ggf);
    if (!failure)
        failure = grid.completeness();
    if (failure) {
        reason = failure.text;
        return false;
    }
    m_converted.emplace();
    m_path = m_converted->filePath(QStringLiteral("model.gtx"));
    if (m_converted->isValid() && ProjLib::ConvertGeoidModelFile_GGF(ggf, m_path))
        return true;
    reason = QStringLiteral("its conversion cannot be written to %1").arg(m_path);
    return false;
}

} // namespace KelStd::cli
