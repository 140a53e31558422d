#ifndef BENCH_SCENE_H
#define BENCH_SCENE_H

#include "bench_support.h"

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

class OP_Network;
class OP_Node;

/// @file
/// What the benchmarks of edits have in common: a host with the plug-in's types, and the host's event for an edit.

namespace bench
{

/// The host with the plug-in's types registered, and a container for nodes. One in a process.
class Scene
{
public:
    /// @param scratch  a directory of this run
    /// @param declare  declares renderer entries, while the renderer runs; may be empty
    Scene(const std::filesystem::path& scratch, const std::function<void()>& declare);
    ~Scene();
    Scene(const Scene&) = delete;
    Scene& operator=(const Scene&) = delete;

    /// A new node in the container.
    OP_Node& node(const std::string& type) const;

    /// That many new nodes of a type, in a container of their own.
    std::vector<OP_Node*> nodes(const std::string& type, int count) const;

private:
    OP_Network* m_network;
};

/// The host's event for an edited parameter; -1: for no parameter in particular.
void sendParmEvent(OP_Node& node, int parm);

/// What one edit took, sample by sample: by the host's event ("event"), by the event without a record ("silent"), and by
/// that one with the floor's work behind it ("bare"): the floor is to meet the caches as the host's own work leaves them.
class EditTimes
{
public:
    typedef std::function<void()> Run;

    /// Takes one sample of each, right after one another so that all meet the same machine.
    /// @param runs  how often each runs in a row; a sample is what one of them took in processor time of this thread
    void sample(int runs, const Run& event, const Run& silent, const Run& floor);

    const Times& event() const { return m_event; }
    const Times& silent() const { return m_silent; }

    /// The event without what the host does for any event.
    double ours() const { return median(m_event) - median(m_silent); }
    double floor() const { return median(m_bare) - median(m_silent); }
    double strictRatio() const { return ours() / floor(); }
    /// With the host's share on both sides.
    double wholeRatio() const { return median(m_event) / median(m_bare); }

private:
    Times m_event, m_silent, m_bare;
};

/// The whole program of a benchmark in such a scene; see runBenchmarks().
int runInScene(int argc, char** argv, const std::function<void()>& declare,
               const std::function<void(const Scene&)>& add, const std::function<void()>& printTable);

} // namespace bench

#endif
