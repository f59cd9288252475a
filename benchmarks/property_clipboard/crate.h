#pragma once

#include <host/reflection/bound_property.h>
#include <host/reflection/reflected.h>
#include <host/undo/changes_controller.h>
#include <host/variant/value_types.h>

#include <memory>
#include <string>
#include <vector>

namespace bench {

struct Finish : kyr::IReflected
{
    const kyr::ReflectedClass& reflectedClass() const override;

    lumo::Color base{0.8f, 0.1f, 0.1f, 1};
    lumo::Color glow{0, 0, 0, 1};
    float roughness = 0.35f;
    float metalness = 0.1f;
    std::string texture = "textures/crate_albedo.png";
};

struct Placement : kyr::IReflected
{
    const kyr::ReflectedClass& reflectedClass() const override;

    lumo::Vector3 position{1.25f, -3.5f, 17.375f};
    lumo::Vector3 rotation{0, 90, 12.5f};
    lumo::Vector3 scale{1, 1, 1};
};

/// A value that a property took, to be taken back and set again.
struct ValueChange : Zar::IChange
{
    ValueChange(kyr::BoundProperty itsProperty, lumo::Variant itsBefore, lumo::Variant itsAfter)
        : property(std::move(itsProperty)), before(std::move(itsBefore)), after(std::move(itsAfter))
    {}
    void undo() override { property.set(before, kyr::SetterFlag::Replay); }
    void redo() override { property.set(after, kyr::SetterFlag::Replay); }

    kyr::BoundProperty property;
    lumo::Variant before;
    lumo::Variant after;
};

/// An object with 20 values of the usual types, eight of them in two nested objects.
struct Crate : kyr::IReflected
{
    explicit Crate(int seed);
    const kyr::ReflectedClass& reflectedClass() const override;
    std::string reflectedName() const override { return name; }
    void propertyChanged(const kyr::BoundProperty& property, const lumo::Variant& before,
                         const lumo::Variant& after, vex::Flags<kyr::SetterFlag> flags) override;

    /// Who records its changes, if anybody does.
    Zar::ChangesController* changes = nullptr;

    std::string name;
    std::string notes = "stacked by the gate & \"fragile\"";
    bool visible = true;
    bool locked = false;
    bool breakable = true;
    int health = 100;
    int loot = 7;
    unsigned group = 3;
    float mass = 12.5f;
    float friction = 0.6f;
    double value = 19.99;
    lumo::Vector2 cell{3, 4};
    Placement placement;
    Finish finish;
};

std::vector<std::shared_ptr<Crate>> makeCrates(int count, int seed);

} // namespace bench
