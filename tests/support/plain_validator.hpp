// Validation by the rules as they are told: recursive, with copies and loops, nothing remembered.
// The library's validation is compared with it.
#pragma once

#include "netxml/netxml.h"

// As Schema_ValidateXml().
uint32_t plainValidate(const XML_DOM_Node* documentElement, const Schema_Root* root,
                       Schema_ValidateResult* result);

// Whether a value is valid for a simple type; false for a type that is broken.
bool plainAccepts(const Schema_SimpleType* type, const char* value);
