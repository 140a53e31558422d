#ifndef KSHOP_INTERRUPTION_H
#define KSHOP_INTERRUPTION_H

namespace kshop
{

/// While it lives, Ctrl-C, SIGTERM and SIGHUP do not end the program but are noted, so that a command can come to its
/// end in good order. A signal that was ignored before stays ignored. One at a time.
class Interruption
{
public:
    Interruption();
    ~Interruption();
    Interruption(const Interruption&) = delete;
    Interruption& operator=(const Interruption&) = delete;

    /// True from the first such signal on.
    bool came() const;
};

} // namespace kshop

#endif
