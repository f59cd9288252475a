import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Layouts 1.15

// The mouse buttons and keys of tree and view.
EditorDialog {
    id: dialog

    readonly property var lines: [
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
        [qsTr("Keypad 1, 3, 7"), qsTr("Front, right, top; with Ctrl the other side")],
        [qsTr("Keypad 4, 6, 8, 2, 9"), qsTr("Turn the view, look from behind")],
        [qsTr("Tree"), ""],
        [qsTr("Ctrl or Shift + click"), qsTr("Toggle, extend")],
        [qsTr("Shift + click on an arrow"), qsTr("Open or close the whole branch")],
        [qsTr("Letters"), qsTr("Go to the row of that name")],
        [qsTr("Ctrl + F"), qsTr("Filter; type:light finds all lights")],
        [qsTr("Drag rows"), qsTr("Move them into or between others")],
        [qsTr("F"), qsTr("Reveal the selection")],
        [qsTr("Double click"), qsTr("Frame the object")],
        [qsTr("Inspector"), ""],
        [qsTr("Drag on a number"), qsTr("Change it; Shift is finer")],
        [qsTr("Up, Down"), qsTr("Step")]
    ]

    title: qsTr("Mouse and Keys")
    standardButtons: Dialog.Close

    GridLayout {
        columns: 2
        columnSpacing: 28
        rowSpacing: 5

        Repeater {
            model: dialog.lines.length * 2

            Label {
                readonly property var line: dialog.lines[Math.floor(index / 2)]
                readonly property bool heading: line[1] === ""

                text: line[index % 2]
                font.bold: heading
                topPadding: heading && index > 1 ? 8 : 0
                color: index % 2 || heading ? theme.text : theme.dimText
                textFormat: Text.PlainText
            }
        }
    }
}
