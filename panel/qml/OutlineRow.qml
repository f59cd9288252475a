import QtQuick 2.15
import Kyr.SceneOutline 1.0

// One row of the tree. It only shows: the mouse is the tree's business.
Item {
    id: row

    property QtObject style
    property bool hovered
    property bool panelFocused
    // Where the pointer is in the row, while it is there.
    property real pointerX: -1
    property QtObject layout
    property var columns: []
    // The column or, counted on after them, the button that the keyboard is at.
    property int cellCursor: -1

    readonly property string name: model.display === undefined ? "" : model.display
    readonly property string shownName: DisplayText.oneLine(name)
    readonly property string type: model.type === undefined ? "" : model.type
    // A row that waits for its next use has no values at all.
    readonly property bool selected: model.selected === true
    readonly property bool current: model.current === true
    readonly property bool expandable: model.hasChildren === true
    readonly property bool expanded: model.expanded === true
    readonly property int depth: model.depth === undefined ? 0 : model.depth
    // Hidden objects, and rows that only lead to what a filter found.
    readonly property bool dimmed: model.enabled === false || model.matches === false
    readonly property var tones: selected ? style.selectedTones : style.rowTones
    readonly property bool marked: hovered || model.hoverRole === true
    readonly property var cells: model.cells === undefined ? [] : model.cells
    readonly property var buttons: model.rowButtonsModel === undefined ? [] : model.rowButtonsModel
    // Rows that this one hides, being closed.
    readonly property int hiddenSelected: model.hiddenSelected || 0
    readonly property bool hidesHovered: model.hiddenHovered === true
    readonly property string hiddenText: hiddenSelected === 0 ? ""
        : hiddenSelected === 1 ? qsTr("1 selected below") : qsTr("%1 selected below").arg(hiddenSelected)
    readonly property bool elided: label.truncated
    readonly property alias nameItem: label
    // Deep rows keep room for a name.
    readonly property int indent: Math.max(0, Math.min(depth * style.indentation,
                                                   layout.nameRight * 0.45))
    readonly property var hoveredPart: hovered ? partAt(pointerX) : ({ kind: "" })
    readonly property int hoveredButton: hoveredPart.kind === "button" ? hoveredPart.index : -1

    // What the tool tip says with the pointer at it: what a button does, a text that is cut off, or
    // how much is selected in a closed row.
    readonly property string tip: {
        if (hoveredButton >= 0)
            return buttons[hoveredButton].toolTip || "";
        const cell = hovered ? cellRepeater.itemAt(layout.columnAt(pointerX)) : null;
        if (cell && cell.elided)
            return cell.text;
        return hiddenText !== "" ? hiddenText : elided && !cell ? name : "";
    }

    function canEdit(column) {
        return column < 0 || (columns[column].editable && cells[column] !== undefined);
    }
    // All of a value, where a cell shows what fits.
    function editText(column) {
        return column < 0 ? name : String(cells[column]);
    }
    // What a click at x is about: the arrow, a toggle, a button, a cell to edit, or the row itself.
    function partAt(x) {
        if (arrow.visible && x >= arrow.x - 2 && x < arrow.x + arrow.width)
            return { kind: "arrow" };
        const button = Math.floor((x - layout.buttonsX) / style.buttonWidth);
        if (x >= layout.buttonsX && button < buttons.length)
            return { kind: "button", index: button };
        const column = layout.columnAt(x);
        if (column >= 0 && columns[column].toggle && typeof cells[column] === "boolean")
            return { kind: "toggle", index: column };
        return column >= 0 && canEdit(column) ? { kind: "cell", index: column } : { kind: "row" };
    }

    objectName: "row_" + name
    implicitHeight: style.rowHeight
    // Piled marks stay off other rows. Seldom, for it keeps rows from being drawn together.
    clip: DisplayText.mayReachOut(shownName)

    Accessible.role: Accessible.TreeItem
    Accessible.name: name
    Accessible.description: (type === "" ? "" : type + ", ") + qsTr("level %1").arg(depth + 1)
        + (!row.expandable ? "" : row.expanded ? qsTr(", expanded") : qsTr(", collapsed"))
        + (row.selected ? qsTr(", selected") : "")
        + (row.hiddenSelected > 0 ? ", " + row.hiddenText : "")
    Accessible.selectable: true
    Accessible.selected: selected
    Accessible.focusable: true
    Accessible.focused: row.current === true && panelFocused

    Rectangle {
        anchors.fill: parent
        color: row.selected ? (row.panelFocused ? row.style.selection
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

    PanelIcon {
        id: arrow

        objectName: "arrow"
        x: row.style.spacing + row.indent
        anchors.verticalCenter: parent.verticalCenter
        visible: row.expandable
        name: "arrow"
        rotation: row.expanded ? 90 : 0
        color: row.hovered ? row.tones.text : row.tones.dim
    }
    Rectangle {
        objectName: "hidden_mark"
        anchors.verticalCenter: parent.verticalCenter
        x: arrow.x - width
        visible: row.hiddenSelected > 0 || row.hidesHovered
        width: 4
        height: parent.height - 8
        radius: 2
        color: row.hiddenSelected > 0 ? row.style.focus : "transparent"
        border.color: row.hidesHovered ? row.style.text : row.style.focus
    }
    PanelIcon {
        id: icon

        anchors.verticalCenter: parent.verticalCenter
        x: arrow.x + row.style.iconSize + 1
        name: row.type === "" ? "object" : row.type
        color: row.style.iconColor(row.type, row.dimmed, row.tones)
    }
    Text {
        id: label

        anchors {
            left: icon.right
            leftMargin: row.style.spacing + 1
            right: parent.left
            rightMargin: row.style.spacing - row.layout.nameRight
            verticalCenter: parent.verticalCenter
        }
        text: row.shownName
        color: row.dimmed ? row.tones.faint : row.tones.text
        font.pixelSize: row.style.pixelSize
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    Rectangle {
        visible: model.modified === true
        x: Math.min(label.x + label.contentWidth + 5, row.layout.nameRight - width)
        anchors.verticalCenter: parent.verticalCenter
        width: 5
        height: 5
        radius: 3
        color: row.tones.modified
    }
    Text {
        x: row.layout.cellsRight - row.style.spacing - width
        anchors.verticalCenter: parent.verticalCenter
        visible: row.layout.showsCount
        width: Math.min(implicitWidth, row.style.countWidth)
        text: model.count ? model.count : ""
        color: row.tones.dim
        font.pixelSize: row.style.pixelSize - 1
        textFormat: Text.PlainText
    }

    Item {
        x: row.layout.cellsLeft
        width: row.layout.cellsWidth
        height: row.height
        clip: row.layout.overflow > 0

        Repeater {
            id: cellRepeater

            model: row.columns

            OutlineCell {
                objectName: "cell_" + modelData.columnId
                x: (row.layout.lefts[index] || 0) - row.layout.cellsLeft
                width: row.layout.widths[index] || 0
                height: row.height
                style: row.style
                value: row.cells[index]
                toggle: modelData.toggle
                alignment: modelData.alignment
                dimmed: row.dimmed
                tones: row.tones

                Accessible.role: toggle ? Accessible.CheckBox : Accessible.Cell
                Accessible.name: modelData.title + (toggle ? "" : ": " + text)
                Accessible.checkable: toggle
                Accessible.checked: checked
                Accessible.editable: row.canEdit(index)

                Rectangle {
                    anchors.fill: parent
                    visible: row.cellCursor === index
                    color: "transparent"
                    border { width: 2; color: row.style.focus }
                }
            }
        }
    }
    Repeater {
        model: row.layout.buttonCount

        Item {
            id: button

            readonly property var state_: index < row.buttons.length ? row.buttons[index] : null
            readonly property bool checked: state_ !== null && state_.checked === true

            objectName: state_ ? "button_" + state_.id : ""
            visible: state_ !== null
            x: row.layout.buttonsX + index * row.style.buttonWidth
            width: row.style.buttonWidth
            height: row.height

            Accessible.role: Accessible.CheckBox
            Accessible.name: state_ ? state_.name || state_.id : ""
            Accessible.description: state_ ? state_.toolTip || "" : ""
            Accessible.checkable: true
            Accessible.checked: checked

            PanelIcon {
                anchors.centerIn: parent
                name: button.state_ ? row.buttonIcon(button.state_) : ""
                color: row.buttonColor(button.state_, button.checked, index)
            }
            Rectangle {
                anchors.fill: parent
                visible: row.cellCursor === row.columns.length + index
                color: "transparent"
                border { width: 2; color: row.style.focus }
            }
        }
    }

    Rectangle {
        anchors.fill: parent
        visible: row.current
        color: "transparent"
        border.color: row.panelFocused ? row.style.focus : row.style.guide
    }

    function buttonIcon(state) {
        const off = { "visible": "hidden", "locked": "unlocked" };
        const icon = state.icon ? state.icon : state.id;
        return !state.checked && off[icon] ? off[icon] : icon;
    }
    // The usual state stays in the background until the pointer comes near.
    function buttonColor(state, checked, index) {
        const usual = state !== null && checked === (state.id === "visible");
        return hoveredButton === index ? tones.text : usual && !marked ? tones.faintIcon : tones.dim;
    }
}
