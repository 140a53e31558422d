#pragma once
#include <SYS/SYS_Types.h>

class PRM_Template;

typedef int (*PRM_Callback32)(void* data, int index, fpreal32 time, const PRM_Template* tmpl);
typedef int (*PRM_Callback64)(void* data, int index, fpreal64 time, const PRM_Template* tmpl);

/// A function that the host calls when a button is pressed or a person edits a value.
///
/// It gets the node, the menu item or component, the time, and the template. It returns 1 when the parameter
/// pane should be refreshed, else 0.
class PRM_Callback
{
public:
    PRM_Callback() : m_callback32(0), m_callback64(0) {}
    PRM_Callback(int) : m_callback32(0), m_callback64(0) {}
    PRM_Callback(long) : m_callback32(0), m_callback64(0) {}
    PRM_Callback(PRM_Callback32 callback) : m_callback32(callback), m_callback64(0) {}
    PRM_Callback(PRM_Callback64 callback) : m_callback32(0), m_callback64(callback) {}

    /// 0 when there is no function.
    int operator()(void* data, int index, fpreal64 time, const PRM_Template* tmpl) const
    {
        if (m_callback64)
            return m_callback64(data, index, time, tmpl);
        return m_callback32 ? m_callback32(data, index, static_cast<fpreal32>(time), tmpl) : 0;
    }
    bool operator==(const PRM_Callback& other) const
    {
        return m_callback32 == other.m_callback32 && m_callback64 == other.m_callback64;
    }
    bool operator!=(const PRM_Callback& other) const { return !(*this == other); }
    bool isNull() const { return !m_callback32 && !m_callback64; }
    bool isNotNull() const { return !isNull(); }

private:
    PRM_Callback32 m_callback32;
    PRM_Callback64 m_callback64;
};
