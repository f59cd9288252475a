#include "object_jobs.h"

#include <new>

namespace editor {

namespace {

constexpr double copiedShare = 0.2;

template <typename Result, typename Work>
Result resultOf(const Work& work)
{
    try {
        return work();
    } catch (const std::bad_alloc&) {
        return {{}, ObjectCopyJob::tr("it needs more memory than there is")};
    }
}

} // namespace

ObjectCopyJob::ObjectCopyJob(const SceneObjects& objects) : m_snapshot(snapshotOf(objects)) {}

bool ObjectCopyJob::advance(std::chrono::nanoseconds time)
{
    if (!m_isCopied) {
        m_isCopied = !m_snapshot.advance(time);
        return true;
    }
    if (!m_writing) {
        m_writing = std::make_unique<ThreadedWork>([this](const ThreadedWork::Progress& progress) {
            m_result =
                resultOf<ObjectText>([&] { return textOfScene(m_snapshot.takeCopy(), progress); });
        });
    }
    return !m_writing->waitFor(time);
}

double ObjectCopyJob::progress() const
{
    return m_writing ? copiedShare + (1 - copiedShare) * m_writing->progress()
                     : copiedShare * m_snapshot.progress();
}

ObjectPasteJob::ObjectPasteJob(const QByteArray& text)
    : m_reading([this, text](const ThreadedWork::Progress& progress) {
        m_result = resultOf<ObjectsOfText>([&] { return objectsOfText(text, progress); });
    })
{}

bool ObjectPasteJob::advance(std::chrono::nanoseconds time)
{
    return !m_reading.waitFor(time);
}

} // namespace editor
