#include "mesh_samples.h"

#include <editor/viewport/items/item_set.h>

#include <gtest/gtest.h>

#include <optional>
#include <set>

namespace editor {

namespace {

std::string idsIn(const ItemSet& set, const ItemRange& range)
{
    std::string ids;
    set.visitRange(range,
                   [&](quint32 index) { ids += std::to_string(set.items()[index].id) + ' '; });
    return ids;
}

// Exact arithmetic would be better; double against float leaves room enough.
struct Point
{
    double x, y, z;
};

double dot(const QVector3D& a, const QVector3D& b)
{
    return double(a.x()) * double(b.x()) + double(a.y()) * double(b.y()) +
           double(a.z()) * double(b.z());
}

// A triangle as the camera sees it: x and y in pixels, z the depth.
using SeenTriangle = std::array<Point, 3>;

SeenTriangle seen(const OrbitCamera& camera, const ViewportItem& item, quint32 index)
{
    SeenTriangle result;
    const Triangle local = item.geometry->triangle(index);
    for (std::size_t i = 0; i < 3; ++i) {
        const QVector3D world = item.transform.map(local[i]);
        const QPointF screen = camera.project(world).value_or(QPointF(qQNaN(), qQNaN()));
        result[i] = {screen.x(), screen.y(), dot(world - camera.eye(), camera.forward())};
    }
    return result;
}

// At which depth a triangle covers a screen position.
std::optional<double> depthAt(const SeenTriangle& triangle, const QPointF& p)
{
    double area[3];
    for (std::size_t i = 0; i < 3; ++i) {
        const Point& from = triangle[(i + 1) % 3];
        const Point& to = triangle[(i + 2) % 3];
        area[i] = (from.x - p.x()) * (to.y - p.y()) - (from.y - p.y()) * (to.x - p.x());
    }
    const double whole = area[0] + area[1] + area[2];
    double inverseDepth = 0; // linear on the screen
    for (std::size_t i = 0; i < 3; ++i) {
        if (!(area[i] / whole > 0))
            return std::nullopt;
        inverseDepth += area[i] / whole / triangle[i].z;
    }
    return 1 / inverseDepth;
}

// Whether rounding decides if the position is covered, so near is it to an edge.
bool isUnsure(const SeenTriangle& triangle, const QPointF& p)
{
    const bool covered = depthAt(triangle, p).has_value();
    for (const QPointF& way : {QPointF(1, 0), QPointF(-1, 0), QPointF(0, 1), QPointF(0, -1)}) {
        if (depthAt(triangle, p + way * 0.03).has_value() != covered)
            return true;
    }
    return false;
}

bool isShown(const ViewportItem& item)
{
    return item.visible && item.pickable;
}

bool separated(const SeenTriangle& triangle, const QRectF& rectangle, double x, double y)
{
    const auto [low, high] =
        std::minmax({triangle[0].x * x + triangle[0].y * y, triangle[1].x * x + triangle[1].y * y,
                     triangle[2].x * x + triangle[2].y * y});
    const auto [left, right] = std::minmax({rectangle.left() * x, rectangle.right() * x});
    const auto [top, bottom] = std::minmax({rectangle.top() * y, rectangle.bottom() * y});
    return high < left + top || low > right + bottom;
}

// Separating axes in the plane of the screen.
bool overlaps(const SeenTriangle& triangle, const QRectF& rectangle)
{
    if (separated(triangle, rectangle, 1, 0) || separated(triangle, rectangle, 0, 1))
        return false;
    for (std::size_t i = 0; i < 3; ++i) {
        const Point& to = triangle[(i + 1) % 3];
        if (separated(triangle, rectangle, triangle[i].y - to.y, to.x - triangle[i].x))
            return false;
    }
    return true;
}

class ItemSetTest : public ::testing::TestWithParam<unsigned>
{
protected:
    ItemSetTest() : m_random(GetParam())
    {
        m_camera.setViewport({800, 600});
        m_camera.lookFrom(number(-180, 180), number(-80, 80));
        std::vector<ViewportItem> items;
        const MeshGeometryPtr empty = randomMesh(m_random, 0);
        const MeshGeometryPtr meshes[] = {cubeMesh(), randomMesh(m_random, 40), empty,
                                          randomMesh(m_random, 3)};
        for (quint32 id = 1; id <= 200; ++id)
            items.push_back(randomItem(id, meshes[id % 4]));
        m_set.assign(items);
        m_camera.setSceneBounds(m_set.bounds());
        m_camera.frame(m_set.visibleBounds());
    }

