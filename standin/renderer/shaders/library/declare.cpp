// Rows into declarations.
#include "library.h"

#include <cstdint>
#include <cstring>
#include <memory>
#include <utility>

namespace zelk::library
{

namespace
{

using ArrayOwner = std::unique_ptr<KtArray, decltype(&KrArrayDestroy)>;

template <typename T>
void putAll(void* memory, const std::vector<double>& numbers)
{
    T* values = static_cast<T*>(memory);
    for (const double number : numbers)
        *values++ = static_cast<T>(number);
}

// Writes numbers as they stand in a value record or in an array of that type.
void put(void* memory, int type, const std::vector<double>& numbers)
{
    switch (type)
    {
    case KR_TYPE_BYTE:
        return putAll<std::uint8_t>(memory, numbers);
    case KR_TYPE_BOOLEAN:
        return putAll<bool>(memory, numbers);
    case KR_TYPE_INT:
    case KR_TYPE_ENUM:
        return putAll<std::int32_t>(memory, numbers);
    case KR_TYPE_UINT:
        return putAll<std::uint32_t>(memory, numbers);
    default:
        return putAll<float>(memory, numbers);
    }
}

std::size_t components(int type)
{
    switch (type)
    {
    case KR_TYPE_RGBA:
        return 4;
    case KR_TYPE_RGB:
    case KR_TYPE_VECTOR:
    case KR_TYPE_POINT:
        return 3;
    case KR_TYPE_POINT2:
        return 2;
    default:
        return 1;
    }
}

ArrayOwner makeArray(const Parameter& parameter)
{
    const bool ofTexts = parameter.elementType == KR_TYPE_STRING;
    const std::size_t count =
        ofTexts ? parameter.texts.size() : parameter.numbers.size() / components(parameter.elementType);
    ArrayOwner array(KrArrayAllocate(static_cast<std::uint32_t>(count), 1,
                                     static_cast<std::uint8_t>(parameter.elementType)),
                     &KrArrayDestroy);
    if (!array)
        return array;
    if (ofTexts && count > 0)
        std::memcpy(array->data, parameter.texts.data(), count * sizeof(const char*));
    else if (!ofTexts)
        put(array->data, parameter.elementType, parameter.numbers);
    return array;
}

void declareEnum(KtNodeDecl* node, const Parameter& parameter)
{
    std::vector<const char*> items = parameter.texts;
    items.push_back(nullptr);
    KrDeclareEnum(node, parameter.name, items.data(), static_cast<int>(parameter.numbers.front()));
}

void declareArray(KtNodeDecl* node, const Parameter& parameter)
{
    const ArrayOwner array = makeArray(parameter);
    KtParamValue value = KtParamValue();
    value.array = array.get();
    KrDeclareParam(node, parameter.name, parameter.type, &value);
}

void declareMatrix(KtNodeDecl* node, const Parameter& parameter)
{
    KtMatrix matrix;
    put(&matrix, KR_TYPE_MATRIX, parameter.numbers);
    KtParamValue value = KtParamValue();
    value.mtx = &matrix;
    KrDeclareParam(node, parameter.name, parameter.type, &value);
}

void declareSimple(KtNodeDecl* node, const Parameter& parameter)
{
    KtParamValue value = KtParamValue();
    if (parameter.type == KR_TYPE_STRING)
        value.str = parameter.texts.front();
    else
        put(&value, parameter.type, parameter.numbers);
    KrDeclareParam(node, parameter.name, parameter.type, &value);
}

void declareParameter(KtNodeDecl* node, const Parameter& parameter)
{
    if (parameter.type == KR_TYPE_ENUM)
        declareEnum(node, parameter);
    else if (parameter.type == KR_TYPE_ARRAY)
        declareArray(node, parameter);
    else if (parameter.type == KR_TYPE_MATRIX)
        declareMatrix(node, parameter);
    else
        declareSimple(node, parameter);
    if (!parameter.linkable)
        KrDeclareMetaDataBool(node, parameter.name, "linkable", false);
}

Parameter make(const char* name, int type, std::vector<double> numbers, std::vector<const char*> texts = {})
{
    return {name, type, std::move(numbers), std::move(texts), KR_TYPE_UNDEFINED, true};
}

} // namespace

Parameter byteParm(const char* name, int value) { return make(name, KR_TYPE_BYTE, {double(value)}); }
Parameter intParm(const char* name, int value) { return make(name, KR_TYPE_INT, {double(value)}); }
Parameter uintParm(const char* name, unsigned value) { return make(name, KR_TYPE_UINT, {double(value)}); }
Parameter boolParm(const char* name, bool value) { return make(name, KR_TYPE_BOOLEAN, {double(value)}); }
Parameter floatParm(const char* name, double value) { return make(name, KR_TYPE_FLOAT, {value}); }

Parameter rgbParm(const char* name, double r, double g, double b)
{
    return make(name, KR_TYPE_RGB, {r, g, b});
}

Parameter rgbaParm(const char* name, double r, double g, double b, double a)
{
    return make(name, KR_TYPE_RGBA, {r, g, b, a});
}

Parameter vectorParm(const char* name, double x, double y, double z)
{
    return make(name, KR_TYPE_VECTOR, {x, y, z});
}

Parameter pointParm(const char* name, double x, double y, double z)
{
    return make(name, KR_TYPE_POINT, {x, y, z});
}
Parameter point2Parm(const char* name, double x, double y) { return make(name, KR_TYPE_POINT2, {x, y}); }
Parameter stringParm(const char* name, const char* text) { return make(name, KR_TYPE_STRING, {}, {text}); }
Parameter nodeParm(const char* name) { return make(name, KR_TYPE_NODE, {}); }

Parameter matrixParm(const char* name)
{
    return make(name, KR_TYPE_MATRIX, {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1});
}

Parameter enumParm(const char* name, std::vector<const char*> items, int index)
{
    return make(name, KR_TYPE_ENUM, {double(index)}, std::move(items));
}

Parameter arrayParm(const char* name, int elementType, std::vector<double> numbers)
{
    return {name, KR_TYPE_ARRAY, std::move(numbers), {}, elementType, true};
}

Parameter arrayParm(const char* name, std::vector<const char*> texts)
{
    return {name, KR_TYPE_ARRAY, {}, std::move(texts), KR_TYPE_STRING, true};
}

Parameter constant(Parameter parameter)
{
    parameter.linkable = false;
    return parameter;
}

Parameters cameraParms()
{
    return {
        pointParm("position", 0, 0, 0),   pointParm("look_at", 0, 0, -1),
        vectorParm("up", 0, 1, 0),        matrixParm("matrix"),
        floatParm("near_clip", 0.1),      floatParm("far_clip", 100000),
        point2Parm("screen_min", -1, -1), point2Parm("screen_max", 1, 1),
        floatParm("shutter_start", 0),    floatParm("shutter_end", 0),
        floatParm("exposure", 0),
    };
}

void declare(const Shaders& shaders)
{
    for (const Shader& shader : shaders)
    {
        KtNodeDecl* node = KrDeclareNode(shader.name, shader.kind, shader.output);
        declareParameter(node, stringParm("name", ""));
        for (const Parameter& parameter : shader.parameters)
            declareParameter(node, parameter);
    }
}

} // namespace zelk::library
