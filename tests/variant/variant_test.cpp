#include <host/variant/value_types.h>
#include <host/variant/variant.h>

#include <gtest/gtest.h>

#include <support/allocations/allocation_count.h>

#include <array>
#include <limits>
#include <memory>
#include <vector>

namespace {

using lumo::Variant;

struct Large
{
    std::array<double, 16> numbers{};
};

struct NoDefault
{
    explicit NoDefault(int n) : number(n) {}
    int number;
};

TEST(Variant, smallValuesNeedNoAllocation)
{
    const std::size_t before = test::allocationCount();
    {
        Variant numbers(1.5);
        Variant colour(lumo::Color{1, 0.5f, 0.25f, 1});
        Variant text(std::string("short"));
        const Variant copy = colour;
        numbers = text;
        text = Variant(lumo::Vector4{1, 2, 3, 4});
        ASSERT_EQ(*numbers.tryGet<std::string>(), "short");
        ASSERT_TRUE(copy == colour);
    }
    EXPECT_EQ(test::allocationCount(), before);
}

TEST(Variant, copiesOfLargeValuesShareOneUntilChanged)
{
    Variant first{Large{}};
    Variant second = first;
    EXPECT_EQ(first.tryGet<Large>(), second.tryGet<Large>());
    EXPECT_TRUE(first == second);
    second.tryGetMutable<Large>()->numbers[3] = 7;
    EXPECT_FALSE(first == second);
    EXPECT_EQ(first.tryGet<Large>()->numbers[3], 0);
    const Large* alone = second.tryGet<Large>();
    EXPECT_EQ(second.tryGetMutable<Large>(), alone);
}

TEST(Variant, assignmentReleasesAndMovesEmptyTheSource)
{
    const auto tracked = std::make_shared<int>(1);
    Variant holder(tracked);
    Variant moved = std::move(holder);
    EXPECT_TRUE(holder.isVoid());
    EXPECT_EQ(tracked.use_count(), 2);
    Variant& same = moved;
    moved = same;
    EXPECT_EQ(tracked.use_count(), 2);
    moved = Variant(3);
    EXPECT_EQ(tracked.use_count(), 1);
    EXPECT_EQ(moved.cast<int>(), 3);
}

TEST(Variant, readsThroughPointersAndHandsOutAddresses)
{
    std::string text = "pointed at";
    std::string* none = nullptr;
    volatile int restless = 1;
    const Variant direct(text);
    const Variant pointer(&text);
    const Variant pointerToConst(&std::as_const(text));
    const Variant nullPointer(none);
    const Variant pointerToVolatile(&restless);
    EXPECT_EQ(*pointer.tryGet<std::string>(), "pointed at");
    EXPECT_EQ(*pointerToConst.tryGet<std::string>(), "pointed at");
    EXPECT_EQ(nullPointer.tryGet<std::string>(), nullptr);
    EXPECT_EQ(pointerToVolatile.tryGet<int>(), nullptr);
    EXPECT_FALSE(pointer.holds<std::string>());
    EXPECT_EQ(direct.cast<const std::string*>(), direct.tryGet<std::string>());
    EXPECT_THROW(direct.cast<std::string*>(), lumo::VariantCastError);
    EXPECT_THROW(Variant(1).cast<NoDefault>(), lumo::VariantCastError);
    EXPECT_THROW(Variant().cast<int>(), lumo::VariantCastError);
}

TEST(Variant, equalValuesOfOneTypeAreEqualAndHashAlike)
{
    EXPECT_TRUE(Variant() == Variant());
    EXPECT_FALSE(Variant() == Variant(0));
    EXPECT_FALSE(Variant(0) == Variant(0u));
    EXPECT_FALSE(Variant(0.0) == Variant(-0.0));
    const float nan = std::numeric_limits<float>::quiet_NaN();
    EXPECT_TRUE(Variant(lumo::Vector2{1, nan}) == Variant(lumo::Vector2{1, nan}));
    EXPECT_EQ(Variant(nan).hash(), Variant(nan).hash());
    EXPECT_TRUE(Variant(std::vector<int>{1}) == Variant(std::vector<int>{1}));
    EXPECT_FALSE(Variant(NoDefault(1)) == Variant(NoDefault(1)));
    // Known values of the hash function.
    EXPECT_EQ(Variant("").hash(), 0xcbf29ce484222325u);
    EXPECT_EQ(Variant("a").hash(), 0xaf63dc4c8601ec8cu);
    EXPECT_EQ(Variant("foobar").hash(), 0x85944171f73967e8u);
}

TEST(Variant, streamsGiveValuesBack)
{
    // So long that its length takes a second byte.
    const std::string text = std::string("say \"hi\" \\ \0 ", 13) + std::string(115, '-');
    lumo::TextStream words;
    lumo::BinaryStream bytes;
    Zar::BinaryOStream out;
    for (const Variant& value : {Variant(text), Variant(0.1f), Variant(true)}) {
        value.payload()->write(words);
        value.payload()->write(bytes);
        value.payload()->write(out);
    }
    Zar::BinaryIStream in(out.bytes());
    const auto expectBack = [&text](auto& stream) {
        Variant string(""), number(0.0f), flag(false);
        string.payload()->read(stream);
        number.payload()->read(stream);
        flag.payload()->read(stream);
        EXPECT_EQ(*string.tryGet<std::string>(), text);
        EXPECT_EQ(*number.tryGet<float>(), 0.1f);
        EXPECT_TRUE(*flag.tryGet<bool>());
    };
    expectBack(words);
    expectBack(bytes);
    expectBack(in);
    EXPECT_EQ(words.text().substr(0, 11), "\"say \\\"hi\\\"");
}

TEST(Variant, streamsThatEndTooEarlyLeaveTheValue)
{
    Zar::BinaryOStream out;
    out.appendPackedInt(300);
    out.append("abc", 3);
    EXPECT_EQ(out.bytes().substr(0, 2), "\xac\x02");
    Zar::BinaryIStream in(out.bytes());
    lumo::TextStream words("unquoted");
    lumo::TextStream open("\"unfinished");
    lumo::BinaryStream bytes(std::string(9, '\x7f'));
    Variant string("kept");
    string.payload()->read(in);
    string.payload()->read(words);
    string.payload()->read(open);
    string.payload()->read(bytes);
    EXPECT_EQ(*string.tryGet<std::string>(), "kept");
}

} // namespace
