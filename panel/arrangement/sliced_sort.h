#pragma once

#include <algorithm>
#include <vector>

namespace kyr::panel {

/// A stable merge sort that can be put down and taken up again: `step` does a bounded part of it
/// until it returns true. The values come back with the last one.
template <typename T, typename Less>
class SlicedSort
{
public:
    SlicedSort(T* first, T* last, Less less)
        : m_target(first), m_values(first, last), m_less(std::move(less)), m_merged(m_values.size())
    {}

    bool step()
    {
        const bool done = work();
        if (done)
            std::copy(m_values.begin(), m_values.end(), m_target);
        return done;
    }

private:
    static constexpr std::size_t runLength = 512;

    bool work()
    {
        const std::size_t size = m_values.size();
        if (m_sorted < size) {
            const auto first = m_values.begin() + std::ptrdiff_t(m_sorted);
            m_sorted = std::min(m_sorted + runLength, size);
            std::stable_sort(first, m_values.begin() + std::ptrdiff_t(m_sorted), m_less);
            return size <= runLength;
        }
        for (std::size_t i = 0; i < runLength; ++i) {
            if (m_out == m_end && !startPair())
                return true;
            const bool takesSecond =
                m_second < m_end &&
                (m_first == m_middle || m_less(m_values[m_second], m_values[m_first]));
            m_merged[m_out++] = m_values[takesSecond ? m_second++ : m_first++];
        }
        return false;
    }

    /// Goes to the next two sorted runs to merge; false when one run is left.
    bool startPair()
    {
        const std::size_t size = m_values.size();
        if (m_end == size) {
            m_values.swap(m_merged);
            m_width *= 2;
            if (m_width >= size)
                return false;
            m_end = 0;
            m_out = 0;
        }
        m_first = m_end;
        m_middle = std::min(m_first + m_width, size);
        m_end = std::min(m_middle + m_width, size);
        m_second = m_middle;
        return true;
    }

    T* m_target;
    std::vector<T> m_values;
    Less m_less;
    std::vector<T> m_merged;
    std::size_t m_sorted = 0; ///< Up to here in runs.
    std::size_t m_width = runLength;
    // The merge of two neighbouring runs.
    std::size_t m_first = 0;
    std::size_t m_middle = 0;
    std::size_t m_second = 0;
    std::size_t m_end = 0;
    std::size_t m_out = 0;
};

} // namespace kyr::panel
