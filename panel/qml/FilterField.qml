import QtQuick 2.15

// What the user types to find objects, with how many it finds, whether it is a regular expression,
// and help.
PanelTextField {
    id: field

    property QtObject predicate
    // Rows that are found; below 0 while nothing filters.
    property int matchCount: -1
    property bool working

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
    trailingWidth: tools.width + style.spacing

    Accessible.name: qsTr("Filter")
    Accessible.description: invalid ? predicate.error : found.text

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
    Keys.onPressed: {
        if (event.key !== Qt.Key_F1)
            return;
        help.open();
        event.accepted = true;
    }
    // The editor has a help of its own on the same key.
    Keys.onShortcutOverride: event.accepted = event.key === Qt.Key_F1

    PanelIcon {
        x: field.style.spacing
        anchors.verticalCenter: parent.verticalCenter
        name: "search"
        color: field.style.dimText
    }
    Row {
        id: tools

        anchors { right: parent.right; rightMargin: 3; verticalCenter: parent.verticalCenter }
        spacing: 1

        Text {
            id: found

            objectName: "match_count"
            anchors.verticalCenter: parent.verticalCenter
            rightPadding: field.style.spacing
            visible: text !== ""
            text: field.matchCount < 0 ? field.working ? "…" : ""
                : field.working ? qsTr("%1…").arg(number) : number
            color: field.matchCount === 0 ? field.style.error : field.style.dimText
            font.pixelSize: field.style.pixelSize
            textFormat: Text.PlainText

            readonly property string number: Number(field.matchCount).toLocaleString(Qt.locale(), "f", 0)
        }
        FieldSwitch {
            objectName: "expression_switch"
            style: field.style
            height: field.height - 6
            text: ".*"
            description: qsTr("Regular expression")
            checkable: true
            on: field.predicate !== null && field.predicate.regularExpression
            onToggled: field.predicate.regularExpression = !on
        }
        FieldSwitch {
            objectName: "filter_help_button"
            style: field.style
            height: field.height - 6
            text: "?"
            description: qsTr("What can be typed here (F1)")
            on: help.visible
            onToggled: help.open()
        }
    }
    FilterHelp {
        id: help

        style: field.style
        y: field.height + 2
        width: Math.max(field.width, field.style.pixelSize * 40)
        margins: 4
        onExampleChosen: {
            if (field.predicate)
                field.predicate.text = text;
            field.forceActiveFocus();
        }
    }
}
