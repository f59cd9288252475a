import QtQuick 2.15

// A number that is typed, stepped with Up and Down, or dragged sideways. Steps and drags say by how
// much, as objects may differ in it; so may what is typed: "*2", "+=1".
Item {
    id: field

    property real value: 0
    property bool mixed: false
    property bool readOnly: false
    property string unit
    property string prefix
    property color prefixColor
    property real step: 1
    property int decimals: 3
    property string description

    signal typed(string text)
    signal stepped(real amount)
    signal dragStarted
    // By how much since the drag began.
    signal dragged(real amount)
    signal dragEnded

    function beginTyping() {
        input.forceActiveFocus();
    }
    function shownText() {
        if (mixed)
            return "–";
        return Math.abs(value) >= 1e7 ? value.toPrecision(6) : String(Number(value.toFixed(decimals)));
    }
    function showEditable() {
        input.untouched = mixed ? "" : String(value);
        input.text = input.untouched;
    }
    function commitTyped() {
        if (input.text.trim() !== "" && input.text !== input.untouched)
            typed(input.text);
    }

    implicitHeight: 22
    implicitWidth: 80

    Accessible.role: Accessible.SpinBox
    Accessible.name: description

    FieldBackground {
        anchors.fill: parent
        focused: input.activeFocus
        readOnly: field.readOnly
    }
    Text {
        id: prefixText

        x: 4
        anchors.verticalCenter: parent.verticalCenter
        visible: field.prefix
        width: visible ? implicitWidth : 0
        text: field.prefix
        color: field.prefixColor
        font { pixelSize: 10; bold: true }
        textFormat: Text.PlainText
    }
    TextInput {
        id: input

        objectName: "number_text"
        anchors {
            left: prefixText.right
            leftMargin: field.prefix ? 3 : 6
            right: unitText.left
            rightMargin: 3
            verticalCenter: parent.verticalCenter
        }
        readOnly: field.readOnly
        activeFocusOnTab: !field.readOnly
        selectByMouse: activeFocus
        clip: true
        text: field.shownText()
        color: field.readOnly ? theme.dimText : theme.text
        selectionColor: theme.accent
        selectedTextColor: theme.palette.highlightedText
        font.pixelSize: 12
        // A long number shows its leading digits.
        autoScroll: activeFocus

        // What was in the field when typing began.
        property string untouched

        function showValue() {
            text = Qt.binding(field.shownText);
        }

        // Without the focus, undo means the editor's steps again and not the typing.
        onAccepted: focus = false
        onActiveFocusChanged: {
            if (activeFocus) {
                field.showEditable();
                selectAll();
                return;
            }
            field.commitTyped();
            showValue();
            cursorPosition = 0;
        }
        Keys.onEscapePressed: {
            text = untouched;
            focus = false;
        }
        Keys.onUpPressed: stepBy(event, 1)
        Keys.onDownPressed: stepBy(event, -1)

        function stepBy(event, direction) {
            if (readOnly)
                return;
            field.commitTyped();
            field.stepped(direction * field.step * (event.modifiers & Qt.ShiftModifier ? 10 : 1));
            field.showEditable();
            selectAll();
        }
    }
    Text {
        id: unitText

        anchors { right: parent.right; rightMargin: 6; verticalCenter: parent.verticalCenter }
        visible: field.unit
        width: visible ? implicitWidth : 0
        text: field.unit
        color: theme.dimText
        font.pixelSize: 11
        textFormat: Text.PlainText
    }
    MouseArea {
        id: mouse

        property real pressX
        property bool dragging: false

        anchors.fill: parent
        enabled: !input.activeFocus && !field.readOnly
        cursorShape: Qt.SizeHorCursor
        preventStealing: true

        onPressed: pressX = mouse.x
        onPositionChanged: {
            if (!dragging && Math.abs(mouse.x - pressX) > 3) {
                dragging = true;
                field.dragStarted();
            }
            if (dragging) {
                const finer = mouse.modifiers & Qt.ShiftModifier ? 0.1 : 1;
                field.dragged(Math.round((mouse.x - pressX) / 3) * finer * field.step);
            }
        }
        onReleased: endDrag() || field.beginTyping()
        onCanceled: endDrag()

        function endDrag() {
            const was = dragging;
            dragging = false;
            if (was)
                field.dragEnded();
            return was;
        }
    }
}
