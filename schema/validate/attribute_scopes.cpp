#include "schema/validate/attribute_scopes.hpp"

#include "schema/validate/declaration.hpp"
#include "schema/validate/derivation.hpp"

#include <cstdint>

namespace netxml {
namespace {

// The marks of groups: being walked through, or done.
constexpr unsigned kOpen = 1;
constexpr unsigned kDone = 2;

}  // namespace

AttributeScopes::AttributeScopes(const Schema_ComplexType& type, ChunkStack& memory,
                                 AttributeGroupMarks& met) noexcept
    : memory_{memory}, mark_{memory.mark()}, met_{met}
{
    met_.beginWalk();
    push(Task{nullptr, Task::Type, &type, 0, 0});
}

void AttributeScopes::push(Task task) noexcept
{
    auto* place = static_cast<Task*>(memory_.allocate(sizeof task));
    if (!place) {
        outOfMemory_ = true;
        return;
    }
    task.below = top_;
    *place = task;
    top_ = place;
}

void AttributeScopes::pushGroups(const Schema_AttributeGroup* const* groups,
                                 std::uint32_t count) noexcept
{
    if (count != 0) push(Task{nullptr, Task::Groups, groups, 0, count});
}

AttributeScopes::Next AttributeScopes::next(AttributeScope& scope) noexcept
{
    while (top_ && !outOfMemory_) {
        const Task task = *top_;
        switch (task.kind) {
        case Task::Groups:
            if (task.next == task.count) top_ = task.below;
            else if (!enterNextGroup(*top_)) return Next::Broken;
            continue;
        case Task::Type:
            top_ = task.below;
            openType(*static_cast<const Schema_ComplexType*>(task.record), scope);
            return Next::Scope;
        case Task::Derivation:
            top_ = task.below;
            openDerivation(*static_cast<const Schema_Derivation*>(task.record), scope);
            return Next::Scope;
        case Task::EndOfGroup: {
            top_ = task.below;
            const auto& group = *static_cast<const Schema_AttributeGroup*>(task.record);
            if (!met_.set(&group, kDone)) return Next::Broken;
            scope = {group.attributes, group.attributeCount, group.anyAttribute};
            return Next::Scope;
        }
        }
    }
    return outOfMemory_ ? Next::Broken : Next::End;
}

// The type's groups wait until the derivation and all bases are done.
void AttributeScopes::openType(const Schema_ComplexType& type, AttributeScope& scope) noexcept
{
    scope = {type.attributes, type.attributeCount, type.anyAttribute};
    pushGroups(type.attributeGroups, type.attributeGroupCount);
    if (!type.derivation) return;
    if (const Schema_ComplexType* base = complexBase(type))
        push(Task{nullptr, Task::Type, base, 0, 0});
    push(Task{nullptr, Task::Derivation, type.derivation, 0, 0});
}

void AttributeScopes::openDerivation(const Schema_Derivation& derivation,
                                     AttributeScope& scope) noexcept
{
    scope = {derivation.attributes, derivation.attributeCount, derivation.anyAttribute};
    pushGroups(derivation.attributeGroups, derivation.attributeGroupCount);
}

bool AttributeScopes::enterNextGroup(Task& groups) noexcept
{
    const auto* array = static_cast<const Schema_AttributeGroup* const*>(groups.record);
    if (!array) return false;
    const Schema_AttributeGroup* group = array[groups.next++];
    if (group) group = resolve(group);
    if (!group) return false;
    const unsigned mark = met_.get(group);
    if (mark == kDone) return true;
    if (mark == kOpen || !met_.set(group, kOpen)) return false;
    push(Task{nullptr, Task::EndOfGroup, group, 0, 0});
    pushGroups(group->attributeGroups, group->attributeGroupCount);
    return !outOfMemory_;
}

}  // namespace netxml
