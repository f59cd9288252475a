import QtQuick 2.15

// How many rows are selected, and how many of them a filter hides.
QtObject {
    property QtObject outline
    readonly property int count: outline.selectedCount
    readonly property int hidden: outline.hiddenSelectedCount
    readonly property string text: hidden > 0 ? qsTr("%1 selected, %2 hidden").arg(written(count)).arg(written(hidden))
                                 : count > 0 ? qsTr("%1 selected").arg(written(count)) : ""

    function written(number) {
        return Number(number).toLocaleString(Qt.locale(), "f", 0);
    }
}
