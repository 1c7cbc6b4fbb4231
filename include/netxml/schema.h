/**
 * @file
 * Schemas as plain records, and the validation of trees against them.
 *
 * A schema is a graph of the records below. The caller builds it, by hand or with generated code:
 * one static record a declaration. Top-level declarations are registered in a ::Schema_Root, local
 * ones are reached through the records that hold them. Then Schema_ValidateXml() checks a tree and
 * Schema_GetErrorDesc() makes a sentence of what it found:
 *
 * @code
 * static Schema_ElementDecl mtu;  // <xs:element name="mtu" type="xs:unsignedShort"/>
 * mtu.name = "mtu";
 * mtu.type = Schema_BLDIN_unsignedShort();
 * mtu.typeKind = SCHEMA_KIND_SIMPLE_TYPE;
 * mtu.minOccurs = mtu.maxOccurs = 1;
 *
 * Schema_Root root;
 * Schema_InitRoot(&root);
 * const Schema_Object top = {&mtu, SCHEMA_KIND_ELEMENT};
 * Schema_RegTopObject(&root, &top);
 *
 * Schema_ValidateResult result;
 * char sentence[1024];
 * if (Schema_ValidateXml(documentElement, &root, &result) == XML_RET_OK && result.code != 0)
 *     Schema_GetErrorDesc(&result, sizeof sentence, sentence);
 *
 * Schema_DeregTopObject(&root, &top);
 * Schema_ExitRoot(&root);
 * @endcode
 *
 * What holds for every record:
 *
 * - A record owns nothing. Strings, arrays and other records belong to whoever built them and must
 *   live as long as they are registered or reachable from a registered record. The library never
 *   writes to a caller's record, except to the ::Schema_Root and to a ::Schema_ExtType.
 * - Zero is the usual value: fill the fields that matter, leave the others zero. The exception is
 *   `maxOccurs`, which is 1 for a particle that occurs once and ::SCHEMA_UNBOUNDED for one without
 *   a limit; 0 is for particles that must not occur.
 * - Strings are NUL-terminated and in the encoding of the tree (see base.h; ASCII is the same in
 *   all). A NULL namespace name means no namespace and equals the empty string.
 * - An array comes with its count; the pointer may be NULL while the count is 0.
 * - A cycle of references, bases, groups or member types is an error of the schema: validation that
 *   meets it ends in ::XML_RET_FAIL. (An element may hold itself through its content: that is
 *   recursion of documents and allowed.)
 *
 * The rules follow XML Schema 1.0 (W3C, parts 1 and 2) in their terms, not in every verdict;
 * docs/validation.md says where they differ.
 *
 * Threads: a root and its records are read only while validating, so any number of threads may
 * validate against one root. Registering in a root must not run beside anything else on that root.
 * The records of the built-in types are filled once, by whichever root is initialised first.
 */
#ifndef NETXML_SCHEMA_H
#define NETXML_SCHEMA_H

#include "netxml/base.h"

