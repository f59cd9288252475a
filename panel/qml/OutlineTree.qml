import QtQuick 2.15
import QtQuick.Controls 2.15
import Kyr.SceneOutline 1.0

// The rows of a flat tree with their mouse and keyboard.
FocusScope {
    id: tree

    property QtObject style
    property alias sourceModel: outline.sourceModel
    property alias selectionModel: outline.selectionModel
    // What filters the scene and how it is arranged.
    property alias predicate: outline.predicate
    property alias arrangement: outline.arrangement
    readonly property alias outline: outline
    readonly property alias navigator: navigator
    readonly property alias rowEditor: rowEditor
    readonly property alias dragger: dragger
    readonly property alias count: list.count
    readonly property alias contentY: list.contentY
    readonly property int scrollBarWidth: scrollBar.visible ? scrollBar.width : 0
    // What the rows of this scene have; the number of buttons is read from the first one.
    property bool hasCount: false
    readonly property bool hasCurrent: selectionModel ? selectionModel.currentIndex.valid : false
    property QtObject layout
    property QtObject columns
    readonly property alias buttonCount: controls.buttonCount

    signal hoverEntered(var sourceIndex)
    signal hoverLeft()
    signal menuRequested(point place)
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
        const row = outline.reveal(sourceIndex);
        layOut();
        showRow(row);
    }
    function layOut() {
        list.forceLayout();
    }
    function itemAtRow(row) {
        return list.itemAtIndex(row);
    }
    // Below the row's name, where it hides nothing that the menu is about.
    function menuPlace(row) {
        const item = row < 0 ? null : itemAtRow(row);
        return item ? item.mapToItem(tree, item.nameItem.x, item.height) : Qt.point(0, 0);
    }
    function scrollBy(pixels) {
        const last = Math.max(0, list.contentHeight - list.height);
        list.contentY = list.originY
            + Math.round(Math.max(0, Math.min(last, list.contentY - list.originY + pixels)));
    }
    // The scene may have more rows than it has given so far.
    function tellShown() {
        if (list.height <= 0)
            return;
        const first = Math.floor((list.contentY - list.originY) / style.rowHeight);
        outline.showing(first, first + Math.ceil(list.height / style.rowHeight));
    }
    function rowAt(y) {
        return list.indexAt(1, y + list.contentY);
    }
    function readColumns() {
        if (outline.count === 0)
            return;
        const role = outline.sourceRole("rowButtonsModel");
        const first = outline.isGroup(0) ? 1 : 0;
        const buttons = role < 0 ? undefined : outline.data(outline.index(first, 0), role);
        controls.buttonCount = buttons === undefined ? 0 : buttons.length;
        hasCount = outline.sourceRole("count") >= 0;
    }
    // Of the cell that the keyboard is at, or the name.
    function startEditing() {
        const row = navigator.currentRow();
        const column = controls.cursor < columns.columns.length ? controls.cursor : -1;
        if (row >= 0 && (column >= 0 || rowEditor.canRename(row)))
            editCell(row, column);
    }
    function editCell(row, column) {
        showRow(row);
        layOut();
        if (itemAtRow(row).canEdit(column))
            cellField.open(row, column);
    }
    function finishEditing() {
        cellField.finish();
    }

    OutlineModel {
        id: outline

        cellRoles: tree.columns.valueRoles
        sortRole: tree.columns.sortRole
        sortDescending: tree.columns.sortDescending
        onCountChanged: {
            Qt.callLater(pointer.refreshHover);
            Qt.callLater(tree.tellShown);
        }
        onSourceModelChanged: tree.readColumns()
        onModelAboutToBeReset: anchor.take()
        onModelReset: {
            tree.readColumns();
            anchor.restore();
        }
        onAboutToRearrange: anchor.take()
        onRearranged: anchor.restore()
        onRowsInserted: {
            if (controls.buttonCount === 0)
                tree.readColumns();
        }
    }
    TreeNavigator {
        id: navigator

        outline: outline
        pageRows: Math.floor(list.height / tree.style.rowHeight)
        onRowReached: tree.showRow(row)
        onSelectAllRequested: tree.selectAllRequested()
        onActivated: tree.activated(sourceIndex)
    }
    RowEditor {
        id: rowEditor

        outline: outline
    }
    TreeDragger {
        id: dragger

        outline: outline
    }
    RowControls {
        id: controls

        outline: outline
        rowEditor: rowEditor
        columns: tree.columns.columns
        onColumnReached: tree.layout.show(column)
        onEditRequested: tree.editCell(row, column)
    }
    RowAnchor {
        id: anchor

        outline: outline
        navigator: navigator
        list: list
        rowHeight: tree.style.rowHeight
        onScrollRequested: tree.scrollBy(pixels)
    }

    activeFocusOnTab: true
    onActiveFocusChanged: {
        if (!activeFocus)
            controls.leave();
    }

    Keys.onPressed: event.accepted = handleKey(event)
    Keys.onShortcutOverride: event.accepted = wantsKey(event)

    function handleKey(event) {
        if (event.key === Qt.Key_F && event.modifiers === Qt.NoModifier && !navigator.searching) {
            revealRequested();
            return true;
        }
        if (event.key === Qt.Key_F2) {
            startEditing();
            return true;
        }
        if (event.matches(StandardKey.Find)) {
            filterRequested();
            return true;
        }
        if (event.key === Qt.Key_Escape && dragger.active) {
            dragger.cancel();
            return true;
        }
        if (controls.key(event, navigator.currentRow()))
            return true;
        if (event.key === Qt.Key_Menu || (event.key === Qt.Key_F10 && event.modifiers & Qt.ShiftModifier)) {
            showRow(navigator.currentRow());
            menuRequested(menuPlace(navigator.currentRow()));
            return true;
        }
        return navigator.key(event.key, event.modifiers, event.text);
    }
    // Letters go to the search, not to the editor's one-letter shortcuts.
    function wantsKey(event) {
        const plain = !(event.modifiers & (Qt.ControlModifier | Qt.AltModifier | Qt.MetaModifier));
        // Delete and others come with a control character as their text.
        return (plain && /^[^\x00-\x20\x7f-\x9f]$/.test(event.text))
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
        anchors { fill: parent; bottomMargin: columnBar.visible ? columnBar.height : 0 }
        clip: true
        model: outline
        reuseItems: true
        // Rows that are used again are made fast enough without any ahead.
        cacheBuffer: 0
        boundsBehavior: Flickable.StopAtBounds
        // The mouse selects; the wheel is handled below.
        interactive: false
        keyNavigationEnabled: false
        highlightFollowsCurrentItem: false
        currentIndex: -1
        onContentYChanged: {
            Qt.callLater(pointer.updateHover);
            Qt.callLater(tree.tellShown);
        }
        onHeightChanged: Qt.callLater(tree.tellShown)

        Accessible.role: Accessible.Tree
        Accessible.name: qsTr("Scene")

        ScrollBar.vertical: PanelScrollBar {
            id: scrollBar

            style: tree.style
        }

        delegate: OutlineRow {
            width: ListView.view.width
            style: tree.style
            hovered: pointer.hoveredRow === index
            pointerX: hovered ? pointer.mouseX : -1
            panelFocused: tree.activeFocus
            layout: tree.layout
            columns: tree.columns.columns
            cellCursor: current && panelFocused ? controls.cursor : -1
        }
    }

    RowPointer {
        id: pointer

        objectName: "outline_pointer"
        anchors { fill: list; rightMargin: tree.scrollBarWidth }
        tree: tree
        controls: controls
        onPulled: rowDrag.pull(pressedRow, pressPoint)
    }
    CellField {
        id: cellField

        style: tree.style
        list: list
        outline: outline
        rowEditor: rowEditor
        layout: tree.layout
        columns: tree.columns.columns
        onClosed: tree.forceActiveFocus()
    }
    PanelScrollBar {
        id: columnBar

        objectName: "column_scroll_bar"
        x: tree.layout.cellsLeft
        y: tree.height - height
        width: tree.layout.cellsWidth
        visible: tree.layout.overflow > 0
        orientation: Qt.Horizontal
        style: tree.style
        size: tree.layout.cellsWidth / Math.max(1, tree.layout.wantedTotal)
        position: tree.layout.offset / Math.max(1, tree.layout.wantedTotal)
        onPositionChanged: {
            if (pressed)
                tree.layout.wantedOffset = position * tree.layout.wantedTotal;
        }
    }
    RowDrag {
        id: rowDrag

        anchors.fill: pointer
        pointer: pointer
        style: tree.style
        list: list
        dragger: dragger
        outline: outline
        onScrollRequested: tree.scrollBy(pixels)
    }
    Rectangle {
        // Without a focused row the whole tree shows that it has the keyboard.
        anchors.fill: parent
        visible: tree.activeFocus && outline.count > 0 && !tree.hasCurrent
        color: "transparent"
        border.color: tree.style.focus
    }
}
