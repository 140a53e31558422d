#ifndef KSHOP_PREVIEW_WORKER_LINE_H
#define KSHOP_PREVIEW_WORKER_LINE_H

#include <string>

namespace kshop
{

/// File descriptor of a worker's end of the line to its front.
constexpr int worker_line_fd = 3;

/// A worker's end of the line: one JSON text a line, requests in, answers out.
///
/// When the front is gone the process ends at once, whatever it is doing.
class WorkerLine
{
public:
    /// Takes over worker_line_fd; false, after a sentence, when that is no such line.
    bool open();
    /// The next request; false when the front has closed the line.
    bool receive(std::string& text);
    /// False when the front is gone.
    bool send(const std::string& text);

private:
    std::string m_buffer;
};

} // namespace kshop

#endif
