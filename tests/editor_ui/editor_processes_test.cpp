// Two running editors on one display, driven by keys that the display itself sends.

#include "display_input.h"
#include "editor_test.h"
#include "row_of_boxes.h"

#include <editor/files/scene_writer.h>

#include <QClipboard>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>
#include <QGuiApplication>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <gtest/gtest.h>

namespace test {

namespace {

constexpr int patience = 60000;

std::string contents(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

/// An editor in a process of its own, which ends by being killed.
class EditorProcess
{
public:
    EditorProcess(const QString& scene, const QString& settings)
    {
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CONFIG_HOME", settings);
        environment.insert("XDG_DATA_HOME", settings);
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(SCENE_EDITOR, {scene});
        EXPECT_TRUE(QTest::qWaitFor(
            [this] {
                const QString pid = QString::number(m_process.processId());
                m_window = outputOf("xdotool", {"search", "--onlyvisible", "--pid", pid});
                return !m_window.isEmpty();
            },
            patience));
    }
    ~EditorProcess()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    void press(const QString& keys)
    {
        outputOf("xdotool",
                 QStringList{"windowfocus", "--sync", m_window, "key"} + keys.split(' '));
    }
    /// Waits until it is the window's title. Presses the keys again until then, if there are any,
    /// as a window that has just come may not take them yet.
    bool waitsForTitle(const QString& title, const QString& keys = {})
    {
        return QTest::qWaitFor(
            [&] {
                if (!keys.isEmpty())
                    press(keys);
                return outputOf("xdotool", {"getwindowname", m_window}).startsWith(title);
            },
            patience);
    }

private:
    QProcess m_process;
    QString m_window;
};

} // namespace

TEST(EditorProcessesTest, copyInOneAndPasteInTheOther)
{
    const QTemporaryDir directory;
    const QString from = directory.filePath("from.kyrscene");
    const QString to = directory.filePath("to.kyrscene");
    ASSERT_EQ(editor::writeScene(*makeRowOfBoxes(30, 2), from), "");
    ASSERT_EQ(editor::writeScene(*makeRowOfBoxes(30, 1), to), "");
    const std::string before = contents(to);
    ASSERT_NE(before, contents(from));
    QGuiApplication::clipboard()->setText("nothing yet");

    EditorProcess first(from, directory.filePath("first"));
    EditorProcess second(to, directory.filePath("second"));
    ASSERT_TRUE(first.waitsForTitle("from.kyrscene"));
    ASSERT_TRUE(second.waitsForTitle("to.kyrscene"));

    first.press("ctrl+a ctrl+shift+a ctrl+shift+c");
    const QString read = "xclip -o -selection clipboard";
    ASSERT_TRUE(QTest::qWaitFor(
        [&] {
            return outputOf("sh", {"-c", read}).contains("<objects>");
        },
        patience));
    EXPECT_EQ(outputOf("sh", {"-c", read + " | xmllint --noout - && echo well formed"}),
              "well formed");

    // Everything, the transform included, which a plain paste leaves out at first.
    second.press("ctrl+a ctrl+shift+a ctrl+alt+v");
    second.press("Down Down Down space Return");
    ASSERT_TRUE(second.waitsForTitle("• to.kyrscene"));
    second.press("ctrl+s");
    ASSERT_TRUE(second.waitsForTitle("to.kyrscene"));
    EXPECT_EQ(contents(to), contents(from));

    second.press("ctrl+z");
    ASSERT_TRUE(second.waitsForTitle("• to.kyrscene"));
    second.press("ctrl+s");
    ASSERT_TRUE(second.waitsForTitle("to.kyrscene"));
    EXPECT_EQ(contents(to), before) << "one undo restores every value";
}

TEST(EditorProcessesTest, unsavedWorkOutlivesTheProgram)
{
    const QTemporaryDir directory;
    const QString settings = directory.filePath("settings");
    const QString scene = directory.filePath("scene.kyrscene");
    ASSERT_EQ(editor::writeScene(*makeRowOfBoxes(3, 1), scene), "");
    const std::string before = contents(scene);
    const auto journals = [&settings] {
        QStringList paths;
        for (QDirIterator files(settings, {"scene.kyrscene"}, QDir::Files,
                                QDirIterator::Subdirectories);
             files.hasNext();)
            paths.append(files.next());
        return paths;
    };
    {
        EditorProcess first(scene, settings);
        ASSERT_TRUE(first.waitsForTitle("scene.kyrscene"));
        ASSERT_TRUE(first.waitsForTitle("• scene.kyrscene", "ctrl+a Delete"));
        ASSERT_TRUE(QTest::qWaitFor([&] { return !journals().isEmpty(); }, patience));
    }
    // Somebody else writes as many bytes between the end and the next start.
    std::string theirs = before;
    theirs.replace(theirs.find("Box 1"), 5, "Bin 1");
    QFile file(scene);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(theirs.data(), qint64(theirs.size()));
    file.close();
    EditorDriver second;
    QDir folder = QFileInfo(journals().constFirst()).dir();
    folder.cdUp();
    second.session.recovery()->start(folder.path() + "//");
    ASSERT_TRUE(second.text("recovery_text").contains("The file itself was changed after that."));
    {
        EditorProcess other(scene, settings);
        ASSERT_TRUE(other.waitsForTitle("scene.kyrscene"));
    }
    second.session.recovery()->recover();
    using editor::FileCommands;
    FileCommands& files = *second.session.files();
    const auto asks = [&files](FileCommands::Conflict question) {
        return QTest::qWaitFor([&] { return files.conflict() == question; });
    };
    EXPECT_TRUE(asks(FileCommands::FileChanged)) << "at once";
    EXPECT_NE(second.text("changed_file_text"), "");
    files.decideLater();
    files.save();
    EXPECT_TRUE(asks(FileCommands::SaveWaits)) << "and after a \"later\" again";
    EXPECT_EQ(contents(scene), theirs);
    files.keepMine();
    ASSERT_TRUE(QTest::qWaitFor([&] { return !second.session.document()->isModified(); }));
    EXPECT_NE(contents(scene), theirs);
    EXPECT_EQ(journals(), QStringList()) << "what is saved needs no journal";
}

} // namespace test
