#include <cli/vector/CoordinateTexts.h>

#include <cli/terminal/ShownText.h>
#include <cli/vector/CoordinateLines.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>
#include <QtCore/QStringList>
#include <QtCore/QXmlStreamReader>

#include <algorithm>
#include <iterator>

namespace KelStd::cli::vector {

namespace {

/// What the content of an element is.
enum class Content
{
    Number,     ///< one
    Height,     ///< one, or "NaN" for none, as some receivers have it
    Tuple,      ///< two or three, between commas
    LooseTuple, ///< between commas, or else between blanks; other signs where its attributes say so
    Numbers,    ///< two or three, between blanks
    Pair        ///< two, between blanks or a comma
};

/// An element that has coordinates of points. Names are those without a prefix.
struct Element
{
    const char *format;
    const char *name;
    const char *parent; ///< in which it has that meaning; empty for any
    Content content;
};

constexpr Element elements[] = {
    {"GPX", "ele", "wpt", Content::Height},
    {"GPX", "ele", "rtept", Content::Height},
    {"GPX", "ele", "trkpt", Content::Height},
    {"KML", "coordinates", "Point", Content::Tuple},
    {"LIBKML", "coordinates", "Point", Content::Tuple},
    {"GML", "coordinates", "Point", Content::LooseTuple},
    {"GML", "pos", "Point", Content::Numbers},
    {"GML", "X", "coord", Content::Number},
    {"GML", "Y", "coord", Content::Number},
    {"GML", "Z", "coord", Content::Number},
    {"JML", "coordinates", "Point", Content::LooseTuple},
    {"GeoRSS", "point", "", Content::Pair},
    {"GeoRSS", "lat", "", Content::Number},
    {"GeoRSS", "long", "", Content::Number},
    {"GeoRSS", "coordinates", "Point", Content::LooseTuple},
    {"GeoRSS", "pos", "Point", Content::Numbers},
};

constexpr const char *pointsOfGpx[] = {"wpt", "rtept", "trkpt"};
constexpr const char *placesOfGpx[] = {"lat", "lon"};

QRegularExpression expression(const QString &form)
{
    static const QString number =
        QStringLiteral("[-+]?(?:[0-9]+\\.?[0-9]*|\\.[0-9]+)(?:[eE][-+]?[0-9]+)?");
    return QRegularExpression(
        QStringLiteral("\\A\\s*%1\\s*\\z").arg(QString(form).replace(QLatin1Char('n'), number)));
}

bool meets(const QString &text, Content content)
{
    static const QRegularExpression number = expression(QStringLiteral("n"));
    static const QRegularExpression tuple =
        expression(QStringLiteral("n\\s*,\\s*n(?:\\s*,\\s*n)?\\s*,?"));
    static const QRegularExpression blanks = expression(QStringLiteral("n\\s+n(?:\\s+n)?"));
    static const QRegularExpression pair = expression(QStringLiteral("n(?:\\s+|\\s*,\\s*)n"));
    const auto is = [&text](const QRegularExpression &form) { return form.match(text).hasMatch(); };
    switch (content) {
    case Content::Number: return is(number);
    case Content::Height: return is(number) || text.trimmed().toLower() == QLatin1String("nan");
    case Content::Tuple: return is(tuple);
    case Content::LooseTuple: return is(tuple) || is(blanks);
    case Content::Numbers: return is(blanks);
    case Content::Pair: return is(pair);
    }
    return false;
}

/// The text with a point in decimals and commas between numbers, where attributes of the element
/// say that it has others. Those signs themselves are none of it then.
QString withUsualSigns(QString text, const QXmlStreamAttributes &attributes)
{
    const QChar none = QChar::Null;
    const QString decimal = attributes.value(QLatin1String("decimal")).toString();
    const QString between = attributes.value(QLatin1String("cs")).toString();
    const bool hasComma = decimal == QLatin1String(",");
    if (!between.isEmpty() && between != QLatin1String(",")) {
        text.replace(QLatin1Char('.'), hasComma ? none : QChar(QLatin1Char('.')));
        text.replace(QLatin1Char(','), hasComma ? QChar(QLatin1Char('.')) : none);
        text.replace(between, QLatin1String(","));
    }
    return text;
}

QString localName(QXmlStreamReader &reader)
{
    return reader.qualifiedName().toString().section(QLatin1Char(':'), -1);
}

/// Reads the elements of one file.
class Elements
{
public:
    Elements(QIODevice &file, const std::string &format) : m_reader(&file), m_format(format)
    {
        // Prefixes that nothing declares are as good to drivers.
        m_reader.setNamespaceProcessing(false);
    }

