#pragma once

namespace editor {

/// Makes `import Editor.Viewport 1.0` work: Viewport3D, and ViewportController for its
/// enumerations. Call once, before the first QML file that imports it.
void registerViewportTypes();

/// Asks for the graphics that the viewport draws with (OpenGL 3.3). Call before the first
/// window is made and, with Qt::AA_ShareOpenGLContexts, before QGuiApplication is.
void requestViewportGraphics();

} // namespace editor
