#include "display_input.h"
#include "editor_test.h"
#include "row_of_boxes.h"

#include <editor/files/scene_writer.h>

#include <QApplication>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QImage>
#include <QLineEdit>
#include <QProcess>
#include <QSignalSpy>
#include <QTemporaryDir>

namespace test {

class EditorFilesTest : public EditorTest
{
protected:
    QString path(const char* name) const { return directory.filePath(name); }

    void write(const char* name, const QByteArray& contents)
    {
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::WriteOnly));
        file.write(contents);
    }

    QByteArray contents(const char* name) const
    {
        QFile file(path(name));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }
    void save()
    {
        session.files()->save();
        const auto isSaving = [this] {
            return session.files()->isComparing() || session.files()->saver()->isSaving();
        };
        ASSERT_TRUE(QTest::qWaitFor([&] { return !isSaving(); }));
    }
    /// Somebody writes the file a while after it was known.
    void writeLater(const char* name, const QByteArray& contents)
    {
        ASSERT_TRUE(
            QTest::qWaitFor([this] { return !session.files()->knownFile().digest.isEmpty(); }));
        write(name, contents);
        QFile file(path(name));
        ASSERT_TRUE(file.open(QIODevice::ReadWrite));
        file.setFileTime(QDateTime::currentDateTime().addSecs(++m_later),
                         QFile::FileModificationTime);
    }
    /// Types a name into the dialog that shows, and takes it.
    void chooseFile(const QString& title, const char* name = "scene")
    {
        for (QWidget* widget : QApplication::topLevelWidgets()) {
            auto* dialog = qobject_cast<QFileDialog*>(widget);
            if (!dialog || !dialog->isVisible())
                continue;
            EXPECT_EQ(dialog->windowTitle(), title);
            dialog->selectFile(path(name)); // selects none, where there is no such file
            dialog->findChild<QLineEdit*>()->setText(path(name));
            QMetaObject::invokeMethod(dialog, "accept");
            return;
        }
        ADD_FAILURE() << "no file dialog";
    }
    /// A file of another editor's scene in the place of ours.
    void writeOther(const char* name)
    {
        ASSERT_EQ(editor::writeScene(*makeRowOfBoxes(3, 1), path(name)), QString());
    }

    QTemporaryDir directory;

private:
    int m_later = 5;
};

TEST_F(EditorFilesTest, fileThatCannotBeOpenedKeepsTheScene)
{
    write("broken.glb", "glTF and then nothing of the kind");
    const auto root = session.document()->root();
    for (const char* name : {"broken.glb", "missing.fbx"}) {
        QSignalSpy failed(session.loader(), &editor::LoadController::failed);
        session.files()->openFile(path(name));
        ASSERT_TRUE(failed.wait()) << name;
        EXPECT_EQ(session.document()->root(), root);
        EXPECT_TRUE(text("message_dialog_text").contains(name));
        key(Qt::Key_Escape);
    }
}

TEST_F(EditorFilesTest, failedSaveTellsWhyAndASavedSceneOpensWithItsChanges)
{
    session.document()->rename(object("Far"), "Further");
    session.document()->markSaved(path("no/such/folder/stage.kyrscene"));
    session.document()->rename(object("Near"), "Nearer");
    save();
    EXPECT_TRUE(text("message_dialog_text").contains("stage.kyrscene"));
    EXPECT_TRUE(session.document()->isModified());
    key(Qt::Key_Escape);
    session.document()->markSaved(path("stage.kyrscene"));
    session.document()->rename(object("Nearer"), "Nearest");
    EXPECT_TRUE(session.document()->isModified());
    save();
    EXPECT_FALSE(session.document()->isModified());

    select({"Nearest"});
    QSignalSpy loaded(session.loader(), &editor::LoadController::loaded);
    session.files()->reload();
    ASSERT_TRUE(loaded.wait());
    EXPECT_NE(object("Further"), nullptr);
    EXPECT_NE(object("Nearest"), nullptr);
    EXPECT_EQ(selection(), QStringList()) << "nothing of the old scene stays selected";
    EXPECT_FALSE(session.undoStatus()->canUndo());
}

