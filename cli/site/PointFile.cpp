#include <cli/site/PointFile.h>

#include <cli/run/LineReader.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/ShownText.h>

#include <string_view>

namespace KelStd::cli {

namespace {

constexpr int maxReports = 20;

template <typename Reader>
std::optional<ExitStatus> read(const QString &fileName, Reader &reader, Console &console)
{
    LineReader lines;
    QString error;
    if (!lines.open(fileName, error)) {
        console.report(QStringLiteral("cannot read %1: %2").arg(fileName, error));
        return ExitStatus::Usage;
    }
    lines.joinQuotedFields();
    QByteArray line;
    qint64 mistakes = 0;
    const auto report = [&](const QString &mistake) {
        if (++mistakes <= maxReports) {
            console.report(
                QStringLiteral("%1:%2: %3")
                    .arg(lines.displayName(), QString::number(lines.lineNumber()), shown(mistake)));
        }
    };
    for (;;) {
        const LineReader::Result result = lines.next(line);
        if (result == LineReader::Result::End)
            break;
        if (result == LineReader::Result::Error) {
            console.report(QStringLiteral("cannot read %1: %2").arg(fileName, lines.errorText()));
            return ExitStatus::Environment;
        }
        QString mistake;
        if (result == LineReader::Result::TooLong)
            report(QStringLiteral("the line is too long"));
        else if (lines.opener() > 0)
            report(pieceMistake(lines.opener()));
        else if (!reader.read(
                     std::string_view(line.constData(), static_cast<std::size_t>(line.size())),
                     mistake))
            report(mistake);
        lines.setShape(reader.shape(), reader.hasRows());
        if (mistakes > 0 && !reader.hasHeadings())
            return ExitStatus::Usage;
    }
    if (!reader.hasHeadings()) {
        console.report(
            QStringLiteral("%1 has no headings, and no points").arg(lines.displayName()));
        return ExitStatus::Usage;
    }
    if (mistakes > maxReports)
        console.report(QStringLiteral("and %1 more lines like these").arg(mistakes - maxReports));
    if (mistakes > 0) {
        console.report(QStringLiteral("nothing is computed of a list with such lines"));
        return ExitStatus::SomeFailed;
    }
    if (!reader.notRead().isEmpty()) {
        console.report(QStringLiteral("note: columns that are not read: %1")
                           .arg(shown(reader.notRead().join(QLatin1String(", ")))));
    }
    return std::nullopt;
}

} // namespace

std::optional<ExitStatus> readPointFile(const QString &fileName,
                                        positions::ControlListReader &reader, Console &console)
{
    return read(fileName, reader, console);
}

std::optional<ExitStatus> readPointFile(const QString &fileName, positions::PairListReader &reader,
                                        Console &console)
{
    return read(fileName, reader, console);
}

} // namespace KelStd::cli
