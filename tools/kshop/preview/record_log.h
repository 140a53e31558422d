#ifndef KSHOP_PREVIEW_RECORD_LOG_H
#define KSHOP_PREVIEW_RECORD_LOG_H

#include "../interface_json.h"

#include <mutex>

namespace kshop
{

/// The change records that this process's nodes send, whether or not a render listens. One per process.
class RecordLog
{
public:
    RecordLog();
    ~RecordLog();
    RecordLog(const RecordLog&) = delete;
    RecordLog& operator=(const RecordLog&) = delete;

    /// What was sent since the last call, in order, as `listen --json` prints it.
    Json take();

private:
    std::mutex m_mutex; ///< scripts may send from threads of their own
    Json m_records = Json::array();
};

} // namespace kshop

#endif
