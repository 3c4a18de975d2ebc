#include "Platform/MuPDF/Guard.h"

#include <stdio.h>

int nolfa_mupdf_guard(
    fz_context *context, void (*work)(fz_context *, void *), void *argument, char *message, size_t messageSize)
{
    int code = FZ_ERROR_NONE;
    fz_var(code);
    fz_try(context)
    {
        work(context, argument);
    }
    fz_catch(context)
    {
        code = fz_caught(context);
        if (code == FZ_ERROR_NONE)
            code = FZ_ERROR_GENERIC;
        snprintf(message, messageSize, "%s", fz_caught_message(context));
    }
    return code;
}
