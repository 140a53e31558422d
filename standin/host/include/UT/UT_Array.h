#pragma once
#include <SYS/SYS_Types.h>

#include <algorithm>
#include <vector>

/// Growing list of values. Indices count from 0 and are not checked.
template <typename T>
class UT_Array
{
public:
    typedef typename std::vector<T>::iterator iterator;
    typedef typename std::vector<T>::const_iterator const_iterator;

    UT_Array() {}
    explicit UT_Array(exint capacity) { m_items.reserve(static_cast<std::size_t>(capacity)); }

    exint entries() const { return static_cast<exint>(m_items.size()); }
    exint size() const { return entries(); }
    bool isEmpty() const { return m_items.empty(); }
    bool isValidIndex(exint index) const { return index >= 0 && index < entries(); }

    /// Each returns the index of the new entry.
    exint append(const T& item)
    {
        m_items.push_back(item);
        return entries() - 1;
    }
    exint insert(const T& item, exint index)
    {
        m_items.insert(m_items.begin() + index, item);
        return index;
    }
    exint concat(const UT_Array<T>& other)
    {
        const std::vector<T> copy(other.m_items);
        m_items.insert(m_items.end(), copy.begin(), copy.end());
        return entries();
    }
    /// Index of the first equal entry at or after `start`, -1 when there is none.
    exint find(const T& item, exint start = 0) const
    {
        const const_iterator found = std::find(m_items.begin() + start, m_items.end(), item);
        return found == m_items.end() ? -1 : static_cast<exint>(found - m_items.begin());
    }
    void clear() { m_items.clear(); }

    T& operator()(exint index) { return m_items[static_cast<std::size_t>(index)]; }
    const T& operator()(exint index) const { return m_items[static_cast<std::size_t>(index)]; }
    T& operator[](exint index) { return m_items[static_cast<std::size_t>(index)]; }
    const T& operator[](exint index) const { return m_items[static_cast<std::size_t>(index)]; }
    T& last() { return m_items.back(); }
    const T& last() const { return m_items.back(); }
    /// The entries in a row; null when there are none.
    T* array() { return m_items.data(); }
    const T* array() const { return m_items.data(); }

    iterator begin() { return m_items.begin(); }
    iterator end() { return m_items.end(); }
    const_iterator begin() const { return m_items.begin(); }
    const_iterator end() const { return m_items.end(); }

    bool operator==(const UT_Array<T>& other) const { return m_items == other.m_items; }
    bool operator!=(const UT_Array<T>& other) const { return m_items != other.m_items; }

private:
    std::vector<T> m_items;
};
