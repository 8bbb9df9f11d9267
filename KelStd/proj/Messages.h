#pragma once

#include <KelStd/proj/ConversionFailure.h>

#include <QtCore/QObject>
#include <QtCore/QString>

/// The texts that more than one operation reports.
namespace KelStd::proj {

inline QString noLibraryText()
{
    return QObject::tr("No proj library.");
}

/// What is logged with it.
inline QString noLibraryLogText()
{
    return QObject::tr("Find proj library failed, can not do any point convert.");
}

inline QString errorFormatText()
{
    return QObject::tr("Error format.");
}

inline QString noGridFileText()
{
    return QObject::tr("Geoid model file is empty.");
}

inline QString geoidModelFailedText()
{
    return QObject::tr("Create proj geoid model failed.");
}

inline QString notOneToOneText()
{
    return QObject::tr("outside where the projection is one-to-one");
}

/// Puts `text` into `error`, when given, and is false.
inline bool fail(QString *error, const QString &text)
{
    if (error != nullptr)
        *error = text;
    return false;
}

/// Puts kind and text into `failure`, when given, and is false. The text is made only where it is
/// wanted.
inline bool fail(ConversionFailure *failure, ConversionFailureKind kind, QString (*text)())
{
    if (failure != nullptr)
        *failure = {kind, text()};
    return false;
}

} // namespace KelStd::proj
