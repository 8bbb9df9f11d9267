#include <KelStd/positions/ControlList.h>

#include <KelStd/positions/HeadedList.h>
#include <KelStd/positions/OtherColumns.h>

namespace KelStd::positions {

namespace {

/// The columns of a list of control points.
enum ControlColumn
{
    Name,
    Longitude,
    Latitude,
    Height,
    Northing,
    Easting,
    Elevation,
    Use,
    SigmaH,
    SigmaV
};

const InputForm &geographicForm()
{
    static const InputForm form(Frame::Wgs84Geographic);
    return form;
}

const InputForm &planeForm()
{
    static const InputForm form(Frame::LocalProjected);
    return form;
}

/// "site_northing" and "control_northing" as "northing": whose they are is known.
Heading withoutOwner(const Heading &heading)
{
    Heading own = heading;
    for (const char *owner : {"site_", "control_"}) {
        const QString prefix = QString::fromLatin1(owner);
        if (!heading.whole.startsWith(prefix))
            continue;
        own.whole = heading.whole.mid(prefix.size());
        own.word = own.whole;
        own.frame = QStringLiteral("local");
    }
    return own;
}

bool isOneOf(const QString &word, const char *words)
{
    return QString::fromLatin1(words).split(QLatin1Char(' ')).contains(word);
}

ListColumn component(const InputForm &form, int index)
{
    const Column &column = columnOf(form.frame, index);
    ListColumn row;
    row.label = QString::fromLatin1(column.label);
    row.isAngle = isAngle(column);
    row.isHeadedBy = [&form, index](const Heading &heading) {
        return isNamedBy(form, index, withoutOwner(heading));
    };
    return row;
}

ListColumn worded(const QString &label, const char *words, bool isText)
{
    ListColumn row;
    row.label = label;
    row.isNeeded = false;
    row.isText = isText;
    row.isHeadedBy = [words](const Heading &heading) { return isOneOf(heading.whole, words); };
    return row;
}

ListColumn nameColumn()
{
    ListColumn row;
    row.label = QStringLiteral("name");
    row.isText = true;
    row.isHeadedBy = [](const Heading &heading) {
        return isNameWord(normalisedHeading(heading.text));
    };
    return row;
}

std::vector<ListColumn> controlColumns()
{
    ListColumn height = component(geographicForm(), 2);
    height.isHeadedBy = [](const Heading &heading) {
        return isNamedBy(geographicForm(), 2, heading);
    };
    ListColumn elevation =
        worded(QStringLiteral("elevation"),
               "elevation elev orthometric_height local_height site_height control_height "
               "site_elevation control_elevation local_elevation",
               false);
    return {nameColumn(),
            component(geographicForm(), 0),
            component(geographicForm(), 1),
            height,
            component(planeForm(), 0),
            component(planeForm(), 1),
            elevation,
            worded(QStringLiteral("use"), "use", true),
            worded(QStringLiteral("sigma_h"), "sigma_h", false),
            worded(QStringLiteral("sigma_v"), "sigma_v", false)};
}

/// The columns of a list of pairs, side by side; those of a name come first.
enum Side
{
    Local,
    Wgs84
};

constexpr const char *sideWords[] = {"local", "wgs84"};
constexpr int columnsOfSide = 2 * componentsPerFrame;

int pairColumn(Side side, bool isGeographic, int index)
{
    return 1 + side * columnsOfSide + (isGeographic ? 0 : componentsPerFrame) + index;
}

std::vector<ListColumn> pairColumns()
{
    static const InputForm cartesian(Frame::Wgs84Cartesian);
    std::vector<ListColumn> columns = {nameColumn()};
    for (const char *side : sideWords) {
        for (const InputForm *form :
             {&geographicForm(), static_cast<const InputForm *>(&cartesian)}) {
            for (int i = 0; i < componentsPerFrame; ++i) {
                const Column &column = columnOf(form->frame, i);
                ListColumn row;
                row.label = QLatin1String(side) + QLatin1Char('_')
                            + QString::fromLatin1(column.label).toLower();
                row.isNeeded = false;
                row.isAngle = isAngle(column);
                row.isHeadedBy = [side, words = wordsFor(*form, i)](const Heading &heading) {
                    return heading.frame == QLatin1String(side) && words.contains(heading.word);
                };
                columns.push_back(row);
            }
        }
    }
    return columns;
}

bool hasSide(const HeadedList &list, Side side, bool isGeographic)
{
    for (int i = 0; i < componentsPerFrame; ++i) {
        if (!list.has(pairColumn(side, isGeographic, i)))
            return false;
    }
    return true;
}

bool hasAnyOf(const HeadedList &list, Side side, bool isGeographic)
{
    for (int i = 0; i < componentsPerFrame; ++i) {
        if (list.has(pairColumn(side, isGeographic, i)))
            return true;
    }
    return false;
}

/// Empty, or why the headings do not say what a side is.
QString sideMistake(const HeadedList &list, Side side)
{
    const QString word = QLatin1String(sideWords[side]);
    if (hasAnyOf(list, side, true) && hasAnyOf(list, side, false)) {
        return QStringLiteral("the headings name %1 positions in two ways; leave out %1_x, %1_y, "
                              "%1_z or %1_longitude, %1_latitude, %1_height")
            .arg(word);
    }
    if (hasSide(list, side, true) || hasSide(list, side, false))
        return {};
    return QStringLiteral("the headings have to name %1_x, %1_y and %1_z, or %1_longitude, "
                          "%1_latitude and %1_height")
        .arg(word);
}

/// The same of the headings as a whole.
QString headingMistake(const HeadedList &list)
{
    const QString local = sideMistake(list, Local);
    return local.isEmpty() ? sideMistake(list, Wgs84) : local;
}

QString readSide(const HeadedList &list, Side side, Pos &position)
{
    const bool isGeographic = hasSide(list, side, true);
    const std::array<int, componentsPerFrame> columns = {pairColumn(side, isGeographic, 0),
                                                         pairColumn(side, isGeographic, 1),
                                                         pairColumn(side, isGeographic, 2)};
    for (const int column : columns) {
        if (list.textOf(column).isEmpty())
            return QStringLiteral("a coordinate of the %1 position is missing")
                .arg(QLatin1String(sideWords[side]));
    }
    Components values{};
    const InputForm form(isGeographic ? Frame::Wgs84Geographic : Frame::Wgs84Cartesian);
    const QString mistake = list.readPosition(form, columns, values);
    if (!mistake.isEmpty())
        return QStringLiteral("%1 %2").arg(QLatin1String(sideWords[side]), mistake);
    position = isGeographic ? Pos::fromLongLatH(values[0], values[1], values[2])
                            : Pos::fromXYZ(values[0], values[1], values[2]);
    return {};
}

} // namespace

ControlListReader::ControlListReader(const std::optional<PlaneUnit> &planeUnit)
    : m_list(std::make_unique<HeadedList>(controlColumns())), m_planeUnit(planeUnit)
{}

ControlListReader::~ControlListReader() = default;

bool ControlListReader::hasHeadings() const
{
    return m_list->hasHeadings();
}

ListShape ControlListReader::shape() const
{
    return m_list->shape();
}

QStringList ControlListReader::notRead() const
{
    return m_list->notRead();
}

bool ControlListReader::usesPlaneUnit() const
{
    return m_planeUnit && m_list->hasHeadings()
           && !(m_list->measureOfHeading(Northing) && m_list->measureOfHeading(Easting));
}

bool ControlListReader::read(std::string_view line, QString &mistake)
{
    switch (m_list->take(line, mistake)) {
    case HeadedList::Result::Nothing: return true;
    case HeadedList::Result::Mistake: return false;
    case HeadedList::Result::Row: break;
    }
    ControlPoint point;
    mistake = readRow(point);
    if (mistake.isEmpty())
        m_points += point;
    return mistake.isEmpty();
}

QString ControlListReader::readRow(ControlPoint &point) const
{
    const HeadedList &list = *m_list;
    point.name = list.textOf(Name);
    if (point.name.isEmpty())
        return QStringLiteral("the point has no name");
    Components measured{};
    QString mistake = list.readPosition(geographicForm(), {Longitude, Latitude, Height}, measured);
    if (!mistake.isEmpty())
        return mistake;
    point.wgs84 = Pos::fromLongLatH(measured[0], measured[1], measured[2]);
    Components known{};
    InputForm plane = planeForm();
    plane.planeUnit = m_planeUnit;
    mistake = list.readPosition(plane, {Northing, Easting, Elevation}, known);
    if (!mistake.isEmpty())
        return mistake;
    point.north = known[0];
    point.east = known[1];
    if (!list.textOf(Elevation).isEmpty())
        point.height = known[2];
    const QString use = list.textOf(Use);
    if (!use.isEmpty() && !point.setUse(use)) {
        return QStringLiteral("the use %1 is none of h, v, hv and -").arg(quoted(use));
    }
    const struct
    {
        int column;
        std::optional<double> ControlPoint::*sigma;
    } sigmas[] = {{SigmaH, &ControlPoint::sigmaH}, {SigmaV, &ControlPoint::sigmaV}};
    for (const auto &row : sigmas) {
        mistake = list.readNumberOf(row.column, point.*row.sigma);
        if (!mistake.isEmpty())
            return mistake;
        if (point.*row.sigma)
            *(point.*row.sigma) *= list.measureOfHeading(row.column).value_or(1.0);
    }
    return {};
}

PairListReader::PairListReader() : m_list(std::make_unique<HeadedList>(pairColumns())) {}

PairListReader::~PairListReader() = default;

bool PairListReader::hasHeadings() const
{
    return m_list->hasHeadings() && headingMistake(*m_list).isEmpty();
}

ListShape PairListReader::shape() const
{
    return m_list->shape();
}

QStringList PairListReader::notRead() const
{
    return m_list->notRead();
}

bool PairListReader::isLocalGeographic() const
{
    return m_list->hasHeadings() && hasSide(*m_list, Local, true);
}

bool PairListReader::isWgs84Geographic() const
{
    return m_list->hasHeadings() && hasSide(*m_list, Wgs84, true);
}

bool PairListReader::read(std::string_view line, QString &mistake)
{
    const HeadedList::Result result = m_list->take(line, mistake);
    if (result == HeadedList::Result::Mistake)
        return false;
    if (m_list->hasHeadings() && m_pairs.isEmpty()) {
        mistake = headingMistake(*m_list);
        if (!mistake.isEmpty())
            return false;
    }
    if (result == HeadedList::Result::Nothing)
        return true;
    PositionPair pair;
    pair.name = m_list->textOf(Name);
    mistake = pair.name.isEmpty() ? QStringLiteral("the point has no name")
                                  : readSide(*m_list, Local, pair.local);
    if (mistake.isEmpty())
        mistake = readSide(*m_list, Wgs84, pair.wgs84);
    if (mistake.isEmpty())
        m_pairs += pair;
    return mistake.isEmpty();
}

} // namespace KelStd::positions
