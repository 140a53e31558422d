#pragma once
#include <memory>
#include <string>

/// Token and label of a parameter or a menu item. Keeps the pointers, not the texts: the caller keeps those
/// alive. A list of names ends with one whose token is null or empty, as a default-made one is.
class PRM_Name
{
public:
    PRM_Name(const char* token = 0, const char* label = 0) : m_token(token), m_label(label) {}

    const char* getToken() const { return m_token; }
    /// The token when the label is null; an empty label is a label.
    const char* getLabel() const { return m_label ? m_label : m_token; }
    /// Replaces both texts by private copies, which copies of this name share.
    void harden();

private:
    const char* m_token;
    const char* m_label;
    std::shared_ptr<const std::string> m_ownToken;
    std::shared_ptr<const std::string> m_ownLabel;
};
