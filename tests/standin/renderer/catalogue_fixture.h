#pragma once

#include "renderer_fixture.h"

/// A running renderer whose catalogue is what a test writes.
class CatalogueTest : public testing::Test
{
protected:
    /// Loads the catalogue file of that text; returns its path.
    std::string load(const std::string& text)
    {
        std::string file = folder.write("nodes.json", text);
        const Environment catalogue("KORVAN_CATALOGUE", file);
        KrLoadPlugins(SHADER_PLUGIN_DIR);
        return file;
    }

    /// Loads one shader "n" with that one parameter, given without its braces; null when it was refused.
    const KtParamEntry* loadParam(const std::string& parameter)
    {
        load(R"({"nodes": [{"name": "n", "kind": "shader", "output": "rgb", "parameters": [{)" + parameter +
             "}]}]}");
        const KtNodeEntry* entry = KrNodeEntryLookUp("n");
        return entry ? KrNodeEntryGetParameter(entry, 0) : nullptr;
    }

    /// The default of that one parameter; a record of zeros, and a failure, when there is none.
    KtParamValue loadDefault(const std::string& parameter)
    {
        const KtParamEntry* param = loadParam(parameter);
        const KtParamValue* value = param ? KrParamGetDefault(param) : nullptr;
        EXPECT_NE(value, nullptr);
        return value ? *value : KtParamValue();
    }

    Folder folder;
    Renderer renderer;
};
