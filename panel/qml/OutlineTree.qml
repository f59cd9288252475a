import QtQuick 2.15
import QtQuick.Controls 2.15
import Kyr.SceneOutline 1.0

// The rows of a flat tree with their mouse and keyboard.
FocusScope {
    id: tree

    property QtObject style
    property alias sourceModel: flatModel.sourceModel
    property alias selectionModel: flatModel.selectionModel
    readonly property alias flatModel: flatModel
    readonly property alias navigator: navigator
    readonly property alias count: list.count
    readonly property alias contentY: list.contentY
    readonly property int scrollBarWidth: scrollBar.visible ? scrollBar.width : 0
    // What the rows of this scene have; the number of buttons is read from the first one.
    property bool hasCount: false
    property int buttonCount: 0
    property int hoveredRow: -1

    signal hoverEntered(var sourceIndex)
    signal hoverLeft()
    signal menuRequested()
    signal activated(var sourceIndex)
    signal selectAllRequested()
    signal revealRequested()

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
        const buttons = role < 0 ? undefined : flatModel.data(flatModel.index(0, 0), role);
        buttonCount = buttons === undefined ? 0 : buttons.length;
        hasCount = flatModel.sourceRole("count") >= 0;
    }

    FlatTreeModel {
        id: flatModel

        onCountChanged: Qt.callLater(tree.refreshHover)
        onSourceModelChanged: tree.readColumns()
        onModelAboutToBeReset: anchor.take()
        onModelReset: {
            tree.readColumns();
            anchor.restore();
        }
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
            const row = list.indexAt(1, list.contentY);
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

    Keys.onPressed: event.accepted = handleKey(event)
    Keys.onShortcutOverride: event.accepted = wantsKey(event)

    function handleKey(event) {
        if (event.key === Qt.Key_F && event.modifiers === Qt.NoModifier && !navigator.searching) {
            revealRequested();
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
            buttonCount: tree.buttonCount
            rightMargin: tree.scrollBarWidth

            onPressed: {
                tree.forceActiveFocus();
                if (mouse.button === Qt.RightButton) {
                    navigator.pressForMenu(index);
                    tree.menuRequested();
                } else {
                    navigator.press(index, mouse.modifiers);
                }
            }
            onReleased: {
                if (mouse.button === Qt.LeftButton)
                    navigator.release(index, mouse.modifiers);
            }
            onDoubleClicked: {
                if (mouse.button === Qt.LeftButton)
                    tree.activated(model.sourceIndex);
            }
            onArrowClicked: navigator.toggle(index, modifiers)
            onButtonClicked: navigator.setButton(index, id, checked)
        }
    }

    MouseArea {
        // Below the last row.
        anchors.fill: parent
        z: -1
        acceptedButtons: Qt.LeftButton | Qt.RightButton
        onPressed: {
            tree.forceActiveFocus();
            if (mouse.button === Qt.RightButton)
                tree.menuRequested();
            else if (!(mouse.modifiers & (Qt.ShiftModifier | Qt.ControlModifier)))
                navigator.clearSelection();
        }
    }

    MouseArea {
        id: pointer

        objectName: "outline_pointer"
        anchors { fill: parent; rightMargin: tree.scrollBarWidth }
        acceptedButtons: Qt.NoButton
        hoverEnabled: true
        onContainsMouseChanged: tree.updateHover()
        onPositionChanged: {
            tree.updateHover();
            toolTip.follow();
        }
        onWheel: {
            const pixels = wheel.pixelDelta.y !== 0 ? wheel.pixelDelta.y
                                                    : wheel.angleDelta.y / 120 * 3 * tree.style.rowHeight;
            tree.scrollBy(-pixels);
        }
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
