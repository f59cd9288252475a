import QtQuick 2.15
import Kyr.SceneOutline 1.0

// What the last operation took, quietly in a corner. Takes no input.
Rectangle {
    id: overlay

    property QtObject times

    function milliseconds(time) {
        return Number(time).toLocaleString(Qt.locale(), "f", time < 10 ? 1 : 0);
    }

    width: column.width + 20
    height: column.height + 12
    radius: 4
    color: Qt.rgba(theme.pane.r, theme.pane.g, theme.pane.b, 0.85)
    border.color: theme.border

    Column {
        id: column

        anchors.centerIn: parent
        spacing: 2

        Text {
            objectName: "operation_name"
            width: Math.min(implicitWidth, 260)
            text: overlay.times.name ? DisplayText.oneLine(overlay.times.name) : qsTr("Operation times")
            color: theme.text
            font.pixelSize: 12
            elide: Text.ElideRight
            textFormat: Text.PlainText
        }
        Text {
            objectName: "operation_time"
            text: overlay.times.name
                  ? qsTr("%1 ms in %2 pieces, the longest %3 ms").arg(overlay.milliseconds(overlay.times.total))
                        .arg(overlay.times.pieces).arg(overlay.milliseconds(overlay.times.longest))
                  : qsTr("shown after each")
            color: theme.dimText
            font.pixelSize: 11
            textFormat: Text.PlainText
        }
    }
}
