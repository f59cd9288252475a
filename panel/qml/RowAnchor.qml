import QtQuick 2.15
import Kyr.SceneOutline 1.0

// Keeps the row at the top where it is when the whole list is replaced.
RowHandle {
    property ListView list
    property real rowHeight
    property real offset: 0

    signal scrollRequested(real pixels)

    function take() {
        const top = list.indexAt(1, list.contentY);
        const row = flatModel.isGroup(top) ? top + 1 : top;
        assign(row);
        offset = row < 0 ? 0 : list.contentY - list.originY - row * rowHeight;
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
