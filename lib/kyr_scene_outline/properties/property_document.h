#pragma once

#include <host/data_section/data_section.h>
#include <host/scene/asset_model.h>
#include <host/scene/asset_selection.h>
#include <kyr_scene_outline/properties/property_table.h>

#include <deque>
#include <string>
#include <utility>
#include <vector>

/// The document in which property values travel from objects to objects:
///
///     <objects>
///       <object>
///         <type>type name</type>
///         <property>
///           <name>light.intensity</name>
///           <value>1.5</value>
///           <type>type name of the value</type>
///         </property>
///
/// Type names are `std::type_info::name()` texts, compared byte for byte.
namespace kyr::properties {

/// Keeps the objects that have a row and sorts them by it: by row number before anything else, so
/// first children of different parents come before second children.
void collectObjectsInModelOrder(IAssetSelection::Objects& objects, const IAssetModel* model);

/// The document of the objects, in their order, with the properties that are chosen.
Zar::DataSectionPtr buildPropertyDocument(const IAssetSelection::Objects& objects,
                                          const PropertyChoice& choice = {});

/// Appends a "property" section for each value of the object and of the objects nested in it.
void writeObjectProperties(const ReflectedObject& object, const Zar::DataSectionPtr& section,
                           const std::string& prefix, const PropertyChoice& choice = {});

/// What a paste carries from one target to the next.
struct PasteProgress
{
    PropertyChoice choice;
    /// Only counts.
    bool isPreview = false;
    /// Whether `earlier` keeps all values that were replaced, in order, or only the one that is
    /// being replaced just now.
    bool keepsEarlier = false;
    /// No vector: one that grows moves all of them.
    std::deque<std::pair<BoundProperty, lumo::Variant>> earlier;
    PropertyPasteReport report;

    std::size_t nextTarget = 0;
    /// Each until it was read into a table.
    std::vector<Zar::DataSectionPtr> sources;
    /// One for each stored object that is dealt again, else one for all.
    std::vector<PropertyTable> tables;
};

/// Deals the document's objects to the targets in turn, starting again from the first when there
/// are more targets. All targets together cost linear time in the document and in their
/// properties. With a progress it goes on behind the targets that are done, to `count` more, and
/// when that has its sources already, there need be no document. False when there is no object to
/// deal, which is reported.
bool pasteDocument(const IAssetSelection::Objects& targets, const Zar::DataSectionPtr& document,
                   PasteProgress* progress = nullptr, std::size_t count = std::size_t(-1));

/// Sets each writable property whose path and type are in the table and whose text differs.
void applyObjectProperties(const ReflectedObject& target, PropertyTable& table,
                           const std::string& prefix, PasteProgress& progress);

} // namespace kyr::properties
