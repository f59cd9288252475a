import QtQuick 2.15

// What is to be known of the rows below: that others are on their way, and that the scene has more
// than was searched.
Item {
    id: notice

    property QtObject style
    property QtObject outline
    readonly property bool partial: outline.partial && outline.arranged

    implicitHeight: partial ? style.headerHeight : 0
    z: 1

    Rectangle {
        anchors.fill: parent
        visible: notice.partial
        color: notice.style.header
    }
    Text {
        id: label

        anchors {
            left: parent.left
            leftMargin: notice.style.spacing * 2
            right: fetchButton.left
            verticalCenter: parent.verticalCenter
        }
        visible: notice.partial
        text: qsTr("Shows what was loaded so far")
        color: notice.style.text
        font.pixelSize: notice.style.pixelSize
        elide: Text.ElideRight
        textFormat: Text.PlainText
    }
    PanelButton {
        id: fetchButton

        objectName: "fetch_all"
        anchors { right: parent.right; rightMargin: notice.style.spacing; verticalCenter: parent.verticalCenter }
        visible: notice.partial
        style: notice.style
        text: notice.outline.fetching ? qsTr("Stop") : qsTr("Load all")
        onClicked: {
            if (notice.outline.fetching)
                notice.outline.stopFetching();
            else
                notice.outline.fetchAll();
        }
    }
    // Only what takes a while is worth a look.
    Rectangle {
        id: bar

        objectName: "working_bar"
        anchors.bottom: parent.bottom
        width: parent.width / 4
        height: 2
        visible: false
        color: notice.style.focus

        Accessible.role: Accessible.ProgressBar
        Accessible.name: qsTr("Working")

        NumberAnimation on x {
            from: 0
            to: notice.width * 3 / 4
            duration: 800
            loops: Animation.Infinite
            running: bar.visible
        }
        Timer {
            interval: 200
            running: notice.outline.working || notice.outline.fetching
            onRunningChanged: {
                if (!running)
                    bar.visible = false;
            }
            onTriggered: bar.visible = true
        }
    }
}
