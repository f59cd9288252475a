import QtQuick 2.15
import Kyr.SceneOutline 1.0

// One title of the header. It only asks: sorting, moving and resizing are the header's business.
Item {
    id: cell

    property QtObject style
    property string title
    property int alignment: Qt.AlignLeft
    property int leftPadding: style.spacing
    property bool sorts
    property bool descending
    // Columns beside the names can be dragged and resized.
    property bool movable

    signal clicked()
    signal dragged(real x)
    signal dropped()
    signal dragCanceled()
    signal resized(int width)
    signal moveRequested(int by)

    activeFocusOnTab: true

    Accessible.role: Accessible.ColumnHeader
    Accessible.name: title
    Accessible.description: !sorts ? "" : descending ? qsTr("sorted, descending")
                                                     : qsTr("sorted, ascending")
    Accessible.onPressAction: clicked()

    Keys.onSpacePressed: clicked()
    Keys.onReturnPressed: clicked()
    Keys.onPressed: {
        const step = event.key === Qt.Key_Left ? -1 : event.key === Qt.Key_Right ? 1 : 0;
        if (step === 0 || !movable)
            return;
        if (event.modifiers & Qt.ControlModifier)
            moveRequested(step);
        else if (event.modifiers & Qt.ShiftModifier)
            resized(width + step * 8);
        else
            return;
        event.accepted = true;
    }

    Rectangle {
        anchors { fill: parent; bottomMargin: 1 }
        visible: area.containsMouse || area.dragging
        color: cell.style.hover
    }
    Text {
        id: label

        anchors {
            left: parent.left
            leftMargin: cell.leftPadding
            right: parent.right
            rightMargin: cell.style.spacing + (mark.visible ? mark.width - 4 : 0)
            verticalCenter: parent.verticalCenter
        }
        text: DisplayText.oneLine(cell.title)
        color: cell.sorts ? cell.style.text : cell.style.dimText
        font.pixelSize: cell.style.pixelSize
        horizontalAlignment: cell.alignment
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    PanelIcon {
        id: mark

        readonly property bool leads: cell.alignment === Qt.AlignLeft

        x: leads ? Math.min(label.x + label.contentWidth, cell.width - width)
                 : cell.width - width + 2
        anchors.verticalCenter: parent.verticalCenter
        visible: cell.sorts
        name: "arrow"
        rotation: cell.descending ? 90 : -90
        color: cell.style.text
    }
    Rectangle {
        visible: cell.movable
        y: 5
        width: 1
        height: parent.height - 10
        color: cell.style.separator
    }
    Rectangle {
        anchors.fill: parent
        visible: cell.activeFocus
        color: "transparent"
        border.color: cell.style.focus
    }

    MouseArea {
        id: area

        property real pressX: 0
        property bool dragging: false

        anchors.fill: parent
        hoverEnabled: true
        preventStealing: true
        onPressed: pressX = mouse.x
        onPositionChanged: {
            if (!pressed || !cell.movable)
                return;
            dragging = dragging || Math.abs(mouse.x - pressX) > 8;
            if (dragging)
                cell.dragged(mouse.x);
        }
        onReleased: {
            const dropped = dragging;
            dragging = false;
            if (dropped)
                cell.dropped();
            else if (containsMouse)
                cell.clicked();
        }
        onCanceled: {
            dragging = false;
            cell.dragCanceled();
        }
    }
    MouseArea {
        // Of the window, for the border stays where it is while other columns give way.
        property real grabX: 0
        property real grabWidth: 0

        function windowX(mouse) {
            return mapToItem(null, mouse.x, 0).x;
        }

        x: -3
        width: 7
        height: parent.height
        enabled: cell.movable
        visible: cell.movable
        cursorShape: Qt.SplitHCursor
        preventStealing: true
        onPressed: {
            grabX = windowX(mouse);
            grabWidth = cell.width;
        }
        onPositionChanged: {
            if (pressed)
                cell.resized(grabWidth + grabX - windowX(mouse));
        }
    }
    PanelToolTip {
        style: cell.style
        text: cell.title
        visible: area.containsMouse && label.truncated && !area.dragging
    }
}
