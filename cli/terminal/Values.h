#pragma once

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <functional>

namespace KelStd::cli {

/// A text that can be typed, and what it is in a few words.
struct Proposal
{
    QString text;
    QString remark;
};

/// What is on a command line around a value that is being typed.
struct TypedLine
{
    QString beginning; ///< of the value, as far as it is typed
    QStringList positionals;
    QMap<QString, QString> options; ///< those before it by their last names, with their values
};

/// What may stand for a value on the command line. It is what shells propose, and no check: a
/// command refuses by itself what it does not take.
struct Values
{
    enum class Files
    {
        None,
        All,
        Directories
    };

    /// Those that may be meant; which of them begin as typed is looked at afterwards.
    using Source = std::function<QList<Proposal>(const TypedLine &)>;

    Source source;
    Files files = Files::None; ///< besides
    bool isList = false;       ///< several, with commas between them

    /// Numbers and names that nobody knows yet.
    static Values anything() { return {}; }
    static Values ofFiles() { return {nullptr, Files::All}; }
    static Values ofDirectories() { return {nullptr, Files::Directories}; }
    static Values ofWords(const QStringList &words);
    static Values ofSource(Source source, Files files = Files::None)
    {
        return {std::move(source), files};
    }
    static Values listOf(Source source) { return {std::move(source), Files::None, true}; }

    /// What the word for a value in a help text tells: "configured|exact" has its words, FILE.xml
    /// is a file.
    static Values namedIn(const QString &valueName);
};

} // namespace KelStd::cli
