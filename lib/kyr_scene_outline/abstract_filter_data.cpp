#include "abstract_filter_data.h"

AbstractFilterData::AbstractFilterData() = default;
AbstractFilterData::~AbstractFilterData() = default;
