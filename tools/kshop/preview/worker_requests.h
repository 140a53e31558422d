#ifndef KSHOP_PREVIEW_WORKER_REQUESTS_H
#define KSHOP_PREVIEW_WORKER_REQUESTS_H

#include "../session.h"
#include "gesture.h"
#include "kept_edits.h"
#include "node_view.h"
#include "record_log.h"
#include "scene.h"

#include <optional>
#include <string>

namespace kshop
{

/// Answers the requests that reach a worker: {"op": NAME, ...}.
///
/// An answer is {"answer": VALUE, "records": [RECORD...]}, after an edit with "kept": the snapshot of KeptEdits; or
/// {"error": SENTENCE, "status": HTTP STATUS, "records": [...]}.
class WorkerRequests
{
public:
    explicit WorkerRequests(const Session& session);

    Json answer(const Json& request);

private:
    struct Operation;
    static const Operation operations[];

    Json state(const Json& request);
    Json node(const Json& request);
    Json nodes(const Json& request);
    Json edit(const Json& request);
    Json lint(const Json& request);
    Json exported(const Json& request);

    Json result(const Json& request);
    Json view(const std::string& type);
    const ParameterNames& parameterNames();

    const Session& m_session;
    PreviewScene m_scene;
    Gesture m_gesture;
    KeptEdits m_kept;
    RecordLog m_records;
    std::optional<ParameterNames> m_names; ///< read when first needed
    Json m_findings;                       ///< the same
};

} // namespace kshop

#endif
