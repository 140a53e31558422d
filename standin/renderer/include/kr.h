/* The Korvan renderer's C interface, as far as a host plug-in calls it.
 *
 * Entries, parameters, iterators and every text they return belong to the renderer and live until KrEnd();
 * a caller copies what it wants to keep. Unless said otherwise a pointer argument must not be null. Messages
 * (KrMsg...) and arrays (KrArray...) work at any time, everything else between KrBegin() and KrEnd() only.
 * No call is thread-safe. */
#ifndef KR_H
#define KR_H

#include <stdbool.h>
#include <stdint.h>

#define KR_EXPORT __attribute__((visibility("default")))

#ifdef __cplusplus
#define KR_DECLS_BEGIN                                                                                       \
    extern "C"                                                                                               \
    {
#define KR_DECLS_END }
#else
#define KR_DECLS_BEGIN
#define KR_DECLS_END
#endif

KR_DECLS_BEGIN

/* --- Types and values ------------------------------------------------------------------------------- */

/* Data types of parameters and outputs. One byte; a code that is not listed may come from a newer renderer. */
enum
{
    KR_TYPE_BYTE = 0,
    KR_TYPE_INT = 1,
    KR_TYPE_UINT = 2,
    KR_TYPE_BOOLEAN = 3,
    KR_TYPE_FLOAT = 4,
    KR_TYPE_RGB = 5,
    KR_TYPE_RGBA = 6,
    KR_TYPE_VECTOR = 7,
    KR_TYPE_POINT = 8,
    KR_TYPE_POINT2 = 9,
    KR_TYPE_STRING = 10,
    KR_TYPE_POINTER = 11,
    KR_TYPE_NODE = 12,
    KR_TYPE_ARRAY = 13,
    KR_TYPE_MATRIX = 14,
    KR_TYPE_ENUM = 15,
    KR_TYPE_UNDEFINED = 255
};

/* Kinds of node entries; also the bits of an iterator's mask. */
enum
{
    KR_NODE_CAMERA = 0x02,
    KR_NODE_LIGHT = 0x04,
    KR_NODE_SHAPE = 0x08,
    KR_NODE_SHADER = 0x10
};

typedef struct KtRgb
{
    float r, g, b;
} KtRgb;
typedef struct KtRgba
{
    float r, g, b, a;
} KtRgba;
typedef struct KtVector
{
    float x, y, z;
} KtVector;
typedef struct KtPoint
{
    float x, y, z;
} KtPoint;
typedef struct KtPoint2
{
    float x, y;
} KtPoint2;
typedef struct KtMatrix
{
    float m[4][4];
} KtMatrix; /* row by row */
typedef struct KtArray KtArray;

/* One parameter value: 16 bytes, the member that counts is told by the parameter's type. To zero all of it in C++
 * write KtParamValue(): "= {}" is bound to clear the first member only. */
typedef union KtParamValue
{
    uint8_t byte_;
    int32_t int_; /* also KR_TYPE_ENUM: index into the enumeration */
    uint32_t uint_;
    bool bool_;
    float flt;
    KtRgb rgb;
    KtRgba rgba;
    KtVector vec;
    KtPoint pnt;
    KtPoint2 pnt2;
    const char* str; /* null counts as empty */
    void* ptr;       /* KR_TYPE_POINTER, KR_TYPE_NODE */
    KtArray* array;
    const KtMatrix* mtx;
} KtParamValue;

/* An array: `nelements` elements of `type` for each of `nkeys` motion keys, key after key. */
struct KtArray
{
    uint32_t nelements;
    uint8_t nkeys;
    uint8_t type;
    void* data;
};

typedef struct KtNodeEntry KtNodeEntry;
typedef struct KtParamEntry KtParamEntry;
typedef struct KtNodeEntryIterator KtNodeEntryIterator;
typedef struct KtParamIterator KtParamIterator;
typedef struct KtMetaDataIterator KtMetaDataIterator;

/* One metadata item. `type` is KR_TYPE_STRING, KR_TYPE_BOOLEAN or KR_TYPE_FLOAT. */
typedef struct KtMetaDataEntry
{
    const char* name;
    KtParamValue value;
    uint8_t type;
} KtMetaDataEntry;

/* --- Start and end ---------------------------------------------------------------------------------- */

/* Starts the renderer with its built-in entries. Nested calls count; only the first does anything. */
KR_EXPORT void KrBegin(void);

/* Ends it: every entry, text and plug-in is freed. A call without KrBegin() does nothing. */
KR_EXPORT void KrEnd(void);

/* Loads the plug-ins (*.so, by name) of one directory or of a ':'-separated list. Null or empty: nothing.
 * A plug-in that does not load is reported as an error and skipped, a directory that cannot be read as a warning;
 * a plug-in that is loaded already is passed over. */
KR_EXPORT void KrLoadPlugins(const char* path);

/* Loads one .mtd file (TOML). False after an error message with file, line and column, and then the file
 * contributes nothing. Tables of unknown entries or parameters are reported as warnings and left out. */
KR_EXPORT bool KrMetaDataLoadFile(const char* file);

/* --- Node entries ----------------------------------------------------------------------------------- */

/* Entries whose kind is in `mask`, in the order of their declaration. Destroy the iterator after use. */
KR_EXPORT KtNodeEntryIterator* KrUniverseGetNodeEntryIterator(int mask);
KR_EXPORT bool KrNodeEntryIteratorFinished(const KtNodeEntryIterator* iterator);
KR_EXPORT const KtNodeEntry* KrNodeEntryIteratorGetNext(KtNodeEntryIterator* iterator);
KR_EXPORT void KrNodeEntryIteratorDestroy(KtNodeEntryIterator* iterator);

/* The entry of that name, or null. */
KR_EXPORT const KtNodeEntry* KrNodeEntryLookUp(const char* name);
KR_EXPORT const char* KrNodeEntryGetName(const KtNodeEntry* entry);
/* One of KR_NODE_... */
KR_EXPORT int KrNodeEntryGetType(const KtNodeEntry* entry);
/* One of KR_TYPE_... */
KR_EXPORT int KrNodeEntryGetOutputType(const KtNodeEntry* entry);
/* The plug-in's path; null for an entry built into the renderer. */
KR_EXPORT const char* KrNodeEntryGetFilename(const KtNodeEntry* entry);

KR_EXPORT int KrNodeEntryGetNumParams(const KtNodeEntry* entry);
/* `index` counts from 0; null when out of range. */
KR_EXPORT const KtParamEntry* KrNodeEntryGetParameter(const KtNodeEntry* entry, int index);
KR_EXPORT KtParamIterator* KrNodeEntryGetParamIterator(const KtNodeEntry* entry);
KR_EXPORT bool KrParamIteratorFinished(const KtParamIterator* iterator);
KR_EXPORT const KtParamEntry* KrParamIteratorGetNext(KtParamIterator* iterator);
KR_EXPORT void KrParamIteratorDestroy(KtParamIterator* iterator);

KR_EXPORT const char* KrParamGetName(const KtParamEntry* param);
/* One of KR_TYPE_..., or a code of a newer renderer. */
KR_EXPORT int KrParamGetType(const KtParamEntry* param);
/* The declared default; null when none was declared. */
KR_EXPORT const KtParamValue* KrParamGetDefault(const KtParamEntry* param);
/* Item names of an enumeration, ended by a null pointer; null for parameters of other types. */
KR_EXPORT const char** KrParamGetEnum(const KtParamEntry* param);

/* --- Metadata --------------------------------------------------------------------------------------- */

/* Each asks for one key of an entry (param null) or of one of its parameters. False, and *value untouched,
 * when the key is absent or holds a value of another type. */
KR_EXPORT bool KrMetaDataGetStr(const KtNodeEntry* entry, const char* param, const char* key,
                                const char** value);
KR_EXPORT bool KrMetaDataGetBool(const KtNodeEntry* entry, const char* param, const char* key, bool* value);
KR_EXPORT bool KrMetaDataGetFlt(const KtNodeEntry* entry, const char* param, const char* key, float* value);

/* Items of an entry (param null) or of a parameter, in the order in which they were first set. */
KR_EXPORT KtMetaDataIterator* KrNodeEntryGetMetaDataIterator(const KtNodeEntry* entry, const char* param);
KR_EXPORT bool KrMetaDataIteratorFinished(const KtMetaDataIterator* iterator);
KR_EXPORT const KtMetaDataEntry* KrMetaDataIteratorGetNext(KtMetaDataIterator* iterator);
KR_EXPORT void KrMetaDataIteratorDestroy(KtMetaDataIterator* iterator);

/* --- Arrays ----------------------------------------------------------------------------------------- */

/* A zeroed array; destroy it with KrArrayDestroy(). Null, after an error message, when there is no memory for it.
 * The texts of an array of texts stay the caller's. */
KR_EXPORT KtArray* KrArrayAllocate(uint32_t nelements, uint8_t nkeys, uint8_t type);
KR_EXPORT void KrArrayDestroy(KtArray* array);

/* Element `index` of the whole data (all keys). Out of range or of another type: an error message that names
 * the caller's file and line, and zero (for texts the empty text). */
KR_EXPORT uint8_t KrArrayGetByteFunc(const KtArray* array, uint32_t index, const char* file, int line);
KR_EXPORT int32_t KrArrayGetIntFunc(const KtArray* array, uint32_t index, const char* file, int line);
KR_EXPORT uint32_t KrArrayGetUIntFunc(const KtArray* array, uint32_t index, const char* file, int line);
KR_EXPORT bool KrArrayGetBoolFunc(const KtArray* array, uint32_t index, const char* file, int line);
KR_EXPORT float KrArrayGetFltFunc(const KtArray* array, uint32_t index, const char* file, int line);
KR_EXPORT KtRgb KrArrayGetRGBFunc(const KtArray* array, uint32_t index, const char* file, int line);
KR_EXPORT KtRgba KrArrayGetRGBAFunc(const KtArray* array, uint32_t index, const char* file, int line);
KR_EXPORT KtVector KrArrayGetVecFunc(const KtArray* array, uint32_t index, const char* file, int line);
KR_EXPORT KtPoint KrArrayGetPntFunc(const KtArray* array, uint32_t index, const char* file, int line);
KR_EXPORT KtPoint2 KrArrayGetPnt2Func(const KtArray* array, uint32_t index, const char* file, int line);
KR_EXPORT const char* KrArrayGetStrFunc(const KtArray* array, uint32_t index, const char* file, int line);
KR_EXPORT KtMatrix KrArrayGetMtxFunc(const KtArray* array, uint32_t index, const char* file, int line);

/* --- Messages --------------------------------------------------------------------------------------- */

/* Bits of the console flags. A message is printed on standard error when its bit is set. */
enum
{
    KR_MSG_INFO = 0x0001,
    KR_MSG_WARNING = 0x0002,
    KR_MSG_ERROR = 0x0004
};

KR_EXPORT void KrMsgSetConsoleFlags(int flags);
KR_EXPORT void KrMsgInfo(const char* format, ...) __attribute__((format(printf, 1, 2)));
KR_EXPORT void KrMsgWarning(const char* format, ...) __attribute__((format(printf, 1, 2)));
KR_EXPORT void KrMsgError(const char* format, ...) __attribute__((format(printf, 1, 2)));

KR_DECLS_END

#endif
