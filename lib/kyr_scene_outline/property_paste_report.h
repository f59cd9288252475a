#pragma once

#include <cstddef>
#include <map>
#include <string>

/// What became of the stored values of one property, added up over all target objects.
struct PropertyPasteCounts
{
    /// Values that were set. A preview asks no lock and no setter: it counts those that are a value
    /// of the property's type.
    std::size_t changed = 0;
    /// Targets that have the value already.
    std::size_t equal = 0;
    /// Targets that have no such property, or one that cannot be written.
    std::size_t unmatched = 0;
    /// Targets where the property has another type.
    std::size_t typeMismatches = 0;
    /// Targets that did not take the value.
    std::size_t refused = 0;
};

/// What a paste of properties did, added up over all target objects.
struct PropertyPasteReport
{
    std::size_t targets = 0;
    std::size_t changedObjects = 0;
    std::size_t changedProperties = 0;
    /// Stored values for which the target has no property of that path.
    std::size_t unmatched = 0;
    /// Stored values whose type is not that of the target's property.
    std::size_t typeMismatches = 0;
    /// Stored values that the target's property did not take.
    std::size_t refused = 0;
    /// The same by path; complete when the paste is finished.
    std::map<std::string, PropertyPasteCounts> properties;
};
