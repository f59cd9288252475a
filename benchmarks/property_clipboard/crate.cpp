#include "crate.h"

#include <host/reflection/class_builder.h>

namespace bench {

const kyr::ReflectedClass& Finish::reflectedClass() const
{
    static const kyr::ReflectedClass description = kyr::ClassBuilder<Finish>("Finish")
                                                       .value("base", &Finish::base)
                                                       .value("glow", &Finish::glow)
                                                       .value("roughness", &Finish::roughness)
                                                       .value("metalness", &Finish::metalness)
                                                       .value("texture", &Finish::texture)
                                                       .build();
    return description;
}

const kyr::ReflectedClass& Placement::reflectedClass() const
{
    static const kyr::ReflectedClass description = kyr::ClassBuilder<Placement>("Placement")
                                                       .value("position", &Placement::position)
                                                       .value("rotation", &Placement::rotation)
                                                       .value("scale", &Placement::scale)
                                                       .build();
    return description;
}

Crate::Crate(int seed)
    : name("crate " + std::to_string(seed))
    , visible(seed < 1000000)
    , locked(seed < 1000000)
    , breakable(seed >= 1000000)
    , health(seed)
    , loot(seed % 100 + 1)
    , group(unsigned(seed) + 1)
    , mass(float(seed) / 7)
    , friction(float(seed) / 11)
    , value(seed / 3.0)
{
    notes += std::to_string(seed);
    const auto shade = float(seed % 255) / 255;
    cell = {shade, shade};
    placement.position = {mass, friction, shade};
    placement.rotation = {shade, mass, friction};
    placement.scale = {mass, mass, mass};
    finish.base = {shade, shade / 3, shade / 7, 1};
    finish.glow = {shade / 3, shade / 7, shade, 1};
    finish.roughness = shade;
    finish.metalness = shade / 3;
    finish.texture += std::to_string(seed);
}

const kyr::ReflectedClass& Crate::reflectedClass() const
{
    static const kyr::ReflectedClass description = kyr::ClassBuilder<Crate>("Crate")
                                                       .value("name", &Crate::name)
                                                       .value("notes", &Crate::notes)
                                                       .value("visible", &Crate::visible)
                                                       .value("locked", &Crate::locked)
                                                       .value("breakable", &Crate::breakable)
                                                       .value("health", &Crate::health)
                                                       .value("loot", &Crate::loot)
                                                       .value("group", &Crate::group)
                                                       .value("mass", &Crate::mass)
                                                       .value("friction", &Crate::friction)
                                                       .value("value", &Crate::value)
                                                       .value("cell", &Crate::cell)
                                                       .object("placement", &Crate::placement)
                                                       .object("finish", &Crate::finish)
                                                       .build();
    return description;
}

void Crate::propertyChanged(const kyr::BoundProperty& property, const lumo::Variant& before,
                            const lumo::Variant& after, vex::Flags<kyr::SetterFlag> flags)
{
    if (changes && !flags.has(kyr::SetterFlag::Replay))
        changes->record(std::make_unique<ValueChange>(property, before, after), "Set property");
}

std::vector<std::shared_ptr<Crate>> makeCrates(int count, int seed)
{
    std::vector<std::shared_ptr<Crate>> crates;
    crates.reserve(std::size_t(count));
    for (int i = 0; i < count; ++i)
        crates.push_back(std::make_shared<Crate>(seed + i));
    return crates;
}

} // namespace bench
