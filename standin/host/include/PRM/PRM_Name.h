#pragma once
#include <memory>
#include <string>

/// Token and label of a parameter or a menu item. Keeps the pointers, not the texts: the caller keeps those
/// alive. A list of names ends with one whose token is null or empty, as a default-made one is.
class PRM_Name
{
public:
    PRM_Name(const char* token = 0, const char* label = 0, int expressionFlag = 1)
        : m_token(token), m_label(label), m_expressionFlag(expressionFlag)
    {
    }

    const char* getToken() const { return m_token; }
    /// The token when the label is null; an empty label is a label.
    const char* getLabel() const { return m_label ? m_label : m_token; }
    int getExpressionFlag() const { return m_expressionFlag; }
    void setToken(const char* token) { m_token = token; }
    void setLabel(const char* label) { m_label = label; }
    /// Replaces both texts by private copies, which copies of this name share.
    void harden();

private:
    const char* m_token;
    const char* m_label;
    int m_expressionFlag;
    std::shared_ptr<const std::string> m_ownToken;
    std::shared_ptr<const std::string> m_ownLabel;
};
