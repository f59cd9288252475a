import QtQuick 2.15

// The filter field and, below it, the choices that the editor adds: modes first, then filters.
FocusScope {
    id: bar

    property QtObject style
    property QtObject predicate
    property QtObject mode
    property var filters: []
    property alias matchCount: field.matchCount
    property alias working: field.working

    readonly property bool hasChoices: mode !== null || filters.length > 0

    signal finished()

    function focusField() {
        field.forceActiveFocus();
        field.selectAll();
    }

    visible: predicate !== null || hasChoices
    implicitHeight: visible ? content.height + style.spacing * 2 : 0

    Rectangle {
        anchors.fill: parent
        color: bar.style.window
    }
    Column {
        id: content

        x: bar.style.spacing
        y: bar.style.spacing
        width: bar.width - bar.style.spacing * 2
        spacing: bar.style.spacing

        FilterField {
            id: field

            width: parent.width
            visible: bar.predicate !== null
            focus: true
            style: bar.style
            predicate: bar.predicate
            onFinished: bar.finished()
        }
        Text {
            objectName: "filter_error"
            width: parent.width
            visible: field.visible && field.invalid
            text: field.invalid ? bar.predicate.error : ""
            color: bar.style.error
            font.pixelSize: bar.style.pixelSize
            wrapMode: Text.Wrap
            textFormat: Text.PlainText
            Accessible.role: Accessible.AlertMessage
            Accessible.name: text
        }
        // In one line if they fit there as they are now, else in as many as it takes.
        Flow {
            id: choices

            readonly property real roomyWidth: Array.from(children).reduce(
                (sum, choice) => choice.visible ? sum + choice.implicitWidth + spacing : sum, -spacing)

            function widthOf(choice) {
                return Math.min(width, roomyWidth > width ? choice.snugWidth : choice.implicitWidth);
            }

            width: parent.width
            visible: bar.hasChoices
            spacing: bar.style.spacing

            PanelComboBox {
                objectName: "mode_choice"
                width: choices.widthOf(this)
                visible: bar.mode !== null
                style: bar.style
                model: bar.mode ? bar.mode.labels : []
                choice: bar.mode ? bar.mode.currentIndex : -1
                onActivated: bar.mode.currentIndex = index

                Accessible.name: qsTr("Mode")
            }
            Repeater {
                model: bar.filters

                PanelComboBox {
                    readonly property QtObject filter: modelData

                    objectName: "filter_choice_" + index
                    width: choices.widthOf(this)
                    visible: filter !== null
                    style: bar.style
                    title: filter ? filter.title : ""
                    model: filter ? filter.labels : []
                    choice: filter ? filter.currentIndex : -1
                    onActivated: filter.currentIndex = index
                }
            }
        }
    }
    Rectangle {
        anchors { left: parent.left; right: parent.right; bottom: parent.bottom }
        height: 1
        color: bar.style.separator
    }
}
