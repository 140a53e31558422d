// Who watches how long pieces of work take.
#include "work.h"

#include "kr_observe.h"

namespace
{

struct Watcher
{
    KtWorkObserver observer = nullptr;
    void* user = nullptr;
};

Watcher watcher;

void tell(int kind, const char* subject, bool done)
{
    if (watcher.observer)
        watcher.observer(kind, subject, done, watcher.user);
}

} // namespace

void KrWorkSetObserver(KtWorkObserver observer, void* user)
{
    watcher.observer = observer;
    watcher.user = user;
}

namespace zelk::renderer
{

Work::Work(int kind, const char* subject) : m_kind(kind), m_subject(subject) { tell(kind, subject, false); }

Work::~Work() { tell(m_kind, m_subject, true); }

} // namespace zelk::renderer