    float number(float from, float to)
    {
        return std::uniform_real_distribution<float>(from, to)(m_random);
    }
    QPointF position() { return {double(number(0, 800)), double(number(0, 600))}; }
    QPointF positionNearAnItem()
    {
        const quint32 id = quint32(number(1, 200));
        const QPointF away(double(number(-12, 12)), double(number(-12, 12)));
        return *m_camera.project(m_set.find(id)->origin()) + away;
    }

    ViewportItem randomItem(quint32 id, const MeshGeometryPtr& mesh)
    {
        ViewportItem item = meshItem(id, mesh, {number(-9, 9), number(-9, 9), number(-9, 9)});
        item.transform.rotate(number(0, 360), number(-1, 1), number(-1, 1), number(-1, 1));
        const float mirror = id % 3 == 0 ? -1.0f : 1.0f;
        const float flat = id % 11 == 0 ? 0.0f : 1.0f;
        item.transform.scale(mirror * number(0.2f, 4), number(0.2f, 4), flat * number(0.2f, 4));
        item.visible = id % 13 != 0;
        item.pickable = id % 17 != 0;
        return item;
    }

    // The nearest item that covers a position, found by asking every triangle.
    void expectSamePick(const QPointF& at)
    {
        std::vector<std::pair<double, quint32>> hits;
        for (const ViewportItem& item : m_set.items()) {
            for (quint32 i = 0; isShown(item) && i < item.geometry->triangleCount(); ++i) {
                const SeenTriangle triangle = seen(m_camera, item, i);
                if (isUnsure(triangle, at))
                    return;
                if (const auto depth = depthAt(triangle, at))
                    hits.emplace_back(*depth, item.id);
            }
        }
        hits.emplace_back(1e300, 0);
        std::sort(hits.begin(), hits.end());
        const auto [depth, nearest] = hits.front();
        for (const auto& [otherDepth, other] : hits) {
            if (other != nearest && otherDepth - depth < 1e-3)
                return;
        }
        m_certainHits += nearest ? 1 : 0;
        const auto hit = m_set.pick(m_camera, at);
        ASSERT_EQ(nearest, hit ? hit->id : 0) << at.x() << ' ' << at.y();
        if (hit) {
            EXPECT_NEAR(depth, double(hit->depth), 1e-3 * depth);
        }
    }

    std::set<quint32> idsByEveryTriangle(const QRectF& rectangle) const
    {
        std::set<quint32> ids;
        for (const ViewportItem& item : m_set.items()) {
            for (quint32 i = 0; isShown(item) && i < item.geometry->triangleCount(); ++i) {
                if (overlaps(seen(m_camera, item, i), rectangle))
                    ids.insert(item.id);
            }
        }
        return ids;
    }

