#ifndef KSHOP_PROGRESS_H
#define KSHOP_PROGRESS_H

#include <chrono>
#include <cstddef>
#include <string>

namespace kshop
{

/// A line on standard error that counts what is done, "registering 1,234 shaders", for work that takes long. Only a
/// terminal gets it, after half a second, and it is erased in the end.
class Progress
{
public:
    /// @param verb   what is done, as in "registering"
    /// @param nouns  to what, as in "types"
    Progress(std::string verb, std::string nouns);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// One more is done.
    void step();

private:
    void show();

    typedef std::chrono::steady_clock Clock;
    std::string m_verb;
    std::string m_nouns;
    bool m_isTerminal;
    bool m_isShown = false;
    std::size_t m_count = 0;
    Clock::time_point m_next; ///< when the line is written again
};

/// "1,234,567".
std::string groupedNumber(std::size_t number);

} // namespace kshop

#endif
