// What can be wrong with a document, and the sentence for each.
#pragma once

#include "netxml/parser.h"

#include <cstdint>

namespace netxml {

// The numbers are fixed: callbacks see and store them. A callback may also store any other number.
enum class [[nodiscard]] ParseError : std::uint32_t{
    None = XML_ERROR_NONE,
    Internal = XML_ERROR_INTERNAL,
    NoMemory = XML_ERROR_MEMORY,
    DocumentEmpty = XML_ERROR_DOCUMENT_EMPTY,
    ExtraContent = XML_ERROR_DOCUMENT_END,
    InvalidCharacter = XML_ERROR_INVALID_CHARACTER,
    SemicolonRequired = XML_ERROR_REFERENCE_SEMICOLON,
    UndeclaredEntity = XML_ERROR_UNDECLARED_ENTITY,
    UnsupportedEncoding = XML_ERROR_UNSUPPORTED_ENCODING,
    StringNotStarted = XML_ERROR_STRING_NOT_STARTED,
    StringNotClosed = XML_ERROR_STRING_NOT_CLOSED,
    NamespaceDeclaration = XML_ERROR_NAMESPACE_DECLARATION,
    LessThanInAttribute = XML_ERROR_LESS_THAN_IN_ATTRIBUTE,
    AttributeRedefined = XML_ERROR_ATTRIBUTE_REDEFINED,
    CommentNotFinished = XML_ERROR_COMMENT_NOT_FINISHED,
    NoTargetName = XML_ERROR_NO_TARGET_NAME,
    InstructionNotFinished = XML_ERROR_INSTRUCTION_NOT_FINISHED,
    DeclarationNotFinished = XML_ERROR_DECLARATION_NOT_FINISHED,
    DoctypeNotFinished = XML_ERROR_DOCTYPE_NOT_FINISHED,
    CDataEndInContent = XML_ERROR_CDATA_END_IN_CONTENT,
    CDataNotFinished = XML_ERROR_CDATA_NOT_FINISHED,
    SpaceRequired = XML_ERROR_SPACE_REQUIRED,
    NameRequired = XML_ERROR_NAME_REQUIRED,
    StartTagExpected = XML_ERROR_START_TAG_EXPECTED,
    EqualRequired = XML_ERROR_EQUAL_REQUIRED,
    TagMismatch = XML_ERROR_TAG_NAME_MISMATCH,
    TagNotFinished = XML_ERROR_TAG_NOT_FINISHED,
    StandaloneValue = XML_ERROR_STANDALONE_VALUE,
    HyphenInComment = XML_ERROR_HYPHEN_IN_COMMENT,
    VersionMissing = XML_ERROR_VERSION_MISSING,
    VersionUnsupported = XML_ERROR_VERSION_UNSUPPORTED,
    PrefixNotDefined = XML_ERROR_PREFIX_NOT_DEFINED,
    EncodingSwitch = XML_ERROR_ENCODING_SWITCH,
};

// The sentence of a code, or the one for unknown codes.
const char* messageOf(ParseError error) noexcept;

}  // namespace netxml
