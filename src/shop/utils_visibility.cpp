#include "utils_visibility.h"

#include <PRM/PRM_ChoiceList.h>
#include <PRM/PRM_Name.h>

namespace zelk
{
namespace shop
{

// Made on first use: templates that show it are filled while the plug-in loads, in no order with this file.
PRM_ChoiceList& visibilityMenu()
{
    // One bit each, from bit 0. Deliberate: bit 4 has no meaning yet and no label, but its place is taken.
    static PRM_Name visibility_menu_items[] = {
        PRM_Name("camera", "Camera"),
        PRM_Name("shadow", "Shadow"),
        PRM_Name("reflected", "Reflected"),
        PRM_Name("refracted", "Refracted"),
        PRM_Name("unused", ""),
        PRM_Name("diffuse", "Diffuse"),
        PRM_Name("glossy", "Glossy"),
        PRM_Name(),
    };
    static PRM_ChoiceList visibility_menu(PRM_CHOICELIST_TOGGLE, visibility_menu_items);
    return visibility_menu;
}

} // namespace shop
} // namespace zelk
