#include "property_bag.h"

#include <host/reflection/bound_property.h>
#include <host/undo/change.h>
#include <host/variant/value_types.h>
#include <host/variant/variant_converter.h>

#include <cstring>

namespace test {
namespace {

class ValueChange : public Zar::IChange
{
public:
    ValueChange(kyr::BoundProperty property, lumo::Variant before, lumo::Variant after)
        : m_property(std::move(property)), m_before(std::move(before)), m_after(std::move(after))
    {}
    void undo() override { m_property.set(m_before, kyr::SetterFlag::Replay); }
    void redo() override { m_property.set(m_after, kyr::SetterFlag::Replay); }

private:
    kyr::BoundProperty m_property;
    lumo::Variant m_before;
    lumo::Variant m_after;
};

float randomFloat(std::mt19937& random)
{
    const auto bits = std::uint32_t(random());
    float number;
    std::memcpy(&number, &bits, sizeof number);
    return number == number ? number : 0.5f;
}

std::string randomText(std::mt19937& random)
{
    std::string text;
    for (auto length = random() % 10; length > 0; --length)
        text += char(random() % 2 ? random() : "a <&\r\n\\"[random() % 7]);
    return text;
}

lumo::Variant randomValue(unsigned type, std::mt19937& random)
{
    const lumo::Variant values[] = {
        lumo::Variant(random() % 2 == 0),
        lumo::Variant(int(random())),
        lumo::Variant(randomFloat(random)),
        lumo::Variant(double(randomFloat(random)) / 3),
        lumo::Variant(randomText(random)),
        lumo::Variant(lumo::Vector3{randomFloat(random), 0, randomFloat(random)}),
        lumo::Variant(lumo::Color{randomFloat(random), 1, 0.1f, 1}),
        lumo::Variant(std::uint64_t(random()) << 32),
    };
    return values[type % 8];
}

void fill(PropertyBag& bag, std::mt19937& shape, std::mt19937& random, int depth)
{
    for (auto count = shape() % 8; count > 0; --count) {
        const std::string name = "p" + std::to_string(bag.reflectedClass().properties.size());
        if (depth > 0 && shape() % 4 == 0) {
            auto nested = std::make_shared<PropertyBag>();
            fill(*nested, shape, random, depth - 1);
            bag.nest(name, std::move(nested));
        } else {
            bag.add(name, randomValue(unsigned(shape()), random));
        }
    }
}

} // namespace

PropertyBag::PropertyBag(std::string name)
{
    m_class.name = std::move(name);
}

kyr::MetaProperty& PropertyBag::add(const std::string& name, lumo::Variant value)
{
    const std::size_t index = m_values.size();
    m_values.push_back(std::move(value));
    kyr::MetaProperty& property = m_class.properties.emplace_back();
    property.name = name;
    property.type = &m_values[index].type().type();
    property.isValue = true;
    property.get = [index](const kyr::IReflected& owner) {
        return static_cast<const PropertyBag&>(owner).m_values[index];
    };
    property.set = [index](kyr::IReflected& owner, const lumo::Variant& source) {
        auto& bag = static_cast<PropertyBag&>(owner);
        ++bag.sets;
        return lumo::VariantConverter::convert(bag.m_values[index], source);
    };
    return property;
}

kyr::MetaProperty& PropertyBag::nest(const std::string& name, std::shared_ptr<PropertyBag> object)
{
    const std::size_t index = m_nested.size();
    m_nested.push_back(std::move(object));
    kyr::MetaProperty& property = m_class.properties.emplace_back();
    property.name = name;
    property.type = &typeid(PropertyBag);
    property.nested = [index](kyr::IReflected& owner) -> kyr::IReflected* {
        return static_cast<PropertyBag&>(owner).m_nested[index].get();
    };
    return property;
}

void PropertyBag::propertyChanged(const kyr::BoundProperty& property, const lumo::Variant& before,
                                  const lumo::Variant& after, vex::Flags<kyr::SetterFlag> flags)
{
    const auto controller = changes.lock();
    if (controller && !flags.has(kyr::SetterFlag::Replay))
        controller->record(std::make_unique<ValueChange>(property, before, after), "Set value");
    if (changed)
        changed();
}

std::string PropertyBag::text() const
{
    std::string all;
    std::size_t nested = 0;
    for (const kyr::MetaProperty& property : m_class.properties) {
        std::string value;
        if (!property.isValue)
            all += m_nested[nested++]->text();
        else if (lumo::VariantConverter::toText(property.get(*this), value))
            all += property.name + "=" + value + "\n";
    }
    return all;
}

std::shared_ptr<PropertyBag> randomBag(unsigned shape, std::mt19937& random)
{
    auto bag = std::make_shared<PropertyBag>("random");
    std::mt19937 shapes(shape);
    fill(*bag, shapes, random, 3);
    return bag;
}

} // namespace test
