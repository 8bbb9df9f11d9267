#include <KelStd/library/RecordNames.h>

#include <KelStd/text/NearNames.h>

#include <QtCore/QFile>
#include <QtCore/QFileInfo>
#include <QtCore/QObject>
#include <QtCore/QRegularExpression>

#include <algorithm>

namespace KelStd::library {

namespace {

bool isSeparator(QChar c)
{
    return c == QLatin1Char('/') || c == QLatin1Char('\\');
}

/// Latin letters alone: a drive has no other.
bool isLetter(QChar c)
{
    return (c >= QLatin1Char('A') && c <= QLatin1Char('Z'))
           || (c >= QLatin1Char('a') && c <= QLatin1Char('z'));
}

/// "C:/". Where there are drives, "C:" without a separator leads to that drive's own current
/// directory; elsewhere it is a name like another.
bool beginsWithDrive(const QString &name)
{
#ifdef Q_OS_WIN
    constexpr bool needsSeparator = false;
#else
    constexpr bool needsSeparator = true;
#endif
    return name.size() > 1 && isLetter(name.at(0)) && name.at(1) == QLatin1Char(':')
           && (!needsSeparator || (name.size() > 2 && isSeparator(name.at(2))));
}

bool beginsElsewhere(const QString &name)
{
    if (name.isEmpty())
        return false;
    const QChar first = name.at(0);
    return beginsWithDrive(name) || isSeparator(first) || first == QLatin1Char(':')
           || first == QLatin1Char('~');
}

/// The last piece cannot go up, because it becomes a file's name: ".." is the file "...xml".
bool goesUp(const QString &name)
{
    int begin = 0;
    for (int i = 0; i < name.size(); ++i) {
        if (!isSeparator(name.at(i)))
            continue;
        if (name.mid(begin, i - begin).trimmed() == QLatin1String(".."))
            return true;
        begin = i + 1;
    }
    return false;
}

/// A folder that is not there leads nowhere: no file can be written to it.
bool isLinkedElsewhere(const QDir &directory, const QString &name)
{
    if (!name.contains(QLatin1Char('/')))
        return false;
    const QString folder =
        QFileInfo(directory.absoluteFilePath(recordFileName(name))).dir().canonicalPath();
    QString root = directory.canonicalPath();
    if (folder.isEmpty() || folder == root)
        return false;
    if (!root.endsWith(QLatin1Char('/')))
        root += QLatin1Char('/');
    return !folder.startsWith(root);
}

/// The kinds of beginnings that make a name mean something other than a file in the library.
struct BeginningRow
{
    QLatin1Char character;
    const char *meaning;
};

const BeginningRow beginnings[] = {
    {QLatin1Char(':'),
     QT_TRANSLATE_NOOP("QObject", "a colon, which Qt takes for a resource of the program")},
    {QLatin1Char('~'),
     QT_TRANSLATE_NOOP("QObject", "a tilde, which a shell takes for a home directory")},
    {QLatin1Char('.'),
     QT_TRANSLATE_NOOP("QObject", "a dot: its file would be hidden and never loaded")},
};

/// Control characters, and those that Unicode keeps free, of which a document cannot hold all.
bool isNoText(QChar c)
{
    return c.category() == QChar::Other_Control || QChar::isNonCharacter(c.unicode());
}

} // namespace

QString recordFileName(const QString &name)
{
    return QStringLiteral("%1.xml").arg(name);
}

QString safeFileName(const QString &name)
{
    const QStringList escapes = {QStringLiteral("%2F"), QStringLiteral("%5C"),
                                 QStringLiteral("%25")};
    QString stem;
    for (int i = 0; i < name.size(); ++i) {
        const QChar c = name.at(i);
        const QString piece = name.mid(i, 3).toUpper();
        if (c == QLatin1Char('/'))
            stem += escapes.at(0);
        else if (c == QLatin1Char('\\'))
            stem += escapes.at(1);
        else if (escapes.contains(piece))
            stem += escapes.at(2);
        else
            stem += c;
    }
    return recordFileName(stem);
}

bool leadsOut(const QDir &directory, const QString &name)
{
    return beginsElsewhere(name) || goesUp(name) || isLinkedElsewhere(directory, name);
}

QString nameFault(const QString &name)
{
    constexpr int longestFileName = 255; // bytes, on the file systems in use
    if (name.trimmed().isEmpty())
        return QObject::tr("a name must not be empty or blank");
    if (std::any_of(name.cbegin(), name.cend(), isNoText))
        return QObject::tr("the name has a control character, or one that stands for none");
    if (isSeparator(name.at(0)) || beginsWithDrive(name)) {
        return QObject::tr("the name \"%1\" begins like a path to somewhere else").arg(name);
    }
    for (const BeginningRow &row : beginnings) {
        if (name.startsWith(row.character)) {
            return QObject::tr("the name \"%1\" begins with %2")
                .arg(name, QObject::tr(row.meaning));
        }
    }
    const auto bytes = QFile::encodeName(safeFileName(name)).size();
    if (bytes > longestFileName) {
        return QObject::tr("the name is too long: its file's name would have %1 bytes, and file "
                           "systems take %2")
            .arg(bytes)
            .arg(longestFileName);
    }
    return {};
}

QString codeOfForm(const QString &text)
{
    static const QRegularExpression form(
        QStringLiteral(
            "\\A(?:urn:ogc:def:crs:([A-Z]\\w*):[^:]*|([A-Z]\\w*)):([A-Z0-9][\\w.+-]*)\\z"),
        QRegularExpression::CaseInsensitiveOption);
    const QRegularExpressionMatch match = form.match(text.trimmed());
    if (!match.hasMatch())
        return {};
    return match.captured(1) + match.captured(2) + QLatin1Char(':') + match.captured(3);
}

QString codeNameFault(const QString &name, const SystemOrigin &origin)
{
    const QString code = codeOfForm(name);
    const QString own = origin.fullCode();
    if (code.isEmpty() || code.compare(own, Qt::CaseInsensitive) == 0)
        return {};
    return own.isEmpty()
               ? QObject::tr("the name \"%1\" is that of a code, and the system has none").arg(name)
               : QObject::tr("the name \"%1\" is that of a code, and the system's own is %2")
                     .arg(name, own);
}

bool isTakenBy(const QString &name, const QString &present)
{
    return QString::compare(present, name, Qt::CaseInsensitive) == 0
           || QString::compare(present, name.trimmed(), Qt::CaseInsensitive) == 0;
}

QStringList similarNames(const QString &name, const QStringList &names)
{
    return nearNames(name, names);
}

} // namespace KelStd::library
