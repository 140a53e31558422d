#ifndef ZELK_SHOP_SHOP_CONTENTS_H
#define ZELK_SHOP_SHOP_CONTENTS_H

class FS_IndexFile;
class UT_IStream;

namespace zelk
{
namespace shop
{

/// Whether the contents of a digital asset are made of Korvan nodes: at least one, and else only nodes that pass values
/// on ("null", "subnet", "subinput", "suboutput").
///
/// `asset` is the index of the asset's sections. An asset without contents is none. Contents that cannot be opened are
/// reported, once a call. Memory does not grow with the contents but with their longest line.
bool isKorvanAsset(const FS_IndexFile& asset);

/// The same for contents as they are when inflated. `stored` tells that they were not compressed.
///
/// A node's entry begins, behind the NUL that ends its name, with "type = " and the operator's name. This looks for those
/// words and never walks the archive, so contents that are cut off count as what is there.
bool areKorvanContents(UT_IStream& contents, bool stored);

} // namespace shop
} // namespace zelk

#endif