    std::mt19937 m_random;
    OrbitCamera m_camera;
    ItemSet m_set;
    int m_certainHits = 0;
};

} // namespace

TEST_P(ItemSetTest, picksWhatEveryTriangleSays)
{
    for (int i = 0; i < 150; ++i)
        expectSamePick(positionNearAnItem());
    // Moved items are found at their new place.
    for (quint32 id = 1; id <= 200; id += 3) {
        ViewportItem item = randomItem(id, m_set.find(id)->geometry);
        m_set.update(item);
    }
    m_camera.frame(m_set.visibleBounds());
    for (int i = 0; i < 150; ++i)
        expectSamePick(positionNearAnItem());
    EXPECT_GT(m_certainHits, 100);
}

TEST_P(ItemSetTest, rubberBandTakesWhatEveryTriangleSays)
{
    for (int i = 0; i < 60; ++i) {
        const double size = i % 3 == 0 ? 400 : i % 3 == 1 ? 40 : 3;
        const QRectF band(position(), QSizeF(size, size * 0.7));
        const auto ids = m_set.idsWithin(m_camera, band);
        EXPECT_TRUE(std::is_sorted(ids.begin(), ids.end()));
        const std::set<quint32> found(ids.begin(), ids.end());

        // Rounding may decide at the rim, a hundredth of a pixel off it no more.
        for (quint32 id : idsByEveryTriangle(band.adjusted(0.01, 0.01, -0.01, -0.01)))
            EXPECT_TRUE(found.count(id)) << id;
        const std::set<quint32> atMost =
            idsByEveryTriangle(band.adjusted(-0.01, -0.01, 0.01, 0.01));
        for (quint32 id : found)
            EXPECT_TRUE(atMost.count(id)) << id;
    }
}

INSTANTIATE_TEST_SUITE_P(Random, ItemSetTest, ::testing::Range(1u, 5u));

TEST(ItemSet, markersAreHitWithinTheirDiscAndNotThroughWalls)
{
    OrbitCamera camera;
    camera.lookFrom(0, 0);
    camera.frame(Box{{-2, -2, -2}, {2, 2, 2}});
    ViewportItem wall = meshItem(1, cubeMesh(), {});
    ItemSet set;
    set.assign({wall, lightItem(2, {2, 0, 0}), lightItem(3, {0, 0, -1})});

    const QPointF light = *camera.project({2, 0, 0});
    const double radius = double(ItemSet::markerRadius);
    EXPECT_EQ(2u, set.pick(camera, light + QPointF(0.6, 0.6) * radius)->id);
    EXPECT_FALSE(set.pick(camera, light + QPointF(0.8, 0.8) * radius));
    EXPECT_EQ(1u, set.pick(camera, *camera.project({0, 0, -1}))->id);
    EXPECT_EQ((std::vector<quint32>{1, 2, 3}),
              set.idsWithin(camera, QRectF(QPointF(), camera.viewport())));
}

TEST(ItemSet, knowsBranchesAlsoWhereItemsAreLeftOut)
{
    // 1 { 2 { 3, (0) { 4 } }, (2) }, 5
    std::vector<ViewportItem> items;
    for (const auto& [id, descendants] :
         {std::pair(1u, 5u), {2u, 3u}, {3u, 0u}, {0u, 1u}, {4u, 0u}, {2u, 0u}, {5u, 99u}}) {
        items.push_back(meshItem(id, cubeMesh(), {float(id), 0, 0}));
        items.back().descendants = descendants;
    }
    ItemSet set;
    set.assign(items);
    EXPECT_EQ("1 2 3 4 ", idsIn(set, set.branchOf(1)));
    EXPECT_EQ("2 3 4 ", idsIn(set, set.branchOf(2)));
    EXPECT_EQ("5 ", idsIn(set, set.branchOf(5)));
    EXPECT_TRUE(set.branchOf(77).isEmpty());
    set.update(meshItem(2, cubeMesh(), {}));
    std::string branches;
    for (const ItemRange& branch : set.branchesOf({5, 3, 77, 2, 4}))
        branches += idsIn(set, branch) + "/ ";
    EXPECT_EQ("2 3 4 / 5 / ", branches);
    EXPECT_EQ(4.5f, set.boundsOf({2}).upper.x());
}

TEST(ItemSet, isTheSameHoweverItsBranchesCameAndWent)
{
    using Node = std::pair<quint32, int>; // id and depth
    const auto itemsOf = [](const std::vector<Node>& nodes) {
        std::vector<ViewportItem> items;
        for (std::size_t i = 0; i < nodes.size(); ++i) {
            const auto [id, depth] = nodes[i];
            items.push_back(meshItem(id, cubeMesh(), {float(id % 40) * 2, float(id % 7), 0}));
            std::size_t end = i + 1;
            while (end < nodes.size() && nodes[end].second > depth)
                ++end;
            items.back().descendants = quint32(end - i - 1);
        }
        return items;
    };
    OrbitCamera camera;
    camera.setViewport({400, 300});
    camera.frame(Box{{0, 0, -1}, {80, 8, 1}});
    std::mt19937 random(11);
    std::vector<Node> tree{{1, 0}};
    ItemSet set;
    set.assign(itemsOf(tree));
    quint32 lastId = 1;
    for (int step = 0; step < 800; ++step) {
        const std::size_t at = random() % tree.size();
        const auto [id, depth] = tree[at];
        const auto end = std::find_if(tree.begin() + std::ptrdiff_t(at) + 1, tree.end(),
                                      [d = depth](const Node& node) { return node.second <= d; });
        if (at > 0 && random() % 5 < tree.size() / 50) {
            set.remove(id);
            tree.erase(tree.begin() + std::ptrdiff_t(at), end);
        } else {
            std::vector<Node> branch{{++lastId, depth + 1}};
            for (auto more = random() % 4; more > 0; --more)
                branch.emplace_back(++lastId,
                                    depth + 2 + int(random() % 2) * int(branch.size() > 1));
            auto before = end;
            for (auto child = tree.begin() + std::ptrdiff_t(at) + 1; child != end; ++child) {
                if (child->second == depth + 1 && random() % 3 == 0)
                    before = child;
            }
            const auto placed =
                set.insert(itemsOf(branch), {id, before == end ? 0 : before->first});
            tree.insert(before, branch.begin(), branch.end());
            if (!placed)
                set.assign(itemsOf(tree));
        }
        ItemSet fresh;
        fresh.assign(itemsOf(tree));
        ASSERT_EQ(tree.size(), set.count());
        for (const Node& node : tree)
            ASSERT_EQ(idsIn(fresh, fresh.branchOf(node.first)),
                      idsIn(set, set.branchOf(node.first)))
                << step;
        const QRectF band(double(random() % 200), 0, 150, 300);
        ASSERT_EQ(fresh.idsWithin(camera, band), set.idsWithin(camera, band)) << step;
        const auto hit = fresh.pick(camera, band.center());
        ASSERT_EQ(hit ? hit->depth : 0,
                  set.pick(camera, band.center()).value_or(ItemSet::Hit{}).depth);
        ASSERT_EQ(fresh.bounds().upper, set.bounds().upper);
    }
}

TEST(ItemSet, survivesNumbersThatAreNone)
{
    ViewportItem broken = meshItem(1, cubeMesh(), {float(qQNaN()), 0, 0});
    ViewportItem endless = meshItem(2, cubeMesh(), {});
    endless.transform.scale(float(qInf()));
    std::vector<ViewportItem> items;
    const ViewportItem far[] = {broken, endless, meshItem(3, cubeMesh(), {1e30f, 0, 0}),
                                meshItem(4, cubeMesh(), {-3e38f, 3e38f, 0})};
    for (quint32 id = 1; id < 40; ++id) {
        items.push_back(far[id % 4]);
        items.back().id = id;
    }
    items.push_back(meshItem(40, cubeMesh(), {}));
    items.push_back(meshItem(40, cubeMesh(), {9, 9, 9})); // a taken id
    items.push_back(meshItem(0, cubeMesh(), {}));
    ItemSet set;
    set.assign(items);
    OrbitCamera camera;
    EXPECT_EQ(40u, set.items().size());
    EXPECT_EQ(40u, set.pick(camera, {320, 240})->id);
    EXPECT_EQ((std::vector<quint32>{40}), set.idsWithin(camera, QRectF(319, 239, 2, 2)));
    EXPECT_FALSE(set.update(meshItem(99, cubeMesh(), {})));

    camera.setSceneBounds(set.bounds());
    camera.frame(set.boundsOf({2, 3}));
    camera.frame(set.visibleBounds());
    EXPECT_EQ(QVector3D(), camera.target());
    EXPECT_LT(camera.distance(), 10);
    const QVector3D middle = camera.projection().map(camera.view().map(QVector3D()));
    EXPECT_LT(middle.length(), 1) << "cut off by the near or far plane";
}

TEST(MeshGeometry, dropsTrianglesThatNameNoVertexAndMakesNormals)
{
    const MeshGeometry mesh({{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}, {}, {0, 1, 2, 0, 1, 3, 0, 1});
    EXPECT_EQ(1u, mesh.triangleCount());
    EXPECT_EQ(QVector3D(0, 0, 1), mesh.vertices()[1].normal);
}

} // namespace editor
