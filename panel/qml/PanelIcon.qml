import QtQuick 2.15

// A line icon of the panel, or an SVG file of the editor, in any colour.
Image {
    property string name
    property color color

    readonly property string hex: String(Qt.rgba(color.r, color.g, color.b, 1)).substring(1)

    width: 16
    height: 16
    sourceSize: Qt.size(width, height)
    source: name === "" ? "" : "image://kyr-outline/" + hex + "/" + name
}
