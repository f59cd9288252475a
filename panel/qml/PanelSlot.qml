import QtQuick 2.15

// Shows what an editor hangs above or below the tree: an object with a `component` and a `context`.
// The component finds the context under that name, in its own property if it declares one.
Item {
    id: slot

    property QtObject panel

    implicitHeight: loader.item ? loader.item.implicitHeight : 0

    // In this order the old item never sees the new context.
    function load() {
        loader.sourceComponent = null;
        loader.context = panel ? panel.context : null;
        loader.sourceComponent = panel ? panel.component : null;
    }

    onPanelChanged: load()

    Loader {
        id: loader

        property QtObject context

        anchors { left: parent.left; right: parent.right }
        onLoaded: {
            if ("context" in item)
                item.context = context;
        }
    }
}
