#pragma once

#include <QtCore/QObject>
#include <QtCore/QString>

namespace KelStd {

/// The translation of a text of our tables, marked there with QT_TRANSLATE_NOOP("QObject", ...).
/// A null or empty text gives the empty string: translating an empty text would give a catalogue's
/// header.
inline QString translated(const char *text)
{
    return text == nullptr || *text == '\0' ? QString() : QObject::tr(text);
}

} // namespace KelStd
