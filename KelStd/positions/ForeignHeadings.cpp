#include <KelStd/positions/ForeignHeadings.h>

#include <QtCore/QHash>
#include <QtCore/QStringList>

#include <algorithm>

namespace KelStd::positions {

namespace {

struct Translation
{
    const char16_t *words; ///< with blanks between them
    const char *english;
};

constexpr Translation translations[] = {
    {u"rechtswert ostwert sa\u011Fa_de\u011Fer saga_deger", "easting"},
    {u"hochwert nordwert yukar\u0131_de\u011Fer yukari_de\u011Fer yukari_deger", "northing"},
    {u"l\u00E4nge laenge l\u00E4ngengrad laengengrad geographische_l\u00E4nge "
     u"geographische_laenge geogr_l\u00E4nge boylam",
     "longitude"},
    {u"breite breitengrad geographische_breite geogr_breite enlem", "latitude"},
    {u"h\u00F6he hoehe y\u00FCkseklik yukseklik", "height"},
    {u"ellipsoidische_h\u00F6he ellipsoidische_hoehe ell_h\u00F6he ellipsoidh\u00F6he "
     u"elipsoidal_y\u00FCkseklik elipsoidal_yukseklik elipsoit_y\u00FCksekli\u011Fi "
     u"ell_height ell_ht ellipsoid_height ellipsoidal_ht ellipsoid_ht h_ell",
     "ellipsoidal_height"},
};

bool isAmong(const QString &word, const char16_t *words)
{
    return QString::fromUtf16(words).split(QLatin1Char(' ')).contains(word);
}

} // namespace

QString englishHeading(const QString &word)
{
    static const QHash<QString, QString> english = [] {
        QHash<QString, QString> all;
        for (const Translation &row : translations) {
            for (const QString &foreign : QString::fromUtf16(row.words).split(QLatin1Char(' ')))
                all.insert(foreign, QString::fromLatin1(row.english));
        }
        return all;
    }();
    return english.value(word, word);
}

bool speaksOfHeight(const QString &word)
{
    const QStringList parts = word.split(QLatin1Char('_'), Qt::SkipEmptyParts);
    // Alone, or before what it is above: "h_ell". A unit stands behind another word: "time_h".
    if (!parts.isEmpty() && isAmong(parts.first(), u"h z"))
        return true;
    return std::any_of(parts.cbegin(), parts.cend(), [](const QString &part) {
        static const QStringList beginnings =
            QString::fromUtf16(u"height elev altit hauteur y\u00FCksek yuksek h\u00F6h hoeh hoogte")
                .split(QLatin1Char(' '));
        return isAmong(part,
                       u"hgt ht ele el alt kot rakim rak\u0131m quota cota altura msl nn nhn nap "
                       u"geoid orthometric")
               || std::any_of(
                   beginnings.cbegin(), beginnings.cend(),
                   [&part](const QString &beginning) { return part.contains(beginning); });
    });
}

} // namespace KelStd::positions
