#include "paste_summary.h"

#include <editor/document/scene_properties.h>
#include <host/clipboard/clipboard.h>
#include <tools/common/string_utils.h>

#include <QCoreApplication>

#include <algorithm>

namespace editor {

namespace {

QString tr(const char* text)
{
    return QCoreApplication::translate("editor::PasteSummary", text);
}

/// "; no match for Range, Intensity and 3 more": the properties of which that went wrong somewhere.
/// Figures that can only be looked at are always left out of a paste, and need no word.
QString problemWith(const PropertyPasteReport& report, const QString& heading,
                    std::size_t PropertyPasteCounts::*problem)
{
    constexpr int named = 3;
    QStringList names;
    int count = 0;
    for (const auto& [path, counts] : report.properties) {
        const SceneProperty* property = SceneProperties::all().find(path);
        if (counts.*problem == 0 || (property && property->isReadOnly()))
            continue;
        if (++count <= named)
            names << (property ? property->title() : QString::fromStdString(path));
    }
    if (count == 0)
        return {};
    const QString list = names.join(QLatin1String(", "));
    return heading + (count > named ? tr("%1 and %2 more").arg(list).arg(count - named) : list);
}

} // namespace

QString pasteSummary(const PropertyPasteReport& report)
{
    const std::size_t properties = report.changedProperties;
    const std::size_t objects = report.changedObjects;
    QString text =
        (properties == 1 ? tr("1 property") : tr("%1 properties").arg(properties)) +
        (objects == 1 ? tr(" of 1 object changed") : tr(" of %1 objects changed").arg(objects));
    text += problemWith(report, tr("; no match for "), &PropertyPasteCounts::unmatched);
    text += problemWith(report, tr("; another type: "), &PropertyPasteCounts::typeMismatches);
    text += problemWith(report, tr("; refused: "), &PropertyPasteCounts::refused);
    return text;
}

QString whyNothingPasted()
{
    const bool hasText = Zar::StringUtils::canCopyFromClipboardT<char>();
    const std::string problem = Zar::platform::clipboardProblem();
    if (!problem.empty())
        return tr("Nothing was pasted: %1").arg(QString::fromStdString(problem));
    return hasText ? tr("The text on the clipboard holds no properties")
                   : tr("There is no text on the clipboard");
}

} // namespace editor
