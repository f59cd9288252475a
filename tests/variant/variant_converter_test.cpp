#include <host/variant/value_types.h>
#include <host/variant/variant_converter.h>

#include <gtest/gtest.h>

#include <atomic>
#include <cstring>
#include <limits>
#include <locale>
#include <random>
#include <thread>

namespace {

using lumo::Variant;
using lumo::VariantConverter;

enum class Shape
{
    Box,
    Ball,
    Unnamed
};

struct NoText
{
    int number = 0;
};

/// Has no text form at first.
struct Late
{
    int number = 0;
};

class VariantConverterTest : public testing::Test
{
protected:
    static void SetUpTestSuite()
    {
        VariantConverter::registerEnumeration<Shape>({{"box", Shape::Box}, {"ball", Shape::Ball}});
    }
};

std::string textOf(const Variant& value)
{
    Variant text("no text");
    return VariantConverter::convert(text, value) ? *text.tryGet<std::string>() : "failed";
}

template <typename T>
std::string bytesOf(const T& value)
{
    return std::string(reinterpret_cast<const char*>(&value), sizeof value);
}

// The text of the value reads back as the same bytes.
template <typename T>
void expectExact(const T& value)
{
    Variant back{T{}};
    ASSERT_TRUE(VariantConverter::convert(back, Variant(textOf(Variant(value)))));
    ASSERT_EQ(bytesOf(*back.tryGet<T>()), bytesOf(value)) << textOf(Variant(value));
}

TEST_F(VariantConverterTest, everyNanKeepsItsBits)
{
    for (const std::uint32_t bits : {0x7fc00000u, 0xffc00000u, 0x7f800001u, 0xffffffffu}) {
        float number = 0;
        std::memcpy(&number, &bits, sizeof number);
        expectExact(number);
        expectExact(lumo::Vector3{1, number, 2});
        const std::uint64_t wide = 0x7ff0000000000000u | bits;
        double wideNumber = 0;
        std::memcpy(&wideNumber, &wide, sizeof wideNumber);
        expectExact(wideNumber);
    }
    for (const char* text :
         {"nan(", "nan()", "nan(1)", "nan(7fc00001", "nan(17fc00001)", "nan(x)"}) {
        Variant number(1.0f);
        EXPECT_FALSE(VariantConverter::convert(number, Variant(text))) << text;
    }
}

TEST_F(VariantConverterTest, textFormsAreShortAndReadable)
{
    const std::pair<Variant, const char*> rows[] = {
        {Variant(true), "true"},
        {Variant(-42), "-42"},
        {Variant(std::numeric_limits<std::uint64_t>::max()), "18446744073709551615"},
        {Variant(char('A')), "65"},
        {Variant(0.1f), "0.1"},
        {Variant(0.1), "0.1"},
        {Variant(1e30), "1e+30"},
        {Variant(-std::numeric_limits<double>::infinity()), "-inf"},
        {Variant(lumo::Vector2{1, -2.5f}), "1 -2.5"},
        {Variant(lumo::Vector3{0, 0, 3}), "0 0 3"},
        {Variant(lumo::Color{1.5f, 0, 0, 1}), "1.5 0 0 1"},
        {Variant(Shape::Ball), "ball"},
        {Variant("as it is"), "as it is"},
        {Variant(Shape::Unnamed), "failed"},
        {Variant(NoText{}), "failed"},
        {Variant(), "failed"},
    };
    for (const auto& [value, text] : rows)
        EXPECT_EQ(textOf(value), text);
}

TEST_F(VariantConverterTest, everyNumberComesBackExactly)
{
    std::mt19937_64 random(5);
    for (int i = 0; i < 20000; ++i) {
        const std::uint64_t bits = random();
        double wide;
        float narrow;
        std::memcpy(&wide, &bits, sizeof wide);
        std::memcpy(&narrow, &bits, sizeof narrow);
        if (wide == wide)
            expectExact(wide);
        if (narrow == narrow) {
            expectExact(narrow);
            expectExact(lumo::Vector4{narrow, -narrow, 0.1f, 1e-45f});
        }
        expectExact(std::int64_t(bits));
        expectExact(std::int8_t(bits));
        expectExact(std::uint16_t(bits));
    }
}

TEST_F(VariantConverterTest, textsThatAreNoValueChangeNothing)
{
    const std::pair<Variant, std::vector<const char*>> rows[] = {
        {Variant(true), {"", "1", "True", "true "}},
        {Variant(std::int8_t(7)), {"", "128", "-129", "1.0", " 1", "1 ", "+1", "0x1", "ten"}},
        {Variant(7u), {"-1", "4294967296"}},
        {Variant(7.5f), {"", "1,5", "1e999", "1.5f", "--1"}},
        {Variant(lumo::Vector2{7, 7}), {"", "1", "1 2 3", "1  2", " 1 2", "1 2 ", "1,2"}},
        {Variant(Shape::Ball), {"", "Ball", "0"}},
        {Variant(NoText{7}), {"7"}},
        {Variant(), {""}},
    };
    for (const auto& [value, texts] : rows) {
        for (const char* text : texts) {
            Variant target = value;
            EXPECT_FALSE(VariantConverter::convert(target, Variant(text))) << text;
            EXPECT_TRUE(target.holds<NoText>() || target == value) << text;
        }
    }
}

TEST_F(VariantConverterTest, theLocaleDoesNotMatter)
{
    struct Comma : std::numpunct<char>
    {
        char do_decimal_point() const override { return ','; }
    };
    const std::locale before = std::locale::global(std::locale(std::locale(), new Comma));
    EXPECT_EQ(textOf(Variant(1234.5)), "1234.5");
    expectExact(1234.5);
    std::locale::global(before);
}

TEST_F(VariantConverterTest, conversionsAndTextFormsCanBeRegistered)
{
    Variant target{NoText{}};
    EXPECT_FALSE(VariantConverter::convert(target, Variant(Shape::Ball)));
    VariantConverter::registerConversion<Shape, NoText>([](const Shape& shape) {
        return shape == Shape::Ball ? std::optional(NoText{3}) : std::nullopt;
    });
    EXPECT_FALSE(VariantConverter::convert(target, Variant(Shape::Box)));
    EXPECT_TRUE(VariantConverter::convert(target, Variant(Shape::Ball)));
    EXPECT_EQ(Variant(Shape::Ball).cast<NoText>().number, 3);
    EXPECT_EQ(VariantConverter::enumerationNames(lumo::metaTypeOf<Shape>()),
              (std::vector<std::string>{"box", "ball"}));
    EXPECT_TRUE(VariantConverter::enumerationNames(lumo::metaTypeOf<int>()).empty());
    EXPECT_FALSE(VariantConverter::hasTextForm(lumo::metaTypeOf<NoText>()));
}

TEST_F(VariantConverterTest, registersWhileOthersConvert)
{
    std::atomic<bool> stop = false;
    std::thread reader([&stop] {
        while (!stop) {
            const std::string text = textOf(Variant(Late{4}));
            EXPECT_TRUE(text == "failed" || text == "4");
            EXPECT_EQ(textOf(Variant(Shape::Ball)), "ball");
        }
    });
    for (int i = 0; i < 200; ++i) {
        VariantConverter::registerTextForm<Late>(
            [](const Late& value) { return std::to_string(value.number); },
            [](std::string_view) { return std::nullopt; });
    }
    stop = true;
    reader.join();
    EXPECT_EQ(textOf(Variant(Late{4})), "4");
}

} // namespace
