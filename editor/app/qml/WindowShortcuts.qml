import QtQuick 2.15
import QtQml 2.15

// The keys of all commands, as long as no popup has the keyboard.
Instantiator {
    id: shortcuts

    property bool blocked: false

    model: session.actions.actions
    delegate: Shortcut {
        sequences: modelData.shortcuts
        enabled: modelData.enabled && !shortcuts.blocked
        onActivated: modelData.trigger()
    }
}
