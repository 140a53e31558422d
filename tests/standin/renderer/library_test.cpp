// The shipped shaders and what their metadata files say.
#include "renderer_fixture.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <sstream>

namespace
{

namespace fs = std::filesystem;
using Words = std::vector<std::string>;

/// A running renderer with the shipped shaders and their metadata.
class ShaderLibrary : public testing::Test
{
protected:
    ShaderLibrary()
    {
        KrLoadPlugins(SHADER_PLUGIN_DIR);
        std::set<fs::path> files;
        for (const fs::directory_entry& file : fs::directory_iterator(METADATA_DIR))
            files.insert(file.path());
        for (const fs::path& file : files)
            EXPECT_TRUE(KrMetaDataLoadFile(file.c_str()));
        for (const KtNodeEntry* entry : entriesOf(KR_NODE_SHADER | KR_NODE_CAMERA))
            if (KrNodeEntryGetFilename(entry))
                shaders.push_back(entry);
    }

    Renderer renderer;
    std::vector<const KtNodeEntry*> shaders;
};

std::string textOf(const KtNodeEntry* entry, const char* param, const char* key)
{
    const char* text = "";
    KrMetaDataGetStr(entry, param, key, &text);
    return text;
}

bool flagOf(const KtNodeEntry* entry, const char* param, const char* key)
{
    bool flag = false;
    KrMetaDataGetBool(entry, param, key, &flag);
    return flag;
}

Words wordsOf(const std::string& text)
{
    std::istringstream stream(text);
    return {std::istream_iterator<std::string>(stream), {}};
}

Words split(const std::string& text, char separator)
{
    Words words;
    std::istringstream stream(text);
    for (std::string word; std::getline(stream, word, separator);)
        words.push_back(word);
    return words;
}

/// The items that an entry adds to its interface: name to kind and arguments.
struct Extra
{
    std::string kind;
    std::string arguments;
};

std::map<std::string, Extra> extrasOf(const KtNodeEntry* entry)
{
    std::map<std::string, Extra> extras;
    KtMetaDataIterator* iterator = KrNodeEntryGetMetaDataIterator(entry, nullptr);
    while (!KrMetaDataIteratorFinished(iterator))
    {
        const KtMetaDataEntry* item = KrMetaDataIteratorGetNext(iterator);
        const Words words = split(item->name, '.');
        if (words.size() == 4 && words[1] == "parm")
            extras[words[3]] = {words[2], item->value.str};
    }
    KrMetaDataIteratorDestroy(iterator);
    return extras;
}

/// The parameters that an artist gets to see: not "name", not what is skipped, not what a ramp stands for, not what
/// every camera has.
std::set<std::string> shownParamsOf(const KtNodeEntry* entry)
{
    std::set<std::string> shown;
    for (const std::string& name : paramNamesOf(entry))
        if (name != "name" && !flagOf(entry, name.c_str(), "houdini.skip"))
            shown.insert(name);
    for (const auto& [name, extra] : extrasOf(entry))
        if (extra.kind == "ramp_float" || extra.kind == "ramp_rgb")
            for (const std::string& part : wordsOf(extra.arguments))
                shown.erase(part);
    if (KrNodeEntryGetType(entry) == KR_NODE_CAMERA)
    {
        shown.erase("fov");
        for (const std::string& name : paramNamesOf(KrNodeEntryLookUp("ortho_camera")))
            shown.erase(name);
    }
    return shown;
}

/// All keys of the shaders, of all their parameters, and the sub-keys of their extras ("extra:label").
std::set<std::string> keysOf(const std::vector<const KtNodeEntry*>& shaders)
{
    std::set<std::string> keys;
    for (const KtNodeEntry* entry : shaders)
    {
        for (const std::string& item : metaDataOf(entry))
        {
            const std::string key = item.substr(0, item.find('='));
            const Words words = split(key, '.');
            keys.insert(words.size() == 5   ? "extra:" + words[4]
                        : words.size() == 4 ? "extra:" + words[2]
                                            : key);
        }
        for (const std::string& name : paramNamesOf(entry))
            for (const std::string& item : metaDataOf(entry, name.c_str()))
                keys.insert("parameter:" + item.substr(0, item.find('=')));
    }
    return keys;
}

} // namespace

