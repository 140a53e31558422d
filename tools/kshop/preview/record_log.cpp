#include "record_log.h"

#include "../records/record_output.h"

#include <zelk/ipr/observe.h>
#include <zelk/ipr/reader.h>

#include <utility>

namespace kshop
{

RecordLog::RecordLog()
{
    zelk::ipr::setSendObserver(
        [this](const std::string& text)
        {
            zelk::ipr::ReceivedDelta delta;
            std::string error;
            if (!readDelta(text, delta, error))
                return;
            const std::lock_guard<std::mutex> lock(m_mutex);
            m_records.push_back(Json::parse(recordJson(delta)));
        });
}

RecordLog::~RecordLog() { zelk::ipr::setSendObserver(nullptr); }

Json RecordLog::take()
{
    const std::lock_guard<std::mutex> lock(m_mutex);
    return std::exchange(m_records, Json::array());
}

} // namespace kshop
