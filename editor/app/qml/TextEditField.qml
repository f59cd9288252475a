import QtQuick 2.15
import QtQuick.Controls 2.15

TextField {
    id: field

    function edit() {
        forceActiveFocus();
        selectAll();
    }
    function shownText() {
        return line.mixed ? "" : String(line.value);
    }
    function showValue() {
        text = Qt.binding(shownText);
    }

    implicitHeight: 22
    topPadding: 0
    bottomPadding: 0
    leftPadding: 6
    font.pixelSize: 12
    color: line.readOnly ? theme.dimText : theme.text
    readOnly: line.readOnly
    selectByMouse: true
    text: shownText()
    placeholderText: line.mixed ? "–" : ""

    Accessible.name: line.label

    background: FieldBackground {
        focused: field.activeFocus
        readOnly: field.readOnly
    }

    Keys.onEscapePressed: {
        showValue();
        focus = false;
    }
    // Without the focus, undo means the editor's steps again and not the typing.
    onAccepted: focus = false
    onEditingFinished: {
        if (!readOnly && text !== shownText())
            session.inspector.setText(row, text);
        showValue();
    }
}
