#include "command_line.h"

#include <kyr_scene_outline/version.h>

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

#include <cstdio>
#include <cstdlib>

namespace editor {

namespace {

[[noreturn]] void refuse(const QString& reason)
{
    printError(reason);
    std::exit(EXIT_FAILURE);
}

[[noreturn]] void answer(const QString& text)
{
    std::fputs(qPrintable(text), stdout);
    std::exit(EXIT_SUCCESS);
}

struct Parser : QCommandLineParser
{
    const QCommandLineOption help = addHelpOption();
    const QCommandLineOption version = addVersionOption();
    const QCommandLineOption screenshot{
        QStringLiteral("screenshot"),
        QStringLiteral("Write a picture of the window to <file> once the scene shows, and exit."),
        QStringLiteral("file")};
    const QCommandLineOption theme{QStringLiteral("theme"),
                                   QStringLiteral("Use the <dark|light> theme for this run."),
                                   QStringLiteral("dark|light")};
    const QCommandLineOption sceneSize{
        QStringLiteral("scene-size"),
        QStringLiteral("Open a generated scene of <number> objects, 1 to %1, and show what "
                       "operations on it take.")
            .arg(SceneRecipe::mostObjects),
        QStringLiteral("number")};
    const QCommandLineOption shape{
        QStringLiteral("shape"),
        QStringLiteral("The shape of a generated scene: <flat|levels|chain|parents|bushy>; bushy "
                       "without it."),
        QStringLiteral("flat|levels|chain|parents|bushy")};

    Parser()
    {
        setApplicationDescription(
            QStringLiteral("Opens a scene file and shows it as a tree and in 3D."));
        addPositionalArgument(QStringLiteral("scene"),
                              QStringLiteral("The file to open; a sample scene without it."),
                              QStringLiteral("[scene]"));
        addOptions({screenshot, theme, sceneSize, shape});
    }
};

std::optional<bool> themeFrom(const QString& name)
{
    if (name != QLatin1String("dark") && name != QLatin1String("light"))
        refuse(QStringLiteral("--theme takes dark or light, not \"%1\"").arg(name));
    return name == QLatin1String("dark");
}

QString pictureFrom(const QString& path)
{
    const QFileInfo file(path);
    if (file.fileName().isEmpty())
        refuse(QStringLiteral("--screenshot takes the name of a file"));
    if (!file.absoluteDir().exists())
        refuse(QStringLiteral("--screenshot: there is no folder \"%1\"").arg(file.path()));
    return path;
}

SceneRecipe recipeFrom(const Parser& parser)
{
    SceneRecipe recipe;
    const QString size = parser.value(parser.sceneSize);
    bool isNumber = false;
    recipe.size = size.toInt(&isNumber);
    if (!isNumber || recipe.size < 1 || recipe.size > SceneRecipe::mostObjects) {
        refuse(QStringLiteral("--scene-size takes a number from 1 to %1, not \"%2\"")
                   .arg(SceneRecipe::mostObjects)
                   .arg(size));
    }
    if (!parser.isSet(parser.shape))
        return recipe;
    const QString name = parser.value(parser.shape);
    const std::optional<SceneShape> shape = sceneShapeOf(name);
    if (!shape) {
        refuse(QStringLiteral("--shape takes flat, levels, chain, parents or bushy, not \"%1\"")
                   .arg(name));
    }
    recipe.shape = *shape;
    return recipe;
}

} // namespace

void printError(const QString& text)
{
    const QString program = QFileInfo(QCoreApplication::applicationFilePath()).fileName();
    std::fprintf(stderr, "%s: %s\n", qPrintable(program), qPrintable(text));
}

void answerQuestions(int& argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    Parser parser;
    // Options of the toolkit are no errors here.
    parser.parse(QCoreApplication::arguments());
    if (parser.isSet(parser.help))
        answer(parser.helpText());
    if (parser.isSet(parser.version)) {
        answer(QStringLiteral("%1 %2\n").arg(QCoreApplication::applicationName(),
                                             QStringLiteral(KYR_SCENE_OUTLINE_VERSION)));
    }
}

CommandLine parseCommandLine(const QStringList& arguments)
{
    Parser parser;
    if (!parser.parse(arguments))
        refuse(parser.errorText());
    const QStringList scenes = parser.positionalArguments();
    if (scenes.size() > 1) {
        refuse(QStringLiteral("one scene opens at a time, not %1: \"%2\"")
                   .arg(scenes.size())
                   .arg(scenes.join(QStringLiteral("\", \""))));
    }
    CommandLine result;
    result.scene = scenes.value(0);
    if (parser.isSet(parser.screenshot))
        result.screenshot = pictureFrom(parser.value(parser.screenshot));
    if (parser.isSet(parser.theme))
        result.dark = themeFrom(parser.value(parser.theme));
    if (parser.isSet(parser.sceneSize)) {
        if (!scenes.isEmpty())
            refuse(QStringLiteral("--scene-size generates a scene, and \"%1\" is another one")
                       .arg(result.scene));
        result.generated = recipeFrom(parser);
    } else if (parser.isSet(parser.shape)) {
        refuse(QStringLiteral("--shape needs --scene-size"));
    }
    return result;
}

} // namespace editor
