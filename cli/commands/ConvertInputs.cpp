#include <cli/commands/ConvertInputs.h>

#include <cli/run/PositionInput.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/FilePath.h>
#include <cli/vector/FileOutput.h>
#include <cli/vector/VectorFormats.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <algorithm>

namespace KelStd::cli {

namespace {

/// What is said of an option that is for lists of text; empty for none.
QString textOptionAmong(const CommandLine &line)
{
    for (const char *const option : {"columns", "skip"}) {
        if (line.isSet(QString::fromLatin1(option))) {
            return QStringLiteral("--%1 is for positions as text, and the input is a vector file")
                .arg(QLatin1String(option));
        }
    }
    return {};
}

/// What the last of several operands may be meant as; empty where it is no form of output.
QString outputHint(const QStringList &operands)
{
    return operands.size() > 1 && vector::FileOutput::hasExtension(operands.last())
               ? QStringLiteral("; -o %1 writes a file").arg(operands.last())
               : QString();
}

/// Whether a file begins with a sentence of NMEA 0183. Nothing is read of a pipe.
bool beginsWithSentence(const QString &name)
{
    constexpr qint64 lookedAt = 200;
    static const QRegularExpression sentence(QStringLiteral("\\A\\s*[$!][A-Z]{2}[A-Z0-9]{3},"));
    QFile file(onDisk(name));
    return QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly)
           && sentence.match(QString::fromLatin1(file.read(lookedAt))).hasMatch();
}

} // namespace

QString mistakeInOperands(const QStringList &operands)
{
    const bool isOutput = operands.size() > 1 && !QFileInfo::exists(onDisk(operands.last()))
                          && vector::FileOutput::hasExtension(operands.last());
    return isOutput ? QStringLiteral("cannot open %1: there is no such file").arg(operands.last())
                          + outputHint(operands)
                    : QString();
}

bool isLayer(const QStringList &operands, const ConvertOptions &options)
{
    return !options.isNmea && std::any_of(operands.begin(), operands.end(), vector::isVectorFile);
}

QString mistakeForLayer(const CommandLine &line)
{
    const QStringList operands = line.positionals();
    const QString mistake = textOptionAmong(line);
    if (!mistake.isEmpty())
        return mistake;
    return operands.size() > 1
               ? QStringLiteral("a vector file is read alone") + outputHint(operands)
               : QString();
}

QString mistakeForList(const CommandLine &line, const ConvertOptions &options)
{
    if (line.isSet(QStringLiteral("names")) && !options.isNmea)
        return QStringLiteral("--names is for --nmea and vector files");
    if (line.isSet(QStringLiteral("layer")))
        return QStringLiteral("--layer is for vector files");
    const QStringList operands = line.positionals();
    const auto nmea = std::find_if(operands.begin(), operands.end(), beginsWithSentence);
    return options.isNmea || nmea == operands.end() || line.isSet(QStringLiteral("columns"))
               ? QString()
               : QStringLiteral("%1 begins with a sentence of NMEA 0183, which --nmea reads")
                     .arg(*nmea);
}

QString mistakeInInputs(const ConvertOptions &options, const PositionInput &input)
{
    const bool isOne = input.inputs().size() == 1;
    if (!options.rejects.isEmpty() && !isOne && !options.isNmea) {
        return QStringLiteral("--rejects is for one input: lines of several have several orders");
    }
    return {};
}

} // namespace KelStd::cli
