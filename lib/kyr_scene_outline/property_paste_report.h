#pragma once

#include <cstddef>

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
};
