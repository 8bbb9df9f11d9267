#include <cli/run/HeadingProposals.h>

#include <cli/terminal/FilePath.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

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

/// Without the fields in quotation marks that hold a separator: of a heading with a comma a shell
/// would have to complete the marks, too.
QString withoutHeldSeparators(QString line)
{
    static const QRegularExpression field(QStringLiteral("\"(?:[^\"]|\"\")*\""));
    static const QRegularExpression separator(QStringLiteral("[,;\\t]"));
    int from = 0;
    for (auto match = field.match(line); match.hasMatch(); match = field.match(line, from)) {
        const bool holdsSeparator = match.captured().contains(separator);
        from = static_cast<int>(holdsSeparator ? match.capturedStart() : match.capturedEnd());
        if (holdsSeparator)
            line.remove(match.capturedStart(), match.capturedLength());
    }
    return line;
}

/// At the first separator that there is.
QStringList fieldsOf(const QString &line)
{
    for (const char separator : {';', ',', '\t'}) {
        if (line.contains(QLatin1Char(separator)))
            return line.split(QLatin1Char(separator));
    }
    return line.split(QLatin1Char(' '), Qt::SkipEmptyParts);
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
    for (const QString &each :
         fieldsOf(withoutHeldSeparators(firstLine(line.positionals.value(0))))) {
        QString field = each.trimmed();
        field.remove(QLatin1Char('"'));
        if (isNumber(field))
            return {};
        if (!field.isEmpty() && !field.contains(QLatin1Char(',')))
            headings.append({field, QStringLiteral("column of the input")});
    }
    return headings;
}

} // namespace KelStd::cli
