import QtQuick 2.15

// One row of the tree. It only shows and asks: what a click does is the tree's business.
Item {
    id: row

    property QtObject style
    property bool hovered
    property bool panelFocused
    // Where the pointer is in the row, while it is there.
    property real pointerX: -1
    property int buttonCount
    property int rightMargin

    readonly property string name: model.display === undefined ? "" : model.display
    readonly property string type: model.type === undefined ? "" : model.type
    readonly property bool dimmed: model.enabled === false
    readonly property bool marked: hovered || model.hoverRole === true
    readonly property var buttons: model.rowButtonsModel === undefined ? [] : model.rowButtonsModel
    readonly property bool elided: label.truncated
    // Deep rows keep room for a name.
    readonly property int indent: Math.min(model.depth * style.indentation, width * 0.45)
    readonly property int buttonsX: width - rightMargin - buttonCount * style.buttonWidth
    readonly property int hoveredButton: {
        if (!hovered || pointerX < buttonsX)
            return -1;
        const button = Math.floor((pointerX - buttonsX) / style.buttonWidth);
        return button < buttons.length ? button : -1;
    }

    signal pressed(var mouse)
    signal released(var mouse)
    signal doubleClicked(var mouse)
    signal arrowClicked(int modifiers)
    signal buttonClicked(string id, bool checked)

    objectName: "row_" + name
    implicitHeight: style.rowHeight

    Accessible.role: Accessible.TreeItem
    Accessible.name: name
    Accessible.description: qsTr("%1, level %2").arg(type).arg(model.depth + 1)
    Accessible.selectable: true
    Accessible.selected: model.selected
    Accessible.focusable: true
    Accessible.focused: model.current && panelFocused

    Rectangle {
        anchors.fill: parent
        color: model.selected ? (row.panelFocused ? row.style.selection
                                                  : row.style.selectionUnfocused)
                              : index % 2 ? row.style.alternateBase : row.style.base
    }
    Rectangle {
        anchors.fill: parent
        visible: row.marked
        color: row.style.hover
    }

    Repeater {
        model: Math.ceil(row.indent / row.style.indentation)

        Rectangle {
            x: row.style.spacing + index * row.style.indentation + 7
            width: 1
            height: row.height
            color: row.style.guide
        }
    }

    MouseArea {
        anchors { fill: parent; rightMargin: row.width - row.buttonsX }
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onPressed: row.pressed(mouse)
        onReleased: row.released(mouse)
        onDoubleClicked: row.doubleClicked(mouse)
    }

    PanelIcon {
        id: arrow

        objectName: "arrow"
        x: row.style.spacing + row.indent
        anchors.verticalCenter: parent.verticalCenter
        visible: model.hasChildren
        name: "arrow"
        rotation: model.expanded ? 90 : 0
        color: row.hovered ? row.style.text : row.style.dimText

        MouseArea {
            anchors { fill: parent; topMargin: -4; bottomMargin: -4; leftMargin: -2 }
            onPressed: row.arrowClicked(mouse.modifiers)
            onDoubleClicked: row.arrowClicked(mouse.modifiers)
        }
    }
    PanelIcon {
        id: icon

        anchors.verticalCenter: parent.verticalCenter
        x: arrow.x + row.style.iconSize + 1
        name: row.type === "" ? "object" : row.type
        color: row.style.typeColor(row.type)
        opacity: row.dimmed ? 0.5 : 1
    }
    Text {
        id: label

        anchors {
            left: icon.right
            leftMargin: row.style.spacing + 1
            right: count.left
            rightMargin: row.style.spacing
            verticalCenter: parent.verticalCenter
        }
        text: row.name
        color: row.dimmed ? row.style.faintText : row.style.text
        font.pixelSize: row.style.pixelSize
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    Rectangle {
        visible: model.modified === true
        x: label.x + label.contentWidth + 5
        anchors.verticalCenter: parent.verticalCenter
        width: 5
        height: 5
        radius: 3
        color: row.style.modified
    }
    Text {
        id: count

        x: row.buttonsX - row.style.spacing - width
        anchors.verticalCenter: parent.verticalCenter
        width: Math.min(implicitWidth, row.style.countWidth)
        text: model.count ? model.count : ""
        color: row.style.alpha(row.style.text, 0.5)
        font.pixelSize: row.style.pixelSize - 1
    }

    Repeater {
        model: row.buttonCount

        Item {
            id: button

            readonly property var state_: index < row.buttons.length ? row.buttons[index] : null
            readonly property bool checked: state_ !== null && state_.checked === true

            objectName: state_ ? "button_" + state_.id : ""
            visible: state_ !== null
            x: row.buttonsX + index * row.style.buttonWidth
            width: row.style.buttonWidth
            height: row.height

            Accessible.role: Accessible.CheckBox
            Accessible.name: state_ ? state_.toolTip : ""
            Accessible.checked: checked

            PanelIcon {
                anchors.centerIn: parent
                name: button.state_ ? row.buttonIcon(button.state_) : ""
                color: row.hoveredButton === index ? row.style.text : row.style.dimText
                opacity: row.buttonOpacity(button.state_, button.checked)
            }
            MouseArea {
                anchors.fill: parent
                onPressed: row.buttonClicked(button.state_.id, !button.checked)
            }
        }
    }

    Rectangle {
        anchors.fill: parent
        visible: model.current
        color: "transparent"
        border.color: row.panelFocused ? row.style.focus : row.style.guide
    }

    function buttonIcon(state) {
        const off = { "visible": "hidden", "lock": "unlock" };
        const icon = state.icon ? state.icon : state.id === "locked" ? "lock" : state.id;
        return !state.checked && off[icon] ? off[icon] : icon;
    }
    // The usual state stays in the background until the pointer comes near.
    function buttonOpacity(state, checked) {
        const usual = state !== null && checked === (state.id === "visible");
        return usual ? (marked ? 0.8 : 0.35) : 1;
    }
}
