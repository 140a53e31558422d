#ifndef ZELK_SHOP_UTILS_VISIBILITY_H
#define ZELK_SHOP_UTILS_VISIBILITY_H

class PRM_ChoiceList;

namespace zelk
{
namespace shop
{

/// Returns the menu of a visibility mask: a strip of buttons, one for each bit of the value. One menu, which lives for the
/// process, serves every parameter that holds such a mask.
PRM_ChoiceList& visibilityMenu();

} // namespace shop
} // namespace zelk

#endif
