#include <editor/app/editor_application.h>
#include <editor/app/editor_window.h>

#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

namespace {

/// The window of one test is not how the one before left it.
class FreshSettings : public ::testing::EmptyTestEventListener
{
    void OnTestStart(const ::testing::TestInfo&) override
    {
        QSettings settings;
        for (const char* group : {"window", "panes", "scenes", "files", "gizmo"})
            settings.remove(group);
    }
};

} // namespace

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir settings;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    editor::prepareApplication();
    editor::EditorApplication application(argc, argv);
    QApplication::setOrganizationName("Tests");
    QApplication::setApplicationName("Editor");
    editor::prepareWindows();
    ::testing::UnitTest::GetInstance()->listeners().Append(new FreshSettings);
    return RUN_ALL_TESTS();
}
