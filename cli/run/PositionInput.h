#pragma once

#include <cli/run/Input.h>

#include <KelStd/positions/ColumnChoice.h>
#include <KelStd/positions/InputForm.h>
#include <KelStd/positions/PositionParser.h>

#include <QtCore/QString>
#include <QtCore/QtGlobal>

#include <optional>

namespace KelStd::cli {

class CommandLine;
class Console;

/// What commands that read lists of positions share: the operand INPUT, which lines of it are
/// passed over, and which columns hold the positions.
class PositionInput
{
public:
    /// Whether the command has the option --columns.
    enum class Columns
    {
        AsHeaded,
        MayBePicked
    };

    explicit PositionInput(Columns columns) : m_columns(columns) {}

    /// The option --columns; `description` names the components.
    static void addColumnsOption(CommandLine &line, const QString &description);
    /// The option --skip.
    static void addSkipOption(CommandLine &line);

    /// Takes the options; false with the `mistake` when they cannot be followed.
    bool takeOptions(const CommandLine &line, QString &mistake);

    /// Opens the operand, standard input without one; false after a report.
    bool open(const CommandLine &line, Console &console);

    /// Says what to type where a person types the positions. `components`: with their units.
    void promptFor(const QString &components, Console &console) const;

    Input &input() { return m_input; }

    /// A parser of its lines.
    positions::PositionParser parser(const positions::InputForm &form) const;

private:
    Columns m_columns;
    Input m_input;
    std::optional<positions::ColumnChoice> m_choice;
    qint64 m_skippedLines = 0;
};

} // namespace KelStd::cli
