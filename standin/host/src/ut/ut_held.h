#pragma once

/// Sets a flag for as long as this lives.
class UT_Held
{
public:
    explicit UT_Held(bool& flag) : m_flag(flag) { m_flag = true; }
    ~UT_Held() { m_flag = false; }
    UT_Held(const UT_Held&) = delete;
    UT_Held& operator=(const UT_Held&) = delete;

private:
    bool& m_flag;
};
