#include <cli/run/HeadingProposals.h>

#include <cli/terminal/FilePath.h>

#include <KelStd/positions/LineSplitter.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>

namespace KelStd::cli {

namespace {

/// The first line that is neither blank nor below a #; empty for none, and for what is no text.
QString firstLine(const QString &fileName)
{
    constexpr qint64 maxBytes = 1 << 16; // a shell waits
    QFile file(onDisk(fileName));
    if (!QFileInfo(file).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    QByteArray bytes = file.read(maxBytes);
    if (bytes.contains('\0'))
        return {};
    if (bytes.startsWith("\xEF\xBB\xBF"))
        bytes.remove(0, 3);
    for (const QByteArray &line : bytes.split('\n')) {
        const QByteArray text = line.trimmed();
        if (!text.isEmpty())
            return QString::fromUtf8(text.startsWith('#') ? text.mid(1).trimmed() : text);
    }
    return {};
}

bool isNumber(const QString &field)
{
    bool ok = false;
    field.toDouble(&ok);
    return ok;
}

} // namespace

QList<Proposal> headingProposals(const TypedLine &line)
{
    QList<Proposal> headings;
    const positions::SplitLine split = positions::splitLine(firstLine(line.positionals.value(0)));
    for (const QString &field : split.fields) {
        if (isNumber(field))
            return {};
        if (!field.isEmpty() && !field.contains(QLatin1Char(',')))
            headings.append({field, QStringLiteral("column of the input")});
    }
    return headings;
}

} // namespace KelStd::cli
