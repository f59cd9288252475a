#pragma once

#include <QString>

namespace kyr::panel {

/// Tells by `editBegins` and `editEnds` of `Editor` that what changes meanwhile is one step; the
/// end comes whatever happens in between.
template <typename Editor>
class EditScope
{
public:
    EditScope(Editor& editor, const QString& text) : m_editor(editor)
    {
        Q_EMIT editor.editBegins(text);
    }
    ~EditScope() { Q_EMIT m_editor.editEnds(); }
    EditScope(const EditScope&) = delete;
    EditScope& operator=(const EditScope&) = delete;

private:
    Editor& m_editor;
};

} // namespace kyr::panel
