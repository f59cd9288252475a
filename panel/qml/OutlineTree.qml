import QtQuick 2.15
import QtQuick.Controls 2.15
import Kyr.SceneOutline 1.0

// The rows of a flat tree with their mouse and keyboard.
FocusScope {
    id: tree

    property QtObject style
    // What is shown, an arrangement of the scene or the scene itself.
    property alias sourceModel: flatModel.sourceModel
    property alias selectionModel: flatModel.selectionModel
    readonly property alias flatModel: flatModel
    readonly property alias navigator: navigator
    readonly property alias rowEditor: rowEditor
    readonly property alias dragger: dragger
    readonly property alias count: list.count
    readonly property alias contentY: list.contentY
    readonly property int scrollBarWidth: scrollBar.visible ? scrollBar.width : 0
    // What the rows of this scene have; the number of buttons is read from the first one.
    property bool hasCount: false
    readonly property bool hasCurrent: selectionModel ? selectionModel.currentIndex.valid : false
    property int buttonCount: 0
    property int hoveredRow: -1
    property QtObject layout
    property QtObject columns
    // What Ctrl+Left and Ctrl+Right have gone to in the focused row, as in OutlineRow.
    property int cellCursor: -1
    readonly property var cellStops: {
        const stops = [];
        columns.columns.forEach((column, index) => { if (column.toggle) stops.push(index); });
        for (let button = 0; button < buttonCount; ++button)
            stops.push(columns.columns.length + button);
        return stops;
    }

    signal hoverEntered(var sourceIndex)
    signal hoverLeft()
    signal menuRequested()
    signal activated(var sourceIndex)
    signal selectAllRequested()
    signal revealRequested()
    signal filterRequested()

    // Scrolls as little as it takes; not at all when the row is in view.
    function showRow(row) {
        if (row >= 0)
            list.positionViewAtIndex(row, ListView.Contain);
    }
    function showIndex(sourceIndex) {
        const row = flatModel.reveal(sourceIndex);
        list.forceLayout();
        showRow(row);
    }
    function itemAtRow(row) {
        return list.itemAtIndex(row);
    }
    function scrollBy(pixels) {
        const last = Math.max(0, list.contentHeight - list.height);
        list.contentY = list.originY
            + Math.round(Math.max(0, Math.min(last, list.contentY - list.originY + pixels)));
    }
    function rowAt(y) {
        return list.indexAt(1, y + list.contentY);
    }
    function updateHover() {
        const row = pointer.containsMouse ? rowAt(pointer.mouseY) : -1;
        hoveredRow = row;
        if (!hoverHandle.assign(row))
            return;
        toolTip.hide();
        if (row >= 0)
            hoverEntered(hoverHandle.sourceIndex);
        else
            hoverLeft();
    }
    function refreshHover() {
        list.forceLayout();
        updateHover();
    }
    function readColumns() {
        const role = flatModel.sourceRole("rowButtonsModel");
        const first = flatModel.isGroup(0) ? 1 : 0;
        const buttons = role < 0 ? undefined : flatModel.data(flatModel.index(first, 0), role);
        buttonCount = buttons === undefined ? 0 : buttons.length;
        hasCount = flatModel.sourceRole("count") >= 0;
    }

    function clickButton(row, button) {
        const role = flatModel.sourceRole("rowButtonsModel");
        const state = flatModel.data(flatModel.index(row, 0), role)[button];
        if (state)
            rowEditor.setButton(row, state.id, state.checked !== true, state.toolTip || state.id);
    }
    function clickToggle(row, column) {
        const value = flatModel.data(flatModel.index(row, 0), columns.columns[column].valueRole);
        if (typeof value === "boolean")
            rowEditor.setCell(row, columns.columns[column].valueRole, !value,
                              columns.columns[column].title);
    }
    function clickAtCursor() {
        const row = navigator.currentRow();
        if (row < 0)
            return;
        if (cellCursor < columns.columns.length)
            clickToggle(row, cellCursor);
        else
            clickButton(row, cellCursor - columns.columns.length);
    }
    function moveCellCursor(step) {
        const stop = cellStops.indexOf(cellCursor) + step;
        cellCursor = stop < 0 ? -1 : cellStops[Math.min(stop, cellStops.length - 1)];
    }
    function pressAt(mouse) {
        forceActiveFocus();
        const row = rowAt(mouse.y);
        if (mouse.button === Qt.RightButton) {
            if (row >= 0)
                navigator.pressForMenu(row);
            menuRequested();
            return;
        }
        if (row < 0) {
            if (!(mouse.modifiers & (Qt.ShiftModifier | Qt.ControlModifier)))
                navigator.clearSelection();
            return;
        }
        const part = itemAtRow(row).partAt(mouse.x);
        if (part.kind === "arrow")
            navigator.toggle(row, mouse.modifiers);
        else if (part.kind === "button")
            clickButton(row, part.index);
        else if (part.kind === "toggle")
            clickToggle(row, part.index);
        else {
            navigator.press(row, mouse.modifiers);
            pointer.pressedRow = row;
        }
    }
    function doubleClickAt(mouse) {
        const row = rowAt(mouse.y);
        if (mouse.button !== Qt.LeftButton || row < 0
            || itemAtRow(row).partAt(mouse.x).kind !== "row")
            return;
        if (flatModel.isGroup(row))
            navigator.toggle(row, mouse.modifiers);
        else
            activated(flatModel.sourceIndex(row));
    }
    function startRename() {
        const row = navigator.currentRow();
        if (row < 0 || !rowEditor.canRename(row))
            return;
        showRow(row);
        renameField.open(row);
    }

    FlatTreeModel {
        id: flatModel

        cellRoles: tree.columns.valueRoles
        onCountChanged: Qt.callLater(tree.refreshHover)
        onSourceModelChanged: tree.readColumns()
        onModelAboutToBeReset: anchor.take()
        onModelReset: {
            tree.readColumns();
            anchor.restore();
        }
        onAboutToRearrange: anchor.take()
        onRearranged: anchor.restore()
        onRowsInserted: {
            if (tree.buttonCount === 0)
                tree.readColumns();
        }
    }
    TreeNavigator {
        id: navigator

        flatModel: flatModel
        pageRows: Math.floor(list.height / tree.style.rowHeight)
        onRowReached: tree.showRow(row)
        onSelectAllRequested: tree.selectAllRequested()
        onActivated: tree.activated(sourceIndex)
    }
    RowEditor {
        id: rowEditor

        flatModel: flatModel
    }
    TreeDragger {
        id: dragger

        flatModel: flatModel
    }
    RowHandle {
        id: hoverHandle

        flatModel: flatModel
    }
    RowHandle {
        id: anchor

        property real offset: 0

        flatModel: flatModel

        // Keeps the row at the top where it is when the whole list is replaced.
        function take() {
            const top = list.indexAt(1, list.contentY);
            const row = flatModel.isGroup(top) ? top + 1 : top;
            assign(row);
            offset = row < 0 ? 0 : list.contentY - list.originY - row * tree.style.rowHeight;
        }
        function restore() {
            Qt.callLater(place);
        }
        function place() {
            const top = row();
            if (top < 0)
                return;
            list.forceLayout();
            list.positionViewAtIndex(top, ListView.Beginning);
            tree.scrollBy(offset);
        }
    }

    activeFocusOnTab: true
    onCellStopsChanged: cellCursor = -1
    onActiveFocusChanged: {
        if (!activeFocus)
            cellCursor = -1;
    }

    Keys.onPressed: event.accepted = handleKey(event)
    Keys.onShortcutOverride: event.accepted = wantsKey(event)

    function handleKey(event) {
        if (event.key === Qt.Key_F && event.modifiers === Qt.NoModifier && !navigator.searching) {
            revealRequested();
            return true;
        }
        if (event.key === Qt.Key_F2) {
            startRename();
            return true;
        }
        if (event.matches(StandardKey.Find)) {
            filterRequested();
            return true;
        }
        if (event.key === Qt.Key_Escape && (dragger.active || cellCursor >= 0)) {
            dragger.cancel();
            cellCursor = -1;
            return true;
        }
        if (cellStops.length > 0 && event.modifiers === Qt.ControlModifier
            && (event.key === Qt.Key_Left || event.key === Qt.Key_Right)) {
            moveCellCursor(event.key === Qt.Key_Left ? -1 : 1);
            return true;
        }
        if (cellCursor >= 0 && (event.key === Qt.Key_Space || event.key === Qt.Key_Return)) {
            clickAtCursor();
            return true;
        }
        if (event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier)) {
            menuRequested();
            return true;
        }
        return navigator.key(event.key, event.modifiers, event.text);
    }
    // Letters go to the search, not to the editor's one-letter shortcuts.
    function wantsKey(event) {
        const plain = !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier));
        return (plain && event.text.length === 1 && event.text > " ")
            || event.key === Qt.Key_F2 || event.matches(StandardKey.Find)
            || (event.key === Qt.Key_A && event.modifiers === Qt.ControlModifier);
    }

    Rectangle {
        anchors.fill: parent
        color: tree.style.base
    }

    ListView {
        id: list

        objectName: "outline_list"
        anchors.fill: parent
        clip: true
        model: flatModel
        reuseItems: true
        cacheBuffer: tree.style.rowHeight * 10
        boundsBehavior: Flickable.StopAtBounds
        // The mouse selects; the wheel is handled below.
        interactive: false
        keyNavigationEnabled: false
        highlightFollowsCurrentItem: false
        currentIndex: -1
        onContentYChanged: Qt.callLater(tree.updateHover)

        Accessible.role: Accessible.Tree
        Accessible.name: qsTr("Scene")

        ScrollBar.vertical: PanelScrollBar {
            id: scrollBar

            style: tree.style
        }

        delegate: OutlineRow {
            width: ListView.view.width
            style: tree.style
            hovered: tree.hoveredRow === index
            pointerX: hovered ? pointer.mouseX : -1
            panelFocused: tree.activeFocus
            layout: tree.layout
            columns: tree.columns.columns
            cellCursor: model.current && panelFocused ? tree.cellCursor : -1
        }
    }

    MouseArea {
        id: pointer

        objectName: "outline_pointer"
        anchors { fill: parent; rightMargin: tree.scrollBarWidth }
        // Rows come and go under a drag that scrolls, so the mouse is not theirs.
        property int pressedRow: -1
        property point pressPoint

        acceptedButtons: Qt.LeftButton | Qt.RightButton
        hoverEnabled: true
        onContainsMouseChanged: tree.updateHover()
        onPositionChanged: {
            tree.updateHover();
            toolTip.follow();
            if (pressedRow >= 0 && pressedButtons === Qt.LeftButton)
                rowDrag.pull(pressedRow, pressPoint);
        }
        onPressed: {
            pressedRow = -1;
            pressPoint = Qt.point(mouse.x, mouse.y);
            tree.pressAt(mouse);
        }
        onReleased: {
            if (dragger.active)
                dragger.drop();
            else if (pressedRow >= 0 && mouse.button === Qt.LeftButton)
                navigator.release(pressedRow, mouse.modifiers);
            pressedRow = -1;
        }
        onCanceled: {
            dragger.cancel();
            pressedRow = -1;
        }
        onDoubleClicked: tree.doubleClickAt(mouse)
        onWheel: {
            const pixels = wheel.pixelDelta.y !== 0 ? wheel.pixelDelta.y
                                                    : wheel.angleDelta.y / 120 * 3 * tree.style.rowHeight;
            tree.scrollBy(-pixels);
        }
    }

    RenameField {
        id: renameField

        style: tree.style
        list: list
        flatModel: flatModel
        rowEditor: rowEditor
        rightEdge: tree.layout.nameRight
        onClosed: tree.forceActiveFocus()
    }
    RowDrag {
        id: rowDrag

        anchors.fill: pointer
        pointer: pointer
        style: tree.style
        list: list
        dragger: dragger
        flatModel: flatModel
        onScrollRequested: tree.scrollBy(pixels)
    }
    Rectangle {
        // Without a focused row the whole tree shows that it has the keyboard.
        anchors.fill: parent
        visible: tree.activeFocus && flatModel.count > 0 && !tree.hasCurrent
        color: "transparent"
        border.color: tree.style.focus
    }

    PanelToolTip {
        id: toolTip

        style: tree.style

        function follow() {
            const row = tree.itemAtRow(tree.hoveredRow);
            const button = row ? row.hoveredButton : -1;
            const wanted = !row ? "" : button >= 0 ? row.buttons[button].toolTip
                                                   : row.elided ? row.name : "";
            x = Math.min(pointer.mouseX + 12, tree.width - width - 4);
            y = (tree.hoveredRow + 1) * tree.style.rowHeight + list.originY - list.contentY + 2;
            if (!wanted)
                hide();
            else if (text !== wanted || !visible)
                show(wanted);
        }
    }
}
