#pragma once

#include <QtCore/QByteArray>
#include <QtCore/QString>
#include <QtCore/QStringList>

#include <pybind11/pybind11.h>

#include <string>

namespace KelStd::python {

inline QString fromPython(const std::string &text)
{
    return QString::fromUtf8(text.data(), static_cast<int>(text.size()));
}

inline pybind11::str toPython(const QByteArray &utf8)
{
    return pybind11::str(utf8.constData(), static_cast<pybind11::size_t>(utf8.size()));
}

inline pybind11::str toPython(const QString &text)
{
    return toPython(text.toUtf8());
}

inline pybind11::list toPython(const QStringList &texts)
{
    pybind11::list list;
    for (const QString &text : texts)
        list.append(toPython(text));
    return list;
}

} // namespace KelStd::python
