#include <cli/vector/CoordinateLines.h>

#include <cli/terminal/ShownText.h>

#include <QtCore/QByteArray>
#include <QtCore/QIODevice>
#include <QtCore/QList>

#include <cmath>
#include <optional>

namespace KelStd::cli::vector {

namespace {

/// Lines of a text, counted. The end of an overlong one is left out.
class Lines
{
public:
    explicit Lines(QIODevice &file) : m_file(file) {}

    bool atEnd() const { return m_file.atEnd(); }
    qint64 number() const { return m_number; }

    QByteArray next()
    {
        constexpr qint64 longest = 65536; // [bytes]
        const QByteArray line = m_file.readLine(longest);
        ++m_number;
        bool isWhole = line.endsWith('\n');
        while (!isWhole && !m_file.atEnd())
            isWhole = m_file.readLine(longest).endsWith('\n');
        return line.trimmed();
    }

private:
    QIODevice &m_file;
    qint64 m_number = 0;
};

/// With a point in decimals, as files have it whatever the language.
bool isNumber(const QByteArray &text)
{
    bool ok = false;
    const double number = text.toDouble(&ok);
    return ok && std::isfinite(number);
}

QString atLine(qint64 line, const QString &mistake)
{
    return QStringLiteral("line %1: %2").arg(line).arg(mistake);
}

QString noNumber(qint64 line, const QByteArray &text)
{
    return atLine(line, QStringLiteral("a point has the coordinate \"%1\", which is no number")
                            .arg(shown(QString::fromUtf8(text))));
}

QList<QByteArray> fieldsOf(const QByteArray &line)
{
    return line.simplified().split(' ');
}

/// What stands where two numbers have to be; nothing where they are there.
std::optional<QByteArray> wrongPair(const QList<QByteArray> &fields)
{
    if (isNumber(fields.value(0)) && isNumber(fields.value(1)))
        return std::nullopt;
    return fields.join(' ');
}

} // namespace

QString damageOfDrawing(QIODevice &file)
{
    Lines lines(file);
    QByteArray entity;
    qint64 begin = 0; // line of the entity
    bool hasX = false;
    bool hasY = false;
    bool isInside = false;   // entities, or blocks, in which entities are as well
    bool isSection = false;  // behind the word
    bool isExtended = false; // data of other programs
    while (!lines.atEnd()) {
        const QByteArray group = lines.next();
        const QByteArray value = lines.next();
        bool ok = false;
        const int code = group.toInt(&ok);
        if (!ok)
            return {}; // no drawing, which the driver sees
        if (code == 0) {
            if (entity == "POINT" && !(hasX && hasY)) {
                return atLine(
                    begin, QStringLiteral("a point has no %1 (group %2)")
                               .arg(hasX ? QStringLiteral("northing") : QStringLiteral("easting"))
                               .arg(hasX ? 20 : 10));
            }
            isSection = value == "SECTION";
            if (value == "ENDSEC")
                isInside = false;
            entity = isInside ? value : QByteArray();
            begin = lines.number();
            hasX = hasY = isExtended = false;
            continue;
        }
        if (isSection && code == 2)
            isInside = value == "ENTITIES" || value == "BLOCKS";
        isSection = false;
        isExtended = isExtended || code == 1001;
        const bool isPlace = code == 10 || code == 20 || code == 30;
        const bool isOfInsert = (code >= 41 && code <= 45) || code == 50;
        const bool isChecked =
            (entity == "POINT" && isPlace) || (entity == "INSERT" && (isPlace || isOfInsert));
        if (!isChecked || isExtended)
            continue;
        if (!isNumber(value))
            return noNumber(lines.number(), value);
        hasX = hasX || code == 10;
        hasY = hasY || code == 20;
    }
    return {};
}

QString damageOfMif(QIODevice &file)
{
    Lines lines(file);
    while (!lines.atEnd() && lines.next().toLower() != "data") {
    }
    while (!lines.atEnd()) {
        const QList<QByteArray> fields = fieldsOf(lines.next());
        const QByteArray word = fields.first().toLower();
        if (word == "point") {
            if (const auto wrong = wrongPair(fields.mid(1)))
                return noNumber(lines.number(), *wrong);
        }
        const int points = word == "multipoint" ? fields.value(1).toInt() : 0;
        for (int i = 0; i < points && !lines.atEnd(); ++i) {
            if (const auto wrong = wrongPair(fieldsOf(lines.next())))
                return noNumber(lines.number(), *wrong);
        }
    }
    return {};
}

} // namespace KelStd::cli::vector
