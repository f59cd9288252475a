#include "variant_converter.h"

#include <host/variant/number_text.h>
#include <host/variant/value_types.h>

#include <map>
#include <memory>
#include <mutex>
#include <shared_mutex>
#include <tuple>
#include <typeindex>
#include <unordered_map>

namespace lumo {
namespace {

template <typename T>
std::optional<T> floatsFromText(std::string_view text)
{
    auto values = components(T{});
    for (std::size_t i = 0; i < values.size(); ++i) {
        const bool last = i + 1 == values.size();
        const std::size_t end = last ? text.size() : text.find(' ');
        if (end == std::string_view::npos || !numberFromText(text.substr(0, end), values[i]))
            return std::nullopt;
        text.remove_prefix(last ? end : end + 1);
    }
    return std::apply([](auto... value) { return T{value...}; }, values);
}

template <typename T>
std::string textOfFloats(const T& value)
{
    std::string text;
    for (const float component : components(value)) {
        if (!text.empty())
            text += ' ';
        appendNumber(text, component);
    }
    return text;
}

template <typename T>
std::string textOfOneNumber(const T& value)
{
    return textOfNumber(value);
}

template <typename T>
std::optional<T> oneNumber(std::string_view text)
{
    T value{};
    return numberFromText(text, value) ? std::optional<T>(value) : std::nullopt;
}

} // namespace

// Entries are never changed, only replaced, so that they can be called outside the lock.
struct VariantConverter::Registry
{
    Registry()
    {
        addNumbers<bool, char, signed char, unsigned char, short, unsigned short, int, unsigned,
                   long, unsigned long, long long, unsigned long long, float, double>();
        addFloatTuples<Vector2, Vector3, Vector4, Color>();
    }

    template <typename... T>
    void addNumbers()
    {
        (add<T>(textOfOneNumber<T>, oneNumber<T>), ...);
    }

    template <typename... T>
    void addFloatTuples()
    {
        (add<T>(textOfFloats<T>, floatsFromText<T>), ...);
    }

    template <typename T>
    void add(std::string (*toText)(const T&), std::optional<T> (*fromText)(std::string_view))
    {
        textForms.emplace(typeid(T),
                          std::make_shared<const TextForm>(makeTextForm<T>(toText, fromText)));
    }

    std::shared_mutex mutex;
    std::unordered_map<std::type_index, std::shared_ptr<const TextForm>> textForms;
    std::map<std::pair<std::type_index, std::type_index>, std::shared_ptr<const Conversion>>
        conversions;

    std::shared_ptr<const TextForm> textForm(const std::type_info& type)
    {
        const std::shared_lock lock(mutex);
        const auto found = textForms.find(type);
        return found == textForms.end() ? nullptr : found->second;
    }

    std::shared_ptr<const Conversion> conversion(const std::type_info& from,
                                                 const std::type_info& to)
    {
        const std::shared_lock lock(mutex);
        if (conversions.empty())
            return nullptr;
        const auto found = conversions.find({from, to});
        return found == conversions.end() ? nullptr : found->second;
    }
};

VariantConverter::Registry& VariantConverter::registry()
{
    static Registry instance;
    return instance;
}

bool VariantConverter::convert(Variant& target, const Variant& source)
{
    if (target.type() == source.type()) {
        target = source;
        return true;
    }
    if (target.isVoid() || source.isVoid())
        return false;
    const std::type_info& from = source.type().type();
    const std::type_info& to = target.type().type();
    if (const auto conversion = registry().conversion(from, to))
        return (*conversion)(source.payload()->value(), target);
    if (auto* text = target.tryGetMutable<std::string>())
        return toText(source, *text);
    if (source.holds<std::string>()) {
        const auto form = registry().textForm(to);
        return form && form->read(*source.tryGet<std::string>(), target);
    }
    return false;
}

bool VariantConverter::toText(const Variant& value, std::string& text)
{
    if (value.isVoid())
        return false;
    if (const auto* string = value.tryGet<std::string>()) {
        text = *string;
        return true;
    }
    const auto form = registry().textForm(value.type().type());
    return form && form->write(value.payload()->value(), text);
}

bool VariantConverter::hasTextForm(const MetaType& type)
{
    return type.type() == typeid(std::string) || registry().textForm(type.type());
}

std::vector<std::string> VariantConverter::enumerationNames(const MetaType& type)
{
    const auto form = registry().textForm(type.type());
    return form ? form->names : std::vector<std::string>();
}

void VariantConverter::addTextForm(const std::type_info& type, TextForm form)
{
    auto entry = std::make_shared<const TextForm>(std::move(form));
    const std::unique_lock lock(registry().mutex);
    registry().textForms.insert_or_assign(type, std::move(entry));
}

void VariantConverter::addConversion(const std::type_info& from, const std::type_info& to,
                                     Conversion conversion)
{
    auto entry = std::make_shared<const Conversion>(std::move(conversion));
    const std::unique_lock lock(registry().mutex);
    registry().conversions.insert_or_assign({from, to}, std::move(entry));
}

} // namespace lumo
