#include "command_line.h"

#include <QCommandLineParser>

#include <cstdio>
#include <cstdlib>

namespace editor {

CommandLine parseCommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(
        QStringLiteral("Opens a scene file and shows it as a tree and in 3D."));
    parser.addPositionalArgument(QStringLiteral("scene"),
                                 QStringLiteral("The file to open; a sample scene without it."),
                                 QStringLiteral("[scene]"));
    parser.addHelpOption();
    const QCommandLineOption screenshot(
        QStringLiteral("screenshot"),
        QStringLiteral("Write a picture of the window to <file> once the scene shows, and exit."),
        QStringLiteral("file"));
    const QCommandLineOption theme(QStringLiteral("theme"),
                                   QStringLiteral("Use the <dark|light> theme for this run."),
                                   QStringLiteral("dark|light"));
    parser.addOptions({screenshot, theme});
    parser.process(arguments);

    CommandLine result;
    result.scene = parser.positionalArguments().value(0);
    result.screenshot = parser.value(screenshot);
    if (parser.isSet(theme)) {
        const QString name = parser.value(theme);
        if (name != QLatin1String("dark") && name != QLatin1String("light")) {
            std::fputs("--theme takes dark or light\n", stderr);
            std::exit(EXIT_FAILURE);
        }
        result.dark = name == QLatin1String("dark");
    }
    return result;
}

} // namespace editor
