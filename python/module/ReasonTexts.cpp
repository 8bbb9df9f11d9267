#include "ReasonTexts.h"

#include "Text.h"

#include <KelStd/positions/Columns.h>

#include <algorithm>
#include <limits>

namespace KelStd::python {

namespace py = pybind11;

std::array<ReasonTexts::Component, 3> ReasonTexts::componentsOf(LocationBuilder::Frame frame)
{
    std::array<Component, 3> components;
    for (int i = 0; i < positions::componentsPerFrame; ++i) {
        const positions::Column &column = positions::columnOf(frame, i);
        const QString label = QString::fromLatin1(column.label);
        Component &component = components[static_cast<std::size_t>(i)];
        component.limit = column.limit;
        component.notFinite = QStringLiteral("the %1 is not a finite number").arg(label);
        component.outOfRange = QStringLiteral("the %1 is not between -%2 and %2")
                                   .arg(label, QString::number(column.limit));
    }
    return components;
}

void ReasonTexts::keep(std::size_t position, const QString &text)
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    auto number = m_numbers.find(text);
    if (number == m_numbers.end()) {
        number = m_numbers.insert(text, static_cast<int>(m_texts.size()));
        m_texts.push_back(text);
    }
    m_kept.emplace_back(position, *number);
}

py::object ReasonTexts::numbers(std::size_t count) const
{
    if (m_kept.empty())
        return py::none();
    py::array_t<int> array(static_cast<py::ssize_t>(count));
    int *const numbers = array.mutable_data();
    std::fill(numbers, numbers + count, 0);
    for (const auto &[position, number] : m_kept)
        numbers[position] = number + 1;
    return std::move(array);
}

py::list ReasonTexts::texts() const
{
    py::list texts;
    texts.append(py::str());
    for (const QString &text : m_texts)
        texts.append(toPython(text));
    return texts;
}

} // namespace KelStd::python
