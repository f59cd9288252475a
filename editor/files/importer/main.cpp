#include "assimp_import.h"

#include <editor/files/import_process.h>
#include <editor/files/process_limits.h>
#include <editor/files/scene_stream_writer.h>

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cstdio>
#include <new>
#include <unistd.h>

// Reads one scene file and writes what is in it to the standard output, for the editor to read.
// A program of its own, because a file can make the library that reads it crash, hang and take
// all memory.

namespace {

void importFile(const QString& path, QFile& output)
{
    editor::SceneStreamWriter writer(output);
    editor::allowForInput(QFileInfo(path).size());
    try {
        editor::importWithAssimp(path, writer);
    } catch (const std::bad_alloc&) {
        _exit(int(editor::ImporterExit::OutOfMemory));
    } catch (const std::exception& error) {
        writer.fail(QString::fromUtf8(error.what()));
    }
    // No need to take apart what goes with the process; files nest deeply.
    _exit(int(editor::ImporterExit::Done));
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "scene_importer is started by the editor, with the path of a scene\n");
        return int(editor::ImporterExit::Failed);
    }
    editor::limitProcess();
    QFile output;
    if (!output.open(STDOUT_FILENO, QIODevice::WriteOnly | QIODevice::Unbuffered))
        return int(editor::ImporterExit::Failed);
    editor::runOnLargeStack([&] { importFile(QFile::decodeName(argv[1]), output); });
    return int(editor::ImporterExit::Done);
}
