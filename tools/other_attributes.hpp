// The attributes that an element may have but for those that have been reported.
#pragma once

#include "netxml/schema.h"

#include <deque>
#include <string>
#include <vector>

namespace netxml::tool {

class OtherAttributes {
public:
    explicit OtherAttributes(Schema_Form defaultForm);
    OtherAttributes(const OtherAttributes&) = delete;
    OtherAttributes& operator=(const OtherAttributes&) = delete;

    // Those of a complex type, which must live as long as this.
    void addType(const Schema_ComplexType& type);
    // Those of every element of a simple type.
    void addCommon();

    // Leaves out the attribute that a result is about (codes 2, 4 and 7). False when it has been
    // left out before.
    bool leaveOut(const Schema_ValidateResult& result);

    // A type with the attributes that are left and any content. It holds until the next call.
    const Schema_ComplexType& type();

private:
    // Declarations that are asked one after the other, and then a wildcard.
    struct Scope {
        std::vector<const Schema_AttributeDecl*> uses;
        const Schema_AttributeWildcard* wildcard;
    };
    struct LeftOut {
        std::string name;
        std::string nameSpace;
        bool isMissing;  // it is asked for and does not stand there

        bool operator==(const LeftOut&) const = default;
    };
    struct Task;

    void addScope(const Schema_AttributeDecl* const* uses, std::uint32_t count,
                  const Schema_AttributeWildcard* wildcard);
    bool isLeftOut(const Schema_AttributeDecl& use) const;

    const Schema_Form defaultForm_;
    std::vector<Scope> scopes_;
    std::deque<Schema_AttributeDecl> common_;
    std::deque<LeftOut> leftOut_;
    std::deque<Schema_AttributeDecl> admitted_;  // in the place of those that stand there
    std::deque<std::vector<const Schema_AttributeDecl*>> uses_;
    std::deque<Schema_AttributeGroup> groups_;
    std::vector<const Schema_AttributeGroup*> groupList_;
    Schema_Wildcard anything_{};
    Schema_Object anyChild_;
    Schema_ModelGroup content_{};
    Schema_ComplexType type_{};
};

}  // namespace netxml::tool
