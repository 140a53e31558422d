#ifndef STANDIN_OP_LOADING_H
#define STANDIN_OP_LOADING_H

#include <UT/UT_UndoManager.h>

namespace standin
{

/// How many loads of scenes and assets are under way; parameter events are held back while it is not 0.
int& loadingDepth();

/// A load is under way for as long as this lives; nothing of it can be undone.
class LoadingScope
{
public:
    LoadingScope() { ++loadingDepth(); }
    ~LoadingScope() { --loadingDepth(); }
    LoadingScope(const LoadingScope&) = delete;
    LoadingScope& operator=(const LoadingScope&) = delete;

private:
    UT_AutoDisableUndos m_noUndos;
};

} // namespace standin

#endif