TEST_F(EditorFilesTest, sceneThatIsBeingSavedIsLeftOnceItIs)
{
    writeOther("other.kyrscene");
    session.document()->markSaved(path("stage.kyrscene"));
    session.document()->rename(object("Near"), "Nearer");
    QObject::connect(session.files()->saver(), &editor::SceneSaver::savingChanged, &session,
                     [this] {
                         if (session.files()->saver()->isSaving())
                             session.files()->openFile(path("other.kyrscene"));
                     });
    QSignalSpy loaded(session.loader(), &editor::LoadController::loaded);
    session.files()->save();
    ASSERT_TRUE(loaded.wait());
    EXPECT_FALSE(session.files()->isConfirming());
    EXPECT_EQ(session.document()->filePath(), path("other.kyrscene"));
    EXPECT_TRUE(contents("stage.kyrscene").contains("Nearer"));
}

TEST_F(EditorFilesTest, importedFileSaysOnceWhatIsMissingAndIsNeverWritten)
{
    const QByteArray foreign =
        R"({"asset":{"version":"2.0"},"scene":0,"scenes":[{"nodes":[0],"extras":{"a":1}}],)"
        R"("nodes":[{"name":"Far","extras":{"b":2}}]})";
    write("scene.gltf", foreign);
    const int before = session.log()->problemCount();
    QSignalSpy loaded(session.loader(), &editor::LoadController::loaded);
    session.files()->openFile(path("scene.gltf"));
    ASSERT_TRUE(loaded.wait());
    EXPECT_TRUE(text("message_text").contains("extras are not imported: 2"));
    session.document()->rename(object("Far"), "Further");
    DisplayInput(window).press("ctrl+s");
    chooseFile("Save Scene As");
    EXPECT_TRUE(QTest::qWaitFor([this] { return !session.document()->isModified(); }));
    EXPECT_EQ(session.document()->filePath(), path("scene.kyrscene"));
    EXPECT_EQ(contents("scene.gltf"), foreign);
    EXPECT_EQ(session.log()->problemCount(), before + 1) << "told once";

    session.files()->saveAs();
    chooseFile("Save Scene As", "scene.v2.glb");
    EXPECT_TRUE(text("message_dialog_text").contains("scene.v2.glb"));
    EXPECT_EQ(session.document()->filePath(), path("scene.kyrscene")) << "it would not hold all";
}

TEST_F(EditorFilesTest, exportSaysWhatTheFileWillNotCarry)
{
    object("Left")->light()->type = editor::LightType::Area;
    session.document()->rename(object("Far"), "Further");
    session.exporter()->begin();
    for (const char* loss : {"Area lights, written as point lights: 1 (Left)",
                             "Shapes, written as plain meshes: 2 (Near, Further)"})
        EXPECT_TRUE(session.exporter()->losses().contains(loss)) << loss;
    session.exporter()->chooseFile();
    QSignalSpy exported(session.exporter(), &editor::SceneExport::exported);
    // Who leaves meanwhile gets the file, and is asked about the scene after that.
    QObject::connect(
        session.exporter()->saver(), &editor::SceneSaver::savingChanged, window,
        [this] {
            if (!session.exporter()->saver()->isSaving())
                return;
            window->close();
            EXPECT_FALSE(session.files()->isConfirming());
        },
        Qt::QueuedConnection);
    chooseFile("Export Scene");
    ASSERT_TRUE(exported.wait());
    EXPECT_TRUE(session.files()->isConfirming());
    EXPECT_TRUE(contents("scene.glb").startsWith("glTF"));
    EXPECT_TRUE(session.document()->isModified()) << "an export is no save";
}

