import QtQuick 2.15
import QtQuick.Controls 2.15

// A modal dialog in the middle of the window. It has the keyboard while it is open: Enter presses the
// default button, Escape the one that leaves all as it is, Tab goes round inside.
Dialog {
    id: dialog

    // What Enter presses; `focusItem` has the focus at first, or else that button.
    property int defaultButton: Dialog.Ok
    property Item focusItem: null

    function pressDefault() {
        const button = standardButton(defaultButton);
        if (button && button.enabled)
            button.clicked();
    }

    // Tab goes through the buttons as they stand, which is not the order in which they are made.
    function chainButtons() {
        for (let i = 0; i < footer.count; ++i) {
            const isLast = i + 1 === footer.count;
            footer.itemAt(i).KeyNavigation.tab = isLast ? focusItem || footer.itemAt(0)
                                                        : footer.itemAt(i + 1);
            footer.itemAt(i).KeyNavigation.right = isLast ? null : footer.itemAt(i + 1);
        }
    }

    function takeFocus() {
        const first = focusItem || standardButton(defaultButton);
        if (!visible || !first)
            return;
        chainButtons();
        first.forceActiveFocus(Qt.TabFocusReason);
    }

    anchors.centerIn: Overlay.overlay
    // Never larger than the window.
    width: Overlay.overlay ? Math.min(implicitWidth, Overlay.overlay.width - 40) : implicitWidth
    height: Overlay.overlay ? Math.min(implicitHeight, Overlay.overlay.height - 40) : implicitHeight
    modal: true
    focus: true
    closePolicy: Popup.CloseOnEscape
    padding: 20
    topPadding: 10

    onAboutToShow: {
        const usual = standardButton(defaultButton);
        for (let i = 0; i < footer.count; ++i)
            footer.itemAt(i).isDefault = footer.itemAt(i) === usual;
    }
    // The buttons are laid out by then, and can have no focus before.
    onOpened: Qt.callLater(takeFocus)

    header: Label {
        text: dialog.title
        textFormat: Text.PlainText
        padding: 20
        bottomPadding: 0
        font { pixelSize: 14; bold: true }
        elide: Text.ElideRight
    }
    footer: DialogButtonBox {
        padding: 20
        topPadding: 0
        spacing: 8
        background: null
        delegate: EditorButton {}
        Keys.onReturnPressed: dialog.pressDefault()
        Keys.onEnterPressed: dialog.pressDefault()
    }
    background: Rectangle {
        radius: 4
        color: theme.palette.window
        border.color: theme.border
    }
}
