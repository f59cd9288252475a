#pragma once

#include <editor/files/generated_scene.h>

#include <QString>
#include <QStringList>

#include <optional>

namespace editor {

/// What the program was asked to do.
struct CommandLine
{
    /// The bundled scene when empty.
    QString scene;
    /// Where to write a picture of the window, to exit then; empty for a session with a user.
    QString screenshot;
    std::optional<bool> dark;
    /// A scene to make up instead of opening one.
    std::optional<SceneRecipe> generated;
};

/// One line on the error stream that names the program.
void printError(const QString& text);

/// Prints and exits on --help and --version, which need no display. Makes and ends an application
/// object of its own, so it comes before the program's.
void answerQuestions(int& argc, char** argv);

/// Prints and exits on whatever cannot be done as it was asked.
CommandLine parseCommandLine(const QStringList& arguments);

} // namespace editor
