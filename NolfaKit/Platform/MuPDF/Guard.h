#pragma once

#include <mupdf/fitz.h>

#ifdef __cplusplus
extern "C" {
#endif

/// Calls @p work, and catches what the library throws: the only place with a setjmp, and plain C for its sake.
/// @param message  at least one byte; takes the failure's words
/// @return 0, or the library's code of the failure
int nolfa_mupdf_guard(
    fz_context *context, void (*work)(fz_context *, void *), void *argument, char *message, size_t messageSize);

#ifdef __cplusplus
}
#endif
