import QtQuick 2.15
import Editor.Viewport 1.0

// Shows how the camera stands to the axes; a click on an axis looks along it.
Item {
    id: gizmo

    property ViewportController controller
    property color lineColor: "#808080"

    readonly property real yaw: controller ? controller.yaw * Math.PI / 180 : 0
    readonly property real pitch: controller ? controller.pitch * Math.PI / 180 : 0
    readonly property real reach: width / 2 - 9

    width: 76
    height: width

    // A direction as the camera sees it: x to the right, y down, z towards the viewer.
    function seen(x, y, z) {
        const sinYaw = Math.sin(yaw), cosYaw = Math.cos(yaw);
        const sinPitch = Math.sin(pitch), cosPitch = Math.cos(pitch);
        return Qt.vector3d(x * cosYaw - z * sinYaw,
                           (x * sinYaw + z * cosYaw) * sinPitch - y * cosPitch,
                           (x * sinYaw + z * cosYaw) * cosPitch + y * sinPitch);
    }

    Rectangle {
        anchors.fill: parent
        radius: width / 2
        color: gizmo.lineColor
        opacity: hover.hovered ? 0.16 : 0
    }

    HoverHandler {
        id: hover
    }

    Repeater {
        model: [
            { x: 1, y: 0, z: 0, name: "X", color: "#e0474c", yaw: 90, pitch: 0 },
            { x: 0, y: 1, z: 0, name: "Y", color: "#6cad3a", yaw: NaN, pitch: 90 },
            { x: 0, y: 0, z: 1, name: "Z", color: "#4a86e8", yaw: 0, pitch: 0 },
            { x: -1, y: 0, z: 0, name: "", color: "#e0474c", yaw: -90, pitch: 0 },
            { x: 0, y: -1, z: 0, name: "", color: "#6cad3a", yaw: NaN, pitch: -90 },
            { x: 0, y: 0, z: -1, name: "", color: "#4a86e8", yaw: 180, pitch: 0 }
        ]

        Item {
            readonly property vector3d end: gizmo.seen(modelData.x, modelData.y, modelData.z)
            readonly property bool positive: modelData.name !== ""

            anchors.fill: parent
            z: end.z
            opacity: 0.7 + 0.3 * end.z

            Rectangle {
                visible: parent.positive
                x: gizmo.width / 2
                y: gizmo.height / 2 - height / 2
                width: Math.hypot(parent.end.x, parent.end.y) * gizmo.reach
                height: 2
                antialiasing: true
                transformOrigin: Item.Left
                rotation: Math.atan2(parent.end.y, parent.end.x) * 180 / Math.PI
                color: modelData.color
            }

            Rectangle {
                x: gizmo.width / 2 + parent.end.x * gizmo.reach - width / 2
                y: gizmo.height / 2 + parent.end.y * gizmo.reach - height / 2
                width: parent.positive ? 17 : 11
                height: width
                radius: width / 2
                antialiasing: true
                color: parent.positive || tap.pressed ? modelData.color
                                                      : Qt.rgba(0.5, 0.5, 0.5, 0.25)
                border.color: modelData.color

                Text {
                    anchors.centerIn: parent
                    text: modelData.name
                    color: "white"
                    font.pixelSize: 11
                    font.bold: true
                    textFormat: Text.PlainText
                }

                TapHandler {
                    id: tap

                    onTapped: gizmo.controller.lookFrom(
                                  isNaN(modelData.yaw) ? gizmo.controller.yaw : modelData.yaw,
                                  modelData.pitch)
                }
            }
        }
    }
}
