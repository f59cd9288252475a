#pragma once

class QOpenGLShaderProgram;

#include <memory>

namespace editor {

/// Where every shader finds its vertex attributes.
namespace attribute {
constexpr int position = 0;
constexpr int normal = 1;
constexpr int instanceRow = 2; ///< three in a row
constexpr int instanceColor = 5;
} // namespace attribute

/// Compiles and links two shaders from the resources. Needs a current context; a fault is logged
/// and gives a program that draws nothing.
std::unique_ptr<QOpenGLShaderProgram> loadProgram(const char* vertexShader,
                                                  const char* fragmentShader);

} // namespace editor
