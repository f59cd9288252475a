import QtQuick 2.15
import Kyr.SceneOutline 1.0

// The marks of a drag of rows: where they would drop, and what is under way. Rows
// that the pointer rests on open, edges that it comes near scroll.
Item {
    id: area

    property QtObject style
    property Item list
    property Item pointer
    property QtObject dragger
    property QtObject outline

    readonly property real rowHeight: style.rowHeight
    readonly property real targetY: dragger.targetRow * rowHeight + list.originY - list.contentY

    signal scrollRequested(real pixels)

    // The mouse has moved with the row pressed: a drag starts once it is far enough.
    function pull(row, from) {
        const distance = Math.abs(pointer.mouseX - from.x) + Math.abs(pointer.mouseY - from.y);
        if (dragger.active || (distance >= Qt.styleHints.startDragDistance && dragger.begin(row)))
            follow();
    }
    function follow() {
        const y = pointer.mouseY + list.contentY - list.originY;
        const row = Math.floor(y / rowHeight);
        dragger.moveTo(row < outline.count ? Math.max(0, row) : -1, y / rowHeight - row);
    }

    Timer {
        readonly property real edge: area.rowHeight
        readonly property real y: area.pointer.mouseY
        readonly property int direction: y < edge ? -1 : y > area.height - edge ? 1 : 0

        interval: 30
        repeat: true
        running: area.dragger.active && direction !== 0
        onTriggered: {
            area.scrollRequested(direction * area.rowHeight / 2);
            area.follow();
        }
    }
    Timer {
        id: opening

        interval: 700
        onTriggered: area.outline.setRowExpanded(area.dragger.targetRow, true)
    }
    Connections {
        property int row: -1

        target: area.dragger

        function onDropPlaceChanged() {
            const wanted = area.dragger.active && area.dragger.place === TreeDragger.On
                           ? area.dragger.targetRow : -1;
            if (wanted === row)
                return;
            row = wanted;
            if (wanted >= 0)
                opening.restart();
            else
                opening.stop();
        }
    }

    Rectangle {
        visible: area.dragger.active && area.dragger.allowed
                 && area.dragger.place === TreeDragger.On
        y: area.targetY
        width: parent.width
        height: area.rowHeight
        color: "transparent"
        border { width: 2; color: area.style.focus }
        radius: 2
    }
    Rectangle {
        readonly property int row: area.dragger.targetRow

        visible: area.dragger.active && area.dragger.allowed
                 && area.dragger.place !== TreeDragger.On
        x: area.style.spacing + (row < 0 ? 0 : area.outline.rowDepth(row) * area.style.indentation)
        y: row < 0 ? area.outline.count * area.rowHeight + area.list.originY - area.list.contentY - 1
                   : area.targetY + (area.dragger.place === TreeDragger.Below ? area.rowHeight : 0) - 1
        width: parent.width - x
        height: 2
        color: area.style.focus
    }
    Rectangle {
        visible: area.dragger.active
        x: area.pointer.mouseX + 14
        y: area.pointer.mouseY + 10
        width: dragged.implicitWidth + area.style.spacing * 4
        height: area.rowHeight
        radius: 3
        color: area.style.header
        border.color: area.dragger.allowed ? area.style.focus : area.style.separator
        opacity: 0.9

        Text {
            id: dragged

            anchors.centerIn: parent
            text: area.dragger.count === 1 ? DisplayText.oneLine(area.dragger.name)
                                           : qsTr("%1 objects").arg(area.dragger.count)
            color: area.dragger.allowed ? area.style.text : area.style.faintText
            font.pixelSize: area.style.pixelSize
            textFormat: Text.PlainText
        }
    }
}
