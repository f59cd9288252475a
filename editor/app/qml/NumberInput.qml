import QtQuick 2.15

// A number that is typed, stepped with Up and Down, or dragged sideways.
Item {
    id: field

    property real value: 0
    property bool mixed: false
    property bool readOnly: false
    property string unit
    property string prefix
    property color prefixColor
    property real minimum: -Number.MAX_VALUE
    property real maximum: Number.MAX_VALUE
    property real step: 1
    property int decimals: 3
    property string description

    signal committed(real number)
    signal dragStarted
    signal dragEnded

    function beginTyping() {
        input.text = mixed ? "" : String(value);
        input.forceActiveFocus();
        input.selectAll();
    }
    function shownText() {
        if (mixed)
            return "–";
        return Math.abs(value) >= 1e7 ? value.toPrecision(6) : String(Number(value.toFixed(decimals)));
    }
    function bounded(number) {
        return Math.max(minimum, Math.min(maximum, number));
    }
    // Away from the noise that sums of binary fractions gather.
    function stepped(from, steps) {
        return bounded(Number((from + steps * step).toPrecision(9)));
    }
    function commitTyped() {
        const number = Number(input.text.trim().replace(",", "."));
        if (input.text.trim() !== "" && !isNaN(number) && (mixed || number !== value))
            committed(bounded(number));
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
        opacity: field.readOnly ? 0.6 : 1
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
        selectByMouse: activeFocus
        clip: true
        text: field.shownText()
        color: field.readOnly ? theme.dimText : theme.text
        selectionColor: theme.accent
        selectedTextColor: theme.palette.highlightedText
        font.pixelSize: 12
        // A long number shows its leading digits.
        autoScroll: activeFocus

        function showValue() {
            text = Qt.binding(field.shownText);
        }

        // Without the focus, undo means the editor's steps again and not the typing.
        onAccepted: focus = false
        onActiveFocusChanged: {
            if (activeFocus)
                return;
            field.commitTyped();
            showValue();
            cursorPosition = 0;
        }
        Keys.onEscapePressed: {
            showValue();
            focus = false;
        }
        Keys.onUpPressed: stepBy(event, 1)
        Keys.onDownPressed: stepBy(event, -1)

        function stepBy(event, direction) {
            if (readOnly)
                return;
            const typed = Number(text);
            const from = text.trim() === "" || isNaN(typed) ? field.value : typed;
            const steps = event.modifiers & Qt.ShiftModifier ? direction * 10 : direction;
            const number = field.stepped(from, steps);
            field.committed(number);
            text = String(number);
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
        property real startValue
        property bool dragging: false

        anchors.fill: parent
        enabled: !input.activeFocus && !field.readOnly
        cursorShape: Qt.SizeHorCursor
        preventStealing: true

        onPressed: {
            pressX = mouse.x;
            startValue = field.value;
        }
        onPositionChanged: {
            if (!dragging && Math.abs(mouse.x - pressX) > 3) {
                dragging = true;
                field.dragStarted();
            }
            if (dragging) {
                const finer = mouse.modifiers & Qt.ShiftModifier ? 0.1 : 1;
                field.committed(field.stepped(startValue, Math.round((mouse.x - pressX) / 3) * finer));
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
