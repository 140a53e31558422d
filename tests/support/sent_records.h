#ifndef KORVAN_TESTS_SENT_RECORDS_H
#define KORVAN_TESTS_SENT_RECORDS_H

#include "standin_session.h"

#include <zelk/ipr/observe.h>
#include <zelk/ipr/reader.h>

#include <gtest/gtest.h>

#include <cstdlib>
#include <memory>
#include <string>
#include <vector>

/// The records that the publisher is handed.
class SentRecords
{
public:
    SentRecords()
    {
        ::setenv("ZELK_IPR_ENDPOINT", ("ipc://" + (m_folder.path() / "render").string()).c_str(), 1);
        zelk::ipr::setSendObserver([this](const std::string& text) { m_texts.push_back(text); });
    }
    ~SentRecords() { zelk::ipr::setSendObserver({}); }

    std::size_t count() const { return m_texts.size(); }
    void clear() { m_texts.clear(); }

    /// The i-th record. A text that is none fails the test and reads as an empty record.
    const zelk::ipr::Delta& at(std::size_t i)
    {
        m_read = std::make_unique<zelk::ipr::ReceivedDelta>();
        std::string error;
        EXPECT_LT(i, m_texts.size());
        EXPECT_TRUE(i < m_texts.size() && zelk::ipr::readDelta(m_texts[i], *m_read, error)) << error;
        return *m_read;
    }

    std::vector<std::string> targets()
    {
        std::vector<std::string> paths;
        for (std::size_t i = 0; i < m_texts.size(); ++i)
            paths.push_back(at(i).nodePath);
        return paths;
    }

private:
    TemporaryFolder m_folder;
    std::vector<std::string> m_texts;
    std::unique_ptr<zelk::ipr::ReceivedDelta> m_read;
};

#endif
