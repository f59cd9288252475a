import QtQuick 2.15
import Kyr.SceneOutline 1.0

// What stands in the place of rows: that there is no scene, or what nothing was found for and a way
// to see everything again.
Column {
    id: empty

    property QtObject style
    property QtObject predicate
    property var filters: []
    property bool filtered
    property string emptyText

    // Filters besides the text, as their choices call them.
    readonly property var choices: filters.filter(filter => filter && filter.currentIndex > 0)
    readonly property var reasons: (predicate && predicate.text !== ""
                                    ? [qsTr("“%1”").arg(DisplayText.oneLine(predicate.text))] : [])
        .concat(choices.map(filter => qsTr("%1: %2").arg(filter.title)
                                                    .arg(filter.labels[filter.currentIndex])))

    signal cleared()

    function clear() {
        if (predicate)
            predicate.text = "";
        choices.forEach(filter => { filter.currentIndex = 0; });
        cleared();
    }

    spacing: style.spacing * 3

    Text {
        objectName: "empty_text"
        anchors.horizontalCenter: parent.horizontalCenter
        width: Math.min(implicitWidth, empty.width)
        text: !empty.filtered ? empty.emptyText
            : empty.reasons.length === 0 ? qsTr("Nothing found")
                                         : qsTr("Nothing found for %1").arg(empty.reasons.join(", "))
        color: empty.style.faintText
        font.pixelSize: empty.style.pixelSize
        horizontalAlignment: Text.AlignHCenter
        wrapMode: Text.Wrap
        maximumLineCount: 4
        elide: Text.ElideRight
        textFormat: Text.PlainText
        Accessible.role: Accessible.StaticText
        Accessible.name: text
    }
    PanelButton {
        objectName: "clear_filter"
        anchors.horizontalCenter: parent.horizontalCenter
        visible: empty.filtered && empty.reasons.length > 0
        style: empty.style
        text: qsTr("Clear filter")
        onClicked: empty.clear()
    }
}
