#ifndef STANDIN_OP_WORKING_NODE_H
#define STANDIN_OP_WORKING_NODE_H

#include <OP/OP_Director.h>

namespace standin
{

/// Makes a node the working node of a thread for as long as this lives; null changes nothing.
class WorkingNode
{
public:
    WorkingNode(int thread, OP_Node* node) : m_thread(thread), m_pushed(node != nullptr)
    {
        if (m_pushed)
            OPgetDirector()->pushCwd(m_thread, node);
    }
    WorkingNode(const WorkingNode&) = delete;
    WorkingNode& operator=(const WorkingNode&) = delete;
    ~WorkingNode()
    {
        if (m_pushed)
            OPgetDirector()->popCwd(m_thread);
    }

private:
    int m_thread;
    bool m_pushed;
};

} // namespace standin

#endif
