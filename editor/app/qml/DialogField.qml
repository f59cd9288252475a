import QtQuick 2.15
import QtQuick.Controls 2.15

// A line of text in a dialog. Enter is the dialog's.
TextField {
    id: field

    signal entered

    implicitHeight: 26
    topPadding: 0
    bottomPadding: 0
    leftPadding: 8
    font.pixelSize: 12
    color: theme.text
    placeholderTextColor: theme.dimText
    selectByMouse: true
    Keys.onReturnPressed: entered()
    Keys.onEnterPressed: entered()

    background: FieldBackground {
        focused: field.activeFocus
    }
}
