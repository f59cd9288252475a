#include "variant_converter.h"

#include "number_text.h"
#include "value_types.h"

#include <atomic>
#include <deque>
#include <map>
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
void setTextOf(const T& value, std::string& text)
{
    text.clear();
    if constexpr (isFloatTuple<T>) {
        for (const float component : components(value)) {
            if (!text.empty())
                text += ' ';
            appendNumber(text, component);
        }
    } else {
        appendNumber(text, value);
    }
}

template <typename T>
std::optional<T> valueOf(std::string_view text)
{
    if constexpr (isFloatTuple<T>) {
        return floatsFromText<T>(text);
    } else {
        T value{};
        return numberFromText(text, value) ? std::optional<T>(value) : std::nullopt;
    }
}

} // namespace

/// What is known of one type. Lives as long as the program.
struct detail::ConverterEntry
{
    std::atomic<const TextForm*> textForm{nullptr};
};

// Forms and conversions are never removed or changed, only replaced, so that they can be called
// outside the lock. Looking up a text form takes no lock once its meta type knows the entry.
struct VariantConverter::Registry
{
    Registry();

    template <typename... T>
    void addBuiltIn();
    void add(const std::type_info& type, TextForm form);

    const detail::ConverterEntry* entry(const std::type_info& type);
    const Conversion* conversion(const std::type_info& from, const std::type_info& to);

    std::shared_mutex mutex;
    std::unordered_map<std::type_index, detail::ConverterEntry> entries;
    std::deque<TextForm> textForms;
    std::map<std::pair<std::type_index, std::type_index>, const Conversion*> conversions;
    std::deque<Conversion> allConversions;
    std::atomic<bool> hasConversions = false;
};

VariantConverter::Registry::Registry()
{
    addBuiltIn<bool, char, signed char, unsigned char, short, unsigned short, int, unsigned, long,
               unsigned long, long long, unsigned long long, float, double, Vector2, Vector3,
               Vector4, Color>();
}

template <typename... T>
void VariantConverter::Registry::addBuiltIn()
{
    (add(typeid(T), {[](const void* value, std::string& text) {
                         setTextOf(*static_cast<const T*>(value), text);
                         return true;
                     },
                     [](std::string_view text, Variant& target) {
                         return assign<T>(target, valueOf<T>(text));
                     },
                     {}}),
     ...);
}

void VariantConverter::Registry::add(const std::type_info& type, TextForm form)
{
    const std::unique_lock lock(mutex);
    entries[type].textForm = &textForms.emplace_back(std::move(form));
}

const detail::ConverterEntry* VariantConverter::Registry::entry(const std::type_info& type)
{
    const std::unique_lock lock(mutex);
    return &entries[type];
}

const VariantConverter::Conversion*
VariantConverter::Registry::conversion(const std::type_info& from, const std::type_info& to)
{
    if (!hasConversions)
        return nullptr;
    const std::shared_lock lock(mutex);
    const auto found = conversions.find({from, to});
    return found == conversions.end() ? nullptr : found->second;
}

VariantConverter::Registry& VariantConverter::registry()
{
    static Registry instance;
    return instance;
}

const VariantConverter::TextForm* VariantConverter::textForm(const MetaType& type)
{
    const detail::ConverterEntry* entry = type.m_converterEntry.load(std::memory_order_acquire);
    if (!entry) {
        entry = registry().entry(type.type());
        type.m_converterEntry.store(entry, std::memory_order_release);
    }
    return entry->textForm;
}

bool VariantConverter::convert(Variant& target, const Variant& source)
{
    const MetaType& from = source.type();
    const MetaType& to = target.type();
    if (from == to) {
        target = source;
        return true;
    }
    if (target.isVoid() || source.isVoid())
        return false;
    if (const Conversion* conversion = registry().conversion(from.type(), to.type()))
        return (*conversion)(source.payload()->value(), target);
    if (auto* text = target.tryGetMutable<std::string>()) {
        const TextForm* form = textForm(from);
        return form && form->write(source.payload()->value(), *text);
    }
    if (source.holds<std::string>()) {
        const TextForm* form = textForm(to);
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
    const MetaType& type = value.type();
    if (const Conversion* conversion = registry().conversion(type.type(), typeid(std::string))) {
        Variant target{std::string()};
        const bool ok = (*conversion)(value.payload()->value(), target);
        if (ok)
            text = *target.tryGet<std::string>();
        return ok;
    }
    const TextForm* form = textForm(type);
    return form && form->write(value.payload()->value(), text);
}

bool VariantConverter::hasTextForm(const MetaType& type)
{
    return type.type() == typeid(std::string) || textForm(type);
}

std::vector<std::string> VariantConverter::enumerationNames(const MetaType& type)
{
    const TextForm* form = textForm(type);
    return form ? form->names : std::vector<std::string>();
}

void VariantConverter::addTextForm(const std::type_info& type, TextForm form)
{
    registry().add(type, std::move(form));
}

void VariantConverter::addConversion(const std::type_info& from, const std::type_info& to,
                                     Conversion conversion)
{
    Registry& all = registry();
    const std::unique_lock lock(all.mutex);
    all.conversions[{from, to}] = &all.allConversions.emplace_back(std::move(conversion));
    all.hasConversions = true;
}

} // namespace lumo
