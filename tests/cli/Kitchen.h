#pragma once

#include "cli/ProgramRun.h"

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::test {

/// Where the commands of docs/cookbook.md are run, as they stand there: a copy of the examples, the
/// program on the path, and beside it a `gpspipe` that plays examples/receiver.nmea.
class Kitchen
{
public:
    Kitchen();

    /// Runs the commands below a heading of the page and holds what they print against what is
    /// shown below them. Returns what each printed, line ends as "\n", without a byte-order mark.
    QStringList cook(const QString &heading) const;

    /// A file of the copied examples, or one that a command wrote.
    QString path(const QString &name) const;

private:
    ProgramRun m_program;
};

/// The headings of the page's jobs.
QStringList cookbookHeadings();

/// The part of the page below a heading.
QString cookbookPart(const QString &heading);

/// The rows of what a command printed, messages left out.
QList<QMap<QString, QString>> printedRows(const QString &printed);

} // namespace KelStd::test
