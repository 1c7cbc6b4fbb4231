/* Registers two schemas of one namespace of network types in roots, and says after each step
 * whether the library knows the types by it, and what the step returned. A step is a letter: "a"
 * and "b" register the first and the second schema in its own root, "A" and "B" take it out of it,
 * "x" and "X" take the first and the second out of a root that does not hold it. */
#include "first_schema.h"
#include "second_schema.h"

#include <netxml/netxml.h>
#include <stdio.h>

static int named(const char* type)
{
    return Schema_FoundZynBltInType(type, "urn:net") != NULL;
}

int main(int argc, char** argv)
{
    Schema_Root first;
    Schema_Root second;
    Schema_Root other;
    const char* step;
    if (argc != 2 || Schema_InitRoot(&first) != XML_RET_OK ||
        Schema_InitRoot(&second) != XML_RET_OK || Schema_InitRoot(&other) != XML_RET_OK)
        return 1;
    for (step = argv[1]; *step != '\0'; ++step) {
        uint32_t status = XML_RET_OK;
        switch (*step) {
        case 'a': status = first_schema_register(&first); break;
        case 'b': status = second_schema_register(&second); break;
        case 'A': first_schema_deregister(&first); break;
        case 'B': second_schema_deregister(&second); break;
        case 'x': first_schema_deregister(&other); break;
        default: second_schema_deregister(&other); break;
        }
        printf("%c:%s%s%s ", *step, status == XML_RET_OK ? "" : "fails", named("OID") ? "O" : "",
               named("_VlanRange") ? "V" : "");
    }
    Schema_ExitRoot(&first);
    Schema_ExitRoot(&second);
    Schema_ExitRoot(&other);
    return 0;
}