#ifdef __cplusplus
extern "C" {
#endif

/** The namespace name of XML Schema. */
#define XML_NAMESPACE_SCHEMA "http://www.w3.org/2001/XMLSchema"
/** The namespace name of the attributes that a document uses to speak about its schema. */
#define XML_NAMESPACE_SCHEMA_INSTANCE "http://www.w3.org/2001/XMLSchema-instance"

/** A `maxOccurs` without a limit: no document reaches it. */
#define SCHEMA_UNBOUNDED UINT32_C(0xFFFFFFFF)

/* ------------------------------------------------------------------------------------------------
 * Kinds and small enumerations, all 32-bit
 */

/** What kind of record a pointer leads to. No other numbers are assigned. */
typedef uint32_t Schema_ObjectKind;
/** The values of ::Schema_ObjectKind. */
enum {
    SCHEMA_KIND_WILDCARD = 2,            /**< ::Schema_Wildcard; a particle */
    SCHEMA_KIND_ATTRIBUTE = 5,           /**< ::Schema_AttributeDecl; may be registered */
    SCHEMA_KIND_ATTRIBUTE_GROUP = 6,     /**< ::Schema_AttributeGroup; may be registered */
    SCHEMA_KIND_COMPLEX_RESTRICTION = 7, /**< ::Schema_Derivation: complexContent, restriction */
    SCHEMA_KIND_COMPLEX_EXTENSION = 8,   /**< ::Schema_Derivation: complexContent, extension */
    SCHEMA_KIND_COMPLEX_TYPE = 9,        /**< ::Schema_ComplexType; may be registered */
    SCHEMA_KIND_MODEL_GROUP = 10,        /**< ::Schema_ModelGroup; a particle */
    SCHEMA_KIND_ELEMENT = 14,            /**< ::Schema_ElementDecl; a particle; may be registered */
    SCHEMA_KIND_SIMPLE_RESTRICTION = 26, /**< ::Schema_Derivation: simpleContent, restriction */
    SCHEMA_KIND_SIMPLE_EXTENSION = 27,   /**< ::Schema_Derivation: simpleContent, extension */
    SCHEMA_KIND_SIMPLE_TYPE = 29         /**< ::Schema_SimpleType; may be registered */
};

/** How a model group combines its particles. */
typedef uint32_t Schema_Compositor;
/** The values of ::Schema_Compositor. */
enum {
    SCHEMA_COMPOSITOR_ALL = 11,     /**< each at most once, in any order */
    SCHEMA_COMPOSITOR_CHOICE = 12,  /**< one of them a repetition */
    SCHEMA_COMPOSITOR_SEQUENCE = 13 /**< all of them in order, a repetition */
};

/** Whether a local declaration is matched with its namespace. */
typedef uint32_t Schema_Form;
/** The values of ::Schema_Form. */
enum {
    SCHEMA_FORM_DEFAULT = 0,    /**< as the registry says */
    SCHEMA_FORM_QUALIFIED = 1,  /**< with the declaration's namespace */
    SCHEMA_FORM_UNQUALIFIED = 2 /**< without a namespace */
};

/** Whether an attribute must, may or must not stand. */
typedef uint32_t Schema_AttributeUse;
/** The values of ::Schema_AttributeUse. */
enum {
    SCHEMA_USE_OPTIONAL = 0,   /**< it may stand */
    SCHEMA_USE_PROHIBITED = 1, /**< it must not stand */
    SCHEMA_USE_REQUIRED = 2    /**< it must stand */
};

/** How strictly what matches a wildcard is checked. */
typedef uint32_t Schema_ProcessContents;
/** The values of ::Schema_ProcessContents. */
enum {
    SCHEMA_PROCESS_STRICT = 0, /**< a top-level declaration must exist, and is applied */
    SCHEMA_PROCESS_LAX = 1,    /**< a top-level declaration is applied if it exists */
    SCHEMA_PROCESS_SKIP = 2    /**< nothing is checked */
};

/**
 * A built-in simple type: it selects the lexical rule, the printed name, and how facets compare.
 *
 * The types without a record (Schema_BLDIN_...()) have no rule: a record with such a kind refuses
 * every value that is not empty.
 */
typedef uint32_t Schema_BuiltinKind;
/** The values of ::Schema_BuiltinKind. */
enum {
    SCHEMA_BUILTIN_NONE = 0,                  /**< not built in: derived, union, or network type */
    SCHEMA_BUILTIN_ANY_SIMPLE_TYPE = 1,       /**< xs:anySimpleType */
    SCHEMA_BUILTIN_ANY_TYPE = 2,              /**< no rule */
    SCHEMA_BUILTIN_BYTE = 3,                  /**< xs:byte */
    SCHEMA_BUILTIN_SHORT = 4,                 /**< xs:short */
    SCHEMA_BUILTIN_UNSIGNED_BYTE = 5,         /**< xs:unsignedByte */
    SCHEMA_BUILTIN_UNSIGNED_SHORT = 6,        /**< xs:unsignedShort */
    SCHEMA_BUILTIN_INT = 7,                   /**< xs:int */
    SCHEMA_BUILTIN_LONG = 8,                  /**< xs:long */
    SCHEMA_BUILTIN_UNSIGNED_INT = 9,          /**< xs:unsignedInt */
    SCHEMA_BUILTIN_UNSIGNED_LONG = 10,        /**< xs:unsignedLong */
    SCHEMA_BUILTIN_INTEGER = 11,              /**< limited to 64 bits, like the four that follow */
    SCHEMA_BUILTIN_POSITIVE_INTEGER = 12,     /**< xs:positiveInteger */
    SCHEMA_BUILTIN_NON_POSITIVE_INTEGER = 13, /**< xs:nonPositiveInteger */
    SCHEMA_BUILTIN_NEGATIVE_INTEGER = 14,     /**< xs:negativeInteger */
    SCHEMA_BUILTIN_NON_NEGATIVE_INTEGER = 15, /**< xs:nonNegativeInteger */
    SCHEMA_BUILTIN_DECIMAL = 16,              /**< no rule */
    SCHEMA_BUILTIN_DOUBLE = 17,               /**< no rule */
    SCHEMA_BUILTIN_FLOAT = 18,                /**< no rule */
    SCHEMA_BUILTIN_DURATION = 19,             /**< xs:duration */
    SCHEMA_BUILTIN_DATE_TIME = 20,            /**< printed "datetime" */
    SCHEMA_BUILTIN_DATE = 21,                 /**< xs:date */
    SCHEMA_BUILTIN_TIME = 22,                 /**< xs:time */
    SCHEMA_BUILTIN_G_YEAR = 23,               /**< xs:gYear */
    SCHEMA_BUILTIN_G_MONTH = 24,              /**< xs:gMonth */
    SCHEMA_BUILTIN_G_DAY = 25,                /**< xs:gDay */
    SCHEMA_BUILTIN_G_YEAR_MONTH = 26,         /**< xs:gYearMonth */
    SCHEMA_BUILTIN_G_MONTH_DAY = 27,          /**< xs:gMonthDay */
    SCHEMA_BUILTIN_STRING = 28,               /**< xs:string */
    SCHEMA_BUILTIN_BOOLEAN = 29,              /**< xs:boolean */
    SCHEMA_BUILTIN_HEX_BINARY = 30,           /**< xs:hexBinary */
    SCHEMA_BUILTIN_BASE64_BINARY = 31,        /**< xs:base64Binary */
    SCHEMA_BUILTIN_ANY_URI = 32,              /**< xs:anyURI */
    SCHEMA_BUILTIN_QNAME = 33,                /**< xs:QName */
    SCHEMA_BUILTIN_NOTATION = 34, /**< the kind of the record `language`; printed "NOTATION" */
    SCHEMA_BUILTIN_NORMALIZED_STRING = 35, /**< no rule, like all that follow */
    SCHEMA_BUILTIN_TOKEN = 36,             /**< xs:token */
    SCHEMA_BUILTIN_LANGUAGE = 37,          /**< no rule; the record `language` has kind 34 */
    SCHEMA_BUILTIN_NMTOKEN = 38,           /**< xs:NMTOKEN */
    SCHEMA_BUILTIN_NMTOKENS = 39,          /**< xs:NMTOKENS */
    SCHEMA_BUILTIN_NAME = 40,              /**< xs:Name */
    SCHEMA_BUILTIN_NCNAME = 41,            /**< xs:NCName */
    SCHEMA_BUILTIN_ID = 42,                /**< xs:ID */
    SCHEMA_BUILTIN_IDREF = 43,             /**< xs:IDREF */
    SCHEMA_BUILTIN_ENTITY = 44,            /**< xs:ENTITY */
    SCHEMA_BUILTIN_IDREFS = 45,            /**< xs:IDREFS */
    SCHEMA_BUILTIN_ENTITIES = 46,          /**< printed "ENTITYS" */
    SCHEMA_BUILTIN_LAST = 47               /**< without a name */
};

/** A facet; see Schema_CheckFacet() for what each one tests. */
typedef uint32_t Schema_FacetKind;
/** The values of ::Schema_FacetKind. */
enum {
    SCHEMA_FACET_ENUMERATION = 15,     /**< one of the values that are allowed */
    SCHEMA_FACET_FRACTION_DIGITS = 16, /**< always passes */
    SCHEMA_FACET_LENGTH = 17,          /**< bytes, exactly */
    SCHEMA_FACET_MAX_EXCLUSIVE = 18,   /**< below */
    SCHEMA_FACET_MAX_INCLUSIVE = 19,   /**< at most */
    SCHEMA_FACET_MAX_LENGTH = 20,      /**< bytes, at most */
    SCHEMA_FACET_MIN_EXCLUSIVE = 21,   /**< above */
    SCHEMA_FACET_MIN_INCLUSIVE = 22,   /**< at least */
    SCHEMA_FACET_MIN_LENGTH = 23,      /**< bytes, at least */
    SCHEMA_FACET_PATTERN = 24,         /**< a POSIX extended expression */
    SCHEMA_FACET_TOTAL_DIGITS = 25     /**< digits, exactly */
};

/** What a validation found; see Schema_GetErrorDesc() for the sentences. */
typedef uint32_t Schema_ErrorCode;
/** The values of ::Schema_ErrorCode. */
enum {
    SCHEMA_VALID = 0,                    /**< no violation */
    SCHEMA_ERROR_ELEMENT_EXPECTED = 1,   /**< another element stands where one must come */
    SCHEMA_ERROR_ATTRIBUTE_MISSING = 2,  /**< a required attribute is absent */
    SCHEMA_ERROR_ELEMENT_VALUE = 3,      /**< a text fails its type, facets or fixed value */
    SCHEMA_ERROR_ATTRIBUTE_VALUE = 4,    /**< an attribute's value fails its type or fixed value */
    SCHEMA_ERROR_OCCURRENCES = 5,        /**< an element or group occurs too rarely or too often */
    SCHEMA_ERROR_ELEMENT_UNEXPECTED = 6, /**< an element is not allowed where it stands */
    SCHEMA_ERROR_ATTRIBUTE_UNEXPECTED = 7, /**< an attribute is prohibited or not declared */
    SCHEMA_ERROR_CHILDREN = 8,             /**< too few elements for a wildcard */
    SCHEMA_ERROR_TEXT = 9,                 /**< text where there may be none */
    SCHEMA_ERROR_CHILD = 10,               /**< elements where there may be none */
    SCHEMA_ERROR_CHILDREN_MISSING = 11,    /**< none of a choice's elements stands */
    SCHEMA_ERROR_DOCUMENT_ELEMENT = 12     /**< no declaration for the document element */
};

/* ------------------------------------------------------------------------------------------------
 * Simple types
 */

/** One facet of a restricted simple type. */
typedef struct Schema_Facet {
    const char* value;           /**< a bound, a length, a pattern or an enumerated literal */
    Schema_FacetKind kind;       /**< what is tested */
    Schema_BuiltinKind baseKind; /**< by whose rules values compare */
} Schema_Facet;

/**
 * A simple type: what the text of an element or the value of an attribute may be.
 *
 * It is one of four, told apart in this order:
 *
 * - a union, when `memberCount` is above 1: a value is valid if one member accepts it;
 * - a built-in type, when `kind` is not 0: the lexical rule of that kind (Schema_CheckBaseType());
 * - a network type, when Schema_FoundZynBltInType() finds its name and namespace;
 * - otherwise a restriction: the value must be valid for the base, `members[0]`, and satisfy the
 *   facets in their order. Of several enumerations one must match, every other facet must pass.
 *
 * There are no list types.
 */
typedef struct Schema_SimpleType {
    const struct Schema_SimpleType* const* members; /**< the members of a union in the order in
                                                         which they are tried, or the base alone */
    const Schema_Facet* facets;                     /**< in the order in which they are tested */
    const char* name;                               /**< local name; the key of a network type */
    const char* namespaceName;                      /**< its namespace name, or NULL */
    Schema_BuiltinKind kind;                        /**< 0 unless built in */
    uint32_t facetCount;                            /**< of `facets` */
    uint32_t memberCount;                           /**< above 1 for a union; else 1, or not set */
    uint16_t flags;                                 /**< not read; 0 */
} Schema_SimpleType;

/* ------------------------------------------------------------------------------------------------
 * Declarations
 */

/** A reference to a record with its kind: for registration, and as a particle of a model group. */
typedef struct Schema_Object {
    const void* def;        /**< the record */
    Schema_ObjectKind kind; /**< what `def` leads to */
} Schema_Object;

/** An element: a top-level declaration, a local one, or a reference to a top-level one. */
typedef struct Schema_ElementDecl {
    const struct Schema_ElementDecl* ref; /**< when set, this is a reference: only `minOccurs` and
                                               `maxOccurs` count, the rest is taken from there */
    const char* name;                     /**< local name */
    const char* namespaceName;            /**< its namespace name, or NULL */
    const char* substitutionGroupName; /**< of the head that this element may stand for, or NULL */
    const char* substitutionGroupNamespace; /**< the namespace name of the head */
    const void* type;   /**< ::Schema_SimpleType or ::Schema_ComplexType as `typeKind` says; NULL:
                             the element is not checked at all */
    const char* value;  /**< the fixed text, when `fixed` is 1 */
    uint32_t minOccurs; /**< how often at least */
    uint32_t maxOccurs; /**< how often at most */
    Schema_ObjectKind typeKind; /**< ::SCHEMA_KIND_SIMPLE_TYPE or ::SCHEMA_KIND_COMPLEX_TYPE */
    Schema_Form form;           /**< for local declarations: with or without the namespace */
    uint32_t fixed;             /**< 1: the text must equal `value` */
    uint16_t abstract; /**< 1: matches only through a top-level element that names this one as the
                            head of its substitution group */
    uint16_t nillable; /**< 1: an element without any child node passes without a content check */
} Schema_ElementDecl;

/** An attribute: a top-level declaration, a use in a type, or a reference to a top-level one. */
typedef struct Schema_AttributeDecl {
    const struct Schema_AttributeDecl* ref; /**< when set, everything is taken from there, `use`
                                                 too, and the name is matched with its namespace */
    const Schema_SimpleType* type; /**< required unless the attribute is fixed or prohibited */
    const char* name;              /**< local name */
    const char* namespaceName;     /**< its namespace name, or NULL */
    const char* value;             /**< the fixed value, when `fixed` is 1 */
    Schema_AttributeUse use;       /**< must, may or must not stand */
    Schema_Form form;              /**< for uses: with or without the namespace */
    uint32_t fixed;                /**< 1: the value must equal `value` */
} Schema_AttributeDecl;

/** anyAttribute: which other attributes are admitted. */
typedef struct Schema_AttributeWildcard {
    const char* targetNamespace;            /**< see ::Schema_Wildcard */
    const char* namespaceName;              /**< see ::Schema_Wildcard */
    Schema_ProcessContents processContents; /**< strict: what has no top-level declaration is left
                                                 over, and unexpected in the end */
} Schema_AttributeWildcard;

/** A named set of attributes, or a reference to one. */
typedef struct Schema_AttributeGroup {
    const Schema_AttributeDecl* const* attributes;              /**< the attributes of the set */
    const struct Schema_AttributeGroup* const* attributeGroups; /**< nested; they come first */
    const Schema_AttributeWildcard* anyAttribute;               /**< or NULL */
    const struct Schema_AttributeGroup* ref; /**< when set, the group there stands in this place */
    const char* name;                        /**< not read */
    const char* namespaceName;               /**< not read */
    uint32_t attributeCount;                 /**< of `attributes` */
    uint32_t attributeGroupCount;            /**< of `attributeGroups` */
} Schema_AttributeGroup;

/** An element wildcard, `xs:any`; a particle. */
typedef struct Schema_Wildcard {
    const char* targetNamespace; /**< what "##other" excludes */
    const char* namespaceName;   /**< "##any"; "##other": any but the target namespace and none; one
                                      namespace name; or several between single spaces */
    uint32_t minOccurs;          /**< how many elements at least */
    uint32_t maxOccurs;          /**< how many elements at most */
    Schema_ProcessContents processContents; /**< how strictly what matches is checked */
} Schema_Wildcard;

/** A sequence, choice or all group; a particle, or the top of a content model. */
typedef struct Schema_ModelGroup {
    const Schema_Object* particles; /**< elements, wildcards and groups; of an all group elements */
    uint32_t minOccurs;             /**< how many repetitions at least */
    uint32_t maxOccurs;             /**< how many repetitions at most */
    uint32_t particleCount;         /**< of `particles` */
    Schema_Compositor compositor;   /**< how the particles are combined */
} Schema_ModelGroup;

/** The simpleContent or complexContent of a complex type. */
typedef struct Schema_Derivation {
    const Schema_AttributeWildcard* anyAttribute;        /**< or NULL */
    const Schema_AttributeDecl* const* attributes;       /**< the attributes of the derivation */
    const Schema_AttributeGroup* const* attributeGroups; /**< sets of further ones */
    const Schema_ModelGroup* content; /**< of complex content: of an extension what is added behind
                                           the base's, of a restriction what replaces it; or NULL */
    const void* reserved;             /**< not read */
    const Schema_Facet* facets;       /**< of a simple restriction, applied to the text */
    const void* base;                 /**< the base type, as `baseKind` says; required */
    Schema_ObjectKind kind;           /**< 7, 8, 26 or 27 */
    Schema_ObjectKind baseKind;   /**< ::SCHEMA_KIND_COMPLEX_TYPE or ::SCHEMA_KIND_SIMPLE_TYPE */
    uint32_t attributeCount;      /**< of `attributes` */
    uint32_t facetCount;          /**< of `facets` */
    uint32_t attributeGroupCount; /**< of `attributeGroups` */
} Schema_Derivation;

/**
 * A complex type: the children and attributes of an element.
 *
 * At most six model groups may lie one in another; validation of an element with deeper ones ends
 * in ::XML_RET_FAIL.
 */
typedef struct Schema_ComplexType {
    const Schema_AttributeDecl* const* attributes;       /**< the attributes */
    const Schema_AttributeGroup* const* attributeGroups; /**< sets of further ones */
    const Schema_Derivation* derivation;                 /**< or NULL */
    const Schema_ModelGroup* content; /**< used without a derivation; NULL: no child elements */
    const void* reserved;             /**< not read */
    const Schema_AttributeWildcard* anyAttribute; /**< or NULL */
    const char* name;                             /**< local name */
    const char* namespaceName;                    /**< its namespace name, or NULL */
    uint32_t attributeCount;                      /**< of `attributes` */
    uint32_t attributeGroupCount;                 /**< of `attributeGroups` */
    uint16_t mixed;       /**< 1: text may stand between the elements of a model */
    uint8_t reservedFlag; /**< not read */
} Schema_ComplexType;

/* ------------------------------------------------------------------------------------------------
 * The registry
 */

/** A growing array of record pointers; the library allocates and frees `items`. */
typedef struct Schema_ObjectList {
    const void** items; /**< the records, in the order of registration */
    uint32_t capacity;  /**< slots allocated: 32, doubled when full */
    uint32_t count;     /**< slots in use */
} Schema_ObjectList;

/**
 * The top-level declarations of one schema. The caller owns the record; treat the lists as read
 * only. Lookups go through a list from its front, and the first match counts.
 */
typedef struct Schema_Root {
    Schema_ObjectList simpleTypes;  /**< the built-in ones first */
    Schema_ObjectList attributes;   /**< top-level attributes */
    Schema_ObjectList elements;     /**< document elements, substitutes, and what wildcards find */
    Schema_ObjectList complexTypes; /**< the built-in one first */
    Schema_ObjectList reserved;     /**< stays empty */
    Schema_ObjectList attributeGroups; /**< top-level sets of attributes */
    Schema_Form attributeFormDefault;  /**< ::SCHEMA_FORM_UNQUALIFIED; the caller may change it */
    Schema_Form elementFormDefault;    /**< ::SCHEMA_FORM_QUALIFIED; the caller may change it */
} Schema_Root;

/**
 * Clears a root, sets its form defaults, and registers the built-in types in it.
 *
 * `root` may hold anything before: what it held is not released. Call it before everything else on
 * the root, and release what it holds with Schema_ExitRoot().
 *
 * Returns the status of SchemaReg_xml_schema_buildin(): ::XML_RET_OK, or any other value when
 * memory ran out; the root can be released all the same. A NULL `root` gives ::XML_RET_FAIL.
 */
XML_API uint64_t Schema_InitRoot(Schema_Root* root);

/**
 * Takes the built-in types out of a root. The root owns no memory any more once the caller's own
 * objects are taken out, too, before or after. The root itself is not freed. NULL is ignored.
 */
XML_API void Schema_ExitRoot(Schema_Root* root);

/**
 * Registers a top-level declaration.
 *
 * `object` gives the record and its kind: 5, 6, 9, 14 or 29. It is not kept (it may be a
 * temporary); the record must live until it is taken out. A record that is registered twice stands
 * twice.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL when an argument is NULL, the kind is another, or memory
 * runs out; the root is as it was then.
 */
XML_API uint32_t Schema_RegTopObject(Schema_Root* root, const Schema_Object* object);

/**
 * Takes a record out of its list: the last one of the list moves into its place, so the order
 * changes. An emptied list releases its memory. NULL, another kind, or a record that is not there
 * are ignored.
 */
XML_API void Schema_DeregTopObject(Schema_Root* root, const Schema_Object* object);

/**
 * Registers the records of the built-in types, which it fills at its first call: 30 simple types
 * and the complex type `anyType`, which admits neither text nor child elements. Schema_InitRoot()
 * calls it.
 *
 * Returns the sum of the 31 statuses; it does not stop at a failure.
 */
XML_API uint64_t SchemaReg_xml_schema_buildin(Schema_Root* root);

/** Takes the records of the built-in types out of a root. Schema_ExitRoot() calls it. */
XML_API void SchemaDereg_xml_schema_buildin(Schema_Root* root);

/**
 * @name Records of the built-in types
 *
 * Each returns the address of the static record, a ::Schema_SimpleType (of `anyType` a
 * ::Schema_ComplexType), to be used as the type of a declaration, a base or a member. It is the
 * same at any time and for every root. The record is zero until the first root is initialised, and
 * must not be written to.
 * @{
 */
/** Returns the record of the type that the function is named after. */
XML_API void* Schema_BLDIN_anySimpleType(void);
XML_API void* Schema_BLDIN_byte(void);
XML_API void* Schema_BLDIN_short(void);
XML_API void* Schema_BLDIN_unsignedByte(void);
XML_API void* Schema_BLDIN_unsignedShort(void);
XML_API void* Schema_BLDIN_int(void);
XML_API void* Schema_BLDIN_long(void);
XML_API void* Schema_BLDIN_unsignedInt(void);
XML_API void* Schema_BLDIN_unsignedLong(void);
XML_API void* Schema_BLDIN_integer(void);
XML_API void* Schema_BLDIN_positiveInteger(void);
XML_API void* Schema_BLDIN_nonPositiveInteger(void);
XML_API void* Schema_BLDIN_negativeInteger(void);
XML_API void* Schema_BLDIN_nonNegativeInteger(void);
XML_API void* Schema_BLDIN_duration(void);
XML_API void* Schema_BLDIN_dateTime(void);
XML_API void* Schema_BLDIN_date(void);
XML_API void* Schema_BLDIN_time(void);
XML_API void* Schema_BLDIN_gYear(void);
XML_API void* Schema_BLDIN_gMonth(void);
XML_API void* Schema_BLDIN_gDay(void);
XML_API void* Schema_BLDIN_gYearMonth(void);
XML_API void* Schema_BLDIN_gMonthDay(void);
XML_API void* Schema_BLDIN_string(void);
XML_API void* Schema_BLDIN_boolean(void);
XML_API void* Schema_BLDIN_hexBinary(void);
XML_API void* Schema_BLDIN_base64Binary(void);
XML_API void* Schema_BLDIN_anyURI(void);
XML_API void* Schema_BLDIN_QName(void);
XML_API void* Schema_BLDIN_language(void);
XML_API void* Schema_BLDIN_anyType(void);
/** @} */

/* ------------------------------------------------------------------------------------------------
 * Checking one value
 *
 * A check that refuses a value writes a sentence into the caller's buffer of `bufSize` bytes:
 * always terminated, cut where it does not fit, nothing for a size of 0 or a NULL buffer. A check
 * that passes leaves the buffer as it was. Validation itself uses 512 bytes.
 */

/**
 * Checks a value by the lexical rule of a built-in type; only `type->kind` is read.
 *
 * `value` is NUL-terminated; NULL counts as the empty string. Kind 1 accepts everything; the empty
 * value is valid for `string` and `base64Binary` only.
 *
 * Returns 1 if valid, else 0 with "TYPE cannot be empty." or "VALUE is an invalid value of TYPE
 * type value." in `errBuf`. Of the value at most `bufSize` - 111 bytes are quoted. A NULL `type`
 * gives 0 without a sentence.
 */
XML_API uint32_t Schema_CheckBaseType(const Schema_SimpleType* type, const char* value,
                                      uint32_t bufSize, char* errBuf);

/**
 * Applies the lexical rule of a kind to a value that is not empty (XML Schema 1.0 part 2, section
 * 3, within the limits said at the kinds).
 *
 * Returns 1 if valid, else 0; 0 also when the kind has no rule or `value` is NULL.
 */
XML_API uint32_t SCHEMA_CheckBaseTypeNonNull(Schema_BuiltinKind kind, const char* value);

/**
 * Matches a text against a POSIX extended regular expression (regcomp(3) with REG_EXTENDED and
 * REG_NOSUB, in the current locale). It is not anchored: it matches anywhere in the text.
 *
 * Returns 1 on a match, else 0; 0 also when an argument is NULL or the pattern does not compile.
 */
XML_API uint32_t XML_IsMatchRegex(const char* pattern, const char* text);

/** Returns 1 for a day of the Gregorian calendar in the years 1 to 9999, else 0. */
XML_API uint32_t Schema_IsValidDay(uint16_t year, uint16_t month, uint16_t day);

/** A point in time, as parsed from a date or time value. Fields that the type lacks are 0. */
typedef struct Schema_DateTimeValue {
    uint16_t year;        /**< the year */
    uint16_t month;       /**< the month, from 1 */
    uint16_t day;         /**< the day of the month, from 1 */
    uint16_t hour;        /**< of the day */
    uint16_t minute;      /**< of the hour */
    uint16_t second;      /**< of the minute */
    uint16_t zoneHours;   /**< hours of the zone's offset */
    uint16_t zoneMinutes; /**< minutes of it */
    char fraction[21];    /**< the digits behind the decimal point, terminated; empty without */
    char zoneSign;        /**< '+', '-', or 0 for "Z" and for none */
} Schema_DateTimeValue;

/**
 * Compares two points in time, the zones taken into account. Fractions of equal seconds are
 * compared as text, so "5" is lower than "50".
 *
 * Returns 1 or -1 when the seconds differ, else how XML_Strcmp() orders the fractions; -1 when
 * either is NULL. A month above 12 counts as 12.
 */
XML_API int32_t Schema_CmpDateTime(const Schema_DateTimeValue* a, const Schema_DateTimeValue* b);

/**
 * Checks a value against one facet (XML Schema 1.0 part 2, section 4.3, with these differences).
 *
 * - enumeration compares numbers and durations by value, everything else as text.
 * - length, minLength, maxLength count bytes.
 * - totalDigits asks for exactly that many: after one sign and leading zeros are skipped, all
 *   remaining characters count.
 * - The four bounds compare numbers, durations, and dates and times by value; every other type
 *   passes the inclusive bounds and fails the exclusive ones.
 * - pattern is a POSIX extended expression and not anchored, as XML_IsMatchRegex() has it.
 * - fractionDigits, and kinds beyond 15 to 25, always pass.
 *
 * A duration in a facet may lack parts; one, or a date, that does not read counts as all 0.
 * A number in a facet that does not read counts as 0, one beyond 64 bits as the nearest; a negative
 * one in a facet of an unsigned type wraps, as strtoull() reads it.
 *
 * Returns ::XML_RET_OK, or ::XML_RET_FAIL with a sentence in `errBuf` when the facet is not
 * satisfied (without one when `facet` is NULL). A NULL `value` is the empty string.
 */
XML_API uint32_t Schema_CheckFacet(const Schema_Facet* facet, const char* value, uint32_t bufSize,
                                   char* errBuf);

/** Checks a value for a network type: 1 if valid, else 0 with a sentence in `errBuf`. */
typedef uint32_t (*Schema_ExtTypeHandler)(const char* value, uint32_t bufSize, char* errBuf);

/** One network type. */
typedef struct Schema_ExtType {
    Schema_ExtTypeHandler handler; /**< the check, or NULL: every value passes */
    const char* namespaceName;     /**< NULL until Schema_ReplaceInnerTypeNS() sets it */
    const char* name;              /**< the name of the type */
} Schema_ExtType;

/**
 * Finds a network type: "OID" (object identifier), "_Ipv6Address", "IPV6_ADDR_PREFIX" (RFC 4291),
 * "_PortRange" (1 to 65535), "_VlanRange" (1 to 4094), or "_Ipv4Mask" (contiguous).
 *
 * Returns the process-wide entry whose name and namespace are equal, or NULL.
 */
XML_API Schema_ExtType* Schema_FoundZynBltInType(const char* name, const char* namespaceName);

/**
 * Checks a value with the entry's handler; an entry without one accepts everything. NULL for the
 * value is the empty string.
 *
 * Returns 1 if valid, else 0 with the handler's sentence in `errBuf`; 0 for a NULL `entry`.
 */
XML_API uint32_t Schema_checkZynBltInType(const Schema_ExtType* entry, const char* value,
                                          uint32_t bufSize, char* errBuf);

/**
 * Gives a network type the namespace in which a schema defines it, for the whole process. The
 * pointer is stored and the text not copied. Not safe while another thread validates.
 *
 * Returns ::XML_RET_OK; ::XML_RET_EMPTY when `typeName` is NULL or empty; ::XML_RET_FAIL when
 * Schema_FoundZynBltInType() does not find `typeName` with `namespaceName`.
 */
XML_API uint32_t Schema_ReplaceInnerTypeNS(const char* typeName, const char* namespaceName,
                                           const char* newNamespace);

/** Returns 1 if the text is one of the 122 known language codes, in lower case, else 0. */
XML_API uint32_t Schema_LanguageHandler(const char* value);

/** Where a split stands; filled by Schema_GetFirstSplitStr(). */
typedef struct Schema_SplitCtx {
    char* item;            /**< the caller's buffer for one item */
    const char* cursor;    /**< the rest of the text */
    const char* separator; /**< what stands between items */
    uint32_t itemSize;     /**< of `item` in bytes, the terminator included */
} Schema_SplitCtx;

/**
 * Begins to split a text at a separator and gives the first item; see Schema_GetNextSplitStr().
 * `text`, `separator`, `itemBuf` and `ctx` must live until the split is finished.
 *
 * Returns `itemBuf`, or NULL when there is no item, when an argument is NULL, or when `itemSize` is
 * below 2 (no character would fit).
 */
XML_API char* Schema_GetFirstSplitStr(const char* text, const char* separator, uint32_t itemSize,
                                      char* itemBuf, Schema_SplitCtx* ctx);

/**
 * Gives the next item: what stands before the next separator, or the rest. Two separators in a row
 * give an empty item; a separator at the end is followed by none.
 *
 * An item that does not fit is cut; the next one then begins one byte behind the cut if a separator
 * follows, so one byte is lost.
 *
 * Returns the item buffer, or NULL at the end of the text.
 */
XML_API char* Schema_GetNextSplitStr(Schema_SplitCtx* ctx);

/* ------------------------------------------------------------------------------------------------
 * Validation
 */

/**
 * What a validation found first. The pointers lead into the schema and the tree and end with them.
 */
typedef struct Schema_ValidateResult {
    Schema_ErrorCode code;        /**< 0 when the document is valid; every field is zero then */
    const XML_DOM_Node* node;     /**< for codes 1, 5 and 8 the parent of what is wrong,
                                       NULL at the document element */
    const char* elementName;      /**< codes 1, 5, 7; else NULL */
    const char* elementNamespace; /**< code 1: of the expected element; else NULL */
    const char* attrName;         /**< codes 2, 4, 7; else NULL */
    const char* attrNamespace;    /**< code 2: as declared; 4 and 7: of the attribute in the tree */
    char detail[1024];            /**< codes 3 and 4: the sentence of the check that failed */
} Schema_ValidateResult;

/**
 * Validates an element and all below it; the first violation in document order ends the run.
 *
 * `documentElement` is checked against the first top-level element of its name and namespace,
 * itself alone: siblings of it are not looked at. Neither the tree nor the schema is changed.
 *
 * Time is proportional to the tree for a given schema. Memory: none for most documents; a slot an
 * attribute for elements with many of them, and some for documents, types or groups that lie deep.
 * Each pattern facet is compiled once a run.
 *
 * Returns ::XML_RET_OK with the verdict in `result->code`, or ::XML_RET_FAIL when an argument is
 * NULL (`result` is untouched then), when memory runs out, or when the schema is broken: a cycle, a
 * missing base or type, an unknown kind, more than six nested groups. `result` is all zero then: it
 * is no verdict.
 */
XML_API uint32_t Schema_ValidateXml(const XML_DOM_Node* documentElement, const Schema_Root* root,
                                    Schema_ValidateResult* result);

/**
 * Makes a sentence of a result. It names the node by its path (XML_DOM_GetXPath(), at most 511
 * bytes of it).
 *
 * `size` is that of `buffer` in bytes and at least 512; a longer sentence is cut. The sentence is
 * in the encoding of the tree. Code 6 is cut on purpose at its last "/", so it ends with the path
 * of the parent.
 *
 * Returns ::XML_RET_OK, with `buffer` untouched for a code of 0; ::XML_RET_FAIL when an argument is
 * NULL, `size` is below 512, or the code is above 12.
 */
XML_API uint32_t Schema_GetErrorDesc(const Schema_ValidateResult* result, uint32_t size,
                                     char* buffer);

/* ------------------------------------------------------------------------------------------------
 * Tracing: for the code that builds and drives a schema, while it is developed
 *
 * Everything is printed on standard output, and only while tracing is on. A traced line begins with
 * CR LF and two spaces a level; the last one stays open. The switch and the level are global and
 * not protected: for one thread.
 */

/** Sets the switch: 1 is on, anything else is off. Returns what it was. */
XML_API uint16_t Schema_Debug_Enable(uint16_t value);

/** Indents lines by one level more. */
XML_API void Schema_Debug_BlankAdd(void);

/** Indents lines by one level less. There is no lower bound: keep the calls paired. */
XML_API void Schema_Debug_BlankSub(void);

/** Prints a text as printf() makes it, at most 1023 bytes, without a line of its own. */
XML_API void Schema_Debug_ShowMsg(const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 1, 2)))
#endif
    ;

/** Prints a text as printf() makes it, at most 1023 bytes, on a new line. */
XML_API void Schema_Debug_ShowMsgLine(const char* format, ...)
#if defined(__GNUC__)
    __attribute__((format(printf, 1, 2)))
#endif
    ;

/** Prints a node on a new line: the caller's name, its path, first text, namespace and address. */
XML_API void Schema_Debug_ShowNode(const XML_DOM_Node* node, const char* function);

/** Prints the number, namespaces and names of the registered top-level elements. */
XML_API void Schema_Debug_ListTopObjects(const Schema_Root* root);

#ifdef __cplusplus
}
#endif

#endif
