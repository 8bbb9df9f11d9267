#include <cli/geoids/SeparationJob.h>

#include <KelStd/positions/CsvWriter.h>
#include <KelStd/positions/PlainNumbers.h>
#include <KelStd/proj/ProjLib.h>

namespace KelStd::cli {

namespace {

/// A point with both of its heights [deg, m].
struct GeoidPoint
{
    double longitude;
    double latitude;
    double ellipsoidal;
    double separation; ///< of the geoid above the ellipsoid
    double aboveGeoid;
};

/// A column of the output, in both of its forms.
struct GeoidColumn
{
    const char *heading;
    const char *unit;
    const char *csvName;
    int width; ///< of the table
    int tableDecimals;
    int csvDecimals;
    double GeoidPoint::*value;
};

constexpr GeoidColumn geoidColumns[] = {
    {"longitude", "deg", "wgs84_longitude_deg", 14, 9, 11, &GeoidPoint::longitude},
    {"latitude", "deg", "wgs84_latitude_deg", 13, 9, 11, &GeoidPoint::latitude},
    {"height", "m (ell.)", "wgs84_height_m", 11, 4, 5, &GeoidPoint::ellipsoidal},
    {"separation", "m", "geoid_separation_m", 10, 4, 5, &GeoidPoint::separation},
    {"height", "m (geoid)", "height_above_geoid_m", 11, 4, 5, &GeoidPoint::aboveGeoid},
};

} // namespace

/// Prints the points as comma-separated values or as a table.
class SeparationWriter
{
public:
    explicit SeparationWriter(bool isTable) : m_isTable(isTable) {}

    QByteArray begin(bool hasNames)
    {
        m_hasNames = hasNames;
        if (!m_isTable) {
            QByteArray names = "point";
            for (const GeoidColumn &column : geoidColumns)
                names += ',' + QByteArray(column.csvName);
            return names + '\n';
        }
        QByteArray headings = nameCell("point");
        QByteArray units = nameCell({});
        for (const GeoidColumn &column : geoidColumns) {
            headings += cell(column.heading, column);
            units += cell(column.unit, column);
        }
        return headings + '\n' + units + '\n';
    }

    void write(QByteArray &bytes, std::string_view name, const GeoidPoint &point) const
    {
        if (!m_isTable) {
            positions::appendCsvField(bytes, name);
            for (const GeoidColumn &column : geoidColumns) {
                bytes += ',';
                positions::appendNumber(bytes, point.*column.value, column.csvDecimals);
            }
            bytes += '\n';
            return;
        }
        // A name that is too long stands in a line of its own, so that the numbers stay in theirs.
        const QString shown = QString::fromUtf8(name.data(), static_cast<int>(name.size()));
        const bool isLong = m_hasNames && shown.size() > nameWidth;
        if (isLong)
            bytes += shown.toUtf8() + '\n';
        bytes += nameCell(isLong ? QString() : shown);
        for (const GeoidColumn &column : geoidColumns)
            bytes += cell(positions::numberText(point.*column.value, column.tableDecimals), column);
        bytes += '\n';
    }

private:
    static constexpr int nameWidth = 10;

    QByteArray nameCell(const QString &name) const
    {
        return m_hasNames ? name.leftJustified(nameWidth).toUtf8() : QByteArray();
    }
    static QByteArray cell(const QString &text, const GeoidColumn &column)
    {
        return "  " + text.rightJustified(column.width).toUtf8();
    }

    bool m_isTable;
    bool m_hasNames = false;
};

namespace {

class SeparationTaker : public PositionTaker
{
public:
    SeparationTaker(const QString &gridFile, bool inverse, const SeparationWriter &writer)
        : m_gridFile(gridFile), m_inverse(inverse), m_writer(writer)
    {}

    bool take(const positions::ReadPosition &read, QByteArray &bytes, QString &reason) override
    {
        const stLongLatH &in = read.position.getLongLatH();
        const auto calculate =
            m_inverse ? &ProjLib::Calc_geoid_diff_inverse : &ProjLib::Calc_geoid_diff;
        double diff = 0.0;
        if (!calculate(in.latitude, in.longitude, in.height, m_gridFile, diff, &reason))
            return false;
        const double other = in.height + diff;
        m_writer.write(bytes, read.name,
                       m_inverse ? GeoidPoint{in.longitude, in.latitude, other, diff, in.height}
                                 : GeoidPoint{in.longitude, in.latitude, in.height, -diff, other});
        return true;
    }

private:
    const QString &m_gridFile;
    bool m_inverse;
    const SeparationWriter &m_writer;
};

} // namespace

SeparationJob::SeparationJob(const QString &gridFile, bool inverse, bool isTable)
    : m_gridFile(gridFile), m_inverse(inverse),
      m_writer(std::make_unique<SeparationWriter>(isTable))
{}

SeparationJob::~SeparationJob() = default;

QByteArray SeparationJob::begin(const positions::InputColumns &columns)
{
    return m_writer->begin(columns.hasNames);
}

std::unique_ptr<PositionTaker> SeparationJob::makeTaker() const
{
    return std::make_unique<SeparationTaker>(m_gridFile, m_inverse, *m_writer);
}

} // namespace KelStd::cli
