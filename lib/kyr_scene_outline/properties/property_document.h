#pragma once

#include <host/data_section/data_section.h>
#include <host/scene/asset_model.h>
#include <host/scene/asset_selection.h>
#include <kyr_scene_outline/properties/property_table.h>
#include <kyr_scene_outline/property_paste_report.h>

#include <string>

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

/// The document of the objects, in their order.
Zar::DataSectionPtr buildPropertyDocument(const IAssetSelection::Objects& objects);

/// Appends an "object" section.
void writeObject(const ReflectedObject& object, Zar::DataSection& root);

/// Appends a "property" section for each value of the object and of the objects nested in it.
void writeObjectProperties(const ReflectedObject& object, const Zar::DataSectionPtr& section,
                           const std::string& prefix);

/// Pastes the document to all targets, see `DocumentPaste`. False when it holds no object.
bool pasteDocument(const IAssetSelection::Objects& targets, const Zar::DataSectionPtr& document);

/// Sets each writable property whose path and type are in the table and whose text differs.
void applyObjectProperties(const ReflectedObject& target, const PropertyTable& table,
                           const std::string& prefix, PropertyPasteReport* report = nullptr);

} // namespace kyr::properties
