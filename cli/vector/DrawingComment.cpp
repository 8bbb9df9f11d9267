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

struct FirstComments
{
    QString system;
    QString definition; ///< behind the one of the unit
};

/// The comments with which a drawing begins, joined: a long one is written in pieces.
FirstComments firstComments(const QString &path)
{
    constexpr int maxGroups = 1000;
    constexpr qint64 maxLine = 4096; // [bytes]
    QFile drawing(path);
    QByteArray before;
    QByteArray behind;
    if (!drawing.open(QIODevice::ReadOnly))
        return {};
    bool isBehind = false;
    for (int i = 0; i < maxGroups && drawing.readLine(maxLine).trimmed() == "999"; ++i) {
        const QByteArray comment = drawing.readLine(maxLine).trimmed();
        if (comment.startsWith("1 unit = "))
            isBehind = true;
        else
            (isBehind ? behind : before) += comment;
    }
    return {unescaped(QString::fromUtf8(before)),
            behind.startsWith("+proj=") ? unescaped(QString::fromUtf8(behind)) : QString()};
}

} // namespace

QString DrawingComment::text() const
{
    const bool isAboveGeoid = heightReference != positions::heightReference({});
    return QStringLiteral("%1: easting, northing, %2 height in %3%4")
        .arg(system, isAboveGeoid ? geoid : ellipsoidal, unit,
             isAboveGeoid ? QStringLiteral(", above ") + heightReference : QString());
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
                       "(?:, above (geoid .+))?\\z"),
        QRegularExpression::DotMatchesEverythingOption);
    const FirstComments comments = firstComments(path);
    const QRegularExpressionMatch match = form.match(comments.system);
    if (!match.hasMatch())
        return std::nullopt;
    DrawingComment comment;
    comment.system = match.captured(1);
    comment.unit = match.captured(3);
    comment.definition = comments.definition;
    if (match.captured(2) == ellipsoidal)
        comment.heightReference = positions::heightReference({});
    else
        comment.heightReference = match.captured(4).isEmpty() ? geoid : match.captured(4);
    return comment;
}

} // namespace KelStd::cli::vector
