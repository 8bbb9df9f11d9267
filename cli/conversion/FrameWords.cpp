#include <cli/conversion/FrameWords.h>

#include <KelStd/positions/Columns.h>

#include <QtCore/QStringList>

namespace KelStd::cli {

QString frameNames(const QString &separator)
{
    QStringList names;
    for (const positions::FrameRow &row : positions::frames())
        names += QString::fromLatin1(row.option);
    names += QString::fromLatin1(positions::siteFrameName);
    return names.join(separator);
}

QString componentLabels(const positions::InputForm &form)
{
    QStringList labels;
    for (int i = 0; i < positions::componentsPerFrame; ++i) {
        const positions::Column &column = positions::columnOf(form.frame, i);
        labels +=
            QStringLiteral("%1 [%2]").arg(QString::fromLatin1(column.label), form.unitText(i));
    }
    return labels.join(QLatin1String(", "));
}

QList<Proposal> frameProposals(const TypedLine &)
{
    const auto remark = [](const positions::InputForm &form) { return componentLabels(form); };
    QList<Proposal> proposals;
    for (const positions::FrameRow &row : positions::frames())
        proposals.append({QString::fromLatin1(row.option), remark(row.frame)});
    proposals.append(
        {QString::fromLatin1(positions::siteFrameName), remark(positions::InputForm::atSite())});
    return proposals;
}

} // namespace KelStd::cli
