import Kyr.SceneOutline 1.0

// The panel and the editor around it have one look.
PanelStyle {
    base: theme.pane
    window: theme.palette.window
    text: theme.text
    dimText: theme.dimText
    highlight: theme.accent
    header: theme.header
    separator: theme.border
    error: theme.error
    modified: theme.warning
}
