#include <kyr_scene_outline/abstract_filter_data.h>

AbstractFilterData::AbstractFilterData() = default;
AbstractFilterData::~AbstractFilterData() = default;
