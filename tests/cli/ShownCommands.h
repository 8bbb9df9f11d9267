#pragma once

#include <QtCore/QList>
#include <QtCore/QString>
#include <QtCore/QStringList>

namespace KelStd::test {

/// A command that a page shows behind "$ ", and the lines below it.
struct ShownCommand
{
    QString command;
    QStringList lines;
};

/// Those of the page's blocks of the kind "console", in their order.
QList<ShownCommand> commandsOf(const QString &page);

/// What was printed, without empty lines, against the lines that are shown, of which "..." stands
/// for any.
void expectShown(const QStringList &lines, const QString &printed);

} // namespace KelStd::test
