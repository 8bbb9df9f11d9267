#include <KelStd/io/ProjNames.h>

#include <KelStd/coord/GeographicProjections.h>

#include <QtCore/QRegularExpression>
#include <QtCore/QSet>
#include <QtCore/QStringList>

#include <algorithm>

namespace KelStd::io {

namespace {

struct ProjectionRow
{
    const char *projections;
    const char *parameters; ///< beside the common ones
};

// From `proj -lP` and from what changes the results of PROJ 9.1.1's `proj`, each projection tried
// with every parameter. Parameters of which PROJ has constants of its own (nzmg, alpha of krovak)
// are listed where published definitions state them.
constexpr ProjectionRow projectionRows[] = {
    {geographicProjections, "lon_0"},
    {"tmerc", "x_0 y_0 lon_0 lat_0 k_0 k approx algo"},
    {"etmerc gstmerc lcca rouss somerc sterea tcea", "x_0 y_0 lon_0 lat_0 k_0 k"},
    {"utm", "zone south approx algo"},
    {"ups", "south"},
    {"merc cea", "x_0 y_0 lon_0 lat_ts k_0 k"},
    {"tobmerc", "x_0 y_0 lon_0 k_0 k"},
    {"lcc", "x_0 y_0 lon_0 lat_0 lat_1 lat_2 k_0 k"},
    {"stere", "x_0 y_0 lon_0 lat_0 lat_ts k_0 k"},
    {"omerc", "x_0 y_0 lat_0 k_0 k alpha gamma lonc lat_1 lon_1 lat_2 lon_2 no_uoff no_off no_rot"},
    {"ocea", "x_0 y_0 lat_0 k_0 k alpha lonc lat_1 lon_1 lat_2 lon_2"},
    {"krovak", "x_0 y_0 lon_0 lat_0 k_0 k alpha czech"},
    {"labrd", "x_0 y_0 lon_0 lat_0 k_0 k azi"},
    {"cass", "x_0 y_0 lon_0 lat_0 hyperbolic"},
    {"aeqd", "x_0 y_0 lon_0 lat_0 guam"},
    {"gnom laea nzmg ortho poly", "x_0 y_0 lon_0 lat_0"},
    {"aea eqdc euler murd1 murd2 murd3 pconic tissot vitk1", "x_0 y_0 lon_0 lat_0 lat_1 lat_2"},
    {"leac", "x_0 y_0 lon_0 lat_0 lat_1 south"},
    {"col_urban", "x_0 y_0 lon_0 lat_0 h_0"},
    {"eqc rpoly", "x_0 y_0 lon_0 lat_0 lat_ts"},
    {"bonne ccon loxim wink2 wintri", "x_0 y_0 lon_0 lat_1"},
    {"wag3 wink1", "x_0 y_0 lon_0 lat_ts"},
    {"lagrng", "x_0 y_0 lon_0 lat_1 W"},
    {"imw_p", "x_0 y_0 lon_0 lat_1 lat_2 lon_1"},
    {"airy", "x_0 y_0 lon_0 lat_0 lat_b no_cut"},
    {"bipc", "x_0 y_0 lon_0 ns"},
    {"chamb", "x_0 y_0 lon_0 lat_1 lon_1 lat_2 lon_2 lat_3 lon_3"},
    {"tpeqd", "x_0 y_0 lon_0 lat_1 lon_1 lat_2 lon_2"},
    {"geos", "x_0 y_0 lon_0 h sweep"},
    {"nsper", "x_0 y_0 lon_0 lat_0 h"},
    {"tpers", "x_0 y_0 lon_0 lat_0 h tilt azi"},
    {"oea", "x_0 y_0 lon_0 lat_0 n m theta"},
    {"hammer", "x_0 y_0 lon_0 W M"},
    {"fouc_s urmfps", "x_0 y_0 lon_0 n"},
    {"gn_sinu", "x_0 y_0 lon_0 n m"},
    {"urm5", "x_0 y_0 lon_0 n q alpha"},
    {"lsat", "x_0 y_0 lsat path"},
    {"misrsom", "x_0 y_0 path"},
    {"healpix", "x_0 y_0 lon_0 rot_xy"},
    {"rhealpix", "x_0 y_0 lon_0 north_square south_square"},
    {"adams_hemi adams_ws1 adams_ws2 aitoff apian august bacon boggs cc collg comill crast denoy "
     "eck1 eck2 eck3 eck4 eck5 eck6 eqearth fahey fouc gall gins8 goode guyou hatano igh igh_o "
     "imoll imoll_o kav5 kav7 larr lask mbt_fps mbt_s mbtfpp mbtfpq mbtfps mill moll natearth "
     "natearth2 nell nell_h nicol ortel patterson putp1 putp2 putp3 putp3p putp4p putp5 putp5p "
     "putp6 putp6p qua_aut robin sinu tcc times vandg vandg2 vandg3 vandg4 wag1 wag2 wag4 wag5 "
     "wag6 wag7 webmerc weren",
     "x_0 y_0 lon_0"},
};

// Of projections that have no row.
constexpr const char *otherParameters =
    "orient mode aperture resolution rescale UVtoST shape scrollx scrolly o_proj o_lat_p o_lon_p "
    "o_alpha o_lon_c o_lat_c o_lon_1 o_lat_1 o_lon_2 o_lat_2 plat_0 plon_0 phdg_0";

// Ellipsoid, datum, axes and bookkeeping go with every projection (some change what other records
// say, see coord/OverrulingKeys.cpp). to_meter is not among them: the definition has units already,
// which PROJ prefers.
constexpr const char *commonParameters =
    "a b ellps R rf f es e R_A R_V R_a R_g R_h R_lat_a R_lat_g datum towgs84 nadgrids geoidgrids "
    "geoid_crs pm axis units vunits vto_meter over lon_wrap geoc no_defs wktext";

constexpr const char *flags =
    "south approx over geoc no_uoff no_off no_rot no_cut ns guam czech hyperbolic "
    "rescale no_defs wktext R_A R_V R_a R_g R_h";

QStringList wordsOf(const char *words)
{
    return QString::fromLatin1(words).split(QLatin1Char(' '));
}

bool hasWord(const char *words, const QString &word)
{
    return wordsOf(words).contains(word);
}

QSet<QString> allParameters()
{
    QSet<QString> all;
    const auto add = [&all](const char *words) {
        for (const QString &word : wordsOf(words))
            all += word;
    };
    for (const ProjectionRow &row : projectionRows)
        add(row.parameters);
    add(otherParameters);
    add(commonParameters);
    return all;
}

/// Whether each of the grids is one name without "@".
bool areGridNames(const QString &grids)
{
    const QStringList names = grids.split(QLatin1Char(','));
    return std::all_of(names.cbegin(), names.cend(), [](const QString &name) {
        return !name.isEmpty() && !name.startsWith(QLatin1Char('@')) && isOneProjName(name);
    });
}

} // namespace

bool isProjParameter(const QString &name)
{
    static const QSet<QString> all = allParameters();
    return all.contains(name);
}

bool isProjParameterOf(const QString &projection, const QString &name)
{
    if (!isProjParameter(name))
        return false;
    for (const ProjectionRow &row : projectionRows) {
        if (hasWord(row.projections, projection))
            return hasWord(row.parameters, name) || hasWord(commonParameters, name);
    }
    return true;
}

bool isProjFlag(const QString &name)
{
    return hasWord(flags, name);
}

bool isOneProjName(const QString &text)
{
    return std::none_of(text.cbegin(), text.cend(), [](QChar c) {
        return c.isSpace() || c.category() == QChar::Other_Control
               || QStringLiteral("+=,;#\"").contains(c);
    });
}

NameWithGrids splitEllipsoidName(const QString &text)
{
    const QString key = QStringLiteral(" +nadgrids=");
    const auto at = text.indexOf(key);
    if (at < 0)
        return {text, {}};
    return {text.left(at).trimmed(), text.mid(at + key.size())};
}

bool isOneProjEllipsoid(const QString &text)
{
    static const QRegularExpression radius(QStringLiteral("^(\\S+) \\+R=[0-9]+(?:\\.[0-9]+)?$"));
    const NameWithGrids parts = splitEllipsoidName(text);
    if (!parts.grids.isEmpty())
        return !parts.name.isEmpty() && isOneProjName(parts.name) && areGridNames(parts.grids);
    const QRegularExpressionMatch match = radius.match(text);
    return isOneProjName(match.hasMatch() ? match.captured(1) : text);
}

} // namespace KelStd::io
