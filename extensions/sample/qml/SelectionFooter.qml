import QtQuick 2.15

// What is selected. `context` counts the selected objects.
TypeBar {
    id: footer

    readonly property int total: context ? context.total : 0

    objectName: "selection_footer"
    text: total === 0 ? qsTr("Nothing selected")
                      : qsTr("%1 selected").arg(total.toLocaleString(Qt.locale(), "f", 0))

    Rectangle {
        anchors { left: parent.left; right: parent.right; top: parent.top }
        height: 1
        color: footer.style.separator
    }
}
