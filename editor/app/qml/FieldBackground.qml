import QtQuick 2.15

// The frame of an input field.
Rectangle {
    property bool focused
    property bool readOnly

    radius: 2
    color: readOnly ? "transparent" : theme.field
    border { width: readOnly ? 0 : 1; color: focused ? theme.accent : theme.border }
}
