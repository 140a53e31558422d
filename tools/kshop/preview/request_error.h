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
    RequestError(int httpStatus, const std::string& sentence)
        : std::runtime_error(sentence), status(httpStatus)
    {
    }

    const int status;
};

} // namespace kshop

#endif
