#include "xsd/group_record.hpp"

namespace netxml::xsd {
namespace {

using Kind = ContentModel::Kind;

const ElementRecord* elementParticle(const ContentModel& part, SchemaRecords& to)
{
    const ElementRecord& declared = *part.element;
    if (!declared.top && declared.min == part.min && declared.max == part.max) return &declared;
    ElementRecord& particle = to.elements.emplace_back();
    if (declared.top) particle.ref = &declared;
    else particle = declared;
    particle.min = part.min;
    particle.max = part.max;
    particle.place = part.place;
    return &particle;
}

const WildcardRecord* wildcardParticle(const ContentModel& part, SchemaRecords& to)
{
    WildcardRecord& particle = to.wildcards.emplace_back(*part.wildcard);
    particle.min = part.min;
    particle.max = part.max;
    return &particle;
}

constexpr Schema_Compositor compositorOf(Kind kind)
{
    return kind == Kind::Choice ? SCHEMA_COMPOSITOR_CHOICE
           : kind == Kind::All  ? SCHEMA_COMPOSITOR_ALL
                                : SCHEMA_COMPOSITOR_SEQUENCE;
}

}  // namespace

const GroupRecord* groupRecord(const ContentModel& model, SchemaRecords& to)
{
    GroupRecord& record = to.groups.emplace_back();
    record.place = model.place;
    record.compositor = compositorOf(model.kind);
    record.min = model.min;
    record.max = model.max;
    for (const ContentModel& part : model.parts) {
        ParticleRecord particle;
        if (part.kind == Kind::Element) particle.element = elementParticle(part, to);
        else if (part.kind == Kind::Wildcard) particle.wildcard = wildcardParticle(part, to);
        else particle.group = groupRecord(part, to);
        record.particles.push_back(particle);
    }
    return &record;
}

}  // namespace netxml::xsd
