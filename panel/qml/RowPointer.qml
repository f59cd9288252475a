import QtQuick 2.15
import Kyr.SceneOutline 1.0

// The mouse over the rows of a tree. Rows come and go under a drag that scrolls, so it is not theirs.
MouseArea {
    id: pointer

    property Item tree
    property QtObject controls

    property int hoveredRow: -1
    property int pressedRow: -1
    property point pressPoint
    property bool keepsSelection: false

    // It has moved with a row pressed.
    signal pulled()

    function updateHover() {
        const row = containsMouse ? tree.rowAt(mouseY) : -1;
        hoveredRow = row;
        if (!hoverHandle.assign(row))
            return;
        toolTip.hide();
        // Nothing for a group.
        if (hoverHandle.sourceIndex.valid)
            tree.hoverEntered(hoverHandle.sourceIndex);
        else
            tree.hoverLeft();
    }
    function refreshHover() {
        tree.layOut();
        updateHover();
    }
    function press(mouse) {
        const row = afterEditing(tree.rowAt(mouse.y));
        if (mouse.button === Qt.RightButton) {
            if (row >= 0)
                tree.navigator.pressForMenu(row);
            tree.menuRequested(Qt.point(mouse.x, mouse.y));
        } else if (row >= 0) {
            pressRow(row, mouse);
        } else if (!(mouse.modifiers & (Qt.ShiftModifier | Qt.ControlModifier))) {
            tree.navigator.clearSelection();
        }
    }
    // What is written where the user was typing may put rows elsewhere.
    function afterEditing(row) {
        pressHandle.assign(row);
        const isObject = pressHandle.sourceIndex.valid;
        tree.finishEditing();
        tree.forceActiveFocus();
        if (!isObject)
            return row;
        tree.layOut();
        const now = pressHandle.row();
        return pressHandle.standsFor(now) ? now : -1;
    }
    function pressRow(row, mouse) {
        const item = tree.itemAtRow(row);
        const part = item ? item.partAt(mouse.x) : { kind: "row" };
        if (part.kind === "arrow") {
            tree.navigator.toggle(row, mouse.modifiers);
        } else if (part.kind === "button") {
            controls.clickButton(row, part.index);
        } else if (part.kind === "toggle") {
            controls.clickToggle(row, part.index);
        } else {
            // What is done in a cell is done in all selected rows.
            keepsSelection = part.kind === "cell" && tree.outline.isRowSelected(row);
            tree.navigator.press(row, mouse.modifiers);
            pressedRow = row;
        }
    }
    function activate(mouse) {
        const row = tree.rowAt(mouse.y);
        if (mouse.button !== Qt.LeftButton || row < 0)
            return;
        const part = tree.itemAtRow(row).partAt(mouse.x);
        if (part.kind === "cell")
            tree.editCell(row, part.index);
        if (part.kind !== "row")
            return;
        if (tree.outline.isGroup(row))
            tree.navigator.toggle(row, mouse.modifiers);
        else
            tree.activated(tree.outline.sourceIndex(row));
    }

    acceptedButtons: Qt.LeftButton | Qt.RightButton
    hoverEnabled: true
    onContainsMouseChanged: updateHover()
    onPositionChanged: {
        updateHover();
        toolTip.follow();
        if (pressedRow >= 0 && pressedButtons === Qt.LeftButton)
            pulled();
    }
    onPressed: {
        pressedRow = -1;
        pressPoint = Qt.point(mouse.x, mouse.y);
        press(mouse);
    }
    onReleased: {
        if (tree.dragger.active)
            tree.dragger.drop();
        else if (pressedRow >= 0 && mouse.button === Qt.LeftButton && !keepsSelection)
            tree.navigator.release(pressedRow, mouse.modifiers);
        pressedRow = -1;
    }
    onCanceled: {
        tree.dragger.cancel();
        pressedRow = -1;
    }
    onDoubleClicked: activate(mouse)
    onWheel: {
        const sideways = wheel.modifiers & Qt.ShiftModifier ? wheel.angleDelta.y : -wheel.angleDelta.x;
        if (sideways !== 0) {
            tree.layout.scrollBy(-sideways / 3);
            return;
        }
        const lines = wheel.angleDelta.y / 120 * 3;
        tree.scrollBy(-(wheel.pixelDelta.y !== 0 ? wheel.pixelDelta.y : lines * tree.style.rowHeight));
    }

    RowHandle {
        id: hoverHandle

        outline: pointer.tree.outline
    }
    RowHandle {
        id: pressHandle

        outline: pointer.tree.outline
    }
    Connections {
        target: pointer.tree.dragger

        // Ended by Escape, a drag does not begin again before the next press.
        function onActiveChanged() {
            if (!pointer.tree.dragger.active)
                pointer.pressedRow = -1;
        }
    }
    PanelToolTip {
        id: toolTip

        style: pointer.tree.style

        // A click acts on all selected rows.
        function hiddenOnes(row) {
            const model = pointer.tree.outline;
            return !row.selected || model.hiddenSelectedCount === 0 ? ""
                : qsTr("\nFor %1 selected objects, %2 of them hidden by the filter")
                      .arg(model.selectedCount).arg(model.hiddenSelectedCount);
        }
        function follow() {
            const row = pointer.tree.itemAtRow(pointer.hoveredRow);
            const wanted = !row ? "" : row.hoveredButton < 0 ? row.tip : row.tip + hiddenOnes(row);
            x = Math.min(pointer.mouseX + 12, pointer.tree.width - width - 4);
            y = row ? row.mapToItem(pointer, 0, row.height).y + 2 : 0;
            if (!wanted)
                hide();
            else if (text !== wanted || !visible)
                show(wanted);
        }
    }
}