TEST_F(ShaderLibrary, LoadsWithoutAMessage)
{
    EXPECT_EQ(renderer.takeMessages(), Messages{});
    EXPECT_FALSE(shaders.empty());
}

TEST_F(ShaderLibrary, HasShadersAndCameras)
{
    const auto cameras =
        std::count_if(shaders.begin(), shaders.end(),
                      [](const KtNodeEntry* entry) { return KrNodeEntryGetType(entry) == KR_NODE_CAMERA; });
    EXPECT_EQ(cameras, 2);
    EXPECT_GE(shaders.size(), 22u);
    for (const KtNodeEntry* entry : shaders)
        EXPECT_THAT(KrNodeEntryGetName(entry), testing::StartsWith("zelk__"));
}

TEST_F(ShaderLibrary, LeavesTheRampsToTheHandWrittenNodes)
{
    for (const char* name : {"zelk__ramp_float", "zelk__ramp_rgb"})
    {
        ASSERT_NE(KrNodeEntryLookUp(name), nullptr);
        EXPECT_TRUE(flagOf(KrNodeEntryLookUp(name), nullptr, "houdini.skip"));
    }
    EXPECT_EQ(paramNamesOf(KrNodeEntryLookUp("zelk__ramp_rgb")),
              (Words{"name", "input", "type", "position", "color", "interpolation"}));
}

TEST_F(ShaderLibrary, HasSurfacesThatAMaterialTakes)
{
    for (const KtNodeEntry* entry : shaders)
        if (textOf(entry, nullptr, "houdini.category") == "Surface")
        {
            EXPECT_EQ(KrNodeEntryGetOutputType(entry), KR_TYPE_RGBA) << KrNodeEntryGetName(entry);
        }
    EXPECT_EQ(textOf(KrNodeEntryLookUp("zelk__standard_surface"), nullptr, "houdini.category"), "Surface");
    EXPECT_EQ(KrNodeEntryGetOutputType(KrNodeEntryLookUp("zelk__image")), KR_TYPE_RGBA);
}

TEST_F(ShaderLibrary, HasALightFilterAnAtmosphereAndAVolume)
{
    std::set<std::string> kinds;
    for (const KtNodeEntry* entry : shaders)
        kinds.insert(textOf(entry, nullptr, "houdini.shader_type"));
    EXPECT_THAT(kinds, testing::IsSupersetOf({"light_filter", "atmosphere", "volume"}));
}

TEST_F(ShaderLibrary, UsesEveryKeyOfShaders)
{
    EXPECT_THAT(
        keysOf(shaders),
        testing::IsSupersetOf({"houdini.label", "houdini.icon", "houdini.lod", "houdini.shader_type",
                               "houdini.help_url", "houdini.category", "houdini.order", "houdini.skip"}));
}

TEST_F(ShaderLibrary, UsesEveryKeyOfParameters)
{
    Words wanted;
    for (const char* key : {"houdini.label",
                            "desc",
                            "desc2",
                            "houdini.type",
                            "houdini.disable_when",
                            "houdini.hide_when",
                            "houdini.menu",
                            "houdini.menu_script",
                            "houdini.expression",
                            "houdini.callback",
                            "houdini.invisible",
                            "houdini.no_menu_caps",
                            "houdini.join_next",
                            "houdini.no_label",
                            "houdini.no_input",
                            "houdini.skip",
                            "linkable",
                            "min",
                            "max",
                            "softmin",
                            "softmax"})
        wanted.push_back(std::string("parameter:") + key);
    EXPECT_THAT(keysOf(shaders), testing::IsSupersetOf(wanted));
}

TEST_F(ShaderLibrary, UsesEveryKindOfExtraAndEveryKeyOfThem)
{
    Words wanted;
    for (const char* key : {"folder", "heading", "separator", "toggle", "ramp_float", "ramp_rgb", "menu",
                            "button", "label", "icon", "desc", "callback", "join_next", "no_label"})
        wanted.push_back(std::string("extra:") + key);
    EXPECT_THAT(keysOf(shaders), testing::IsSupersetOf(wanted));
}

