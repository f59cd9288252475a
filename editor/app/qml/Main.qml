import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15
import Qt.labs.settings 1.0
import Editor.App 1.0
import Editor.Viewport 1.0
import Kyr.SceneOutline 1.0

// The editor's window: tree, 3D view and log, inspector. `session` and `theme` come from the program.
ApplicationWindow {
    id: window

    property bool closing: false
    property bool closesAfterExport: false

    width: 1280
    height: 720
    minimumWidth: 960
    minimumHeight: 540
    title: (session.document.modified ? "• " : "") + session.document.title + " – " + Qt.application.name
    color: theme.pane
    palette: theme.palette
    font.pixelSize: 12

    onClosing: {
        close.accepted = window.closing;
        if (window.closing)
            return;
        session.task.cancel();
        window.closesAfterExport = session.exporter.saver.saving;
        if (window.closesAfterExport)
            statusBar.show(qsTr("The window closes when the export is done"));
        else
            session.files.quit();
    }

    Connections {
        target: session.exporter

        function onExported() {
            if (window.closesAfterExport)
                session.files.quit();
            window.closesAfterExport = false;
        }
        function onFailed() { window.closesAfterExport = false; }
    }
    Connections {
        target: session.exporter.saver

        function onCanceled() { window.closesAfterExport = false; }
    }

    Connections {
        target: session.files

        function onQuitConfirmed() {
            window.closing = true;
            window.close();
        }
        function onReopened() {
            if (session.document.modified)
                revertDialog.open();
            else
                statusBar.show(qsTr("“%1” is open already").arg(session.document.title));
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
        target: session.view

        function onReported(text) { statusBar.show(text); }
    }
    Connections {
        target: session.edit

        function onReported(text) { statusBar.show(text); }
    }

    Connections {
        target: session

        function onColumnChooserRequested() { columnChooser.open(); }
        function onOpenElsewhere(path, process) {
            messageDialog.show(qsTr("The file is open in another editor"),
                               qsTr("“%1” is open in process %2 as well. What both save, one loses.")
                                   .arg(path).arg(process));
        }
    }

    Connections {
        target: session.inspector

        function onRefused(reason) { statusBar.show(reason); }
    }
    Connections {
        target: session.build

        function onReported(text) { statusBar.show(text); }
    }
    Connections {
        target: session.window

        function onFindRequested() { browserPanel.focusFilter(); }
        function onRenameRequested() {
            browserPanel.activeFocus ? browserPanel.rename() : inspector.editName();
        }
        function onBatchRenameRequested() { batchRenameDialog.open(); }
        function onSelectionSetsRequested() { selectionSetsDialog.open(); }
        function onRevealRequested() { browserPanel.revealSelection(); }
        function onRevertRequested() { revertDialog.open(); }
        function onHelpRequested() { helpDialog.open(); }
        function onMenuBarRequested() { menuBar.openFirst(); }
    }
    // Of what is selected already, the panel hears nothing.
    Connections {
        target: session.viewport

        function onPicked() {
            if (browserPanel.alwaysReveal)
                Qt.callLater(browserPanel.revealSelection);
        }
    }

    Connections {
        target: browserPanel.predicate

        function onChanged() { session.operations.describe(qsTr("Filter")); }
    }
    Connections {
        target: browserPanel.tree.outline

        function onSettingsChanged() { session.operations.describe(qsTr("Arrange rows")); }
    }

    // Sizes that the user gave the panes; 0 for those that were left alone.
    Settings {
        id: panes

        property int tree: 0
        property int inspector: 0
        property int log: 0

        category: "panes"
    }
    PopupWatch {
        id: popups

        overlay: window.Overlay.overlay
    }
    WindowShortcuts {
        blocked: popups.open
    }
    EditorStyle {
        id: panelStyle
    }

    menuBar: EditorMenuBar {}

    SplitView {
        anchors.fill: parent
        orientation: Qt.Horizontal
        onResizingChanged: {
            if (!resizing) {
                panes.tree = browserPanel.width;
                panes.inspector = inspector.width;
            }
        }
        handle: splitHandle

        SceneBrowserPanel {
            id: browserPanel

            objectName: "browser_panel"
            browser: session.browser
            settingsName: "outline"
            style: panelStyle
            alwaysReveal: session.window.alwaysReveal
            onEditBegins: session.beginStep(text)
            onEditEnds: session.endStep()
            onMenuAboutToShow: session.showMenuAt(place)
            // Grows with its columns, until the user moves its border.
            SplitView.preferredWidth: panes.tree || Math.min(implicitWidth, window.width * 0.45)
            SplitView.minimumWidth: 220
        }
        SplitView {
            orientation: Qt.Vertical
            onResizingChanged: {
                if (!resizing)
                    panes.log = logView.height;
            }
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

                EditorButton {
                    objectName: "end_isolation"
                    anchors { horizontalCenter: parent.horizontalCenter; bottom: parent.bottom; bottomMargin: 44 }
                    visible: session.view.isolated
                    text: qsTr("Isolated  –  show all")
                    focusPolicy: Qt.NoFocus
                    onClicked: session.view.toggleIsolation()
                }
                OperationOverlay {
                    objectName: "operation_overlay"
                    anchors { right: parent.right; bottom: parent.bottom; rightMargin: 10; bottomMargin: 40 }
                    visible: session.window.operationTimesShown
                    times: session.operations
                }
                DropArea {
                    anchors.fill: parent
                    enabled: !session.task.running && !popups.open
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
                visible: session.window.logShown
                onCloseRequested: session.window.toggleLog()
                SplitView.preferredHeight: panes.log || 120
                SplitView.minimumHeight: 60
            }
        }
        Inspector {
            id: inspector

            objectName: "inspector"
            style: panelStyle
            SplitView.preferredWidth: panes.inspector || 300
            SplitView.minimumWidth: 250
        }
    }

    footer: StatusBar {
        id: statusBar

        objectName: "status_bar"
        selectionText: browserPanel.hiddenSelectionCount > 0 ? browserPanel.statusText
                                                             : session.selectionStatus.summary
        canSelectMatches: browserPanel.tree.outline.matchCount > 0
        onSelectMatchesRequested: browserPanel.selectMatches()
        onLogRequested: session.window.toggleLog()
    }
    Binding {
        target: session.hiddenQuestion
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

        objectName: "help_dialog"
    }
    EditorDialog {
        id: revertDialog

        objectName: "revert_dialog"
        implicitWidth: 420
        title: qsTr("Revert to the saved file?")
        defaultButton: Dialog.Cancel
        standardButtons: Dialog.Reset | Dialog.Cancel
        onAboutToShow: standardButton(Dialog.Reset).text = qsTr("Revert")
        onReset: {
            close();
            session.files.reload();
        }

        Label {
            width: revertDialog.availableWidth
            text: qsTr("All changes since the last save are lost, and cannot be undone.")
            textFormat: Text.PlainText
            wrapMode: Text.Wrap
        }
    }
    BatchRenameDialog {
        id: batchRenameDialog

        objectName: "batch_rename_dialog"
    }
    SelectionSetsDialog {
        id: selectionSetsDialog

        objectName: "selection_sets_dialog"
    }
    ColumnChooser {
        id: columnChooser

        objectName: "column_chooser"
        style: panelStyle
        browser: session.browser
    }
}
