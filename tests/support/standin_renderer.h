#ifndef KORVAN_TESTS_STANDIN_RENDERER_H
#define KORVAN_TESTS_STANDIN_RENDERER_H

#include <gtest/gtest.h>

#include <kr_observe.h>
#include <kr_plugin.h>

#include <string>
#include <utility>
#include <vector>

typedef std::vector<std::string> Names;
typedef std::vector<std::string> Messages;

inline KtParamValue intValue(int value)
{
    KtParamValue v = {};
    v.int_ = value;
    return v;
}

inline KtParamValue uintValue(unsigned value)
{
    KtParamValue v = {};
    v.uint_ = value;
    return v;
}

inline KtParamValue byteValue(unsigned char value)
{
    KtParamValue v = {};
    v.byte_ = value;
    return v;
}

inline KtParamValue boolValue(bool value)
{
    KtParamValue v = {};
    v.bool_ = value;
    return v;
}

inline KtParamValue floatValue(float value)
{
    KtParamValue v = {};
    v.flt = value;
    return v;
}

inline KtParamValue rgbValue(float r, float g, float b)
{
    KtParamValue v = {};
    v.rgb = {r, g, b};
    return v;
}

inline KtParamValue rgbaValue(float r, float g, float b, float a)
{
    KtParamValue v = {};
    v.rgba = {r, g, b, a};
    return v;
}

inline KtParamValue stringValue(const char* text)
{
    KtParamValue v = {};
    v.str = text;
    return v;
}

/// Declares one entry of the renderer, fact by fact.
class EntryBuilder
{
public:
    explicit EntryBuilder(KtNodeDecl* node) : m_node(node) {}

    EntryBuilder& parm(const char* name, int type, const KtParamValue& value)
    {
        KrDeclareParam(m_node, name, type, &value);
        return *this;
    }

    /// A parameter whose default record is null.
    EntryBuilder& parmWithoutDefault(const char* name, int type)
    {
        KrDeclareParam(m_node, name, type, nullptr);
        return *this;
    }

    EntryBuilder& floats(const Names& names)
    {
        for (const std::string& name : names)
            parm(name.c_str(), KR_TYPE_FLOAT, floatValue(0));
        return *this;
    }

    EntryBuilder& enumeration(const char* name, const Names& items, int index)
    {
        std::vector<const char*> texts;
        for (const std::string& item : items)
            texts.push_back(item.c_str());
        texts.push_back(nullptr);
        KrDeclareEnum(m_node, name, texts.data(), index);
        return *this;
    }

    /// An array of floats; other element types go through parm().
    EntryBuilder& floatArray(const char* name, const std::vector<float>& values)
    {
        KtArray* array = KrArrayAllocate(static_cast<uint32_t>(values.size()), 1, KR_TYPE_FLOAT);
        std::copy(values.begin(), values.end(), static_cast<float*>(array->data));
        return arrayParm(name, array);
    }

    /// An array without elements, of any element type.
    EntryBuilder& emptyArray(const char* name, int elementType)
    {
        return arrayParm(name, KrArrayAllocate(0, 1, static_cast<uint8_t>(elementType)));
    }

    EntryBuilder& arrayParm(const char* name, KtArray* array)
    {
        KtParamValue value = {};
        value.array = array;
        parm(name, KR_TYPE_ARRAY, value);
        KrArrayDestroy(array);
        return *this;
    }

    EntryBuilder& file(const char* path)
    {
        KrDeclareNodeFile(m_node, path);
        return *this;
    }

    EntryBuilder& metaData(const char* key, const char* value) { return parmMetaData(nullptr, key, value); }
    EntryBuilder& metaData(const char* key, bool value) { return parmMetaData(nullptr, key, value); }
    EntryBuilder& metaData(const char* key, float value) { return parmMetaData(nullptr, key, value); }

    EntryBuilder& parmMetaData(const char* parm, const char* key, const char* value)
    {
        KrDeclareMetaDataStr(m_node, parm, key, value);
        return *this;
    }

    EntryBuilder& parmMetaData(const char* parm, const char* key, bool value)
    {
        KrDeclareMetaDataBool(m_node, parm, key, value);
        return *this;
    }

    EntryBuilder& parmMetaData(const char* parm, const char* key, float value)
    {
        KrDeclareMetaDataFlt(m_node, parm, key, value);
        return *this;
    }

private:
    KtNodeDecl* m_node;
};

/// The renderer, running, with a quiet console. A warning or an error that a test does not take fails it.
class StandinRenderer
{
public:
    StandinRenderer()
    {
        KrMsgSetObserver(&StandinRenderer::observe, this);
        KrMsgSetConsoleFlags(0);
        KrBegin();
    }

    ~StandinRenderer()
    {
        KrEnd();
        KrMsgSetObserver(nullptr, nullptr);
        EXPECT_EQ(takeWarnings(), Messages()) << "a warning that nobody claimed";
        EXPECT_EQ(takeErrors(), Messages()) << "an error that nobody claimed";
    }

    StandinRenderer(const StandinRenderer&) = delete;
    StandinRenderer& operator=(const StandinRenderer&) = delete;

    EntryBuilder shader(const char* name, int outputType = KR_TYPE_RGB)
    {
        EntryBuilder builder(KrDeclareNode(name, KR_NODE_SHADER, outputType));
        builder.file("shaders.so");
        return builder;
    }

    /// A camera that comes from a plug-in.
    EntryBuilder camera(const char* name)
    {
        EntryBuilder builder(KrDeclareNode(name, KR_NODE_CAMERA, KR_TYPE_NODE));
        builder.file("cameras.so");
        return builder;
    }

    const KtNodeEntry* entry(const char* name) const { return KrNodeEntryLookUp(name); }

    /// Each returns the messages of one kind since it was last asked.
    Messages takeInfos() { return take(KR_MSG_INFO); }
    Messages takeWarnings() { return take(KR_MSG_WARNING); }
    Messages takeErrors() { return take(KR_MSG_ERROR); }

private:
    static void observe(int severity, const char* text, void* user)
    {
        static_cast<StandinRenderer*>(user)->m_messages.emplace_back(severity, text);
    }

    Messages take(int severity)
    {
        Messages taken;
        std::vector<std::pair<int, std::string>> rest;
        for (auto& message : m_messages)
            if (message.first == severity)
                taken.push_back(message.second);
            else
                rest.push_back(message);
        m_messages.swap(rest);
        return taken;
    }

    std::vector<std::pair<int, std::string>> m_messages;
};

#endif
