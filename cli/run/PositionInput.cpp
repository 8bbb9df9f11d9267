#include <cli/run/PositionInput.h>

#include <cli/run/HeadingProposals.h>
#include <cli/terminal/CommandLine.h>
#include <cli/terminal/Console.h>
#include <cli/terminal/FilePath.h>

#include <KelStd/text/TypedAngle.h>
#include <KelStd/text/TypedNumber.h>

#include <QtCore/QFileInfo>
#include <QtCore/QRegularExpression>

#include <algorithm>

namespace KelStd::cli {

namespace {

const QString standardInput = QStringLiteral("-");
const QString quote = QStringLiteral("\"");
const QString columnsOption = QStringLiteral("columns");
const QString skipOption = QStringLiteral("skip");

/// What messages about an input call the options of the commands that read one.
positions::InputWords optionWords()
{
    return {QStringLiteral("--columns"), QStringLiteral("--skip"), QStringLiteral("--from"),
            QStringLiteral("--length-unit"), QStringLiteral("--height")};
}

/// How many lines at the beginning of the input are passed over; nothing and the `mistake` for
/// what is no number of lines.
std::optional<qint64> skippedLines(const CommandLine &line, QString &mistake)
{
    if (!line.isSet(skipOption))
        return 0;
    const QString text = line.value(skipOption);
    bool ok = false;
    const qint64 count = text.toLongLong(&ok);
    if (ok && count >= 0)
        return count;
    mistake = QStringLiteral("--skip '%1' is no number of lines").arg(text);
    return std::nullopt;
}

/// Whether each of two or three operands is a number or an angle.
bool isPosition(const QStringList &operands)
{
    static const QRegularExpression digit(QStringLiteral("[0-9]"));
    constexpr int withoutHeight = positions::componentsPerFrame - 1;
    const auto isValue = [](const QString &operand) {
        TypedValueFailure failure;
        const auto isAngle = [&](AngleSense sense) {
            return readTypedAngle(operand, sense, DecimalMark::Comma, failure).has_value();
        };
        return digit.match(operand).hasMatch()
               && (readNumber(operand, DecimalMark::Comma, failure)
                   || isAngle(AngleSense::Longitude) || isAngle(AngleSense::Latitude));
    };
    return operands.size() >= withoutHeight && operands.size() <= positions::componentsPerFrame
           && std::all_of(operands.cbegin(), operands.cend(), isValue);
}

/// "; a position is ..." for operands that hold one, though not as one component each; otherwise
/// empty.
QString hintOnPosition(const QStringList &operands)
{
    static const QRegularExpression separators(QStringLiteral("[,;\\s]+"));
    QStringList values = operands.join(QLatin1Char(' ')).split(separators, Qt::SkipEmptyParts);
    if (isPosition(values.mid(1)) && !isPosition(values))
        values.removeFirst(); // a name
    return isPosition(values)
               ? QStringLiteral("; a position is two or three operands, without a name: %1")
                     .arg(values.join(QLatin1Char(' ')))
               : QString();
}

bool isThere(const QString &name)
{
    return QFileInfo::exists(onDisk(name));
}

} // namespace

void PositionInput::addColumnsOption(CommandLine &line, const QString &description)
{
    line.addOption({columnsOption, description, QStringLiteral("LIST")},
                   Values::listOf(&headingProposals));
}

void PositionInput::addSkipOption(CommandLine &line)
{
    line.addOption({skipOption,
                    QStringLiteral("Pass over the first N lines, whatever they hold: a\n"
                                   "title, or headings that are wrong."),
                    QStringLiteral("N")});
}

bool PositionInput::takeOptions(const CommandLine &line, QString &mistake)
{
    const auto skipped = skippedLines(line, mistake);
    if (!skipped)
        return false;
    m_skippedLines = *skipped;
    if (m_columns == Columns::MayBePicked && line.isSet(columnsOption)) {
        m_choice = positions::ColumnChoice::from(line.value(columnsOption), mistake, optionWords());
        return m_choice.has_value();
    }
    return true;
}

std::vector<Input *> PositionInput::inputs() const
{
    std::vector<Input *> inputs;
    for (const auto &input : m_inputs)
        inputs.push_back(input.get());
    return inputs;
}

bool PositionInput::open(const CommandLine &line, Console &console)
{
    QStringList operands = line.positionals();
    if (isPosition(operands)) {
        const auto file = std::find_if(operands.cbegin(), operands.cend(), isThere);
        if (file == operands.cend()) {
            const bool hasHeight = operands.size() == positions::componentsPerFrame;
            if (hasHeight && line.isSet(QStringLiteral("height"))) {
                console.report(QStringLiteral("--height is for positions without a height, and %1 "
                                              "has one")
                                   .arg(operands.join(QLatin1Char(' '))));
                return false;
            }
            return openPosition(operands, console);
        }
        console.report(QStringLiteral("note: %1 is a file, so that the operands are files and no "
                                      "position")
                           .arg(quoted(*file)));
    }
    if (operands.isEmpty())
        operands += standardInput;
    if (operands.count(standardInput) > 1) {
        console.report(QStringLiteral("standard input can be read once only"));
        return false;
    }
    for (const QString &name : operands) {
        QString reason;
        m_inputs.push_back(std::make_unique<Input>());
        if (!m_inputs.back()->open(name, reason)) {
            console.report(
                QStringLiteral("cannot open %1: %2%3").arg(name, reason, hintOnPosition(operands)));
            return false;
        }
    }
    return true;
}

/// Numbers and angles on the command line are the components in the order of the frame.
bool PositionInput::openPosition(const QStringList &operands, Console &console)
{
    if (m_choice || m_skippedLines > 0) {
        console.report(QStringLiteral("--columns and --skip are for lines, and %1 are a position")
                           .arg(operands.join(QLatin1Char(' '))));
        return false;
    }
    QStringList fields;
    for (QString operand : operands)
        fields += quote + operand.replace(quote, QLatin1String("\"\"")) + quote;
    m_inputs.push_back(std::make_unique<Input>());
    m_inputs.back()->openText(QStringLiteral("<arguments>"),
                              fields.join(QLatin1Char(';')).toUtf8() + '\n');
    return true;
}

void PositionInput::promptFor(const QString &components, Console &console) const
{
    if (m_inputs.front()->isTerminal()) {
        console.report(QStringLiteral("type positions, one a line (%1); the end-of-file key ends")
                           .arg(components));
    }
}

positions::PositionParser PositionInput::parser(const positions::InputForm &form) const
{
    positions::InputForm worded = form;
    worded.words = optionWords();
    positions::PositionParser parser(worded, m_choice);
    parser.setSkippedLines(m_skippedLines);
    return parser;
}

} // namespace KelStd::cli
