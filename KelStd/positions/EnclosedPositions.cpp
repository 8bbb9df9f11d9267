#include <KelStd/positions/EnclosedPositions.h>

namespace KelStd::positions {

namespace {

/// Where the mark stands that closes a field which goes on in `line`; its end where none does.
int closingMark(const QString &line)
{
    for (int i = 0; i < line.size(); ++i) {
        if (line.at(i) != QLatin1Char('"'))
            continue;
        if (line.mid(i + 1, 1) != QLatin1String("\""))
            return i;
        ++i; // a doubled one
    }
    return static_cast<int>(line.size());
}

/// Whether a field would begin behind `text`.
bool endsBeforeField(const QString &text, const SplitLine &split)
{
    return split.byBlanks ? text.isEmpty() || text.back().isSpace()
                          : !split.fields.isEmpty() && split.fields.last().isEmpty();
}

} // namespace

EnclosedPosition enclosedPosition(const QString &text, const ListShape &shape,
                                  const std::function<bool(const SplitLine &)> &isPosition)
{
    const QStringList lines = text.split(QLatin1Char('\n'));
    EnclosedPosition found;
    for (int i = 1; i < lines.size() && !found.mayStandAlone; ++i) {
        const QString &line = lines.at(i);
        const int mark = closingMark(line);
        const QString inside = line.left(mark);
        const SplitLine split = splitAt(inside, shape.separator);
        if (!split.mistake.isEmpty() || split.fields.size() > shape.fields || !isPosition(split))
            continue;
        const bool mayOpen = mark < line.size() && endsBeforeField(inside, split);
        if (found.line == 0 || mayOpen)
            found = {i, mayOpen};
    }
    return found;
}

QString enclosedDoubt(int line)
{
    return QStringLiteral(
               "a quotation mark opens a field that goes on in the next line, and %1 may "
               "be a position of its own: the mark that closes the field may open one")
        .arg(line == 1 ? QStringLiteral("that line")
                       : QStringLiteral("the line %1 below").arg(line));
}

} // namespace KelStd::positions
