// Defaults of parameters in catalogue files.
#include "catalogue_fixture.h"

#include <limits>
#include <ostream>

namespace
{

class CatalogueValues : public CatalogueTest
{
};

} // namespace

TEST_F(CatalogueValues, OfWholeNumbers)
{
    load(R"({"nodes": [{"name": "n", "kind": "shader", "output": "rgb", "parameters": [
            {"name": "byte", "type": "byte", "default": 255}, {"name": "int", "type": "int", "default": -2147483648},
            {"name": "uint", "type": "uint", "default": 4294967295},
            {"name": "boolean", "type": "boolean", "default": true}]}]})");
    const KtNodeEntry* entry = KrNodeEntryLookUp("n");
    EXPECT_EQ(KrParamGetDefault(findParam(entry, "byte"))->byte_, 255);
    EXPECT_EQ(KrParamGetDefault(findParam(entry, "int"))->int_, INT32_MIN);
    EXPECT_EQ(KrParamGetDefault(findParam(entry, "uint"))->uint_, 4294967295u);
    EXPECT_EQ(KrParamGetDefault(findParam(entry, "uint"))->int_, -1);
    EXPECT_TRUE(KrParamGetDefault(findParam(entry, "boolean"))->bool_);
}

TEST_F(CatalogueValues, OfFloatsAndTuples)
{
    load(R"({"nodes": [{"name": "n", "kind": "shader", "output": "rgb", "parameters": [
            {"name": "float", "type": "float", "default": 1}, {"name": "huge", "type": "float", "default": 1e300},
            {"name": "rgb", "type": "rgb", "default": [1, 2, 3]},
            {"name": "rgba", "type": "rgba", "default": [1, 2, 3, 4]},
            {"name": "vector", "type": "vector", "default": [1, 2, 3]},
            {"name": "point", "type": "point", "default": [1, 2, 3]},
            {"name": "point2", "type": "point2", "default": [1, 2]},
            {"name": "matrix", "type": "matrix", "default": [0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15]}]}]})");
    const KtNodeEntry* entry = KrNodeEntryLookUp("n");
    EXPECT_EQ(KrParamGetDefault(findParam(entry, "float"))->flt, 1.0f);
    EXPECT_EQ(KrParamGetDefault(findParam(entry, "huge"))->flt, std::numeric_limits<float>::infinity());
    EXPECT_EQ(KrParamGetDefault(findParam(entry, "rgb"))->rgb.b, 3.0f);
    EXPECT_EQ(KrParamGetDefault(findParam(entry, "rgba"))->rgba.a, 4.0f);
    EXPECT_EQ(KrParamGetDefault(findParam(entry, "vector"))->vec.y, 2.0f);
    EXPECT_EQ(KrParamGetDefault(findParam(entry, "point"))->pnt.z, 3.0f);
    EXPECT_EQ(KrParamGetDefault(findParam(entry, "point2"))->pnt2.y, 2.0f);
    EXPECT_EQ(KrParamGetDefault(findParam(entry, "matrix"))->mtx->m[2][1], 9.0f);
}

TEST_F(CatalogueValues, OfTexts)
{
    EXPECT_STREQ(loadDefault(R"("name": "p", "type": "string", "default": "größe")").str, "größe");
}

TEST_F(CatalogueValues, OfEnumerationsAreIndicesThatNeedNotExist)
{
    const KtParamEntry* param = loadParam(R"("name": "p", "type": "enum", "enum": ["a", "b"], "default": 7)");
    EXPECT_EQ(KrParamGetType(param), KR_TYPE_ENUM);
    EXPECT_EQ(KrParamGetDefault(param)->int_, 7);
    EXPECT_STREQ(KrParamGetEnum(param)[1], "b");
    EXPECT_EQ(KrParamGetEnum(param)[2], nullptr);
}

