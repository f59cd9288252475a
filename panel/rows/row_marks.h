#pragma once

#include <QtGlobal>

#include <array>
#include <vector>

namespace kyr::panel {

/// Numbers for the rows of a scene and what is noted of each, whatever way it shows: a byte a row.
class RowMarks
{
public:
    using Node = quint32;
    static constexpr Node none = 0;

    enum Mark
    {
        Closed,
        ClosedWhileFound, ///< By the user, among what a filter found; of groups, at all.
        Selected,
        Unread, ///< Its children were never read.
        Leads,  ///< Shows only because of rows below it that a filter found.
        Group,  ///< Stands for a type and not for a row of the scene.
        MarkCount
    };

    Node create(std::initializer_list<Mark> marks)
    {
        Node node = Node(m_marks.size());
        if (m_free.empty()) {
            m_marks.push_back(0);
        } else {
            node = m_free.back();
            m_free.pop_back();
        }
        for (const Mark mark : marks)
            set(node, mark, true);
        return node;
    }
    void destroy(Node node)
    {
        for (int mark = 0; mark < MarkCount; ++mark)
            set(node, Mark(mark), false);
        m_free.push_back(node);
    }
    void clear() { *this = RowMarks(); }

    bool has(Node node, Mark mark) const { return (m_marks[node] >> mark & 1) != 0; }
    void set(Node node, Mark mark, bool on)
    {
        if (has(node, mark) == on)
            return;
        m_marks[node] = quint8(m_marks[node] ^ 1u << mark);
        m_counts[mark] += on ? 1 : -1;
    }
    /// Of all rows.
    int count(Mark mark) const { return m_counts[mark]; }
    /// One more than the highest number that was given to a row.
    std::size_t size() const { return m_marks.size(); }
    std::size_t bytesUsed() const { return m_marks.capacity() + m_free.capacity() * sizeof(Node); }

private:
    std::vector<quint8> m_marks{0};
    std::vector<Node> m_free;
    std::array<int, MarkCount> m_counts{};
};

} // namespace kyr::panel
