import QtQuick 2.15
import QtQuick.Window 2.15
import QtQuick.Controls 2.15
import QtQuick.Controls.impl 2.15
import Kyr.SceneOutline 1.0

// A menu of commands with their shortcuts, as wide as it needs to be. The shortcuts themselves belong
// to the window.
Menu {
    id: menu

    // Of `session.actions.menus`.
    property var entries: []
    // Texts stand in one line where some entries have a mark.
    readonly property bool hasMarks: entries.some(command => command && command.checkable)

    // The letter that is underlined in an entry's text chooses it.
    function chooseByLetter(event) {
        const letter = event.text.toLowerCase();
        for (let i = 0; i < count && letter !== "" && !(event.modifiers & Qt.ControlModifier); ++i) {
            const item = itemAt(i);
            const found = item.enabled && item.text ? item.text.match(/&([^&])/) : null;
            if (!found || found[1].toLowerCase() !== letter)
                continue;
            event.accepted = true;
            currentIndex = i;
            if (item.action) {
                dismiss();
                item.action.trigger();
            }
            return;
        }
    }

    delegate: MenuItem {
        id: item

        objectName: action && action.command ? action.command.identifier : ""

        readonly property string shortcutText: action && action.command ? action.command.shortcutText : ""

        // Up and Down go through a menu, Tab does not lead out of it.
        Keys.onTabPressed: {}
        Keys.onBacktabPressed: {}
        Keys.onPressed: menu.chooseByLetter(event)
        implicitHeight: visible ? 26 : 0
        rightPadding: 12 + (shortcutText ? shortcut.implicitWidth + 24 : 0)
        font.pixelSize: 12

        // Names of objects are in undo texts, and the usual content would take them for markup.
        contentItem: MnemonicLabel {
            leftPadding: menu && menu.hasMarks || item.checkable ? item.indicator.width + item.spacing : 0
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
            textFormat: Text.PlainText
            font: item.font
            color: item.highlighted ? theme.palette.highlightedText : theme.dimText
            opacity: item.enabled ? 1 : 0.5
        }
    }

    width: {
        let widest = 180;
        for (let i = 0; i < count; ++i)
            widest = Math.max(widest, itemAt(i).implicitWidth);
        return widest + leftPadding + rightPadding;
    }

    // Before an entry is chosen the list has the keys.
    onOpened: {
        if (currentIndex < 0)
            contentItem.forceActiveFocus();
    }
    contentItem: ListView {
        implicitHeight: contentHeight
        model: menu.contentModel
        interactive: Window.window ? contentHeight > Window.window.height : false
        keyNavigationEnabled: false
        clip: true
        currentIndex: menu.currentIndex
        ScrollIndicator.vertical: ScrollIndicator {}
        Keys.onTabPressed: {}
        Keys.onBacktabPressed: {}
        Keys.onPressed: menu.chooseByLetter(event)
    }

    Component {
        id: entry

        Action {
            property QtObject command

            text: DisplayText.oneLine(command.text)
            enabled: command.enabled
            checkable: command.checkable
            checked: command.checked
            onTriggered: {
                command.trigger();
                // The click has put a value in its place.
                checked = Qt.binding(() => command.checked);
            }
        }
    }
    Component {
        id: line

        MenuSeparator {}
    }
    Component.onCompleted: {
        for (const command of entries) {
            if (command)
                addAction(entry.createObject(menu, { command: command }));
            else
                addItem(line.createObject(menu.contentItem));
        }
    }
}