    /// The first mistake; empty for none.
    QString mistake()
    {
        while (!m_reader.atEnd()) {
            QString found;
            switch (m_reader.readNext()) {
            case QXmlStreamReader::StartElement: found = begin(); break;
            case QXmlStreamReader::Characters:
                if (m_wanted != nullptr)
                    m_text += m_reader.text();
                break;
            case QXmlStreamReader::EndElement: found = end(); break;
            default: break;
            }
            if (!found.isEmpty())
                return QStringLiteral("line %1: %2").arg(m_reader.lineNumber()).arg(found);
        }
        return {};
    }

private:
    QString begin()
    {
        const QString name = localName(m_reader);
        const QString parent = m_open.isEmpty() ? QString() : m_open.last();
        m_open += name;
        const auto *const found =
            std::find_if(std::begin(elements), std::end(elements), [&](const Element &each) {
                return m_format == each.format && name == QLatin1String(each.name)
                       && (*each.parent == '\0' || parent == QLatin1String(each.parent));
            });
        m_wanted = found == std::end(elements) ? nullptr : found;
        m_attributes = m_reader.attributes();
        m_text.clear();
        return m_format == "GPX" ? mistakeOfGpx(name) : QString();
    }

    QString mistakeOfGpx(const QString &name) const
    {
        const bool isPoint =
            std::any_of(std::begin(pointsOfGpx), std::end(pointsOfGpx),
                        [&name](const char *each) { return name == QLatin1String(each); });
        for (const char *const place : placesOfGpx) {
            const QString text = m_attributes.value(QLatin1String(place)).toString();
            if (isPoint && text.trimmed().isEmpty())
                return QStringLiteral("the point (%1) has no \"%2\"")
                    .arg(name, QLatin1String(place));
            if (isPoint && !meets(text, Content::Number))
                return QStringLiteral("\"%1\" of the point (%2) is \"%3\", which is no number")
                    .arg(QLatin1String(place), name, shown(text));
        }
        return {};
    }

    /// An element without a text has no position or no height, which the driver sees.
    QString end()
    {
        const Element *const element = m_wanted;
        m_wanted = nullptr;
        if (!m_open.isEmpty())
            m_open.removeLast();
        if (element == nullptr || m_text.trimmed().isEmpty())
            return {};
        const bool mayHaveSigns = element->content == Content::LooseTuple;
        if (meets(mayHaveSigns ? withUsualSigns(m_text, m_attributes) : m_text, element->content))
            return {};
        const bool isOne =
            element->content == Content::Number || element->content == Content::Height;
        return QStringLiteral("\"%1\" of a point is \"%2\", which %3")
            .arg(QLatin1String(element->name), shown(m_text.simplified()),
                 isOne ? QStringLiteral("is no number")
                       : QStringLiteral("are not the two or three numbers of a position"));
    }

    QXmlStreamReader m_reader;
    std::string m_format;
    QStringList m_open; ///< elements, without prefixes
    const Element *m_wanted = nullptr;
    QXmlStreamAttributes m_attributes;
    QString m_text;
};

} // namespace

QString damagedCoordinate(const QString &path, const std::string &format)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    if (format == "DXF")
        return damageOfDrawing(file);
    if (format == "MapInfo File")
        return QFileInfo(path).suffix().toLower() == QLatin1String("mif") ? damageOfMif(file)
                                                                          : QString();
    const bool hasElements =
        std::any_of(std::begin(elements), std::end(elements),
                    [&format](const Element &each) { return format == each.format; });
    return hasElements ? Elements(file, format).mistake() : QString();
}

} // namespace KelStd::cli::vector
