#include "session.h"

#include "framing.h"
#include "operations.h"
#include "prolog.h"
#include "reply.h"
#include "tree.h"

#include <netxml/parser.h>
#include <stdio.h>
#include <stdlib.h>
#include <string.h>

static const char kBase10[] = "urn:ietf:params:netconf:base:1.0";
static const char kBase11[] = "urn:ietf:params:netconf:base:1.1";

static const char* const kCapabilities[] = {
    kBase10,
    kBase11,
    "urn:ietf:params:netconf:capability:writable-running:1.0",
    "urn:ietf:params:netconf:capability:candidate:1.0",
    "urn:ietf:params:netconf:capability:rollback-on-error:1.0",
    "urn:ietf:params:netconf:capability:validate:1.1",
    SYSTEM_NAMESPACE,
};
enum { CAPABILITY_COUNT = sizeof kCapabilities / sizeof kCapabilities[0] };

/* A message as a tree, with texts in one piece; NULL when it is not well-formed, is not in UTF-8,
 * has a document type declaration, or memory runs out. */
static XML_DOM_Node* treeOf(const FrameMessage* message)
{
    if (prologHasDoctype(&message->list)) return NULL;
    XML_DOM_Node* tree = XML_DOM_BuildTreeByMemList(&message->list, 0, NULL);
    if (tree && XML_DOM_GetEncoding(tree) == XML_ENCODING_UTF_8 && joinTexts(tree)) return tree;
    XML_DOM_DelNode(tree);
    return NULL;
}

/* ------------------------------------------------------------------------------------------------
 * Hello
 */

static XML_DOM_Node* helloTree(unsigned long id)
{
    char text[32];
    XML_DOM_Node* hello = makeElement("hello", BASE_NAMESPACE);
    XML_DOM_Node* capabilities = hello ? addElement(hello, "capabilities") : NULL;
    bool complete = capabilities && XML_DOM_SetRoot(hello) == XML_RET_OK;
    for (unsigned i = 0; complete && i < CAPABILITY_COUNT; ++i)
        complete = addLeaf(capabilities, "capability", kCapabilities[i]);
    snprintf(text, sizeof text, "%lu", id);
    if (complete && addLeaf(hello, "session-id", text)) return hello;
    XML_DOM_DelNode(hello);
    return NULL;
}

static bool sendHello(const Session* session)
{
    XML_DOM_Node* hello = helloTree(session->id);
    char* text = NULL;
    size_t length = 0;
    const bool sent = hello && XML_DOM_TranslateStr(hello, 0, &text, &length) == XML_RET_OK &&
                      frameWrite(session->output, false, text, length);
    free(text);
    XML_DOM_DelNode(hello);
    return sent;
}

static bool hasCapability(const XML_DOM_Node* hello, const char* wanted)
{
    const XML_DOM_Node* capability = firstElement(childNamed(hello, "capabilities"));
    while (capability && strcmp(textOf(capability), wanted) != 0)
        capability = nextElement(capability);
    return capability != NULL;
}

/* What is wrong with the client's hello; NULL if nothing is. Both know :base:1.1 if it does. */
static const char* checkHello(const Session* session, const XML_DOM_Node* hello, bool* chunked)
{
    Schema_ValidateResult result;
    if (!hello || !hasName(hello, BASE_NAMESPACE, "hello")) return "the client sent no hello";
    if (Schema_ValidateXml(hello, session->schemas, &result) != XML_RET_OK) return "no memory";
    if (result.code != SCHEMA_VALID) return "the client's hello is not valid";
    if (childNamed(hello, "session-id")) return "the client's hello has a session-id";
    *chunked = hasCapability(hello, kBase11);
    return *chunked || hasCapability(hello, kBase10) ? NULL : "the client has no base we know";
}

/* ------------------------------------------------------------------------------------------------
 * Messages
 */

static const char* sentenceOf(FrameResult result)
{
    switch (result) {
    case FRAME_MALFORMED: return "the framing is malformed";
    case FRAME_TOO_LONG: return "the message is too long";
    case FRAME_FAILED: return "the input cannot be read";
    default: return NULL;
    }
}

static const char* receiveHello(const Session* session, FrameReader* reader)
{
    FrameMessage message;
    const FrameResult result = frameRead(reader, &message);
    if (result == FRAME_END) return "the client sent no hello";
    if (result != FRAME_MESSAGE) return sentenceOf(result);
    XML_DOM_Node* hello = treeOf(&message);
    const char* problem = checkHello(session, hello, &reader->chunked);
    XML_DOM_DelNode(hello);
    frameFree(&message);
    return problem;
}

/* Answers one message. One that is not well-formed, or no rpc, can be answered since :base:1.1: the
 * error is new there, and must not be sent to others. */
static const char* answer(const Session* session, const FrameMessage* message, bool chunked,
                          bool* closing)
{
    XML_DOM_Node* rpc = treeOf(message);
    if (!chunked && !operationIsRpc(rpc)) {
        const char* sentence = rpc ? "a message is no rpc" : "a message is malformed";
        XML_DOM_DelNode(rpc);
        return sentence;
    }
    XML_DOM_Node* body = operationRun(rpc, session->schemas, session->store, closing);
    size_t length = 0;
    char* text = replyText(&message->list, body, &length);
    const bool sent = text && frameWrite(session->output, chunked, text, length);
    const char* problem = !text ? "no memory for a reply" : "the output cannot be written";
    free(text);
    XML_DOM_DelNode(body);
    XML_DOM_DelNode(rpc);
    return sent ? NULL : problem;
}

static const char* serve(const Session* session, FrameReader* reader)
{
    const char* problem = receiveHello(session, reader);
    bool closing = false;
    while (!problem && !closing) {
        FrameMessage message;
        const FrameResult result = frameRead(reader, &message);
        if (result != FRAME_MESSAGE) return sentenceOf(result);
        problem = answer(session, &message, reader->chunked, &closing);
        frameFree(&message);
    }
    return problem;
}

const char* sessionRun(const Session* session)
{
    FrameReader reader = {session->input, false, NULL, {0, 0, 0, 0}};
    if (!sendHello(session)) return "the hello cannot be sent";
    const char* problem = serve(session, &reader);
    frameEnd(&reader);
    return problem;
}
