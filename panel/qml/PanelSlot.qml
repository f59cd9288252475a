import QtQuick 2.15

// Shows what an editor hangs above or below the tree: an object with a `component` and a `context`,
// which the component sees under that name.
Item {
    id: slot

    property QtObject panel

    visible: loader.status === Loader.Ready
    implicitHeight: visible ? loader.implicitHeight : 0

    Loader {
        id: loader

        readonly property QtObject context: slot.panel ? slot.panel.context : null

        anchors { left: parent.left; right: parent.right }
        sourceComponent: slot.panel ? slot.panel.component : null
    }
}
