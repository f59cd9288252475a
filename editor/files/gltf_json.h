#pragma once

#include <editor/files/gltf_plan.h>

#include <functional>
#include <string>

namespace editor {

/// The JSON part of a glTF 2 file.
struct GltfJson
{
    std::string text;
    /// Where a file without a binary chunk has the Base64 text of its buffer; 0 without a buffer.
    std::size_t dataPosition = 0;
};

/// Every number comes back to the last bit. `embedded` leaves a place for the buffer inside the
/// text. `report` is told the share of the nodes that are done. Throws `WriteFailure` for names
/// that are no UTF-8 and numbers that are not finite.
GltfJson makeGltfJson(const GltfPlan& plan, const std::string& sceneName, bool embedded,
                      const std::function<void(double)>& report);

} // namespace editor
