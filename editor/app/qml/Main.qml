import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Qt.labs.settings 1.0
import Editor.Viewport 1.0
import Kyr.SceneOutline 1.0

// The editor's window: tree, 3D view and log, inspector. `session` and `theme` come from the program.
ApplicationWindow {
    id: window

    property bool closing: false

    width: 1280
    height: 720
    minimumWidth: 960
    minimumHeight: 540
    visible: true
    title: (session.document.modified ? "• " : "") + session.document.title + " – " + Qt.application.name
    color: theme.pane
    palette: theme.palette
    font.pixelSize: 12

    // Nobody else does it on a display without a window manager.
    Component.onCompleted: requestActivate()
    onClosing: {
        close.accepted = window.closing;
        if (!window.closing) {
            session.task.cancel();
            session.files.quit();
        }
    }

    Connections {
        target: session.files

        function onQuitConfirmed() {
            window.closing = true;
            window.close();
        }
    }
    Connections {
        target: session.loader

        function onFailed(path, reason) {
            messageDialog.show(qsTr("The file cannot be opened"), reason);
        }
        function onIncomplete(path, notes) { statusBar.show(notes.join("; ")); }
        function onLoaded(path) {
            if (!session.recovery.offering)
                viewport.forceActiveFocus();
        }
    }
    Connections {
        target: session.edit

        function onReported(text) { statusBar.show(text); }
    }

    Connections {
        target: session

        function onColumnChooserRequested() { columnChooser.open(); }
    }

    Settings {
        id: settings

        property alias alwaysReveal: browserPanel.alwaysReveal
        property alias logShown: logView.visible

        category: "window"
    }

    menuBar: EditorMenuBar {
        alwaysReveal: browserPanel.alwaysReveal
        logShown: logView.visible
        onFindRequested: browserPanel.focusFilter()
        onAlwaysRevealToggled: browserPanel.alwaysReveal = !browserPanel.alwaysReveal
        onLogToggled: logView.visible = !logView.visible
        onRevealRequested: browserPanel.revealSelection()
        onRenameRequested: browserPanel.activeFocus ? browserPanel.rename() : inspector.editName()
        onHelpRequested: helpDialog.open()
    }

    SplitView {
        anchors.fill: parent
        orientation: Qt.Horizontal
        handle: splitHandle

        SceneBrowserPanel {
            id: browserPanel

            objectName: "browser_panel"
            browser: session.browser
            settingsName: "outline"
            onEditBegins: session.beginStep(text)
            onEditEnds: session.endStep()
            onMenuAboutToShow: session.showMenuAt(place)
            // Grows with its columns, until the user moves its border.
            SplitView.preferredWidth: Math.min(implicitWidth, window.width * 0.45)
            SplitView.minimumWidth: 220
        }
        SplitView {
            orientation: Qt.Vertical
            handle: splitHandle
            SplitView.fillWidth: true
            SplitView.minimumWidth: 320

            Viewport3D {
                id: viewport

                objectName: "viewport"
                controller: session.viewport
                dark: theme.dark
                clip: true
                SplitView.fillHeight: true
                SplitView.minimumHeight: 200

                DropArea {
                    anchors.fill: parent
                    enabled: !session.task.running
                    keys: ["text/uri-list"]
                    onDropped: {
                        if (drop.hasUrls)
                            session.files.openUrl(drop.urls[0]);
                    }
                }
            }
            LogView {
                id: logView

                objectName: "log_view"
                onCloseRequested: visible = false
                SplitView.preferredHeight: 120
                SplitView.minimumHeight: 60
            }
        }
        Inspector {
            id: inspector

            objectName: "inspector"
            SplitView.preferredWidth: 300
            SplitView.minimumWidth: 250
        }
    }

    footer: StatusBar {
        id: statusBar

        objectName: "status_bar"
        selectionText: browserPanel.hiddenSelectionCount > 0 ? browserPanel.statusText
                                                             : session.selectionStatus.summary
        canSelectMatches: browserPanel.tree.flatModel.matchCount > 0
        onSelectMatchesRequested: browserPanel.selectMatches()
        onLogRequested: logView.visible = !logView.visible
    }
    Binding {
        target: session.edit
        property: "hiddenCount"
        value: browserPanel.hiddenSelectionCount
    }
    HiddenDialog {}

    Component {
        id: splitHandle

        Rectangle {
            implicitWidth: 3
            implicitHeight: 3
            color: SplitHandle.pressed || SplitHandle.hovered ? theme.accent : theme.border
        }
    }

    ProgressPopup {
        running: session.loader.loading
        text: qsTr("Opening %1").arg(session.loader.fileName)
        progress: session.loader.progress
        onCanceled: session.loader.cancel()
    }
    ProgressPopup {
        running: session.task.running
        text: session.task.name
        progress: session.task.progress
        onCanceled: session.task.cancel()
    }
    MessageDialog {
        id: messageDialog

        objectName: "message_dialog"
    }
    FileDialogs {
        onFailed: messageDialog.show(heading, reason)
        onTold: statusBar.show(text)
    }
    PasteSpecialDialog {
        objectName: "paste_special_dialog"
    }
    HelpDialog {
        id: helpDialog
    }
    ColumnChooser {
        id: columnChooser

        objectName: "column_chooser"
        browser: session.browser
    }
}
