// Lines of positions, as `kelstd convert` and `kelstd geoid height` read them. The first line of an
// input says how: words of the program's options, such as "local-neh us-ft --columns 2,3,4".

#include "FuzzTarget.h"

#include <KelStd/positions/PlaneUnit.h>
#include <KelStd/positions/PositionParser.h>
#include <KelStd/text/UnitWords.h>

#include <cmath>
#include <cstring>
#include <optional>
#include <string>
#include <vector>

namespace {

using namespace KelStd;
using namespace KelStd::positions;
using KelStd::fuzz::require;
using Result = PositionParser::Result;

/// The lines of an input without their ends.
class LineCursor
{
public:
    explicit LineCursor(const QByteArray &bytes)
        : m_rest(bytes.constData(), static_cast<std::size_t>(bytes.size()))
    {}

    bool next()
    {
        if (m_rest.empty())
            return false;
        const std::size_t end = m_rest.find('\n');
        m_line = m_rest.substr(0, end);
        m_rest.remove_prefix(end == std::string_view::npos ? m_rest.size() : end + 1);
        if (!m_line.empty() && m_line.back() == '\r')
            m_line.remove_suffix(1);
        ++m_number;
        return true;
    }

    std::string_view line() const { return m_line; }
    qint64 lineNumber() const { return m_number; }

private:
    std::string_view m_rest;
    std::string_view m_line;
    qint64 m_number = 0;
};

struct Setting
{
    InputForm form{Frame::Wgs84Geographic};
    std::optional<ColumnChoice> choice;
    qint64 skipped = 0;
};

/// "plane-us-ft"
std::optional<PlaneUnit> planeUnitNamed(const QString &word)
{
    for (const PlaneUnit &unit : planeUnits()) {
        if (word == QLatin1String("plane-") + unit.symbol)
            return unit;
    }
    return std::nullopt;
}

/// Words that say nothing known are passed over.
Setting settingOf(const QString &line)
{
    Setting setting;
    setting.form.missingHeight = MissingHeight();
    const QStringList words = line.split(QLatin1Char(' '));
    for (int i = 0; i < words.size(); ++i) {
        const QString &word = words.at(i);
        QString mistake;
        if (const FrameRow *row = findFrame(word))
            setting.form.frame = row->frame;
        else if (const LengthUnit *unit = findLengthUnit(word))
            setting.form.lengthUnit = unit->unit;
        else if (const auto plane = planeUnitNamed(word))
            setting.form.planeUnit = plane;
        else if (word == QLatin1String("--no-height"))
            setting.form.missingHeight.reset();
        else if (word == QLatin1String("--height"))
            setting.form.missingHeight = MissingHeight{words.value(i + 1).toDouble(), true, {}};
        else if (word == QLatin1String("--inverse"))
            setting.form.height = InputHeight::AboveGeoid;
        else if (word == QLatin1String("--skip"))
            setting.skipped = words.value(i + 1).toInt();
        else if (word == QLatin1String("--columns"))
            setting.choice = ColumnChoice::from(words.value(i + 1), mistake);
    }
    // As the program has it: the other height is that of WGS84, and every line has it.
    if (setting.form.height != InputHeight::OfFrame)
        setting.form.missingHeight.reset();
    if (setting.form.frame != Frame::Wgs84Geographic)
        setting.form.height = InputHeight::OfFrame;
    return setting;
}

std::vector<std::string> carriedBy(const PositionParser &parser)
{
    return {parser.carried().begin(), parser.carried().end()};
}

bool isSame(const Pos &one, const Pos &other)
{
    return std::memcmp(&one.getXYZ(), &other.getXYZ(), sizeof(stXYZ)) == 0;
}

void requireSame(Result result, const PositionParser &parser, Result other,
                 const PositionParser &otherParser)
{
    require(result == other, "every way of reading comes to the same result");
    require(parser.knowsOrder() == otherParser.knowsOrder(), "every way finds the same order");
    require(parser.isInWindows1252() == otherParser.isInWindows1252(), "every way has one text");
    require(parser.notes() == otherParser.notes(), "every way has the same notes");
    if (result == Result::BadLine || result == Result::BadHeader) {
        require(parser.reason() == otherParser.reason(), "every way has the same reason");
        require(parser.reasonLine() == otherParser.reasonLine(), "every way reports one line");
    }
    if (result != Result::Position)
        return;
    require(isSame(parser.position(), otherParser.position()), "every way reads the same numbers");
    require(parser.name() == otherParser.name(), "every way reads the same name");
    require(carriedBy(parser) == carriedBy(otherParser), "every way carries the same fields");
}

void requireInRange(const PositionParser &parser, const InputForm &form)
{
    const stXYZ &read = parser.position().getXYZ();
    require(std::isfinite(read.x) && std::isfinite(read.y) && std::isfinite(read.z),
            "what is accepted is finite");
    const bool isGeographic =
        form.frame == Frame::Wgs84Geographic || form.frame == Frame::LocalGeographic;
    require(!isGeographic || (std::abs(read.x) <= 360 && std::abs(read.y) <= 90),
            "what is accepted is on the earth");
    require(parser.knowsOrder(), "a position has an order");
    require(static_cast<int>(parser.carried().size()) == parser.carriedHeadings().size(),
            "every carried field has a heading");
    require(!parser.carriedHeadings().contains(QString()), "no heading is empty");
}

PositionParser parserOf(const Setting &setting)
{
    PositionParser parser(setting.form, setting.choice);
    parser.setSkippedLines(setting.skipped);
    return parser;
}

bool hasMark(const QByteArray &bytes)
{
    return bytes.startsWith("\xEF\xBB\xBF") || bytes.startsWith("\xFF\xFE")
           || bytes.startsWith("\xFE\xFF");
}

/// "sep=;", which counts at the beginning alone.
bool hasSeparatorLine(const QByteArray &bytes)
{
    return bytes.left(5).toLower().contains("sep=");
}

/// What is kept of a run to be mended, the header line and the line, is read as it was.
void requireAgainBelowItsHeader(const PositionParser &read, std::string_view line,
                                const Setting &setting)
{
    const QByteArray header = read.headerLine();
    // Bytes of Windows-1252 that are a mark at the beginning.
    if (header.isEmpty() || hasMark(header))
        return;
    Setting again = setting;
    again.skipped = 0;
    PositionParser parser = parserOf(again);
    qint64 number = 0;
    for (const QByteArray &each : header.split('\n')) {
        const Result result =
            parser.parse({each.constData(), static_cast<std::size_t>(each.size())}, ++number);
        require(result == Result::Nothing, "a header line is one again");
    }
    const Result result = parser.parseWithCare(line, ++number);
    require(result == Result::Position, "a line below its header is a position");
    require(isSame(parser.position(), read.position()), "a line below its header is the same");
}

void readLines(const QByteArray &bytes, const Setting &setting)
{
    PositionParser quick = parserOf(setting);
    PositionParser careful = parserOf(setting);
    std::optional<PositionParser> copy; // of another thread, made when the order was known
    // A remark more says nothing.
    PositionParser behindRemark = parserOf(setting);
    // A mark counts at the beginning of an input alone.
    const bool comparesRemark = setting.skipped == 0 && !hasMark(bytes) && !hasSeparatorLine(bytes);
    if (comparesRemark)
        require(behindRemark.parse("# a remark", 1) == Result::Nothing, "a remark is passed over");

    LineCursor cursor(bytes);
    while (cursor.next()) {
        const bool knewOrder = quick.knowsOrder();
        const Result result = quick.parse(cursor.line(), cursor.lineNumber());
        requireSame(result, quick, careful.parseWithCare(cursor.line(), cursor.lineNumber()),
                    careful);
        if (copy) {
            requireSame(result, quick, copy->parse(cursor.line(), cursor.lineNumber()), *copy);
        } else if (quick.knowsOrder()) {
            copy = quick;
        }
        if (comparesRemark) {
            const Result other = behindRemark.parse(cursor.line(), cursor.lineNumber() + 1);
            require(other == result, "a remark in front changes nothing");
            require(result != Result::Position || isSame(quick.position(), behindRemark.position()),
                    "a remark in front changes no position");
        }
        require(quick.knowsOrder() || !knewOrder, "an order is not forgotten");
        const bool failed = result == Result::BadLine || result == Result::BadHeader;
        require(!failed || !quick.reason().isEmpty(), "what fails has a reason");
        require(!failed || quick.knowsOrder() == knewOrder, "what fails decides no order");
        require(!failed || (quick.reasonLine() > 0 && quick.reasonLine() <= cursor.lineNumber()),
                "a reason is about a line that was read");
        if (result == Result::Position) {
            requireInRange(quick, setting.form);
            if (!knewOrder)
                requireAgainBelowItsHeader(quick, cursor.line(), setting);
        }
        if (result == Result::BadHeader)
            return;
    }
    require(quick.finish() || !quick.knowsOrder(), "lines of no kind leave no order");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const bool silent = (KelStd::fuzz::silenceQt(), true);
    Q_UNUSED(silent)
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<int>(size));
    const int end = bytes.indexOf('\n');
    if (end < 0)
        return 0;
    readLines(bytes.mid(end + 1), settingOf(QString::fromUtf8(bytes.left(end))));
    return 0;
}