TEST_F(ShaderLibrary, UsesEveryFormOfParameterTypes)
{
    std::set<std::string> forms;
    for (const KtNodeEntry* entry : shaders)
        for (const std::string& name : paramNamesOf(entry))
            forms.insert(textOf(entry, name.c_str(), "houdini.type"));
    EXPECT_THAT(forms, testing::IsSupersetOf(
                           {"file:image", "file:*.vdb", "visibility", "opfilter", "opfilter:!!OBJ/CAMERA!!",
                            "menu:replace:menu", "menu:toggle:menu", "menu:append:menu", "menu:wild:python",
                            "menu:exclusive:menu", "menu:single:menu", "menu:replace:hscript"}));
}

TEST_F(ShaderLibrary, UsesScriptsOfBothLanguagesAndExpressionsOfBoth)
{
    std::set<std::string> starts;
    for (const KtNodeEntry* entry : shaders)
    {
        for (const std::string& name : paramNamesOf(entry))
        {
            starts.insert("callback " + textOf(entry, name.c_str(), "houdini.callback").substr(0, 7));
            starts.insert("expression " + textOf(entry, name.c_str(), "houdini.expression").substr(0, 7));
        }
        for (const auto& [name, extra] : extrasOf(entry))
            if (extra.kind == "button")
                starts.insert("button " + extra.arguments.substr(0, 7));
    }
    EXPECT_THAT(starts, testing::IsSupersetOf({"callback python:", "callback hscript", "expression $F",
                                               "expression python:", "button python:", "button hscript"}));
}

TEST_F(ShaderLibrary, HasParametersOfEveryTypeThatAnArtistSets)
{
    std::set<int> types, elements;
    for (const KtNodeEntry* entry : shaders)
        for (int i = 0; i < KrNodeEntryGetNumParams(entry); ++i)
        {
            const KtParamEntry* param = KrNodeEntryGetParameter(entry, i);
            types.insert(KrParamGetType(param));
            if (KrParamGetType(param) == KR_TYPE_ARRAY)
                elements.insert(KrParamGetDefault(param)->array->type);
        }
    EXPECT_THAT(types, testing::IsSupersetOf({KR_TYPE_BYTE, KR_TYPE_INT, KR_TYPE_UINT, KR_TYPE_BOOLEAN,
                                              KR_TYPE_FLOAT, KR_TYPE_RGB, KR_TYPE_RGBA, KR_TYPE_VECTOR,
                                              KR_TYPE_POINT, KR_TYPE_POINT2, KR_TYPE_STRING, KR_TYPE_NODE,
                                              KR_TYPE_ARRAY, KR_TYPE_MATRIX, KR_TYPE_ENUM}));
    EXPECT_THAT(elements, testing::IsSupersetOf({KR_TYPE_INT, KR_TYPE_FLOAT, KR_TYPE_RGB, KR_TYPE_STRING}));
}

TEST_F(ShaderLibrary, DeclaresItsDefaultsAsWritten)
{
    const KtNodeEntry* surface = KrNodeEntryLookUp("zelk__standard_surface");
    EXPECT_FLOAT_EQ(KrParamGetDefault(findParam(surface, "subsurface_radius"))->rgb.g, 0.35f);
    const KtNodeEntry* cells = KrNodeEntryLookUp("zelk__cell_noise");
    EXPECT_EQ(KrParamGetDefault(findParam(cells, "seed"))->uint_, 1u);
    const KtArray* palette = KrParamGetDefault(findParam(cells, "palette"))->array;
    ASSERT_EQ(palette->nelements, 3u);
    EXPECT_FLOAT_EQ(KrArrayGetRGBFunc(palette, 1, __FILE__, __LINE__).g, 0.6f);
    EXPECT_EQ(KrParamGetDefault(findParam(KrNodeEntryLookUp("zelk__triplanar"), "reference_shape"))->ptr,
              nullptr);
    const KtNodeEntry* image = KrNodeEntryLookUp("zelk__image");
    EXPECT_EQ(KrParamGetDefault(findParam(image, "filter"))->int_, 3);
    EXPECT_STREQ(KrParamGetEnum(findParam(image, "filter"))[3], "smart_bicubic");
    const KtNodeEntry* data = KrNodeEntryLookUp("zelk__user_data");
    EXPECT_STREQ(
        KrArrayGetStrFunc(KrParamGetDefault(findParam(data, "fallbacks"))->array, 1, __FILE__, __LINE__),
        "diffuse");
}

