#pragma once

#include <host/variant/variant.h>

#include <functional>
#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace lumo {

namespace detail {

/// How the values of one type are written as text and read back.
struct TextForm
{
    /// False when the value has no text. The value is of the form's own type.
    std::function<bool(const void* value, std::string& text)> write;
    std::function<bool(std::string_view text, Variant& target)> read;
    std::vector<std::string> names;
};

} // namespace detail

/// Conversions between the types of variants.
/// Every type may have one text form, from which its values come back exactly. Built in are those
/// of the numbers ("true", "-3", "0.1"), `std::string` (the text itself), the vectors and the
/// colour (their components with one space between). All functions are thread-safe; registered
/// functions run on the calling thread, outside any lock, and may register more. Finding a form or
/// a conversion is O(1), registering one waits for whoever is looking for another.
class VariantConverter
{
public:
    /// Sets `target` to the value of `source` as the type that `target` holds: as it is when the
    /// types agree, else by the registered conversion, else by the text form of either side when
    /// the other is a `std::string`. False, with `target` unchanged, when there is no way.
    static bool convert(Variant& target, const Variant& source);

    /// What `convert` gives a variant that holds a string: the value as text. False, with `text`
    /// unchanged, when it has none.
    static bool toText(const Variant& value, std::string& text);

    static bool hasTextForm(const MetaType& type);

    /// Replaces an earlier text form of the same type. `fromText` gives nothing for a text that
    /// is no value.
    template <typename T>
    static void registerTextForm(std::function<std::string(const T&)> toText,
                                 std::function<std::optional<T>(std::string_view)> fromText);

    /// Gives an enumeration its names as text form. The first name of a value is its text.
    template <typename Enum>
    static void registerEnumeration(std::initializer_list<std::pair<const char*, Enum>> names);

    /// The names given to `registerEnumeration`, in that order; empty for any other type.
    static std::vector<std::string> enumerationNames(const MetaType& type);

    /// Replaces an earlier conversion between the same types.
    template <typename From, typename To>
    static void registerConversion(std::function<std::optional<To>(const From&)> convert);

private:
    using TextForm = detail::TextForm;
    using Conversion = std::function<bool(const void* value, Variant& target)>;
    struct Registry;

    static Registry& registry();
    static const TextForm* textForm(const MetaType& type);
    template <typename T>
    static TextForm makeTextForm(std::function<std::string(const T&)> toText,
                                 std::function<std::optional<T>(std::string_view)> fromText);
    static void addTextForm(const std::type_info& type, TextForm form);
    static void addConversion(const std::type_info& from, const std::type_info& to,
                              Conversion conversion);
    template <typename T>
    static bool assign(Variant& target, std::optional<T> value);
};

template <typename T>
bool VariantConverter::assign(Variant& target, std::optional<T> value)
{
    if (value)
        target = Variant(std::move(*value));
    return value.has_value();
}

template <typename T>
void VariantConverter::registerTextForm(std::function<std::string(const T&)> toText,
                                        std::function<std::optional<T>(std::string_view)> fromText)
{
    TextForm form;
    form.write = [toText = std::move(toText)](const void* value, std::string& text) {
        text = toText(*static_cast<const T*>(value));
        return true;
    };
    form.read = [fromText = std::move(fromText)](std::string_view text, Variant& target) {
        return assign<T>(target, fromText(text));
    };
    addTextForm(typeid(T), std::move(form));
}

template <typename Enum>
void VariantConverter::registerEnumeration(
    std::initializer_list<std::pair<const char*, Enum>> names)
{
    static_assert(std::is_enum_v<Enum>);
    const std::vector<std::pair<std::string, Enum>> entries(names.begin(), names.end());
    TextForm form;
    for (const auto& entry : entries)
        form.names.push_back(entry.first);
    form.write = [entries](const void* value, std::string& text) {
        for (const auto& [name, enumerator] : entries) {
            if (enumerator == *static_cast<const Enum*>(value)) {
                text = name;
                return true;
            }
        }
        return false;
    };
    form.read = [entries](std::string_view text, Variant& target) {
        for (const auto& [name, enumerator] : entries) {
            if (name == text)
                return assign<Enum>(target, enumerator);
        }
        return false;
    };
    addTextForm(typeid(Enum), std::move(form));
}

template <typename From, typename To>
void VariantConverter::registerConversion(std::function<std::optional<To>(const From&)> convert)
{
    addConversion(typeid(From), typeid(To),
                  [convert = std::move(convert)](const void* value, Variant& target) {
                      return assign<To>(target, convert(*static_cast<const From*>(value)));
                  });
}

} // namespace lumo
