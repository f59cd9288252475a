#pragma once

#include <host/reflection/reflected_object.h>
#include <host/undo/changes_controller.h>
#include <host/variant/variant.h>

#include <functional>
#include <memory>
#include <random>
#include <string>
#include <vector>

namespace test {

/// A reflected object whose properties are put together one by one. Changes are recorded under
/// `changes` of the top-level object.
class PropertyBag : public kyr::IReflected
{
public:
    explicit PropertyBag(std::string name = "bag");

    const kyr::ReflectedClass& reflectedClass() const override { return m_class; }
    std::string reflectedName() const override { return m_class.name; }
    void propertyChanged(const kyr::BoundProperty& property, const lumo::Variant& before,
                         const lumo::Variant& after, vex::Flags<kyr::SetterFlag> flags) override;

    /// The property's options may be changed until the next one is added.
    kyr::MetaProperty& add(const std::string& name, lumo::Variant value);
    /// A property that holds an object; null for one that holds none just now.
    kyr::MetaProperty& nest(const std::string& name, std::shared_ptr<PropertyBag> object);

    /// By position among the values of this bag, which `add` numbers from 0.
    lumo::Variant& value(std::size_t index) { return m_values[index]; }
    /// "name=text" of every value with a text form, nested bags included, one a line.
    std::string text() const;

    std::weak_ptr<Zar::ChangesController> changes;
    /// Called, where there is one, when a value of this bag changed.
    std::function<void()> changed;
    /// How often a value was set.
    int sets = 0;

private:
    kyr::ReflectedClass m_class;
    std::vector<lumo::Variant> m_values;
    std::vector<std::shared_ptr<PropertyBag>> m_nested;
};

/// Random values of all types with a text form, nested up to three deep. The same `shape` gives the
/// same properties; the values come from `random`.
std::shared_ptr<PropertyBag> randomBag(unsigned shape, std::mt19937& random);

} // namespace test