TEST_F(ShaderLibrary, OrdersEverythingThatItShows)
{
    for (const KtNodeEntry* entry : shaders)
    {
        if (flagOf(entry, nullptr, "houdini.skip"))
            continue;
        std::set<std::string> shown = shownParamsOf(entry);
        for (const auto& [name, extra] : extrasOf(entry))
            shown.insert(name);
        const Words order = wordsOf(textOf(entry, nullptr, "houdini.order"));
        if (shown.size() > 1)
        {
            EXPECT_EQ(std::set<std::string>(order.begin(), order.end()), shown) << KrNodeEntryGetName(entry);
        }
        EXPECT_EQ(order.size(), std::set<std::string>(order.begin(), order.end()).size());
    }
}

// A tab counts the fields that follow it; an array is one. What comes after a folder belongs to its tabs to the
// last field, so that nothing is left over below.
TEST_F(ShaderLibrary, FillsTheTabsOfItsFoldersExactly)
{
    int folders = 0;
    for (const KtNodeEntry* entry : shaders)
    {
        const std::map<std::string, Extra> extras = extrasOf(entry);
        const Words order = wordsOf(textOf(entry, nullptr, "houdini.order"));
        for (auto word = order.begin(); word != order.end(); ++word)
        {
            const auto extra = extras.find(*word);
            if (extra == extras.end() || extra->second.kind != "folder")
                continue;
            ++folders;
            const Words tabs = split(extra->second.arguments, ';');
            ASSERT_EQ(tabs.size() % 2, 0u) << KrNodeEntryGetName(entry);
            int counted = 0;
            for (std::size_t i = 1; i < tabs.size(); i += 2)
                counted += std::stoi(tabs[i]);
            EXPECT_EQ(counted, order.end() - word - 1) << KrNodeEntryGetName(entry);
        }
    }
    EXPECT_GE(folders, 4);
}

TEST_F(ShaderLibrary, GivesRampsTheThreeParametersTheyStandFor)
{
    for (const KtNodeEntry* entry : shaders)
        for (const auto& [name, extra] : extrasOf(entry))
            if (extra.kind == "ramp_float" || extra.kind == "ramp_rgb")
            {
                const Words parts = wordsOf(extra.arguments);
                ASSERT_EQ(parts.size(), 3u) << KrNodeEntryGetName(entry);
                const auto elementType = [&](const std::string& part)
                {
                    const KtParamEntry* param = findParam(entry, part);
                    return param ? int(KrParamGetDefault(param)->array->type) : -1;
                };
                EXPECT_EQ(elementType(parts[0]), KR_TYPE_FLOAT) << name;
                EXPECT_EQ(elementType(parts[1]), extra.kind == "ramp_rgb" ? KR_TYPE_RGB : KR_TYPE_FLOAT)
                    << name;
                EXPECT_EQ(elementType(parts[2]), KR_TYPE_INT) << name;
            }
}

TEST_F(ShaderLibrary, PairsTheItemsOfItsMenus)
{
    for (const KtNodeEntry* entry : shaders)
        for (const std::string& name : paramNamesOf(entry))
        {
            const std::string menu = textOf(entry, name.c_str(), "houdini.menu");
            const auto separators = std::count(menu.begin(), menu.end(), ';');
            if (!menu.empty())
            {
                EXPECT_EQ(separators % 2, 1) << KrNodeEntryGetName(entry) << "." << name;
            }
        }
}
