import QtQuick 2.15
import QtQuick.Controls 2.15

// The properties of what is selected.
Rectangle {
    id: inspector

    property QtObject style

    function editName() {
        for (let i = 0; i < list.count; ++i) {
            const line = list.itemAtIndex(i);
            if (line && line.path === "name")
                line.edit();
        }
    }

    color: theme.palette.window

    InspectorPartMenu {
        id: partMenu
    }
    InspectorHeader {
        id: header

        style: inspector.style
        anchors { left: parent.left; right: parent.right }
    }
    Text {
        anchors.centerIn: list
        visible: list.count === 0
        text: qsTr("Select an object to see its properties")
        color: theme.dimText
        font.pixelSize: 12
        textFormat: Text.PlainText
    }
    ListView {
        id: list

        objectName: "inspector_list"
        anchors {
            left: parent.left
            right: parent.right
            top: header.bottom
            bottom: parent.bottom
        }
        clip: true
        boundsBehavior: Flickable.StopAtBounds
        model: session.inspector
        currentIndex: -1
        highlightFollowsCurrentItem: false
        topMargin: 4
        bottomMargin: 8
        // A property being edited must not lose its field by scrolling.
        cacheBuffer: 4000
        ScrollBar.vertical: ScrollBar {
            id: scrollBar
        }

        delegate: InspectorLine {
            width: ListView.view.width
            rightMargin: scrollBar.size < 1 ? 14 : 8
            onPartMenuRequested: partMenu.show(path, label)
        }
    }
}
