#include <cli/terminal/Completion.h>

#include <cli/terminal/CommandLine.h>

#include <algorithm>

namespace KelStd::cli {

namespace {

const QString endOfOptions = QStringLiteral("--");

/// The option that a word names, without the value that may stand behind it; null for none.
const QCommandLineOption *optionOf(const CommandDescription &command, const QString &word)
{
    const bool isLong = word.startsWith(endOfOptions);
    const QString name = word.mid(isLong ? 2 : 1).section(QLatin1Char('='), 0, 0);
    for (const QCommandLineOption &option : command.help.options) {
        if (option.names().contains(name) && (name.size() > 1) == isLong)
            return &option;
    }
    return nullptr;
}

bool takesValue(const QCommandLineOption &option)
{
    return !option.valueName().isEmpty();
}

/// What the words before the one that is typed say.
class WordsBefore
{
public:
    WordsBefore(const CommandDescription &command, const QStringList &words)
    {
        for (const QString &word : words)
            take(command, word);
    }

    /// The option whose value is typed; null where none is.
    const QCommandLineOption *pending() const { return m_pending; }
    bool areOptionsOver() const { return m_areOptionsOver; }
    bool isGiven(const QCommandLineOption &option) const
    {
        return m_given.contains(option.names().last());
    }
    TypedLine line(const QString &beginning) const { return {beginning, m_positionals, m_values}; }
    int positionals() const { return static_cast<int>(m_positionals.size()); }

private:
    void take(const CommandDescription &command, const QString &word)
    {
        if (m_pending != nullptr) {
            m_values[m_pending->names().last()] = word;
            m_pending = nullptr;
            return;
        }
        const bool isOption = !m_areOptionsOver && word.size() > 1 && word.at(0) == '-';
        const QCommandLineOption *option = isOption ? optionOf(command, word) : nullptr;
        if (isOption && word == endOfOptions)
            m_areOptionsOver = true;
        else if (option == nullptr && !isOption)
            m_positionals += word;
        if (option == nullptr)
            return;
        m_given += option->names().last();
        m_values[m_given.last()] = QString();
        if (word.contains(QLatin1Char('=')))
            m_values[m_given.last()] = word.section(QLatin1Char('='), 1);
        else if (takesValue(*option))
            m_pending = option;
    }

    const QCommandLineOption *m_pending = nullptr;
    bool m_areOptionsOver = false;
    QStringList m_positionals;
    QStringList m_given;
    QMap<QString, QString> m_values;
};

Completion valuesOf(const Values &values, const TypedLine &line)
{
    // The values before the last comma stay, and are not proposed again.
    const auto end = values.isList ? line.beginning.lastIndexOf(QLatin1Char(',')) + 1 : 0;
    const QString head = line.beginning.left(end);
    const QStringList taken = head.split(QLatin1Char(','));
    TypedLine last = line;
    last.beginning = line.beginning.mid(end);

    Completion completion;
    completion.files = values.files;
    completion.isOpen = values.isList;
    if (!values.source)
        return completion;
    for (const Proposal &each : beginningWith(last.beginning, values.source(last))) {
        if (!taken.contains(each.text))
            completion.proposals.append({head + each.text, each.remark});
    }
    return completion;
}

/// The names of options that are not given yet: long ones, and short ones where only a hyphen is
/// typed.
QList<Proposal> optionNames(const CommandDescription &command, const WordsBefore &before,
                            const QString &word)
{
    QList<Proposal> names;
    for (const QCommandLineOption &option : command.help.options) {
        const QString remark = option.description()
                                   .section(QLatin1Char('\n'), 0, 0)
                                   .section(QLatin1String(". "), 0, 0);
        if (before.isGiven(option) && !command.repeated.contains(option.names().last()))
            continue;
        for (const QString &name : option.names()) {
            if (name.size() > 1)
                names.append({endOfOptions + name, remark});
            else if (word.size() == 1 || word == QLatin1Char('-') + name)
                names.append({QLatin1Char('-') + name, remark});
        }
    }
    return beginningWith(word, names);
}

bool isHelp(const QString &word)
{
    return word == QLatin1String("--help") || word == QLatin1String("-h");
}

} // namespace

QList<Proposal> beginningWith(const QString &beginning, const QList<Proposal> &proposals)
{
    for (const auto sensitivity : {Qt::CaseSensitive, Qt::CaseInsensitive}) {
        QList<Proposal> found;
        for (const Proposal &each : proposals) {
            if (each.text.startsWith(beginning, sensitivity))
                found += each;
        }
        if (!found.isEmpty())
            return found;
    }
    return {};
}

Completion completionOf(const CommandDescription &command, const QStringList &before,
                        const QString &word)
{
    const WordsBefore words(command, before);
    if (const QCommandLineOption *option = words.pending())
        return valuesOf(command.valuesOf(*option), words.line(word));
    if (!before.isEmpty() && isHelp(before.last())) {
        return valuesOf(Values::ofWords({QStringLiteral("full"), QStringLiteral("man")}),
                        words.line(word));
    }
    const bool mayBeOption = !words.areOptionsOver();
    if (mayBeOption && word.startsWith(QLatin1Char('-'))) {
        const QCommandLineOption *option = optionOf(command, word);
        const auto end = word.indexOf(QLatin1Char('=')) + 1;
        if (end == 0)
            return {optionNames(command, words, word)};
        if (option == nullptr || !takesValue(*option))
            return {};
        Completion completion = valuesOf(command.valuesOf(*option), words.line(word.mid(end)));
        for (Proposal &each : completion.proposals)
            each.text.prepend(word.left(end));
        return completion;
    }
    Completion completion;
    if (words.positionals() < command.maxPositionals && !command.positionals.isEmpty()) {
        const int last = static_cast<int>(command.positionals.size()) - 1;
        completion =
            valuesOf(command.positionals.at(std::min(words.positionals(), last)), words.line(word));
    }
    const bool isNothing =
        completion.proposals.isEmpty() && completion.files == Values::Files::None;
    if (isNothing && mayBeOption && word.isEmpty())
        completion.proposals = optionNames(command, words, word);
    return completion;
}

} // namespace KelStd::cli