TEST_F(CatalogueValues, OfEnumerationsMayBeMissingAndTheirItemsToo)
{
    const KtParamEntry* param = loadParam(R"("name": "p", "type": "enum", "enum": [])");
    EXPECT_EQ(KrParamGetDefault(param), nullptr);
    EXPECT_EQ(KrParamGetEnum(param)[0], nullptr);
}

TEST_F(CatalogueValues, ThatAreMissingAreNull)
{
    EXPECT_EQ(KrParamGetDefault(loadParam(R"("name": "p", "type": "rgb")")), nullptr);
}

TEST_F(CatalogueValues, OfReferencesAreNullReferences)
{
    EXPECT_EQ(loadDefault(R"("name": "p", "type": "node", "default": "a_shape")").ptr, nullptr);
}

TEST_F(CatalogueValues, OfRawCodesAreZeros)
{
    const KtParamEntry* param = loadParam(R"("name": "p", "type_code": 200, "default": 3)");
    EXPECT_EQ(KrParamGetType(param), 200);
    EXPECT_EQ(KrParamGetDefault(param)->int_, 0);
}

TEST_F(CatalogueValues, OfRawCodesThatAreKnownAreReadAsThatType)
{
    EXPECT_EQ(loadDefault(R"("name": "p", "type_code": 4, "default": 2.5)").flt, 2.5f);
}

TEST_F(CatalogueValues, OfArraysOfNumbers)
{
    const KtArray* array =
        loadDefault(R"("name": "p", "type": "array", "element": "float", "default": [0, 1.5])").array;
    EXPECT_EQ(array->type, KR_TYPE_FLOAT);
    EXPECT_EQ(array->nelements, 2u);
    EXPECT_EQ(array->nkeys, 1u);
    EXPECT_EQ(KrArrayGetFltFunc(array, 1, __FILE__, __LINE__), 1.5f);
}

TEST_F(CatalogueValues, OfArraysOfTuplesTextsAndMatrices)
{
    load(R"({"nodes": [{"name": "n", "kind": "shader", "output": "rgb", "parameters": [
            {"name": "colors", "type": "array", "element": "rgb", "default": [[1, 2, 3], [4, 5, 6]]},
            {"name": "texts", "type": "array", "element": "string", "default": ["a", "", "größe"]},
            {"name": "matrices", "type": "array", "element": "matrix",
             "default": [[0,1,2,3,4,5,6,7,8,9,10,11,12,13,14,15], [1,0,0,0,0,1,0,0,0,0,1,0,0,0,0,1]]},
            {"name": "flags", "type": "array", "element": "boolean", "default": [true, false]},
            {"name": "nodes", "type": "array", "element": "node", "default": [null, null]}]}]})");
    const KtNodeEntry* entry = KrNodeEntryLookUp("n");
    ASSERT_NE(entry, nullptr);
    const auto arrayOf = [entry](const char* name)
    { return KrParamGetDefault(findParam(entry, name))->array; };
    EXPECT_EQ(KrArrayGetRGBFunc(arrayOf("colors"), 1, __FILE__, __LINE__).g, 5.0f);
    EXPECT_STREQ(KrArrayGetStrFunc(arrayOf("texts"), 2, __FILE__, __LINE__), "größe");
    EXPECT_EQ(KrArrayGetMtxFunc(arrayOf("matrices"), 0, __FILE__, __LINE__).m[3][3], 15.0f);
    EXPECT_TRUE(KrArrayGetBoolFunc(arrayOf("flags"), 0, __FILE__, __LINE__));
    EXPECT_EQ(arrayOf("nodes")->nelements, 2u);
}

TEST_F(CatalogueValues, OfArraysOfArrays)
{
    const KtArray* outer =
        loadDefault(R"("name": "p", "type": "array", "element": "array", "default": [[1, 2], [3]])").array;
    ASSERT_EQ(outer->type, KR_TYPE_ARRAY);
    ASSERT_EQ(outer->nelements, 2u);
    EXPECT_EQ(KrArrayGetFltFunc(static_cast<KtArray**>(outer->data)[1], 0, __FILE__, __LINE__), 3.0f);
}

