import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Kyr.SceneOutline 1.0

MenuBar {
    id: bar

    property bool alwaysReveal
    property bool logShown
    readonly property bool hasSelection: session.selectionStatus.count > 0

    signal findRequested
    signal alwaysRevealToggled
    signal logToggled
    signal revealRequested
    signal renameRequested
    signal helpRequested

    // An ampersand in a name is no mnemonic.
    function plain(name) {
        return DisplayText.oneLine(name).replace(/&/g, "&&");
    }

    font.pixelSize: 12

    // A bar whose open item counts as hovered stays in its menu mode when Escape closes the menu, and
    // the next click only ends that mode.
    delegate: MenuBarItem {
        id: item

        hoverEnabled: !(menu && menu.visible)
        contentItem: MnemonicLabel {
            text: item.text
            font: item.font
            color: item.highlighted ? theme.palette.highlightedText : theme.text
            textFormat: Text.PlainText
        }
    }

    EditorMenu {
        objectName: "file_menu"
        title: qsTr("&File")

        Action {
            text: qsTr("&Open…")
            shortcut: "Ctrl+O"
            onTriggered: session.files.open()
        }
        Action {
            text: qsTr("&Save")
            shortcut: "Ctrl+S"
            onTriggered: session.files.save()
        }
        Action {
            text: qsTr("Save &As…")
            shortcut: "Ctrl+Shift+S"
            onTriggered: session.files.saveAs()
        }
        Action {
            text: qsTr("&Export…")
            shortcut: "Ctrl+Shift+E"
            onTriggered: session.exporter.begin()
        }
        MenuSeparator {}
        Action {
            text: qsTr("&Quit")
            shortcut: "Ctrl+Q"
            onTriggered: session.files.quit()
        }
    }
    EditorMenu {
        objectName: "edit_menu"
        title: qsTr("&Edit")

        Action {
            text: session.undoStatus.canUndo ? qsTr("&Undo %1").arg(bar.plain(session.undoStatus.undoName))
                                             : qsTr("&Undo")
            shortcut: "Ctrl+Z"
            enabled: session.undoStatus.canUndo
            onTriggered: session.undoStatus.undo()
        }
        Action {
            text: session.undoStatus.canRedo ? qsTr("&Redo %1").arg(bar.plain(session.undoStatus.redoName))
                                             : qsTr("&Redo")
            shortcut: "Ctrl+Shift+Z"
            enabled: session.undoStatus.canRedo
            onTriggered: session.undoStatus.redo()
        }
        MenuSeparator {}
        Action {
            text: qsTr("&Copy Properties")
            shortcut: "Ctrl+Shift+C"
            enabled: bar.hasSelection
            onTriggered: session.edit.copyProperties()
        }
        Action {
            text: qsTr("&Paste Properties")
            shortcut: "Ctrl+Shift+V"
            enabled: bar.hasSelection
            onTriggered: session.edit.pasteProperties()
        }
        Action {
            text: qsTr("Paste &Special…")
            shortcut: "Ctrl+Alt+V"
            enabled: bar.hasSelection
            onTriggered: session.edit.preparePasteSpecial()
        }
        MenuSeparator {}
        Action {
            text: qsTr("&Find in Tree")
            shortcut: "Ctrl+F"
            onTriggered: bar.findRequested()
        }
        Action {
            text: qsTr("Select &All in Scene")
            shortcut: "Ctrl+A"
            onTriggered: session.edit.selectAll()
        }
        Action {
            text: qsTr("&Invert Selection")
            shortcut: "Ctrl+I"
            onTriggered: session.edit.invertSelection()
        }
        Action {
            text: qsTr("Select C&hildren")
            shortcut: "Ctrl+Shift+A"
            enabled: bar.hasSelection
            onTriggered: session.edit.selectChildren()
        }
        Action {
            text: qsTr("Select &None")
            shortcut: "Ctrl+Shift+D"
            enabled: bar.hasSelection
            onTriggered: session.edit.selectNone()
        }
        MenuSeparator {}
        Action {
            text: qsTr("Rena&me")
            shortcut: "F2"
            enabled: bar.hasSelection
            onTriggered: bar.renameRequested()
        }
        Action {
            text: qsTr("&Duplicate")
            shortcut: "Ctrl+D"
            enabled: bar.hasSelection
            onTriggered: session.edit.duplicateSelected()
        }
        Action {
            text: qsTr("D&elete")
            shortcut: "Del"
            enabled: bar.hasSelection
            onTriggered: session.edit.removeSelected()
        }
    }
    EditorMenu {
        objectName: "view_menu"
        title: qsTr("&View")

        Action {
            text: qsTr("&Frame Selection")
            shortcut: "Ctrl+Shift+F"
            enabled: bar.hasSelection
            onTriggered: session.view.frameSelection()
        }
        Action {
            text: qsTr("Frame &All")
            shortcut: "Ctrl+Home"
            onTriggered: session.view.frameAll()
        }
        MenuSeparator {}
        Action {
            text: qsTr("&Reveal Selection in Tree")
            shortcut: "Ctrl+R"
            enabled: bar.hasSelection
            onTriggered: bar.revealRequested()
        }
        Action {
            text: qsTr("Al&ways Reveal Selection")
            checkable: true
            checked: bar.alwaysReveal
            onTriggered: bar.alwaysRevealToggled()
        }
        MenuSeparator {}
        Action {
            text: qsTr("&Expand All")
            onTriggered: session.browser.expandAllRequested()
        }
        Action {
            text: qsTr("&Collapse All")
            onTriggered: session.browser.collapseAllRequested()
        }
        MenuSeparator {}
        Action {
            text: qsTr("&Log")
            shortcut: "Ctrl+L"
            checkable: true
            checked: bar.logShown
            onTriggered: bar.logToggled()
        }
        Action {
            text: qsTr("&Dark Theme")
            checkable: true
            checked: theme.dark
            onTriggered: theme.dark = !theme.dark
        }
    }
    EditorMenu {
        title: qsTr("&Help")

        Action {
            text: qsTr("&Mouse and Keys")
            shortcut: "F1"
            onTriggered: bar.helpRequested()
        }
    }
}
