#include <cli/vector/LayerChoice.h>

#include <QtCore/QStringList>

namespace KelStd::cli::vector {

namespace {

QString shownLayer(const Layer &layer)
{
    return QStringLiteral("\"%1\"").arg(QString::fromStdString(layer.name));
}

/// Layers that a name or nothing may mean: those that hold features, or all where none does.
std::vector<std::size_t> pointLayers(const std::vector<Layer> &layers)
{
    std::vector<std::size_t> all;
    std::vector<std::size_t> filled;
    for (std::size_t i = 0; i < layers.size(); ++i) {
        if (!layers[i].mayHavePoints)
            continue;
        all.push_back(i);
        if (layers[i].features != 0)
            filled.push_back(i);
    }
    return filled.empty() ? all : filled;
}

QString listed(const std::vector<Layer> &layers, const std::vector<std::size_t> &which)
{
    QStringList names;
    for (const std::size_t i : which)
        names += shownLayer(layers[i]);
    return names.join(QLatin1String(", "));
}

} // namespace

std::optional<std::size_t> chosenLayer(const std::vector<Layer> &layers, const QString &wanted,
                                       const QString &file, QString &mistake)
{
    std::vector<std::size_t> candidates = pointLayers(layers);
    if (!wanted.isEmpty()) {
        candidates.clear();
        for (std::size_t i = 0; i < layers.size(); ++i) {
            if (QString::fromStdString(layers[i].name) == wanted)
                candidates.push_back(i);
        }
    }
    if (candidates.empty() && !wanted.isEmpty()) {
        mistake = QStringLiteral("%1 has no layer \"%2\"; those with points are %3")
                      .arg(file, wanted, listed(layers, pointLayers(layers)));
        return std::nullopt;
    }
    if (candidates.empty()) {
        mistake = QStringLiteral("%1 has no layer with points").arg(file);
        return std::nullopt;
    }
    if (candidates.size() > 1) {
        mistake = QStringLiteral("%1 has several layers with points: %2; --layer NAME picks "
                                 "one")
                      .arg(file, listed(layers, candidates));
        return std::nullopt;
    }
    const Layer &layer = layers[candidates.front()];
    if (!layer.mayHavePoints) {
        mistake = QStringLiteral("the layer %1 of %2 holds no points but the type %3")
                      .arg(shownLayer(layer), file, QString::fromStdString(layer.geometry));
        return std::nullopt;
    }
    return candidates.front();
}

} // namespace KelStd::cli::vector
