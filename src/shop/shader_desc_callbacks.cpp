#include "shader_desc.h"

#include "shader_desc_template_parts.h"
#include "shader_desc_text.h"

#include <PRM/PRM_SpareData.h>

namespace zelk
{
namespace shop
{

namespace
{

const char* const prefix_hscript = "hscript:";
const char* const prefix_python = "python:";

} // namespace

void storeCallbackScript(const std::string& script, PRM_SpareData& spare)
{
    std::string text = script;
    if (startsWith(script.c_str(), prefix_hscript))
    {
        spare.setCallbackLanguage(CH_HSCRIPT);
        replace(text, prefix_hscript, "");
    }
    else if (startsWith(script.c_str(), prefix_python))
    {
        spare.setCallbackLanguage(CH_PYTHON_SCRIPT);
        replace(text, prefix_python, "");
    }
    spare.addTokenValue("script_callback", text.c_str());
}

int parmCallback(void*, int, double, const PRM_Template*) { return 0; }

} // namespace shop
} // namespace zelk
