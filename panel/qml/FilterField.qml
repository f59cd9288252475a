import QtQuick 2.15

// What the user types to find objects, and whether it is a regular expression.
PanelTextField {
    id: field

    property QtObject predicate

    signal finished()

    function clearFilter() {
        clear();
        textEdited();
    }

    objectName: "filter_field"
    text: predicate ? predicate.text : ""
    placeholderText: predicate && predicate.regularExpression ? qsTr("Filter by expression")
                                                              : qsTr("Filter: name, type:light")
    invalid: predicate !== null && predicate.error !== ""
    leftPadding: style.iconSize + style.spacing * 2
    trailingWidth: expressionSwitch.width + style.spacing

    Accessible.name: qsTr("Filter")
    Accessible.description: predicate ? predicate.error : ""

    onTextEdited: {
        if (predicate)
            predicate.text = text;
    }
    Keys.onDownPressed: finished()
    Keys.onEscapePressed: {
        if (text === "")
            finished();
        else
            clearFilter();
    }

    PanelIcon {
        x: field.style.spacing
        anchors.verticalCenter: parent.verticalCenter
        name: "search"
        color: field.style.faintText
    }
    Rectangle {
        id: expressionSwitch

        readonly property bool on: field.predicate !== null && field.predicate.regularExpression

        function toggle() { field.predicate.regularExpression = !on; }

        objectName: "expression_switch"
        anchors { right: parent.right; rightMargin: 3; verticalCenter: parent.verticalCenter }
        width: 22
        height: parent.height - 6
        radius: 2
        color: on ? field.style.selection : switchArea.containsMouse ? field.style.hover : "transparent"
        border.color: activeFocus ? field.style.focus : "transparent"
        activeFocusOnTab: true

        Accessible.role: Accessible.CheckBox
        Accessible.name: qsTr("Regular expression")
        Accessible.checked: on

        Keys.onSpacePressed: toggle()
        Keys.onReturnPressed: toggle()

        Text {
            anchors.centerIn: parent
            text: ".*"
            color: expressionSwitch.on ? field.style.text : field.style.dimText
            font { pixelSize: field.style.pixelSize; bold: expressionSwitch.on }
            textFormat: Text.PlainText
        }
        MouseArea {
            id: switchArea

            anchors.fill: parent
            hoverEnabled: true
            cursorShape: Qt.ArrowCursor
            onClicked: expressionSwitch.toggle()
        }
        PanelToolTip {
            style: field.style
            text: qsTr("Regular expression")
            visible: switchArea.containsMouse
        }
    }
    PanelToolTip {
        style: field.style
        delay: 0
        y: field.height + 2
        text: field.predicate ? field.predicate.error : ""
        visible: field.invalid && (field.hovered || field.activeFocus)
    }
}
