#include "editor_test.h"

#include <QFile>
#include <QImage>
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

    QTemporaryDir directory;
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
        EXPECT_TRUE(item("message_dialog_text")->property("text").toString().contains(name));
        key(Qt::Key_Escape);
    }
}

TEST_F(EditorFilesTest, savedSceneOpensWithItsChanges)
{
    session.document()->rename(object("Far"), "Further");
    EXPECT_TRUE(session.document()->isModified());
    session.document()->markSaved(path("stage.kyrscene"));
    session.document()->rename(object("Near"), "Nearer");
    session.files()->save();
    EXPECT_FALSE(session.document()->isModified());

    select({"Nearer"});
    QSignalSpy loaded(session.loader(), &editor::LoadController::loaded);
    session.files()->openFile(path("stage.kyrscene"));
    ASSERT_TRUE(loaded.wait());
    EXPECT_NE(object("Further"), nullptr);
    EXPECT_NE(object("Nearer"), nullptr);
    EXPECT_EQ(selection(), QStringList()) << "nothing of the old scene stays selected";
    EXPECT_FALSE(session.undoStatus()->canUndo());
}

TEST_F(EditorFilesTest, failedSaveTellsWhyAndStaysModified)
{
    session.document()->markSaved(path("no/such/folder/stage.kyrscene"));
    session.document()->rename(object("Far"), "Further");
    session.files()->save();
    EXPECT_TRUE(
        item("message_dialog_text")->property("text").toString().contains("stage.kyrscene"));
    EXPECT_TRUE(session.document()->isModified());
}

TEST_F(EditorFilesTest, unsavedChangesAreAskedFor)
{
    session.document()->rename(object("Far"), "Further");
    QSignalSpy quit(session.files(), &editor::FileCommands::quitConfirmed);
    session.files()->quit();
    EXPECT_TRUE(session.files()->isConfirming());
    key(Qt::Key_Escape);
    EXPECT_TRUE(QTest::qWaitFor([this] { return !session.files()->isConfirming(); }));
    EXPECT_EQ(quit.count(), 0);

    session.files()->quit();
    session.files()->discardAndContinue();
    EXPECT_EQ(quit.count(), 1);
}

TEST_F(EditorFilesTest, programWritesAPictureOrSaysWhyNot)
{
    struct
    {
        QStringList arguments;
        int exitCode;
        QByteArray error;
    } const rows[] = {
        {{"--screenshot", path("street.png")}, 0, ""},
        {{"--screenshot", path("none.png"), path("missing.glb")}, 1, "missing.glb"},
        {{"--theme", "pink"}, 1, "dark or light"},
    };
    for (const auto& [arguments, exitCode, error] : rows) {
        QProcess program;
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
}

} // namespace test
