import QtQuick 2.15
import QtQuick.Controls 2.15

// What the file commands ask and show: progress, and questions before anything is lost.
Item {
    id: dialogs

    signal failed(string heading, string reason)
    signal told(string text)

    Connections {
        target: session.files

        function onSaved(path) { dialogs.told(qsTr("Saved %1").arg(path)); }
        function onSaveFailed(path, reason) {
            dialogs.failed(qsTr("The scene was not saved"), reason);
        }
    }
    Connections {
        target: session.exporter

        function onExported(path) { dialogs.told(qsTr("Exported %1").arg(path)); }
        function onFailed(path, reason) {
            dialogs.failed(qsTr("The scene was not exported"), reason);
        }
    }
    ProgressPopup {
        objectName: "save_progress"
        running: session.files.comparing || session.files.saver.saving
        text: (session.files.comparing ? qsTr("Comparing %1 with its file")
                                       : qsTr("Saving %1")).arg(session.document.title)
        progress: session.files.saver.saving ? session.files.saver.progress : 0
        onCanceled: session.files.cancelSaving()
    }
    ProgressPopup {
        running: session.exporter.saver.saving
        text: qsTr("Exporting %1").arg(session.document.title)
        progress: session.exporter.saver.progress
        onCanceled: session.exporter.saver.cancel()
    }
    ConfirmDialog {
        objectName: "confirm_dialog"
    }
    ChangedFileDialog {
        objectName: "changed_file_dialog"
    }
    ExportDialog {
        objectName: "export_dialog"
    }
    RecoveryDialog {
        objectName: "recovery_dialog"
    }
}
