#include <cli/vector/DrawingComment.h>

#include <KelStd/positions/Columns.h>

#include <QtCore/QByteArray>
#include <QtCore/QFile>
#include <QtCore/QRegularExpression>

namespace KelStd::cli::vector {

namespace {

const QString ellipsoidal = QStringLiteral("ellipsoidal");
const QString geoid = QStringLiteral("geoid");

/// Without the escapes of characters that drawings cannot hold.
QString unescaped(const QString &text)
{
    static const QRegularExpression escape(QStringLiteral("\\\\U\\+([0-9A-F]{4})"));
    QString plain;
    int end = 0;
    for (auto found = escape.globalMatch(text); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        plain += text.mid(end, match.capturedStart() - end);
        plain += QChar(match.captured(1).toUShort(nullptr, 16));
        end = static_cast<int>(match.capturedEnd());
    }
    return plain + text.mid(end);
}

/// The comments with which a drawing begins, joined: a long one is written in pieces.
QString firstComments(const QString &path)
{
    constexpr int maxGroups = 1000;
    constexpr qint64 maxLine = 4096; // [bytes]
    QFile drawing(path);
    QByteArray comments;
    if (!drawing.open(QIODevice::ReadOnly))
        return {};
    for (int i = 0; i < maxGroups && drawing.readLine(maxLine).trimmed() == "999"; ++i) {
        const QByteArray comment = drawing.readLine(maxLine).trimmed();
        if (comment.startsWith("1 unit = "))
            break;
        comments += comment;
    }
    return unescaped(QString::fromUtf8(comments));
}

} // namespace

QString DrawingComment::text() const
{
    const bool isAboveGeoid = heightReference != positions::heightReference({});
    return QStringLiteral("%1: easting, northing, %2 height in %3%4%5")
        .arg(system, isAboveGeoid ? geoid : ellipsoidal, unit,
             isAboveGeoid ? QStringLiteral(", above ") + heightReference : QString(),
             definition.isEmpty() ? QString() : QStringLiteral("; ") + definition);
}

QString DrawingComment::code() const
{
    static const QRegularExpression code(QStringLiteral("\\A([A-Za-z]+:\\w+)(?: |\\z)"));
    return code.match(system).captured(1);
}

QString systemInComment(const QString &code, const QString &name)
{
    return QStringLiteral("%1 %2").arg(code, name).trimmed();
}

std::optional<DrawingComment> drawingComment(const QString &path)
{
    static const QRegularExpression form(
        QStringLiteral("\\A(.*): easting, northing, (ellipsoidal|geoid) height in (.+?)"
                       "(?:, above (geoid .+?))?(?:; (\\+proj=.+))?\\z"),
        QRegularExpression::DotMatchesEverythingOption);
    const QRegularExpressionMatch match = form.match(firstComments(path));
    if (!match.hasMatch())
        return std::nullopt;
    DrawingComment comment;
    comment.system = match.captured(1);
    comment.unit = match.captured(3);
    comment.definition = match.captured(5);
    if (match.captured(2) == ellipsoidal)
        comment.heightReference = positions::heightReference({});
    else
        comment.heightReference = match.captured(4).isEmpty() ? geoid : match.captured(4);
    return comment;
}

} // namespace KelStd::cli::vector
