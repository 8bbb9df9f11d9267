#pragma once

#include <QtCore/QString>
#include <QtCore/QStringList>

#include <exception>

namespace KelStd::python {

/// The exceptions of the Python package, by their names there.
enum class Raise
{
    NotReady, ///< PROJ, the home directory or the library is not usable
    NotFound, ///< no system, model or file of that name
    Refused,  ///< a system that is not used: its document is in doubt, or it cannot be imported
    Fit,      ///< nothing is fitted or checked
    Value     ///< an argument that means nothing
};

/// What becomes an exception of the Python package.
class Raised : public std::exception
{
public:
    Raised(Raise type, QString text, QStringList details = {})
        : m_type(type), m_text(std::move(text)), m_details(std::move(details))
    {}

    Raise type() const { return m_type; }
    const QString &text() const { return m_text; }
    const QStringList &details() const { return m_details; } ///< findings, one a line

    const char *what() const noexcept override { return "KelStd"; }

private:
    Raise m_type;
    QString m_text;
    QStringList m_details;
};

} // namespace KelStd::python
