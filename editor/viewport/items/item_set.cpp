#include "item_set.h"

#include "frame_reach.h"

namespace editor {

namespace {

constexpr quint32 noItem = ~quint32(0);
constexpr quint32 mostPlaces = 1u << 24; // graphics have them as floating-point numbers
// Items that may be looked at one by one.
constexpr std::size_t mostAppended = 256;

// Distance in units of the ray's direction, before `limit`.
std::optional<float> hitDistance(const ViewportItem& item, const Ray& ray, float limit)
{
    bool invertible = false;
    const QMatrix4x4 toLocal = item.transform.inverted(&invertible);
    if (invertible)
        return item.geometry->hit({toLocal.map(ray.origin), toLocal.mapVector(ray.direction)},
                                  limit);

    // A space flattened to a plane has no way back; its triangles are met in the world.
    std::optional<float> nearest;
    for (quint32 i = 0; i < item.geometry->triangleCount(); ++i) {
        Triangle triangle = item.geometry->triangle(i);
        for (QVector3D& corner : triangle)
            corner = item.transform.map(corner);
        const auto distance = hitDistance(ray, triangle);
        if (distance && *distance <= nearest.value_or(limit))
            nearest = distance;
    }
    return nearest;
}

bool canBePicked(const ViewportItem& item)
{
    return item.visible && item.pickable;
}

} // namespace

void ItemSet::assign(std::vector<ViewportItem> items)
{
    m_items.clear();
    m_items.reserve(items.size());
    m_indexOf.clear();
    m_indexOf.reserve(int(items.size()));
    std::vector<Box> boxes;
    boxes.reserve(items.size());
    std::vector<quint32> place; // of the item, or of the next one that is kept
    place.reserve(items.size() + 1);
    for (ViewportItem& item : items) {
        place.push_back(quint32(m_items.size()));
        if (item.id == 0 || m_indexOf.contains(item.id))
            continue;
        m_indexOf.insert(item.id, quint32(m_items.size()));
        boxes.push_back(item.bounds());
        m_items.push_back(std::move(item));
    }
    place.push_back(quint32(m_items.size()));
    const auto count = quint32(m_items.size());
    const quint32 spacing = std::max(mostPlaces / (count + 2), 1u);
    m_places.resize(count);
    m_order.resize(count);
    for (quint32 i = 0; i < count; ++i) {
        m_places[i] = (i + 1) * spacing;
        m_order[i] = i;
    }
    m_branchEnds.clear();
    m_branchEnds.reserve(count);
    m_parents.assign(count, noItem);
    std::vector<quint32> above;
    for (std::size_t i = 0; i + 1 < place.size(); ++i) {
        if (place[i] == place[i + 1])
            continue;
        const quint32 index = place[i];
        const std::size_t below = m_items[index].descendants;
        m_branchEnds.push_back((place[std::min(i + 1 + below, items.size())] + 1) * spacing);
        while (!above.empty() && m_branchEnds[above.back()] <= m_places[index])
            above.pop_back();
        if (!above.empty())
            m_parents[index] = above.back();
        above.push_back(index);
    }
    m_free.clear();
    m_tree = Bvh(std::move(boxes));
}

std::size_t ItemSet::orderAt(quint32 place) const
{
    const auto found =
        std::lower_bound(m_order.begin(), m_order.end(), place,
                         [this](quint32 index, quint32 at) { return m_places[index] < at; });
    return std::size_t(found - m_order.begin());
}

std::size_t ItemSet::countIn(const ItemRange& range) const
{
    return range.isEmpty() ? 0 : orderAt(range.end) - orderAt(range.first);
}

std::optional<std::vector<quint32>> ItemSet::insert(const std::vector<ViewportItem>& branch,
                                                    const Gap& gap)
{
    const auto parent = m_indexOf.constFind(gap.parent);
    const auto before = m_indexOf.constFind(gap.before);
    if (branch.empty() || parent == m_indexOf.constEnd() ||
        (gap.before != 0 && before == m_indexOf.constEnd()))
        return std::nullopt;
    const quint32 end = gap.before != 0 ? m_places[*before] : m_branchEnds[*parent];
    const std::size_t at = orderAt(end);
    const quint32 last = m_order[at - 1]; // the parent itself, or below it
    const auto count = quint32(branch.size());
    const quint32 spacing = (end - m_places[last]) / (count + 1);
    const bool areNew = std::all_of(branch.begin(), branch.end(), [this](const ViewportItem& item) {
        return item.id != 0 && !m_indexOf.contains(item.id);
    });
    if (spacing == 0 || !areNew)
        return std::nullopt;

    const quint32 first = m_places[last] + spacing;
    // The branches that ended here now end before the new one.
    for (quint32 index = last; index != *parent && index != noItem; index = m_parents[index])
        m_branchEnds[index] = std::min(m_branchEnds[index], first);
    std::vector<quint32> indices;
    indices.reserve(count);
    std::vector<quint32> above{*parent};
    for (quint32 i = 0; i < count; ++i) {
        const quint32 index = take(branch[i]);
        const quint32 behind = i + 1 + branch[i].descendants;
        m_places[index] = first + i * spacing;
        m_branchEnds[index] = behind < count ? first + behind * spacing : end;
        while (above.size() > 1 && m_branchEnds[above.back()] <= m_places[index])
            above.pop_back();
        m_parents[index] = above.back();
        above.push_back(index);
        indices.push_back(index);
    }
    m_order.insert(m_order.begin() + std::ptrdiff_t(at), indices.begin(), indices.end());
    if (m_tree.appendedCount() > mostAppended)
        m_tree.rebuild();
    return indices;
}

quint32 ItemSet::take(const ViewportItem& item)
{
    const bool isReused = !m_free.empty();
    const quint32 index = isReused ? m_free.back() : quint32(m_items.size());
    if (isReused) {
        m_free.pop_back();
        m_items[index] = item;
        m_tree.update(index, item.bounds());
    } else {
        m_items.push_back(item);
        m_tree.append(item.bounds());
        for (std::vector<quint32>* numbers : {&m_places, &m_branchEnds, &m_parents})
            numbers->push_back(noItem);
    }
    m_indexOf.insert(item.id, index);
    return index;
}

std::vector<quint32> ItemSet::remove(quint32 id)
{
    const ItemRange range = branchOf(id);
    std::vector<quint32> indices;
    visitRange(range, [&indices](quint32 index) { indices.push_back(index); });
    const auto first = m_order.begin() + std::ptrdiff_t(orderAt(range.first));
    m_order.erase(first, first + std::ptrdiff_t(indices.size()));
    for (const quint32 index : indices) {
        m_indexOf.remove(m_items[index].id);
        m_items[index] = ViewportItem();
        m_items[index].visible = false;
        m_tree.update(index, Box());
        m_free.push_back(index);
    }
    return indices;
}

ItemRange ItemSet::branchOf(quint32 id) const
{
    const auto found = m_indexOf.constFind(id);
    return found == m_indexOf.constEnd() ? ItemRange()
                                         : ItemRange{m_places[*found], m_branchEnds[*found]};
}

std::vector<ItemRange> ItemSet::branchesOf(const std::vector<quint32>& ids) const
{
    std::vector<ItemRange> branches;
    branches.reserve(ids.size());
    for (quint32 id : ids) {
        const ItemRange branch = branchOf(id);
        if (!branch.isEmpty())
            branches.push_back(branch);
    }
    std::sort(branches.begin(), branches.end(), [](const ItemRange& a, const ItemRange& b) {
        return a.first != b.first ? a.first < b.first : a.end > b.end;
    });
    std::vector<ItemRange> outermost;
    for (const ItemRange& branch : branches) {
        if (outermost.empty() || branch.first >= outermost.back().end)
            outermost.push_back(branch);
    }
    return outermost;
}

std::optional<quint32> ItemSet::update(const ViewportItem& item)
{
    const auto found = m_indexOf.constFind(item.id);
    if (found == m_indexOf.constEnd())
        return std::nullopt;
    m_items[*found] = item;
    m_tree.update(*found, item.bounds());
    return *found;
}

const ViewportItem* ItemSet::find(quint32 id) const
{
    const auto found = m_indexOf.constFind(id);
    return found == m_indexOf.constEnd() ? nullptr : &m_items[*found];
}

Box ItemSet::visibleBounds() const
{
    Box meshes;
    Box markers;
    for (quint32 i = 0; i < m_items.size(); ++i) {
        if (!m_items[i].visible || !isInFrameReach(m_tree.box(i)))
            continue;
        if (m_items[i].isMesh())
            meshes.include(m_tree.box(i));
        else if (m_items[i].isMarker())
            markers.include(m_tree.box(i));
    }
    return meshes.isEmpty() ? markers : meshes;
}

int ItemSet::countOutOfFrameReach() const
{
    int count = 0;
    for (quint32 i = 0; i < m_items.size(); ++i)
        count += m_items[i].visible && !isInFrameReach(m_tree.box(i)) ? 1 : 0;
    return count;
}

Box ItemSet::boundsOf(const std::vector<quint32>& ids) const
{
    Box box;
    for (const ItemRange& branch : branchesOf(ids)) {
        visitRange(branch, [&](quint32 index) {
            if (isInFrameReach(m_tree.box(index)))
                box.include(m_tree.box(index));
        });
    }
    return box;
}

template <typename Visit>
void ItemSet::visitMarkers(const OrbitCamera& camera, const QPointF& position, Visit visit) const
{
    const Ray ray = camera.rayAt(position);
    const QPointF reach = QPointF(1, 1) * double(markerRadius);
    const ConvexVolume around = camera.volumeOf(QRectF(position - reach, position + reach));
    m_tree.visitVolume(around, [&](quint32 index, ConvexVolume::Overlap) {
        const ViewportItem& item = m_items[index];
        if (!item.isMarker() || !canBePicked(item))
            return true;
        const QVector3D offset = item.origin() - ray.origin;
        const float depth = QVector3D::dotProduct(offset, camera.forward());
        const float radius = markerRadius * camera.pixelSize() * depth;
        if ((ray.at(depth) - item.origin()).length() <= radius)
            visit(Hit{item.id, depth * (1.0f - markerLift), item.origin()});
        return true;
    });
}

std::optional<ItemSet::Hit> ItemSet::pick(const OrbitCamera& camera, const QPointF& position) const
{
    std::optional<Hit> best;
    const Ray ray = camera.rayAt(position);
    const Ray drawn{ray.at(camera.nearPlane()), ray.direction};
    m_tree.visitRay(drawn, Box::infinity, [&](quint32 index, float& limit) {
        const ViewportItem& item = m_items[index];
        if (!item.isMesh() || !canBePicked(item))
            return;
        if (const auto distance = hitDistance(item, drawn, limit)) {
            limit = *distance;
            best = Hit{item.id, camera.nearPlane() + *distance, drawn.at(*distance)};
        }
    });
    visitMarkers(camera, position, [&best](const Hit& hit) {
        if (!best || hit.depth < best->depth)
            best = hit;
    });
    return best;
}

std::vector<ItemSet::Hit> ItemSet::pickAll(const OrbitCamera& camera, const QPointF& position) const
{
    std::vector<Hit> hits;
    const Ray ray = camera.rayAt(position);
    const Ray drawn{ray.at(camera.nearPlane()), ray.direction};
    m_tree.visitRay(drawn, Box::infinity, [&](quint32 index, float&) {
        const ViewportItem& item = m_items[index];
        if (!item.isMesh() || !canBePicked(item))
            return;
        if (const auto distance = hitDistance(item, drawn, Box::infinity))
            hits.push_back({item.id, camera.nearPlane() + *distance, drawn.at(*distance)});
    });
    visitMarkers(camera, position, [&hits](const Hit& hit) { hits.push_back(hit); });
    std::stable_sort(hits.begin(), hits.end(),
                     [](const Hit& a, const Hit& b) { return a.depth < b.depth; });
    return hits;
}

std::vector<quint32> ItemSet::idsWithin(const OrbitCamera& camera, const QRectF& rectangle) const
{
    using Overlap = ConvexVolume::Overlap;
    const ConvexVolume volume = camera.volumeOf(rectangle);
    std::vector<quint32> indices;
    m_tree.visitVolume(volume, [&](quint32 index, Overlap overlap) {
        const ViewportItem& item = m_items[index];
        const bool drawn = canBePicked(item) && (item.isMesh() || item.isMarker());
        if (drawn && (overlap == Overlap::Full ||
                      (item.isMesh() && item.geometry->meets(volume.mappedBack(item.transform)))))
            indices.push_back(index);
        return true;
    });
    std::sort(indices.begin(), indices.end(),
              [this](quint32 a, quint32 b) { return m_places[a] < m_places[b]; });
    for (quint32& index : indices)
        index = m_items[index].id;
    return indices;
}

} // namespace editor
