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

KR_DECLS_END

#endif