TEST_F(EditorFilesTest, fileThatSomebodyElseChangedIsAskedAbout)
{
    using editor::FileCommands;
    const char* const name = "stage.kyrscene";
    session.document()->markSaved(path(name));
    save();
    QSignalSpy asked(session.files(), &FileCommands::conflictChanged);
    writeOther(name);
    ASSERT_TRUE(asked.wait()) << "without a save";
    EXPECT_TRUE(text("changed_file_text").contains(name));
    key(Qt::Key_Escape);
    ASSERT_TRUE(QTest::qWaitFor(
        [this] { return session.files()->conflict() == FileCommands::NoConflict; }));

    const QByteArray theirs = contents(name);
    session.document()->rename(object("Far"), "Further");
    save();
    EXPECT_EQ(session.files()->conflict(), FileCommands::SaveWaits);
    EXPECT_EQ(contents(name), theirs);
    session.files()->keepMine();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !session.document()->isModified(); }));
    EXPECT_TRUE(contents(name).contains("Further"));
    save();
    EXPECT_EQ(session.files()->conflict(), FileCommands::NoConflict) << "our own save is no change";

    QSignalSpy saved(session.files(), &FileCommands::saved);
    for (const bool differs : {false, true}) {
        asked.clear();
        saved.clear();
        writeLater(name, contents(name).replace("Near", differs ? "Nerd" : "Near"));
        session.files()->save();
        EXPECT_TRUE(QTest::qWaitFor([&] { return asked.count() + saved.count() > 0; }));
        EXPECT_EQ(asked.count(), int(differs)) << "a file that was only touched is no other";
    }
    session.files()->keepMine();
    EXPECT_TRUE(QTest::qWaitFor([this] { return !session.files()->saver()->isSaving(); }));

    QSignalSpy quit(session.files(), &FileCommands::quitConfirmed);
    auto* progress = window->findChild<QObject*>("save_progress");
    for (const bool cancels : {true, false}) {
        writeLater(name, contents(name));
        set("Near", "visible", cancels ? "false" : "true");
        session.files()->quit();
        session.files()->saveAndContinue();
        EXPECT_TRUE(progress->property("visible").toBool()) << "while the file is compared";
        if (cancels)
            QMetaObject::invokeMethod(progress, "canceled");
        else
            session.document()->open(editor::SceneObject::cloneAll({object("Stage")}).front(),
                                     path(name));
        EXPECT_FALSE(session.files()->isComparing());
        saved.clear();
        save();
        EXPECT_EQ(saved.count(), 1);
    }
    EXPECT_EQ(quit.count(), 0) << "what was to follow the save that was given up";

    session.document()->rename(object("Further"), "Mine");
    writeOther(name);
    save();
    session.files()->reload();
    EXPECT_TRUE(QTest::qWaitFor([this] { return object("Box 2") != nullptr; }));
    EXPECT_EQ(session.files()->conflict(), FileCommands::NoConflict);
}

TEST_F(EditorFilesTest, programWritesAPictureOrSaysWhyNotAndLeavesNothingBehind)
{
    const QTemporaryDir home;
    const std::tuple<QStringList, int, QByteArray> rows[] = {
        {{"--screenshot", path("street.png")}, 0, ""},
        {{"--screenshot", path("none.png"), path("missing.glb")}, 1, "missing.glb"},
        {{"--screenshot", path("chain.png"), "--scene-size", "50", "--shape", "chain"}, 0, ""},
        {{"--scene-size", "0"}, 1, "--scene-size takes a number from 1 to 1000000"},
        {{"--theme", "pink"}, 1, "scene_editor: --theme takes dark or light"},
        {{"--version"}, 0, ""},
        {{"--help"}, 0, ""},
        {{"--verbose"}, 1, "scene_editor: "},
        {{"one.glb", "two.glb"}, 1, "scene_editor: one scene opens at a time"},
        {{"--screenshot", path("no/such/street.png")}, 1, "there is no folder"},
    };
    for (const auto& [arguments, exitCode, error] : rows) {
        QProcess program;
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("HOME", home.path());
        if (arguments.contains("--version") || arguments.contains("--help"))
            environment.remove("DISPLAY");
        program.setProcessEnvironment(environment);
        program.start(SCENE_EDITOR, arguments);
        ASSERT_TRUE(program.waitForFinished(120000));
        const QByteArray said = program.readAllStandardError();
        EXPECT_EQ(program.exitCode(), exitCode) << said.constData();
        EXPECT_TRUE(said.contains(error)) << said.constData();
        EXPECT_EQ(said.count('\n'), exitCode)
            << "one line, and none when all is well: " << said.constData();
    }
    EXPECT_EQ(QImage(path("street.png")).size(), QSize(1280, 720));
    EXPECT_FALSE(QFile::exists(path("none.png")));
    EXPECT_TRUE(QDir(home.path()).isEmpty(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot));
}

} // namespace test
