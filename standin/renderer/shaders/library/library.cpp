// The plug-in's one export.
#include "library.h"

void KrPluginDeclare(void)
{
    using namespace zelk::library;
    for (const Shaders& family : {surfaces(), textures(), math(), volumes(), cameras()})
        declare(family);
}