TEST_F(CatalogueValues, OfArraysOfUnknownElementsKeepTheCodeAndTheCount)
{
    const KtArray* array =
        loadDefault(R"("name": "p", "type": "array", "element_code": 99, "default": [1, 2])").array;
    EXPECT_EQ(array->type, 99);
    EXPECT_EQ(array->nelements, 2u);
}

TEST_F(CatalogueValues, OfArraysThatAreMissingAreEmptyArraysOfTheirElement)
{
    const KtArray* array = loadDefault(R"("name": "p", "type": "array", "element": "rgb")").array;
    ASSERT_NE(array, nullptr);
    EXPECT_EQ(array->type, KR_TYPE_RGB);
    EXPECT_EQ(array->nelements, 0u);
}

// --- Defaults of a wrong shape -------------------------------------------------------------------------------------

struct BadDefault
{
    const char* parameter; // without its name
    const char* place;     // below the parameter
    const char* what;
};

void PrintTo(const BadDefault& row, std::ostream* stream) { *stream << row.parameter; }

class CatalogueRefusesDefault : public CatalogueTest, public testing::WithParamInterface<BadDefault>
{
};

TEST_P(CatalogueRefusesDefault, OfAWrongShape)
{
    EXPECT_EQ(loadParam(std::string(R"("name": "p", )") + GetParam().parameter), nullptr);
    EXPECT_THAT(renderer.takeMessage(),
                testing::HasSubstr(std::string(": /nodes/0/parameters/0/") + GetParam().place +
                                   " (\"n\"): " + GetParam().what + ". Skipping this node; "));
}

const BadDefault bad_defaults[] = {
    {R"("type": "byte", "default": 256)", "default", "Expected a whole number, found 256"},
    {R"("type": "byte", "default": -1)", "default", "Expected a whole number, found -1"},
    {R"("type": "int", "default": 1.5)", "default", "Expected a whole number, found 1.5"},
    {R"("type": "int", "default": 2147483648)", "default", "Expected a whole number, found 2147483648"},
    {R"("type": "uint", "default": 4294967296)", "default", "Expected a whole number, found 4294967296"},
    {R"("type": "boolean", "default": 1)", "default", "Expected true or false, found 1"},
    {R"("type": "float", "default": "1")", "default", "Expected a number, found \"1\""},
    {R"("type": "rgb", "default": [1, 2])", "default", "Expected a list of 3 numbers, found [1,2]"},
    {R"("type": "rgb", "default": [1, 2, "x"])", "default/2", "Expected a number, found \"x\""},
    {R"("type": "point2", "default": 1)", "default", "Expected a list of 2 numbers, found 1"},
    {R"("type": "matrix", "default": [1])", "default", "Expected a list of 16 numbers, found [1]"},
    {R"("type": "string", "default": 1)", "default", "Expected a text, found 1"},
    {R"("type": "enum", "enum": ["a"], "default": "a")", "default", "Expected a whole number, found \"a\""},
    {R"("type": "enum", "enum": "a")", "enum", "Expected a list of texts, found \"a\""},
    {R"("type": "enum", "enum": [1])", "enum/0", "Expected a text, found 1"},
    {R"("type": "array", "element": "float", "default": 1)", "default", "Expected a list, found 1"},
    {R"("type": "array", "element": "float", "default": [1, null])", "default/1",
     "Expected a number, found null"},
    {R"("type": "array", "element_code": 256)", "element_code", "Expected a whole number, found 256"},
    {R"("type": "array", "element": "flot")", "element", "There is no type \"flot\""},
};

INSTANTIATE_TEST_SUITE_P(EachShape, CatalogueRefusesDefault, testing::ValuesIn(bad_defaults));
