#include <editor/app/editor_window.h>

#include <QApplication>
#include <QSettings>
#include <QTemporaryDir>

#include <gtest/gtest.h>

int main(int argc, char** argv)
{
    ::testing::InitGoogleTest(&argc, argv);
    const QTemporaryDir settings;
    QSettings::setDefaultFormat(QSettings::IniFormat);
    QSettings::setPath(QSettings::IniFormat, QSettings::UserScope, settings.path());
    editor::prepareApplication();
    QApplication application(argc, argv);
    QApplication::setOrganizationName("Tests");
    QApplication::setApplicationName("Editor");
    editor::prepareWindows();
    return RUN_ALL_TESTS();
}
