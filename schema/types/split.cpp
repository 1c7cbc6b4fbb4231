// Splitting a text at a separator.
#include "netxml/schema.h"

#include <cstring>

char* Schema_GetFirstSplitStr(const char* text, const char* separator, uint32_t itemSize,
                              char* itemBuf, Schema_SplitCtx* ctx)
{
    if (!itemBuf || !ctx) return nullptr;
    if (itemSize != 0) *itemBuf = '\0';
    *ctx = Schema_SplitCtx{itemBuf, text, separator, itemSize};
    return Schema_GetNextSplitStr(ctx);
}

// Kept: after an item that was cut the cursor stands inside of it, less one byte.
char* Schema_GetNextSplitStr(Schema_SplitCtx* ctx)
{
    if (!ctx || !ctx->cursor || *ctx->cursor == '\0' || !ctx->item || !ctx->separator)
        return nullptr;
    if (ctx->itemSize < 2) return nullptr;  // no byte would fit, and there would be no end
    const char* found = std::strstr(ctx->cursor, ctx->separator);
    const std::size_t room = ctx->itemSize - 1;
    std::size_t size =
        found ? static_cast<std::size_t>(found - ctx->cursor) : strnlen(ctx->cursor, room);
    if (size > room) size = room;
    std::memcpy(ctx->item, ctx->cursor, size);
    ctx->item[size] = '\0';
    ctx->cursor += size + (found ? 1 : 0);
    return ctx->item;
}
