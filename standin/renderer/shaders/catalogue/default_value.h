#pragma once

#include "kr.h"
#include "place.h"

#include <cstdint>
#include <deque>
#include <memory>

namespace zelk::catalogue
{

/// The code of a type word ("byte" to "undefined"); throws Mistake for any other word.
int typeOfWord(const Place& word);

/// A whole number within [least, most]; throws Mistake for anything else.
std::int64_t wholeNumber(const Place& place, std::int64_t least, std::int64_t most);

/// A number as a float, infinite when it is too large for one; throws Mistake for anything else.
float floatNumber(const Place& place);

/// The default value of a parameter, read from JSON, with everything that the value record points to.
///
/// Texts stay in the document, which must outlive the value.
class DefaultValue
{
public:
    DefaultValue() = default;
    DefaultValue(DefaultValue&&) = default;
    DefaultValue& operator=(DefaultValue&&) = default;

    /// Reads a value of a type that is no array. A reference (pointer, node) cannot be written in JSON and is
    /// null whatever stands there; so is the value of a type without a word. Throws Mistake for a wrong shape.
    static DefaultValue read(int type, const Place& place);

    /// Reads an array of `elementType`; without a list (null) it is empty. Throws Mistake for a wrong shape.
    static DefaultValue readArray(std::uint8_t elementType, const Place& place);

    /// Valid as long as this object.
    const KtParamValue& record() const { return m_record; }

private:
    struct Destroy
    {
        void operator()(KtArray* array) const { KrArrayDestroy(array); }
    };

    void store(int type, const Place& place, void* memory);
    KtArray* makeArray(std::uint8_t elementType, const Place& list);

    KtParamValue m_record = KtParamValue();
    std::deque<KtMatrix> m_matrices;
    std::deque<std::unique_ptr<KtArray, Destroy>> m_arrays;
};

} // namespace zelk::catalogue
