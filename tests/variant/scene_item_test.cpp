#include <host/core/profiler.h>
#include <host/reflection/bound_property.h>
#include <host/variant/scene_item.h>
#include <host/variant/variant.h>

#include <gtest/gtest.h>

namespace {

using lumo::Variant;
using Meta::SceneItem;

TEST(SceneItem, isSharedByCopiesAndCopiedOnceOnChange)
{
    static std::string scopes;
    vex::Profiler::g_hooks.valueScopeBegin = [](const char* name) { scopes += name; };
    vex::Profiler::g_hooks.valueScopeEnd = [] { scopes += ";"; };
    Variant first = Variant::defaultOf(lumo::metaTypeOf<SceneItem>());
    EXPECT_EQ(scopes, "Reflection|Variant|COW;");
    Variant second = first;
    first.tryGet<SceneItem>();
    EXPECT_TRUE(first == second);
    EXPECT_EQ(first.hash(), 0u);
    EXPECT_EQ(scopes, "Reflection|Variant|COW;");

    second.tryGetMutable<SceneItem>()->predicate = [](const auto&) { return false; };
    EXPECT_FALSE(first == second);
    second.tryGetMutable<SceneItem>();
    EXPECT_EQ(scopes, "Reflection|Variant|COW;Reflection|Variant|COW;");
    vex::Profiler::g_hooks = {};
    EXPECT_TRUE(first.tryGet<SceneItem>()->predicate(kyr::BoundProperty()));
    EXPECT_FALSE(second.tryGet<SceneItem>()->predicate(kyr::BoundProperty()));
}

TEST(SceneItem, readsAsPointerToItself)
{
    const SceneItem outside;
    const Variant inside{SceneItem()};
    EXPECT_EQ(inside.cast<const SceneItem*>(), inside.tryGet<SceneItem>());
    EXPECT_EQ(Variant(&outside).cast<const SceneItem*>(), &outside);
    EXPECT_EQ(Variant::defaultOf(lumo::metaTypeOf<const SceneItem*>()).cast<const SceneItem*>(),
              nullptr);
    EXPECT_THROW(Variant(1).cast<const SceneItem*>(), lumo::VariantCastError);
}

TEST(SceneItem, streamsPassItOver)
{
    const SceneItem outside;
    for (Variant value : {Variant(SceneItem()), Variant(&outside)}) {
        lumo::TextStream words;
        lumo::BinaryStream bytes;
        Zar::BinaryOStream out;
        value.payload()->write(words);
        value.payload()->write(bytes);
        value.payload()->write(out);
        EXPECT_EQ(words.text() + bytes.bytes() + out.bytes(), "");
        const Variant before = value;
        Zar::BinaryIStream in("bytes");
        value.payload()->read(words);
        value.payload()->read(bytes);
        value.payload()->read(in);
        EXPECT_TRUE(value == before);
        EXPECT_EQ(in.pointerSkipped(), value.holds<const SceneItem*>());
    }
}

} // namespace
