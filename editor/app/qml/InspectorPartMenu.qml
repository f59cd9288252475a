import QtQuick 2.15
import QtQuick.Controls 2.15

// Copies and pastes one property of the inspector, or one group.
EditorMenu {
    id: menu

    property string path
    property string label

    function show(partPath, partLabel) {
        path = partPath;
        label = partLabel;
        popup();
    }

    objectName: "part_menu"

    Action {
        text: qsTr("Copy %1").arg(menu.label)
        onTriggered: session.edit.copyPart(menu.path)
    }
    Action {
        text: qsTr("Paste %1").arg(menu.label)
        onTriggered: session.edit.pastePart(menu.path)
    }
}
