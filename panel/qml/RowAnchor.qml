import QtQuick 2.15
import Kyr.SceneOutline 1.0

// Keeps a row where it is when the whole list is replaced: the current one if it is in view, else the
// one at the top. A list that is not scrolled stays so.
RowHandle {
    property ListView list
    property QtObject navigator
    property real rowHeight
    property real offset: 0

    signal scrollRequested(real pixels)

    function take() {
        const row = chosenRow();
        assign(row);
        offset = row < 0 ? 0 : list.contentY - list.originY - row * rowHeight;
    }
    function chosenRow() {
        const y = list.contentY - list.originY;
        const current = navigator.currentRow();
        if (current >= 0 && current * rowHeight >= y && (current + 1) * rowHeight <= y + list.height)
            return current;
        if (y <= 0)
            return -1;
        const top = list.indexAt(1, list.contentY);
        return outline.isGroup(top) ? top + 1 : top;
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
        scrollRequested(offset);
    }
}
