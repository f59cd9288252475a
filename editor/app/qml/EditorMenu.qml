import QtQuick 2.15
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15

// A menu that shows the shortcuts of its actions and is as wide as it needs to be.
Menu {
    id: menu

    delegate: MenuItem {
        id: item

        readonly property string shortcutText: action && action.shortcut ? String(action.shortcut) : ""

        implicitHeight: visible ? 26 : 0
        rightPadding: 12 + (shortcutText ? shortcut.implicitWidth + 24 : 0)
        font.pixelSize: 12

        // Names of objects are in undo texts, and the usual content would take them for markup.
        contentItem: MnemonicLabel {
            leftPadding: item.checkable ? item.indicator.width + item.spacing : 0
            text: item.text
            font: item.font
            color: item.highlighted ? theme.palette.highlightedText : theme.text
            opacity: item.enabled ? 1 : 0.5
            verticalAlignment: Text.AlignVCenter
            textFormat: Text.PlainText
        }

        Text {
            id: shortcut

            anchors { right: parent.right; rightMargin: 12; verticalCenter: parent.verticalCenter }
            text: item.shortcutText
            font: item.font
            color: item.highlighted ? theme.palette.highlightedText : theme.dimText
            opacity: item.enabled ? 1 : 0.5
            textFormat: Text.PlainText
        }
    }

    width: {
        let widest = 180;
        for (let i = 0; i < count; ++i)
            widest = Math.max(widest, itemAt(i).implicitWidth);
        return widest + leftPadding + rightPadding;
    }
}
