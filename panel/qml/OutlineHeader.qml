import QtQuick 2.15

// The titles above the tree, in the widths of its rows. A click on one sorts, a drag moves it, a
// drag of its left border resizes it; by keyboard Space, Ctrl and Shift with Left and Right.
FocusScope {
    id: header

    property QtObject style
    property QtObject columns
    property QtObject layout
    property bool canChoose

    // Where a dragged column would go, -1 while none is dragged.
    property int dropPlace: -1

    signal chooserRequested()

    implicitHeight: style.headerHeight

    function placeAt(x) {
        let place = 0;
        while (place < layout.widths.length
               && x > layout.lefts[place] + layout.widths[place] / 2)
            ++place;
        return place;
    }
    function xOfPlace(place) {
        return place < layout.lefts.length ? layout.lefts[place] : layout.cellsRight;
    }

    Rectangle {
        anchors.fill: parent
        color: header.style.header
    }
    MouseArea {
        anchors.fill: parent
        acceptedButtons: Qt.RightButton
        enabled: header.canChoose
        onClicked: header.chooserRequested()
    }

    HeaderCell {
        objectName: "header_name"
        width: header.layout.nameRight
        height: header.height
        style: header.style
        title: qsTr("Name")
        sorts: header.columns.sortId === header.columns.nameId
        descending: header.columns.sortDescending
        leftPadding: header.style.spacing * 2
        onClicked: header.columns.sortBy(header.columns.nameId)
    }
    Text {
        anchors {
            right: parent.right
            rightMargin: header.width - header.layout.cellsRight + header.style.spacing
            verticalCenter: parent.verticalCenter
        }
        visible: header.layout.showsCount
        text: qsTr("Count")
        color: header.style.dimText
        font.pixelSize: header.style.pixelSize
        textFormat: Text.PlainText
    }
    Item {
        id: cells

        x: header.layout.cellsLeft
        width: header.layout.cellsWidth
        height: header.height
        clip: header.layout.overflow > 0

        Repeater {
            model: header.columns.columns

            HeaderCell {
                id: cell

                readonly property int column: index

                objectName: "header_" + modelData.columnId
                x: (header.layout.lefts[index] || 0) - cells.x
                width: header.layout.widths[index] || 0
                height: header.height
                style: header.style
                title: modelData.title
                alignment: modelData.alignment
                sorts: header.columns.sortId === modelData.columnId
                descending: header.columns.sortDescending
                movable: true
                onActiveFocusChanged: {
                    if (activeFocus)
                        header.layout.show(column);
                }
                onClicked: header.columns.sortBy(modelData.columnId)
                onDragged: header.dropPlace = header.placeAt(cells.x + cell.x + x)
                onDropped: {
                    // The move replaces this very cell.
                    const place = header.dropPlace;
                    header.dropPlace = -1;
                    header.columns.move(column, place);
                }
                onDragCanceled: header.dropPlace = -1
                onResized: header.columns.setWidth(column, width)
                onMoveRequested: header.columns.move(column, by < 0 ? column - 1 : column + 2)
            }
        }
    }
    Rectangle {
        visible: header.dropPlace >= 0
        x: header.xOfPlace(header.dropPlace) - 1
        width: 2
        height: parent.height
        color: header.style.focus
    }

    Rectangle {
        id: chooserButton

        objectName: "choose_columns"
        anchors { right: parent.right; rightMargin: header.layout.rightMargin }
        width: header.style.buttonWidth
        height: parent.height
        visible: header.canChoose
        color: "transparent"
        border.color: activeFocus ? header.style.focus : "transparent"
        activeFocusOnTab: true

        Accessible.role: Accessible.Button
        Accessible.name: qsTr("Choose columns")
        Accessible.onPressAction: header.chooserRequested()

        Keys.onSpacePressed: header.chooserRequested()
        Keys.onReturnPressed: header.chooserRequested()

        PanelIcon {
            anchors.centerIn: parent
            name: "plus"
            color: chooserArea.containsMouse ? header.style.text : header.style.dimText
        }
        MouseArea {
            id: chooserArea

            anchors.fill: parent
            hoverEnabled: true
            onClicked: header.chooserRequested()
        }
        PanelToolTip {
            style: header.style
            text: qsTr("Choose columns")
            visible: chooserArea.containsMouse
        }
    }
    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: 1
        color: header.style.separator
    }
}
