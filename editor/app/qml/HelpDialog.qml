import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

// The mouse buttons and keys of tree and view, and the keys of all commands.
EditorDialog {
    id: dialog

    readonly property var mouseLines: [
        [qsTr("3D view"), ""],
        [qsTr("Middle drag, Alt + drag, arrow keys"), qsTr("Orbit")],
        [qsTr("Shift + middle drag, Shift + arrow keys"), qsTr("Pan")],
        [qsTr("Wheel, + and −"), qsTr("Zoom towards the pointer")],
        [qsTr("Right drag with W A S D, E and Q"), qsTr("Look around and fly; Shift is faster, the wheel sets the speed")],
        [qsTr("Click, Ctrl + click, Shift + click"), qsTr("Select, toggle, add")],
        [qsTr("Click on the same place again"), qsTr("Select what is behind")],
        [qsTr("Drag"), qsTr("Select in a rectangle")],
        [qsTr("F, A"), qsTr("Frame the selection, frame all")],
        [qsTr("W, E, R, Q"), qsTr("Move, rotate, scale, only select")],
        [qsTr("X, Z"), qsTr("Axes of object or world; about the primary object or the middle")],
        [qsTr("Drag a handle"), qsTr("Ctrl snaps, Shift is finer, Escape takes it back")],
        [qsTr("Numbers, Enter"), qsTr("While dragging: by how much; Tab for the next axis")],
        [qsTr("Keypad 1, 3, 7"), qsTr("Front, right, top; with Ctrl the other side")],
        [qsTr("Keypad 4, 6, 8, 2, 9"), qsTr("Turn the view, look from behind")],
        [qsTr("Tree"), ""],
        [qsTr("Ctrl or Shift + click"), qsTr("Toggle, extend")],
        [qsTr("Shift + click on an arrow"), qsTr("Open or close the whole branch")],
        [qsTr("Letters"), qsTr("Go to the row of that name")],
        [qsTr("In the filter"), qsTr("type:light finds all lights")],
        [qsTr("Drag rows"), qsTr("Move them into or between others")],
        [qsTr("F"), qsTr("Reveal the selection")],
        [qsTr("Double click"), qsTr("Frame the object")],
        [qsTr("Inspector"), ""],
        [qsTr("Drag on a number"), qsTr("Change it; Shift is finer")],
        [qsTr("Up, Down"), qsTr("Step")]
    ]
    readonly property var lines: {
        const lines = mouseLines.slice();
        for (const menu of session.actions.menus) {
            lines.push([menu.title.replace("&", ""), ""]);
            for (const command of menu.entries) {
                if (command && command.shortcuts.length > 0)
                    lines.push([command.shortcuts.join(", "), command.plainText]);
            }
        }
        return lines;
    }

    implicitWidth: 720
    implicitHeight: 620
    title: qsTr("Mouse and Keys")
    standardButtons: Dialog.Close
    defaultButton: Dialog.Close
    focusItem: list

    ListView {
        id: list

        anchors.fill: parent
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        currentIndex: -1
        model: dialog.visible ? dialog.lines : []
        Keys.onUpPressed: scrollBar.decrease()
        Keys.onDownPressed: scrollBar.increase()
        Keys.onReturnPressed: dialog.pressDefault()
        Keys.onEnterPressed: dialog.pressDefault()
        ScrollBar.vertical: ScrollBar {
            id: scrollBar
        }

        delegate: Item {
            readonly property bool heading: modelData[1] === ""

            width: ListView.view.width - 14
            height: heading ? 30 : 21

            Label {
                anchors { bottom: parent.bottom; bottomMargin: 3 }
                width: 250
                text: modelData[0]
                textFormat: Text.PlainText
                font.bold: parent.heading
                elide: Text.ElideRight
                color: parent.heading ? theme.text : theme.dimText
            }
            Label {
                x: 262
                anchors { bottom: parent.bottom; bottomMargin: 3 }
                width: parent.width - x
                text: modelData[1]
                textFormat: Text.PlainText
                elide: Text.ElideRight
            }
        }
    }
}
