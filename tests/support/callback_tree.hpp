// A tree built through the exported callbacks, as a caller with a handler of its own builds one.
#pragma once

#include "netxml/netxml.h"

#include <array>

// What was built belongs to whoever takes it from root().
class CallbackTree {
public:
    CallbackTree()
    {
        builder_.nameConverter =
            XML_IO_MemOutStreamCreate(XML_ENCODING_UTF_8, XML_ENCODING_GB18030);
        builder_.valueConverter =
            XML_IO_MemOutStreamCreate(XML_ENCODING_UTF_8, XML_ENCODING_GB18030);
        builder_.errorText = error_.data();
        builder_.errorTextSize = static_cast<uint32_t>(error_.size());
        handler_.startElementNs = XML_SAX_StartElementNs;
        handler_.endElementNs = XML_SAX_EndElementNs;
        handler_.characters = XML_SAX_Characters;
        handler_.cdata = XML_SAX_CData;
        handler_.endDocument = XML_SAX_EndDocument;
        handler_.error = XML_SAX_Error;
        handler_.userData = &builder_;
    }
    CallbackTree(const CallbackTree&) = delete;
    CallbackTree& operator=(const CallbackTree&) = delete;
    ~CallbackTree()
    {
        XML_IO_OutStreamDestroy(builder_.nameConverter);
        XML_IO_OutStreamDestroy(builder_.valueConverter);
    }

    const XML_SAX_Handler* handler() const { return &handler_; }
    XML_DOM_Node* root() const { return builder_.root; }
    const char* error() const { return error_.data(); }

private:
    std::array<char, 512> error_{};
    XML_SAX_Builder builder_{};
    XML_SAX_Handler handler_{};
};
