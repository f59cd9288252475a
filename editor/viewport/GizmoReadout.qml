import QtQuick 2.15
import Editor.Viewport 1.0

// The figures of a gizmo's drag, and what the editor adds to them, at the view's lower edge.
Rectangle {
    id: box

    property GizmoController gizmo
    property bool dark: true
    property color textColor: "#d8dce2"

    anchors.horizontalCenter: parent.horizontalCenter
    anchors.bottom: parent.bottom
    anchors.bottomMargin: 40
    visible: gizmo && (gizmo.dragging || gizmo.remark !== "")
    width: Math.min(row.implicitWidth + 24, parent.width)
    height: row.implicitHeight + 12
    radius: 4
    color: dark ? "#e6181a1e" : "#f2ffffff"
    border.color: Qt.rgba(textColor.r, textColor.g, textColor.b, 0.3)

    Row {
        id: row

        anchors.centerIn: parent
        spacing: 12

        Text {
            objectName: "gizmo_readout"
            visible: text
            text: box.gizmo ? box.gizmo.readout : ""
            textFormat: Text.PlainText
            color: box.textColor
            font.pixelSize: 14
            font.bold: true
        }
        Text {
            objectName: "gizmo_remark"
            anchors.verticalCenter: parent.verticalCenter
            visible: text
            text: box.gizmo ? box.gizmo.remark : ""
            textFormat: Text.PlainText
            color: box.textColor
            opacity: 0.8
            font.pixelSize: 11
        }
    }
}
