/// The render's side of change records: from text to record.
#ifndef ZELK_IPR_READER_H
#define ZELK_IPR_READER_H

#include <zelk/ipr/delta.h>

#include <cstddef>
#include <memory>

namespace zelk
{
namespace ipr
{

/// The longest text that is sent or read, in bytes.
const std::size_t max_record_bytes = 64u << 20;

/// A record read from a text. It owns the arrays, and the texts in them, that its values point to: they live
/// until it is cleared or destroyed, whatever happens to its entries. So it cannot be copied; a copy of its
/// Delta part borrows them.
class ZELK_IPR_EXPORT ReceivedDelta : public Delta
{
public:
    ReceivedDelta();
    ~ReceivedDelta() override;
    ReceivedDelta(const ReceivedDelta&) = delete;
    ReceivedDelta& operator=(const ReceivedDelta&) = delete;

    /// Empties the record and destroys its arrays.
    void reset();

    /// Allocates an array of this record's own; null, after the renderer's message, when memory is short.
    KtArray* makeArray(std::uint32_t elementCount, std::uint8_t keyCount, std::uint8_t type);

    /// Keeps a text for this record's arrays of texts.
    const char* keepText(const std::string& text);

private:
    struct Belongings;
    std::unique_ptr<Belongings> m_belongings;
};

/// Reads the text of one record into `delta`, whose former contents go. Reading what serialize() wrote gives
/// the same record, to the bit. Keys that nobody knows are passed over.
///
/// False, with an empty `delta` and a sentence in `error` that says what is wrong and where, for anything
/// else: whatever the bytes are, nothing is thrown, and reading takes some 300 MB for the worst of them.
ZELK_IPR_EXPORT bool readDelta(const std::string& text, ReceivedDelta& delta, std::string& error) noexcept;

} // namespace ipr
} // namespace zelk

#endif
