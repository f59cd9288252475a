#include "property_document.h"

#include "property_text.h"
#include "property_walk.h"

#include <host/core/debug_message.h>
#include <host/variant/variant_converter.h>

#include <algorithm>
#include <utility>

namespace kyr::properties {
namespace {

// Messages name this file and these conditions: "rObj", "objectSection". Who reads a report from
// an artist's machine looks for them, so they stay as they are.
constexpr const char* sourceFile = "scene_browser_data";

bool isValueOfItsType(lumo::Variant present, const lumo::Variant& text)
{
    return present.isVoid() || lumo::VariantConverter::convert(present, text);
}

/// Applies one table to one object, and counts.
class Leaf
{
public:
    Leaf(PropertyTable& table, PasteProgress& progress) noexcept
        : m_table(table), m_progress(progress)
    {}

    void operator()(const BoundProperty& property, const std::string& path)
    {
        if (!isVisibleValue(property) || property.isConst() || property.isReadOnly())
            return;
        StoredProperty* stored = m_table.find(path, m_place);
        if (!stored || !stored->isChosen)
            return;
        ++m_matched;
        if (stored->type != property.propertyType().name()) {
            ++stored->counts.typeMismatches;
            ++m_progress.report.typeMismatches;
            return;
        }
        lumo::Variant value = property.get();
        if (valueEqualsText(value, *stored->value.tryGet<std::string>())) {
            ++stored->counts.equal;
            return;
        }
        const bool isTaken = m_progress.isPreview
                                 ? isValueOfItsType(std::move(value), stored->value)
                                 : set(property, std::move(value), *stored);
        if (isTaken) {
            ++stored->counts.changed;
            ++m_changed;
        } else {
            ++stored->counts.refused;
            ++m_progress.report.refused;
        }
    }

    void addTo(PropertyPasteReport& report) const
    {
        report.targets += 1;
        report.changedObjects += m_changed > 0 ? 1 : 0;
        report.changedProperties += m_changed;
        report.unmatched += m_table.chosenCount() - std::min(m_matched, m_table.chosenCount());
    }

private:
    bool set(const BoundProperty& property, lumo::Variant value, const StoredProperty& stored)
    {
        m_progress.earlier.emplace_back(property, std::move(value));
        const bool isSet = property.set(stored.value);
        if (!isSet || !m_progress.keepsEarlier)
            m_progress.earlier.pop_back();
        Zar::DebugMessageHelper(0, 2).message("Paste '%s' to property '%s'",
                                              stored.value.tryGet<std::string>()->c_str(),
                                              property.name().c_str());
        return isSet;
    }

    PropertyTable& m_table;
    PasteProgress& m_progress;
    std::size_t m_place = 0;
    std::size_t m_matched = 0;
    std::size_t m_changed = 0;
};

bool beginDealing(const Zar::DataSectionPtr& document, std::size_t targetCount,
                  PasteProgress& progress)
{
    if (document)
        document->openSections("object", progress.sources, nullptr);
    const bool isDealtOnce = targetCount <= progress.sources.size();
    progress.tables.resize(isDealtOnce ? 1 : progress.sources.size());
    if (progress.sources.empty()) {
        Zar::DebugMessageHelper(0, 5).message(
            "Paste properties: Cannot find any objects in clipboard");
    }
    return !progress.sources.empty();
}

/// The next target's stored object as a table, read when its turn comes for the first time.
PropertyTable& nextTable(PasteProgress& progress)
{
    const std::size_t position = progress.nextTarget % progress.sources.size();
    PropertyTable& table = progress.tables[position % progress.tables.size()];
    if (progress.nextTarget < progress.sources.size()) {
        // Not needed any more then; to let go of all at the end would take long.
        const Zar::DataSectionPtr section = std::exchange(progress.sources[position], nullptr);
        if (Zar::verify(bool(section), "objectSection", sourceFile))
            table.read(*section, progress.choice, progress.report);
    }
    return table;
}

void pasteToNext(const ReflectedObject& target, PasteProgress& progress)
{
    Zar::verify(target.isValid(), "rObj", sourceFile);
    PropertyTable& table = nextTable(progress);
    if (!table.isEmpty()) {
        applyObjectProperties(target, table, std::string(), progress);
        table.countTarget();
    } else if (!progress.isPreview) {
        Zar::DebugMessageHelper(0, 4).message("Paste properties: there are no any properties in %s",
                                              table.objectType().c_str());
    }
}

} // namespace

bool pasteDocument(const IAssetSelection::Objects& targets, const Zar::DataSectionPtr& document,
                   PasteProgress* progress, std::size_t count)
{
    PasteProgress whole;
    PasteProgress& paste = progress ? *progress : whole;
    if (paste.tables.empty() && !beginDealing(document, targets.size(), paste))
        return false;
    for (; count > 0 && paste.nextTarget < targets.size(); --count) {
        pasteToNext(targets[paste.nextTarget].object(), paste);
        ++paste.nextTarget;
    }
    if (paste.nextTarget == targets.size()) {
        for (PropertyTable& table : paste.tables)
            table.countInto(paste.report);
    }
    return true;
}

void applyObjectProperties(const ReflectedObject& target, PropertyTable& table,
                           const std::string& prefix, PasteProgress& progress)
{
    Leaf leaf(table, progress);
    walkProperties(target, prefix, leaf);
    leaf.addTo(progress.report);
}

} // namespace kyr::properties
