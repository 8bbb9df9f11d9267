#include <KelStd/positions/PositionParser.h>

#include <KelStd/positions/PositionReading.h>

namespace KelStd::positions {

PositionParser::PositionParser(const InputForm &form, std::optional<ColumnChoice> choice)
    : m_reading(std::make_unique<Reading>(form, std::move(choice)))
{}

PositionParser::PositionParser(Frame frame, InputHeight height, std::optional<ColumnChoice> choice)
    : PositionParser(InputForm(frame, height), std::move(choice))
{}

PositionParser::~PositionParser() = default;

PositionParser::PositionParser(const PositionParser &other)
    : m_reading(std::make_unique<Reading>(*other.m_reading))
{}

PositionParser &PositionParser::operator=(const PositionParser &other)
{
    if (this != &other)
        m_reading = std::make_unique<Reading>(*other.m_reading);
    return *this;
}

PositionParser::PositionParser(PositionParser &&other) noexcept = default;
PositionParser &PositionParser::operator=(PositionParser &&other) noexcept = default;

void PositionParser::setSkippedLines(qint64 count)
{
    m_reading->setSkippedLines(count);
}

qint64 PositionParser::skippedLines() const
{
    return m_reading->skippedLines();
}

PositionParser::Result PositionParser::parse(std::string_view line, qint64 lineNumber)
{
    return m_reading->parse(line, lineNumber);
}

PositionParser::Result PositionParser::parseWithCare(std::string_view line, qint64 lineNumber)
{
    return m_reading->parseWithCare(line, lineNumber);
}

bool PositionParser::finish()
{
    return m_reading->finish();
}

ListShape PositionParser::shape() const
{
    return m_reading->shape();
}

qint64 PositionParser::enclosedLine() const
{
    return m_reading->enclosedLine();
}

QString PositionParser::reason() const
{
    return m_reading->reason();
}

qint64 PositionParser::reasonLine() const
{
    return m_reading->reasonLine();
}

const Pos &PositionParser::position() const
{
    return m_reading->position();
}

std::string_view PositionParser::name() const
{
    return m_reading->name();
}

const std::vector<std::string_view> &PositionParser::carried() const
{
    return m_reading->carried();
}

std::string_view PositionParser::heightReference() const
{
    return m_reading->heightReference();
}

bool PositionParser::knowsOrder() const
{
    return m_reading->isSettled();
}

qint64 PositionParser::orderLine() const
{
    return m_reading->isSettled() ? m_reading->orderLine() : 0;
}

bool PositionParser::hasNames() const
{
    const auto &order = m_reading->order();
    return m_reading->isSettled() && order->name >= 0;
}

QStringList PositionParser::carriedHeadings() const
{
    return m_reading->isSettled() ? m_reading->carriedHeadings() : QStringList();
}

void PositionParser::arrangeCarried(const QStringList &headings)
{
    m_reading->arrangeCarried(headings);
}

bool PositionParser::fillsHeights() const
{
    return m_reading->fillsHeights();
}

bool PositionParser::isHeightTaken() const
{
    return m_reading->isHeightTaken();
}

QStringList PositionParser::notes() const
{
    return m_reading->notes();
}

bool PositionParser::isInWindows1252() const
{
    return m_reading->isInWindows1252();
}

std::optional<DecimalMark> PositionParser::decimalMark() const
{
    return m_reading->decimalMark();
}

QByteArray PositionParser::headerLine() const
{
    return m_reading->headerLine();
}

} // namespace KelStd::positions
