#pragma once

#include <KelStd/location/LocationBuilder.h>

#include <QtCore/QHash>
#include <QtCore/QString>

#include <pybind11/numpy.h>

#include <array>
#include <cstddef>
#include <mutex>
#include <utility>
#include <vector>

namespace KelStd::python {

/// Why positions failed, each text once; for threads that keep reasons of different positions.
class ReasonTexts
{
public:
    /// Texts of a component of a position, and the largest magnitude that it may have.
    struct Component
    {
        double limit = 0.0;
        QString notFinite;
        QString outOfRange;
    };

    static std::array<Component, 3> componentsOf(LocationBuilder::Frame frame);

    void keep(std::size_t position, const QString &text);

    /// Where a position's text stands in `texts`, for each of `count`; None without reasons.
    pybind11::object numbers(std::size_t count) const;

    /// An empty text, and the others behind it; their order depends on the threads.
    pybind11::list texts() const;

private:
    std::mutex m_mutex;
    QHash<QString, int> m_numbers;
    std::vector<QString> m_texts;
    std::vector<std::pair<std::size_t, int>> m_kept; ///< position and number of its text
};

} // namespace KelStd::python
