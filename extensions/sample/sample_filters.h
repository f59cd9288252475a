#pragma once

#include "row_filter.h"

namespace sample {

std::vector<RowFilter::Choice> typeChoices();

/// An object is hidden or locked with anything above it.
std::vector<RowFilter::Choice> visibilityChoices();

} // namespace sample
