/* Watching the stand-in renderer from outside: for tools and tests, not for plug-ins. */
#ifndef KR_OBSERVE_H
#define KR_OBSERVE_H

#include "kr.h"

KR_DECLS_BEGIN

/* Called for each message, whatever the console flags say. `severity` is the message's KR_MSG_... bit. */
typedef void (*KtMsgObserver)(int severity, const char* text, void* user);

/* Sets the one observer; null: none. It stays over KrEnd(). */
KR_EXPORT void KrMsgSetObserver(KtMsgObserver observer, void* user);

/* The flags last given to KrMsgSetConsoleFlags(). */
KR_EXPORT int KrMsgGetConsoleFlags(void);

/* --- Where metadata was written ---------------------------------------------------------------------- */

/* A place in a text file; line and column count from 1, and 0 is unknown. The file's name lives until KrEnd(); null
 * when the renderer itself is meant. */
typedef struct KtPlace
{
    const char* file;
    unsigned line;
    unsigned column;
} KtPlace;

/* Where the value in force of one key of an entry (param null) or of a parameter was written: the last load. What a
 * plug-in declares has its source, without a line. False, and *place untouched, when there is no such key. */
KR_EXPORT bool KrObserveMetaDataPlace(const KtNodeEntry* entry, const char* param, const char* key,
                                      KtPlace* place);

/* The last table of an entry (param null), or of one of its parameters, in a metadata file; without one the source of
 * the entry. False, and *place untouched, when there is no such parameter. */
KR_EXPORT bool KrObserveTablePlace(const KtNodeEntry* entry, const char* param, KtPlace* place);

/* Why something in a metadata file was left out. */
enum
{
    KR_LEFT_OUT_UNREADABLE = 0, /* the whole file: it cannot be read */
    KR_LEFT_OUT_SYNTAX = 1,     /* the whole file: it is no TOML */
    KR_LEFT_OUT_TWICE = 2,      /* the whole file: a key or table is there twice */
    KR_LEFT_OUT_ENTRY = 3,      /* a table: there is no such entry */
    KR_LEFT_OUT_PARAMETER = 4,  /* a table: the entry has no such parameter */
    KR_LEFT_OUT_VALUE = 5,      /* a key: its value is of no kind that metadata has */
    KR_LEFT_OUT_MISPLACED = 6   /* a key or table that stands where no metadata can stand */
};

/* Texts live until KrEnd(); those that have no meaning for the reason are empty. */
typedef struct KtLeftOut
{
    int reason;
    KtPlace place;
    const char* entry;
    const char* param;
    const char* key;
    const char* detail; /* what the value is, what the parser or the system says */
} KtLeftOut;

/* What metadata files held that was left out since KrBegin(), in the order of loading. */
KR_EXPORT int KrObserveGetNumLeftOut(void);
/* `index` counts from 0; null when out of range. */
KR_EXPORT const KtLeftOut* KrObserveGetLeftOut(int index);

/* --- Where time goes ---------------------------------------------------------------------------------- */

/* Long pieces of work: starting the renderer, opening a plug-in and letting it declare its entries, reading a metadata
 * file, ending the renderer. */
enum
{
    KR_WORK_START = 0,
    KR_WORK_PLUGIN = 1,
    KR_WORK_METADATA = 2,
    KR_WORK_END = 3
};

/* Called when a piece of work begins (`done` false) and when it is over (`done` true). `subject` is the file; empty for
 * KR_WORK_START and KR_WORK_END. */
typedef void (*KtWorkObserver)(int work, const char* subject, bool done, void* user);

/* Sets the one observer; null: none. It stays over KrEnd(). */
KR_EXPORT void KrWorkSetObserver(KtWorkObserver observer, void* user);

KR_DECLS_END

#endif
