#ifndef KORVAN_FUZZ_FUZZING_H
#define KORVAN_FUZZ_FUZZING_H

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

/// What a fuzzer takes its decisions from: the first bytes decide, the rest is the text.
class Input
{
public:
    Input(const std::uint8_t* data, std::size_t size)
        : m_next(reinterpret_cast<const char*>(data)), m_left(size)
    {
    }

    /// The next byte; 0 at the end.
    unsigned byte()
    {
        if (m_left == 0)
            return 0;
        --m_left;
        return static_cast<unsigned char>(*m_next++);
    }

    /// All that is left.
    std::string rest()
    {
        const std::string text(m_next, m_left);
        m_next += m_left;
        m_left = 0;
        return text;
    }

private:
    const char* m_next;
    std::size_t m_left;
};

/// Ends the program, which keeps the input as a finding, when a promise is broken. In every build, unlike assert().
inline void require(bool holds, const char* promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "broken promise: %s\n", promise);
    std::abort();
}

#endif
