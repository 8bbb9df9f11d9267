#include <KelStd/catalogue/SystemList.h>

#include <QtCore/QHash>

#include <algorithm>
#include <memory>
#include <tuple>

namespace KelStd::catalogue {

namespace {

struct KindRow
{
    PJ_TYPE type;
    SystemKind kind;
};

constexpr KindRow kindRows[] = {
    {PJ_TYPE_PROJECTED_CRS, SystemKind::Projected},
    {PJ_TYPE_COMPOUND_CRS, SystemKind::Compound},
    {PJ_TYPE_GEOGRAPHIC_2D_CRS, SystemKind::Geographic},
    {PJ_TYPE_GEOGRAPHIC_3D_CRS, SystemKind::Geographic},
    {PJ_TYPE_GEOCENTRIC_CRS, SystemKind::Geocentric},
    {PJ_TYPE_VERTICAL_CRS, SystemKind::Vertical},
};

SystemKind kindOf(PJ_TYPE type)
{
    for (const KindRow &row : kindRows) {
        if (row.type == type)
            return row.kind;
    }
    return SystemKind::Other;
}

/// Letters that have no decomposition into a letter and an accent.
QString plainLetter(QChar c)
{
    switch (c.unicode()) {
    case 0x00df: return QStringLiteral("ss");
    case 0x00e6: return QStringLiteral("ae");
    case 0x00f8: return QStringLiteral("o");
    case 0x0111: return QStringLiteral("d");
    case 0x0131: return QStringLiteral("i");
    case 0x0142: return QStringLiteral("l");
    case 0x0153: return QStringLiteral("oe");
    case 0x00fe: return QStringLiteral("th");
    case 0x00f0: return QStringLiteral("d");
    default: return c;
    }
}

QString withoutAccents(const QString &text)
{
    QString small = text.toLower();
    if (std::all_of(small.cbegin(), small.cend(), [](QChar c) { return c.unicode() < 128; }))
        return small;
    QString plain;
    for (const QChar c : small.normalized(QString::NormalizationForm_D)) {
        if (!c.isMark())
            plain += plainLetter(c);
    }
    return plain;
}

/// What one word of a query asks for: words that follow each other, "31n" is "31" and "n". The last
/// one may be the beginning of a longer word unless it is a number.
using Condition = QStringList;

std::vector<Condition> conditionsOf(const QString &words)
{
    std::vector<Condition> conditions;
    for (const QString &token : words.split(QChar(' '), Qt::SkipEmptyParts)) {
        QString plain = withoutAccents(token);
        // A sign within a word separates as a blank does.
        for (QChar &c : plain) {
            if (!c.isLetterOrNumber())
                c = QLatin1Char(' ');
        }
        for (const QString &part : plain.split(QLatin1Char(' '), Qt::SkipEmptyParts)) {
            Condition condition;
            for (const QString &word : comparedWords(part)) {
                if (!condition.isEmpty() && word.at(0).isDigit()) {
                    conditions.push_back(condition);
                    condition.clear();
                }
                condition += word;
            }
            if (!condition.isEmpty())
                conditions.push_back(condition);
        }
    }
    return conditions;
}

bool isMet(const Condition &condition, const QStringList &words)
{
    const auto count = condition.size();
    for (int start = 0; start + count <= words.size(); ++start) {
        bool isHere = true;
        for (int index = 0; index < count && isHere; ++index) {
            const QString &wanted = condition.at(index);
            const QString &word = words.at(start + index);
            const bool mayGoOn = index + 1 == count && !wanted.at(0).isDigit();
            isHere = mayGoOn ? word.startsWith(wanted) : word == wanted;
        }
        if (isHere)
            return true;
    }
    return false;
}

bool areMetIn(const std::vector<Condition> &conditions, const QStringList &words)
{
    return std::all_of(conditions.cbegin(), conditions.cend(),
                       [&words](const Condition &condition) { return isMet(condition, words); });
}

int metIn(const std::vector<Condition> &conditions, const QStringList &words)
{
    return static_cast<int>(
        std::count_if(conditions.cbegin(), conditions.cend(),
                      [&words](const Condition &condition) { return isMet(condition, words); }));
}

double sizeOf(const SystemArea &area)
{
    return area.isKnown ? area.width() * (area.north - area.south) : 360.0 * 180.0;
}

/// The smaller, the better.
using Rank = std::tuple<bool, bool, int, bool, bool, bool, int, double, QString>;

struct Ranked
{
    Rank rank;
    const FoundSystem *system;
};

bool isPlace(const FoundSystem &system, const SystemQuery &query)
{
    return (query.withDeprecated || !system.isDeprecated)
           && (!query.at || system.area.contains(*query.at))
           && (!query.box || system.area.intersects(*query.box));
}

std::vector<FoundSystem> inOrder(std::vector<Ranked> ranked)
{
    std::sort(ranked.begin(), ranked.end(),
              [](const Ranked &a, const Ranked &b) { return a.rank < b.rank; });
    std::vector<FoundSystem> found;
    found.reserve(ranked.size());
    for (const Ranked &row : ranked)
        found.push_back(*row.system);
    return found;
}

/// The datum that most people mean who name none.
bool isOnWgs84(const QString &plainName)
{
    return plainName.startsWith(QLatin1String("wgs 84 "));
}

/// Whether words stand in a name one after the other.
bool isWithin(const QString &words, const QString &name)
{
    const QLatin1Char blank(' ');
    return (blank + name + blank).contains(blank + words + blank);
}

struct InfoListDeleter
{
    void operator()(PROJ_CRS_INFO **list) const
    {
        proj::LoadedProj::instance().functions().proj_crs_info_list_destroy(list);
    }
};

FoundSystem systemOf(const PROJ_CRS_INFO &info)
{
    FoundSystem system;
    system.code =
        QString::fromUtf8(info.auth_name) + QLatin1Char(':') + QString::fromUtf8(info.code);
    system.name = QString::fromUtf8(info.name);
    system.kind = kindOf(info.type);
    system.isDeprecated = info.deprecated != 0;
    system.area.name = QString::fromUtf8(info.area_name);
    system.area.isKnown = info.bbox_valid != 0;
    if (system.area.isKnown) {
        system.area.west = info.west_lon_degree;
        system.area.south = info.south_lat_degree;
        system.area.east = info.east_lon_degree;
        system.area.north = info.north_lat_degree;
    }
    return system;
}

} // namespace

QStringList comparedWords(const QString &text)
{
    const QString plain = withoutAccents(text);
    QStringList words;
    int start = 0;
    const auto kindAt = [&plain](int index) {
        const QChar c = plain.at(index);
        return c.isDigit() ? 1 : (c.isLetter() ? 2 : 0);
    };
    while (start < plain.size()) {
        const int kind = kindAt(start);
        int end = start + 1;
        while (end < plain.size() && kindAt(end) == kind)
            ++end;
        if (kind != 0)
            words += plain.mid(start, end - start);
        start = end;
    }
    return words;
}

void SystemList::read(const ProjSession &session)
{
    if (!m_entries.empty())
        return;
    const proj::ProjFunctions &proj = session.functions();
    PROJ_CRS_LIST_PARAMETERS *const parameters = proj.proj_get_crs_list_parameters_create();
    if (parameters == nullptr)
        return;
    parameters->allow_deprecated = 1;
    int count = 0;
    const std::unique_ptr<PROJ_CRS_INFO *, InfoListDeleter> list(
        proj.proj_get_crs_info_list_from_database(session.context(), nullptr, parameters, &count));
    proj.proj_get_crs_list_parameters_destroy(parameters);
    if (list == nullptr)
        return;
    QHash<QString, std::size_t> places;
    m_entries.reserve(static_cast<std::size_t>(count));
    for (int index = 0; index < count; ++index) {
        FoundSystem system = systemOf(*list.get()[index]);
        // A system with several areas of use is listed for each: the largest one stays.
        const auto known = places.constFind(system.code);
        if (known != places.constEnd()) {
            SystemArea &area = m_entries[known.value()].system.area;
            if (sizeOf(system.area) > sizeOf(area))
                area = system.area;
            continue;
        }
        places.insert(system.code, m_entries.size());
        Entry entry;
        const QStringList name = comparedWords(system.name);
        entry.plainName = name.join(QLatin1Char(' '));
        entry.words = name + comparedWords(system.code) + comparedWords(system.area.name);
        entry.system = std::move(system);
        m_entries.push_back(std::move(entry));
    }
}

std::vector<FoundSystem> SystemList::search(const SystemQuery &query) const
{
    const std::vector<Condition> conditions = conditionsOf(query.words.simplified());
    const int wanted = static_cast<int>(conditions.size());
    const QString whole = query.words.trimmed();
    const QString plainWhole = comparedWords(query.words).join(QLatin1Char(' '));
    const bool isOfPlace = query.at || query.box;
    std::vector<Ranked> ranked;
    for (const Entry &entry : m_entries) {
        const FoundSystem &system = entry.system;
        if (!isPlace(system, query) || !areMetIn(conditions, entry.words))
            continue;
        const QStringList name = entry.plainName.split(QLatin1Char(' '));
        const QString code = system.code;
        const bool isCode =
            code.compare(whole, Qt::CaseInsensitive) == 0 || code == QLatin1String("EPSG:") + whole;
        ranked.push_back(
            {Rank(!isCode, entry.plainName != plainWhole, wanted - metIn(conditions, name),
                  system.isDeprecated, system.kind != SystemKind::Projected,
                  !code.startsWith(QLatin1String("EPSG:")),
                  (isWithin(plainWhole, entry.plainName) ? 0 : 2)
                      + (isOfPlace || isOnWgs84(entry.plainName) ? 0 : 1),
                  isOfPlace ? sizeOf(system.area) : -sizeOf(system.area), code),
             &system});
    }
    return inOrder(std::move(ranked));
}

std::vector<FoundSystem> SystemList::named(const QString &name) const
{
    const QString simple = name.simplified();
    std::vector<Ranked> ranked;
    for (const Entry &entry : m_entries) {
        const FoundSystem &system = entry.system;
        if (system.name.simplified().compare(simple, Qt::CaseInsensitive) != 0)
            continue;
        ranked.push_back({Rank(system.isDeprecated, system.kind != SystemKind::Projected,
                               system.kind != SystemKind::Compound ? 1 : 0,
                               !system.code.startsWith(QLatin1String("EPSG:")), false, false, 0,
                               0.0, system.code),
                          &system});
    }
    return inOrder(std::move(ranked));
}

} // namespace KelStd::catalogue
