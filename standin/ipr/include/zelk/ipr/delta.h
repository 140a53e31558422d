/// Change records: what a host tells a render in progress about one edit.
#ifndef ZELK_IPR_DELTA_H
#define ZELK_IPR_DELTA_H

#include <zelk/ipr/export.h>

#include <kr.h>

#include <cstdint>
#include <map>
#include <string>

namespace zelk
{
namespace ipr
{

/// The new value of one parameter.
///
/// A plain record, whose layout is part of the interface. Start from `DeltaParm()`, which is all zeros with
/// an empty text, and write what the type uses:
///
/// | type                                     | member                                                     |
/// |------------------------------------------|------------------------------------------------------------|
/// | byte, int, uint                          | value.int_, signed 32 bits for all three                   |
/// | boolean                                  | value.byte_, 0 or 1                                        |
/// | float, rgb, rgba, vector, point, point2  | value.flt, value.rgb, value.rgba, ...                      |
/// | string, node, enum                       | str; for an enum its item's name                           |
/// | matrix                                   | matrix, row by row                                         |
/// | array                                    | value.array; null when there is only a marker in `str`     |
/// | any other                                | str, which is then only a marker                           |
struct DeltaParm
{
    std::uint8_t type;  ///< KR_TYPE_..., or a code of a newer renderer
    KtParamValue value; ///< scalars, small vectors, and an array, which stays its maker's own
    KtMatrix matrix;    ///< KR_TYPE_MATRIX only
    std::string str;    ///< any bytes
    void* reserved;     ///< null; nothing reads it
};

/// One change: the new values of some parameters of one node, by parameter name.
///
/// A record does not own the arrays that its values point to: whoever allocated them destroys them, after the
/// last serialize(). (A record that was read from a text owns its arrays; see ReceivedDelta.)
class ZELK_IPR_EXPORT Delta : public std::map<std::string, DeltaParm>
{
public:
    /// An empty record.
    Delta();
    virtual ~Delta();

    /// The record as one MessagePack map, which any language can read:
    ///
    ///     {"node_path": TEXT, "entry_name": TEXT, "parms": {NAME: {"type": CODE, "value": VALUE}}}
    ///
    /// VALUE is an integer, a boolean, a 32-bit float or a list of them (a matrix: 16), a text, or for an
    /// array {"element_type": CODE, "values": [one VALUE per element]}, with "key_count" beside them when the
    /// array has not exactly one motion key. Floats keep every bit, texts every byte. Types without a value
    /// of their own (pointer, codes above enum, arrays of such) give their `str`.
    std::string serialize() const;

    std::string nodePath;  ///< full path of the node that the change applies to
    std::string entryName; ///< the renderer's name of the node's entry
};

} // namespace ipr
} // namespace zelk

#endif
