import QtQuick 2.15
import QtQuick.Controls 2.15

// A choice in the panel's colours; closed, it says what it is about.
ComboBox {
    id: combo

    property QtObject style
    property string title
    // The chosen one of the labels.
    property int choice: -1

    // Room for the present choice alone.
    readonly property real snugWidth: widthFor(displayText)

    // For the longest, so that choosing moves nothing.
    implicitWidth: Math.max(snugWidth, ...Array.from(model || [], label => widthFor(displayed(label))))
    implicitHeight: style.controlHeight
    currentIndex: choice
    padding: 0
    rightPadding: style.buttonWidth
    font.pixelSize: style.pixelSize
    displayText: displayed(currentText)

    Accessible.name: title

    // Other labels would choose the first.
    onModelChanged: currentIndex = Qt.binding(() => choice)

    function displayed(label) {
        return title === "" ? label : qsTr("%1: %2").arg(title).arg(label);
    }
    function widthFor(text) {
        return Math.ceil(metrics.advanceWidth(text)) + style.spacing * 2 + style.buttonWidth;
    }

    FontMetrics {
        id: metrics

        font: combo.font
    }

    contentItem: Text {
        leftPadding: combo.style.spacing * 2
        text: combo.displayText
        color: combo.style.text
        font: combo.font
        elide: Text.ElideRight
        verticalAlignment: Text.AlignVCenter
        textFormat: Text.PlainText
    }
    indicator: PanelIcon {
        x: combo.width - width - 2
        anchors.verticalCenter: parent.verticalCenter
        name: "arrow"
        rotation: 90
        color: combo.hovered ? combo.style.text : combo.style.dimText
    }
    background: Rectangle {
        radius: 3
        color: combo.pressed || combo.popup.visible
               ? combo.style.separator : combo.hovered ? combo.style.alternateBase : combo.style.header
        border.color: combo.visualFocus || combo.activeFocus ? combo.style.focus
                                                             : combo.style.separator
    }
    delegate: ItemDelegate {
        width: combo.popup.availableWidth
        height: combo.style.rowHeight
        padding: 0
        highlighted: combo.highlightedIndex === index

        contentItem: Text {
            leftPadding: combo.style.spacing * 2
            rightPadding: combo.style.spacing * 2
            text: modelData
            color: combo.style.text
            font.pixelSize: combo.style.pixelSize
            font.bold: combo.currentIndex === index
            elide: Text.ElideRight
            verticalAlignment: Text.AlignVCenter
            textFormat: Text.PlainText
        }
        background: Rectangle {
            color: highlighted ? combo.style.selection : "transparent"
        }
    }
    popup: Popup {
        y: combo.height
        width: Math.max(combo.width, combo.implicitWidth)
        implicitHeight: Math.min(contentItem.implicitHeight + 2, 320)
        padding: 1

        contentItem: ListView {
            clip: true
            implicitHeight: contentHeight
            model: combo.popup.visible ? combo.delegateModel : null
            currentIndex: combo.highlightedIndex
            boundsBehavior: Flickable.StopAtBounds
            ScrollBar.vertical: PanelScrollBar { style: combo.style }
        }
        background: Rectangle {
            color: combo.style.base
            border.color: combo.style.separator
            radius: 3
        }
    }
}
