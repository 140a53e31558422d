#ifndef KSHOP_PREVIEW_FRONT_REQUESTS_H
#define KSHOP_PREVIEW_FRONT_REQUESTS_H

#include "guard.h"
#include "http_server.h"
#include "page_files.h"
#include "supervisor.h"

namespace kshop
{

/// Answers what arrives over HTTP: the page's files, and the interface under /api/. See docs/preview.md. Called from
/// many threads; never throws.
class FrontRequests
{
public:
    FrontRequests(const Guard& guard, const PageFiles& pages, Supervisor& supervisor);

    HttpAnswer answer(const HttpRequest& request) const;

private:
    struct Route;
    static const Route routes[];

    HttpAnswer pageFile(const HttpRequest& request) const;
    Json called(const HttpRequest& request) const;

    Json state(const HttpRequest& request) const;
    Json wait(const HttpRequest& request) const;
    Json node(const HttpRequest& request) const;
    Json nodes(const HttpRequest& request) const;
    Json edit(const HttpRequest& request) const;
    Json records(const HttpRequest& request) const;
    Json lint(const HttpRequest& request) const;
    Json source(const HttpRequest& request) const;
    Json exported(const HttpRequest& request) const;

    const Guard& m_guard;
    const PageFiles& m_pages;
    Supervisor& m_supervisor;
};

} // namespace kshop

#endif
