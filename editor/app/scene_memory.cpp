#include "scene_memory.h"

#include <editor/viewport/viewport_controller.h>

#include <QCryptographicHash>
#include <QDateTime>
#include <QSettings>

#include <algorithm>
#include <cmath>
#include <unordered_set>

namespace editor {

namespace {

const auto groupName = QStringLiteral("scenes");
const auto cameraKey = QStringLiteral("camera");
const auto rowsKey = QStringLiteral("openRows");
const auto usedKey = QStringLiteral("used");

QString keyOf(const QString& path)
{
    return QLatin1String(QCryptographicHash::hash(path.toUtf8(), QCryptographicHash::Sha1).toHex());
}

/// Calls `visit` with every object of the scene and its number, until it returns false. A file
/// numbers its objects the same way each time; identifiers not every format has.
template <typename Visit>
void forEachObject(SceneObject& root, const Visit& visit)
{
    std::vector<SceneObject*> waiting{&root};
    for (quint32 number = 0; !waiting.empty(); ++number) {
        SceneObject* object = waiting.back();
        waiting.pop_back();
        if (!visit(*object, number))
            return;
        for (const SceneObjectPtr& child : object->children())
            waiting.push_back(child.get());
    }
}

QVariantList openRows(SceneObject& root)
{
    QVariantList numbers;
    forEachObject(root, [&numbers](const SceneObject& object, quint32 number) {
        if (object.isExpanded() && !object.children().empty())
            numbers.append(number);
        return numbers.size() < SceneMemory::mostOpenRows;
    });
    return numbers;
}

void dropOldest(QSettings& settings)
{
    QStringList scenes = settings.childGroups();
    if (scenes.size() <= SceneMemory::mostScenes)
        return;
    const auto usedAt = [&settings](const QString& scene) {
        return settings.value(scene + QLatin1Char('/') + usedKey).toLongLong();
    };
    std::sort(scenes.begin(), scenes.end(),
              [&](const QString& a, const QString& b) { return usedAt(a) > usedAt(b); });
    for (const QString& scene : scenes.mid(SceneMemory::mostScenes))
        settings.remove(scene);
}

} // namespace

SceneMemory::SceneMemory(SceneDocument& document, ViewportController& view, QObject* parent)
    : QObject(parent), m_document(document), m_view(view)
{
    connect(&m_document, &SceneDocument::aboutToReset, this, &SceneMemory::remember);
}

void SceneMemory::remember()
{
    if (m_document.filePath().isEmpty())
        return;
    const OrbitCamera& camera = m_view.camera();
    QSettings settings;
    settings.beginGroup(groupName);
    const QString scene = keyOf(m_document.filePath()) + QLatin1Char('/');
    settings.setValue(scene + usedKey, QDateTime::currentMSecsSinceEpoch());
    settings.setValue(scene + rowsKey, openRows(*m_document.root()));
    settings.setValue(scene + cameraKey,
                      QVariantList{camera.target().x(), camera.target().y(), camera.target().z(),
                                   camera.distance(), camera.yaw(), camera.pitch()});
    dropOldest(settings);
}

void SceneMemory::restoreRows(SceneObject& root, const QString& path)
{
    QSettings settings;
    settings.beginGroup(groupName);
    const QVariant stored = settings.value(keyOf(path) + QLatin1Char('/') + rowsKey);
    if (!stored.isValid())
        return;
    std::unordered_set<quint32> open;
    for (const QVariant& number : stored.toList())
        open.insert(number.toUInt());
    forEachObject(root, [&open](SceneObject& object, quint32 number) {
        object.setExpanded(open.count(number) != 0);
        return true;
    });
}

bool SceneMemory::restoreCamera(const QString& path)
{
    QSettings settings;
    settings.beginGroup(groupName);
    const QVariantList stored = settings.value(keyOf(path) + QLatin1Char('/') + cameraKey).toList();
    if (stored.size() != 6)
        return false;
    const auto number = [&stored](int at) {
        const float value = stored[at].toFloat();
        return std::isfinite(value) ? value : 0.0f;
    };
    m_view.lookAs({number(0), number(1), number(2)}, number(3), qreal(number(4)), qreal(number(5)));
    return true;
}

} // namespace editor
