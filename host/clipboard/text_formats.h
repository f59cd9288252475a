#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace Zar::platform {

/// Of the formats that a clipboard offers the one that carries plain text best: UTF-8 by name, in
/// upper or lower case, then what stands for text without naming an encoding.
std::optional<std::size_t> bestTextFormat(const std::vector<std::string>& formats);

} // namespace Zar::platform
