/* What a renderer plug-in includes to declare node entries.
 *
 * A plug-in is a shared object in a "korvan/plugins" directory that exports KrPluginDeclare(). The calls below
 * also work from any other code while the renderer runs; such entries have no file unless one is given.
 * All texts and values are copied. A null `node`, as a refused declaration gives, is passed over silently. */
#ifndef KR_PLUGIN_H
#define KR_PLUGIN_H

#include "kr.h"

KR_DECLS_BEGIN

typedef struct KtNodeDecl KtNodeDecl;

/* Defined by the plug-in; called once for each KrBegin() that loads it. */
KR_EXPORT void KrPluginDeclare(void);

/* Declares an entry. Null, after an error message, when the name is empty or taken: the first one stays. */
KR_EXPORT KtNodeDecl* KrDeclareNode(const char* name, int nodeType, int outputType);

/* Sets the file that the entry says it comes from (by default the plug-in being loaded); null: built in. */
KR_EXPORT void KrDeclareNodeFile(KtNodeDecl* node, const char* file);

/* Says where the entry's declaration was written, when that is not the plug-in itself: for tools that show places. It
 * goes for the metadata that is declared afterwards. */
KR_EXPORT void KrDeclareNodeSource(KtNodeDecl* node, const char* file);

/* Adds a parameter. A null default stays null. An array default names its element type itself.
 * False, after an error message, when the entry has a parameter of that name already. */
KR_EXPORT bool KrDeclareParam(KtNodeDecl* node, const char* name, int type, const KtParamValue* defaultValue);

/* Adds a KR_TYPE_ENUM parameter; `items` ends with a null pointer. The default is not checked. */
KR_EXPORT bool KrDeclareEnum(KtNodeDecl* node, const char* name, const char* const* items, int defaultIndex);

/* Gives a KR_TYPE_ENUM parameter that KrDeclareParam() has added its items: for one without a default. */
KR_EXPORT void KrDeclareItems(KtNodeDecl* node, const char* param, const char* const* items);

/* Sets metadata of the entry (param null) or of one parameter. A key set again keeps its place. A parameter that
 * is not declared yet gets a warning and nothing else. */
KR_EXPORT void KrDeclareMetaDataStr(KtNodeDecl* node, const char* param, const char* key, const char* value);
KR_EXPORT void KrDeclareMetaDataBool(KtNodeDecl* node, const char* param, const char* key, bool value);
KR_EXPORT void KrDeclareMetaDataFlt(KtNodeDecl* node, const char* param, const char* key, float value);

KR_DECLS_END

#endif
