#include "shader_desc.h"

#include "shader_desc_template_parts.h"
#include "shader_desc_text.h"

#include <PRM/PRM_SpareData.h>

namespace zelk
{
namespace shop
{

void storeCallbackScript(const std::string& script, PRM_SpareData& spare)
{
    std::string text = script;
    if (stripPrefix(text, prefix_hscript))
        spare.setCallbackLanguage(CH_HSCRIPT);
    else if (stripPrefix(text, prefix_python))
        spare.setCallbackLanguage(CH_PYTHON_SCRIPT);
    spare.addTokenValue("script_callback", text.c_str());
}

int parmCallback(void*, int, double, const PRM_Template*) { return 0; }

} // namespace shop
} // namespace zelk
