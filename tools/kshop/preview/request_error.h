#ifndef KSHOP_PREVIEW_REQUEST_ERROR_H
#define KSHOP_PREVIEW_REQUEST_ERROR_H

#include <stdexcept>
#include <string>

namespace kshop
{

/// A request that gets no answer: a sentence for the person, and the HTTP status that says whose mistake it is.
class RequestError : public std::runtime_error
{
public:
    RequestError(int httpStatus, const std::string& sentence, const std::string& consoleText = "")
        : std::runtime_error(sentence), status(httpStatus), console(consoleText)
    {
    }

    const int status;
    const std::string console; ///< what scripts wrote before it went wrong
};

} // namespace kshop

#endif
