import QtQuick 2.15

// How many of the selected objects are of each type. `context` counts them. The editor says already
// how many they are.
TypeBar {
    id: footer

    readonly property int total: context ? context.total : 0

    objectName: "selection_footer"
    visible: total > 0
    implicitHeight: visible ? 26 : 0
    text: qsTr("Selected types")

    Rectangle {
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 1
        color: footer.style.separator
    }
}
